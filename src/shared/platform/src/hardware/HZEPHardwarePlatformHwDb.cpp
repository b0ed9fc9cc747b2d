// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HZEPHardwarePlatform.h"

#include "HPLDevice.h"
#include "HZEPPlatform.h"
#include "HostFile.h"
#include "HostHwDb.h"
#include "HostHwDef.h"
#include "HostHwDefUtils.h"
#include "HostHwManager.h"
#include "HostZipSession.h"
#include "HostZipStreams.h"
#include "PlatformLoader.h"

#include <map>
#include <memory>
#include <set>

using zep_platform::PlatformLoader;

namespace {

std::shared_ptr<HZEPPlatform> load(const std::string& file) {
    return PlatformLoader(file, PlatformLoader::PreferAlternateJson).load();
}

/// Instance path of the core of "fpga0", "" without one.
std::string getCoreInstPath(const HZEPHardwarePlatform& hardware) {
    const HPLDevice* device = hardware.getDevice("fpga0");
    return device ? device->getReadOnlyCore().getInstPath() : "";
}

} // namespace

HZEPReconfigPartition* HZEPHardwarePlatform::findReconfigPartition(std::uint32_t nodeId) const {
    for (HZEPReconfigPartition* partition : reconfigPartitions_) {
        if (partition->getNodeID() == nodeId)
            return partition;
    }
    return nullptr;
}

std::uint32_t HZEPHardwarePlatform::getNodeIDFromKar(const std::string& file) {
    const std::shared_ptr<HZEPPlatform> platform = load(file);
    const HZEPHardwarePlatform* hardware = platform ? platform->getHardwarePlatform() : nullptr;
    return hardware ? hardware->getNodeID() : 0;
}

bool HZEPHardwarePlatform::isValidRmKar(const std::string& file) const {
    return HostFile::isRegularFile(file) && findReconfigPartition(getNodeIDFromKar(file));
}

bool HZEPHardwarePlatform::validateRmKarFiles(const std::vector<std::string>& files) const {
    std::set<const HZEPReconfigPartition*> taken;
    for (const std::string& file : files) {
        if (!HostFile::isRegularFile(file))
            return false;
        const HZEPReconfigPartition* partition = findReconfigPartition(getNodeIDFromKar(file));
        if (!partition || !taken.insert(partition).second)
            return false;
    }
    return true;
}

bool HZEPHardwarePlatform::hasHardwareDef_() const {
    const std::string archive = getPlatformFile();
    const HostZipSession session(archive);
    return hoststream::iostreams::zip::is_file(archive, "hwdef.xml") || hoststream::iostreams::zip::is_file(archive, "sysdef.xml");
}

std::string HZEPHardwarePlatform::getHwDbName() const {
    if (!hwDbName_.empty() || !hasHardwareDef_())
        return hwDbName_;
    const std::string archive = getPlatformFile();
    if (HostHwDef* definition = HostHwManager::openDefFile(archive, false, false, "")) {
        if (const HostHwDb* database = HostHwManager::createHardwareDb(definition, archive, true, true, "", 1, false, "", false))
            hwDbName_ = database->getName();
    }
    return hwDbName_;
}

HostHwDb* HZEPHardwarePlatform::getHwDb() const {
    const std::string name = getHwDbName();
    return name.empty() ? nullptr : HostHwManager::getHardwareDb(name, false);
}

HostHwDb* HZEPHardwarePlatform::getHwDb(const std::string& name) const {
    return HostHwManager::getHardwareDb(name, false);
}

HostHwDb* HZEPHardwarePlatform::createHwDb() const {
    return createHwDb("");
}

HostHwDb* HZEPHardwarePlatform::createHwDb(const std::string& name) const {
    if (!name.empty()) {
        if (HostHwDb* database = HostHwManager::getHardwareDb(name, false))
            return database;
    }
    if (!hasHardwareDef_())
        return nullptr;
    auto definition = HostHwDefUtils::getHDF(getPlatformFile(), false, "");
    if (!definition)
        return nullptr;
    return HostHwManager::createHardwareDbFromHDF(std::move(definition), 1, false, "", name, false, false, false, "", false);
}

HostHwDb* HZEPHardwarePlatform::createHwDb(const std::vector<std::string>& rmFiles) const {
    return createHwDb("", rmFiles);
}

HostHwDb* HZEPHardwarePlatform::createHwDb(const std::string& name, const std::vector<std::string>& rmFiles) const {
    if (!hasHardwareDef_() || !isStatic() || !validateRmKarFiles(rmFiles))
        return nullptr;
    if (!name.empty()) {
        if (HostHwDb* database = HostHwManager::getHardwareDb(name, false))
            return database;
    }
    std::map<std::string, std::string> modules;
    for (const std::string& file : rmFiles) {
        const std::shared_ptr<HZEPPlatform> platform = load(file);
        const HZEPHardwarePlatform* hardware = platform ? platform->getHardwarePlatform() : nullptr;
        const std::string instPath = hardware ? getCoreInstPath(*hardware) : "";
        if (!instPath.empty())
            modules[instPath] = file;
    }
    return HostHwManager::createHardwareDb(getPlatformFile(), modules, nullptr, false, true, name, false);
}
