// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HMDAFiles.h"

#include "HZEPJSONUtils.h"
#include "JSONListWriter.h"
#include "JSONObjectWriter.h"

namespace {

constexpr char kFiles[] = "files";
constexpr char kName[] = "name";
constexpr char kType[] = "type";

} // namespace

void HMDAFiles::add(const std::string& type, const std::string& name) {
    if (!type.empty() && !name.empty())
        files_[type] = name;
}

std::string HMDAFiles::get(const std::string& type) const {
    const auto found = files_.find(type);
    return found == files_.end() ? "" : found->second;
}

void HMDAFiles::getTypes(std::vector<std::string>& types) const {
    for (const auto& [type, name] : files_)
        types.push_back(type);
}

void HMDAFiles::getNames(std::vector<std::string>& names) const {
    for (const auto& [type, name] : files_)
        names.push_back(name);
}

void HMDAFiles::parse(const boost::property_tree::ptree& root) {
    if (const auto files = root.get_child_optional(kFiles))
        for (const auto& [key, file] : *files)
            add(HZEPJSONUtils::getValue(file, kType), HZEPJSONUtils::getValue(file, kName));
}

void HMDAFiles::toJSON(zep_platform::JSONObjectWriter& writer) const {
    zep_platform::JSONListWriter list;
    for (const auto& [type, name] : files_) {
        zep_platform::JSONObjectWriter item;
        item.addKey(kName, name);
        item.addKey(kType, type);
        list.addItem(std::move(item));
    }
    writer.addKey(kFiles, std::move(list));
}
