// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include <string>

class HZEPHardwarePlatform;

/// Copies entries out of the vector engine project, an archive that lies in the platform's archive; made for one call.
class PlatformVceprjFileExtractor {
public:
    explicit PlatformVceprjFileExtractor(const HZEPHardwarePlatform& platform) : platform_(platform) {}

    /// An entry of the project. The project is unpacked to the host's temporary directory and removed again; false, and nothing
    /// written, when the platform lists no project or names one that would lie outside of that directory.
    bool extractFromProject(const std::string& entry, const std::string& outFile);

    /// The entry listed under a type, out of the platform's own archive.
    bool extractListed(const std::string& fileKey, const std::string& outFile) const;

private:
    bool extractFrom_(const std::string& entry, const std::string& archive, const std::string& outFile) const;
    std::string unpackProject_() const;

    const HZEPHardwarePlatform& platform_;
};
