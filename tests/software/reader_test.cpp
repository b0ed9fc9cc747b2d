// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "Documents.h"
#include "HZEPBootImg.h"
#include "HZEPProcessorGroup.h"
#include "HZEPSoftwarePlatform.h"
#include "HZEPSoftwarePlatformXMLReader.h"
#include "HZEPSystemConfig.h"
#include "HostErrors.h"
#include "MessageLog.h"
#include "TempDir.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::ElementsAre;
using testing::StartsWith;

const std::string kFull = R"(<?xml version="1.0" encoding="UTF-8"?>
<q:platform xmlns:q="urn:tolvan:zep" q:vendor="orrin" q:library="boards" q:name="heron" q:version="2.0" q:schemaVersion="1.0">
<q:description>dropped</q:description>
<q:systemConfigurations q:defaultConfiguration="b">
<q:configuration q:name="a" q:displayName="System A" q:defaultProcessorGroup="r5" q:runtimes="ocl, cpp,,fast">
<q:description>Linux on four cores &#x2013; with QEMU</q:description>
<q:prebuilt q:data="prebuilt/a"/>
<q:bootImages q:default="sd">
<q:image q:name="sd" q:type="ram" q:bif="boot/linux.bif" q:imageData="boot/image" q:bootmode="sdcard" q:rootfs="boot/rootfs" q:mountPath="/mnt" q:readme="boot/readme.txt" q:qemuDevicetree="qemu/dtb" q:qemuBoot="qemu/boot" q:qemuArguments="qemu/args.txt" q:hwBootBin="boot/BOOT.BIN"/>
</q:bootImages>
<q:processorGroup q:name="a53" q:displayName="Cortex A53" q:cpuType="cortex-a53" q:architecture="64-bit" q:cpuInstance="a53_0,a53_1">
<q:os q:name="linux" q:displayName="Linux" q:hypervisorGuest="YES" q:includePaths="inc" q:libraryPaths="lib" q:libraryNames="m" q:ldscript="x.ld" q:sysRoot="root" q:bspConfig="c" q:bspLibraryPaths="bsp/lib" q:bspIncludePaths="bsp/inc" q:bspRepo="r" q:compilerOptions="-O2" q:linkerOptions="-s" q:osDependency="d" q:crossCompilerType="t" q:toolConfig="tc"/>
</q:processorGroup>
<q:processorGroup q:name="r5" q:displayName="" q:cpuType="cortex-r5">
<q:os q:name="standalone" q:displayName="Bare" q:hypervisorGuest="true"/>
</q:processorGroup>
</q:configuration>
<q:configuration q:name="b" q:displayName="System B">
<q:description/>
<q:processorGroup q:name="x" q:displayName="X" q:cpuType="y"><q:os q:name="z" q:displayName="Z"/></q:processorGroup>
</q:configuration>
</q:systemConfigurations>
</q:platform>
)";

TEST(SoftwareReader, FileToDocument) {
    TempDir dir;
    HZEPSoftwarePlatform platform;
    platform.setLinuxRootFileSystemPath("rootfs");
    HZEPSoftwarePlatformXMLReader reader(dir.write("p.spfm", kFull), &platform);
    ASSERT_TRUE(reader.parseFile()) << reader.getErrorMsg();
    EXPECT_EQ(reader.getErrorMsg(), "");
    EXPECT_EQ(documentOf(platform), laidOut(R"({"linuxRootFileSystemPath": "rootfs", "defaultConfig": "b",
        "systemConfigurations": [{"name": "a", "prettyName": "System A", "description": "Linux on four cores – with QEMU",
        "defaultProcessorGroup": "r5", "defaultBootImage": "sd", "prebuiltData": "prebuilt\/a", "qemu": "true",
        "processorGroups": [{"name": "a53", "prettyName": "Cortex A53", "cpuType": "cortex-a53", "cpuInstance": "a53_0,a53_1",
        "osPrettyName": "Linux", "osName": "linux", "osIncludePaths": "inc", "osLibraryPaths": "lib", "osCompilerOptions": "-O2",
        "osLinkerOptions": "-s", "osHypervisorGuest": "true", "osBSPIncludePaths": "bsp\/inc", "osBSPLibraryPaths": "bsp\/lib",
        "osSysRoot": "root"}, {"name": "r5", "prettyName": "r5", "cpuType": "cortex-r5", "osPrettyName": "Bare", "osName": "standalone",
        "osHypervisorGuest": "false"}], "bootImages": [{"name": "sd", "type": "ram", "bif": "boot\/linux.bif", "data": "boot\/image",
        "rootFileSystem": "boot\/rootfs", "bootMode": "sdcard", "mountPath": "\/mnt", "readMe": "boot\/readme.txt",
        "qemuArgs": "qemu\/args.txt", "qemuBoot": "qemu\/boot", "qemuDevTree": "qemu\/dtb", "hwBootBin": "boot\/BOOT.BIN"}],
        "runtimes": ["ocl", " cpp", "fast"]}, {"name": "b", "prettyName": "System B", "defaultProcessorGroup": "x", "qemu": "false",
        "processorGroups": [{"name": "x", "prettyName": "X", "cpuType": "y", "osPrettyName": "Z", "osName": "z",
        "osHypervisorGuest": "false"}]}]})"));
    // What the document leaves out.
    HZEPSystemConfig* a = platform.getSystemConfigByName("a");
    EXPECT_EQ(a->getProcGrpByName("a53")->getArch(), "64-bit");
    std::vector<std::string> names;
    a->getProcessorGroups(names);
    EXPECT_THAT(names, ElementsAre("a53", "r5"));
    std::vector<std::string> runtimes;
    a->getRuntimes(runtimes);
    EXPECT_THAT(runtimes, ElementsAre("ocl", " cpp", "", "fast"));
}

TEST(SoftwareReader, AnyQemuAttributeOfTheImageCounts) {
    TempDir dir;
    for (const char* attribute : {"qemuBoot", "qemuDevicetree", "qemuArguments", "hwBootBin"}) {
        std::string text = kFull;
        const std::size_t at = text.find(" q:type=\"ram\"");
        text.replace(at, text.find("/>", at) - at, " q:bif=\"b\" q:readme=\"r\" q:" + std::string(attribute) + "=\"\"");
        HZEPSoftwarePlatform platform;
        ASSERT_TRUE(HZEPSoftwarePlatformXMLReader(dir.write("p.spfm", text), &platform).parseFile());
        EXPECT_EQ(platform.getSystemConfigByName("a")->isQemuSupported(), std::string(attribute) != "hwBootBin") << attribute;
    }
}

TEST(SoftwareReader, InvalidFilesAreReportedWithTheirLine) {
    TempDir dir;
    const struct {
        const char* name;
        std::string from;
        std::string to;
        std::string line;
    } rows[] = {
        {"root.spfm", "q:platform", "q:other", "2"},
        {"cut.spfm", "</q:systemConfigurations>", "", "23"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        std::string text = kFull;
        for (std::size_t at = text.find(row.from); at != std::string::npos; at = text.find(row.from, at + row.to.size()))
            text.replace(at, row.from.size(), row.to);
        const std::string path = dir.write(row.name, text);
        HZEPSoftwarePlatform platform;
        HZEPSoftwarePlatformXMLReader reader(path, &platform);

        const MessageLog log;
        testing::internal::CaptureStdout();
        const bool parsed = reader.parseFile();
        const std::string printed = testing::internal::GetCapturedStdout();
        EXPECT_FALSE(parsed);
        const std::string head = "Error parsing software platform file: " + path + "\nLine number:" + row.line + ". ";
        EXPECT_THAT(printed, StartsWith(head));
        EXPECT_EQ(reader.getErrorMsg() + "\n", printed);
        EXPECT_THAT(log.lines, ElementsAre("error|@74-51@%s%d|" + reader.getErrorMsg().substr(head.size()) + "|" + row.line));
        EXPECT_TRUE(platform.getSystemConfig().empty());
    }
}

TEST(SoftwareReader, MissingFile) {
    TempDir dir;
    HZEPSoftwarePlatform platform;
    EXPECT_THROW(HZEPSoftwarePlatformXMLReader("", &platform), HostFileNotFoundException);
    try {
        HZEPSoftwarePlatformXMLReader reader(dir.path("none.spfm"), &platform);
        FAIL();
    } catch (const HostFileNotFoundException& e) {
        EXPECT_EQ(e.what(), dir.path("none.spfm"));
    }
    // Without a platform to fill, a file is only checked.
    EXPECT_TRUE(HZEPSoftwarePlatformXMLReader(dir.write("p.spfm", kFull), nullptr).parseFile());
    HZEPSoftwarePlatformXMLReader check(dir.path("none.spfm"), nullptr);
    const MessageLog log;
    testing::internal::CaptureStdout();
    EXPECT_FALSE(check.parseFile());
    EXPECT_THAT(testing::internal::GetCapturedStdout(), testing::HasSubstr("\nLine number:0. "));
}

} // namespace
