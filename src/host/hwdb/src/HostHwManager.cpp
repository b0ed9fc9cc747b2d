// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HostHwManager.h"

#include "HostHwDefUtils.h"

#include <algorithm>
#include <mutex>

namespace {

struct Registry {
    std::mutex mutex;
    std::map<std::string, std::unique_ptr<HostHwDb>> databases;
    std::vector<std::unique_ptr<HostHwDef>> definitions;

    std::unique_ptr<HostHwDef> take(const HostHwDef* definition) {
        const std::lock_guard lock(mutex);
        const auto at = std::find_if(definitions.begin(), definitions.end(), [=](const auto& owned) { return owned.get() == definition; });
        if (at == definitions.end())
            return nullptr;
        std::unique_ptr<HostHwDef> taken = std::move(*at);
        definitions.erase(at);
        return taken;
    }

    HostHwDb* add(std::string name, const std::string& platformFile, HostHwDef definition,
                  std::map<std::string, HostHwDb::Module> modules) {
        const std::lock_guard lock(mutex);
        if (name.empty()) {
            const std::string base = name = definition.getHierTopModuleName();
            for (unsigned long number = 1; databases.contains(name); ++number)
                name = base + "_" + std::to_string(number);
        }
        if (databases.contains(name))
            return nullptr;
        auto database = std::make_unique<HostHwDb>(name, platformFile, std::move(definition), std::move(modules));
        return databases.emplace(name, std::move(database)).first->second.get();
    }
};

/// Never destroyed: objects that go at exit may still ask.
Registry& registry() {
    static Registry* const only = new Registry;
    return *only;
}

} // namespace

HostHwDef* HostHwManager::openDefFile(const std::string& archive, bool, bool, const std::string&) {
    std::unique_ptr<HostHwDef> definition = HostHwDefUtils::getHDF(archive, false, "");
    if (!definition)
        return nullptr;
    const std::lock_guard lock(registry().mutex);
    return registry().definitions.emplace_back(std::move(definition)).get();
}

bool HostHwManager::closeDefFile(HostHwDef* definition) {
    return registry().take(definition) != nullptr;
}

HostHwDb* HostHwManager::createHardwareDb(HostHwDef* definition, const std::string& platformFile, bool, bool, const std::string& name, int,
                                          bool, const std::string&, bool) {
    const std::unique_ptr<HostHwDef> taken = registry().take(definition);
    return taken ? registry().add(name, platformFile, std::move(*taken), {}) : nullptr;
}

HostHwDb* HostHwManager::createHardwareDbFromHDF(std::unique_ptr<HostHwDef> definition, int, bool, const std::string&,
                                                 const std::string& name, bool, bool, bool, const std::string&, bool) {
    if (!definition)
        return nullptr;
    const std::string file = definition->getFile();
    return registry().add(name, file, std::move(*definition), {});
}

HostHwDb* HostHwManager::createHardwareDb(const std::string& platformFile, const std::map<std::string, std::string>& modules,
                                          const HostHwDef* definition, bool, bool, const std::string& name, bool) {
    std::unique_ptr<HostHwDef> read;
    if (!definition) {
        read = HostHwDefUtils::getHDF(platformFile, false, "");
        definition = read.get();
    }
    if (!definition)
        return nullptr;
    std::map<std::string, HostHwDb::Module> loaded;
    for (const auto& [path, file] : modules) {
        std::unique_ptr<HostHwDef> module = HostHwDefUtils::getHDF(file, false, "");
        if (path.empty() || !module)
            return nullptr;
        loaded.emplace(path, HostHwDb::Module{file, std::move(*module)});
    }
    return registry().add(name, platformFile, *definition, std::move(loaded));
}

HostHwDb* HostHwManager::getHardwareDb(const std::string& name, bool) {
    const std::lock_guard lock(registry().mutex);
    const auto found = registry().databases.find(name);
    return found == registry().databases.end() ? nullptr : found->second.get();
}

bool HostHwManager::closeHardwareDb(const std::string& name) {
    const std::lock_guard lock(registry().mutex);
    return registry().databases.erase(name) > 0;
}

std::vector<std::string> HostHwManager::getHardwareDbNames() {
    const std::lock_guard lock(registry().mutex);
    std::vector<std::string> names;
    for (const auto& database : registry().databases)
        names.push_back(database.first);
    return names;
}
