// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include <gtest/gtest.h>

#include "Outcome.h"
#include "ZEPPlatformLMX.h"

namespace {

using namespace lmx60;

std::string platform(const std::string& hardware) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<zep:platform xmlns:zep=\"urn:tolvan:zep\" zep:vendor=\"v&#10;&#9;\" zep:library=\"l\" zep:name=\"n\" zep:version=\"1.10\" "
           "zep:schemaVersion=\"1\">\n"
           "  <zep:description> d </zep:description>\n" +
           hardware +
           "  <zep:softwarePlatforms>\n"
           "    <zep:softwarePlatform zep:path=\"sw\" zep:name=\"a.spfm\"/>\n"
           "  </zep:softwarePlatforms>\n"
           "</zep:platform>\n";
}

const std::string group = platform("  <zep:hardwarePlatforms>\n"
                                   "    <zep:hardwarePlatform zep:path=\"hw\" zep:name=\"a.kar\"/>\n"
                                   "    <zep:hwEmuPlatform zep:path=\"emu\" zep:name=\"e.kar\"/>\n"
                                   "  </zep:hardwarePlatforms>\n");
const std::string emulation = platform("  <zep:hardwarePlatforms>\n"
                                       "    <zep:hwEmuPlatform zep:path=\"emu\" zep:name=\"e.kar\"/>\n"
                                       "  </zep:hardwarePlatforms>\n");
const std::string partitions = platform("  <zep:hardwarePlatforms zep:defaultRP=\"1\">\n"
                                        "    <zep:reconfigurablePartition zep:id=\"0\">\n"
                                        "      <zep:hardwarePlatform zep:path=\"\" zep:name=\"a.kar\"/>\n"
                                        "    </zep:reconfigurablePartition>\n"
                                        "    <zep:reconfigurablePartition zep:id=\"1\">\n"
                                        "      <zep:hwEmuPlatform zep:path=\"\" zep:name=\"a.kar\"/>\n"
                                        "    </zep:reconfigurablePartition>\n"
                                        "  </zep:hardwarePlatforms>\n");
const std::string none = platform("  <zep:hardwarePlatforms/>\n");
const std::string emptyPartition = platform("  <zep:hardwarePlatforms>\n"
                                            "    <zep:reconfigurablePartition zep:id=\"1\"/>\n"
                                            "  </zep:hardwarePlatforms>\n");

TEST(Families, ValuesKeepTheirText) {
    ZEPPlatform::Zep zep;
    ASSERT_EQ(readInto(zep, group).code, 0);
    EXPECT_EQ(written(zep), group);
    EXPECT_EQ(zep.GetPlatform().GetVendor(), L"v\n\t");
    EXPECT_EQ(zep.GetPlatform().GetVersion().get_as_string(), "1.10");
}

TEST(Families, TheContentOfHardwarePlatformsIsAChoice) {
    using namespace ZEPPlatform;
    const struct {
        const std::string& text;
        int choice;
    } rows[] = {{group, HardwarePlatforms::Choice_AnonHardwarePlatform},
                {emulation, HardwarePlatforms::Choice_HwEmuPlatform},
                {partitions, HardwarePlatforms::Choice_ReconfigurablePartition},
                {none, HardwarePlatforms::Choice_None}};
    for (int i = 0; i < 4; ++i) {
        Platform read;
        EXPECT_EQ(readInto(read, rows[i].text).code, 0);
        EXPECT_EQ(read.GetHardwarePlatforms().GetChoice(), i);
        EXPECT_EQ(rows[i].choice, i);
    }
    Platform read;
    ASSERT_EQ(readInto(read, partitions).code, 0);
    HardwarePlatforms& hardware = read.GetHardwarePlatforms();
    EXPECT_EQ(hardware.GetDefaultRP().get(), 1);
    EXPECT_EQ(hardware.GetReconfigurablePartition(0).GetAnonHardwarePlatform().GetHardwarePlatform().GetName(), L"a.kar");
    EXPECT_EQ(hardware.GetReconfigurablePartition(1).GetChoice(), ReconfigurablePartition::Choice_HwEmuPlatform);
    hardware.GetAnonHardwarePlatform().GetHardwarePlatform().SetName(L"x");
    EXPECT_EQ(hardware.SizeReconfigurablePartition(), 0u);
}

TEST(Families, NothingChosenIsReadButNotWritten) {
    ZEPPlatform::Platform read;
    s_debug_error debug;
    std::string text;
    ASSERT_EQ(readInto(read, none).code, 0);
    EXPECT_EQ(read.Marshal(&text, &debug), error_nothing_selected);
    EXPECT_EQ(debug.item, "{anonymous compositor}");

    ASSERT_EQ(readInto(read, emptyPartition).code, 0);
    EXPECT_EQ(read.GetHardwarePlatforms().GetReconfigurablePartition(0).GetChoice(), 2);
    EXPECT_FALSE(read.GetHardwarePlatforms().GetReconfigurablePartition(0).IsOccursOk());
    EXPECT_THROW(read.Marshal(&text), lmx_exception);
}

std::string replaced(std::string text, const std::string& what, const std::string& with) {
    const std::size_t at = text.find(what);
    EXPECT_NE(at, std::string::npos);
    return text.replace(at, what.size(), with);
}

TEST(Families, FaultsOfPlatformFiles) {
    const struct {
        std::string text;
        int code;
        const char* item;
        int line;
    } rows[] = {
        {replaced(group, "\"1.10\"", "\"abc\""), 35, "version", 2},
        {replaced(partitions, "zep:defaultRP=\"1\"", "zep:defaultRP=\"one\""), 35, "defaultRP", 4},
        {replaced(group, "urn:tolvan:zep", "urn:other"), 16, "platform", 2},
        {"<zep:hwEmuPlatform xmlns:zep='urn:tolvan:zep' zep:path='' zep:name=''/>", 16, "hwEmuPlatform", 1},
    };
    for (const auto& row : rows) {
        ZEPPlatform::Platform read;
        const Outcome outcome = readInto(read, row.text);
        EXPECT_EQ(outcome.code, row.code) << outcome << "\n" << row.text;
        EXPECT_EQ(outcome.item, row.item) << outcome;
        EXPECT_EQ(outcome.line, row.line) << outcome << "\n" << row.text;
    }
    ZEPPlatform::Zep zep;
    EXPECT_EQ(readInto(zep, rows[3].text).code, 0);
    EXPECT_EQ(zep.GetChoice(), ZEPPlatform::Zep::Choice_HwEmuPlatform);
    EXPECT_EQ(readInto(zep, "<zep:description xmlns:zep='urn:tolvan:zep'/>").code, 16);
}

} // namespace
