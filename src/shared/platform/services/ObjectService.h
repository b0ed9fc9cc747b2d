// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HZEPExport.h"
#include "PlatformLoader.h"

#include <boost/optional.hpp>
#include <boost/property_tree/ptree.hpp>

#include <string>

namespace zep::platform {

using zep_platform::PlatformLoader;

/// Questions about the JSON document of a platform, by path.
///
/// A path is names joined by ".". A name may end in an index, as in "files[0].name", which picks the child at that position of an
/// array or an object. "[]" and "[*]" are dropped from a path: they mean the node itself. A ".." is the first element of an array,
/// in the operations on a tree alone. A path below "hardwarePlatform" finds the hardware platform wherever the document holds it.
///
/// What is absent is a result and no error: `ok` false, "", an empty tree. Text that is no JSON raises json_parser_error, also the empty
/// document of what can't be loaded, where a path is looked up in it. `file` is a platform file, an archive or a software file; what its
/// loader raises passes through.
class HZEP_EXPORT ObjectService {
public:
    // The virtual operations stand in the order of the table that callers are compiled against.
    virtual ~ObjectService() = default;

    /// The document of a platform file; of an archive or a software file only the part that the file describes, which one that can't be
    /// loaded has not. "" for a file of another kind, for a platform that can't be loaded, and for a null loader.
    virtual std::string getAsJsonStr(const std::string& file) const = 0;
    virtual std::string getAsJsonStr(PlatformLoader* loader) const = 0;

    /// The same as a tree. Of a file that doesn't exist it is empty.
    virtual boost::property_tree::ptree getAsPropertyTree(const std::string& file) const = 0;
    virtual boost::property_tree::ptree getAsPropertyTree(PlatformLoader* loader) const = 0;

    /// A copy of the node; `ok` tells whether there is one. An empty text or path leaves `ok` as it was.
    virtual boost::property_tree::ptree getNodeByPath(const std::string& json, const std::string& path, bool& ok) const = 0;

    /// A value as plain text, an object as JSON, an array as JSON of an object that holds it under the last name of the path. An
    /// empty file or path and a null loader leave `ok` as it was.
    virtual std::string getObjectsByPath(const std::string& file, const std::string& path, bool& ok) const = 0;
    virtual std::string getObjectsByPath(PlatformLoader* loader, const std::string& path, bool& ok) const = 0;

    /// Where the document holds its hardware platform; for partitions that is the first one's. "" when it holds none.
    virtual std::string getHwPlatformRootPath(const std::string& json) const = 0;
    virtual std::string getHwPlatformRootPath(const boost::property_tree::ptree& tree) const = 0;

    virtual boost::property_tree::ptree getChild(const boost::property_tree::ptree& tree, const std::string& path) const = 0;

    /// The node lives as long as `tree` is not changed.
    virtual boost::optional<const boost::property_tree::ptree&> getChildOptional(const boost::property_tree::ptree& tree,
                                                                                 const std::string& path) const = 0;

    virtual std::string getStringValue(const boost::property_tree::ptree& tree, const std::string& path) const = 0;

    /// A number that is not 0, or "true". False when there is no node; raises ptree_bad_data for a value that is no boolean.
    virtual bool getBoolValue(const boost::property_tree::ptree& tree, const std::string& path) const = 0;

    /// The default stands for a missing node and for a value that is no boolean.
    virtual bool getBoolValue(const boost::property_tree::ptree& tree, const std::string& path, bool defaultValue) const = 0;

    virtual std::string getObjectsByPath(const std::string& file, const std::string& path) const = 0;
};

} // namespace zep::platform
