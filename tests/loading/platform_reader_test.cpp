// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include <gtest/gtest.h>

#include "LoadingFixture.h"

#include "HZEPPlatform.h"
#include "HZEPPlatformXMLReader.h"
#include "HZEPReconfigurablePartition.h"
#include "HostErrors.h"

#include <gmock/gmock.h>

#include <filesystem>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

void readPlatform(const TempDir& dir, const std::string& text, HZEPPlatform& platform) {
    HZEPPlatformXMLReader reader(dir.write("p.zpfm", text), &platform);
    ASSERT_TRUE(reader.parseFile()) << reader.getErrorMsg();
    EXPECT_EQ(reader.getErrorMsg(), "");
}

TEST(PlatformReader, ReadsIdentityAndResolvesPaths) {
    TempDir dir;
    std::string text = platformFile(hardwareElement("a.dsa", ".") + emulationElement("e.kar", "../x"));
    for (const char* more : {"", " zep:schemaVersion=\"1.0\""}) {
        std::string file = text;
        file.insert(file.find(" zep:version"), more);
        HZEPPlatform platform;
        readPlatform(dir, file, platform);
        EXPECT_EQ(platform.getVendor(), "orrin");
        EXPECT_EQ(platform.getLibrary(), "boards");
        EXPECT_EQ(platform.getName(), "heron");
        EXPECT_EQ(platform.getVersion(), "1.50");
        EXPECT_EQ(platform.getDescription(), "A heron");
        EXPECT_EQ(platform.getPlatformFile(), dir.path("p.zpfm"));
        EXPECT_EQ(platform.getHardwarePlatformFile(), dir.path("a.dsa"));
        EXPECT_EQ(platform.getHardwareEmuPlatformFile(), std::filesystem::path(dir.path()).parent_path().string() + "/x/e.kar");
        EXPECT_EQ(platform.getSoftwarePlatformFile(), dir.path() + "/sw/p.spfm");
        EXPECT_FALSE(platform.hasReconfigurablePartitions());
    }

    // The software file stays as composed; an absolute path is taken as one more part.
    text.replace(text.find("\"sw\""), 4, "\".\"");
    HZEPPlatform platform;
    readPlatform(dir, text, platform);
    EXPECT_EQ(platform.getSoftwarePlatformFile(), dir.path() + "/./p.spfm");
    HZEPPlatform absolute;
    readPlatform(dir, platformFile(hardwareElement("a.dsa", "/etc")), absolute);
    EXPECT_EQ(absolute.getHardwarePlatformFile(), dir.path("etc/a.dsa"));
}

TEST(PlatformReader, NameWithoutDirectoryResolvesFromTheRoot) {
    TempDir dir;
    dir.write("p.zpfm", platformFile(hardwareElement("a.dsa", "no-such-directory")));
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(dir.path());
    HZEPPlatform platform;
    EXPECT_TRUE(HZEPPlatformXMLReader("p.zpfm", &platform).parseFile());
    std::filesystem::current_path(before);
    EXPECT_EQ(platform.getHardwarePlatformFile(), "/no-such-directory/a.dsa");
    EXPECT_EQ(platform.getSoftwarePlatformFile(), "/sw/p.spfm");
}

TEST(PlatformReader, EmulationAloneIsTheHardwareToo) {
    TempDir dir;
    HZEPPlatform platform;
    readPlatform(dir, platformFile(emulationElement("e.kar")), platform);
    EXPECT_EQ(platform.getHardwareEmuPlatformFile(), dir.path("hw/e.kar"));
    EXPECT_EQ(platform.getHardwarePlatformFile(), dir.path("hw/e.kar"));

    HZEPPlatform empty;
    readPlatform(dir, platformFile(""), empty);
    EXPECT_EQ(empty.getHardwarePlatformFile(), "");
}

TEST(PlatformReader, ReadsPartitionsInOrder) {
    TempDir dir;
    HZEPPlatform platform;
    readPlatform(dir,
                 platformFile(partitionElement("3", hardwareElement("a.kar") + emulationElement("e.kar")) +
                                  partitionElement("4294967299", emulationElement("f.kar")) + partitionElement(" -1 ", ""),
                              " zep:defaultRP=\"+7\""),
                 platform);
    EXPECT_EQ(platform.getDefaultRPId(), 7U);
    EXPECT_EQ(platform.getHardwarePlatformFile(), "");
    std::vector<HZEPReconfigurablePartition*> partitions;
    platform.getReconfigurablePartitions(partitions);
    std::vector<std::string> seen;
    for (const HZEPReconfigurablePartition* partition : partitions)
        seen.push_back(std::to_string(partition->getID()) + " " + partition->getHardwarePlatformFile() + " " +
                       partition->getHardwareEmuPlatformFile());
    EXPECT_THAT(seen, ElementsAre("3 " + dir.path("hw/a.kar") + " " + dir.path("hw/e.kar"), "3  " + dir.path("hw/f.kar"), "4294967295  "));

    HZEPPlatform undecided;
    readPlatform(dir, platformFile(partitionElement("3", "")), undecided);
    EXPECT_EQ(undecided.getDefaultRPId(), 0U);
}

TEST(PlatformReader, MissingFileIsRefusedAtOnce) {
    TempDir dir;
    HZEPPlatform platform;
    for (const std::string& path : {std::string(), dir.path("none.zpfm")}) {
        try {
            HZEPPlatformXMLReader reader(path, &platform);
            FAIL();
        } catch (const HostFileNotFoundException& e) {
            EXPECT_EQ(e.what(), path);
        }
    }
}

/// Expects the whole report of a failed read, and nothing read.
void expectFailure(const std::string& path, const std::string& line, HZEPPlatform& platform) {
    SCOPED_TRACE(path);
    MessageLog log;
    HZEPPlatformXMLReader reader(path, &platform);
    testing::internal::CaptureStdout();
    const bool parsed = reader.parseFile();
    const std::string printed = testing::internal::GetCapturedStdout();
    EXPECT_FALSE(parsed);
    EXPECT_THAT(printed, StartsWith("Error parsing platform file: " + path + "\nLine number:" + line + ". "));
    EXPECT_EQ(std::count(printed.begin(), printed.end(), '\n'), 2);
    EXPECT_EQ(reader.getErrorMsg(), printed);
    EXPECT_THAT(log.lines, ElementsAre("error|@74-9@%s|" + path + "|" + line));
    EXPECT_EQ(platform.getName(), "");
    EXPECT_EQ(platform.getPlatformFile(), "");
    EXPECT_FALSE(platform.hasReconfigurablePartitions());
}

TEST(PlatformReader, InvalidFilesFailWithTheirLine) {
    TempDir dir;
    const std::string good = platformFile(hardwareElement("a.kar"));
    const struct {
        const char* name;
        std::string from;
        std::string to;
        const char* line;
    } rows[] = {
        {"version", "\"1.50\"", "\"abc\"", "2"},
        {"root", "zep:platform", "zep:plat", "2"},
        {"well-formed", "</zep:softwarePlatforms>", "", "8"},
    };
    for (const auto& row : rows) {
        std::string text = good;
        for (std::size_t at = text.find(row.from); at != std::string::npos; at = text.find(row.from, at + row.to.size()))
            text.replace(at, row.from.size(), row.to);
        HZEPPlatform platform;
        expectFailure(dir.write(std::string(row.name) + ".zpfm", text), row.line, platform);
    }
}

TEST(PlatformReader, WhatIsNoFileFailsWithoutALine) {
    TempDir dir;
    HZEPPlatform platform;

    // A socket exists and can't be opened, whoever asks.
    const std::string path = dir.path("s.zpfm");
    const int descriptor = ::socket(AF_UNIX, SOCK_STREAM, 0);
    ASSERT_GE(descriptor, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    ASSERT_LT(path.size(), sizeof address.sun_path);
    path.copy(address.sun_path, path.size());
    ASSERT_EQ(::bind(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    expectFailure(path, "0", platform);
    ::close(descriptor);

    std::filesystem::create_directory(dir.path("d.zpfm"));
    HZEPPlatformXMLReader directory(dir.path("d.zpfm"), &platform);
    MessageLog log;
    testing::internal::CaptureStdout();
    EXPECT_FALSE(directory.parseFile());
    EXPECT_NE(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(log.lines.size(), 1U);
}

} // namespace
