// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "LintText.h"

#include "HostText.h"

#include <algorithm>

namespace {

/// Longest text that is shown, in bytes.
constexpr std::size_t kMaxShown = 120;

} // namespace

namespace lint {

std::string quote(std::string_view text) {
    std::size_t end = std::min(text.size(), kMaxShown);
    while (end < text.size() && end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80)
        --end;
    return '"' + HostText::makePrintable(text.substr(0, end)) + (end < text.size() ? "...\"" : "\"");
}

} // namespace lint
