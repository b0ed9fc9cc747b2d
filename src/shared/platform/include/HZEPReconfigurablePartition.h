// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HZEPExport.h"
#include "JSONSerializable.h"

#include <cstdint>
#include <string>

class HZEPHardwarePlatform;

/// One partition of a platform that has no single hardware platform. It owns neither of the two platforms that it refers to.
class HZEP_EXPORT HZEPReconfigurablePartition : public zep_platform::JSONSerializable {
public:
    explicit HZEPReconfigurablePartition(std::uint32_t id = 0);
    void toJSON(zep_platform::JSONObjectWriter& writer) const override;
    ~HZEPReconfigurablePartition() override;
    HZEPReconfigurablePartition(const HZEPReconfigurablePartition&) = delete;
    HZEPReconfigurablePartition& operator=(const HZEPReconfigurablePartition&) = delete;

    std::uint32_t getID() const { return id_; }
    HZEPHardwarePlatform* getHardwarePlatform() const { return hardwarePlatform_; }
    HZEPHardwarePlatform* getHardwareEmulationPlatform() const { return hardwareEmulationPlatform_; }
    std::string getHardwarePlatformFile() const { return hardwarePlatformFile_; }
    std::string getHardwareEmuPlatformFile() const { return hardwareEmuPlatformFile_; }
    /// Another name of getHardwareEmuPlatformFile.
    std::string getHardwareEmulationPlatformFile() const { return hardwareEmuPlatformFile_; }

    void setHardwarePlatform(HZEPHardwarePlatform* platform) { hardwarePlatform_ = platform; }
    void setHardwareEmulationPlatform(HZEPHardwarePlatform* platform) { hardwareEmulationPlatform_ = platform; }
    void setHardwarePlatformFile(std::string file) { hardwarePlatformFile_ = std::move(file); }
    void setHardwareEmuPlatformFile(std::string file) { hardwareEmuPlatformFile_ = std::move(file); }
    void setHardwareEmulationPlatformFile(std::string file) { hardwareEmuPlatformFile_ = std::move(file); }

    /// The emulation platform has a file of its own.
    bool hasDistinctHardwareEmulationPlatform() const { return !hardwareEmuPlatformFile_.empty(); }

private:
    std::uint32_t id_;
    HZEPHardwarePlatform* hardwarePlatform_ = nullptr;
    HZEPHardwarePlatform* hardwareEmulationPlatform_ = nullptr;
    std::string hardwarePlatformFile_;
    std::string hardwareEmuPlatformFile_;
};
