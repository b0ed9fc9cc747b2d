// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "NativeCatalogService.h"

#include "HZEPHardwarePlatform.h"
#include "HZEPJSONText.h"
#include "HZEPPlatform.h"
#include "HZEPReconfigurablePartition.h"
#include "HostErrors.h"
#include "HostText.h"
#include "NativePlatformRepoService.h"
#include "PlatformLoader.h"

#include <boost/property_tree/ptree.hpp>

#include <iostream>
#include <optional>
#include <sstream>
#include <vector>

using boost::property_tree::ptree;

namespace zep::platform {

namespace {

void sayNotLoaded() {
    std::cout << "Error: failed to load platform" << std::endl;
}

std::string toText(bool value) {
    return value ? "true" : "false";
}

std::string render(const ptree& tree) {
    std::ostringstream text;
    HZEPJSONText::write(text, tree);
    return HostText::toUtf8(text.str()); // paths may be any bytes
}

void putHpfmFile(ptree& out, const char* key, const HZEPHardwarePlatform& hardware) {
    if (const std::string file = hardware.getFile("HPFM"); !file.empty())
        out.put(key, "<DSA>/" + file);
}

void putClockCount(ptree& out, const char* key, const HZEPHardwarePlatform& hardware) {
    std::vector<HZEPSystemClock*> clocks;
    hardware.getSystemClocks(clocks);
    out.put(key, std::to_string(clocks.size()));
}

ptree describePartition(const HZEPReconfigurablePartition& partition) {
    ptree out;
    out.put("platformHwFile", partition.getHardwarePlatformFile());
    if (const HZEPHardwarePlatform* hardware = partition.getHardwarePlatform()) {
        putHpfmFile(out, "hpfmFile", *hardware);
        putClockCount(out, "systemClockCount", *hardware);
    }
    out.put("platformHwEmuFile", partition.getHardwareEmulationPlatformFile());
    if (const HZEPHardwarePlatform* emulation = partition.getHardwareEmulationPlatform()) {
        putHpfmFile(out, "hwEmuHpfmFile", *emulation);
        putClockCount(out, "hwEmuSystemClockCount", *emulation);
    }
    return out;
}

ptree describePartitions(const HZEPPlatform& platform) {
    std::vector<HZEPReconfigurablePartition*> partitions;
    platform.getReconfigurablePartitions(partitions);
    ptree list;
    for (const HZEPReconfigurablePartition* partition : partitions)
        list.push_back({"", describePartition(*partition)});
    return list;
}

} // namespace

CatalogService::~CatalogService() = default;
NativeCatalogService::~NativeCatalogService() = default;

std::string NativeCatalogService::getAllAsJsonStr(const std::string& repoPaths, bool all, bool) const {
    std::vector<std::string> files;
    NativePlatformRepoService().getZpfmFiles("", repoPaths, files);
    ptree root;
    ptree& platforms = root.add_child("platforms", ptree());
    for (const std::string& file : files) {
        std::optional<PlatformLoader> loader;
        try {
            loader.emplace(file, PlatformLoader::PreferAlternateJson);
        } catch (const zep_platform::PlatformParseException&) {
            sayNotLoaded();
        } catch (const HostFileNotFoundException&) {
            sayNotLoaded();
        }
        ptree platform;
        if (loader && getPlatformInfo_(&*loader, platform, all))
            platforms.push_back({"", ptree()})->second.swap(platform);
    }
    return render(root);
}

std::string NativeCatalogService::getAsJsonStr(const std::string& platformFile, bool all, bool reserved) const {
    PlatformLoader loader(platformFile, PlatformLoader::PreferAlternateJson);
    return getAsJsonStr(&loader, all, reserved);
}

std::string NativeCatalogService::getAsJsonStr(PlatformLoader* loader, bool all, bool) const {
    ptree tree;
    return getPlatformInfo_(loader, tree, all) ? render(tree) : "";
}

std::string NativeCatalogService::getValue(const std::string& platformFile, const std::string& keyPath) const {
    PlatformLoader loader(platformFile, PlatformLoader::PreferAlternateJson);
    return getValue(&loader, keyPath);
}

std::string NativeCatalogService::getValue(PlatformLoader* loader, const std::string& keyPath) const {
    if (!loader || keyPath.empty())
        return "";
    const std::string text = getAsJsonStr(loader, true, true);
    if (text.empty())
        return "";
    ptree tree;
    HZEPJSONText::read(text, tree);
    const auto node = tree.get_child_optional(keyPath);
    if (!node) {
        // The word is what callers of old look for.
        std::cout << "error: key path '" << keyPath << "' doens't exist" << std::endl;
        return "";
    }
    return node->empty() ? node->data() : "";
}

bool NativeCatalogService::getPlatformInfo_(PlatformLoader* loader, ptree& out, bool all) const {
    if (!loader)
        return false;
    const auto platform = loader->load();
    if (!platform) {
        sayNotLoaded();
        return false;
    }
    if (platform->isHidden())
        return false;

    const HZEPHardwarePlatform* hardware = static_cast<const HZEPPlatform&>(*platform).getHardwarePlatform();
    out.put("baseName", platform->getPlatformBaseName());
    out.put("version", platform->getVersion());
    out.put("type", platform->getTypeString());
    out.put("dataCenter", toText(platform->getDesignIntentDataCenter()));
    out.put("embedded", toText(platform->getDesignIntentEmbedded()));
    out.put("externalHost", toText(platform->getDesignIntentExternalHost()));
    out.put("serverManaged", toText(platform->getDesignIntentServerManaged()));
    out.put("platformState", hardware ? hardware->getPlatformState() : std::string());
    out.put("usesPR", toText(hardware && hardware->usesPR()));
    out.put("platformFile", platform->getPlatformFile());
    if (!all)
        return true;

    out.put("platformHwFile", platform->getHardwarePlatformFile());
    out.put("platformHwEmuFile", platform->getHardwareEmuPlatformFile());
    if (platform->hasReconfigurablePartitions())
        out.add_child("reconfigurablePartitions", describePartitions(*platform));
    out.put("platformSwFile", platform->getSoftwarePlatformFile());
    if (hardware) {
        putHpfmFile(out, "hpfmFile", *hardware);
        putClockCount(out, "systemClockCount", *hardware);
    } else {
        out.put("systemClockCount", std::string("0"));
    }
    out.put("partArchitecture", hardware ? hardware->getFpgaPart() : std::string());

    std::string reason;
    out.put("warranty", toText(isUnderWarranty(loader, reason, "")));
    if (!reason.empty())
        out.put("warrantyReason", reason);
    out.put("hardware", toText(platform->supportsHardware()));
    out.put("hardwareEmulation", toText(platform->supportsHWEmulation()));
    out.put("twoHwEmuBd", toText(platform->supportsTwoHwEmuBd()));
    out.put("softwareEmulation", toText(platform->supportsSWEmulation()));
    return true;
}

} // namespace zep::platform
