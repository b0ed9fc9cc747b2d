// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HZEPEmulationExtMetaJsonReader.h"
#include "HZEPEmulationJsonReader.h"
#include "HZEPEmulationJsonWriter.h"
#include "HZEPEmulationXMLReader.h"
#include "HZEPEmulationXMLWriter.h"
#include "HZEPEmulations.h"
#include "HostErrors.h"
#include "HostMsgMgr.h"
#include "HostZip.h"
#include "MessageLog.h"
#include "TempDir.h"
#include "ZipBuilder.h"

#include <boost/property_tree/json_parser/error.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <utility>
#include <vector>

using boost::property_tree::ptree_bad_path;
using boost::property_tree::json_parser::json_parser_error;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

/// "name: type=file@instPath ..." for each emulation.
std::vector<std::string> list(const HZEPEmulations& emulations) {
    std::vector<std::string> lines;
    for (const HZEPEmulation* emulation : emulations.getEmulations()) {
        std::string line = emulation->getName() + ":";
        for (const HZEPEmulationFile* file : emulation->getFiles())
            line += " " + file->getType() + "=" + file->getName() + (file->getInstPath().empty() ? "" : "@" + file->getInstPath());
        lines.push_back(line);
    }
    return lines;
}

class Emulation : public testing::Test {
protected:
    /// The list after reading the text as an XML file, and as a member, which must give the same.
    std::vector<std::string> readXml(const std::string& text) {
        HZEPEmulations fromFile, fromMember;
        HZEPEmulationXMLReader(dir_.write("emu.xml", text), &fromFile).parseXml();
        const std::vector<std::string> said = std::exchange(log_.lines, {});
        HZEPEmulationXMLReader::parseFromDsa(ZipBuilder(dir_.path("a.kar")).add("e.xml", text).write(), "e.xml", &fromMember);
        EXPECT_EQ(log_.lines.size(), said.size());
        for (std::size_t i = 0; i < said.size() && i < log_.lines.size(); ++i)
            EXPECT_EQ(log_.lines[i].substr(log_.lines[i].rfind('|')), said[i].substr(said[i].rfind('|')));
        log_.lines = said;
        EXPECT_EQ(list(fromFile), list(fromMember));
        return list(fromFile);
    }

    std::vector<std::string> readJson(const std::string& text) {
        HZEPEmulations emulations;
        HZEPEmulationJsonReader(dir_.write("emu.json", text), &emulations).parseJson();
        version_ = emulations.getPfmMetadataVersion();
        return list(emulations);
    }

    TempDir dir_;
    MessageLog log_;
    std::string version_;

private:
    HostMsgMgr::Sink before_;
};

TEST_F(Emulation, XmlIsReadFromFilesAndArchives) {
    EXPECT_THAT(
        readXml("<Root VersionMajor='1' VersionMinor='0'><Emulations>\n"
                "<Emulation Name='a'><Files><File Type='EMU_HPFM' Name='a/ü.hpfm'/><File Type='TOP_BD' Name='b.bd'/></Files></Emulation>\n"
                "<Emulation Name=''><Files/></Emulation></Emulations></Root>"),
        ElementsAre("a: EMU_HPFM=a/ü.hpfm TOP_BD=b.bd", ":"));
    EXPECT_THAT(readXml("<Root VersionMajor='1' VersionMinor='0'><Emulations/></Root>"), ElementsAre());
    EXPECT_THAT(log_.lines, ElementsAre());
}

TEST_F(Emulation, WhatIsNoXmlIsToldAndAddsNothing) {
    const std::string good = "<Emulation Name='a'><Files><File Type='t' Name='n'/></Files></Emulation>\n";
    const auto root = [](const std::string& text) {
        return "<Root VersionMajor='1' VersionMinor='0'><Emulations>\n" + text + "</Emulations></Root>";
    };
    const std::string path = dir_.path("emu.xml");
    const std::vector<std::pair<std::string, std::string>> cases = {
        {root(good + "<Emulation Name='b'><Files>\n<File Type='t'/></Files></Emulation>"), "4"},
        {"<Root VersionMajor='1'\nVersionMinor='x'><Emulations/></Root>", "2"},
        {root(good) + "<", "3"},
    };
    for (const auto& [text, line] : cases) {
        log_.lines.clear();
        EXPECT_THAT(readXml(text), ElementsAre()) << text;
        EXPECT_THAT(log_.lines, ElementsAre("error|@74-24@%s%d|" + path + "|" + line)) << text;
    }

    HZEPEmulations emulations;
    EXPECT_THROW(HZEPEmulationXMLReader(dir_.path("none.xml"), &emulations), HostFileNotFoundException);
    log_.lines.clear();
    HZEPEmulationXMLReader::parseFromDsa(dir_.path("a.kar"), "none.xml", &emulations);
    HZEPEmulationXMLReader::parseFromDsa(dir_.path("none.kar"), "e.xml", &emulations);
    HZEPEmulationXMLReader(dir_.path(), &emulations).parseXml();
    EXPECT_THAT(log_.lines,
                ElementsAre("error|@74-24@%s%d|none.xml|0", "error|@74-24@%s%d|e.xml|0", "error|@74-24@%s%d|" + dir_.path() + "|0"));
}

TEST_F(Emulation, JsonSkipsTheNamelessAndNeedsTheRest) {
    EXPECT_THAT(readJson(R"({"pfm_metadata_version": "2.1", "emulations": [
        {"files": "not looked at"},
        {"name": "a", "files": [{"type": "EMU_HPFM", "name": "h", "inst_path": "top/x"}, {"type": "t", "name": "n"}]},
        {"name": "b", "files": []}]})"),
                ElementsAre("a: EMU_HPFM=h@top/x t=n", "b:"));
    EXPECT_EQ(version_, "2.1");
    EXPECT_THAT(readJson(R"({"emulations": []})"), ElementsAre());

    for (const char* text : {"{}", R"({"emulations": [{"name": "a"}]})", R"({"emulations": [{"name": "a", "files": [{"name": "n"}]}]})",
                             R"({"emulations": [{"name": "a", "files": [{"type": "t"}]}]})"})
        EXPECT_THROW(readJson(text), ptree_bad_path) << text;
    EXPECT_THROW(readJson("{\n\"emulations\": ["), json_parser_error);

    const auto isValid = [&](const std::string& text) {
        HZEPEmulations emulations;
        return HZEPEmulationJsonReader(dir_.write("v.json", text), &emulations).isJsonValid();
    };
    EXPECT_TRUE(isValid(R"({"emulations": ""})"));
    EXPECT_FALSE(isValid(R"({"emulation": []})"));
    EXPECT_FALSE(isValid(R"({"emulations": [})"));
    HZEPEmulations emulations;
    EXPECT_FALSE(HZEPEmulationJsonReader(&emulations).isJsonValid());
    EXPECT_THROW(HZEPEmulationJsonReader(dir_.path("none.json"), &emulations), HostFileNotFoundException);
}

TEST_F(Emulation, JsonMembersAreFoundWithoutTheDot) {
    const std::string archive = ZipBuilder(dir_.path("a.kar"))
                                    .add("hw_emu.json", R"({"emulations": [{"name": "a", "files": []}]})")
                                    .add("broken.json", "{")
                                    .add({.name = "secret.json", .content = "0123456789abc", .flags = 1})
                                    .add({.name = "huge.json", .content = "{}", .size = HostZip::kMaxMemberSize + 1})
                                    .write();
    const auto read = [&](const std::string& file, const std::string& member) {
        HZEPEmulations emulations;
        HZEPEmulationJsonReader::parseFromDsa(file, member, &emulations);
        return list(emulations);
    };
    EXPECT_THAT(read(archive, "hw_emu.json"), ElementsAre("a:"));
    EXPECT_THAT(read(archive, "./hw_emu.json"), ElementsAre("a:"));
    // The expression takes any one character in front of separators off.
    EXPECT_THAT(read(archive, "x///hw_emu.json"), ElementsAre("a:"));
    EXPECT_THROW(read(archive, "broken.json"), json_parser_error);
    for (const auto& [file, member] : {std::pair{archive, "none.json"}, std::pair{archive, "secret.json"}, std::pair{archive, "huge.json"},
                                       std::pair{archive, "ab/hw_emu.json"}, std::pair{dir_.path("none.kar"), "a"}})
        try {
            read(file, member);
            ADD_FAILURE() << member;
        } catch (const HostError& error) {
            EXPECT_EQ(error.what(), HostMsgMgr::getText({"platform", HostMsgMgr::Error, "@74-34@%s%s", {file, member}}));
        }
    EXPECT_THROW(read(archive, std::string(1 << 20, '/')), HostError);
}

TEST_F(Emulation, WritersAndReadersAgree) {
    HZEPEmulations emulations;
    emulations.setPfmMetadataVersion("3");
    emulations.createFeatureRom()->setVBNV("lost in both");
    HZEPEmulation* emulation = emulations.createEmulation();
    emulation->setName("a <&> \"b\"\n");
    emulation->createFile("EMU_HPFM", "x/y.hpfm")->setInstPath("top/u0");
    emulation->createFile(nullptr, nullptr);
    emulations.createEmulation()->setName("empty");
    const std::vector<std::string> lines = list(emulations);

    HZEPEmulationJsonWriter(&emulations, dir_.path("out.json")).writeJson();
    EXPECT_EQ(readJson(dir_.read("out.json")), lines);
    EXPECT_EQ(version_, "3");
    HZEPEmulationXMLWriter(&emulations, dir_.path("out.xml")).writeXml();
    EXPECT_THAT(readXml(dir_.read("out.xml")),
                ElementsAre("a <&> \"b\"\n: EMU_HPFM=x/y.hpfm =", "empty:")); // no place for the instance path
    EXPECT_THAT(dir_.read("out.xml"), HasSubstr("<Root VersionMajor=\"1\" VersionMinor=\"0\">\n  <Emulations>\n    <Emulation Name="));

    HZEPEmulations none;
    HZEPEmulationJsonWriter(&none, dir_.path("none.json")).writeJson();
    EXPECT_EQ(dir_.read("none.json"), "{\n    \"emulations\": \"\"\n}\n");
    HZEPEmulationXMLWriter(&none, dir_.path("none.xml")).writeXml();
    EXPECT_THAT(readXml(dir_.read("none.xml")), ElementsAre());

    EXPECT_THROW(HZEPEmulationXMLWriter(&none, dir_.path("no/such/dir.xml")).writeXml(), HostXMLException);
    EXPECT_THROW(HZEPEmulationJsonWriter(&none, dir_.path("no/such/dir.json")).writeJson(), json_parser_error);
}

TEST_F(Emulation, ExtensionMetadataFillsOneFeatureRom) {
    const auto read = [&](const std::string& text, HZEPEmulations& emulations) {
        HZEPEmulationExtMetaJsonReader reader(dir_.write("ext.json", text), &emulations);
        EXPECT_TRUE(reader.isJsonValid());
        reader.parseJson();
    };
    HZEPEmulations two;
    read(R"({"featureRoms": [
        {"vbnvName": "first", "cdmaBaseAddress0": "0x1", "cdmaBaseAddress3": "0x4",
         "featureBitMap": [{"value": "9", "boardScheduler": "enabled"}, {"unifiedPlatform": "enabled"}]},
        {"vbnvName": "second", "featureBitMap": [{"peerToPeer": "enabled"}]}]})",
         two);
    ASSERT_EQ(two.getFeatureRoms().size(), 1u);
    const HZEPEmuFeatureRom& rom = *two.getFeatureRoms()[0];
    EXPECT_EQ(rom.getVBNV(), "second");
    EXPECT_EQ(rom.getCdmaBaseAddress0() + rom.getCdmaBaseAddress1() + rom.getCdmaBaseAddress2() + rom.getCdmaBaseAddress3(), "0x10x4");
    EXPECT_EQ(rom.getBitMapValue(), "9");
    EXPECT_EQ(rom.getBitMapUnifiedPlatform(), "");
    EXPECT_EQ(rom.getFeatureBitMap(), 65545u);

    HZEPEmulations empty;
    read(R"({"featureRoms": []})", empty);
    ASSERT_EQ(empty.getFeatureRoms().size(), 1u);
    EXPECT_EQ(empty.getFeatureRoms()[0]->getFeatureBitMap(), 1u);
    empty.getFeatureRoms()[0]->setBitMapPeerToPeer("Enabled");
    EXPECT_EQ(empty.getFeatureRoms()[0]->getFeatureBitMap(), 1u);

    HZEPEmulations broken;
    EXPECT_THROW(read("{}", broken), ptree_bad_path);
    EXPECT_EQ(broken.getFeatureRoms().size(), 1u);
    EXPECT_THROW(read(R"({"featureRoms": [{"vbnvName": "x"}]})", broken), ptree_bad_path);
    EXPECT_FALSE(HZEPEmulationExtMetaJsonReader(dir_.write("bad.json", "{"), &broken).isJsonValid());
    EXPECT_THROW(HZEPEmulationExtMetaJsonReader(dir_.path("none.json"), &broken), HostFileNotFoundException);
}

} // namespace
