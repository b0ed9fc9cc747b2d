// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HPLPlatform.h"
#include "HZEPDsaJsonReader.h"
#include "MessageLog.h"
#include "TempDir.h"
#include "ZipBuilder.h"

#include <gtest/gtest.h>

using zep_platform::PlatformLoader;

namespace {

/// "H" when hardware emulation is supported, "2" with two emulation designs, "-" when the archive does not load.
std::string load(const std::string& files, const std::string& json, const std::string& xml) {
    const TempDir dir;
    const MessageLog log;
    HPLPlatform platform;
    const bool loaded = HZEPDsaJsonReader(&platform).parseDSA(ZipBuilder(dir.path("p.kar"))
                                                                  .add("kar.json", R"({"files": [)" + files + "]}")
                                                                  .add("hw_emu.json", json)
                                                                  .add("hw_emu.xml", xml)
                                                                  .write(),
                                                              PlatformLoader::PreferAlternateJson);
    std::string result = loaded ? "" : "-";
    if (platform.supportsHWEmulation())
        result += "H";
    if (platform.supportsTwoHwEmuBd())
        result += "2";
    for (const std::string& line : log.lines)
        result += " " + line.substr(0, line.find('|', line.find('|') + 1));
    return result;
}

TEST(EmulationScan, OfAnArchiveRaisesFlags) {
    const std::string json = R"({"name": "./hw_emu.json", "type": "EMU_JSON"})";
    const std::string xml = R"({"name": "hw_emu.xml", "type": "EMU_XML"})";
    const auto jsonWith = [](const std::string& type) {
        return R"({"emulations": [{"name": "a", "files": []}, {"name": "b", "files": [{"type": ")" + type + R"(", "name": "n"}]}]})";
    };
    const auto xmlWith = [](const std::string& type) {
        return "<Root VersionMajor='1' VersionMinor='0'><Emulations><Emulation Name='a'><Files><File Type='" + type +
               "' Name='n'/></Files></Emulation></Emulations></Root>";
    };
    EXPECT_EQ(load("", jsonWith("EMU_HPFM"), ""), "");
    EXPECT_EQ(load(json, jsonWith("EMU_HPFM"), ""), "H");
    EXPECT_EQ(load(json, jsonWith("TOP_BD"), ""), "2");
    EXPECT_EQ(load(json, jsonWith("emu_hpfm"), ""), "");
    EXPECT_EQ(load(xml, "", xmlWith("EMU_HPFM")), "H");
    EXPECT_EQ(load(json + "," + xml, jsonWith("TOP_BD"), xmlWith("EMU_HPFM")), "2");

    // A bad XML form is told, a bad JSON form ends the load.
    EXPECT_EQ(load(xml, "", "<Root"), " error|@74-24@%s%d");
    EXPECT_EQ(load(json, "{}", ""), "- critical warning|@74-64@%s%s%s");
    EXPECT_EQ(load(R"({"name": "none.json", "type": "EMU_JSON"})", "", ""), "- critical warning|@74-64@%s%s%s");
}

} // namespace
