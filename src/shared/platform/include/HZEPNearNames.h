// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HZEPExport.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// What somebody may have meant who wrote a name that isn't there.
class HZEP_EXPORT HZEPNearNames {
public:
    /// Up to `most` of the known names that are a few letters away, whatever the letter case, the nearest first and names of one
    /// distance in their given order. Names longer than 48 bytes are near to none.
    static std::vector<std::string> find(std::string_view name, const std::vector<std::string>& known, std::size_t most = 3);

    /// The same as words to put behind an error: `; did you mean "A", "B" or "C"?`, "" when none is near.
    static std::string suggest(std::string_view name, const std::vector<std::string>& known, std::size_t most = 3);

    /// These words for names at hand.
    static std::string describe(const std::vector<std::string>& near);
};
