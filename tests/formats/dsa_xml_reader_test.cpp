// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "BasePlatformLMX.h"
#include "DsaXmlSupport.h"
#include "HostEnv.h"
#include "HostErrors.h"
#include "HpfmDocument.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::MatchesRegex;
using testing::StartsWith;

TEST(HZEPDsaXmlReader, FillsTheModel) {
    TempDir dir;
    HPLPlatform platform;
    MessageLog sent;
    Printed printed;
    const std::string archive = makeDsa(dir, kDsaXml);
    ASSERT_TRUE(HZEPDsaXmlReader(dir.path("./a.dsa"), &platform).parseDSA());
    EXPECT_THAT(sent.lines, IsEmpty());
    EXPECT_EQ(printed.take(), "");

    EXPECT_EQ(platform.getPlatformFile(), archive);
    // The counts are the core's texts and the platform's numbers; the registers are the core's alone.
    const HPLCore& core = platform.getDevice("fpga0")->getCore();
    EXPECT_EQ(platform.HZEPHardwarePlatform::getRegisterCount(), 0);
    EXPECT_EQ(core.getRegisterCount(), "1800000");
    std::set<std::string> slrs;
    core.getSLRNames("pblock_a", slrs);
    EXPECT_THAT(slrs, ElementsAre("SLR0,SLR1")) << "the list is one name";
}

TEST(HZEPDsaXmlReader, VersionGate) {
    const struct {
        const char* version;
        const char* state;
        bool opens;
    } rows[] = {
        {"VersionMajor=\"1\" VersionMinor=\"99\"", "impl", true},
        {"VersionMajor=\"0\" VersionMinor=\"0\"", "impl", true},
        {"VersionMajor=\"2\" VersionMinor=\"0\"", "impl", false},
        {"VersionMajor=\"2\" VersionMinor=\"0\"", "PRE_SYNTH", true},
        // Compared with a sign.
        {"VersionMajor=\"4294967295\" VersionMinor=\"0\"", "impl", true},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(row.version) + " " + row.state);
        TempDir dir;
        const std::string archive = makeDsa(dir, edited(edited(kDsaXml, "VersionMajor=\"1\" VersionMinor=\"15\"", row.version),
                                                        "PlatformState=\"impl\"", "PlatformState=\"" + std::string(row.state) + "\""));
        MessageLog sent;
        HPLPlatform platform;
        EXPECT_EQ(HZEPDsaXmlReader(archive, &platform).parseDSA(), row.opens);
        if (row.opens) {
            EXPECT_THAT(sent.lines, IsEmpty());
            continue;
        }
        EXPECT_THAT(sent.lines,
                    ElementsAre("error|@74-52@%s|Hardware Platform '" + archive + "' (version 2) is newer than the current version 1 (" +
                                HostEnv::getMajor() + "." + HostEnv::getMinor() + ")"));
        HPLPlatform fresh;
        fresh.setPlatformFile(archive);
        EXPECT_EQ(documentOf(platform), documentOf(fresh));
    }
}

TEST(HZEPDsaXmlReader, RootVersionLeavesThePlatformAlone) {
    TempDir dir;
    MessageLog sent;
    HPLPlatform platform;
    const std::string archive =
        makeDsa(dir, edited(kDsaXml, "VersionMajor=\"1\" VersionMinor=\"15\"", "VersionMajor=\"7\" VersionMinor=\"8\""));
    int major = 0;
    int minor = 0;
    EXPECT_TRUE(HZEPDsaXmlReader(archive, &platform).getRootVersion(major, minor));
    EXPECT_EQ(major, 7);
    EXPECT_EQ(minor, 8);
    EXPECT_EQ(platform.getPlatformFile(), "");
    EXPECT_THAT(sent.lines, IsEmpty());

    EXPECT_FALSE(HZEPDsaXmlReader(makeDsa(dir, "<Root/>"), &platform).getRootVersion(major, minor));
    EXPECT_EQ(major, 7);
    EXPECT_THAT(sent.lines, ElementsAre(StartsWith("critical warning|@74-62@%s%s%d|" + archive + "/dsa.xml|")));
}

TEST(HZEPDsaXmlReader, BuildAttributes) {
    const auto build = [](const std::string& attributes) {
        return edited(kDsaXml,
                      "UsesPR=\"true\" PlatformState=\"impl\" AcceleratorBinaryFormat=\"acclib1\" AcceleratorBinaryContent=\"\" "
                      "ValidBinaryContentValues=\"bitstream,dcp\" TopModuleName=\"egret_wrapper\"",
                      attributes);
    };
    const struct {
        const char* attributes;
        bool usesPR;
        bool dataCenter;
        const char* state;
        const char* contents;
    } rows[] = {
        {"", true, false, "", "dcp,bitstream"},
        {"UsesPR=\"TRUE\"", true, true, "", "dcp,bitstream"},
        {"UsesPR=\"yes\" PlatformState=\"impl\"", false, false, "impl", "dcp,bitstream"},
        {"StaticSynthCheckpoint=\"\" PlatformState=\"impl\" Flow=\"x\" UsesDCP=\"y\"", true, false, "synth", "dcp,bitstream"},
        {"ValidBinaryContentValues=\"\"", true, false, "", ""},
        {"ValidBinaryContentValues=\"pdi,dcp,pdi\"", true, false, "", "pdi,dcp"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.attributes);
        HPLPlatform platform;
        ASSERT_TRUE(readDsa(platform, build(row.attributes)));
        EXPECT_EQ(platform.usesPR(), row.usesPR);
        EXPECT_EQ(platform.getDesignIntent().getDataCenter(), row.dataCenter);
        EXPECT_EQ(platform.getDesignIntent().getExternalHost(), row.dataCenter);
        EXPECT_EQ(platform.getDesignIntent().getServerManaged(), row.dataCenter);
        EXPECT_EQ(platform.getDesignIntent().getEmbedded(), !row.dataCenter);
        EXPECT_EQ(platform.getPlatformState(), row.state);
        EXPECT_EQ(platform.getValidBinaryContentValuesAsStr(), row.contents);
        EXPECT_EQ(platform.getAcceleratorBinaryFormat(), "acclib2");
        EXPECT_EQ(platform.getAcceleratorBinaryContent(), "bitstream");
    }
}

TEST(HZEPDsaXmlReader, ExpandableByWordOrByContent) {
    const std::string silent = edited(kDsaXml, " Fixed=\"true\"", "");
    const struct {
        std::string xml;
        Members members;
        bool expandable;
    } rows[] = {
        {silent, {}, true},
        {silent, {{"sysdef.xml", ""}}, false},
        {silent, {{"hwdef.xml", ""}}, false},
        {edited(kDsaXml, "Fixed=\"true\"", "Fixed=\"no\""), {{"hwdef.xml", ""}}, true},
        {edited(kDsaXml, "Fixed=\"true\"", "Fixed=\"True\""), {}, false},
    };
    for (const auto& row : rows) {
        HPLPlatform platform;
        ASSERT_TRUE(readDsa(platform, row.xml, row.members));
        EXPECT_EQ(platform.isExpandable(), row.expandable);
    }
}

TEST(HZEPDsaXmlReader, KeywordsAndCutValues) {
    std::string xml = edited(kDsaXml, "Type=\"HDPI\"", "Type=\"hdpi\"");
    xml = edited(xml, "LUT=\"900000\"", "LUT=\"\"");
    xml = edited(xml, "DSP=\"6000\"", "DSP=\"0x10\"");
    xml = edited(xml, "MaxTempLimit=\"90\"", "MaxTempLimit=\"346\"");
    xml = edited(xml, "VBNVName=\"norvane_egret_base_5_2\"", "VBNVName=\"" + std::string(80, 'v') + "\"");
    xml = edited(xml, " UUID=\"5d1f0c7e-8a34-4d0b-9c5e-2f6b7a1e9d43\" CDMABaseAddress0=\"1\"", "");
    xml = edited(xml, "ParentRMInstancePath", "DRBaseAddress=\"0x100\" ParentRMInstancePath");
    HPLPlatform platform;
    ASSERT_TRUE(readDsa(platform, xml));
    EXPECT_EQ(platform.getReadOnlyBoard().getImgFileHdpi(), "");
    EXPECT_EQ(platform.getLUTCount(), 0);
    EXPECT_EQ(platform.getDSPCount(), 0);
    const HZEPHardwareFeatureRom& rom = *elementsOf(platform.createFeatureRomIter()).at(0);
    EXPECT_EQ(rom.getMaxTempLimit(), 90);
    EXPECT_EQ(rom.getVBNVName(), std::string(63, 'v'));
    EXPECT_EQ(rom.getUUIDAsString(), "00000000-0000-0000-0000-000000000000");
    EXPECT_EQ(rom.getCDMABaseAddress(0), 0u);
    EXPECT_EQ(platform.getDevice("fpga0")->getCore().getDRBaseAddress(), "");
}

TEST(HZEPDsaXmlReader, HardwarePlatformFiles) {
    const auto listed = [](const std::string& files) { return edited(kDsaXml, "<File Type=\"DCP\" Name=\"dr.dcp\"/>", files); };
    const std::string one = edited(edited(kHpfm, "Egret &amp; nest", "First"), "qd:DSP=\"8478\"", "qd:DSP=\"1\"");
    {
        SCOPED_TRACE("read by type in any case, the later one stands");
        HPLPlatform platform;
        ASSERT_TRUE(readDsa(platform,
                            edited(listed("<File Type=\"hpfm\" Name=\"one.hpfm\"/><File Type=\"HPFM\" Name=\"hw/two.hpfm\"/>"),
                                   "Unified=\"true\"", "Unified=\"false\""),
                            {{"one.hpfm", one}, {"hw/two.hpfm", kHpfm}}));
        EXPECT_EQ(platform.getHpfmString(), kHpfm);
        EXPECT_EQ(platform.getDescription(), "Egret & nest");
        EXPECT_EQ(platform.getVendor(), "norvane");
        EXPECT_EQ(platform.getName(), "base");
        EXPECT_EQ(platform.getDSPCount(), 8478);
        EXPECT_TRUE(platform.isExpandable() && platform.isUnifiedPlatform()) << "goes over the attributes";
        std::vector<HZEPHardwareBusInterface*> buses;
        platform.getBusInterfaces(buses);
        EXPECT_EQ(buses.size(), 4u);
    }
    for (const Members& members : {Members{}, Members{{"bad.hpfm", "<qd:repository"}}, Members{{"bad.hpfm", ""}}}) {
        SCOPED_TRACE("a bad one is told and passed over");
        TempDir dir;
        const std::string archive =
            makeDsa(dir, edited(listed("<File Type=\"HPFM\" Name=\"bad.hpfm\"/>"), " Unified=\"true\"", ""), members);
        MessageLog sent;
        Printed printed;
        HPLPlatform platform;
        EXPECT_TRUE(HZEPDsaXmlReader(archive, &platform).parseDSA());
        EXPECT_THAT(printed.take(), testing::AllOf(HasSubstr("Failed to parse hpfm stream from 'bad.hpfm' in " + archive + "\n"),
                                                   testing::Not(HasSubstr(archive + ": "))));
        EXPECT_THAT(sent.lines, ElementsAre(StartsWith("error|@74-31@|Error parsing hardware platform stream from DSA\nLine number:")));
        EXPECT_FALSE(platform.isExpandable());
        EXPECT_FALSE(platform.isUnifiedPlatform());
        EXPECT_EQ(platform.getDescription(), "An \"older\" card");
    }
}

TEST(HZEPDsaXmlReader, EmulationFilesRaiseOneFlag) {
    const auto emulations = [](const std::string& type) {
        return "<Root VersionMajor=\"1\" VersionMinor=\"0\"><Emulations><Emulation Name=\"a\"><Files/></Emulation><Emulation "
               "Name=\"b\"><Files>"
               "<File Type=\"TOP_BD\" Name=\"t\"/><File Type=\"" +
               type + "\" Name=\"n\"/></Files></Emulation></Emulations></Root>";
    };
    const struct {
        const char* type;
        Members members;
        bool supported;
        const char* message; // with its first argument, "" for none
    } rows[] = {
        {"EMU_XML", {{"emu/e.xml", emulations("EMU_HPFM")}}, true, ""},
        {"emu_xml", {{"emu/e.xml", emulations("EMU_HPFM")}}, true, ""},
        {"EMU_XML", {{"emu/e.xml", emulations("emu_hpfm")}}, false, ""},
        {"EMU_JSON", {{"emu/e.xml", emulations("EMU_HPFM")}}, false, ""},
        // A bad file is told, and the archive is read to its end.
        {"EMU_XML", {{"emu/e.xml", "<Root"}}, false, "error|@74-24@%s%d|emu/e.xml|"},
        {"EMU_XML", {}, false, "error|@74-24@%s%d|emu/e.xml|"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.type);
        MessageLog sent;
        HPLPlatform platform;
        EXPECT_TRUE(readDsa(platform,
                            edited(kDsaXml, "Type=\"DCP\" Name=\"dr.dcp\"", "Type=\"" + std::string(row.type) + "\" Name=\"emu/e.xml\""),
                            row.members));
        EXPECT_EQ(platform.supportsHWEmulation(), row.supported);
        EXPECT_FALSE(platform.supportsTwoHwEmuBd());
        EXPECT_EQ(elementsOf(platform.createFeatureRomIter()).size(), 1u);
        if (*row.message)
            EXPECT_THAT(sent.lines, ElementsAre(StartsWith(row.message)));
        else
            EXPECT_THAT(sent.lines, IsEmpty());
    }
}

TEST(HZEPDsaXmlReader, InvalidDocuments) {
    const struct {
        const char* fault;
        std::string from;
        std::string to;
        lmx60::elmx_error code;
        std::string lineWith; // of the text as edited; "" when the line doesn't matter
    } rows[] = {
        {"wrong root", "<Root VersionMajor", "<root VersionMajor", lmx60::error_wrong_root, "<root"},
        {"files before devices", "<Devices>", "<Files/><Devices>", lmx60::error_missing_element, ""},
        {"too many compute units", "ComputeUnits=\"60\"", "ComputeUnits=\"300\"", lmx60::error_above_bound, "=\"300\" VLNV"},
        {"address above a signed number", "LowestAddress=\"0\"", "LowestAddress=\"9223372036854775808\"", lmx60::error_above_bound,
         "9223372036854775808\" High"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.fault);
        const std::string xml = edited(kDsaXml, row.from, row.to);
        lmx60::s_debug_error error;
        BasePlatform::Root root;
        EXPECT_THROW(root.Unmarshal(xml.data(), xml.size(), &error), lmx60::c_lmx_exception);
        EXPECT_EQ(error.error, row.code);

        TempDir dir;
        MessageLog sent;
        HPLPlatform platform;
        const std::string archive = makeDsa(dir, xml);
        EXPECT_FALSE(HZEPDsaXmlReader(archive, &platform).parseDSA());
        ASSERT_EQ(sent.lines.size(), 1u);
        EXPECT_THAT(sent.lines[0], StartsWith("critical warning|@74-62@%s%s%d|" + archive + "/dsa.xml|"));
        if (!row.lineWith.empty()) {
            EXPECT_THAT(sent.lines[0], testing::EndsWith("|" + std::to_string(lineOf(xml, row.lineWith))));
        }
    }
}

TEST(HZEPDsaXmlReader, OtherFaults) {
    const struct {
        const char* fault;
        std::string xml;
        const char* cause;
    } rows[] = {
        {"no generator",
         edited(kDsaXml, "<GenAppInfo Name=\"forge\" Version=\"2017.4\" CL=\"2086221\" TimeStamp=\"Mon Jan  8 10:00:00 2018\"/>", ""),
         "GenAppInfo"},
        {"part of three tokens", edited(kDsaXml, "tolvan:tlv9pz:fsgd2104:-2:e", "a:b:c"), "a:b:c"},
        {"parameter twice", edited(kDsaXml, "Name=\"DEPTH\"", "Name=\"WIDTH\""), "WIDTH"},
        {"uuid that is none", edited(kDsaXml, "5d1f0c7e-8a34-4d0b-9c5e-2f6b7a1e9d43", "5d1f"), ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.fault);
        TempDir dir;
        MessageLog sent;
        HPLPlatform platform;
        const std::string archive = makeDsa(dir, row.xml);
        EXPECT_FALSE(HZEPDsaXmlReader(archive, &platform).parseDSA());
        ASSERT_EQ(sent.lines.size(), 1u);
        EXPECT_THAT(sent.lines[0], StartsWith("critical warning|@74-65@%s%s%s|dsa.xml|" + archive + "|"));
        EXPECT_THAT(sent.lines[0], HasSubstr(row.cause));
    }

    TempDir dir;
    MessageLog sent;
    HPLPlatform platform;
    const std::string noMember = ZipBuilder(dir.path("none.dsa")).add("readme.txt", "x").write();
    const std::string noZip = dir.write("text.kar", "no archive");
    EXPECT_FALSE(HZEPDsaXmlReader(noMember, &platform).parseDSA());
    EXPECT_FALSE(HZEPDsaXmlReader(noZip, &platform).parseDSA());
    EXPECT_THAT(sent.lines, ElementsAre(StartsWith("critical warning|@74-65@%s%s%s|dsa.xml|" + noMember + "|"),
                                        StartsWith("critical warning|@74-65@%s%s%s|kar.xml|" + noZip + "|")));
    EXPECT_THROW(HZEPDsaXmlReader("", &platform), HostFileNotFoundException);
    EXPECT_THROW(HZEPDsaXmlReader(dir.path("absent.dsa"), &platform), HostFileNotFoundException);
}

TEST(HZEPDsaXmlReader, FilesListedAgainAndAgainArePassedOver) {
    // Five of the six may still be tried; the member is no more than it takes to announce so much.
    ZipBuilder::Member large{.name = "emu.xml", .content = std::string(110'000, 'x'), .method = ZipBuilder::Stored};
    large.size = HZEPDsaXmlReader::kMaxListedSize / 5;
    const std::string entry = "<File Name=\"emu.xml\" Type=\"EMU_XML\"/>";
    TempDir dir;
    std::vector<std::string> causes;
    const auto before = HostMsgMgr::getGlobal().setSink([&](const HostMsg& message) {
        EXPECT_EQ(message.key, "@74-24@%s%d");
        EXPECT_THAT(message.args, ElementsAre("emu.xml", "0"));
        causes.push_back(message.fault.cause);
    });
    HPLPlatform platform;
    const std::string archive = ZipBuilder(dir.path("a.dsa"))
                                    .add("dsa.xml", edited(kDsaXml, "<Files>", "<Files>" + entry + entry + entry + entry + entry + entry))
                                    .add(large)
                                    .write();
    EXPECT_TRUE(HZEPDsaXmlReader(archive, &platform).parseDSA());
    EXPECT_THAT(causes, ElementsAre("", "", "", "", "", "the files listed are read up to 268435456 bytes in all"));
    HostMsgMgr::getGlobal().setSink(before);
}
