// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HZEPExport.h"
#include "HZEPHardwarePlatform.h"
#include "HZEPPlatform.h"
#include "HZEPSoftwarePlatform.h"
#include "HostBoardDataManager.h"

#include <cstddef>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

class HPLBoard;
class HZEPSystemConfig;

/// One platform for a tool that needn't know where it came from. Questions go to the platform, to its effective hardware platform or to
/// its software platform, whose headers tell what they answer and raise; where one of these is missing they answer false, 0, null or
/// "" and send nothing. Lists are appended to what `out` holds. Pointers handed out belong to the platform.
class HZEP_EXPORT HZEPPlatformHelper {
    using Hw = HZEPHardwarePlatform;
    using Sw = HZEPSoftwarePlatform;

public:
    /// The platform stays the caller's and outlives the helper.
    explicit HZEPPlatformHelper(HZEPPlatform* platform);
    /// Loads the file of that name, if there is one, and keeps its platform alive; nothing is raised, and a file that doesn't load
    /// leaves the helper not valid. Without such a file, the platform that the global manager finds by that name.
    HZEPPlatformHelper(const std::string& name, const std::vector<std::string>& boardRepoPaths);
    virtual ~HZEPPlatformHelper();
    HZEPPlatformHelper(const HZEPPlatformHelper&) = delete;
    HZEPPlatformHelper& operator=(const HZEPPlatformHelper&) = delete;

    /// Null when the helper isn't valid.
    HZEPPlatform* getPlatform() const { return loaded_ ? loaded_.get() : platform_; }
    bool isValid() const { return getPlatform() != nullptr; }

    // The platform
    bool isUnified() const { return ask_(&HZEPPlatform::isUnified); }
    bool isUnifiedPlatform() const { return isUnified(); }
    bool isExpandablePlatform() const { return ask_(&HZEPPlatform::isExpandable); }
    bool isFixedPlatform() const { return ask_(&HZEPPlatform::isFixed); }
    bool isPartialPlatform() const { return ask_(&HZEPPlatform::isPartial); }
    bool hasSimContent() const { return ask_(&HZEPPlatform::hasSimContent); }
    std::string getVendor() const { return ask_(&HZEPPlatform::getVendor); }
    std::string getLibrary() const { return ask_(&HZEPPlatform::getLibrary); }
    std::string getName() const { return ask_(&HZEPPlatform::getName); }
    std::string getVersion() const { return ask_(&HZEPPlatform::getVersion); }
    std::string getDescription() const { return ask_(&HZEPPlatform::getDescription); }
    std::string getUniqueName() const { return ask_(&HZEPPlatform::getUniqueName); }
    std::string getDeviceName() const { return ask_(&HZEPPlatform::getDeviceName); }
    std::string getPlatformDir() const { return ask_(&HZEPPlatform::getPlatformDir); }
    std::string getPlatformFile() const { return ask_(&HZEPPlatform::getPlatformFile); }
    std::string getPlatformBaseName() const { return ask_(&HZEPPlatform::getPlatformBaseName); }
    std::string getSoftwarePlatformFile() const { return ask_(&HZEPPlatform::getSoftwarePlatformFile); }
    void getTargetCategories(std::vector<std::string>& out) const { ask_(&HZEPPlatform::getTargetCategories, out); }
    /// What the platform itself lists; no board file is asked.
    bool hasDimmConnectors() const { return ask_(&HZEPPlatform::hasDimmConnectors); }
    void getDimmConnectors(std::vector<std::string>& out) const { ask_(&HZEPPlatform::getDimmConnectors, out); }

    // Its hardware
    std::string getHostArch() const { return ask_(&Hw::getHostArch); }
    std::string getInterfaceDesc() const { return ask_(&Hw::getInterfaceDesc); }
    std::string getBoardId() const { return ask_(&Hw::getBoardId); }
    std::string getPlatformBoardRepo() const { return ask_(&Hw::getBoardRepo); }
    void getBoardImgZipEntries(std::vector<std::string>& out) const { ask_(&Hw::getBoardImgZipEntries, out); }
    std::string getFpgaDevice() const { return ask_(&Hw::getFpgaDevice); }
    void getValidSLRNames(std::vector<std::string>& out) const { ask_(&Hw::getValidSLRNames, out); }
    int getBRAMCount() const { return ask_(&Hw::getBRAMCount); }
    int getDSPCount() const { return ask_(&Hw::getDSPCount); }
    int getFFCount() const { return ask_(&Hw::getFFCount); }
    int getLUTCount() const { return ask_(&Hw::getLUTCount); }
    unsigned getNumDDRs() const { return ask_(&Hw::getNumDDRs); }
    unsigned getNumComputeUnits() const { return ask_(&Hw::getNumComputeUnits); }
    void getAllResources(std::vector<std::string>& types, std::vector<std::string>& counts) const {
        ask_(&Hw::getAllResources, types, counts);
    }
    std::string getClockFrequency(const std::string& name) const { return ask_(&Hw::getClockFrequency, name); }
    std::string getClockId(const std::string& name) const { return ask_(&Hw::getClockId, name); }
    std::string getDefaultClockFrequency() const { return ask_(&Hw::getDefaultClockFrequency); }
    std::string getDefaultClockId() const { return ask_(&Hw::getDefaultClockId); }
    std::string getPlatformFrequency(int id) const { return ask_(&Hw::getPlatformFrequency, id); }
    void getAllClockFrequencies(std::vector<std::string>& names, std::vector<std::string>& frequencies) const {
        ask_(&Hw::getAllClockFrequencies, names, frequencies);
    }
    void getCpuClockNames(std::vector<std::string>& out) const { ask_(&Hw::getCpuClockNames, out); }
    void getSystemClockNames(std::vector<std::string>& out) const { ask_(&Hw::getSystemClockNames, out); }
    std::string getMemType() const { return ask_(&Hw::getMemType); }
    std::string getMemSize() const { return ask_(&Hw::getMemSize); }
    bool isMemoryResourceIndexed() const { return ask_(&Hw::isMemoryResourceIndexed); }
    unsigned getUniqueMemoryTypeCount() const { return ask_(&Hw::getUniqueMemoryTypeCount); }
    unsigned getUniqueMemoryTypeStrings(std::vector<std::string>& out) const { return ask_(&Hw::getUniqueMemoryTypeStrings, out); }
    unsigned getMemoryTypeCount(const std::string& type) const { return ask_(&Hw::getMemoryTypeCount, type); }
    unsigned getMemoryIndex(const std::string& type, unsigned index) const { return ask_(&Hw::getMemoryIndex, type, index); }
    std::string getMemorySize(const std::string& type, unsigned index) const { return ask_(&Hw::getMemorySize, type, index); }
    std::string getMemorySLR(const std::string& type, unsigned index) const { return ask_(&Hw::getMemorySLR, type, index); }
    /// Composed name of the first device's part, for example "tlv9pz-fsgd2104-2-e". Both operations are the same.
    std::string getFpgaPart() const;
    std::string getFpgaPartAsFields() const { return getFpgaPart(); }

    // Its software
    HZEPSystemConfig* getDefaultSystemConfig() const { return ask_(&Sw::getDefaultSystemConfig); }
    HZEPSystemConfig* getSystemConfigByName(const std::string& name) const { return ask_(&Sw::getSystemConfigByName, name); }
    std::size_t getSysConfigNames(std::vector<std::string>& out, const std::string& libraryType) const {
        return ask_(&Sw::getSystemConfigNames, out, libraryType);
    }
    bool isSystemConfigSupported(const std::string& name) const { return ask_(&Sw::isSystemConfigSupported, name); }
    bool isRuntimeSupported(const std::string& runtime) const { return ask_(&Sw::isRuntimeSupported, runtime); }
    bool isQemuSupported(const std::string& config) const;
    /// Of the configuration's processor group of that name when its operating system is exactly `osName`, else "".
    std::string getIncludePaths(const std::string& config, const std::string& processorGroup, const std::string& osName) const;
    std::string getLibraryPaths(const std::string& config, const std::string& processorGroup, const std::string& osName) const;

    /// Runtimes of a configuration, or with an empty name of all; without a software platform the design intent decides.
    void getRuntimes(const std::string& config, std::vector<std::string>& out) const;
    void getRuntimesByPrettyName(const std::string& config, std::vector<std::string>& out) const;
    std::size_t getNumRuntimes(const std::string& config) const;
    /// The default configuration has more than one.
    bool supportsMultipleRuntimes() const;

    /// The design intent is embedded; so is the second.
    bool isProcessorGroupRelevant() const { return ask_(&HZEPPlatform::getDesignIntentEmbedded); }
    bool isLinuxRootFSPathRelevant() const { return isProcessorGroupRelevant(); }
    /// Embedded, for a unified platform; else the host is attached over "axi".
    bool hasBootImg() const;

    // Board files are looked for below these paths. The getter replaces what the list held.
    void getBoardRepoPaths(std::vector<std::string>& paths) const { paths = boardRepoPaths_; }
    void setBoardRepoPaths(const std::vector<std::string>& paths);
    void clearBoardRepoPaths() { setBoardRepoPaths({}); }

    // The board's DIMM connectors: those that the hardware platform lists, with the state that it gives them; when it lists none, those of
    // the board file of its board id.
    /// Display name of the first connector that has this name, ignoring case, or is connected to it: its own or the connected one's.
    std::string getConnectorDisplayName(const std::string& name) const;
    void getConnectedDimmConnectors(std::vector<std::string>& names, std::vector<std::string>& connectedNames) const;
    void getLockedDimmConnectors(std::vector<std::string>& out) const;
    /// "name connectedName" of each connected connector in order, joined with blanks, "" for none; the other two take only the locked or
    /// the unlocked ones.
    std::string getBoardConnectionsString() const;
    std::string getLockedBoardConnectionsString() const;
    std::string getUnlockedBoardConnectionsString() const;

    /// Names of the DIMM connectors that fit into the board file's DIMM connector of that name or display name, each once. The paths
    /// hold for this call only; without them, those that were set.
    void getCompatibleConnectors(const std::string& connector, const std::vector<std::string>& boardRepoPaths,
                                 std::vector<std::string>& out) const;
    void getCompatibleConnectors(const std::string& connector, std::vector<std::string>& out) const;

private:
#ifndef SWIG // it reads no member pointers among templates, and private ones are none of its business
    /// The object that an operation of class `Part` is asked of, null when it is missing.
    template <class Part>
    const Part* part_() const {
        const HZEPPlatform* platform = getPlatform();
        if constexpr (std::is_same_v<Part, HZEPPlatform>)
            return platform;
        else if constexpr (std::is_same_v<Part, HZEPHardwarePlatform>)
            return platform ? platform->getHardwarePlatform() : nullptr;
        else
            return platform ? platform->getSoftwarePlatform() : nullptr;
    }

    /// The part's answer, or that of a missing one.
    template <class Part, class Answer, class... Params, class... Args>
    std::remove_cvref_t<Answer> ask_(Answer (Part::*question)(Params...) const, Args&&... args) const {
        if (const Part* part = part_<Part>())
            return (part->*question)(std::forward<Args>(args)...);
        return std::remove_cvref_t<Answer>();
    }

    template <class Answer, class... Params>
    Answer askConnectors_(Answer (HZEPHardwarePlatform::*ofPlatform)(Params...) const, Answer (HPLBoard::*ofBoard)(Params...) const,
                          std::type_identity_t<Params>... args) const;
#endif

    const HostBoard* getBaseBoard_(const HostBoardDataManager& boards) const;
    static const HostBoardComponent* getConnector_(const HostBoard& board, const std::string& name);
    void getCompatibleConnectors_(const std::string& connector, const HostBoardDataManager& boards, std::vector<std::string>& out) const;

    std::shared_ptr<HZEPPlatform> loaded_;
    std::vector<std::string> boardRepoPaths_;
    HZEPPlatform* platform_ = nullptr;
    HostBoardDataManager boardDataManager_;
};
