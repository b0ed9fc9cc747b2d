// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "NativeKeyService.h"

#include "HZEPJSONText.h"
#include "NativeObjectService.h"

#include <sstream>
#include <utility>

using boost::property_tree::ptree;

namespace zep::platform {

namespace {

/// `prefix` is lent out and comes back as it was: one text serves the whole walk.
void collect(const ptree& node, std::string& prefix, std::set<std::string>& keys) {
    const std::size_t size = prefix.size();
    if (!prefix.empty())
        prefix += !node.empty() && node.front().first.empty() ? "[]" : ".";
    const std::size_t base = prefix.size();
    for (const auto& [key, child] : node) {
        prefix += key;
        keys.insert(prefix);
        if (!child.empty())
            collect(child, prefix, keys);
        prefix.resize(base);
    }
    prefix.resize(size);
}

} // namespace

std::set<std::string> NativeKeyService::get(const std::string& file) const {
    PlatformLoader loader(file, hwMetadataMode_);
    return get(&loader);
}

std::set<std::string> NativeKeyService::get(const ptree& tree) const {
    std::set<std::string> keys;
    std::string prefix;
    collect(tree, prefix, keys);
    return keys;
}

std::set<std::string> NativeKeyService::get(PlatformLoader* loader) const {
    return get(NativeObjectService(hwMetadataMode_).getAsPropertyTree(loader));
}

std::string NativeKeyService::getAsJsonStr(const std::string& file) const {
    PlatformLoader loader(file, hwMetadataMode_);
    return getAsJsonStr(&loader);
}

std::string NativeKeyService::getAsJsonStr(PlatformLoader* loader) const {
    ptree root;
    ptree& list = root.push_back({"keys", ptree()})->second;
    for (const std::string& key : get(loader))
        list.push_back({"", ptree(key)});
    std::ostringstream stream;
    HZEPJSONText::write(stream, root);
    return std::move(stream).str();
}

} // namespace zep::platform
