// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include <gtest/gtest.h>

#include "LoadingFixture.h"

#include "HPLPlatform.h"
#include "HZEPPlatform.h"
#include "HZEPReconfigurablePartition.h"
#include "HZEPSoftwarePlatform.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;

HPLPlatform* makeHardware(const std::string& name) {
    auto* hardware = new HPLPlatform;
    hardware->setName(name);
    return hardware;
}

HZEPReconfigurablePartition* addPartition(HZEPPlatform& platform, std::uint32_t id) {
    auto* partition = new HZEPReconfigurablePartition(id);
    platform.addReconfigurablePartition(partition);
    return partition;
}

TEST(Platform, WithoutHardwareAnswersNothing) {
    HZEPPlatform platform;
    EXPECT_EQ(renderJson(platform), laidOut(R"({"type": "Undefined", "unified": "false", "zpfm": "false", "hardware": "false",
        "softwareEmulation": "false", "hardwareEmulation": "false", "hardwareEmuPlatform": "false", "hidden": "false"})"));
    platform.setPlatformFile("/plat/heron/heron.v2.zpfm");
    platform.setPartial(true);
    EXPECT_EQ(platform.getPlatformDir(), "/plat/heron");
    EXPECT_EQ(platform.getPlatformBaseName(), "heron.v2");
    EXPECT_EQ(platform.getDeviceName(), "heron.v2");
    EXPECT_EQ(platform.getUniqueName(), "/plat/heron/heron.v2.zpfm");
}

TEST(Platform, TypeFollowsTheDesignIntent) {
    using Intent = HZEPDesignIntentStorage;
    const struct {
        std::vector<Intent::Key> keys;
        const char* type;
        const char* pretty;
    } rows[] = {
        {{}, "undefined", "Undefined"},
        {{Intent::Embedded}, "dorik", "Dorik"},
        {{Intent::DataCenter}, "kelpine", "Kelpine"},
        {{Intent::ExternalHost}, "kelpine", "Kelpine"},
        {{Intent::ServerManaged}, "kelpine", "Kelpine"},
        {{Intent::ServerManaged, Intent::Embedded}, "acceleration", "Acceleration"},
    };
    for (const auto& row : rows) {
        HZEPPlatform platform;
        HPLPlatform* hardware = makeHardware("h");
        for (const Intent::Key key : row.keys)
            hardware->setExplicitDesignIntent(key, true);
        platform.setHardwarePlatform(hardware);
        EXPECT_EQ(platform.getTypeString(), row.type);
        EXPECT_EQ(platform.getTypePrettyString(), row.pretty);
    }
}

TEST(Platform, HiddenIsOneExactName) {
    HZEPPlatform platform;
    platform.setPlatformFile("tolvan:tb700:linux-uart:1.0");
    EXPECT_TRUE(platform.isHidden());
    platform.setPlatformFile("/tolvan:tb700:linux-uart:1.0");
    EXPECT_FALSE(platform.isHidden());
}

TEST(Platform, DefaultPartitionStandsInForHardware) {
    HZEPPlatform platform;
    HZEPReconfigurablePartition* partition = addPartition(platform, 4);
    auto* hardware = platform.keepPartitionHardware(std::unique_ptr<HZEPHardwarePlatform>(makeHardware("rp")));
    hardware->setSupportsHWEmulation(true);
    hardware->setIsHWEmuPlatform(true);
    partition->setHardwarePlatform(hardware);
    platform.setDefaultRPHardwarePlatform(hardware);

    EXPECT_EQ(platform.getHardwarePlatform(), hardware);
    EXPECT_TRUE(platform.supportsHardware());
    EXPECT_TRUE(platform.isExpandable());
    EXPECT_NE(platform.getTypeString(), "");
    std::vector<std::string> categories;
    platform.getTargetCategories(categories);
    EXPECT_THAT(categories, ElementsAre("Acceleration"));
    // The questions that the default partition has no say in.
    EXPECT_FALSE(platform.isHWEmuPlatform());
    EXPECT_FALSE(platform.supportsHWEmulation());
    // The default id is 0 still, and there is no partition 0.
    EXPECT_EQ(platform.getDefaultRPHardwarePlatform(), nullptr);
    platform.setDefaultRPId(4);
    EXPECT_EQ(platform.getDefaultRPHardwarePlatform(), hardware);

    partition->setHardwareEmulationPlatform(hardware);
    EXPECT_TRUE(platform.supportsHWEmulation());
    EXPECT_EQ(platform.getDefaultRPHardwareEmulationPlatform(), hardware);
    EXPECT_EQ(platform.getHardwareEmulationPlatform(), nullptr);

    // A hardware platform of its own goes before, and both are asked for categories.
    HPLPlatform* own = makeHardware("own");
    platform.setHardwarePlatform(own);
    platform.setPartial(true);
    EXPECT_EQ(platform.getHardwarePlatform(), own);
    EXPECT_EQ(platform.getDeviceName(), own->getDeviceName());
    categories.clear();
    platform.getTargetCategories(categories);
    EXPECT_THAT(categories, ElementsAre("Acceleration", "Acceleration"));
}

TEST(Platform, LastPartitionOfAnIdIsFound) {
    HZEPPlatform platform;
    HZEPReconfigurablePartition* first = addPartition(platform, 7);
    HZEPReconfigurablePartition* second = addPartition(platform, 7);
    EXPECT_EQ(platform.getReconfigurablePartition(7), second);
    EXPECT_EQ(platform.getReconfigurablePartition(8), nullptr);
    EXPECT_EQ(platform.getRPHardwarePlatform(8), nullptr);
    std::vector<HZEPReconfigurablePartition*> list(5, nullptr);
    platform.getReconfigurablePartitions(list);
    EXPECT_THAT(list, ElementsAre(first, second));
}

/// An object that tells of its end.
template <class Base>
class Told : public Base {
public:
    Told(std::string name, std::vector<std::string>& ends) : name_(std::move(name)), ends_(ends) {}
    ~Told() override { ends_.push_back(name_); }

private:
    const std::string name_;
    std::vector<std::string>& ends_;
};

TEST(Platform, FreesWhatItOwnsOnceAndNothingElse) {
    std::vector<std::string> ends;
    Told<HPLPlatform> callers("caller's", ends);
    for (const bool isSetTwice : {false, true}) {
        HZEPPlatform platform;
        platform.addSoftwarePlatform(new Told<HZEPSoftwarePlatform>("software 1", ends));
        platform.addSoftwarePlatform(new Told<HZEPSoftwarePlatform>("software 2", ends));
        auto* partition = new Told<HZEPReconfigurablePartition>("partition 1", ends);
        platform.addReconfigurablePartition(partition);
        platform.addReconfigurablePartition(new Told<HZEPReconfigurablePartition>("partition 2", ends));
        auto* kept = platform.keepPartitionHardware(std::make_unique<Told<HPLPlatform>>("kept", ends));
        partition->setHardwarePlatform(kept);
        partition->setHardwareEmulationPlatform(&callers);
        platform.setDefaultRPHardwarePlatform(kept);
        platform.setDefaultRPHardwareEmulationPlatform(&callers);
        platform.setHardwareEmulationPlatform(new Told<HPLPlatform>("emulation", ends));
        platform.setHardwarePlatform(isSetTwice ? kept : new Told<HPLPlatform>("hardware", ends));
    }
    EXPECT_THAT(ends, ElementsAre("hardware", "partition 1", "partition 2", "software 1", "software 2", "emulation", "kept", //
                                  "kept", "partition 1", "partition 2", "software 1", "software 2", "emulation"));
}

TEST(Platform, PartitionRecordWritesItsDistinctEmulation) {
    HZEPReconfigurablePartition partition(4294967295U);
    EXPECT_EQ(renderJson(partition), "{\n    \"id\": \"4294967295\"\n}\n");
    HPLPlatform emulation;
    emulation.setName("emu");
    partition.setHardwareEmulationPlatform(&emulation);
    EXPECT_EQ(renderJson(partition).find("hwEmuPlatform"), std::string::npos);
    partition.setHardwareEmulationPlatformFile("/e.kar");
    EXPECT_EQ(partition.getHardwareEmuPlatformFile(), "/e.kar");
    EXPECT_NE(renderJson(partition).find("\"hwEmuPlatform\": {"), std::string::npos);
}

} // namespace
