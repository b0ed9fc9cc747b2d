// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "DocService.h"
#include "PlatformLoader.h"

namespace zep::platform {

using zep_platform::PlatformLoader;

/// Asks for the application root once in a process.
class HZEP_EXPORT NativeDocService : public DocService {
public:
    NativeDocService() = default;
    explicit NativeDocService(PlatformLoader::HwMetadataMode mode) : hwMetadataMode_(mode) {}

    boost::property_tree::ptree getDocKeyBranch(const boost::property_tree::ptree& doc, const std::string& key) const override;
    boost::property_tree::ptree getBranch(const boost::property_tree::ptree& doc, const std::string& key, bool& ok) const override;
    std::string getFromFile(boost::property_tree::ptree& out) const override;
    std::string getAsJsonStr(const boost::property_tree::ptree& tree) const override;
    bool isValidDocKey(boost::property_tree::ptree& doc, const std::string& key) const override;

private:
    PlatformLoader::HwMetadataMode hwMetadataMode_ = PlatformLoader::PreferAlternateJson;
};

} // namespace zep::platform
