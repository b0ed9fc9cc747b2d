// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "../formats/DsaXmlDocument.h"
#include "HZEPHardwarePlatform.h"
#include "HZEPHardwarePlatformMgr.h"
#include "ManagementFixture.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::UnorderedElementsAre;
namespace fs = std::filesystem;

namespace {

class HardwareManager : public testing::Test {
protected:
    ~HardwareManager() override {
        for (const HZEPHardwarePlatform* platform : found)
            delete platform;
    }
    Texts scan(const Texts& dirs, bool checkVBNV = false) {
        HZEPHardwarePlatformMgr::addPlatformsFromDirs(dirs, found, checkVBNV);
        Texts names;
        for (const HZEPHardwarePlatform* platform : found)
            names.push_back(platform->getName());
        return names;
    }

    MessageLog log;
    TempDir dir;
    std::vector<HZEPHardwarePlatform*> found;
};

TEST_F(HardwareManager, TakesJsonBeforeXmlAndLeavesNothingOfAFailedTry) {
    const std::string both = ZipBuilder(dir.path("both.dsa")).add("dsa.json", hardwareJson("json")).add("dsa.xml", kDsaXml).write();
    const std::string broken =
        ZipBuilder(dir.path("broken.dsa")).add("dsa.json", R"({"boardId": "left", "name": )").add("dsa.xml", kDsaXml).write();
    const std::unique_ptr<HZEPHardwarePlatform> first(HZEPHardwarePlatformMgr::addPlatform(both));
    EXPECT_EQ(first->getName(), "json");
    EXPECT_EQ(first->getPlatformFile(), both);
    EXPECT_THAT(log.lines, ElementsAre());
    const std::unique_ptr<HZEPHardwarePlatform> second(HZEPHardwarePlatformMgr::addPlatform(dir.path("./broken.dsa")));
    EXPECT_EQ(second->getUniqueName(), "norvane:egret:base:5.2");
    EXPECT_EQ(second->getPlatformFile(), broken);
    EXPECT_EQ(HZEPHardwarePlatformMgr::addPlatform(dir.path("missing.kar")), nullptr);
}

TEST_F(HardwareManager, PassesOverArchivesOfPlatformFiles) {
    writePlatform(dir, "p", "p");
    writeLoose(dir, "p/hw/other.kar", "other");
    writeLoose(dir, "p/hw/1/2/3/4/5/p.dsa", "noKarInADsa");
    writeLoose(dir, "p/hw/1/2/3/4/5/p.kar", "deep");
    writeLoose(dir, "p/hw/upper.KAR", "upper");
    writeLoose(dir, "elsewhere/a.kar", "linked");
    fs::create_directory_symlink(dir.path("elsewhere"), dir.path("p/link"));
    fs::create_symlink("gone.kar", dir.path("p/gone.kar"));
    fs::create_symlink("loop.kar", dir.path("p/loop.kar"));
    fs::create_directory(dir.path("p/directory.kar"));
    EXPECT_THAT(scan({dir.path("p"), dir.path("missing")}), UnorderedElementsAre("other", "deep"));
    EXPECT_EQ(log.lines.size(), 4u); // of the archive that can't be read, and of what is skipped

    const fs::path before = fs::current_path();
    fs::current_path(dir.path("p/hw"));
    EXPECT_THAT(scan({"."}), UnorderedElementsAre("other", "deep"));
    fs::current_path(before);
}

TEST_F(HardwareManager, KeepsOneOfEachFileAndOfEachName) {
    const std::string a = writeLoose(dir, "a/a.kar", "same");
    const std::string b = writeLoose(dir, "b/b.kar", "same");
    fs::create_symlink(a, dir.path("b/link.kar"));
    EXPECT_THAT(scan({dir.path("a"), dir.path("b")}), ElementsAre("same"));
    EXPECT_EQ(found.front()->getPlatformFile(), a);
    EXPECT_THAT(log.lines, ElementsAre("warning|@74-23@%s|" + a));
    // What the list held before counts too, and the check of names tells what it drops.
    log.lines.clear();
    EXPECT_THAT(scan({dir.path("a"), dir.path("b")}, true), ElementsAre("same"));
    EXPECT_THAT(log.lines, UnorderedElementsAre("warning|@74-23@%s|" + a, "warning|@74-17@%s%s%s|orrin:b1:same:1.2|" + a + "|" + b));
}

} // namespace
