// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HZEPExport.h"

#include <string>

class HZEPSoftwarePlatform;
class HZEPSystemConfig;

/// Questions about software platforms.
class HZEP_EXPORT HZEPSoftwarePlatformUtils {
public:
    /// The last configuration of exactly that name in the platforms that HZEPPlatformUtils::getPlatformsByUniqueName gives, null if none.
    static HZEPSystemConfig* getSystemConfigurationByUniqueName(std::string platformUniqueName, std::string configName);

    /// Of that configuration's processor group; "" without one and for a group that runs another operating system.
    static std::string getIncludePaths(std::string platformUniqueName, std::string configName, std::string processorGroupName,
                                       std::string osName);
    static std::string getLibraryPaths(std::string platformUniqueName, std::string configName, std::string processorGroupName,
                                       std::string osName);

    /// The last configuration whose pretty name is exactly `prettyName`, null if none and for a null platform.
    static HZEPSystemConfig* getSystemConfigByPrettyName(HZEPSoftwarePlatform* platform, std::string prettyName);

    /// That configuration's answer; false without one.
    static bool isQemuSupported(HZEPSoftwarePlatform* platform, std::string prettyName);
};
