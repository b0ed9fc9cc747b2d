// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "NativeDictService.h"

#include "NativeObjectService.h"

#include <algorithm>

using boost::property_tree::ptree;

namespace zep::platform {

namespace {

using Dict = std::map<std::string, std::string>;

const std::set<std::string> kDefaultFilter = {
    "vceHardware.arch",
    "vceHardware.coreRows.num",
    "vceHardware.coreRows.start",
    "vceHardware.shimRows.num",
    "vceHardware.shimRows.start",
    "designIDs.vcengineIDs.nodeID",
    "designIDs.vcengineIDs.puID",
    "designIDs.designID",
    "designIDs.nodeID",
    "designIDs.parentID",
    "reconfigPartitionIDs[*].designID",
    "reconfigPartitionIDs[*].nodeID",
    "reconfigPartitionIDs[*].parentID",
    "static",
    "rm",
    "files[*].name",
    "files[*].type",
    "idCode",
    "extendedIdCode",
};

/// `prefix` is lent out and comes back as it was: one text serves the whole walk.
void flatten(Dict& dict, const ptree& node, std::string& prefix) {
    const std::size_t size = prefix.size();
    const bool isArray = size > 0 && !node.empty() && node.front().first.empty();
    if (size > 0 && !isArray)
        prefix += '.';
    std::size_t counter = 0;
    for (const auto& [key, child] : node) {
        std::size_t base = prefix.size();
        if (child.empty())
            dict.try_emplace(prefix += key, child.data());
        prefix.resize(base);
        if (isArray) {
            prefix.resize(size);
            prefix += '[' + std::to_string(counter++) + ']';
            base = prefix.size();
        }
        if (!child.empty())
            flatten(dict, child, prefix += key);
        prefix.resize(base);
    }
    prefix.resize(size);
}

/// A subscript never reaches over a line end.
std::string normalise(const std::string& key) {
    std::string normal;
    for (std::size_t begin = 0; begin < key.size();) {
        const std::size_t end = std::min(key.find_first_of("\r\n", begin), key.size() - 1) + 1;
        const std::string line = key.substr(begin, end - begin);
        const std::size_t open = line.find('[');
        const std::size_t close = line.rfind(']');
        normal += open < close && close != line.npos ? line.substr(0, open) + "[*]" + line.substr(close + 1) : line;
        begin = end;
    }
    return normal;
}

} // namespace

Dict NativeDictService::getAsDict(const std::string& file, const std::string& path, bool& ok) const {
    const NativeObjectService objects;
    if (path.empty()) {
        Dict dict = getAsDict(objects.getAsPropertyTree(file), "");
        ok = true;
        return dict;
    }
    const ptree node = objects.getNodeByPath(objects.getAsJsonStr(file), path, ok);
    return ok ? getAsDict(node, path) : Dict();
}

Dict NativeDictService::getAsDict(const ptree& tree, const std::string& prefix) const {
    Dict dict;
    std::string text = prefix;
    flatten(dict, tree, text);
    return dict;
}

Dict NativeDictService::getFilteredDict(const std::string& file, const std::string& path) const {
    std::set<std::string> filter = kDefaultFilter;
    return getFilteredDict(file, path, filter);
}

Dict NativeDictService::getFilteredDict(const std::string& file, const std::string& path, std::set<std::string>& filter) const {
    bool ok = false;
    Dict dict = getAsDict(file, path, ok);
    std::erase_if(dict, [&](const auto& entry) { return !filter.contains(normalise(entry.first)); });
    return dict;
}

} // namespace zep::platform
