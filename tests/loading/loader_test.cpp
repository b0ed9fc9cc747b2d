// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include <gtest/gtest.h>

#include "AllocationFault.h"
#include "LoadingFixture.h"

#include "HZEPHardwarePlatform.h"
#include "HZEPPlatform.h"
#include "HZEPReconfigurablePartition.h"
#include "HZEPSoftwarePlatform.h"
#include "HostErrors.h"
#include "PlatformLoader.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <functional>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using zep_platform::PlatformLoader;
using zep_platform::PlatformParseException;

std::string nameOf(const HZEPHardwarePlatform* hardware) {
    return hardware ? hardware->getName() : "none";
}

std::shared_ptr<HZEPPlatform> loadQuietly(const std::string& path,
                                          PlatformLoader::HwMetadataMode mode = PlatformLoader::PreferAlternateJson) {
    MessageLog log;
    auto platform = PlatformLoader(path, mode).load();
    EXPECT_THAT(log.lines, IsEmpty());
    return platform;
}

TEST(Loader, LoadsAPlatformFileWithAllItsMembers) {
    TempDir dir;
    writeArchive(dir, "hw/a.kar", "hardware");
    writeArchive(dir, "hw/e.kar", "emulation");
    dir.write("sw/p.spfm", kSoftwareFile);
    const std::string path = dir.write("p.zpfm", platformFile(hardwareElement("a.kar") + emulationElement("e.kar")));

    std::shared_ptr<HZEPPlatform> platform;
    {
        PlatformLoader loader(path, PlatformLoader::PreferAlternateJson);
        platform = loader.load();
        std::filesystem::remove_all(dir.path("hw"));
        EXPECT_EQ(loader.load(), platform);
    }
    ASSERT_TRUE(platform);
    EXPECT_TRUE(platform->isZpfm());
    EXPECT_TRUE(platform->isComplete());
    EXPECT_EQ(nameOf(platform->getHardwarePlatform()), "hardware");
    EXPECT_EQ(nameOf(platform->getHardwareEmulationPlatform()), "emulation");
    ASSERT_TRUE(platform->getSoftwarePlatform());
    EXPECT_EQ(platform->getSoftwarePlatform()->getDefaultConfigName(), "linux");
}

TEST(Loader, LoneFilesArePartial) {
    TempDir dir;
    dir.write("x/readme", "");
    const std::string archive = ZipBuilder(dir.path("x/../a.dsa")).add("dsa.json", hardwareJson("lone")).write();
    auto hardware = loadQuietly(archive);
    ASSERT_TRUE(hardware);
    EXPECT_TRUE(hardware->isPartial());
    EXPECT_FALSE(hardware->isZpfm());
    EXPECT_EQ(nameOf(hardware->getHardwarePlatform()), "lone");
    EXPECT_EQ(hardware->getPlatformFile(), dir.path("a.dsa"));
    EXPECT_EQ(hardware->getDeviceName(), "orrin_b1_lone_1_2");
    EXPECT_EQ(hardware->getSoftwarePlatform(), nullptr);

    auto software = loadQuietly(dir.write("p.spfm", kSoftwareFile));
    ASSERT_TRUE(software);
    EXPECT_TRUE(software->isPartial());
    EXPECT_FALSE(software->isZpfm());
    EXPECT_EQ(software->getPlatformFile(), "");
    EXPECT_EQ(software->getHardwarePlatform(), nullptr);
    EXPECT_NE(software->getSoftwarePlatform(), nullptr);
}

TEST(Loader, FindsEmulationInTheHardwareArchive) {
    TempDir dir;
    const std::string path =
        ZipBuilder(dir.path("a.kar")).add("kar.json", hardwareJson("hardware")).add("hw_emu/kar.json", hardwareJson("merged")).write();
    auto platform = loadQuietly(path);
    ASSERT_TRUE(platform);
    ASSERT_EQ(nameOf(platform->getHardwareEmulationPlatform()), "merged");
    EXPECT_TRUE(platform->getHardwareEmulationPlatform()->isChildHardwareEmuPlatform());
    EXPECT_TRUE(platform->supportsHWEmulation());
    // It has no file of its own, and the document leaves it out.
    EXPECT_EQ(renderJson(*platform).find("hwEmuPlatform"), std::string::npos);
}

TEST(Loader, ModeChoosesTheMetadata) {
    TempDir dir;
    const std::string path =
        ZipBuilder(dir.path("a.kar")).add("kar.json", hardwareJson("primary")).add("alt_kar.json", hardwareJson("alternate")).write();
    EXPECT_EQ(nameOf(loadQuietly(path)->getHardwarePlatform()), "alternate");
    EXPECT_EQ(nameOf(loadQuietly(path, PlatformLoader::PrimaryJsonOnly)->getHardwarePlatform()), "primary");
    MessageLog log;
    EXPECT_EQ(PlatformLoader(path, PlatformLoader::XmlOnly).load(), nullptr);
    EXPECT_THAT(log.lines, ElementsAre(testing::StartsWith("critical warning|@74-65@%s%s%s|kar.xml|" + path + "|"),
                                       "critical warning|@74-60@%s|Failed to parse Hardware Platform metadata file"));
}

TEST(Loader, XmlMetadataIsReadWithoutJson) {
    const std::string xml = R"(<Root VersionMajor="1" VersionMinor="15"><GenAppInfo Name="" Version="" CL="0"/>
<DSA Vendor="orrin" BoardId="b1" Name="from XML" VersionMajor="1" VersionMinor="2" Description=""><Build/>
<Board Name="" Vendor="" Part=""><Images><Img Type="HDPI" File=""/></Images></Board>
<Devices><Device Name="fpga0" Type=""><Core Name="" Type="" ComputeUnits="1"/></Device></Devices><Files/></DSA></Root>)";
    TempDir dir;
    const std::string both = ZipBuilder(dir.path("a.kar")).add("kar.json", hardwareJson("from JSON")).add("kar.xml", xml).write();
    const std::string onlyXml = ZipBuilder(dir.path("b.dsa")).add("dsa.xml", xml).write();
    EXPECT_EQ(nameOf(loadQuietly(both)->getHardwarePlatform()), "from JSON");
    EXPECT_EQ(nameOf(loadQuietly(both, PlatformLoader::XmlOnly)->getHardwarePlatform()), "from XML");
    EXPECT_EQ(nameOf(loadQuietly(onlyXml)->getHardwarePlatform()), "from XML");
    EXPECT_EQ(loadQuietly(onlyXml)->getPlatformFile(), onlyXml);

    const std::string broken = ZipBuilder(dir.path("c.dsa")).add("dsa.xml", xml.substr(0, 100)).write();
    MessageLog log;
    EXPECT_EQ(PlatformLoader(broken).load(), nullptr);
    EXPECT_THAT(log.lines, ElementsAre(testing::StartsWith("critical warning|@74-62@%s%s%d|" + broken + "/dsa.xml|"),
                                       "critical warning|@74-60@%s|Failed to parse Hardware Platform metadata file"));
}

TEST(Loader, LoadsPartitions) {
    TempDir dir;
    writeArchive(dir, "hw/a.kar", "left");
    writeArchive(dir, "hw/b.kar", "right");
    writeArchive(dir, "hw/e.kar", "right emulation");
    dir.write("sw/p.spfm", kSoftwareFile);
    auto platform =
        loadQuietly(dir.write("p.zpfm", platformFile(partitionElement("0", hardwareElement("a.kar")) +
                                                         partitionElement("1", hardwareElement("b.kar") + emulationElement("e.kar")),
                                                     " zep:defaultRP=\"1\"")));
    ASSERT_TRUE(platform);
    EXPECT_EQ(nameOf(platform->getRPHardwarePlatform(0)), "left");
    EXPECT_EQ(nameOf(platform->getRPHardwareEmulationPlatform(0)), "none");
    EXPECT_EQ(nameOf(platform->getHardwarePlatform()), "right");
    EXPECT_EQ(nameOf(platform->getHardwareEmulationPlatform()), "right emulation");
    EXPECT_TRUE(platform->supportsHWEmulation());
    EXPECT_FALSE(platform->hasHWEmulationPlatform());
    EXPECT_NE(platform->getSoftwarePlatform(), nullptr);
}

/// One way to fail: makes the files and gives the path to load.
struct BadLoad {
    const char* name;
    std::function<std::string(const TempDir&)> make;
    std::function<std::string(const TempDir&)> text;
};

std::function<std::string(const TempDir&)> always(const std::string& text) {
    return [text](const TempDir&) { return text; };
}

std::function<std::string(const TempDir&)> platform(const std::string& hardware) {
    return [hardware](const TempDir& dir) {
        writeArchive(dir, "hw/a.kar", "hardware");
        ZipBuilder(dir.path("hw/bare.kar")).add("readme", "x").write();
        std::filesystem::create_directories(dir.path("hw/dir.kar"));
        dir.write("hw/a.KAR", "x");
        return dir.write("p.zpfm", platformFile(hardware));
    };
}

TEST(Loader, FailuresAreReportedByText) {
    const std::string metadata = "Failed to parse Hardware Platform metadata file";
    const std::string emulation = "Failed to parse Hardware Emulation Platform metadata file";
    const BadLoad rows[] = {
        {"empty path", always(""), always("hardware platform file '' does not exist")},
        {"no hardware named", platform(""), always("hardware platform file '' does not exist")},
        {"missing hardware", platform(hardwareElement("none.kar")),
         [](const TempDir& dir) { return "hardware platform file '" + dir.path("hw/none.kar") + "' does not exist"; }},
        {"other extension", platform(hardwareElement("a.KAR")), always("incorrect file extension - only DSA and KAR files are supported")},
        {"no metadata", platform(hardwareElement("bare.kar")), always(metadata)},
        {"directory", platform(hardwareElement("dir.kar")), always(metadata)},
        {"missing in a partition", platform(partitionElement("0", hardwareElement("none.kar"))), always(metadata)},
        {"partition with emulation alone", platform(partitionElement("0", emulationElement("a.kar"))), always(metadata)},
        {"emulation in a partition", platform(partitionElement("0", hardwareElement("a.kar") + emulationElement("bare.kar"))),
         always(emulation)},
        {"missing software", platform(hardwareElement("a.kar")), always("the software platform file does not exist")},
        {"broken software",
         [](const TempDir& dir) {
             dir.write("sw/p.spfm", "<zep:platform");
             return platform(hardwareElement("a.kar"))(dir);
         },
         always("software platform file does not exist")},
        {"missing archive", [](const TempDir& dir) { return dir.path("b.dsa"); },
         [](const TempDir& dir) { return "hardware platform file '" + dir.path("b.dsa") + "' does not exist"; }},
        {"missing software file", [](const TempDir& dir) { return dir.path("b.spfm"); },
         always("the software platform file does not exist")},
    };
    for (const BadLoad& row : rows) {
        SCOPED_TRACE(row.name);
        TempDir dir;
        PlatformLoader loader(row.make(dir));
        MessageLog log;
        testing::internal::CaptureStdout();
        EXPECT_EQ(loader.load(), nullptr);
        testing::internal::GetCapturedStdout();
        ASSERT_FALSE(log.lines.empty());
        EXPECT_EQ(log.lines.back(), "critical warning|@74-60@%s|" + row.text(dir));
        // A failed loader has nothing more to give.
        EXPECT_EQ(loader.load(), nullptr);
    }
}

TEST(Loader, LoadsNothingLessForLackOfMemory) {
    TempDir dir;
    const std::string path =
        ZipBuilder(dir.path("a.kar")).add("kar.json", hardwareJson("hardware")).add("hw_emu/kar.json", hardwareJson("merged")).write();
    loadQuietly(path); // what is made once in a process is there
    EXPECT_GT(failEachAllocation([&] {
                  const auto platform = PlatformLoader(path).load();
                  EXPECT_TRUE(platform && platform->getHardwareEmulationPlatform());
              }),
              100U);
}

TEST(Loader, UnreadableEmulationIsNoFailureWithoutPartitions) {
    TempDir dir;
    writeArchive(dir, "hw/a.kar", "hardware");
    dir.write("hw/e.kar", "no archive");
    dir.write("sw/p.spfm", kSoftwareFile);
    auto platform = loadQuietly(dir.write("p.zpfm", platformFile(hardwareElement("a.kar") + emulationElement("e.kar"))));
    ASSERT_TRUE(platform);
    EXPECT_EQ(platform->getHardwareEmulationPlatform(), nullptr);
}

TEST(Loader, ConstructorReadsPlatformFilesOnly) {
    TempDir dir;
    for (const char* name : {"p.zpfm", "p.KAR", "p.Spfm", "p"}) {
        const std::string path = dir.write(name, "no XML");
        MessageLog log;
        testing::internal::CaptureStdout();
        try {
            PlatformLoader loader(path);
            ADD_FAILURE() << path;
        } catch (const PlatformParseException& e) {
            EXPECT_STREQ(e.what(), "failed to parse the ZPFM file");
        }
        testing::internal::GetCapturedStdout();
        EXPECT_THAT(log.lines, ElementsAre(testing::StartsWith("error|@74-9@%s|" + path)));
    }
    EXPECT_THROW(PlatformLoader(dir.path("none.zpfm")), HostFileNotFoundException);
}

TEST(Loader, StepsCanBeCalledByHandAndAgain) {
    TempDir dir;
    const std::string path = dir.write("p.zpfm", platformFile(hardwareElement("a.kar")));
    PlatformLoader loader(path);
    EXPECT_THROW(loader.attachHardwarePlatform(), PlatformParseException);
    EXPECT_THROW(loader.attachSoftwarePlatform(), PlatformParseException);
    loader.attachHardwareEmulationPlatform();

    writeArchive(dir, "hw/a.kar", "hardware");
    dir.write("sw/p.spfm", kSoftwareFile);
    loader.attachHardwarePlatform();
    loader.attachSoftwarePlatform();
    // What is attached is not read again.
    dir.write("hw/a.kar", "no archive");
    dir.write("sw/p.spfm", "no XML");
    loader.attachHardwarePlatform();
    auto platform = loader.load();
    ASSERT_TRUE(platform);
    EXPECT_EQ(nameOf(platform->getHardwarePlatform()), "hardware");
    std::vector<HZEPSoftwarePlatform*> software;
    platform->getSoftwarePlatforms(software);
    EXPECT_EQ(software.size(), 1U);
}

} // namespace
