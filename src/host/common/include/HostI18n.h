// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HostExport.h"

#include <string>

/// Conversions between the wide text of the XML bindings (one code point a character) and UTF-8.
class HOST_EXPORT HostI18n {
public:
    /// A value that is no code point becomes U+FFFD.
    static std::string toUtf8(const std::wstring& text);

    /// A byte that is no UTF-8 becomes U+FFFD.
    static std::wstring toWide(const std::string& text);
};
