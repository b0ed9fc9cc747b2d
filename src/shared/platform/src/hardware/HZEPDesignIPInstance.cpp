// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HZEPDesignIPInstance.h"

#include "HostErrors.h"
#include "JSONObjectWriter.h"

#include <boost/property_tree/ptree.hpp>

#include <algorithm>
#include <cstddef>

using boost::property_tree::ptree;
using zep_platform::JSONObjectWriter;

namespace {

bool isPath(const std::string& name) {
    return !name.empty() && name.front() != '.' && name.back() != '.' && name.find("..") == std::string::npos &&
           std::count(name.begin(), name.end(), '.') < static_cast<std::ptrdiff_t>(HZEPDesignIPInstance::kMaxNestedParts);
}

/// Adds the value under the path, unless a value stands on the way. A path's beginnings have been added before it.
bool addNested(ptree& tree, const std::string& path, const std::string& value) {
    ptree* at = &tree;
    std::size_t begin = 0;
    for (std::size_t dot = path.find('.'); dot != std::string::npos; begin = dot + 1, dot = path.find('.', begin)) {
        const std::string part = path.substr(begin, dot - begin);
        const auto found = at->find(part);
        if (found == at->not_found())
            at = &at->push_back({part, ptree()})->second;
        else if (found->second.data().empty())
            at = &found->second;
        else
            return false;
    }
    at->push_back({path.substr(begin), ptree(value)});
    return true;
}

} // namespace

void HZEPDesignIPInstance::toJSON(JSONObjectWriter& writer) const {
    writer.addKey("vlnv", vlnv_);
    writer.addKey("instance", instanceName_);

    ptree configuration;
    for (const auto& [name, value] : configParams_) {
        if (value.empty())
            continue;
        if (!isPath(name) || !addNested(configuration, name, value))
            configuration.push_back({name, ptree(value)});
    }
    writer.addKey("configuration", std::move(configuration));
}

void HZEPDesignIPInstance::addConfigParam(const std::string& name, const std::string& value) {
    if (!configParams_.emplace(name, value).second)
        throw HostAlgException("Attempt to readd Design IP Instance Config Param key: '" + name + "' is not allowed!");
}
