// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HZEPDesignIPInstance.h"
#include "HZEPDesignIntentStorage.h"
#include "HZEPHardwareBusInterface.h"
#include "HZEPHardwareFeatureRom.h"
#include "HZEPHardwareIPParam.h"
#include "HZEPHardwareNocConnectivity.h"
#include "HZEPOwnedList.h"
#include "HZEPPfmFileTypes.h"
#include "HZEPReconfigPartition.h"
#include "HZEPSystemClock.h"
#include "HZEPVceHardware.h"
#include "HZEPVcePartition.h"
#include "JSONSerializable.h"

#include <boost/property_tree/ptree_fwd.hpp>

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <map>
#include <string>
#include <utility>
#include <vector>

class HostHwDb;
class HPLDevice;
class HZEPDevice;

/// One hardware platform, as its archive describes it: identity, support flags, clocks, memories, bus interfaces and partitions.
/// A reader fills it once through the setters and `add...`; then it answers questions. Values of the metadata stay text.
///
/// A question about something absent answers "", 0, false or null and raises nothing. Lists are appended to what `out` holds.
/// What is handed out as a pointer belongs to the platform; an iterator belongs to the caller. Some answers are kept on first
/// use, also from const operations, so one platform belongs to one thread.
class HZEP_EXPORT HZEPHardwarePlatform : public zep_platform::JSONSerializable {
public:
    enum PlatformState : int { synth = 0, impl = 1, pre_synth = 2, unknown_state = 3 };

    using BusInterfaces = std::vector<HZEPHardwareBusInterface*>;
    using FeatureRomRange =
        std::pair<std::vector<HZEPHardwareFeatureRom*>::const_iterator, std::vector<HZEPHardwareFeatureRom*>::const_iterator>;

    HZEPHardwarePlatform();
    HZEPHardwarePlatform(const HZEPHardwarePlatform&) = delete;
    HZEPHardwarePlatform& operator=(const HZEPHardwarePlatform&) = delete;

    // The virtual operations stand in the order of the table that callers are compiled against.
    void toJSON(zep_platform::JSONObjectWriter& writer) const override;
    ~HZEPHardwarePlatform() override;

    virtual const std::string& getName() const;
    virtual const std::string& getVendor() const;
    virtual std::string getBoardPart() const = 0;
    /// Path of the board repository, unpacked below the host's temporary directory; "" when the archive has none.
    virtual std::string getBoardRepo() const = 0;
    virtual std::string getBoardConnectionsString() const = 0;
    virtual std::string getLockedBoardConnectionsString() const = 0;
    virtual std::string getUnlockedBoardConnectionsString() const = 0;
    virtual const std::string& getBoardId() const;
    virtual std::string getVersion() const = 0;
    virtual const std::string& getDescription() const;
    virtual const std::string& getDetailedDescription() const;
    virtual std::string getUniqueName() const;
    virtual std::string getPrettyName() const;
    /// Of the first device.
    virtual std::string getPartName() const;
    virtual std::string getFpgaPart() const;
    virtual std::string getFpgaDevice() const;
    virtual std::string getDeviceName() const = 0;
    virtual unsigned getNumDDRs() const = 0;
    virtual std::string getMemType() const = 0;
    virtual std::string getMemSize() const = 0;

    /// Whether memories are counted by the address segments of "memss" ports. The first bus interface that decides settles it
    /// for good; while none does, each call looks again.
    virtual bool isMemoryResourceIndexed() const;
    virtual unsigned getUniqueMemoryTypeCount() const;
    /// The memory types in ascending byte order, in upper case when indexed. Answers how many there are.
    virtual unsigned getUniqueMemoryTypeStrings(std::vector<std::string>& out) const;
    /// A type is compared exactly with the unique types, here and in the next three, which answer 0 or "" for an unknown one.
    virtual unsigned getMemoryTypeCount(const std::string& type) const;
    virtual unsigned getMemoryIndex(const std::string& type, unsigned index) const;
    /// Every bank of an indexed memory counts as "16GB".
    virtual std::string getMemorySize(const std::string& type, unsigned index) const;
    virtual std::string getMemorySLR(const std::string& type, unsigned index) const;

    virtual std::string getInterfaceDesc() const = 0;
    /// Path of the archive that this platform was read from.
    virtual std::string getPlatformFile() const;
    virtual void getBoardImgZipEntries(std::vector<std::string>& out) const = 0;
    virtual void getTargetCategories(std::vector<std::string>& out) const = 0;
    virtual void getDevices(std::vector<HZEPDevice*>& out) const = 0;
    virtual HPLDevice* getDevice(const std::string& name) const = 0;

    virtual void getSystemClockNames(std::vector<std::string>& out) const;
    virtual void getCpuClockNames(std::vector<std::string>& out) const;
    /// By exact name; of several clocks of a name or an id the last one answers, here and below.
    virtual std::string getClockFrequency(const std::string& name) const;
    virtual void getAllClockFrequencies(std::vector<std::string>& names, std::vector<std::string>& frequencies) const;
    /// The positive counts of "BRAM", "DSP", "LUT", "FF" and "REG", as text.
    virtual void getAllResources(std::vector<std::string>& types, std::vector<std::string>& counts) const;
    virtual std::string getClockId(const std::string& name) const;
    virtual std::string getPlatformFrequency(int id) const;
    virtual HZEPSystemClock* getDefaultClock() const;
    virtual std::string getDefaultClockFrequency() const;
    /// The id set, also when no clock has it.
    virtual std::string getDefaultClockId() const;
    virtual std::string getDefaultClockName() const;
    virtual int getBRAMCount() const;
    virtual int getDSPCount() const;
    virtual int getLUTCount() const;
    virtual int getFFCount() const;
    virtual int getRegisterCount() const;
    virtual unsigned getNumComputeUnits() const = 0;
    virtual std::string getHostArch() const = 0;

    virtual HostFwdIter<HZEPSystemClock*>* createSystemClockIter() const;
    virtual void getSystemClocks(std::vector<HZEPSystemClock*>& out) const;
    virtual HostFwdIter<HZEPHardwareIPParam*>* createIPParamIter() const;
    virtual void getHardwareIPParams(std::vector<HZEPHardwareIPParam*>& out) const;
    virtual HostFwdIter<HZEPHardwareNocConnectivity*>* createNocConnectivityIter() const;
    virtual HostFwdIter<HZEPHardwareBusInterface*>* createBusInterfaceIter() const;
    virtual void getNocConnectivity(std::vector<HZEPHardwareNocConnectivity*>& out) const;
    virtual void getBusInterfaces(BusInterfaces& out) const;
    /// First one of exactly this name.
    virtual HZEPHardwareBusInterface* getBusInterfaceByName(const std::string& name) const;
    /// Those of indexed memories, then the others that stand for a memory.
    virtual void getMemoryBusInterfaces(BusInterfaces& out) const;

    virtual const std::string& getHpfmString() const;
    /// Name of the archive's hardware database, which the first call opens; "" without a hardware definition or when that fails.
    virtual std::string getHwDbName() const;
    /// The databases belong to the host's manager.
    virtual HostHwDb* getHwDb() const;
    virtual HostHwDb* getHwDb(const std::string& name) const;

    virtual void getFeatureRoms(std::vector<HZEPHardwareFeatureRom*>& out) const;
    virtual HostFwdIter<HZEPHardwareFeatureRom*>* createFeatureRomIter() const;
    virtual bool hasDimmConnectors() const = 0;
    virtual void getDimmConnectors(std::vector<std::string>& out) const = 0;
    virtual void getLockedDimmConnectors(std::vector<std::string>& out) const = 0;
    virtual void getConnectedDimmConnectors(std::vector<std::string>& names, std::vector<std::string>& connectedNames) const = 0;
    virtual std::string getConnectorDisplayName(const std::string& name) const = 0;
    virtual void getValidSLRNames(std::vector<std::string>& out) const = 0;

    virtual std::string getGeneratedName() const;
    virtual std::string getGeneratedVersion() const;
    virtual std::uint32_t getGeneratedChangeList() const;
    virtual std::string getGeneratedIpChangeList() const;
    virtual std::string getGeneratedSharedDataChangeList() const;
    virtual std::string getGeneratedTimestamp() const;
    virtual bool isGeneratedByLink() const;
    virtual std::string getIdCode() const;
    virtual std::string getExtendedIdCode() const;

    /// Name of the archive entry of this type, ignoring case; the last one listed counts.
    virtual std::string getFile(const std::string& type) const = 0;
    virtual std::string getFile(HZEPPfmFileTypes::FileType type) const = 0;
    virtual bool hasFile(const std::string& type) const = 0;
    virtual bool hasFile(HZEPPfmFileTypes::FileType type) const = 0;
    /// The extension metadata of the archive; "" when the archive has none.
    virtual std::string getExtMetaJsonAsString() const = 0;

    virtual bool supportsHardware() const;
    virtual bool supportsSWEmulation() const;
    virtual bool supportsHWEmulation() const;
    virtual bool supportsTwoHwEmuBd() const;
    /// What isMemoryResourceIndexed has found so far; does not look itself.
    virtual bool supportsMemoryResourceIndex() const;
    virtual void setUsesNIFD(bool usesNIFD);
    virtual bool usesNIFD() const;
    virtual FeatureRomRange getFeatureRomVecRange() const;
    /// The same metadata parsed into `tree`, which stays as it is without any. Broken JSON raises the parser's exception.
    virtual void getExtMetaJsonAsPtree(boost::property_tree::ptree& tree) const = 0;

    virtual void setExpandable(bool expandable);
    virtual void setUnifiedPlatform(bool unifiedPlatform);
    virtual void setName(const std::string& name);
    virtual void setDescription(const std::string& description);
    virtual void setDetailedDescription(const std::string& detailedDescription);
    virtual void setVendor(const std::string& vendor);
    virtual void setBoardId(const std::string& boardId);
    virtual void setComputedDesignIntent(HZEPDesignIntentStorage::Key key, bool value) = 0;
    virtual void setExplicitDesignIntent(HZEPDesignIntentStorage::Key key, bool value) = 0;
    virtual void setPlatformFile(const std::string& platformFile);

    virtual HZEPHardwareIPParam* addHardwareIPParam();
    virtual HZEPHardwareNocConnectivity* addNocConnectivity();
    virtual HZEPHardwareBusInterface* addBusInterface();
    virtual HZEPSystemClock* addSystemClock();
    virtual HZEPHardwareFeatureRom* addFeatureRom();

    /// ".dsa" and ".kar"; the comparison is exact.
    static const std::vector<std::string>& getValidPlatformExts();
    static bool isValidPlatformExt(const std::string& ext);

    // Plain fields
    bool isExpandable() const { return expandable_; }
    bool isUnifiedPlatform() const { return unifiedPlatform_; }
    void setSupportsHardware(bool supports) { supportsHardware_ = supports; }
    void setSupportsSWEmulation(bool supports) { supportsSWEmulation_ = supports; }
    void setSupportsHWEmulation(bool supports) { supportsHWEmulation_ = supports; }
    void setSupportsTwoHwEmuBd(bool supports) { supportsTwoHwEmuBd_ = supports; }
    bool isHWEmuPlatform() const { return isHWEmuPlatform_; }
    /// True also says that hardware emulation is supported.
    void setIsHWEmuPlatform(bool isHWEmuPlatform);
    /// Read from the "hw_emu/" part of another platform's archive.
    bool isChildHardwareEmuPlatform() const { return isChildHardwareEmuPlatform_; }
    void setIsChildHardwareEmuPlatform(bool isChild) { isChildHardwareEmuPlatform_ = isChild; }
    const HZEPDesignIntentStorage& getDesignIntent() const { return designIntent_; }
    HZEPDesignIntentStorage& getDesignIntent() { return designIntent_; }
    /// 0 not indexed, 1 indexed, 2 not yet known.
    int getMemoryResourceIndexState() const { return memoryResourceIndexState_; }
    void setMemoryResourceIndexState(int state) { memoryResourceIndexState_ = state; }
    bool usesPR() const { return usesPR_; }
    void setUsesPR(bool usesPR) { usesPR_ = usesPR; }
    std::string getPlatformState() const { return platformState_; }
    void setPlatformState(const std::string& platformState) { platformState_ = platformState; }
    void setHpfmString(const std::string& hpfmString) { hpfmString_ = hpfmString; }
    void setHwDbName(const std::string& hwDbName) { hwDbName_ = hwDbName; }
    int getDefaultClkId() const { return defaultClkId_; }
    void setDefaultClkId(int defaultClkId) { defaultClkId_ = defaultClkId; }
    void setBRAMCount(int count) { bramCount_ = count; }
    void setDSPCount(int count) { dspCount_ = count; }
    void setLUTCount(int count) { lutCount_ = count; }
    void setFFCount(int count) { ffCount_ = count; }
    void setRegisterCount(int count) { registerCount_ = count; }
    void setGeneratedName(const std::string& name) { generatedName_ = name; }
    void setGeneratedVersion(const std::string& version) { generatedVersion_ = version; }
    void setGeneratedChangeList(std::uint32_t changeList) { generatedChangeList_ = changeList; }
    void setGeneratedIpChangeList(const std::string& changeList) { generatedIpChangeList_ = changeList; }
    void setGeneratedSharedDataChangeList(const std::string& changeList) { generatedSharedDataChangeList_ = changeList; }
    void setGeneratedTimestamp(const std::string& timestamp) { generatedTimestamp_ = timestamp; }
    std::string getFlashInterfaceType() const { return flashInterfaceType_; }
    void setFlashInterfaceType(const std::string& flashInterfaceType) { flashInterfaceType_ = flashInterfaceType; }
    std::string getFlashOffsetAddress() const { return flashOffsetAddress_; }
    void setFlashOffsetAddress(const std::string& flashOffsetAddress) { flashOffsetAddress_ = flashOffsetAddress; }
    std::string getFlashSize() const { return flashSize_; }
    void setFlashSize(const std::string& flashSize) { flashSize_ = flashSize; }
    void setIdCode(const std::string& idCode) { idCode_ = idCode; }
    void setExtendedIdCode(const std::string& idCode) { extendedIdCode_ = idCode; }
    void setGeneratedByLink(bool generated) { generatedByLink_ = generated; }
    bool isGeneratedBySwEmuLink() const { return generatedBySwEmuLink_; }
    void setGeneratedBySwEmuLink(bool generated) { generatedBySwEmuLink_ = generated; }
    bool hasExternalSources() const { return hasExternalSources_; }
    void setHasExternalSources(bool has) { hasExternalSources_ = has; }
    bool hasMDAContent() const { return hasMDAContent_; }
    void setHasMDAContent(bool has) { hasMDAContent_ = has; }
    /// The static region of a partitioned design.
    bool isStatic() const { return static_; }
    void setStatic(bool value) { static_ = value; }
    /// A reconfigurable module.
    bool isRM() const { return isRM_; }
    void setRM(bool rm) { isRM_ = rm; }
    std::string getDrBdInstName() const { return drBdInstName_; }
    void setDrBdInstName(const std::string& drBdInstName) { drBdInstName_ = drBdInstName; }
    /// Asks for the memory banks of an extracted hpfm to be made alike.
    bool getNormalizeMemoryBanks() const { return normalizeMemoryBanks_; }
    void setNormalizeMemoryBanks(bool normalize) { normalizeMemoryBanks_ = normalize; }

    // The platform's own ids
    std::uint32_t getDesignID() const { return designIds_.getDesignID(); }
    void setDesignID(std::uint32_t id) { designIds_.setDesignID(id); }
    std::uint32_t getParentID() const { return designIds_.getParentID(); }
    void setParentID(std::uint32_t id) { designIds_.setParentID(id); }
    std::uint32_t getNodeID() const { return designIds_.getNodeID(); }
    void setNodeID(std::uint32_t id) { designIds_.setNodeID(id); }
    std::uint32_t getFunctionID() const { return designIds_.getFunctionID(); }
    void setFunctionID(std::uint32_t id) { designIds_.setFunctionID(id); }
    std::uint32_t getVCENodeID() const { return designIds_.getVCENodeID(); }
    void setVCENodeID(std::uint32_t id) { designIds_.setVCENodeID(id); }
    std::uint32_t getVCEUniqueID() const { return designIds_.getVCEUniqueID(); }
    void setVCEUniqueID(std::uint32_t id) { designIds_.setVCEUniqueID(id); }
    std::uint32_t getVCEPuID() const { return designIds_.getVCEPuID(); }
    void setVCEPuID(std::uint32_t id) { designIds_.setVCEPuID(id); }

    /// "synth", "impl" and "pre_synth" as values; any other text is unknown_state. Setting any other value clears the text.
    PlatformState getState() const;
    void setState(PlatformState state);

    /// Expandable, without partial reconfiguration and meant for a data centre, in the state named; isFlatShell: in either.
    bool isPreSynthFlatShell() const;
    bool isSynthFlatShell() const;
    bool isFlatShell() const;

    /// Of the core of "fpga0".
    std::string getReconfigModuleName() const;

    bool hasScalableClocks() const;
    bool hasUserDefinedScalableClocks() const;
    /// Looks at the system clocks only, not at those of a device.
    bool hasFixedClocks() const;

    /// Largest data width, a negative one counting as 0.
    int getBusInterfaceMaxDataWidth() const;
    /// How many bus interfaces of type "aximm" are masters or slaves, and how many are interrupts.
    unsigned getMaxAXIMMManagers() const;
    unsigned getMaxAXIMMSubordinates() const;
    unsigned getMaxInterrupts() const;

    bool hasSimContent() const;

    // HBM banks, as the hpfm lists them
    void setHBMPresent() { hbmPresent_ = true; }
    bool isHBMPresent() const { return hbmPresent_; }
    /// Counts one bank. All banks belong to one instance; one of a second instance is reported and not counted.
    void updateHBMBankInfo(const std::string& instanceName, bool isDefault);
    std::uint64_t getHBMBankCount() const { return hbmBankCount_; }
    std::uint64_t getHBMDefaultBankCount() const { return hbmDefaultBankCount_; }
    const std::string& getHBMInstanceName() const { return hbmInstanceName_; }
    /// Writes advice to the stream when only some of the HBM banks are default ones.
    void issueNormalizeMemoryBanksMessage(std::ostream& out) const;

    // Reconfigurable partitions and modules
    HZEPReconfigPartition* addReconfigPartition();
    const std::vector<HZEPReconfigPartition*>& getReconfigPartitions() const { return reconfigPartitions_.items(); }
    /// First partition of this node id, else null.
    HZEPReconfigPartition* findReconfigPartition(std::uint32_t nodeId) const;
    /// Loads the whole platform file; its exceptions pass. 0 when it has no hardware platform.
    static std::uint32_t getNodeIDFromKar(const std::string& file);
    bool isValidRmKar(const std::string& file) const;
    /// Every file is a module for a partition of this platform, no two for the same one.
    bool validateRmKarFiles(const std::vector<std::string>& files) const;

    HZEPDesignIPInstance* addDesignIPInstance();
    const std::vector<HZEPDesignIPInstance*>& getDesignIPInstances() const { return designIpInstances_.items(); }

    /// Gives the hardware database of that name, made from the archive's hardware definition unless it is there already; null
    /// when it can't be made. With module files: of a static platform with its modules. The host's manager owns it.
    HostHwDb* createHwDb() const;
    HostHwDb* createHwDb(const std::string& name) const;
    HostHwDb* createHwDb(const std::vector<std::string>& rmFiles) const;
    HostHwDb* createHwDb(const std::string& name, const std::vector<std::string>& rmFiles) const;

    // Vector engines
    const HZEPVceHardware& getVceHardware() const { return vceHardware_; }
    HZEPVceHardware& getVceHardware() { return vceHardware_; }
    /// The pointer lives until the next partition is added.
    HZEPVcePartition* addVcePartition();
    HZEPVcePartition* addVcePartition(int startColumn, int numColumns);
    /// Reads a partition file into this platform. Raises HostAlgException when it can't be read or is malformed.
    void parseVCEPartitions(const std::string& file);
    /// A platform that is not expandable keeps its partitions in its vector engine project, read here once and on first use.
    /// A project without them leaves the list empty; malformed ones raise HostAlgException.
    void initVcePartitions() const;
    bool hasVcePartitions() const;
    std::vector<HZEPVcePartition>& getVcePartitions();
    const std::vector<HZEPVcePartition>& getVcePartitions() const;
    /// Any partition has a direct sub-partition of this interface id.
    bool hasVcePartition(const std::string& plInterfaceId) const;
    /// First partition of this instance among those read so far, else one and the same empty partition.
    const HZEPVcePartition& findVcePartition(const std::string& vceInst) const;

    // Names of the metadata entries, made of the archive's extension: for "plat.kar" "kar.json", "alt_kar.json", "kar.xml" and the
    // same below "hw_emu/". All are "" without an extension, but the alternate name, which then is "alt_".
    std::string getPlatformExt() const;
    std::string getJsonFileName() const;
    std::string getAltJsonFileName() const;
    /// For a child hardware emulation platform the name below "hw_emu/".
    std::string getXmlFileName() const;
    static const std::string& getHwEmuDir();
    std::string getHwEmuJsonFileName() const;
    std::string getAltHwEmuJsonFileName() const;
    std::string getHwEmuXmlFileName() const;
    /// The archive holds JSON metadata of a hardware emulation platform below "hw_emu/".
    bool containsChildHardwareEmuPlatform() const;

    // Writing. Each operation rewrites the archive once: a crash or failure at any moment leaves the old archive or the new one, whole.
    // The metadata become this platform's document, and what that doesn't tell is lost: keys that no reader knows, and those that are
    // written and never read, such as "description", ports, connectors, drivers and "resetRef" of what was read from JSON. Defaults are
    // filled in, and so are the interfaces of the archive's hardware platform file. It is always the archive's own metadata that is
    // written: called for a child hardware emulation platform, the child's document takes the place of its parent's.
    // HZEPArchiveEdit::addFile adds a file and keeps all that. A document that could not be read again raises HostDataException.
    /// Adds a file to the archive, lists it in place of all of that type, and brings the metadata and the digest up to date. Raises
    /// HostAlgException without an archive to write to, HostUserException when the file or the archive can't be opened, and what
    /// toJSON and HostZipUpdate raise; the list may then name the file already.
    void archiveFile(const std::string& fileType, const std::string& entryName, const std::string& sourceFile);
    /// Replaces the archive's JSON metadata by this platform's document; does nothing without an archive. Raises as archiveFile does.
    void writeToJSON();
    /// Stamps the archive with the digest of HostZip::attachDigestEn.
    void attachDigest() const;

    // Extraction: true when the entry was copied to `outFile`, whose directory is made. Without the entry nothing is created.
    /// The files listed as "DR_BD", "EMU_XML" and "EMU_JSON"; below "hw_emu/" for a child hardware emulation platform.
    bool extractDrBdFile(const std::string& outFile) const;
    bool extractEmuXmlFile(const std::string& outFile) const;
    bool extractEmuJsonFile(const std::string& outFile) const;
    /// The files listed as "NOC_TRAFFIC" and "NOC_SOLUTION", likewise.
    bool extractNTSFile(const std::string& outFile) const;
    bool extractNCRFile(const std::string& outFile) const;
    /// The vector engine project; a file that stands there already is taken for it.
    bool extractVCEPRJFile(const std::string& outFile) const;
    /// Files out of the vector engine project; the first two are also found where older archives list them.
    bool extractLARCHFile(const std::string& outFile) const;
    bool extractINTFCSTFile(const std::string& outFile) const;
    bool extractINTFSOLFile(const std::string& outFile) const;
    bool extractVCECSTFile(const std::string& outFile) const;
    bool extractVCEMetadataFile(const std::string& outFile) const;
    /// "VCE_PL_INTF_ID_STR" of the vector engine project's metadata, "" when there is none.
    std::string getVCEPlInterfaceIDAsString() const;
    /// Puts the names and values of a file's "MetaData" into the map, later ones over earlier ones. A file that is missing or no JSON
    /// changes nothing.
    static void parseMetaData(const std::string& file, std::map<std::string, std::string>& map);

    /// An entry of any archive.
    bool extract(const std::string& entry, const std::string& zipFile, const std::string& outFile) const;
    /// The entry listed under a type, as it is named there.
    bool extractFile(const std::string& fileKey, const std::string& outFile) const;
    /// An entry of this platform's archive; below "hw_emu/" for a child hardware emulation platform.
    bool extractFileFromPlatform(const std::string& entry, const std::string& outFile) const;
    /// The file listed as "HPFM", below "hw_emu/" for a child hardware emulation platform. With getNormalizeMemoryBanks a file written
    /// as "*.hpfm" gets its memory banks made alike; raises HostXMLException when that can't be written.
    bool extractHPFMFile(const std::string& outFile) const;

protected:
    /// The text of an entry of the archive as it is, or as archiveFile is about to make it; "" without the entry.
    std::string readEntry_(const std::string& entry) const;

private:
    friend class HZEPArchiveEdit;
    /// Lists the file as archiveFile does, and gives the document with it.
    std::string renderWith_(const std::string& operation, const std::string& fileType, const std::string& entryName,
                            const std::string& sourceFile);
    std::size_t getMemoryResourceBusInterfacesIndexed_(BusInterfaces& out) const;
    std::size_t getMemoryResourceBusInterfacesNonIndexed_(BusInterfaces& out) const;
    BusInterfaces getMemoryInterfaces_() const;
    bool isUniqueMemoryType_(const std::string& type) const;
    const HZEPHardwareBusInterface* findMemoryBank_(const std::string& type, unsigned index) const;
    unsigned countBusInterfaces_(const char* type, const char* mode) const;
    bool isFlatShellIn_(PlatformState state) const;
    bool hasHardwareDef_() const;
    std::string makeEntryName_(const std::string& prefix, const std::string& extension) const;
    void writeVcePartitions(zep_platform::JSONObjectWriter& writer) const;
    void writeResources_(zep_platform::JSONObjectWriter& writer) const;
    void writeSystemClocks_(zep_platform::JSONObjectWriter& writer) const;

    bool unifiedPlatform_ = false;
    bool expandable_ = true;
    bool supportsSWEmulation_ = true;
    bool supportsHardware_ = true;
    bool supportsHWEmulation_ = false;
    bool isHWEmuPlatform_ = false;
    bool isChildHardwareEmuPlatform_ = false;
    bool supportsTwoHwEmuBd_ = false;
    bool usesNIFD_ = false;
    HZEPDesignIntentStorage designIntent_;
    mutable int memoryResourceIndexState_ = 2;
    bool usesPR_ = true;
    std::string platformState_;
    std::string vendor_;
    std::string boardId_;
    std::string name_;
    std::string description_;
    std::string detailedDescription_;
    std::string platformFile_;
    std::string hpfmString_;
    mutable std::string hwDbName_;
    int defaultClkId_ = 0;
    int bramCount_ = 0;
    int dspCount_ = 0;
    int lutCount_ = 0;
    int ffCount_ = 0;
    int registerCount_ = 0;
    std::string generatedName_;
    std::string generatedVersion_;
    std::uint32_t generatedChangeList_ = 0;
    std::string generatedIpChangeList_;
    std::string generatedSharedDataChangeList_;
    std::string generatedTimestamp_;
    std::string flashInterfaceType_;
    std::string flashOffsetAddress_;
    std::string flashSize_;
    std::string idCode_;
    std::string extendedIdCode_;
    bool generatedByLink_ = false;
    bool generatedBySwEmuLink_ = false;
    bool hasExternalSources_ = false;
    bool hasMDAContent_ = false;
    HZEPOwnedList<HZEPHardwareIPParam> ipParams_;
    HZEPOwnedList<HZEPHardwareNocConnectivity> nocConnectivity_;
    HZEPOwnedList<HZEPHardwareBusInterface> busInterfaces_;
    HZEPOwnedList<HZEPSystemClock> systemClocks_;
    HZEPOwnedList<HZEPHardwareFeatureRom> featureRoms_;
    HZEPOwnedList<HZEPDesignIPInstance> designIpInstances_;
    bool static_ = false;
    bool isRM_ = false;
    std::string drBdInstName_;
    HZEPReconfigPartition designIds_;
    HZEPOwnedList<HZEPReconfigPartition> reconfigPartitions_;
    HZEPVceHardware vceHardware_;
    mutable std::vector<HZEPVcePartition> vcePartitions_;
    mutable bool vcePartitionsLoaded_ = false;
    std::string entryToCome_;
    std::string sourceToCome_;
    bool normalizeMemoryBanks_ = false;
    bool hbmPresent_ = false;
    std::uint64_t hbmBankCount_ = 0;
    std::uint64_t hbmDefaultBankCount_ = 0;
    std::string hbmInstanceName_;
};
