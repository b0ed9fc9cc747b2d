// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HZEPPlatform.h"

#include "HPLPlatform.h"
#include "HZEPHardwarePlatform.h"
#include "HZEPReconfigurablePartition.h"
#include "HZEPSoftwarePlatform.h"
#include "JSONListWriter.h"
#include "JSONObjectWriter.h"

#include <boost/filesystem/path.hpp>

#include <algorithm>
#include <unordered_set>

using zep_platform::JSONListWriter;
using zep_platform::JSONObjectWriter;

HZEPPlatform::HZEPPlatform() = default;

HZEPPlatform::~HZEPPlatform() {
    // One object may have been set in two places.
    std::unordered_set<const HZEPHardwarePlatform*> deleted;
    const auto end = [&deleted](HZEPHardwarePlatform* platform) {
        if (deleted.insert(platform).second)
            delete platform;
    };
    end(hardwarePlatform_);
    reconfigurablePartitions_.clear();
    softwarePlatforms_.clear();
    end(hardwareEmulationPlatform_);
    std::for_each(partitionHardware_.begin(), partitionHardware_.end(), end);
}

const HZEPHardwarePlatform* HZEPPlatform::getHardwarePlatform() const {
    return hardwarePlatform_ ? hardwarePlatform_ : defaultRPHardwarePlatform_;
}

HZEPHardwarePlatform* HZEPPlatform::getHardwarePlatform() {
    return hardwarePlatform_ ? hardwarePlatform_ : defaultRPHardwarePlatform_;
}

const HZEPHardwarePlatform* HZEPPlatform::getHardwareEmulationPlatform() const {
    return hardwareEmulationPlatform_ ? hardwareEmulationPlatform_ : defaultRPHardwareEmulationPlatform_;
}

HZEPHardwarePlatform* HZEPPlatform::getHardwareEmulationPlatform() {
    return hardwareEmulationPlatform_ ? hardwareEmulationPlatform_ : defaultRPHardwareEmulationPlatform_;
}

void HZEPPlatform::addSoftwarePlatform(HZEPSoftwarePlatform* platform) {
    softwarePlatforms_.add(std::unique_ptr<HZEPSoftwarePlatform>(platform));
}

const HZEPSoftwarePlatform* HZEPPlatform::getSoftwarePlatform() const {
    return softwarePlatforms_.empty() ? nullptr : softwarePlatforms_.items().front();
}

HZEPSoftwarePlatform* HZEPPlatform::getSoftwarePlatform() {
    return softwarePlatforms_.empty() ? nullptr : softwarePlatforms_.items().front();
}

void HZEPPlatform::getSoftwarePlatforms(std::vector<HZEPSoftwarePlatform*>& out) const {
    softwarePlatforms_.appendTo(out);
}

void HZEPPlatform::addReconfigurablePartition(HZEPReconfigurablePartition* partition) {
    reconfigurablePartitions_.add(std::unique_ptr<HZEPReconfigurablePartition>(partition));
}

HZEPHardwarePlatform* HZEPPlatform::keepPartitionHardware(std::unique_ptr<HZEPHardwarePlatform> platform) {
    partitionHardware_.push_back(platform.get());
    return platform.release();
}

void HZEPPlatform::getReconfigurablePartitions(std::vector<HZEPReconfigurablePartition*>& out) const {
    out = reconfigurablePartitions_.items();
}

HZEPReconfigurablePartition* HZEPPlatform::getReconfigurablePartition(std::uint32_t id) const {
    const auto& partitions = reconfigurablePartitions_.items();
    const auto found =
        std::find_if(partitions.rbegin(), partitions.rend(), [id](const auto* partition) { return partition->getID() == id; });
    return found == partitions.rend() ? nullptr : *found;
}

HZEPHardwarePlatform* HZEPPlatform::getRPHardwarePlatform(std::uint32_t id) const {
    const HZEPReconfigurablePartition* partition = getReconfigurablePartition(id);
    return partition ? partition->getHardwarePlatform() : nullptr;
}

HZEPHardwarePlatform* HZEPPlatform::getRPHardwareEmulationPlatform(std::uint32_t id) const {
    const HZEPReconfigurablePartition* partition = getReconfigurablePartition(id);
    return partition ? partition->getHardwareEmulationPlatform() : nullptr;
}

HZEPHardwarePlatform* HZEPPlatform::getDefaultRPHardwarePlatform() const {
    return getRPHardwarePlatform(defaultRPId_);
}

HZEPHardwarePlatform* HZEPPlatform::getDefaultRPHardwareEmulationPlatform() const {
    return getRPHardwareEmulationPlatform(defaultRPId_);
}

bool HZEPPlatform::hasRPHardwareEmulationPlatform() const {
    return std::any_of(reconfigurablePartitions_.begin(), reconfigurablePartitions_.end(),
                       [](const HZEPReconfigurablePartition* partition) { return partition->getHardwareEmulationPlatform() != nullptr; });
}

bool HZEPPlatform::supportsHardware() const {
    const HZEPHardwarePlatform* hardware = getHardwarePlatform();
    return hardware && hardware->supportsHardware();
}

bool HZEPPlatform::supportsSWEmulation() const {
    const HZEPHardwarePlatform* hardware = getHardwarePlatform();
    return hardware && hardware->supportsSWEmulation();
}

bool HZEPPlatform::supportsHWEmulation() const {
    if (hasHWEmulationPlatform())
        return true;
    if (hasReconfigurablePartitions())
        return hasRPHardwareEmulationPlatform();
    return hardwarePlatform_ && hardwarePlatform_->supportsHWEmulation();
}

bool HZEPPlatform::supportsTwoHwEmuBd() const {
    return hardwarePlatform_ && hardwarePlatform_->supportsTwoHwEmuBd();
}

bool HZEPPlatform::isHWEmuPlatform() const {
    return hardwarePlatform_ && hardwarePlatform_->isHWEmuPlatform();
}

bool HZEPPlatform::hasDimmConnectors() const {
    return hardwarePlatform_ && hardwarePlatform_->hasDimmConnectors();
}

void HZEPPlatform::getDimmConnectors(std::vector<std::string>& out) const {
    if (hardwarePlatform_)
        hardwarePlatform_->getDimmConnectors(out);
}

bool HZEPPlatform::hasSimContent() const {
    const HZEPHardwarePlatform* hardware = getHardwarePlatform();
    return hardware && hardware->hasSimContent();
}

bool HZEPPlatform::isExpandable() const {
    const HZEPHardwarePlatform* hardware = getHardwarePlatform();
    return hardware && hardware->isExpandable();
}

bool HZEPPlatform::isUnified() const {
    const HZEPHardwarePlatform* hardware = getHardwarePlatform();
    return hardware && hardware->isUnifiedPlatform();
}

bool HZEPPlatform::getDesignIntentDataCenter() const {
    const HZEPHardwarePlatform* hardware = getHardwarePlatform();
    return hardware && hardware->getDesignIntent().getDataCenter();
}

bool HZEPPlatform::getDesignIntentEmbedded() const {
    const HZEPHardwarePlatform* hardware = getHardwarePlatform();
    return hardware && hardware->getDesignIntent().getEmbedded();
}

bool HZEPPlatform::getDesignIntentExternalHost() const {
    const HZEPHardwarePlatform* hardware = getHardwarePlatform();
    return hardware && hardware->getDesignIntent().getExternalHost();
}

bool HZEPPlatform::getDesignIntentServerManaged() const {
    const HZEPHardwarePlatform* hardware = getHardwarePlatform();
    return hardware && hardware->getDesignIntent().getServerManaged();
}

void HZEPPlatform::getTargetCategories(std::vector<std::string>& out) const {
    for (const HZEPHardwarePlatform* hardware : {hardwarePlatform_, defaultRPHardwarePlatform_})
        if (hardware)
            hardware->getTargetCategories(out);
}

std::string HZEPPlatform::getPlatformDir() const {
    return boost::filesystem::path(platformFile_).parent_path().string();
}

std::string HZEPPlatform::getPlatformBaseName() const {
    return boost::filesystem::path(platformFile_).stem().string();
}

std::string HZEPPlatform::getDeviceName() const {
    return partial_ && hardwarePlatform_ ? hardwarePlatform_->getDeviceName() : getPlatformBaseName();
}

bool HZEPPlatform::isHidden() const {
    // The unique name is a path, so that in practice nothing is hidden; kept as callers know it.
    return getUniqueName() == "tolvan:tb700:linux-uart:1.0";
}

std::string HZEPPlatform::getTypeString() const {
    if (!dynamic_cast<const HPLPlatform*>(getHardwarePlatform()))
        return {};
    const bool embedded = getDesignIntentEmbedded();
    if (getDesignIntentDataCenter() || getDesignIntentExternalHost() || getDesignIntentServerManaged())
        return embedded ? "acceleration" : "kelpine";
    return embedded ? "dorik" : "undefined";
}

std::string HZEPPlatform::getTypePrettyString() const {
    const std::string type = getTypeString();
    if (type == "kelpine")
        return "Kelpine";
    if (type == "dorik")
        return "Dorik";
    if (type == "acceleration")
        return "Acceleration";
    return "Undefined";
}

void HZEPPlatform::toJSON(JSONObjectWriter& writer) const {
    writer.addKey("vendor", getVendor());
    writer.addKey("name", getName());
    writer.addKey("description", getDescription());
    writer.addKey("uniqueName", getUniqueName());
    writer.addKey("version", getVersion());
    writer.addKey("type", getTypePrettyString());
    writer.addKey("unified", isUnified());
    writer.addKey("zpfm", isZpfm());
    writer.addKey("hardware", supportsHardware());
    writer.addKey("softwareEmulation", supportsSWEmulation());
    writer.addKey("hardwareEmulation", supportsHWEmulation());
    writer.addKey("hardwareEmuPlatform", isHWEmuPlatform());
    writer.addKey("hidden", isHidden());
    writer.addKey("file", getPlatformFile());
    writer.addKey("hwFile", getHardwarePlatformFile());
    writer.addKey("hwEmuFile", getHardwareEmuPlatformFile());
    writer.addKey("swFile", getSoftwarePlatformFile());
    writer.addKey("directory", getPlatformDir());

    std::vector<std::string> categories;
    getTargetCategories(categories);
    JSONListWriter list;
    for (const std::string& category : categories)
        list.addItem(category);
    writer.addKey("targetCategories", std::move(list));

    writePlatforms_(writer);
}

void HZEPPlatform::writePlatforms_(JSONObjectWriter& writer) const {
    JSONObjectWriter hardware;
    hardware.addKey("hardwarePlatform", hardwarePlatform_);
    if (hasDistinctHardwareEmulationPlatform())
        hardware.addKey("hwEmuPlatform", hardwareEmulationPlatform_);
    if (hasReconfigurablePartitions()) {
        writer.addKey("defaultRPId", std::to_string(defaultRPId_));
        JSONListWriter partitions;
        for (const HZEPReconfigurablePartition* partition : reconfigurablePartitions_)
            partitions.addItem(partition);
        hardware.addKey("reconfigurablePartitions", std::move(partitions));
    }
    writer.addKey("hardwarePlatforms", std::move(hardware));
    writer.addKey("softwarePlatform", getSoftwarePlatform());
}
