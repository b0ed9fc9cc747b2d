// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HZEPExport.h"
#include "HZEPOwnedList.h"
#include "HostVector.h"
#include "JSONSerializable.h"

#include <cstddef>
#include <string>
#include <vector>

class HZEPSystemConfig;

/// What software can run on a hardware platform: a list of system configurations. It owns all that hangs below it; pointers that it
/// hands out live as long as it does.
class HZEP_EXPORT HZEPSoftwarePlatform : public zep_platform::JSONSerializable {
public:
    HZEPSoftwarePlatform();
    void toJSON(zep_platform::JSONObjectWriter& writer) const override;
    ~HZEPSoftwarePlatform() override;
    HZEPSoftwarePlatform(const HZEPSoftwarePlatform&) = delete;
    HZEPSoftwarePlatform& operator=(const HZEPSoftwarePlatform&) = delete;

    /// A new, empty configuration at the end of the list.
    HZEPSystemConfig* addSystemConfig();
    const std::vector<HZEPSystemConfig*>& getSystemConfig() const { return systemConfigs_.items(); }
    /// Appends all.
    void getSystemConfigs(HostVector<HZEPSystemConfig*>& out) const;

    /// The last configuration whose name or pretty name is exactly `name`, null if none. Both operations are the same.
    HZEPSystemConfig* getSystemConfigByName(const std::string& name) const;
    HZEPSystemConfig* getSystemConfigByPrettyName(const std::string& name) const;
    /// The configuration of the default name, else the first one, else null.
    HZEPSystemConfig* getDefaultSystemConfig() const;

    /// The text that was set, also when it names nothing; else the name of the default configuration; else "".
    std::string getDefaultConfigName() const;
    void setDefaultConfigName(std::string name) { defaultConfigName_ = std::move(name); }

    std::string getLinuxRootFileSystemPath() const { return linuxRootFileSystemPath_; }
    void setLinuxRootFileSystemPath(std::string path) { linuxRootFileSystemPath_ = std::move(path); }

    /// One of "ocl", "OpenCL", "cpp" and "C/C++", ignoring case.
    bool isRuntimeSupported(const std::string& runtime) const;
    /// The configuration exists, and names no runtime or at least one supported one.
    bool isSystemConfigSupported(const std::string& name) const;
    /// Appends the runtimes of all configurations, each text once.
    void getSupportedRuntimes(HostVector<std::string>& out) const;
    void getSupportedRuntimesByPrettyName(HostVector<std::string>& out) const;
    std::size_t getNumRuntimes() const;

    /// Appends the names of the configurations that can take a library of the type "static", "shared" (some processor group runs
    /// linux) or "c-callable" (linux or standalone), each name once. Returns the new size of the list.
    std::size_t getSystemConfigNames(HostVector<std::string>& out, const std::string& libraryType) const;

private:
    HZEPOwnedList<HZEPSystemConfig> systemConfigs_;
    std::string defaultConfigName_;
    std::string linuxRootFileSystemPath_;
};
