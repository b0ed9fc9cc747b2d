// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HostExport.h"
#include "HostHwDef.h"

#include <cstddef>
#include <map>
#include <string>

/// A hardware database: the definition of a platform and, for a static one, the definitions of the modules loaded into it. Made and
/// owned by HostHwManager.
class HOST_EXPORT HostHwDb {
public:
    /// A reconfigurable module, beneath the instance path that is its key.
    struct Module {
        std::string file;
        HostHwDef definition;
    };

    HostHwDb(std::string name, std::string platformFile, HostHwDef definition, std::map<std::string, Module> modules);
    HostHwDb(const HostHwDb&) = delete;
    HostHwDb& operator=(const HostHwDb&) = delete;

    const std::string& getName() const { return name_; }
    const std::string& getPlatformFile() const { return platformFile_; }
    const HostHwDef& getDefinition() const { return definition_; }
    const std::map<std::string, Module>& getModules() const { return modules_; }

    /// Instances of the platform and of all modules.
    std::size_t getInstanceCount() const;

    /// The instance at a path; below the instance path of a module the search goes on in the module. Null when there is none.
    const HostHwInstance* findInstance(const std::string& path) const;

private:
    std::string name_;
    std::string platformFile_;
    HostHwDef definition_;
    std::map<std::string, Module> modules_;
};
