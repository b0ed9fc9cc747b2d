// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "HZEPHardwarePlatform.h"
#include "HZEPPlatformMgr.h"
#include "HZEPReconfigurablePartition.h"
#include "HostEnv.h"
#include "ManagementFixture.h"

#include <gmock/gmock.h>

#include <sys/stat.h>
#include <unistd.h>

using testing::ElementsAre;
using testing::UnorderedElementsAre;
namespace fs = std::filesystem;

namespace {

class Manager : public testing::Test {
protected:
    Texts errors() const {
        Texts texts;
        manager.getParsingErrorMsgs(texts);
        return texts;
    }

    QuietOutput quiet;
    MessageLog log;
    TempDir dir;
    HZEPPlatformMgr manager;
};

TEST_F(Manager, FindsPlatformFilesThreeDirectoriesDownAndThroughLinks) {
    Texts expected;
    for (const std::string where : {"r", "r/1", "r/1/2", "r/1/2/3", "r/a b", "r/\xC3\xA9\n"})
        expected.push_back(writePlatform(dir, where, "p" + std::to_string(expected.size())));
    writePlatform(dir, "r/1/2/3/4", "tooDeep");
    expected.push_back(writePlatform(dir, "r/a directory.zpfm", "inside"));
    dir.write("r/1/upper.ZPFM", platformFile(hardwareElement("p1.kar")));
    writePlatform(dir, "elsewhere", "linked");
    fs::create_directory_symlink("../elsewhere", dir.path("r/link"));
    expected.push_back(dir.path("r/link/linked.zpfm"));
    fs::create_directory_symlink("nowhere", dir.path("r/dangling"));
    fs::create_symlink("nowhere.zpfm", dir.path("r/dangling.zpfm"));
    fs::create_symlink("loop.zpfm", dir.path("r/loop.zpfm"));
    ASSERT_EQ(mkfifo(dir.path("r/pipe.zpfm").c_str(), 0600), 0);

    EXPECT_TRUE(manager.addPlatformsFromDirs({dir.path("r"), dir.path("missing"), dir.path("r/p0.zpfm")}));
    EXPECT_THAT(filesOf(manager), testing::UnorderedElementsAreArray(expected));
    EXPECT_THAT(errors(), ElementsAre());
    const std::string skipped = "warning|@75-5@%s%s|" + dir.path("r/");
    EXPECT_THAT(log.lines, UnorderedElementsAre(
                               skipped + "a directory.zpfm|a directory", skipped + "dangling.zpfm|a link that leads nowhere",
                               skipped + "loop.zpfm|a link that loops", skipped + "pipe.zpfm|a named pipe",
                               "warning|@74-1@%s|HZEPHardwarePlatformMgr::parseDSAFiles_: '" + dir.path("r/p0.zpfm") + "' doesn't exist"));
    EXPECT_TRUE(manager.getPlatform("INSIDE")->isZpfm());
    EXPECT_NE(manager.getPlatform("inside")->getSoftwarePlatform(), nullptr);
}

TEST_F(Manager, PutsTheLastFoundInFrontAndKnowsAPathByItsText) {
    const std::string a = writePlatform(dir, "a", "twin");
    const std::string b = writePlatform(dir, "b", "Twin");
    manager.addPlatformsFromDirs({dir.path("a"), dir.path("b")});
    manager.addPlatformsFromDirs({dir.path("b"), dir.path("a")});
    EXPECT_THAT(filesOf(manager), ElementsAre(b, a));
    EXPECT_EQ(manager.getPlatform("TWIN")->getPlatformFile(), b);
    // By the text of a path, by another spelling, and by a link to it.
    fs::create_directory_symlink("a", dir.path("link"));
    fs::create_symlink("a/twin.zpfm", dir.path("other"));
    EXPECT_EQ(manager.getPlatform(a)->getPlatformFile(), a);
    for (const std::string spelling : {"b/../a/twin.zpfm", "link/twin.zpfm", "other", "a/TWIN.zpfm"})
        EXPECT_EQ(manager.getPlatform(dir.path(spelling)), manager.getPlatform(a)) << spelling;
    EXPECT_EQ(manager.getPlatform(dir.path("a")), nullptr);
    EXPECT_EQ(manager.getPlatform(""), nullptr);

    manager.addPlatformsFromDirs({dir.path("link")});
    EXPECT_THAT(filesOf(manager), ElementsAre(dir.path("link/twin.zpfm"), b, a));
    // What counts is the file that a platform has now.
    manager.getPlatform(b)->setPlatformFile("moved");
    manager.addPlatformsFromDirs({dir.path("b")});
    EXPECT_THAT(filesOf(manager), ElementsAre(b, dir.path("link/twin.zpfm"), "moved", a));
}

TEST_F(Manager, NamedScanEndsWithTheFirstFileThatParses) {
    dir.write("0/heron.zpfm", "no xml");
    const std::string first = writePlatform(dir, "1", "Heron");
    writePlatform(dir, "1", "egret");
    const std::string second = writePlatform(dir, "2", "heron");
    const std::string loose = writeLoose(dir, "2/loose.kar", "loose");
    const Texts dirs = {dir.path("0"), dir.path("1"), dir.path("2")};
    EXPECT_TRUE(manager.addPlatformsFromDirs("hERON", dirs));
    EXPECT_THAT(filesOf(manager), ElementsAre(first));
    // A known one ends its directory only.
    EXPECT_TRUE(manager.addPlatformsFromDirs("heron", dirs));
    EXPECT_THAT(filesOf(manager), ElementsAre(second, first));
    Platforms partial;
    manager.getDSAPlatforms(partial);
    EXPECT_THAT(filesOf(partial), ElementsAre(loose));

    // One that parses and can't be attached ends the scan as well.
    manager.clearAllPlatforms();
    fs::remove(dir.path("1/hw/Heron.kar"));
    manager.clearParsingErrorMsgs();
    manager.addPlatformsFromDirs("heron", {dir.path("1"), dir.path("2")});
    EXPECT_EQ(manager.getNumPlatforms(), 0u);
    EXPECT_EQ(errors().size(), 1u);
    HZEPPlatformMgr fresh;
    EXPECT_FALSE(fresh.addPlatformsFromDirs("heron", {}));
}

TEST_F(Manager, LeavesOutEachBadPlatformWithItsText) {
    const std::string hw = dir.path("bad/hw/p.kar");
    const std::string file = dir.path("bad/p.zpfm");
    const std::string end = ". Unable to load platform.\n";
    struct Case {
        std::string defect;
        std::function<void()> make;
        Texts messages;
        Texts texts; // "*" stands for the text of a reader
    };
    const std::string parse = "Encountered Errors while parsing platform: " + file + end;
    const std::string software = "Encountered Errors while parsing software platform for: " + file + end;
    const auto write = [&](const std::string& hardware) { dir.write("bad/p.zpfm", platformFile(hardware)); };
    const Case cases[] = {
        {"no XML",
         [&] { dir.write("bad/p.zpfm", "<"); },
         {"error|@74-9@%s|" + file + "|1", "critical warning|@74-3@%s|" + file},
         {"*", parse}},
        {"no hardware file",
         [&] { fs::remove(hw); },
         {"critical warning|@74-14@%s%s|" + hw + "|" + file},
         {"Hardware platform file " + hw + " for platform " + file + " does not exist on disk" + end}},
        {"another extension",
         [&] { write("<zep:hardwarePlatform zep:path=\"sw\" zep:name=\"p.spfm\"/>"); },
         {"critical warning|@74-55@%s%s%s|" + dir.path("bad/sw/p.spfm") + "|" + file + "| '.dsa', '.kar',"},
         {"Found bad hardware platform file " + dir.path("bad/sw/p.spfm") + " for platform " + file +
          ". Supported extensions are '.dsa', '.kar'," + end}},
        {"no archive",
         [&] { dir.write("bad/hw/p.kar", ""); },
         {"critical warning|@74-65@%s%s%s|kar.xml|" + hw + "|" + hw + ": is empty, not a zip archive"},
         {}},
        {"a directory for an archive",
         [&] { fs::remove(hw), fs::create_directory(hw); },
         {"critical warning|@74-65@%s%s%s|kar.xml|" + hw + "|" + hw + ": is a directory"},
         {}},
        {"no software file",
         [&] { fs::remove(dir.path("bad/sw/p.spfm")); },
         {},
         {"Software platform file " + dir.path("bad/sw/p.spfm") + " for platform " + file + " does not exist on disk" + end}},
        {"a pipe for a software file",
         [&] { fs::remove(dir.path("bad/sw/p.spfm")), mkfifo(dir.path("bad/sw/p.spfm").c_str(), 0600); },
         {"critical warning|@74-4@%s|" + dir.path("bad/sw/p.spfm")},
         {software}},
        {"bad software file",
         [&] { dir.write("bad/sw/p.spfm", "<"); },
         {"*", "critical warning|@74-4@%s|" + dir.path("bad/sw/p.spfm")},
         {"*", software}},
        {"one of two partitions",
         [&] { write(partitionElement("1", hardwareElement("none.kar")) + partitionElement("2", hardwareElement("p.kar"))); },
         {"critical warning|@74-14@%s%s|" + dir.path("bad/hw/none.kar") + "|" + file},
         {"Hardware platform file " + dir.path("bad/hw/none.kar") + " for platform " + file + " does not exist on disk" + end}},
    };
    writePlatform(dir, "good", "good");
    const auto wanted = [](const Texts& expected) {
        std::vector<testing::Matcher<std::string>> matchers;
        for (const std::string& text : expected)
            matchers.push_back(text == "*" ? testing::Matcher<std::string>(testing::_) : testing::Eq(text));
        return testing::ElementsAreArray(matchers);
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.defect);
        fs::remove_all(dir.path("bad"));
        writePlatform(dir, "bad", "p");
        each.make();
        log.lines.clear();
        manager.clearAllPlatforms();
        manager.clearParsingErrorMsgs();
        EXPECT_TRUE(manager.addPlatformsFromDirs({dir.path("bad"), dir.path("good")}));
        EXPECT_THAT(filesOf(manager), ElementsAre(dir.path("good/good.zpfm")));
        EXPECT_THAT(errors(), wanted(each.texts));
        EXPECT_THAT(log.lines, wanted(each.messages));
    }
}

TEST_F(Manager, GoesOnWithTheNextDirectoryWhenOneCannotBeWalked) {
    writePlatform(dir, "locked", "p");
    fs::create_directory(dir.path("locked/closed"));
    // The reader finds no such file, since a backslash is taken for a separator.
    writePlatform(dir, "odd", "back\\slash");
    writePlatform(dir, "next", "next");
    fs::permissions(dir.path(), fs::perms::all);
    fs::permissions(dir.path("locked"), fs::perms::none);
    const bool isRoot = geteuid() == 0;
    ASSERT_TRUE(!isRoot || seteuid(65534) == 0);
    manager.addPlatformsFromDirs({dir.path("locked"), dir.path("odd"), dir.path("next")});
    ASSERT_TRUE(!isRoot || seteuid(0) == 0);
    fs::permissions(dir.path("locked"), fs::perms::all);
    EXPECT_THAT(filesOf(manager), ElementsAre(dir.path("next/next.zpfm")));
    EXPECT_THAT(errors(), ElementsAre());
    EXPECT_THAT(log.lines, ElementsAre("warning|@74-5@%s|" + dir.path("locked"), "warning|@74-5@%s|" + dir.path("odd"),
                                       "warning|@74-5@%s|" + dir.path("locked")));
}

TEST_F(Manager, AttachesPartitionsAndReadsNoEmulation) {
    writePlatform(dir, "p", "one");
    writeLoose(dir, "p/hw/two.kar", "two");
    dir.write("p/one.zpfm", platformFile(partitionElement("1", hardwareElement("one.kar") + emulationElement("gone.kar")) +
                                             partitionElement("2", hardwareElement("two.kar")),
                                         " zep:defaultRP=\"2\""));
    manager.addPlatformsFromDirs({dir.path("p")});
    ASSERT_EQ(manager.getNumPlatforms(), 1u);
    const HZEPPlatform& platform = *manager.getPlatform("one");
    EXPECT_EQ(platform.getHardwarePlatform()->getName(), "two");
    EXPECT_EQ(platform.getRPHardwarePlatform(1)->getName(), "one");
    EXPECT_EQ(platform.getRPHardwareEmulationPlatform(1), nullptr);
}

TEST_F(Manager, RemovesByTheDirectParentAndSeesTheListOfItsProjectType) {
    const std::string a = writePlatform(dir, "a", "a", hardwareJson("a", R"(, "unifiedPlatform": "true")"));
    const std::string below = writePlatform(dir, "a/below", "b");
    const std::string loose = writeLoose(dir, "a/loose.kar", "loose");
    manager.addPlatformsFromDirs({dir.path("a")});
    Platforms unified;
    manager.getUnifiedPlatforms(unified);
    manager.getZEPPlatforms(unified);
    EXPECT_THAT(filesOf(unified), ElementsAre(a, a));

    EXPECT_EQ(manager.getProjectTypeAsStr(), "zep");
    manager.setProjectType(HZEPPlatformMgr::PlatformProject);
    EXPECT_EQ(manager.getProjectTypeAsStr(), "platform");
    EXPECT_THAT(filesOf(manager), ElementsAre(loose));
    EXPECT_TRUE(manager.getPlatform("loose")->isPartial());
    EXPECT_FALSE(manager.getPlatform("loose")->isZpfm());
    manager.setProjectType(static_cast<HZEPPlatformMgr::ZEPProjectType>(7));
    EXPECT_EQ(manager.getProjectTypeAsStr(), "");
    EXPECT_EQ(manager.getNumPlatforms(), 2u);

    manager.removePlatformsFromDirs({dir.path("a") + "/", dir.path("missing")});
    EXPECT_EQ(manager.getNumPlatforms(), 2u);
    manager.removePlatformsFromDirs({dir.path("a")});
    EXPECT_THAT(filesOf(manager), ElementsAre(below));
    const std::unique_ptr<HostFwdIter<HZEPPlatform*>> iter(manager.createPlatformIter());
    EXPECT_EQ(iter->next()->getPlatformFile(), below);
    EXPECT_FALSE(iter->hasNext());
    Platforms partial = {nullptr};
    manager.getDSAPlatforms(partial);
    EXPECT_THAT(partial, ElementsAre());
}

// In a process of their own, where nobody has asked for the global manager yet.
TEST(GlobalManagerDeathTest, ScansTheDefaultDirectoriesOnlyWhenAskedFirst) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const TempDir root;
    writePlatform(root, "platforms/p", "p");
    HostEnv::setHostAppRootList({root.path("none"), root.path()});
    Texts dirs;
    HZEPPlatformMgr::getDefaultZepPlatformDirs(dirs);
    ASSERT_EQ(dirs.front(), root.path("platforms"));
    EXPECT_EXIT(std::exit(HZEPPlatformMgr::getGlobal()->getPlatform("p") ? 0 : 1), testing::ExitedWithCode(0), "");
    EXPECT_EXIT(
        {
            HZEPPlatformMgr::getGlobalNoInit();
            std::exit(HZEPPlatformMgr::getGlobal()->getNumPlatforms() == 0 ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
}

} // namespace
