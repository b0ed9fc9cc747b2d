// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include <string>
#include <string_view>

namespace lint {

/// Printable, in quotes.
std::string quote(std::string_view text);

} // namespace lint
