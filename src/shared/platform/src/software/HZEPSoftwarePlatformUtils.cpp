// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HZEPSoftwarePlatformUtils.h"

#include "HZEPPlatform.h"
#include "HZEPPlatformUtils.h"
#include "HZEPSoftwarePlatform.h"
#include "ProcessorGroupPaths.h"

HZEPSystemConfig* HZEPSoftwarePlatformUtils::getSystemConfigurationByUniqueName(std::string platformUniqueName, std::string configName) {
    std::vector<HZEPPlatform*> platforms;
    HZEPPlatformUtils::getPlatformsByUniqueName(platformUniqueName, platforms);
    HZEPSystemConfig* found = nullptr;
    for (const HZEPPlatform* platform : platforms) {
        std::vector<HZEPSoftwarePlatform*> softwarePlatforms;
        platform->getSoftwarePlatforms(softwarePlatforms);
        for (const HZEPSoftwarePlatform* software : softwarePlatforms)
            for (HZEPSystemConfig* config : software->getSystemConfig())
                if (config->getName() == configName)
                    found = config;
    }
    return found;
}

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

std::string HZEPSoftwarePlatformUtils::getIncludePaths(std::string platformUniqueName, std::string configName,
                                                       std::string processorGroupName, std::string osName) {
    return pathsOfGroup(getSystemConfigurationByUniqueName(platformUniqueName, configName), processorGroupName, osName,
                        &HZEPProcessorGroup::getIncludePaths);
}

std::string HZEPSoftwarePlatformUtils::getLibraryPaths(std::string platformUniqueName, std::string configName,
                                                       std::string processorGroupName, std::string osName) {
    return pathsOfGroup(getSystemConfigurationByUniqueName(platformUniqueName, configName), processorGroupName, osName,
                        &HZEPProcessorGroup::getLibraryPaths);
}
