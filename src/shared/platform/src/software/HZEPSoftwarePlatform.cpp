// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HZEPSoftwarePlatform.h"

#include "../foundations/OnceList.h"
#include "HZEPProcessorGroup.h"
#include "HZEPSystemConfig.h"
#include "JSONListWriter.h"
#include "JSONObjectWriter.h"

#include <boost/algorithm/string/predicate.hpp>

#include <algorithm>
#include <initializer_list>
#include <memory>

using boost::algorithm::iequals;

namespace {

using GetRuntimes = void (HZEPSystemConfig::*)(HostVector<std::string>&) const;

void collectRuntimes(const std::vector<HZEPSystemConfig*>& configs, GetRuntimes get, HostVector<std::string>& out) {
    OnceList once(out);
    for (const HZEPSystemConfig* config : configs) {
        HostVector<std::string> runtimes;
        (config->*get)(runtimes);
        for (const std::string& runtime : runtimes)
            once.add(runtime);
    }
}

bool isOneOf(const std::string& text, std::initializer_list<const char*> words) {
    return std::any_of(words.begin(), words.end(), [&text](const char* word) { return iequals(text, word); });
}

bool runsOneOf(const HZEPSystemConfig& config, std::initializer_list<const char*> osNames) {
    HostVector<HZEPProcessorGroup*> groups;
    config.getProcessorGroups(groups);
    return std::any_of(groups.begin(), groups.end(),
                       [&osNames](const HZEPProcessorGroup* group) { return isOneOf(group->getOSName(), osNames); });
}

bool takesLibrary(const HZEPSystemConfig& config, const std::string& libraryType) {
    if (iequals(libraryType, "static"))
        return true;
    if (iequals(libraryType, "shared"))
        return runsOneOf(config, {"linux"});
    return iequals(libraryType, "c-callable") && runsOneOf(config, {"linux", "standalone"});
}

} // namespace

HZEPSoftwarePlatform::HZEPSoftwarePlatform() = default;

HZEPSoftwarePlatform::~HZEPSoftwarePlatform() = default;

HZEPSystemConfig* HZEPSoftwarePlatform::addSystemConfig() {
    return systemConfigs_.add();
}

void HZEPSoftwarePlatform::getSystemConfigs(HostVector<HZEPSystemConfig*>& out) const {
    systemConfigs_.appendTo(out);
}

HZEPSystemConfig* HZEPSoftwarePlatform::getSystemConfigByName(const std::string& name) const {
    const auto found = std::find_if(getSystemConfig().rbegin(), getSystemConfig().rend(), [&name](const HZEPSystemConfig* config) {
        return config->getName() == name || config->getPrettyName() == name;
    });
    return found == getSystemConfig().rend() ? nullptr : *found;
}

HZEPSystemConfig* HZEPSoftwarePlatform::getSystemConfigByPrettyName(const std::string& name) const {
    return getSystemConfigByName(name);
}

HZEPSystemConfig* HZEPSoftwarePlatform::getDefaultSystemConfig() const {
    if (!defaultConfigName_.empty())
        if (HZEPSystemConfig* config = getSystemConfigByName(defaultConfigName_))
            return config;
    return systemConfigs_.empty() ? nullptr : systemConfigs_.items().front();
}

std::string HZEPSoftwarePlatform::getDefaultConfigName() const {
    return !defaultConfigName_.empty() || systemConfigs_.empty() ? defaultConfigName_ : getDefaultSystemConfig()->getName();
}

bool HZEPSoftwarePlatform::isRuntimeSupported(const std::string& runtime) const {
    return isOneOf(runtime, {"ocl", "OpenCL", "cpp", "C/C++"});
}

bool HZEPSoftwarePlatform::isSystemConfigSupported(const std::string& name) const {
    const HZEPSystemConfig* config = getSystemConfigByName(name);
    if (!config)
        return false;
    HostVector<std::string> runtimes;
    config->getRuntimes(runtimes);
    return runtimes.empty() ||
           std::any_of(runtimes.begin(), runtimes.end(), [this](const std::string& runtime) { return isRuntimeSupported(runtime); });
}

void HZEPSoftwarePlatform::getSupportedRuntimes(HostVector<std::string>& out) const {
    collectRuntimes(getSystemConfig(), &HZEPSystemConfig::getRuntimes, out);
}

void HZEPSoftwarePlatform::getSupportedRuntimesByPrettyName(HostVector<std::string>& out) const {
    collectRuntimes(getSystemConfig(), &HZEPSystemConfig::getRuntimesByPrettyName, out);
}

std::size_t HZEPSoftwarePlatform::getNumRuntimes() const {
    HostVector<std::string> runtimes;
    getSupportedRuntimes(runtimes);
    return runtimes.size();
}

std::size_t HZEPSoftwarePlatform::getSystemConfigNames(HostVector<std::string>& out, const std::string& libraryType) const {
    OnceList once(out);
    for (const HZEPSystemConfig* config : systemConfigs_)
        if (takesLibrary(*config, libraryType))
            once.add(config->getName());
    return out.size();
}

void HZEPSoftwarePlatform::toJSON(zep_platform::JSONObjectWriter& writer) const {
    writer.addKey("linuxRootFileSystemPath", getLinuxRootFileSystemPath());
    writer.addKey("defaultConfig", getDefaultConfigName());
    zep_platform::JSONListWriter configs;
    for (const HZEPSystemConfig* config : systemConfigs_)
        configs.addItem(config);
    writer.addKey("systemConfigurations", std::move(configs));
}
