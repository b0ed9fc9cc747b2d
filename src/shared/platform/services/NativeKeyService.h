// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "KeyService.h"

namespace zep::platform {

/// Lists the paths of the document as the platform writes it, whatever kind of file it comes from.
class HZEP_EXPORT NativeKeyService : public KeyService {
public:
    NativeKeyService() = default;
    /// All loaders made here read their metadata in this mode.
    explicit NativeKeyService(PlatformLoader::HwMetadataMode mode) : hwMetadataMode_(mode) {}

    std::set<std::string> get(const std::string& file) const override;
    std::set<std::string> get(const boost::property_tree::ptree& tree) const override;
    std::set<std::string> get(PlatformLoader* loader) const override;
    std::string getAsJsonStr(const std::string& file) const override;
    std::string getAsJsonStr(PlatformLoader* loader) const override;

private:
    PlatformLoader::HwMetadataMode hwMetadataMode_ = PlatformLoader::PreferAlternateJson;
};

} // namespace zep::platform
