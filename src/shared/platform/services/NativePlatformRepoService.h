// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "PlatformRepoService.h"

namespace zep::platform {

/// Looks at the file system. A directory is searched down to two levels below it, links to directories included; one that can't be
/// walked to its end keeps what was found.
class HZEP_EXPORT NativePlatformRepoService : public PlatformRepoService {
public:
    ~NativePlatformRepoService() override;
    void getDefaultPlatformLookupDirs(std::vector<std::string>& dirs) const override;
    std::string getPlatformRepoPath(const std::vector<std::string>& dirs, bool includeDefaults) const override;
    void getZpfmFiles(const std::string& name, const std::string& repoPath, std::vector<std::string>& result) const override;
    void getZpfmFiles(const std::string& name, const std::vector<std::string>& dirs, bool includeDefaults,
                      std::vector<std::string>& result) const override;

    /// The canonical names of the parts between ":", empty ones left out; they need not exist.
    void splitToFullDirs_(const std::string& paths, std::vector<std::string>& dirs) const;

private:
    void addIfExists_(const std::string& dir, std::vector<std::string>& dirs) const;
};

} // namespace zep::platform
