// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HostExport.h"

#include <string>
#include <string_view>

/// Text of unknown origin. Whoever shows such a text, or puts it where UTF-8 is promised, asks here.
class HOST_EXPORT HostText {
public:
    /// For one line of output: control characters, bytes that are no UTF-8 and characters that end lines, turn the direction of writing or
    /// don't show at all become escapes (one "\xNN" a byte). Everything else stays.
    static std::string makePrintable(std::string_view text);

    /// The text is UTF-8 throughout: no surrogates, no overlong forms, nothing cut off.
    static bool isUtf8(std::string_view text) { return findNoUtf8(text) == text.npos; }

    /// Where the first byte stands that is no UTF-8; npos without one.
    static std::size_t findNoUtf8(std::string_view text);

    /// The text with each byte that is no UTF-8 become U+FFFD.
    static std::string toUtf8(std::string_view text);
};
