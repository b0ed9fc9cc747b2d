// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HZEPExport.h"

#include <map>
#include <set>
#include <string>

namespace zep::platform {

/// A platform document, or a branch of it, as one flat map from path to value. `path` is one of ObjectService, "" for the whole
/// document, and stands in front of every key.
///
/// Elements of an array of objects are "a[0].b", "a[1].b". Of an array of plain values the first is "a", the second "a[0]", the third
/// "a[1]". Exceptions of the loader pass through.
class HZEP_EXPORT DictService {
public:
    // The virtual operations stand in the order of the table that callers are compiled against.
    virtual ~DictService() = default;

    /// `ok` is false, and the map empty, when there is no such path. It stays as it was when the file has no document to look into.
    virtual std::map<std::string, std::string> getAsDict(const std::string& file, const std::string& path, bool& ok) const = 0;

    /// What a built-in filter keeps: identities of partitions and of the vector engine, files, id codes.
    virtual std::map<std::string, std::string> getFilteredDict(const std::string& file, const std::string& path) const = 0;

    /// The entries whose key stands in the filter once everything from its first "[" to its last "]" is made "[*]".
    virtual std::map<std::string, std::string> getFilteredDict(const std::string& file, const std::string& path,
                                                               std::set<std::string>& filter) const = 0;
};

} // namespace zep::platform
