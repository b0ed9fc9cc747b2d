// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HostText.h"

#include <string>

/// Longest name in one of the feature ROM's fixed fields, in bytes: one of the 64 stays zero.
constexpr std::size_t kMaxRomName = 63;

/// A name as it is written: where the field's end cut it inside a character, that character is left out, so that it can be read again.
inline std::string withoutCutCharacter(const std::string& name) {
    if (name.size() != kMaxRomName || HostText::isUtf8(name))
        return name;
    constexpr std::size_t kMaxCut = 3; // bytes of a character that lacks its last
    for (std::size_t cut = 1; cut <= kMaxCut; ++cut) {
        const auto lead = static_cast<unsigned char>(name[name.size() - cut]);
        const std::size_t whole = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
        if (lead >= 0xC0)
            return cut < whole && HostText::isUtf8(name.substr(0, name.size() - cut)) ? name.substr(0, name.size() - cut) : name;
    }
    return name;
}
