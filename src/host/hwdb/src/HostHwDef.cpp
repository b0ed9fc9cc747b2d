// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HostHwDef.h"

#include "HostErrors.h"

std::size_t HostHwDef::addInstance(HostHwInstance instance) {
    if (instance.parent != HostHwInstance::kNoParent && instance.parent >= instances_.size())
        throw HostAlgException("the parent of the hardware instance '" + instance.name + "' does not exist");
    instances_.push_back(std::move(instance));
    return instances_.size() - 1;
}

void HostHwDef::setAttribute(std::size_t instance, const std::string& name, const std::string& value) {
    if (instance >= instances_.size())
        throw HostAlgException("there is no hardware instance " + std::to_string(instance));
    instances_[instance].attributes[name] = value;
}

const HostHwInstance* HostHwDef::findInstance(const std::string& path) const {
    // Parents stand before children, so one walk sees every instance with its parent already judged: `reached` holds how many
    // bytes of the path lead to it, 0 when it is not on the way.
    std::vector<std::size_t> reached(instances_.size(), 0);
    for (std::size_t i = 0; i < instances_.size(); ++i) {
        const HostHwInstance& instance = instances_[i];
        std::size_t begin = 0;
        if (instance.parent != HostHwInstance::kNoParent) {
            begin = reached[instance.parent];
            if (begin == 0)
                continue;
            ++begin;
        }
        const std::size_t end = begin + instance.name.size();
        if (instance.name.empty() || path.compare(begin, instance.name.size(), instance.name) != 0)
            continue;
        if (end == path.size())
            return &instance;
        if (path[end] == '/' && end + 1 < path.size())
            reached[i] = end;
    }
    return nullptr;
}

std::string HostHwDef::getPath(std::size_t index) const {
    std::vector<const std::string*> names;
    for (; index < instances_.size(); index = instances_[index].parent)
        names.push_back(&instances_[index].name);
    std::string path;
    for (auto name = names.rbegin(); name != names.rend(); ++name)
        path += (path.empty() ? "" : "/") + **name;
    return path;
}
