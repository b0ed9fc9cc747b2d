// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "LintTree.h"

namespace lint {

/// Looks whether a text is a number in base 10 that its field holds; an empty one is none and no finding.
void checkNumber(const Node& node, long min, long max, Findings& findings);

/// Looks whether a text is a number in base 16 that so many bytes hold.
void checkHex(const Node& node, std::size_t bytes, Findings& findings);

} // namespace lint
