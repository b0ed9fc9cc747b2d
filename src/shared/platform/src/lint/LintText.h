// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace lint {

/// Printable, in quotes.
std::string quote(std::string_view text);

/// `; did you mean "NAME"?` with the known name nearest to this one, whatever the letter case; "" when none is near.
std::string suggest(std::string_view name, const std::vector<std::string>& known);

} // namespace lint
