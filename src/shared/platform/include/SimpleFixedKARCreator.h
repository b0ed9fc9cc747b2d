// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HZEPExport.h"
#include "HZEPTmpDirObject.h"

#include <string>

class HZEPHardwarePlatform;

/// Writes an archive with the JSON metadata of a seed platform, for flows that need a fixed platform without a hardware build. The member
/// is named "kar.json" whatever the archive's name, so only a ".kar" can be read again.
class HZEP_EXPORT SimpleFixedKARCreator {
public:
    /// Removes a file that stands there. Raises HostError when there is no temporary directory to be had.
    explicit SimpleFixedKARCreator(const std::string& outputFile);

    /// The platform stays the caller's, and keeps what writeKAR sets.
    void setSeedPlatform(HZEPHardwarePlatform* platform) { seedPlatform_ = platform; }
    HZEPHardwarePlatform* getSeedPlatform() const { return seedPlatform_; }

    /// The three steps below; true. Raises HostAlgException without a seed, HostError when the archive can't be written, and what toJSON
    /// raises. The archive appears whole or not at all.
    bool writeKAR();

    /// Marks the seed as unified, fixed and made by linking, for software emulation too.
    void setPlatformAttributes();
    /// Writes the seed's document into the temporary directory.
    void writeJSON();
    /// Packs the temporary directory, without a digest.
    void createArchive();

private:
    HZEPHardwarePlatform& getSeed_() const;

    HZEPHardwarePlatform* seedPlatform_ = nullptr;
    HZEPTmpDirObject tmpDir_;
    std::string outputFile_;
};
