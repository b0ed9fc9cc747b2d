// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HZEPHardwareFeatureRom.h"

#include <algorithm>
#include <string>

/// Hands a name to one of the feature ROM's fixed fields, cut to 63 bytes: one byte stays zero, so that the setter always finds its
/// terminator.
template <auto Set>
void setRomName(HZEPHardwareFeatureRom& rom, const std::string& text) {
    unsigned char name[64] = {};
    std::copy_n(text.begin(), std::min(text.size(), sizeof name - 1), name);
    (rom.*Set)(name);
}
