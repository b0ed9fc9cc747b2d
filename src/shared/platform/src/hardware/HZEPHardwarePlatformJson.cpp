// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HZEPHardwarePlatform.h"

#include "HostText.h"
#include "ModelJson.h"

using zep_platform::JSONListWriter;
using zep_platform::JSONObjectWriter;

namespace {

void addIfTrue(JSONObjectWriter& writer, const char* key, bool value) {
    if (value)
        writer.addKey(key, true);
}

} // namespace

void HZEPHardwarePlatform::toJSON(JSONObjectWriter& writer) const {
    writer.addKey("vendor", getVendor());
    writer.addKey("boardId", getBoardId());
    writer.addKey("name", getName());
    writer.addKey("description", getDescription());
    writer.addKey("detailedDescription", getDetailedDescription());
    writer.addKey("uniqueName", getUniqueName());
    writer.addKey("fpgaPart", getFpgaPart());
    writer.addKey("fpgaDevice", getFpgaDevice());
    writer.addKey("interfaceDescription", getInterfaceDesc());
    // A path may be any bytes; a document is text.
    writer.addKey("platformFile", HostText::toUtf8(getPlatformFile()));
    writer.addKey("unifiedPlatform", isUnifiedPlatform());
    writer.addKey("expandablePlatform", isExpandable());
    writer.addKey("hardware", supportsHardware());
    writer.addKey("softwareEmulation", supportsSWEmulation());
    writer.addKey("hardwareEmulation", supportsHWEmulation());
    writer.addKey("hardwareEmuPlatform", isHWEmuPlatform());
    if (isExpandable()) {
        writer.addKey("maxAXIMMManagers", std::to_string(getMaxAXIMMManagers()));
        writer.addKey("maxAXIMMSubordinates", std::to_string(getMaxAXIMMSubordinates()));
        writer.addKey("maxInterrupts", std::to_string(getMaxInterrupts()));
    }
    writer.addKey("usesNIFD", usesNIFD());
    addIfTrue(writer, "static", isStatic());
    addIfTrue(writer, "rm", isRM());
    writer.addKey("drBdInstName", getDrBdInstName());
    writer.addKey("generatedName", getGeneratedName());
    writer.addKey("generatedVersion", getGeneratedVersion());
    writer.addKey("generatedChangeList", std::to_string(getGeneratedChangeList()));
    writer.addKey("generatedIpChangeList", getGeneratedIpChangeList());
    writer.addKey("generatedSharedDataChangeList", getGeneratedSharedDataChangeList());
    writer.addKey("generatedTimestamp", getGeneratedTimestamp());
    addIfTrue(writer, "hasExternalSources", hasExternalSources());
    addIfTrue(writer, "hasMDAContent", hasMDAContent());
    addIfTrue(writer, "genLink", isGeneratedByLink());
    addIfTrue(writer, "genSwEmuLink", isGeneratedBySwEmuLink());
    writer.addKey("idCode", getIdCode());
    writer.addKey("extendedIdCode", getExtendedIdCode());
    JSONObjectWriter flash;
    flash.addKey("interfaceType", getFlashInterfaceType());
    flash.addKey("offsetAddress", getFlashOffsetAddress());
    flash.addKey("size", getFlashSize());
    writer.addKey("flash", std::move(flash));
    writer.addKey("designIDs", &designIds_);
    model_json::addObjects(writer, "reconfigPartitionIDs", reconfigPartitions_);
    writer.addKey("vceHardware", &vceHardware_);
    writeVcePartitions(writer);
    model_json::addObjects(writer, "designIpInstances", designIpInstances_);
    writeResources_(writer);
    writeSystemClocks_(writer);
    model_json::addObjects(writer, "ipParameters", ipParams_);
    model_json::addObjects(writer, "busInterfaces", busInterfaces_);
    model_json::addObjects(writer, "nocConnectivity", nocConnectivity_);
    model_json::addObjects(writer, "featureRoms", featureRoms_);
}

void HZEPHardwarePlatform::writeVcePartitions(JSONObjectWriter& writer) const {
    if (!isExpandable())
        return;
    JSONListWriter list;
    for (const HZEPVcePartition& partition : vcePartitions_)
        list.addItem(&partition);
    writer.addKey("vcePartitions", std::move(list));
}

void HZEPHardwarePlatform::writeResources_(JSONObjectWriter& writer) const {
    std::vector<std::string> types;
    std::vector<std::string> counts;
    getAllResources(types, counts);
    JSONListWriter list;
    for (std::size_t i = 0; i < types.size() && i < counts.size(); ++i) {
        JSONObjectWriter item;
        item.addKey("type", types[i]);
        item.addKey("count", counts[i]);
        list.addItem(std::move(item));
    }
    writer.addKey("resources", std::move(list));
}

void HZEPHardwarePlatform::writeSystemClocks_(JSONObjectWriter& writer) const {
    const HZEPSystemClock* defaultClock = getDefaultClock();
    JSONListWriter list;
    for (const HZEPSystemClock* clock : systemClocks_) {
        JSONObjectWriter item;
        item.addKey("default", defaultClock && clock->getName() == defaultClock->getName());
        item.writeObject(*clock);
        list.addItem(std::move(item));
    }
    writer.addKey("systemClocks", std::move(list));
}
