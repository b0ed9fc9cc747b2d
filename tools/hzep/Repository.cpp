// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "Repository.h"
#include "Session.h"

#include "HZEPNearNames.h"
#include "HostFile.h"
#include "NativePlatformRepoService.h"

#include <filesystem>
#include <set>

namespace {

std::string join(const std::vector<std::string>& texts) {
    std::string joined;
    for (const std::string& text : texts)
        joined += (joined.empty() ? "" : ", ") + text;
    return joined;
}

/// What is a file, or no name that a platform could have.
bool isPath(const std::string& platform) {
    static const std::set<std::string> extensions = {".zpfm", ".dsa", ".kar", ".spfm"};
    std::error_code error;
    const auto status = std::filesystem::symlink_status(platform, error);
    return (std::filesystem::exists(status) && !HostFile::isDir(platform)) || platform.empty() || platform.find('/') != platform.npos ||
           extensions.contains(std::filesystem::path(platform).extension().string());
}

} // namespace

std::string findPlatform(const std::string& platform) {
    if (isPath(platform))
        return platform;
    const zep::platform::NativePlatformRepoService repository;
    std::vector<std::string> found;
    repository.getZpfmFiles(platform, {}, true, found);
    const std::set<std::string> files(found.begin(), found.end());
    if (files.size() > 1)
        Session::say("warning", "several platforms are called \"" + platform + "\"; this is " + found.front());
    if (!files.empty())
        return found.front();
    if (HostFile::isDir(platform))
        return platform; // whoever opens it says so

    std::vector<std::string> dirs;
    repository.getDefaultPlatformLookupDirs(dirs);
    repository.getZpfmFiles("", {}, true, found);
    std::set<std::string> names;
    for (const std::string& file : found)
        names.insert(std::filesystem::path(file).stem().string());
    throw Unusable("there is no file and no platform \"" + platform +
                   "\"; searched: " + (dirs.empty() ? "nothing, no default directory exists" : join(dirs)) +
                   HZEPNearNames::suggest(platform, {names.begin(), names.end()}));
}
