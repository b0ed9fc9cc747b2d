// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HPLBoard.h"
#include "HPLDevice.h"
#include "HPLFile.h"
#include "HPLInterface.h"
#include "HPLMemory.h"
#include "HZEPHardwarePlatform.h"
#include "HZEPOwnedList.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

/// The hardware platform that every reader fills: the base's data with board, devices, memories, interfaces and the table of
/// contents of the archive. The document begins with what this class adds.
class HZEP_EXPORT HPLPlatform : public HZEPHardwarePlatform {
public:
    enum HostArchType : int { HostArchX86_64 = 0, HostArchArmv7l = 1, HostArchPpc64le = 2, HostArchAarch64 = 3, HostArchUnknown = 4 };
    enum HostInterfaceType : int { HostInterfacePcie = 0, HostInterfaceAxi = 1, HostInterfaceUnknown = 2 };

    using FileVecRange = std::pair<std::vector<HPLFile*>::const_iterator, std::vector<HPLFile*>::const_iterator>;

    HPLPlatform();
    ~HPLPlatform() override;

    /// Raises what the zip layer and the JSON parser raise over the archive's extension metadata.
    void toJSON(zep_platform::JSONObjectWriter& writer) const override;

    std::string getBoardPart() const override;
    std::string getBoardRepo() const override;
    std::string getBoardConnectionsString() const override;
    std::string getLockedBoardConnectionsString() const override;
    std::string getUnlockedBoardConnectionsString() const override;
    /// "major.minor"
    std::string getVersion() const override;
    /// The VBNV.
    std::string getUniqueName() const override;
    /// "BOARDID (name)"; for an embedded platform the name alone.
    std::string getPrettyName() const override;
    /// "vendor_boardId_name_major_minor"
    std::string getDeviceName() const override;
    unsigned getNumDDRs() const override;
    /// Type of the first memory, "ddr4" without one.
    std::string getMemType() const override;
    /// "16 GB"; a total of 0 counts as "8 GB". Raises as getMemSizeInGb does.
    std::string getMemSize() const override;
    /// "PCIe gen3x8", "PCIe gen3x16" or the first interface's name and type; "" unless a host is attached over it.
    std::string getInterfaceDesc() const override;
    void getBoardImgZipEntries(std::vector<std::string>& out) const override;
    void getTargetCategories(std::vector<std::string>& out) const override;
    void getDevices(std::vector<HZEPDevice*>& out) const override;
    /// First device of exactly this name, else null.
    HPLDevice* getDevice(const std::string& name) const override;
    /// Of the first core, as the metadata gives it.
    int getRegisterCount() const override;
    /// Of the last device's core; 10 without a device.
    unsigned getNumComputeUnits() const override;
    std::string getHostArch() const override;
    bool hasDimmConnectors() const override;
    void getDimmConnectors(std::vector<std::string>& out) const override;
    void getLockedDimmConnectors(std::vector<std::string>& out) const override;
    void getConnectedDimmConnectors(std::vector<std::string>& names, std::vector<std::string>& connectedNames) const override;
    std::string getConnectorDisplayName(const std::string& name) const override;
    void getValidSLRNames(std::vector<std::string>& out) const override;
    std::string getFile(const std::string& type) const override;
    std::string getFile(HZEPPfmFileTypes::FileType type) const override;
    bool hasFile(const std::string& type) const override;
    bool hasFile(HZEPPfmFileTypes::FileType type) const override;
    std::string getExtMetaJsonAsString() const override;
    void getExtMetaJsonAsPtree(boost::property_tree::ptree& tree) const override;
    void setComputedDesignIntent(HZEPDesignIntentStorage::Key key, bool value) override;
    void setExplicitDesignIntent(HZEPDesignIntentStorage::Key key, bool value) override;

    /// Sum over all memories. Raises as getMemSizeInGb does.
    virtual int getTotalMemSizeInGb() const;
    virtual void getBvlcCompileXpSwitches(std::vector<std::string>& out) const;
    virtual void getBvlcLinkXpSwitches(std::vector<std::string>& out) const;

    /// The number in front of "GB", 0 for a size in other units and without any memory. Raises std::out_of_range for an index past
    /// the end and for a number beyond 32 bits, std::invalid_argument for an empty size and one that starts with no number.
    int getMemSizeInGb(std::size_t index) const;

    /// "vendor:boardId:name:version"
    std::string getVBNV() const;
    static std::string getVBNVAsStr(const std::string& vendor, const std::string& boardId, const std::string& name,
                                    const std::string& version);

    // Plain fields
    std::uint32_t getVersionMajor() const { return versionMajor_; }
    void setVersionMajor(std::uint32_t versionMajor) { versionMajor_ = versionMajor; }
    std::uint32_t getVersionMinor() const { return versionMinor_; }
    void setVersionMinor(std::uint32_t versionMinor) { versionMinor_ = versionMinor; }
    std::string getTopModuleName() const { return topModuleName_; }
    void setTopModuleName(std::string topModuleName) { topModuleName_ = std::move(topModuleName); }
    std::string getAcceleratorBinaryFormat() const { return acceleratorBinaryFormat_; }
    void setAcceleratorBinaryFormat(std::string acceleratorBinaryFormat) { acceleratorBinaryFormat_ = std::move(acceleratorBinaryFormat); }
    std::string getAcceleratorBinaryContent() const { return acceleratorBinaryContent_; }
    void setAcceleratorBinaryContent(std::string acceleratorBinaryContent) {
        acceleratorBinaryContent_ = std::move(acceleratorBinaryContent);
    }
    std::string getDefaultOutputType() const { return defaultOutputType_; }
    void setDefaultOutputType(std::string defaultOutputType) { defaultOutputType_ = std::move(defaultOutputType); }
    bool isDcpFuncStripped() const { return dcpFuncStripped_; }
    void setDcpFuncStripped(bool dcpFuncStripped) { dcpFuncStripped_ = dcpFuncStripped; }
    bool isDcpEncrypt() const { return dcpEncrypt_; }
    void setDcpEncrypt(bool dcpEncrypt) { dcpEncrypt_ = dcpEncrypt; }
    void setXmlFile(std::string xmlFile) { xmlFile_ = std::move(xmlFile); }
    /// Canonical path of the XML file that the platform was read from, and the directory of it; "" when it was not.
    std::string getXmlFile() const;
    std::string getDirectory() const;
    /// Kept from an older feature ROM.
    std::uint64_t getOldFeatureRomTime() const { return oldFeatureRomTime_; }
    void setOldFeatureRomTime(std::uint64_t oldFeatureRomTime) { oldFeatureRomTime_ = oldFeatureRomTime; }
    HPLBoard& getBoard() { return board_; }
    const HPLBoard& getReadOnlyBoard() const { return board_; }

    // The host: names compare ignoring case, and one that no table has is unknown.
    static HostArchType getHostArchType(const std::string& name);
    static HostInterfaceType getHostInterfaceType(const std::string& name);
    static std::string getHostArchAsStr(HostArchType type);
    static std::string getHostInterfaceAsStr(HostInterfaceType type);
    static std::vector<std::string> getHostArchTypesAsStr();
    void setHostArch(const std::string& name) { hostArch_ = getHostArchType(name); }
    void setHostInterface(const std::string& name) { hostInterface_ = getHostInterfaceType(name); }
    std::string getHostInterface() const { return getHostInterfaceAsStr(hostInterface_); }
    HostArchType getHostArchAsEnum() const { return hostArch_; }
    HostInterfaceType getHostInterfaceAsEnum() const { return hostInterface_; }

    /// A text that is there already is not added again. The lists as text are joined with ",".
    void addValidBinaryContentValue(const std::string& value);
    void addValidOutputTypeValue(const std::string& value);
    std::string getValidBinaryContentValuesAsStr() const;
    std::string getValidOutputTypeValuesAsStr() const;
    void addBvlcCompileXpSwitch(const std::string& text) { bvlcCompileXpSwitches_.push_back(text); }
    void addBvlcLinkXpSwitch(const std::string& text) { bvlcLinkXpSwitches_.push_back(text); }

    HPLDevice* addDevice();
    HPLMemory* addMemory();
    HPLInterface* addInterface();
    HostFwdIter<HPLDevice*>* createDeviceIter() const;
    HostFwdIter<HPLMemory*>* createMemoryIter() const;
    HostFwdIter<HPLInterface*>* createInterfaceIter() const;

    // The table of contents of the archive
    HPLFile* addFile(const std::string& type, const std::string& name);
    /// First file of exactly this type, else null.
    HPLFile* findFile(const std::string& type) const;
    /// Deletes the file; one that is not in the list is left alone.
    void removeFile(HPLFile* file);
    void removeFileType(const std::string& type);
    HostFwdIter<HPLFile*>* createFileVecIter() const;
    FileVecRange getFileVecRange() const;
    std::size_t getNumFiles() const { return files_.size(); }

    /// How many devices have a core.
    std::size_t getOCLRegionCount() const;
    /// Instance path of the first core.
    std::string getOclInstPath() const;
    /// The first core lies inside another module's instance.
    bool usesExpandedPR() const;

    /// The documents of both platforms are the same, ignoring case.
    bool isEquals(const HPLPlatform& other) const;

private:
    const HPLCore* getFirstCore_() const;

    std::uint32_t versionMajor_ = 0;
    std::uint32_t versionMinor_ = 0;
    HostArchType hostArch_ = HostArchUnknown;
    HostInterfaceType hostInterface_ = HostInterfaceUnknown;
    std::string topModuleName_;
    std::string acceleratorBinaryFormat_ = "acclib2";
    std::string acceleratorBinaryContent_ = "bitstream";
    std::vector<std::string> validBinaryContentValues_;
    std::unordered_set<std::string> binaryContentValuesPresent_;
    std::vector<std::string> bvlcCompileXpSwitches_;
    std::vector<std::string> bvlcLinkXpSwitches_;
    bool dcpFuncStripped_ = false;
    bool dcpEncrypt_ = false;
    std::string defaultOutputType_ = "unknown";
    std::vector<std::string> validOutputTypeValues_;
    std::unordered_set<std::string> outputTypeValuesPresent_;
    HPLBoard board_;
    HZEPOwnedList<HPLInterface> interfaces_;
    HZEPOwnedList<HPLMemory> memories_;
    HZEPOwnedList<HPLDevice> devices_;
    HZEPOwnedList<HPLFile> files_;
    std::string xmlFile_;
    std::uint64_t oldFeatureRomTime_ = 0;
};
