// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HZEPHpfmUtl.h"

#include "FaultSweep.h"
#include "HostErrors.h"
#include "HpfmDocument.h"
#include "TempDir.h"
#include "WELHardwarePlatformLMX.h"
#include "XmlMetadataSupport.h"
#include "ZipBuilder.h"

#include <gmock/gmock.h>

#include <filesystem>

using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

namespace {

const std::string kPreferredOnly = edited(kHpfm, "qd:auto=\"true\"", "qd:auto=\"preferred\"");

WELHardwarePlatform::BusInterface busWith(const std::vector<const wchar_t*>& autos) {
    WELHardwarePlatform::BusInterface bus;
    for (const wchar_t* text : autos) {
        auto& segment = bus.AppendAddressSegment();
        if (text)
            segment.SetAuto(text);
    }
    return bus;
}

std::vector<std::wstring> autosOf(const WELHardwarePlatform::BusInterface& bus) {
    std::vector<std::wstring> autos;
    for (std::size_t i = 0; i < bus.SizeAddressSegment(); ++i)
        autos.push_back(bus.GetAddressSegment(i).IssetAuto() ? bus.GetAddressSegment(i).GetAuto() : L"-");
    return autos;
}

} // namespace

TEST(HZEPHpfmUtl, MarksOnceSomeArePreferred) {
    const struct {
        std::vector<const wchar_t*> before;
        bool mixed;
        std::vector<std::wstring> after;
    } rows[] = {
        {{L"false", L"true", L"preferred"}, true, {L"false", L"preferred", L"preferred"}},
        {{L"preferred", L"yes", L"", nullptr}, true, {L"preferred", L"preferred", L"preferred", L"-"}},
        {{L"preferred", L"FALSE"}, true, {L"preferred", L"preferred"}},
        {{L"preferred", L"false", nullptr}, false, {L"preferred", L"false", L"-"}},
        // Marking by itself asks nothing.
        {{L"true", L"true"}, false, {L"preferred", L"preferred"}},
        {{L"false"}, false, {L"false"}},
        {{}, false, {}},
    };
    for (const auto& row : rows) {
        auto bus = busWith(row.before);
        const auto before = autosOf(bus);
        EXPECT_EQ(HZEPHpfmUtl::areSomeButNotAllAddressSegmentsPreferred(bus), row.mixed);
        EXPECT_EQ(autosOf(bus), before);
        EXPECT_EQ(HZEPHpfmUtl::markAllTrueAddressSegmentsPreferred(bus), row.mixed);
        EXPECT_EQ(autosOf(bus), row.after);
    }
}

TEST(HZEPHpfmUtl, RewritesTheFileWhenItMust) {
    const std::string second = "<qd:busInterface qd:name=\"irq\"";
    const std::string twoSubsystems = edited(kHpfm, second, second + " qd:componentRef=\"hbm_memory_subsystem\"");
    const struct {
        const char* what;
        std::string before;
        std::string after;
        std::vector<std::string> messages;
    } rows[] = {
        {"mixed", kHpfm, kPreferredOnly, {}},
        {"mixed, in a layout of its own", edited(kHpfm, "\n    <qd:platformInfo>", "<qd:platformInfo>"), kPreferredOnly, {}},
        {"already alike", kPreferredOnly + "<!-- kept -->", kPreferredOnly + "<!-- kept -->", {}},
        {"none preferred",
         edited(kHpfm, "qd:auto=\"preferred\"", "qd:auto=\"true\" "),
         edited(kHpfm, "qd:auto=\"preferred\"", "qd:auto=\"true\" "),
         {}},
        {"another component",
         edited(kHpfm, "\"hbm_memory_subsystem\"", "\"HBM_memory_subsystem\""),
         edited(kHpfm, "\"hbm_memory_subsystem\"", "\"HBM_memory_subsystem\""),
         {}},
        {"two subsystems", twoSubsystems, twoSubsystems, {"error|@74-261@"}},
    };
    TempDir dir;
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        MessageLog sent;
        HZEPHpfmUtl::ChangeAndWriteHpfmIfNeeded(dir.write("a.hpfm", row.before));
        EXPECT_EQ(dir.read("a.hpfm"), row.after);
        EXPECT_EQ(sent.lines, row.messages);
    }
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(dir.path()), {}), 1) << "something was left beside the file";
}

TEST(HZEPHpfmUtl, WhatCantBeReadStays) {
    TempDir dir;
    MessageLog sent;
    HZEPHpfmUtl::ChangeAndWriteHpfmIfNeeded(dir.path("absent.hpfm"));
    EXPECT_THAT(sent.lines, ElementsAre("error|@74-12@|File: " + dir.path("absent.hpfm") + " doesn't exist.\n"));
    EXPECT_FALSE(std::filesystem::exists(dir.path("absent.hpfm")));

    const std::string bad = edited(kHpfm, "qd:index=\"1\"", "qd:index=\"one\"");
    const std::string path = dir.write("bad.hpfm", bad);
    HZEPHpfmUtl::ChangeAndWriteHpfmIfNeeded(path);
    EXPECT_THAT(sent.lines.back(), StartsWith("error|@74-260@%s%s%s|" + path + "|" + std::to_string(lineOf(bad, "\"one\"")) + "|"));
    EXPECT_EQ(dir.read("bad.hpfm"), bad);
}

TEST(HZEPHpfmUtl, WhatCantBeWrittenStays) {
    TempDir dir;
    // No room is left for the name of a file beside it.
    const std::string name = std::string(250, 'a') + ".hpfm";
    EXPECT_THROW(HZEPHpfmUtl::ChangeAndWriteHpfmIfNeeded(dir.write(name, kHpfm)), HostXMLException);
    EXPECT_EQ(dir.read(name), kHpfm);
}

TEST(HZEPHpfmUtl, EveryFaultLeavesTheOldOrTheNewFile) {
    TempDir dir;
    const std::string path = dir.path("a.hpfm");
    const FaultSweep sweep(
        path,
        [&] {
            const MessageLog sent;
            HZEPHpfmUtl::ChangeAndWriteHpfmIfNeeded(path);
            if (!sent.lines.empty())
                throw std::runtime_error(sent.lines[0]);
        },
        [&] {
            WELHardwarePlatform::Repository repository;
            EXPECT_EQ(repository.Unmarshal(path.c_str(), nullptr), lmx60::error_none);
        });
    for (const auto action : {FaultPlan::Fail, FaultPlan::KillNow}) {
        dir.write("a.hpfm", kHpfm);
        const FaultSweep::Count count = sweep.run(FaultPlan::All, action);
        EXPECT_EQ(dir.read("a.hpfm"), kPreferredOnly);
        RecordProperty(action == FaultPlan::Fail ? "failed_calls" : "killed_at_calls", static_cast<int>(count.struck));
        EXPECT_GE(count.old, 5u);
        EXPECT_GT(count.struck, count.old);
    }
}

TEST(HZEPHpfmUtl, ExtractionMakesBanksAlikeOnRequest) {
    TempDir dir;
    HPLPlatform platform;
    platform.setPlatformFile(ZipBuilder(dir.path("a.kar")).add("egret.hpfm", kHpfm).add("hw_emu/egret.hpfm", kPreferredOnly).write());
    EXPECT_FALSE(platform.extractHPFMFile(dir.path("none.hpfm")));
    platform.addFile("HPFM", "egret.hpfm");

    ASSERT_TRUE(platform.extractHPFMFile(dir.path("plain.hpfm")));
    EXPECT_EQ(dir.read("plain.hpfm"), kHpfm);
    platform.setNormalizeMemoryBanks(true);
    ASSERT_TRUE(platform.extractHPFMFile(dir.path("out/alike.hpfm")));
    EXPECT_EQ(dir.read("out/alike.hpfm"), kPreferredOnly);
    ASSERT_TRUE(platform.extractHPFMFile(dir.path("alike.xml")));
    EXPECT_EQ(dir.read("alike.xml"), kHpfm);
    ASSERT_TRUE(platform.extractFile("HPFM", dir.path("file.hpfm")));
    EXPECT_EQ(dir.read("file.hpfm"), kHpfm);

    platform.setNormalizeMemoryBanks(false);
    platform.setIsChildHardwareEmuPlatform(true);
    ASSERT_TRUE(platform.extractHPFMFile(dir.path("child.hpfm")));
    EXPECT_EQ(dir.read("child.hpfm"), kPreferredOnly);
}
