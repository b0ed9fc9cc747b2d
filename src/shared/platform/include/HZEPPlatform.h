// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HZEPExport.h"
#include "HZEPOwnedList.h"
#include "JSONSerializable.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

class HZEPHardwarePlatform;
class HZEPReconfigurablePartition;
class HZEPSoftwarePlatform;

/// One platform: its identity, the names of its member files, and the hardware, emulation and software platforms that were attached.
/// Setters of pointers replace the pointer and delete nothing. Questions about hardware go to the effective hardware platform: the
/// one that was set, else that of the default partition; without one they answer false, "" or null.
class HZEP_EXPORT HZEPPlatform : public zep_platform::JSONSerializable {
public:
    HZEPPlatform();
    void toJSON(zep_platform::JSONObjectWriter& writer) const override;
    /// Ends the hardware platform, the partitions and the software platforms in their order, the emulation platform, and then what was
    /// kept for partitions.
    ~HZEPPlatform() override;
    HZEPPlatform(const HZEPPlatform&) = delete;
    HZEPPlatform& operator=(const HZEPPlatform&) = delete;

    const std::string& getVendor() const { return vendor_; }
    const std::string& getLibrary() const { return library_; }
    const std::string& getName() const { return name_; }
    const std::string& getDescription() const { return description_; }
    std::string getVersion() const { return version_; }
    std::string getPlatformFile() const { return platformFile_; }
    std::string getHardwarePlatformFile() const { return hardwarePlatformFile_; }
    std::string getSoftwarePlatformFile() const { return softwarePlatformFile_; }
    std::string getHardwareEmuPlatformFile() const { return hardwareEmuPlatformFile_; }

    void setVendor(std::string vendor) { vendor_ = std::move(vendor); }
    void setLibrary(std::string library) { library_ = std::move(library); }
    void setName(std::string name) { name_ = std::move(name); }
    void setVersion(std::string version) { version_ = std::move(version); }
    void setDescription(std::string description) { description_ = std::move(description); }
    void setPlatformFile(std::string file) { platformFile_ = std::move(file); }
    void setHardwarePlatformFile(std::string file) { hardwarePlatformFile_ = std::move(file); }
    void setSoftwarePlatformFile(std::string file) { softwarePlatformFile_ = std::move(file); }
    void setHardwareEmuPlatformFile(std::string file) { hardwareEmuPlatformFile_ = std::move(file); }

    /// Read from a platform file, as opposed to a lone hardware or software file.
    bool isZpfm() const { return zpfm_; }
    void setZpfm(bool zpfm) { zpfm_ = zpfm; }
    /// Made from a lone hardware or software file.
    bool isPartial() const { return partial_; }
    void setPartial(bool partial) { partial_ = partial; }
    bool isComplete() const { return !partial_; }
    /// A caller's own mark; this library never sets it.
    bool isBad() const { return bad_; }
    void setBad(bool bad) { bad_ = bad; }
    std::string getBadReason() const { return badReason_; }
    void setBadReason(std::string reason) { badReason_ = std::move(reason); }

    /// Owned by this platform once set.
    void setHardwarePlatform(HZEPHardwarePlatform* platform) { hardwarePlatform_ = platform; }
    void setHardwareEmulationPlatform(HZEPHardwarePlatform* platform) { hardwareEmulationPlatform_ = platform; }
    /// Not owned by this platform.
    void setDefaultRPHardwarePlatform(HZEPHardwarePlatform* platform) { defaultRPHardwarePlatform_ = platform; }
    void setDefaultRPHardwareEmulationPlatform(HZEPHardwarePlatform* platform) { defaultRPHardwareEmulationPlatform_ = platform; }

    /// The effective hardware platform, null without one.
    const HZEPHardwarePlatform* getHardwarePlatform() const;
    HZEPHardwarePlatform* getHardwarePlatform();
    /// The emulation platform, else that of the default partition, else null.
    const HZEPHardwarePlatform* getHardwareEmulationPlatform() const;
    HZEPHardwarePlatform* getHardwareEmulationPlatform();

    /// Takes ownership.
    void addSoftwarePlatform(HZEPSoftwarePlatform* platform);
    /// The first one, null without any.
    const HZEPSoftwarePlatform* getSoftwarePlatform() const;
    HZEPSoftwarePlatform* getSoftwarePlatform();
    /// Appends all.
    void getSoftwarePlatforms(std::vector<HZEPSoftwarePlatform*>& out) const;

    /// Takes ownership of the partition, though not of the hardware that it refers to.
    void addReconfigurablePartition(HZEPReconfigurablePartition* partition);
    /// Takes ownership of a hardware platform that a partition refers to: it goes with this platform. Returns it.
    HZEPHardwarePlatform* keepPartitionHardware(std::unique_ptr<HZEPHardwarePlatform> platform);
    /// Replaces what the list held, in file order.
    void getReconfigurablePartitions(std::vector<HZEPReconfigurablePartition*>& out) const;
    bool hasReconfigurablePartitions() const { return !reconfigurablePartitions_.empty(); }
    /// The last partition with that id, null if none.
    HZEPReconfigurablePartition* getReconfigurablePartition(std::uint32_t id) const;
    HZEPHardwarePlatform* getRPHardwarePlatform(std::uint32_t id) const;
    HZEPHardwarePlatform* getRPHardwareEmulationPlatform(std::uint32_t id) const;

    std::uint32_t getDefaultRPId() const { return defaultRPId_; }
    void setDefaultRPId(std::uint32_t id) { defaultRPId_ = id; }
    /// Those of the partition with the default id, whatever setDefaultRPHardwarePlatform was given.
    HZEPHardwarePlatform* getDefaultRPHardwarePlatform() const;
    HZEPHardwarePlatform* getDefaultRPHardwareEmulationPlatform() const;

    bool hasHWEmulationPlatform() const { return hardwareEmulationPlatform_ != nullptr; }
    /// The emulation platform has a file of its own.
    bool hasDistinctHardwareEmulationPlatform() const { return !hardwareEmuPlatformFile_.empty(); }
    /// Some partition has an emulation platform.
    bool hasRPHardwareEmulationPlatform() const;

    bool supportsHardware() const;
    bool supportsSWEmulation() const;
    /// An emulation platform is there, or, with partitions, one of them has one, or the hardware says so. The default partition's
    /// hardware is not asked.
    bool supportsHWEmulation() const;
    /// These four ask the hardware platform that was set, never that of the default partition.
    bool supportsTwoHwEmuBd() const;
    bool isHWEmuPlatform() const;
    bool hasDimmConnectors() const;
    void getDimmConnectors(std::vector<std::string>& out) const;

    bool hasSimContent() const;
    bool isExpandable() const;
    bool isUnified() const;
    /// Not expandable; true without hardware.
    bool isFixed() const { return !isExpandable(); }
    bool getDesignIntentDataCenter() const;
    bool getDesignIntentEmbedded() const;
    bool getDesignIntentExternalHost() const;
    bool getDesignIntentServerManaged() const;
    /// Appends the categories of the hardware platform, then those of the default partition's.
    void getTargetCategories(std::vector<std::string>& out) const;

    /// Directory and stem of the platform file.
    std::string getPlatformDir() const;
    std::string getPlatformBaseName() const;
    /// The path of the platform file.
    std::string getUniqueName() const { return platformFile_; }
    /// The hardware's device name for a partial platform with hardware, else the stem of the platform file.
    std::string getDeviceName() const;
    bool isHidden() const;

    /// "acceleration", "kelpine", "dorik" or "undefined"; "" without hardware.
    std::string getTypeString() const;
    /// The same for people: "Acceleration", "Kelpine", "Dorik", else "Undefined".
    std::string getTypePrettyString() const;

private:
    void writePlatforms_(zep_platform::JSONObjectWriter& writer) const;

    std::string vendor_;
    std::string library_;
    std::string name_;
    std::string version_;
    std::string description_;
    std::string platformFile_;
    std::string hardwarePlatformFile_;
    std::string softwarePlatformFile_;
    std::string hardwareEmuPlatformFile_;
    HZEPHardwarePlatform* hardwarePlatform_ = nullptr;
    HZEPHardwarePlatform* hardwareEmulationPlatform_ = nullptr;
    HZEPOwnedList<HZEPReconfigurablePartition> reconfigurablePartitions_;
    HZEPOwnedList<HZEPSoftwarePlatform> softwarePlatforms_;
    HZEPHardwarePlatform* defaultRPHardwarePlatform_ = nullptr;
    HZEPHardwarePlatform* defaultRPHardwareEmulationPlatform_ = nullptr;
    bool zpfm_ = false;
    bool partial_ = false;
    bool bad_ = false;
    std::string badReason_;
    std::uint32_t defaultRPId_ = 0;
    std::vector<HZEPHardwarePlatform*> partitionHardware_;
};
