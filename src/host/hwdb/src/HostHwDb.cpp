// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HostHwDb.h"

HostHwDb::HostHwDb(std::string name, std::string platformFile, HostHwDef definition, std::map<std::string, Module> modules)
    : name_(std::move(name)), platformFile_(std::move(platformFile)), definition_(std::move(definition)), modules_(std::move(modules)) {}

std::size_t HostHwDb::getInstanceCount() const {
    std::size_t count = definition_.getInstances().size();
    for (const auto& module : modules_)
        count += module.second.definition.getInstances().size();
    return count;
}

const HostHwInstance* HostHwDb::findInstance(const std::string& path) const {
    if (const HostHwInstance* found = definition_.findInstance(path))
        return found;
    // The longest instance path wins, so that a module within a module's path is seen.
    for (auto end = path.rfind('/'); end != std::string::npos && end > 0; end = path.rfind('/', end - 1))
        if (const auto module = modules_.find(path.substr(0, end)); module != modules_.end())
            return module->second.definition.findInstance(path.substr(end + 1));
    return nullptr;
}
