// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "LintTree.h"

#include <utility>

namespace lint {

/// Looks whether a text is a number in base 10 that its field holds; an empty one is none and no finding.
void checkNumber(const Node& node, long min, long max, Findings& findings);

/// Looks whether a text is a number in base 16 that so many bytes hold.
void checkHex(const Node& node, std::size_t bytes, Findings& findings);

/// What a word such as "yes" or "0" probably means as a flag, "" for others.
std::string toFlag(const std::string& text);

/// Digits, with or without a sign and a point; none for other texts.
std::optional<double> toDecimalNumber(const std::string& text);

/// Digits alone, at most 19 of them.
std::optional<unsigned long> toWhole(const std::string& text);

/// The same, or "0x" and at most 16 digits of base 16.
std::optional<unsigned long> toAddress(const std::string& text);

/// The first two numbers of a version of a tool, such as "2021.1".
std::optional<std::pair<unsigned long, unsigned long>> toVersion(const std::string& text);

} // namespace lint
