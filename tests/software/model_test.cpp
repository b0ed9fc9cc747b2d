// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HZEPBootImg.h"
#include "HZEPProcessorGroup.h"
#include "HZEPSoftwarePlatform.h"
#include "HZEPSoftwarePlatformUtils.h"
#include "HZEPSystemConfig.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

HZEPSystemConfig* addConfig(HZEPSoftwarePlatform& platform, const std::string& name, const std::string& prettyName = "",
                            const std::vector<std::string>& runtimes = {}, const std::vector<std::string>& osNames = {}) {
    HZEPSystemConfig* config = platform.addSystemConfig();
    config->setName(name);
    config->setPrettyName(prettyName);
    for (const std::string& runtime : runtimes)
        config->addRuntime(runtime);
    for (const std::string& osName : osNames)
        config->addProcessorGroup()->setOSName(osName);
    return config;
}

TEST(SoftwarePlatform, FindsTheLastConfigurationOfAName) {
    HZEPSoftwarePlatform platform;
    addConfig(platform, "linux");
    HZEPSystemConfig* second = addConfig(platform, "linux");
    EXPECT_EQ(platform.getSystemConfigByName("linux"), second);
    // A pretty name competes with names.
    HZEPSystemConfig* third = addConfig(platform, "other", "linux");
    EXPECT_EQ(platform.getSystemConfigByName("linux"), third);
    EXPECT_EQ(platform.getSystemConfigByPrettyName("other"), third);
    EXPECT_EQ(platform.getSystemConfigByName("Linux"), nullptr);

    third->setSupportsQemu(true);
    EXPECT_EQ(HZEPSoftwarePlatformUtils::getSystemConfigByPrettyName(&platform, "linux"), third);
    EXPECT_TRUE(HZEPSoftwarePlatformUtils::isQemuSupported(&platform, "linux"));
    EXPECT_EQ(HZEPSoftwarePlatformUtils::getSystemConfigByPrettyName(&platform, "other"), nullptr);
    EXPECT_FALSE(HZEPSoftwarePlatformUtils::isQemuSupported(&platform, "other"));
    EXPECT_FALSE(HZEPSoftwarePlatformUtils::isQemuSupported(nullptr, "linux"));
}

TEST(SoftwarePlatform, DefaultsFallBack) {
    HZEPSoftwarePlatform platform;
    EXPECT_EQ(platform.getDefaultSystemConfig(), nullptr);
    EXPECT_EQ(platform.getDefaultConfigName(), "");
    HZEPSystemConfig* first = addConfig(platform, "one");
    HZEPSystemConfig* second = addConfig(platform, "two", "Second");
    EXPECT_EQ(platform.getDefaultConfigName(), "one");
    platform.setDefaultConfigName("Second");
    EXPECT_EQ(platform.getDefaultSystemConfig(), second);
    platform.setDefaultConfigName("none");
    EXPECT_EQ(platform.getDefaultSystemConfig(), first);
    EXPECT_EQ(platform.getDefaultConfigName(), "none");

    EXPECT_EQ(first->getPrettyName(), "one");
    EXPECT_EQ(first->getDefaultProcGrpName(), "");
    EXPECT_EQ(first->getDefaultBootImgName(), "");
    HZEPProcessorGroup* group = first->addProcessorGroup();
    group->setName("a53");
    HZEPBootImg* image = first->addBootImg();
    image->setName("sd");
    EXPECT_EQ(group->getPrettyName(), "a53");
    EXPECT_EQ(first->getDefaultProcGrpName(), "a53");
    EXPECT_EQ(first->getDefaultBootImgName(), "sd");
    first->setDefaultProcGrpName("r5");
    first->setDefaultBootImgName("qspi");
    EXPECT_EQ(first->getDefaultProcGrpName(), "r5");
    EXPECT_EQ(first->getDefaultBootImgName(), "qspi");
    EXPECT_EQ(first->getProcGrpByName("a53"), group);
    EXPECT_EQ(first->getProcGrpByName("r5"), nullptr);
    EXPECT_EQ(first->getBootImgByName("sd"), image);

    // Names are recorded apart from the groups.
    first->addProcessorGroup("noted");
    std::vector<std::string> names;
    first->getProcessorGroups(names);
    EXPECT_THAT(names, ElementsAre("noted"));
    std::vector<HZEPProcessorGroup*> groups;
    first->getProcessorGroups(groups);
    EXPECT_THAT(groups, ElementsAre(group));
}

TEST(SoftwarePlatform, RuntimesAreGatheredOnce) {
    HZEPSoftwarePlatform platform;
    addConfig(platform, "none");
    addConfig(platform, "mixed", "", {"fast", "ocl"});
    addConfig(platform, "strange", "", {"fast", " cpp"});
    addConfig(platform, "shouted", "", {"OCL", "Cpp"});
    std::vector<std::string> runtimes;
    platform.getSupportedRuntimes(runtimes);
    EXPECT_THAT(runtimes, ElementsAre("fast", "ocl", " cpp", "OCL", "Cpp"));
    EXPECT_EQ(platform.getNumRuntimes(), 5U);
    std::vector<std::string> pretty{"OpenCL"};
    platform.getSupportedRuntimesByPrettyName(pretty);
    EXPECT_THAT(pretty, ElementsAre("OpenCL", "fast", " cpp", "C/C++"));

    for (const char* runtime : {"ocl", "OPENCL", "Cpp", "c/c++"})
        EXPECT_TRUE(platform.isRuntimeSupported(runtime)) << runtime;
    EXPECT_FALSE(platform.isRuntimeSupported(" cpp"));
    EXPECT_TRUE(platform.isSystemConfigSupported("none"));
    EXPECT_TRUE(platform.isSystemConfigSupported("mixed"));
    EXPECT_FALSE(platform.isSystemConfigSupported("strange"));
    EXPECT_FALSE(platform.isSystemConfigSupported("missing"));
}

TEST(SoftwarePlatform, LibraryTypesChooseConfigurations) {
    HZEPSoftwarePlatform platform;
    addConfig(platform, "bare", "", {}, {"standalone"});
    addConfig(platform, "penguin", "", {}, {"freertos", "Linux", "linux"});
    addConfig(platform, "empty");
    addConfig(platform, "penguin", "", {}, {"linux"});
    const struct {
        const char* type;
        std::vector<std::string> names;
    } rows[] = {{"static", {"bare", "penguin", "empty"}}, {"Shared", {"penguin"}}, {"C-CALLABLE", {"bare", "penguin"}}, {"", {}}};
    for (const auto& row : rows) {
        std::vector<std::string> names;
        EXPECT_EQ(platform.getSystemConfigNames(names, row.type), row.names.size());
        EXPECT_EQ(names, row.names) << row.type;
    }
}

} // namespace
