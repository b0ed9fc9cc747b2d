// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include <string>

class HZEPHardwarePlatform;

/// Copies entries out of a platform's archive; made for one call.
class PlatformFileExtractor {
public:
    explicit PlatformFileExtractor(const HZEPHardwarePlatform& platform) : platform_(platform) {}

    bool extract(const std::string& entry, const std::string& outFile) const;

    /// Copies an entry of any archive. A missing or damaged entry and a file that can't be written answer false; what was written
    /// by then stays.
    static bool copy(const std::string& entry, const std::string& archive, const std::string& outFile);

    /// Where the archive keeps a platform's entry: below "hw_emu/" for a child hardware emulation platform.
    static std::string getEntryFor(const HZEPHardwarePlatform& platform, const std::string& entry);

private:
    const HZEPHardwarePlatform& platform_;
};
