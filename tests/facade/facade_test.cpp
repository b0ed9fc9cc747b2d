// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "FacadeFixture.h"
#include "MessageLog.h"

#include "HZEPPlatformHelper.h"
#include "HZEPPlatformMgr.h"
#include "HZEPProcessorGroup.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Helper = HZEPPlatformHelper;
using Key = HZEPDesignIntentStorage::Key;

TEST(Facade, TakesAFileElseWhatTheManagerKnows) {
    TempDir dir;
    const std::string file = writeKestrel(dir);
    HZEPPlatformMgr* manager = HZEPPlatformMgr::getGlobalNoInit();
    manager->addPlatformsFromDirs({dir.path()});
    MessageLog log;
    const Helper loaded(file, {"/somewhere"}), known("KESTREL", {}), unknown("no such platform", {});
    EXPECT_TRUE(loaded.isValid() && known.isValid());
    EXPECT_NE(loaded.getPlatform(), known.getPlatform());
    EXPECT_EQ(known.getPlatform(), manager->getPlatform("kestrel"));
    EXPECT_FALSE(unknown.isValid() || unknown.getPlatform() || unknown.hasBootImg() || unknown.isQemuSupported("linux"));
    EXPECT_EQ(unknown.getFpgaPart() + unknown.getFpgaPartAsFields() + unknown.getBoardConnectionsString(), "");
    EXPECT_EQ(unknown.getNumRuntimes(""), 0U);
    EXPECT_THAT(log.lines, IsEmpty());
    EXPECT_EQ(loaded.getFpgaPart(), "tlv9pz-fsgd2104-2-e");
    EXPECT_EQ(loaded.getFpgaPartAsFields(), loaded.getFpgaPart());
    Texts paths{"before"};
    loaded.getBoardRepoPaths(paths);
    EXPECT_THAT(paths, ElementsAre("/somewhere"));
    manager->clearAllPlatforms();

    // Relative names are made absolute; what fails is told by the loader and leaves the helper without a platform.
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(dir.path());
    EXPECT_EQ(Helper("kestrel.zpfm", {}).getPlatformFile(), file);
    std::filesystem::current_path(before);
    EXPECT_FALSE(Helper(dir.write("bad.zpfm", "<"), {}).isValid());
    dir.write("hw/kestrel.kar", "no archive");
    EXPECT_FALSE(Helper(file, {}).isValid());
    EXPECT_FALSE(Helper(dir.path(), {}).isValid());
    EXPECT_THAT(log.lines, testing::Contains(testing::StartsWith("critical warning|@74-60@%s")).Times(1));
}

TEST(Facade, BootImagesAndProcessorGroupsFollowIntentAndHost) {
    const struct {
        bool unified, embedded;
        const char* host;
        bool bootImage;
    } cases[] = {{true, true, "pcie", true},
                 {true, false, "axi", false},
                 {false, false, "axi", true},
                 {false, true, "pcie", false},
                 {false, true, "unknown", false}};
    for (const auto& one : cases) {
        Built built;
        built.hardware->setUnifiedPlatform(one.unified);
        built.hardware->setExplicitDesignIntent(Key::Embedded, one.embedded);
        built.hardware->setHostInterface(one.host);
        const Helper helper(&built.platform);
        EXPECT_EQ(helper.hasBootImg(), one.bootImage) << one.unified << one.embedded << one.host;
        EXPECT_EQ(helper.isProcessorGroupRelevant(), one.embedded);
        EXPECT_EQ(helper.isLinuxRootFSPathRelevant(), one.embedded);
    }
}

TEST(Facade, RuntimesAreOfAConfigurationOrOfAllOrFollowTheIntent) {
    Built built(true);
    built.addConfig("both", {"ocl", "cpp"})->setSupportsQemu(true);
    built.addConfig("one", {"cpp", "own"});
    const Helper helper(&built.platform);
    const auto runtimes = [](const Helper& of, const std::string& config) {
        return listOf([&](Texts& out) { of.getRuntimes(config, out); });
    };
    const auto pretty = [](const Helper& of, const std::string& config) {
        return listOf([&](Texts& out) { of.getRuntimesByPrettyName(config, out); });
    };
    EXPECT_THAT(runtimes(helper, "both"), ElementsAre("ocl", "cpp"));
    EXPECT_THAT(pretty(helper, "one"), ElementsAre("C/C++", "own"));
    EXPECT_THAT(runtimes(helper, ""), ElementsAre("ocl", "cpp", "own"));
    EXPECT_THAT(pretty(helper, ""), ElementsAre("OpenCL", "C/C++", "own"));
    EXPECT_THAT(runtimes(helper, "none"), IsEmpty());
    EXPECT_EQ(helper.getNumRuntimes(""), 3U);
    EXPECT_TRUE(helper.supportsMultipleRuntimes());
    EXPECT_TRUE(helper.isQemuSupported("both"));
    EXPECT_FALSE(helper.isQemuSupported("one") || helper.isQemuSupported("none"));

    Built single(true);
    single.addConfig("first", {"cpp"});
    single.addConfig("second", {"ocl"});
    EXPECT_FALSE(Helper(&single.platform).supportsMultipleRuntimes());

    Built bare;
    const Helper byIntent(&bare.platform);
    EXPECT_THAT(runtimes(byIntent, "any"), IsEmpty());
    bare.hardware->setExplicitDesignIntent(Key::ServerManaged, true);
    EXPECT_THAT(runtimes(byIntent, "any"), ElementsAre("ocl"));
    EXPECT_FALSE(byIntent.supportsMultipleRuntimes());
    bare.hardware->setExplicitDesignIntent(Key::Embedded, true);
    EXPECT_THAT(pretty(byIntent, ""), ElementsAre("OpenCL", "C/C++"));
    EXPECT_TRUE(byIntent.supportsMultipleRuntimes());
}

TEST(Facade, PathsAreThoseOfAGroupWithThatOperatingSystem) {
    Built built(true);
    HZEPProcessorGroup* group = built.addConfig("c", {})->addProcessorGroup();
    group->setName("g");
    group->setOSName("linux");
    group->setIncludePaths("/include");
    group->setLibraryPaths("/lib");
    const Helper helper(&built.platform);
    EXPECT_EQ(helper.getIncludePaths("c", "g", "linux"), "/include");
    EXPECT_EQ(helper.getLibraryPaths("c", "g", "linux"), "/lib");
    EXPECT_EQ(helper.getIncludePaths("c", "g", "Linux") + helper.getIncludePaths("c", "x", "linux") +
                  helper.getLibraryPaths("x", "g", "linux") + Helper(nullptr).getLibraryPaths("c", "g", "linux"),
              "");
}

/// All views of the connectors, one a line.
std::vector<std::string> viewsOf(const Helper& helper) {
    Texts views{helper.getBoardConnectionsString(), helper.getLockedBoardConnectionsString(), helper.getUnlockedBoardConnectionsString()};
    Texts names, connected, locked;
    helper.getConnectedDimmConnectors(names, connected);
    helper.getLockedDimmConnectors(locked);
    for (const Texts& list : {names, connected, locked})
        views.push_back(testing::PrintToString(list));
    return views;
}

TEST(Facade, ConnectorsAreThePlatformsElseTheBoardFiles) {
    Built built;
    built.hardware->setBoardId("kestrel");
    Helper helper(&built.platform);
    EXPECT_THAT(viewsOf(helper), ElementsAre("", "", "", "{}", "{}", "{}"));
    helper.setBoardRepoPaths({HZEP_EXAMPLES "/boards"});
    EXPECT_THAT(viewsOf(helper),
                ElementsAre("ddr4_dimm0 rdimm_16g ddr4_dimm1 rdimm_16g", "ddr4_dimm0 rdimm_16g", "ddr4_dimm1 rdimm_16g",
                            "{ \"ddr4_dimm0\", \"ddr4_dimm1\" }", "{ \"rdimm_16g\", \"rdimm_16g\" }", "{ \"ddr4_dimm0\" }"));
    EXPECT_EQ(helper.getConnectorDisplayName("DDR4_dimm2"), "DIMM slot 2");
    EXPECT_EQ(helper.getConnectorDisplayName("rdimm_16g"), "16 GB registered DIMM");
    EXPECT_EQ(helper.getConnectorDisplayName("qsfp0"), "");

    built.hardware->getBoard().addDimmConnector("slot", "Slot", "DIMM", "module", "Module", true, true);
    EXPECT_THAT(viewsOf(helper), ElementsAre("slot module", "slot module", "", "{ \"slot\" }", "{ \"module\" }", "{ \"slot\" }"));
    EXPECT_EQ(helper.getConnectorDisplayName("module"), "Module");
    helper.clearBoardRepoPaths();
    EXPECT_EQ(helper.getBoardConnectionsString(), "slot module");
}

TEST(Facade, CompatibleConnectorsAreLookedForBelowThePathsOfTheCall) {
    Built built;
    built.hardware->setBoardId("kestrel");
    TempDir dir;
    dir.write("k.board.json", R"({"boardFile": 1, "id": "kestrel", "connectors": [
        {"name": "own", "type": "dimm", "accepts": ["f"]}, {"name": "m", "type": "dimm", "form": "f"}]})");
    Helper helper(&built.platform);
    helper.setBoardRepoPaths({dir.path()});
    const Texts boards{HZEP_EXAMPLES "/boards"};
    const auto fitting = [&](const std::string& connector) {
        return listOf([&](Texts& out) { helper.getCompatibleConnectors(connector, out); });
    };
    const auto fittingIn = [&](const Texts& paths, const std::string& connector) {
        return listOf([&](Texts& out) { helper.getCompatibleConnectors(connector, paths, out); });
    };
    EXPECT_THAT(fitting("own"), ElementsAre("m"));
    // A probe fits as well, and is no DIMM.
    EXPECT_THAT(fittingIn(boards, "ddr4_dimm0"), ElementsAre("rdimm_16g", "rdimm_32g"));
    EXPECT_THAT(fittingIn(boards, "DIMM slot 1"), ElementsAre("rdimm_16g", "rdimm_32g", "nvdimm_16g"));
    for (const char* name : {"own", "qsfp0", "DDR4_DIMM0", ""})
        EXPECT_THAT(fittingIn(boards, name), IsEmpty()) << name;
    EXPECT_THAT(fittingIn({}, "own"), IsEmpty());

    // The earlier paths hold again, also after a call that a message sink broke off.
    const auto before = HostMsgMgr::getGlobal().setSink([](const HostMsg&) { throw std::runtime_error("no more"); });
    EXPECT_THROW(fittingIn({dir.path("none")}, "own"), std::runtime_error);
    HostMsgMgr::getGlobal().setSink(before);
    EXPECT_THAT(fitting("own"), ElementsAre("m"));
    EXPECT_THAT(listOf([&](Texts& out) { helper.getBoardRepoPaths(out); }), ElementsAre(dir.path()));
    built.hardware->setBoardId("");
    EXPECT_THAT(fitting("own"), IsEmpty());
}

} // namespace
