// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HZEPSoftwarePlatformUtils.h"

#include "HZEPSoftwarePlatform.h"
#include "HZEPSystemConfig.h"

HZEPSystemConfig* HZEPSoftwarePlatformUtils::getSystemConfigByPrettyName(HZEPSoftwarePlatform* platform, std::string prettyName) {
    HZEPSystemConfig* found = nullptr;
    if (platform)
        for (HZEPSystemConfig* config : platform->getSystemConfig())
            if (config->getPrettyName() == prettyName)
                found = config;
    return found;
}

bool HZEPSoftwarePlatformUtils::isQemuSupported(HZEPSoftwarePlatform* platform, std::string prettyName) {
    const HZEPSystemConfig* config = getSystemConfigByPrettyName(platform, std::move(prettyName));
    return config && config->isQemuSupported();
}
