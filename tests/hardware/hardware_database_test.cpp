// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HPLPlatform.h"
#include "HostHwDb.h"
#include "HostHwManager.h"
#include "HostMsgMgr.h"
#include "TempDir.h"
#include "ZipBuilder.h"

#include <gtest/gtest.h>

namespace {

constexpr const char* kDefinition = R"(<hardwareDefinition top="shell_top" part="p">
    <instance name="memory" module="ddr4_controller"/><instance name="region" module="empty"/></hardwareDefinition>)";

std::string moduleMetadata(unsigned nodeId, const std::string& instPath) {
    return R"({"designIDs": {"nodeID": ")" + std::to_string(nodeId) + R"("}, "devices": [{"name": "fpga0", "core": {"instPath": ")" +
           instPath + R"("}}]})";
}

/// Closes the databases that a test leaves, and keeps what a loader says about bad files off the terminal.
class HardwareDatabase : public ::testing::Test {
protected:
    HardwareDatabase() : sinkBefore_(HostMsgMgr::getGlobal().setSink({})) {}
    ~HardwareDatabase() override {
        for (const std::string& name : HostHwManager::getHardwareDbNames())
            HostHwManager::closeHardwareDb(name);
        HostMsgMgr::getGlobal().setSink(sinkBefore_);
    }

    std::string pack(const std::string& name, const std::vector<std::pair<std::string, std::string>>& members) {
        ZipBuilder zip(dir_.path(name));
        for (const auto& [member, text] : members)
            zip.add(member, text);
        return zip.write();
    }

    std::string packModule(const std::string& name, unsigned nodeId, const std::string& instPath) {
        return pack(name, {{"kar.json", moduleMetadata(nodeId, instPath)},
                           {"hwdef.xml", R"(<hardwareDefinition top="rm"><instance name="phy" module="m"/></hardwareDefinition>)"}});
    }

    const HostMsgMgr::Sink sinkBefore_;
    const TempDir dir_;
};

TEST_F(HardwareDatabase, IsOpenedOnceByTheArchive) {
    for (const char* member : {"hwdef.xml", "sysdef.xml"}) {
        HPLPlatform platform;
        platform.setPlatformFile(pack("plat.kar", {{member, kDefinition}}));
        const std::string name = platform.getHwDbName();
        EXPECT_NE(name, "");
        EXPECT_EQ(platform.getHwDbName(), name);
        ASSERT_NE(platform.getHwDb(), nullptr);
        EXPECT_EQ(platform.getHwDb(), platform.getHwDb(name));
        EXPECT_EQ(platform.getHwDb()->getPlatformFile(), platform.getPlatformFile());
        EXPECT_NE(platform.getHwDb()->findInstance("memory"), nullptr);
    }
    EXPECT_EQ(HostHwManager::getHardwareDbNames().size(), 2u);
}

TEST_F(HardwareDatabase, IsMissingWithoutAReadableDefinition) {
    const std::string archives[] = {"", dir_.path("missing.kar"), dir_.write("text.kar", "text"), pack("none.kar", {{"kar.json", "{}"}}),
                                    pack("broken.kar", {{"hwdef.xml", "<hardwareDefinition"}})};
    for (const std::string& archive : archives) {
        HPLPlatform platform;
        platform.setPlatformFile(archive);
        platform.setStatic(true);
        EXPECT_EQ(platform.getHwDbName(), "") << archive;
        EXPECT_EQ(platform.getHwDb(), nullptr);
        EXPECT_EQ(platform.getHwDb("elsewhere"), nullptr);
        EXPECT_EQ(platform.createHwDb(), nullptr);
        EXPECT_EQ(platform.createHwDb("name"), nullptr);
        EXPECT_EQ(platform.createHwDb(std::vector<std::string>{}), nullptr);
    }
}

TEST_F(HardwareDatabase, IsCreatedUnderANameOnce) {
    HPLPlatform platform;
    platform.setPlatformFile(pack("plat.kar", {{"hwdef.xml", kDefinition}}));
    const HostHwDb* named = platform.createHwDb("mine");
    ASSERT_NE(named, nullptr);
    EXPECT_EQ(named->getName(), "mine");
    EXPECT_EQ(platform.createHwDb("mine"), named);
    EXPECT_NE(platform.createHwDb(), nullptr);
    EXPECT_NE(platform.createHwDb(), named);
    EXPECT_EQ(HPLPlatform().createHwDb("mine"), named) << "one that is there needs no archive";
}

TEST_F(HardwareDatabase, OfAStaticPlatformHoldsItsModules) {
    HPLPlatform platform;
    platform.setPlatformFile(pack("plat.kar", {{"hwdef.xml", kDefinition}}));
    platform.addReconfigPartition()->setNodeID(5);
    platform.addReconfigPartition()->setNodeID(6);
    const std::vector<std::string> files = {packModule("rm5.kar", 5, "region"), packModule("rm6.kar", 6, "")};
    EXPECT_EQ(platform.createHwDb("static", files), nullptr) << "the platform is not static";

    platform.setStatic(true);
    const HostHwDb* database = platform.createHwDb("static", files);
    ASSERT_NE(database, nullptr);
    EXPECT_EQ(database->getModules().size(), 1u) << "a module without an instance path is left out";
    EXPECT_NE(database->findInstance("region/phy"), nullptr);
    EXPECT_EQ(platform.createHwDb("static", files), database);
    EXPECT_EQ(platform.createHwDb("static", {files[0], files[0]}), nullptr) << "the modules are looked at before the name";
    EXPECT_NE(platform.createHwDb(files), nullptr);
}

TEST_F(HardwareDatabase, TakesOneModuleForAPartition) {
    HPLPlatform platform;
    platform.addReconfigPartition()->setNodeID(5);
    platform.addReconfigPartition()->setNodeID(6);
    const std::string five = packModule("five.kar", 5, "a");
    const std::string fiveToo = packModule("five_too.kar", 5, "b");
    const std::string six = packModule("six.kar", 6, "c");
    const std::string seven = packModule("seven.kar", 7, "d");
    const std::string broken = pack("broken.kar", {{"kar.json", "{"}});
    EXPECT_EQ(HZEPHardwarePlatform::getNodeIDFromKar(seven), 7u);
    EXPECT_EQ(HZEPHardwarePlatform::getNodeIDFromKar(broken), 0u);

    const struct {
        std::vector<std::string> files;
        bool valid;
    } rows[] = {{{}, true},
                {{five, six}, true},
                {{five, fiveToo}, false},
                {{six, five, six}, false},
                {{seven}, false},
                {{broken}, false},
                {{dir_.path("missing.kar")}, false},
                {{dir_.path()}, false}};
    for (const auto& row : rows) {
        EXPECT_EQ(platform.validateRmKarFiles(row.files), row.valid);
        if (row.files.size() == 1) {
            EXPECT_EQ(platform.isValidRmKar(row.files[0]), row.valid);
        }
    }
    EXPECT_TRUE(platform.isValidRmKar(fiveToo));
}

} // namespace
