// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HZEPHardwarePlatformMgr.h"

#include "HPLPlatform.h"
#include "HZEPDsaJsonReader.h"
#include "HZEPDsaXmlReader.h"
#include "HostFile.h"
#include "HostMsgMgr.h"
#include "HostPathUtils.h"
#include "HostZipSession.h"

#include <filesystem>
#include <unordered_map>
#include <unordered_set>

namespace fs = std::filesystem;

namespace {

void warn(const char* key, std::vector<std::string> args) {
    HostMsgMgr::getGlobal().send("platform", HostMsgMgr::Warning, key, std::move(args));
}

/// A platform directory holds the platform file and, one directory below, the hardware archive of the same stem.
bool belongsToPlatform(const fs::path& archive) {
    const fs::path full = archive.is_absolute() ? archive : fs::absolute(archive).lexically_normal();
    return HostFile::exists((full.parent_path().parent_path() / full.stem()).string() + ".zpfm");
}

} // namespace

HZEPHardwarePlatform* HZEPHardwarePlatformMgr::addPlatform(const std::string& file) {
    return parseDSAFile_(file).release();
}

std::unique_ptr<HZEPHardwarePlatform> HZEPHardwarePlatformMgr::parseDSAFile_(const std::string& file) {
    const HostZipSession session(file);
    auto platform = std::make_unique<HPLPlatform>();
    if (HZEPDsaJsonReader(platform.get()).parseDSA(file, zep_platform::PlatformLoader::PreferAlternateJson))
        return platform;
    if (!HostPathUtils::exists(file))
        return nullptr;
    platform = std::make_unique<HPLPlatform>();
    if (!HZEPDsaXmlReader(file, platform.get()).parseDSA())
        return nullptr;
    platform->setPlatformFile(HostFile::getCanonicalName(file));
    return platform;
}

void HZEPHardwarePlatformMgr::addPlatformsFromDirs(const std::vector<std::string>& dirs, std::vector<HZEPHardwarePlatform*>& out,
                                                   bool checkVBNV) {
    Found_ found;
    for (const std::string& dir : dirs)
        if (HostFile::exists(dir))
            parseDSAFiles_(dir, found);
    Found_ kept;
    validateParsedPlatforms_(std::move(found), kept, checkVBNV);
    addPlatforms_(std::move(kept), out);
}

void HZEPHardwarePlatformMgr::parseDSAFiles_(const std::string& dir, Found_& found) {
    if (!HostFile::isDir(dir)) {
        warn("@74-1@%s", {"HZEPHardwarePlatformMgr::parseDSAFiles_: '" + dir + "' doesn't exist"});
        return;
    }
    try {
        for (const fs::directory_entry& entry : fs::recursive_directory_iterator(dir)) {
            std::error_code none;
            const fs::path& path = entry.path();
            if (!HZEPHardwarePlatform::isValidPlatformExt(path.extension().string()) || belongsToPlatform(path))
                continue;
            if (!entry.is_regular_file(none)) {
                warn("@75-5@%s%s", {path.string(), HostPathUtils::describe(path.string())});
                continue;
            }
            if (auto platform = parseDSAFile_(path.string()))
                found.push_back(std::move(platform));
        }
    } catch (...) {
        warn("@74-5@%s", {dir});
    }
}

void HZEPHardwarePlatformMgr::validateParsedPlatforms_(Found_ found, Found_& kept, bool checkVBNV) {
    std::unordered_set<std::string> files;
    std::unordered_map<std::string, std::string> fileOfVbnv;
    for (auto& platform : found) {
        const std::string file = platform->getPlatformFile();
        if (!files.insert(file).second) {
            warn("@74-23@%s", {file});
            continue;
        }
        if (const auto* described = dynamic_cast<const HPLPlatform*>(platform.get()); checkVBNV && described) {
            const auto [same, isNew] = fileOfVbnv.emplace(described->getVBNV(), file);
            if (!isNew) {
                warn("@74-17@%s%s%s", {same->first, same->second, file});
                files.erase(file);
                continue;
            }
        }
        kept.push_back(std::move(platform));
    }
}

void HZEPHardwarePlatformMgr::addPlatforms_(Found_ kept, std::vector<HZEPHardwarePlatform*>& out) {
    std::unordered_set<std::string> names;
    for (const HZEPHardwarePlatform* platform : out)
        names.insert(platform->getUniqueName());
    for (auto& platform : kept) {
        if (!names.insert(platform->getUniqueName()).second)
            continue;
        out.push_back(platform.get());
        platform.release();
    }
}
