// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HZEPExport.h"
#include "PlatformLoader.h"

#include <boost/property_tree/ptree.hpp>

#include <set>
#include <string>

namespace zep::platform {

using zep_platform::PlatformLoader;

/// Lists every path that a platform's document contains. "[]" behind a name stands for all elements of an array: {"a": [{"b": "1"}]}
/// has the paths "a", "a[]" and "a[].b". The list is empty for a null loader and for a platform that can't be loaded; what the loader
/// of a file raises passes through.
class HZEP_EXPORT KeyService {
public:
    // The virtual operations stand in the order of the table that callers are compiled against.
    virtual ~KeyService() = default;

    virtual std::set<std::string> get(const std::string& file) const = 0;
    virtual std::set<std::string> get(const boost::property_tree::ptree& tree) const = 0;
    virtual std::set<std::string> get(PlatformLoader* loader) const = 0;

    /// JSON, the list as an array "keys"; "" in its place when there are none.
    virtual std::string getAsJsonStr(const std::string& file) const = 0;
    virtual std::string getAsJsonStr(PlatformLoader* loader) const = 0;
};

} // namespace zep::platform
