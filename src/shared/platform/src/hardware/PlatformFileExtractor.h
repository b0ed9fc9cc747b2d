// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include <string>

class HZEPHardwarePlatform;

/// Copies entries out of a platform's archive; made for one call.
class PlatformFileExtractor {
public:
    /// With `normalizeHpfm` the memory banks of a file that is written as "*.hpfm" are made alike.
    explicit PlatformFileExtractor(const HZEPHardwarePlatform& platform, bool normalizeHpfm = false)
        : platform_(platform), normalizeHpfm_(normalizeHpfm) {}

    /// Raises HostXMLException when a file with banks made alike can't be written.
    bool extract(const std::string& entry, const std::string& outFile) const;

    /// Copies an entry of any archive. A missing or damaged entry and a file that can't be written answer false; what was written
    /// by then stays.
    static bool copy(const std::string& entry, const std::string& archive, const std::string& outFile);

    /// Where the archive keeps a platform's entry: below "hw_emu/" for a child hardware emulation platform.
    static std::string getEntryFor(const HZEPHardwarePlatform& platform, const std::string& entry);

private:
    const HZEPHardwarePlatform& platform_;
    bool normalizeHpfm_;
};
