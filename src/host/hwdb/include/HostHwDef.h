// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HostExport.h"

#include <cstddef>
#include <map>
#include <string>
#include <vector>

/// One instance of a module in a hardware definition.
struct HostHwInstance {
    static constexpr std::size_t kNoParent = static_cast<std::size_t>(-1);

    std::string name;
    std::string module;
    std::size_t parent = kNoParent; // index among the definition's instances; kNoParent below the top module
    std::map<std::string, std::string> attributes;

    bool operator==(const HostHwInstance&) const = default;
};

/// A hardware definition: the top module of a design with the instances below it. A value; docs/hardware-definition.md
/// tells the form of its file.
class HOST_EXPORT HostHwDef {
public:
    /// The archive that it was read from, "" for one that was not.
    const std::string& getFile() const { return file_; }
    void setFile(const std::string& file) { file_ = file; }

    const std::string& getHierTopModuleName() const { return topModule_; }
    void setHierTopModuleName(const std::string& name) { topModule_ = name; }

    const std::string& getPart() const { return part_; }
    void setPart(const std::string& part) { part_ = part; }

    /// Parents stand before their children.
    const std::vector<HostHwInstance>& getInstances() const { return instances_; }

    /// The index of the new instance. Raises HostAlgException for a parent that is not there.
    std::size_t addInstance(HostHwInstance instance);

    /// Raises HostAlgException for an instance that is not there.
    void setAttribute(std::size_t instance, const std::string& name, const std::string& value);

    /// The instance of a path, names joined with "/" from below the top module on; null when there is none. The first wins.
    const HostHwInstance* findInstance(const std::string& path) const;

    std::string getPath(std::size_t index) const;

    /// Writes the file "hwdef.xml" into the directory, whole or not at all. Raises HostError when it can't be written, and for a definition
    /// that its form has no room for.
    void write(const std::string& directory) const;

private:
    std::string file_;
    std::string topModule_;
    std::string part_;
    std::vector<HostHwInstance> instances_;
};
