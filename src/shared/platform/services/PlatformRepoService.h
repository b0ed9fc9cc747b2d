// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HZEPExport.h"

#include <string>
#include <vector>

namespace zep::platform {

/// Where platforms are, and which platform files are there. Reads no platform. Lists are appended to.
class HZEP_EXPORT PlatformRepoService {
public:
    // The virtual operations stand in the order of the table that callers are compiled against.
    virtual ~PlatformRepoService();

    /// The directories that are searched when nobody names any; those that exist, canonical.
    virtual void getDefaultPlatformLookupDirs(std::vector<std::string>& dirs) const = 0;

    /// The directories among `dirs`, and the default ones behind them if asked for: canonical, each once, joined by ":".
    virtual std::string getPlatformRepoPath(const std::vector<std::string>& dirs, bool includeDefaults) const = 0;

    /// As below, for directories joined by ":" and no others.
    virtual void getZpfmFiles(const std::string& name, const std::string& repoPath, std::vector<std::string>& result) const = 0;

    /// The platform files below the directories whose base name is `name`, whatever the letter case; an empty name asks for all. A name
    /// that is itself the path of a platform file gives that file alone, canonical.
    virtual void getZpfmFiles(const std::string& name, const std::vector<std::string>& dirs, bool includeDefaults,
                              std::vector<std::string>& result) const = 0;
};

} // namespace zep::platform
