// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "ObjectService.h"

namespace zep::platform {

/// Works on the document as the platform writes it. Every operation that is given a text parses it; who asks often takes a tree once
/// and asks that.
class HZEP_EXPORT NativeObjectService : public ObjectService {
public:
    NativeObjectService() = default;
    /// All loaders made here read their metadata in this mode.
    explicit NativeObjectService(PlatformLoader::HwMetadataMode mode) : hwMetadataMode_(mode) {}

    std::string getAsJsonStr(const std::string& file) const override;
    std::string getAsJsonStr(PlatformLoader* loader) const override;
    boost::property_tree::ptree getAsPropertyTree(const std::string& file) const override;
    boost::property_tree::ptree getAsPropertyTree(PlatformLoader* loader) const override;
    boost::property_tree::ptree getNodeByPath(const std::string& json, const std::string& path, bool& ok) const override;
    std::string getObjectsByPath(const std::string& file, const std::string& path, bool& ok) const override;
    std::string getObjectsByPath(PlatformLoader* loader, const std::string& path, bool& ok) const override;
    std::string getHwPlatformRootPath(const std::string& json) const override;
    std::string getHwPlatformRootPath(const boost::property_tree::ptree& tree) const override;
    boost::property_tree::ptree getChild(const boost::property_tree::ptree& tree, const std::string& path) const override;
    boost::optional<const boost::property_tree::ptree&> getChildOptional(const boost::property_tree::ptree& tree,
                                                                         const std::string& path) const override;
    std::string getStringValue(const boost::property_tree::ptree& tree, const std::string& path) const override;
    bool getBoolValue(const boost::property_tree::ptree& tree, const std::string& path) const override;
    bool getBoolValue(const boost::property_tree::ptree& tree, const std::string& path, bool defaultValue) const override;
    std::string getObjectsByPath(const std::string& file, const std::string& path) const override;

    /// The same on a document at hand; an empty one is no JSON either.
    std::string getObjectsByPath_(const std::string& json, const std::string& path, bool& ok) const;
    /// A path with no names in it is the whole document.
    boost::property_tree::ptree getNodeByPath_(const std::string& json, const std::string& path, bool& ok) const;

    /// As the path stands: "hardwarePlatform" is only looked for at the root.
    bool hasNodeAtPath(const std::string& json, const std::string& path) const;
    bool hasNodeAtPath(const boost::property_tree::ptree& tree, const std::string& path) const;
    bool hasLegacyHwPlatformRootPath(const std::string& json) const;
    bool hasLegacyHwPlatformRootPath(const boost::property_tree::ptree& tree) const;

    /// The path below the root that the document has; unchanged for any other path and for a document without hardware platform.
    std::string getPathWithActualHwPlatformRoot(const std::string& json, const std::string& path) const;
    std::string getPathWithActualHwPlatformRoot(const boost::property_tree::ptree& tree, const std::string& path) const;

    static bool isLegacyHwPlatformPath(const std::string& path);
    static std::string replaceLegacyHwPlatformPath(const std::string& path, const std::string& newRoot);
    /// Whether ".." occurs in it.
    static bool pathHasBoostArray(const std::string& path);

    static const std::string& getLegacyHwPlatformRootPath();
    static const std::string& getDefaultHwPlatformRootPath();
    static const std::string& getDefaultRPHwPlatformRootPath();
    /// The same place in the form with "..".
    static const std::string& getDefaultRPHwPlatformRootPathAlt();
    std::string _getHwPlatformRootPath(const boost::property_tree::ptree& tree, bool useAlt) const;

private:
    std::string rootPath_(const std::string& json, const boost::property_tree::ptree& tree, const std::string& path) const;

    PlatformLoader::HwMetadataMode hwMetadataMode_ = PlatformLoader::PreferAlternateJson;
};

} // namespace zep::platform
