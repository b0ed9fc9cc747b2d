// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HZEPExport.h"
#include "PlatformParseException.h"

#include <memory>
#include <optional>
#include <string>

class HPLPlatform;
class HZEPHardwarePlatform;
class HZEPPlatform;
class HZEPReconfigurablePartition;

namespace zep_platform {

/// Turns one path into one platform. The extension decides what the path is: ".dsa" and ".kar" name a hardware archive, ".spfm" a
/// software file, all else a platform file.
class HZEP_EXPORT PlatformLoader {
public:
    /// Which metadata entry of a hardware archive is read.
    enum HwMetadataMode {
        PreferAlternateJson = 0, ///< the JSON entry with the prefix "alt_", else the primary one
        PrimaryJsonOnly = 1,     ///< the primary JSON entry, the alternate one is ignored
        XmlOnly = 2,             ///< no JSON entry
    };

    /// Reads a platform file at once; an archive or a software file is left for load(). An empty path reads nothing. Raises
    /// PlatformParseException for a platform file that does not parse, HostFileNotFoundException for one that is missing.
    explicit PlatformLoader(const std::string& path, HwMetadataMode mode = PreferAlternateJson);

    /// The platform with everything attached, shared with this loader; a second call gives the same object without work. Empty
    /// when a step failed: the reason went out as a message, this loader holds no platform any more, and of its getters only getFilePath
    /// answers, with the path as given.
    /// Any exception but PlatformParseException passes through.
    std::shared_ptr<HZEPPlatform> load();

    /// Why load() failed, with the place and the cause; nothing when it did not.
    const std::optional<PlatformParseException>& getFailure() const { return failure_; }

    /// The steps of load(), each doing nothing when its object is there already. They raise PlatformParseException and then leave
    /// the loader as it was.
    void attachHardwarePlatform();
    void attachHardwareEmulationPlatform();
    void attachSoftwarePlatform();

    /// What the platform file says, known before load().
    std::string getVersion() const;
    std::string getFilePath() const;
    std::string getBaseName() const;
    std::string getName() const;
    std::string getVendor() const;
    std::string getDescription() const;
    std::string getHardwarePlatformFile() const;
    std::string getHardwareEmuPlatformFile() const;
    std::string getSoftwarePlatformFile() const;

private:
    enum PlatformFileKind { HardwareFile = 0, SoftwareFile = 1, PlatformFile = 2 };

    std::string hardwareFile_() const;
    std::string softwareFile_() const;
    std::unique_ptr<HPLPlatform> readHardware_(const std::string& file) const;
    std::unique_ptr<HPLPlatform> readJsonHardware_(const std::string& file, HostFault& fault) const;

    void attachHardwarePlatform_(HZEPReconfigurablePartition* partition);
    void attachHardwareEmulationPlatform_(HZEPReconfigurablePartition* partition);
    void attachMergedHardwareEmulationPlatform_();
    void loadReconfigurablePartitions_();

    std::shared_ptr<HZEPPlatform> platform_;
    std::string filePath_;
    PlatformFileKind fileKind_ = PlatformFile;
    bool loaded_ = false;
    HwMetadataMode hwMetadataMode_;
    std::optional<PlatformParseException> failure_;
};

} // namespace zep_platform
