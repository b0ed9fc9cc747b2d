// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HZEPPlatformUtils.h"

#include "../foundations/OnceList.h"
#include "../hardware/AsciiCase.h"
#include "CanonicalFile.h"
#include "HZEPDevice.h"
#include "HZEPHardwarePlatform.h"
#include "HZEPPlatform.h"
#include "HZEPPlatformHelper.h"
#include "HZEPPlatformMgr.h"
#include "HZEPSoftwarePlatform.h"
#include "HZEPSystemConfig.h"
#include "HostEnv.h"
#include "HostFile.h"

#include <algorithm>
#include <iostream>
#include <iterator>
#include <memory>
#include <unordered_set>

using Platforms = std::vector<HZEPPlatform*>;
using Texts = std::vector<std::string>;
using ascii::equalsIgnoringCase;

namespace {

Platforms currentPlatforms() {
    Platforms platforms;
    if (const HZEPPlatformMgr* manager = HZEPPlatformMgr::getGlobal())
        manager->getPlatforms(platforms);
    return platforms;
}

template <class Matches>
HZEPPlatform* findCurrent(const Matches& matches) {
    const Platforms platforms = currentPlatforms();
    const auto found = std::find_if(platforms.begin(), platforms.end(), [&matches](const HZEPPlatform* p) { return matches(*p); });
    return found == platforms.end() ? nullptr : *found;
}

template <class Matches>
void appendCurrent(Platforms& out, const Matches& matches) {
    const Platforms platforms = currentPlatforms();
    std::copy_if(platforms.begin(), platforms.end(), std::back_inserter(out), [&matches](const HZEPPlatform* p) { return matches(*p); });
}

/// `ask` of the platform of that name; the neutral answer without one.
template <class Ask>
auto askPlatform(const std::string& name, const Ask& ask) {
    const HZEPPlatform* platform = HZEPPlatformUtils::getPlatform(name);
    return platform ? ask(*platform) : decltype(ask(*platform)){};
}

HZEPDevice* firstDevice(const HZEPPlatform& platform) {
    std::vector<HZEPDevice*> devices;
    if (const HZEPHardwarePlatform* hardware = platform.getHardwarePlatform())
        hardware->getDevices(devices);
    return devices.empty() ? nullptr : devices.front();
}

std::string architectureOf(const HZEPPlatform& platform) {
    const HZEPDevice* device = firstDevice(platform);
    return device ? device->getPartArch() : "";
}

bool passes(const std::string& filter, const std::string& value) {
    return filter.empty() || equalsIgnoringCase(filter, value);
}

bool isInCategory(const HZEPPlatform& platform, const std::string& category) {
    Texts categories;
    platform.getTargetCategories(categories);
    return category.empty() ||
           std::any_of(categories.begin(), categories.end(), [&](const std::string& each) { return equalsIgnoringCase(category, each); });
}

bool passesNarrowing(const HZEPPlatform& platform, const std::string& category, const std::string& family, const std::string& vendor) {
    const HZEPHardwarePlatform* hardware = platform.getHardwarePlatform();
    return hardware && isInCategory(platform, category) && passes(family, architectureOf(platform)) &&
           passes(vendor, hardware->getVendor());
}

bool hasIntents(const HZEPDesignIntentStorage& intent, int mask) {
    using Intent = HZEPDesignIntentStorage;
    return (!(mask & Intent::ServerManaged) || intent.getServerManaged()) && (!(mask & Intent::ExternalHost) || intent.getExternalHost()) &&
           (!(mask & Intent::Embedded) || intent.getEmbedded()) && (!(mask & Intent::DataCenter) || intent.getDataCenter());
}

bool hasNameOf(const HZEPPlatform& platform, const std::string& name) {
    return platform.getUniqueName() == name || equalsIgnoringCase(platform.getPlatformBaseName(), name);
}

/// Tells each comparison on the standard output when somebody asked for that.
class Comparison {
public:
    explicit Comparison(const std::string& query) {
        HostEnv::getEnv("GET_PLATFORM_BY_PATH_DEBUG_VAR", &isTold_);
        if (isTold_)
            std::cout << "sZpfmFileCanonical is: " << query << std::endl;
    }
    bool isTold() const { return isTold_; }
    bool tell(const std::string& candidate, bool isMatch) const {
        if (isTold_)
            std::cout << "sPlatFileCanonical is: " << candidate << '\n' << (isMatch ? "Found a match" : "Does not match") << std::endl;
        return isMatch;
    }

private:
    bool isTold_ = false;
};

/// Whether a directory is an install directory, for many directories.
class InstallDirs {
public:
    InstallDirs() { HZEPPlatformUtils::getRootInstallPlatformDirs(roots_); }
    bool contain(const std::string& dir) const {
        return std::any_of(roots_.begin(), roots_.end(), [&dir](const std::string& root) { return dir.starts_with(root); });
    }

private:
    Texts roots_;
};

std::string directoryOf(const HZEPPlatform& platform) {
    return HostFile(platform.getPlatformFile()).getParent();
}

using GetConfigRuntimes = void (HZEPSystemConfig::*)(HostVector<std::string>&) const;
using GetAllRuntimes = void (HZEPSoftwarePlatform::*)(HostVector<std::string>&) const;

void collectRuntimes(const HZEPPlatform& platform, const std::string& config, GetConfigRuntimes ofConfig, GetAllRuntimes ofAll, Texts& out,
                     const char* accelerated, const char* embedded) {
    if (const HZEPSoftwarePlatform* software = platform.getSoftwarePlatform()) {
        if (config.empty())
            (software->*ofAll)(out);
        else if (const HZEPSystemConfig* found = software->getSystemConfigByName(config))
            (found->*ofConfig)(out);
        return;
    }
    if (platform.getDesignIntentDataCenter() || platform.getDesignIntentServerManaged() || platform.getDesignIntentExternalHost())
        out.push_back(accelerated);
    if (platform.getDesignIntentEmbedded())
        out.push_back(embedded);
}

} // namespace

HZEPPlatform* HZEPPlatformUtils::getPlatform(const std::string& name) {
    const HZEPPlatformMgr* manager = HZEPPlatformMgr::getGlobal();
    return manager ? manager->getPlatform(name) : nullptr;
}

bool HZEPPlatformUtils::isKPLPlatform(const std::string& name) {
    return askPlatform(name, [](const HZEPPlatform& platform) {
        return platform.getDesignIntentDataCenter() || platform.getDesignIntentServerManaged() || platform.getDesignIntentExternalHost();
    });
}

bool HZEPPlatformUtils::isWELPlatform(const std::string& name) {
    return askPlatform(name, [](const HZEPPlatform& platform) { return platform.getDesignIntentEmbedded(); });
}

bool HZEPPlatformUtils::isProcessorGroupRelevant(const std::string& name) {
    return isWELPlatform(name);
}

bool HZEPPlatformUtils::isLinuxRootFSPathRelevant(const std::string& name) {
    return isWELPlatform(name);
}

bool HZEPPlatformUtils::isUnifiedPlatform(const std::string& name) {
    return askPlatform(name, [](const HZEPPlatform& platform) { return platform.isUnified(); });
}

bool HZEPPlatformUtils::isExpandablePlatform(const std::string& name) {
    return askPlatform(name, [](const HZEPPlatform& platform) { return platform.isExpandable(); });
}

bool HZEPPlatformUtils::isFixedPlatform(const std::string& name) {
    return !isExpandablePlatform(name);
}

HZEPDevice* HZEPPlatformUtils::getDevice(const std::string& name) {
    return askPlatform(name, firstDevice);
}

std::string HZEPPlatformUtils::getFpgaPart(const std::string& name) {
    const HZEPDevice* device = getDevice(name);
    return device ? device->getPartName() : "";
}

std::string HZEPPlatformUtils::getFpgaPartAsFields(const std::string& name) {
    const HZEPDevice* device = getDevice(name);
    return device ? device->getFpgaPart() : "";
}

HZEPPlatform* HZEPPlatformUtils::getPlatformByZpfmFileBaseName(const std::string& name) {
    return findCurrent([&name](const HZEPPlatform& platform) { return equalsIgnoringCase(platform.getPlatformBaseName(), name); });
}

HZEPPlatform* HZEPPlatformUtils::getPlatformByUniqueName(const std::string& name) {
    HZEPPlatform* found = findCurrent([&name](const HZEPPlatform& platform) { return hasNameOf(platform, name); });
    return found ? found : getPlatformByFilePath(name);
}

void HZEPPlatformUtils::getPlatformsByUniqueName(const std::string& name, Platforms& out) {
    const Comparison comparison(name);
    appendCurrent(out, [&](const HZEPPlatform& platform) { return comparison.tell(platform.getUniqueName(), hasNameOf(platform, name)); });
}

HZEPPlatform* HZEPPlatformUtils::getPlatformByFilePath(const std::string& path) {
    const CanonicalFile wanted(path);
    const Comparison comparison(wanted.text());
    return findCurrent([&](const HZEPPlatform& platform) {
        const std::string file = platform.getPlatformFile();
        return comparison.tell(comparison.isTold() ? HostFile::getCanonicalName(file) : "", wanted.equals(file));
    });
}

void HZEPPlatformUtils::getPlatformsByVBNV(const std::string& vendor, const std::string& board, const std::string& name,
                                           const std::string& version, Platforms& out) {
    appendCurrent(out, [&](const HZEPPlatform& platform) {
        const HZEPHardwarePlatform* hardware = platform.getHardwarePlatform();
        return hardware && hardware->getVendor() == vendor && hardware->getBoardId() == board && hardware->getName() == name &&
               hardware->getVersion() == version;
    });
}

void HZEPPlatformUtils::getLatestPlatformsByVBNV(const std::string& vendor, const std::string& board, const std::string& name,
                                                 const std::string& version, Platforms& out) {
    Platforms found;
    getPlatformsByVBNV(vendor, board, name, version, found);
    filterOutOldPlatforms(found);
    out.insert(out.end(), found.begin(), found.end());
}

void HZEPPlatformUtils::getPlatformsByPart(const std::string& part, Platforms& out) {
    appendCurrent(out, [&part](const HZEPPlatform& platform) { return firstDevice(platform) && architectureOf(platform) == part; });
}

void HZEPPlatformUtils::getPlatformsByDesignIntent(int mask, const std::string& part, const std::string& vendor, const std::string& board,
                                                   bool latestOnly, Platforms& out) {
    Platforms found;
    getPlatformsByPart(part, found);
    std::erase_if(found, [&](const HZEPPlatform* platform) {
        const HZEPHardwarePlatform& hardware = *platform->getHardwarePlatform();
        return !hasIntents(hardware.getDesignIntent(), mask) || (!vendor.empty() && hardware.getVendor() != vendor) ||
               (!board.empty() && hardware.getBoardId() != board);
    });
    if (latestOnly)
        filterOutOldPlatforms(found);
    out.insert(out.end(), found.begin(), found.end());
}

void HZEPPlatformUtils::getPlatformsByCategoryFamilyVendorAndBoard(const std::string& category, const std::string& family,
                                                                   const std::string& vendor, const std::string& board, Platforms& out) {
    std::unordered_set<const HZEPPlatform*> present(out.begin(), out.end());
    appendCurrent(out, [&](const HZEPPlatform& platform) {
        return passesNarrowing(platform, category, family, vendor) && passes(board, platform.getHardwarePlatform()->getBoardId()) &&
               present.insert(&platform).second;
    });
}

void HZEPPlatformUtils::getBoardsByCategoryFamilyAndVendor(const std::string& category, const std::string& family,
                                                           const std::string& vendor, Texts& out) {
    OnceList boards(out);
    for (const HZEPPlatform* platform : currentPlatforms())
        if (passesNarrowing(*platform, category, family, vendor))
            boards.addUnlessEmpty(platform->getHardwarePlatform()->getBoardId());
}

void HZEPPlatformUtils::getBoardsByPartAndVendor(const std::string& part, const std::string& vendor, Texts& out) {
    OnceList boards(out);
    for (const HZEPPlatform* platform : currentPlatforms()) {
        const HZEPDevice* device = firstDevice(*platform);
        const bool isOfPart = part.empty() || (device && (passes(part, device->getPartName()) || passes(part, device->getPartArch())));
        if (isOfPart && passesNarrowing(*platform, "", "", vendor))
            boards.addUnlessEmpty(platform->getHardwarePlatform()->getBoardId());
    }
}

void HZEPPlatformUtils::getSupportedFpgaParts(Texts& out) {
    OnceList parts(out);
    for (const HZEPPlatform* platform : currentPlatforms())
        if (const HZEPDevice* device = firstDevice(*platform))
            parts.addUnlessEmpty(device->getPartName());
}

bool HZEPPlatformUtils::isLatestVersion(const HZEPPlatform* platform) {
    return !HZEPPlatformMgr::getGlobal() || isLatestVersion(platform, currentPlatforms());
}

std::string HZEPPlatformUtils::getPrettyNameForProductType(const std::string& type) {
    if (type == "kelpine")
        return "Kelpine";
    if (type == "dorik")
        return "Dorik";
    return type == "zep" ? "Zep" : "";
}

std::string HZEPPlatformUtils::getPrettyNameForLibType(const std::string& type) {
    if (type == "c-callable")
        return "C-Callable Library";
    if (type == "shared")
        return "Shared Library";
    return type == "static" ? "Static Library" : "";
}

void HZEPPlatformUtils::getAllLibraryTypes(Texts& out) {
    out.insert(out.end(), {"c-callable", "shared", "static"});
}

void HZEPPlatformUtils::getRootInstallPlatformDirs(Texts& dirs) {
    const std::string separator = HostFile::getDirSeparator();
    for (const std::string& root : HostEnv::getHostAppRootList())
        dirs.push_back(HostFile::getCanonicalName(root + separator + "platforms"));
    dirs.push_back(HostFile::getCanonicalName(separator + "opt" + separator + "tolvan" + separator + "platforms"));
}

bool HZEPPlatformUtils::isInstallPlatformDir(const std::string& dir) {
    return InstallDirs().contain(dir);
}

bool HZEPPlatformUtils::isUserPlatform(const std::string& name) {
    return askPlatform(name, [](const HZEPPlatform& platform) { return !isInstallPlatformDir(directoryOf(platform)); });
}

void HZEPPlatformUtils::getAllFactoryPlatformDirs(Texts& dirs) {
    const HZEPPlatformMgr* manager = HZEPPlatformMgr::getGlobal();
    if (!manager)
        return;
    const InstallDirs install;
    OnceList once(dirs);
    for (const std::unique_ptr<HostFwdIter<HZEPPlatform*>> platforms(manager->createPlatformIter()); platforms->hasNext();)
        if (const std::string dir = directoryOf(*platforms->next()); install.contain(dir))
            once.addUnlessEmpty(dir);
}

void HZEPPlatformUtils::getAllUserPlatformDirs(Texts& dirs) {
    Texts factory;
    getAllFactoryPlatformDirs(factory);
    const std::unordered_set<std::string> excluded(factory.begin(), factory.end());
    OnceList once(dirs);
    for (const HZEPPlatform* platform : currentPlatforms())
        if (const std::string dir = directoryOf(*platform); !excluded.count(dir))
            once.addUnlessEmpty(dir);
}

void HZEPPlatformUtils::getUnifiedPlatformDirs(Texts& dirs) {
    const InstallDirs install;
    OnceList once(dirs);
    for (const HZEPPlatform* platform : currentPlatforms())
        if (const std::string dir = platform->getPlatformDir(); platform->isUnified() && !install.contain(dir))
            once.addUnlessEmpty(dir);
}

std::string HZEPPlatformUtils::setUserPlatformDirs(const Texts& dirs) {
    HZEPPlatformMgr* manager = HZEPPlatformMgr::getGlobal();
    if (!manager)
        return "Failed to get Platform Mgr";
    Texts userDirs;
    getAllUserPlatformDirs(userDirs);
    manager->removePlatformsFromDirs(userDirs);
    manager->clearParsingErrorMsgs();
    std::string text = manager->addPlatformsFromDirs(dirs) ? "" : "No Platforms Found.\n\n";
    Texts errors;
    manager->getParsingErrorMsgs(errors);
    for (const std::string& error : errors)
        text += error;
    return text;
}

void HZEPPlatformUtils::getRuntimes(const HZEPPlatform* platform, const std::string& config, Texts& out) {
    if (platform)
        collectRuntimes(*platform, config, &HZEPSystemConfig::getRuntimes, &HZEPSoftwarePlatform::getSupportedRuntimes, out, "ocl", "cpp");
}

void HZEPPlatformUtils::getRuntimesByPrettyName(const HZEPPlatform* platform, const std::string& config, Texts& out) {
    if (platform)
        collectRuntimes(*platform, config, &HZEPSystemConfig::getRuntimesByPrettyName,
                        &HZEPSoftwarePlatform::getSupportedRuntimesByPrettyName, out, "OpenCL", "C/C++");
}

void HZEPPlatformUtils::getRuntimes(const std::string& name, const std::string& config, Texts& out) {
    getRuntimes(getPlatform(name), config, out);
}

void HZEPPlatformUtils::getRuntimesByPrettyName(const std::string& name, const std::string& config, Texts& out) {
    getRuntimesByPrettyName(getPlatform(name), config, out);
}

std::size_t HZEPPlatformUtils::getNumRuntimes(const std::string& name, const std::string& config) {
    Texts runtimes;
    getRuntimes(name, config, runtimes);
    return runtimes.size();
}

bool HZEPPlatformUtils::supportsMultipleRuntimes(const std::string& name, const std::string& config) {
    return config.empty() ? HZEPPlatformHelper(getPlatform(name)).supportsMultipleRuntimes() : getNumRuntimes(name, config) > 1;
}
