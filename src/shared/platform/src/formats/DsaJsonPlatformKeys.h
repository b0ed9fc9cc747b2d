// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "DsaJsonBusKeys.h"
#include "DsaJsonDeviceKeys.h"
#include "DsaJsonFeatureRomKeys.h"
#include "HPLBoard.h"
#include "HPLFile.h"
#include "HPLInterface.h"
#include "HPLMemory.h"
#include "HPLPCIeId.h"
#include "HPLPlatform.h"
#include "HZEPDesignIntentStorage.h"
#include "HZEPReconfigPartition.h"
#include "HZEPSystemClock.h"
#include "HZEPVceHardware.h"
#include "HZEPVcePartition.h"

#include <boost/algorithm/string/predicate.hpp>

#include <cstdlib>
#include <string_view>

/// The document's root, and what hangs directly below it.
namespace dsa_json {

struct IntentKey : KeyInfo {
    HZEPDesignIntentStorage::Key key;
    /// What is worked out when nothing is stated: partial reconfiguration in use, or the opposite of it.
    bool likeUsesPr;
};

inline constexpr KeyInfo kIntentEntryKeys[] = {{"value", Shape::Flag}, {"explicit", Shape::Flag}};
inline constexpr IntentKey kDesignIntentKeys[] = {
    {{"dataCenter", Shape::Object, &membersOf<kIntentEntryKeys>}, HZEPDesignIntentStorage::DataCenter, true},
    {{"embedded", Shape::Object, &membersOf<kIntentEntryKeys>}, HZEPDesignIntentStorage::Embedded, false},
    {{"externalHost", Shape::Object, &membersOf<kIntentEntryKeys>}, HZEPDesignIntentStorage::ExternalHost, true},
    {{"serverManaged", Shape::Object, &membersOf<kIntentEntryKeys>}, HZEPDesignIntentStorage::ServerManaged, true},
};

/// Only stated values are taken over; the others are worked out afresh, whatever a writer has stored for them.
inline void readDesignIntent(HPLPlatform& platform, Tree& root, const char* name) {
    const bool usesPr = HZEPJSONUtils::getBoolValue(root, "usesPR");
    boost::optional<Tree&> intent = root.get_child_optional(name);
    for (const IntentKey& key : kDesignIntentKeys) {
        boost::optional<Tree&> entry = intent ? intent->get_child_optional(key.name) : boost::none;
        if (HZEPJSONUtils::findKey(entry, "value") && HZEPJSONUtils::getBoolValue(entry, "explicit"))
            platform.setExplicitDesignIntent(key.key, HZEPJSONUtils::getBoolValue(entry, "value"));
        else
            platform.setComputedDesignIntent(key.key, usesPr == key.likeUsesPr);
    }
}

using PcieRow = Keys<HPLPCIeId>;
inline constexpr Key<HPLPCIeId> kPcieKeys[] = {
    PcieRow::text<&HPLPCIeId::setVendor>("vendor"),
    PcieRow::text<&HPLPCIeId::setDevice>("device"),
    PcieRow::text<&HPLPCIeId::setSubsystem>("subsystem"),
    PcieRow::text<&HPLPCIeId::setFeatureId>("featureId"),
};

inline constexpr KeyInfo kConnectorKeys[] = {
    {"name", Shape::Text},          {"displayName", Shape::Text},          {"type", Shape::Text},
    {"connectedName", Shape::Text}, {"connectedDisplayName", Shape::Text}, {"connected", Shape::Flag},
    {"locked", Shape::Flag},
};

using BoardRow = Keys<HPLBoard>;
inline constexpr Key<HPLBoard> kBoardKeys[] = {
    BoardRow::text<&HPLBoard::setName>("name"),
    BoardRow::text<&HPLBoard::setVendor>("vendor"),
    BoardRow::text<&HPLBoard::setPart>("part"),
    BoardRow::text<&HPLBoard::setBoardPart>("boardPart"),
    BoardRow::text<&HPLBoard::setImgFileHdpi>("imageFileHdpi"),
    BoardRow::text<&HPLBoard::setImgFileMdpi>("imageFileMdpi"),
    BoardRow::text<&HPLBoard::setImgFileLdpi>("imageFileLdpi"),
    BoardRow::writtenOnly<kConnectorKeys>("connectors", Shape::List),
    BoardRow::writtenOnly("drivers", Shape::List),
    BoardRow::object<&HPLBoard::getWriteablePCIeId, kPcieKeys>("pcie"),
};

using InterfaceRow = Keys<HPLInterface>;
inline constexpr Key<HPLInterface> kInterfaceKeys[] = {
    InterfaceRow::text<&HPLInterface::setId>("id"),
    InterfaceRow::text<&HPLInterface::setName>("name"),
    InterfaceRow::text<&HPLInterface::setType>("type"),
};

using MemoryRow = Keys<HPLMemory>;
inline constexpr Key<HPLMemory> kMemoryKeys[] = {
    MemoryRow::text<&HPLMemory::setName>("name"),
    MemoryRow::text<&HPLMemory::setType>("type"),
    MemoryRow::text<&HPLMemory::setSize>("size"),
    MemoryRow::optionalNumber<&HPLMemory::setLowestAddress>("lowAddress"),
    MemoryRow::optionalNumber<&HPLMemory::setHighestAddress>("highAddress"),
    // Behind the type, which decides which parameters a memory knows.
    MemoryRow::records<Pair, kNameValueKeys,
                       [](HPLMemory& memory, const Pair& parameter) { memory.addConfigParam(parameter.first, parameter.second); }>(
        "configParams"),
};

struct FileItem {
    std::string name;
    std::string type;
    std::string usedIn;
    std::string processingOrder;
};

inline constexpr Key<FileItem> kFileKeys[] = {
    Keys<FileItem>::text<&FileItem::name>("name"),
    Keys<FileItem>::text<&FileItem::type>("type"),
    Keys<FileItem>::text<&FileItem::usedIn>("usedIn"),
    Keys<FileItem>::text<&FileItem::processingOrder>("processingOrder"),
};

inline void addFile(HPLPlatform& platform, const FileItem& item) {
    HPLFile* file = platform.addFile(item.type, item.name);
    if (!item.usedIn.empty())
        file->setUsedIn(item.usedIn);
    if (!item.processingOrder.empty())
        file->setProcessingOrder(item.processingOrder);
}

using ClockRow = Keys<HZEPSystemClock>;
inline constexpr Key<HZEPSystemClock> kSystemClockKeys[] = {
    ClockRow::text<&HZEPSystemClock::setName>("name"),
    ClockRow::text<&HZEPSystemClock::setOrigName>("origName"),
    ClockRow::text<&HZEPSystemClock::setFrequency>("frequency"),
    ClockRow::text<&HZEPSystemClock::setInstRef>("instRef"),
    ClockRow::text<&HZEPSystemClock::setCompRef>("compRef"),
    ClockRow::text<&HZEPSystemClock::setPeriod>("period"),
    ClockRow::text<&HZEPSystemClock::setNormalizedPeriod>("normalizedPeriod"),
    ClockRow::text<&HZEPSystemClock::setStatus>("status"),
    ClockRow::numberUnlessEmpty<&HZEPSystemClock::setId>("id"),
    Key<HZEPSystemClock>{{"default", Shape::Flag}}, // told to the platform, see readSystemClock
};

/// A clock without an id can't be the default one.
inline void readSystemClock(HPLPlatform& platform, Tree& item) {
    HZEPSystemClock* clock = platform.addSystemClock();
    fill(*clock, item, kSystemClockKeys);
    if (!HZEPJSONUtils::getValue(item, "id").empty() && HZEPJSONUtils::getBoolValue(item, "default"))
        platform.setDefaultClkId(clock->getId());
}

inline constexpr Key<Pair> kResourceKeys[] = {
    Keys<Pair>::text<&Pair::first>("type"),
    Keys<Pair>::text<&Pair::second>("count"),
};

/// Registers are not among them: their count comes from the core.
inline void addResource(HPLPlatform& platform, const Pair& resource) {
    const int count = static_cast<int>(std::strtol(resource.second.c_str(), nullptr, 10));
    if (boost::algorithm::iequals(resource.first, "BRAM"))
        platform.setBRAMCount(count);
    else if (boost::algorithm::iequals(resource.first, "DSP"))
        platform.setDSPCount(count);
    else if (boost::algorithm::iequals(resource.first, "LUT"))
        platform.setLUTCount(count);
    else if (boost::algorithm::iequals(resource.first, "FF"))
        platform.setFFCount(count);
}

using VceRow = Keys<HZEPVceHardware>;
inline constexpr Key<HZEPVceHardware> kShimRowsKeys[] = {
    VceRow::number<&HZEPVceHardware::setStartShimRow>("start"),
    VceRow::number<&HZEPVceHardware::setNumShimRows>("num"),
};
inline constexpr Key<HZEPVceHardware> kCoreRowsKeys[] = {
    VceRow::number<&HZEPVceHardware::setStartCoreRow>("start"),
    VceRow::number<&HZEPVceHardware::setNumCoreRows>("num"),
};
inline constexpr Key<HZEPVceHardware> kMemRowsKeys[] = {
    VceRow::number<&HZEPVceHardware::setStartMemRow>("start"),
    VceRow::number<&HZEPVceHardware::setNumMemRows>("num"),
};
inline constexpr Key<HZEPVceHardware> kVceHardwareKeys[] = {
    VceRow::text<[](HZEPVceHardware& vce, const std::string& arch) { vce.setArch(arch); }>("arch"),
    VceRow::number<&HZEPVceHardware::setNpiBaseAddress>("npiBaseAddress"),
    VceRow::object<std::identity{}, kShimRowsKeys>("shimRows"),
    VceRow::object<std::identity{}, kCoreRowsKeys>("coreRows"),
    VceRow::object<std::identity{}, kMemRowsKeys>("memRows"),
};

std::vector<const KeyInfo*> vcePartitionMembers();
inline constexpr KeyInfo kVcePartitionKeys[] = {
    {"vceInst", Shape::Text}, {"startColumn", Shape::Number}, {"numColumns", Shape::Number},
    {"uuid", Shape::Text},    {"plIntefaceID", Shape::Text},  {"partitions", Shape::List, &vcePartitionMembers},
};
inline std::vector<const KeyInfo*> vcePartitionMembers() {
    return membersOf<kVcePartitionKeys>();
}

using ReconfigRow = Keys<HZEPReconfigPartition>;
inline constexpr Key<HZEPReconfigPartition> kReconfigPartitionKeys[] = {
    ReconfigRow::number<&HZEPReconfigPartition::setDesignID>("designID"),
    ReconfigRow::number<&HZEPReconfigPartition::setParentID>("parentID"),
    ReconfigRow::number<&HZEPReconfigPartition::setNodeID>("nodeID"),
    ReconfigRow::number<&HZEPReconfigPartition::setFunctionID>("functionID"),
    ReconfigRow::writtenOnly("vcengineIDs", Shape::Object),
};

using Root = Keys<HPLPlatform>;
inline constexpr Key<HPLPlatform> kVcEngineIdKeys[] = {
    Root::writtenOnly("plInterfaceID", Shape::Number),
    Root::number<&HPLPlatform::setVCENodeID>("nodeID"),
    Root::number<&HPLPlatform::setVCEUniqueID>("uniqueID"),
    Root::number<&HPLPlatform::setVCEPuID>("puID"),
};
inline constexpr Key<HPLPlatform> kDesignIdKeys[] = {
    Root::number<&HPLPlatform::setDesignID>("designID"),
    Root::number<&HPLPlatform::setParentID>("parentID"),
    Root::number<&HPLPlatform::setNodeID>("nodeID"),
    Root::number<&HPLPlatform::setFunctionID>("functionID"),
    Root::object<std::identity{}, kVcEngineIdKeys>("vcengineIDs"),
};
inline constexpr Key<HPLPlatform> kFlashKeys[] = {
    Root::text<&HPLPlatform::setFlashInterfaceType>("interfaceType"),
    Root::text<&HPLPlatform::setFlashOffsetAddress>("offsetAddress"),
    Root::text<&HPLPlatform::setFlashSize>("size"),
};

/// Each value between the commas; an empty text has none.
inline void addBinaryContentValues(HPLPlatform& platform, const std::string& values) {
    for (std::string::size_type at = 0; at < values.size() + !values.empty();) {
        const std::string::size_type end = std::min(values.find(',', at), values.size());
        platform.addValidBinaryContentValue(values.substr(at, end - at));
        at = end + 1;
    }
}

/// The lists that an archive's hardware platform file may give in place of the document.
inline constexpr char kFiles[] = "files";
inline constexpr char kBusInterfaces[] = "busInterfaces";
inline constexpr char kNocConnectivity[] = "nocConnectivity";

/// A key that is absent is not told to the model in the rows called optional, where a default stands; in the others it is.
inline constexpr Key<HPLPlatform> kPlatformKeys[] = {
    Root::number<&HPLPlatform::setGeneratedChangeList>("generatedChangeList"),
    Root::text<&HPLPlatform::setGeneratedName>("generatedName"),
    Root::text<&HPLPlatform::setGeneratedVersion>("generatedVersion"),
    Root::text<&HPLPlatform::setGeneratedTimestamp>("generatedTimestamp"),
    Root::optionalFlag<&HPLPlatform::setHasExternalSources>("hasExternalSources"),
    Root::optionalFlag<&HPLPlatform::setHasMDAContent>("hasMDAContent"),
    Root::optionalFlag<&HPLPlatform::setGeneratedByLink>("genLink"),
    Root::optionalFlag<&HPLPlatform::setGeneratedBySwEmuLink>("genSwEmuLink"),
    Root::optionalText<&HPLPlatform::setIdCode>("idCode"),
    Root::optionalText<&HPLPlatform::setExtendedIdCode>("extendedIdCode"),
    Root::text<&HPLPlatform::setVendor>("vendor"),
    Root::text<&HPLPlatform::setBoardId>("boardId"),
    Root::text<&HPLPlatform::setName>("name"),
    Root::number<&HPLPlatform::setVersionMajor>("versionMajor"),
    Root::number<&HPLPlatform::setVersionMinor>("versionMinor"),
    Root::text<&HPLPlatform::setHostArch>("hostArchitecture"),
    Root::text<&HPLPlatform::setHostInterface>("hostInterface"),
    Root::text<&HPLPlatform::setPlatformState>("platformState"),
    Root::text<&HPLPlatform::setAcceleratorBinaryContent>("acceleratorBinaryContent"),
    Root::text<&HPLPlatform::setAcceleratorBinaryFormat>("acceleratorBinaryFormat"),
    Root::flag<&HPLPlatform::setUnifiedPlatform>("unifiedPlatform"),
    Root::flag<&HPLPlatform::setDcpFuncStripped>("dcpFunctionStripped"),
    Root::flag<&HPLPlatform::setDcpEncrypt>("dcpEncrypted"),
    Root::text<&HPLPlatform::setTopModuleName>("topModuleName"),
    Root::flag<&HPLPlatform::setUsesNIFD>("usesNIFD"),
    Root::optionalFlag<&HPLPlatform::setSupportsHardware>("hardware"),
    Root::optionalFlag<&HPLPlatform::setSupportsSWEmulation>("softwareEmulation"),
    Root::flag<&HPLPlatform::setSupportsHWEmulation>("hardwareEmulation"),
    Root::flag<&HPLPlatform::setIsHWEmuPlatform>("hardwareEmuPlatform"),
    Root::optionalText<&HPLPlatform::setDefaultOutputType>("defaultOutputType"),
    Root::text<&addBinaryContentValues>("validAcceleratorBinaryContentValues"),
    Root::flag<&HPLPlatform::setUsesPR>("usesPR"),
    Root::flag<&HPLPlatform::setExpandable, true>("expandablePlatform"),
    Key<HPLPlatform>{{"designIntent", Shape::Object, &membersOf<kDesignIntentKeys>}, &readDesignIntent},
    Root::texts<&HPLPlatform::addBvlcCompileXpSwitch>("bvlcCompileXPSwitches"),
    Root::texts<&HPLPlatform::addBvlcLinkXpSwitch>("bvlcLinkXPSwitches"),
    Root::list<&HPLPlatform::addDesignIPInstance, kDesignIpInstanceKeys>("designIpInstances"),
    Root::object<std::identity{}, kFlashKeys>("flash"),
    Root::object<std::identity{}, kDesignIdKeys>("designIDs"),
    Root::list<&HPLPlatform::addReconfigPartition, kReconfigPartitionKeys>("reconfigPartitionIDs"),
    Root::object<[](HPLPlatform& platform) -> HZEPVceHardware& { return platform.getVceHardware(); }, kVceHardwareKeys>("vceHardware"),
    Root::child<[](HPLPlatform& platform, Tree& list) {
        drain(list, [&platform](Tree::value_type& item) { platform.addVcePartition()->fromJSON(item.second); });
    },
                kVcePartitionKeys>("vcePartitions", Shape::List),
    Root::optionalFlag<&HPLPlatform::setStatic>("static"),
    Root::optionalText<&HPLPlatform::setDrBdInstName>("drBdInstName"),
    Root::optionalFlag<&HPLPlatform::setRM>("rm"),
    Root::records<Pair, kResourceKeys, &addResource>("resources"),
    Root::object<&HPLPlatform::getBoard, kBoardKeys>("board"),
    Root::list<&HPLPlatform::addDevice, kDeviceKeys>("devices"),
    Root::list<&HPLPlatform::addInterface, kInterfaceKeys>("interfaces"),
    Root::list<&HPLPlatform::addMemory, kMemoryKeys>("memories"),
    Root::records<FileItem, kFileKeys, &addFile>(kFiles),
    Root::list<&HPLPlatform::addFeatureRom, kFeatureRomKeys>("featureRoms"),
    Root::child<[](HPLPlatform& platform, Tree& list) {
        drain(list, [&platform](Tree::value_type& item) { readSystemClock(platform, item.second); });
    },
                kSystemClockKeys>("systemClocks", Shape::List),
    Root::list<&HPLPlatform::addBusInterface, kBusInterfaceKeys>(kBusInterfaces),
    Root::list<&HPLPlatform::addNocConnectivity, kNocConnectivityKeys>(kNocConnectivity),
    Root::list<&HPLPlatform::addHardwareIPParam, kIpParamKeys>("ipParameters"),
    Root::derived("extensions", Shape::Object),
    Root::writtenOnly("description"),
    Root::writtenOnly("detailedDescription"),
    Root::derived("uniqueName"),
    Root::derived("fpgaPart"),
    Root::derived("fpgaDevice"),
    Root::derived("interfaceDescription"),
    Root::derived("platformFile"),
    Root::derived("maxAXIMMManagers", Shape::Number),
    Root::derived("maxAXIMMSubordinates", Shape::Number),
    Root::derived("maxInterrupts", Shape::Number),
    Root::writtenOnly("generatedIpChangeList"),
    Root::writtenOnly("generatedSharedDataChangeList"),
};

} // namespace dsa_json
