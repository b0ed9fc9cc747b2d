// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "NativePlatformRepoService.h"

#include "../src/foundations/DirectoryWalk.h"
#include "HostEnv.h"
#include "HostFile.h"

#include <boost/algorithm/string/predicate.hpp>

#include <algorithm>
#include <exception>
#include <iostream>
#include <set>

namespace zep::platform {

namespace {

constexpr const char* kExtension = ".zpfm";
constexpr int kLevels = 2;

} // namespace

PlatformRepoService::~PlatformRepoService() = default;
NativePlatformRepoService::~NativePlatformRepoService() = default;

void NativePlatformRepoService::addIfExists_(const std::string& dir, std::vector<std::string>& dirs) const {
    if (HostFile::exists(dir))
        dirs.push_back(HostFile::getCanonicalName(dir));
}

void NativePlatformRepoService::getDefaultPlatformLookupDirs(std::vector<std::string>& dirs) const {
    // HZEPPlatformMgr has the directory below "opt" last; callers rely on both orders.
    const std::string separator = HostFile::getDirSeparator();
    addIfExists_(separator + "opt" + separator + "tolvan" + separator + "platforms", dirs);
    for (const std::string& root : HostEnv::getHostAppRootList())
        addIfExists_(root + separator + "platforms", dirs);
}

std::string NativePlatformRepoService::getPlatformRepoPath(const std::vector<std::string>& dirs, bool includeDefaults) const {
    std::vector<std::string> all = dirs;
    if (includeDefaults)
        getDefaultPlatformLookupDirs(all);
    std::string path;
    std::set<std::string> seen;
    for (const std::string& dir : all) {
        if (!HostFile::isDir(dir))
            continue;
        const std::string canonical = HostFile::getCanonicalName(dir);
        if (seen.insert(canonical).second)
            path += (path.empty() ? "" : ":") + canonical;
    }
    return path;
}

void NativePlatformRepoService::splitToFullDirs_(const std::string& paths, std::vector<std::string>& dirs) const {
    for (std::size_t begin = 0; begin < paths.size();) {
        const std::size_t end = std::min(paths.find(':', begin), paths.size());
        if (end > begin)
            dirs.push_back(HostFile::getCanonicalName(paths.substr(begin, end - begin)));
        begin = end + 1;
    }
}

void NativePlatformRepoService::getZpfmFiles(const std::string& name, const std::string& repoPath, std::vector<std::string>& result) const {
    std::vector<std::string> dirs;
    splitToFullDirs_(repoPath, dirs);
    getZpfmFiles(name, dirs, false, result);
}

void NativePlatformRepoService::getZpfmFiles(const std::string& name, const std::vector<std::string>& dirs, bool includeDefaults,
                                             std::vector<std::string>& result) const {
    if (boost::algorithm::iends_with(name, kExtension) && HostFile::exists(name)) {
        result.push_back(HostFile::getCanonicalName(name));
        return;
    }
    std::vector<std::string> all = dirs;
    if (includeDefaults)
        getDefaultPlatformLookupDirs(all);
    for (const std::string& dir : all) {
        if (!HostFile::isDir(dir))
            continue;
        try {
            walkDirectory(dir, kLevels, [&](const boost::filesystem::path& file) {
                if (file.extension() == kExtension && (name.empty() || boost::algorithm::iequals(name, file.stem().string())))
                    result.push_back(file.string());
                return true;
            });
        } catch (const std::exception& error) {
            std::cerr << "Exception: " << error.what() << std::endl;
        }
    }
}

} // namespace zep::platform
