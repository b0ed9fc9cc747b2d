// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HZEPSoftwarePlatformUtils.h"

#include "HZEPPlatform.h"
#include "HZEPPlatformUtils.h"
#include "HZEPProcessorGroup.h"
#include "HZEPSoftwarePlatform.h"
#include "HZEPSystemConfig.h"

namespace {

/// The group, when it runs exactly that operating system; else null.
HZEPProcessorGroup* findGroup(const std::string& platformUniqueName, const std::string& configName, const std::string& groupName,
                              const std::string& osName) {
    const HZEPSystemConfig* config = HZEPSoftwarePlatformUtils::getSystemConfigurationByUniqueName(platformUniqueName, configName);
    HZEPProcessorGroup* group = config ? config->getProcGrpByName(groupName) : nullptr;
    return group && group->getOSName() == osName ? group : nullptr;
}

} // namespace

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
    const HZEPProcessorGroup* group = findGroup(platformUniqueName, configName, processorGroupName, osName);
    return group ? group->getIncludePaths() : "";
}

std::string HZEPSoftwarePlatformUtils::getLibraryPaths(std::string platformUniqueName, std::string configName,
                                                       std::string processorGroupName, std::string osName) {
    const HZEPProcessorGroup* group = findGroup(platformUniqueName, configName, processorGroupName, osName);
    return group ? group->getLibraryPaths() : "";
}
