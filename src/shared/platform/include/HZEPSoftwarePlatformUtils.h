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
    /// The last configuration whose pretty name is exactly `prettyName`, null if none and for a null platform.
    static HZEPSystemConfig* getSystemConfigByPrettyName(HZEPSoftwarePlatform* platform, std::string prettyName);

    /// That configuration's answer; false without one.
    static bool isQemuSupported(HZEPSoftwarePlatform* platform, std::string prettyName);
};
