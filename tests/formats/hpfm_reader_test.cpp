// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HZEPHpfmReader.h"

#include "HpfmDocument.h"
#include "TempDir.h"
#include "WELHardwarePlatformLMX.h"
#include "XmlMetadataSupport.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

namespace {

std::vector<HZEPHardwareBusInterface*> busesOf(const HPLPlatform& platform) {
    std::vector<HZEPHardwareBusInterface*> buses;
    platform.getBusInterfaces(buses);
    return buses;
}

} // namespace

TEST(HZEPHpfmReader, FillsTheModel) {
    HPLPlatform platform;
    MessageLog sent;
    HZEPHpfmReader reader(kHpfm, &platform);
    ASSERT_TRUE(reader.parseStream()) << reader.getErrorMsg();
    EXPECT_THAT(sent.lines, IsEmpty());
    EXPECT_EQ(reader.getErrorMsg(), "");

    EXPECT_EQ(platform.getVendor(), "norvane");
    EXPECT_EQ(platform.getBoardId(), "egret");
    EXPECT_EQ(platform.getName(), "egret");
    EXPECT_EQ(platform.getDescription(), "Egret & nest");
    EXPECT_EQ(platform.getHpfmString(), "");
    EXPECT_EQ(platform.getBRAMCount(), 1680);
    EXPECT_EQ(platform.getDSPCount(), 8478);
    EXPECT_EQ(platform.getFFCount(), 2171600);
    EXPECT_EQ(platform.getLUTCount(), 1085800);

    const auto clocks = elementsOf(platform.createSystemClockIter());
    ASSERT_EQ(clocks.size(), 2u);
    EXPECT_EQ(platform.getDefaultClkId(), 2);
    EXPECT_EQ(clocks[0]->getName(), "PL 2");
    EXPECT_EQ(clocks[0]->getOrigName(), "clk_out1");
    EXPECT_EQ(clocks[0]->getId(), 2);
    EXPECT_EQ(clocks[0]->getFrequency(), "300.0");
    EXPECT_EQ(clocks[0]->getPeriod(), "3.3333330");
    EXPECT_EQ(clocks[0]->getNormalizedPeriod(), ".003333");
    EXPECT_EQ(clocks[0]->getCompRef(), "clk_wiz");
    EXPECT_EQ(clocks[0]->getInstRef(), "clk_wiz_0");
    EXPECT_TRUE(clocks[0]->isScalable());
    EXPECT_EQ(clocks[1]->getName(), "ps_clk");
    EXPECT_EQ(clocks[1]->getId(), -1);
    EXPECT_EQ(clocks[1]->getNormalizedPeriod(), "");

    const auto parameters = elementsOf(platform.createIPParamIter());
    ASSERT_EQ(parameters.size(), 1u);
    EXPECT_EQ(parameters[0]->getName(), "BANKS");
    EXPECT_EQ(parameters[0]->getValue(), "4");
    EXPECT_EQ(parameters[0]->getIsValid(), "maybe");
    EXPECT_EQ(parameters[0]->getCompRef(), "hmss");
    EXPECT_EQ(parameters[0]->getInstRef(), "hmss_0");

    const auto buses = busesOf(platform);
    ASSERT_EQ(buses.size(), 2u);
    const HZEPHardwareBusInterface& bus = *buses[0];
    EXPECT_EQ(bus.getName(), "S00_AXI");
    EXPECT_EQ(bus.getBusTypeRef(), "aximm");
    EXPECT_EQ(bus.getInstRef(), "hmss_0");
    EXPECT_EQ(bus.getCompRef(), "hbm_memory_subsystem");
    EXPECT_EQ(bus.getMode(), "slave");
    EXPECT_EQ(bus.getCategory(), "memory");
    EXPECT_EQ(bus.getDataWidth(), 256);
    EXPECT_EQ(bus.getClockRef(), "clk_hbm");
    EXPECT_EQ(bus.getBusInterfaceRef(), "aximm_rtl");
    EXPECT_EQ(bus.getMemPort(), "S_AXI_HBM");
    EXPECT_EQ(bus.getSPTag(), "HBM");
    EXPECT_EQ(bus.getDirection(), "in");
    EXPECT_EQ(bus.getAddressSegment(), "HBM_ALL");
    EXPECT_EQ(bus.getMemoryInstance(), "hbm");
    EXPECT_EQ(bus.getNumIdBits(), 6);
    EXPECT_EQ(bus.getSize(), "8GB");
    EXPECT_EQ(bus.getSLR(), "SLR0");
    EXPECT_EQ(bus.getMaxMasters(), 16);
    EXPECT_EQ(bus.getISRId(), 7);
    EXPECT_EQ(buses[1]->getName(), "irq");
    EXPECT_EQ(buses[1]->getDataWidth(), -1);

    std::vector<HZEPHardwareAddressSegment*> segments;
    bus.getAddressSegments(segments);
    ASSERT_EQ(segments.size(), 4u);
    const HZEPHardwareAddressSegment& segment = *segments[0];
    EXPECT_EQ(segment.getBaseName(), "HBM_MEM00");
    EXPECT_EQ(segment.getIndex(), 0u);
    EXPECT_EQ(segment.getMemoryInstance(), "hbm_0");
    EXPECT_EQ(segment.getAuto(), "false");
    EXPECT_EQ(segment.getSpTag(), "HBM[0]");
    EXPECT_EQ(segment.getSlr(), "SLR0");
    EXPECT_EQ(segment.getMaxMasters(), 15u);
    EXPECT_EQ(segment.getName(), "seg0");
    EXPECT_EQ(segment.getInstanceRef(), "hmss_0");
    EXPECT_EQ(segment.getRegion(), "r0");
    EXPECT_EQ(segment.getReadBwUsed(), 100);
    EXPECT_EQ(segment.getWriteBwUsed(), -200);
    EXPECT_EQ(segment.getInterleave(), 4294967295u);
    EXPECT_EQ(segments[3]->getIndex(), 3u);
    EXPECT_EQ(segments[3]->getAuto(), "");

    EXPECT_TRUE(platform.isHBMPresent());
    EXPECT_EQ(platform.getHBMInstanceName(), "hmss_0");
    EXPECT_EQ(platform.getHBMBankCount(), 2u);
    EXPECT_EQ(platform.getHBMDefaultBankCount(), 1u);

    const auto connectivity = elementsOf(platform.createNocConnectivityIter());
    ASSERT_EQ(connectivity.size(), 2u);
    EXPECT_EQ(connectivity[0]->getInstanceRef(), "noc_0");
    ASSERT_NE(connectivity[0]->getBusInterfaceByName("S01_AXI"), nullptr);
    EXPECT_EQ(connectivity[0]->getBusInterfaceByName("S01_AXI")->getMode(), "slave");
    EXPECT_EQ(connectivity[1]->getInstanceRef(), "noc_1");
    EXPECT_THAT(elementsOf(connectivity[1]->createBusInterfaceIter()), IsEmpty());
}

TEST(HZEPHpfmReader, WhatThePlatformHasStandsButForItsDescription) {
    TempDir dir;
    HPLPlatform platform;
    platform.setVendor("first");
    platform.setBoardId("board");
    platform.setDescription("replaced");
    HZEPHpfmReader reader("not looked at", &platform);
    reader.setPlatformFile(dir.write("egret.hpfm", kHpfm));
    ASSERT_TRUE(reader.parseFile()) << reader.getErrorMsg();
    EXPECT_EQ(platform.getVendor(), "first");
    EXPECT_EQ(platform.getBoardId(), "board");
    EXPECT_EQ(platform.getName(), "egret");
    EXPECT_EQ(platform.getDescription(), "Egret & nest");
}

TEST(HZEPHpfmReader, ReadsOneListAlone) {
    HPLPlatform buses;
    EXPECT_TRUE(HZEPHpfmReader(kHpfm, &buses).parseBusInterfaces());
    EXPECT_EQ(busesOf(buses).size(), 2u);
    EXPECT_EQ(buses.getHBMBankCount(), 2u);
    EXPECT_THAT(elementsOf(buses.createNocConnectivityIter()), IsEmpty());
    EXPECT_THAT(elementsOf(buses.createSystemClockIter()), IsEmpty());
    EXPECT_EQ(buses.getName(), "");

    HPLPlatform noc;
    EXPECT_TRUE(HZEPHpfmReader(kHpfm, &noc).parseNocConnectivity());
    EXPECT_EQ(elementsOf(noc.createNocConnectivityIter()).size(), 2u);
    EXPECT_THAT(busesOf(noc), IsEmpty());

    HPLPlatform none;
    HZEPHpfmReader broken("<qd:repository", &none);
    EXPECT_THROW(broken.parseBusInterfaces(), lmx60::c_lmx_exception);
    EXPECT_THROW(broken.parseNocConnectivity(), lmx60::c_lmx_exception);
    EXPECT_EQ(broken.getErrorMsg(), "");
}

TEST(HZEPHpfmReader, OtherPrefixesAndUnknownNamesAreFine) {
    std::string text = kHpfm;
    for (std::size_t at = 0; (at = text.find("qd:", at)) != std::string::npos;)
        text.replace(at, 3, "hw:");
    text = edited(text, "xmlns:qd", "xmlns:hw");
    text = edited(text, "hw:auto=\"preferred\"", "hw:auto=\"preferred\" hw:colour=\"red\" colour=\"blue\"");
    text = edited(text, "<hw:description>", "<note xmlns=\"urn:else\"><hw:clock/></note><hw:description>");
    HPLPlatform platform;
    HZEPHpfmReader reader(text, &platform);
    EXPECT_TRUE(reader.parseStream()) << reader.getErrorMsg();
    EXPECT_EQ(busesOf(platform).size(), 2u);
}

TEST(HZEPHpfmReader, BadInput) {
    const struct {
        const char* fault;
        std::string from;
        std::string to;
        lmx60::elmx_error code;
        std::string lineWith; // of the text as edited; "" when the line doesn't matter
    } rows[] = {
        {"wrong root", "<qd:repository xmlns:qd=\"urn:tolvan:qd\"", "<qd:busInterface xmlns:qd=\"urn:tolvan:qd\"", lmx60::error_wrong_root,
         "<qd:busInterface xmlns"},
        {"wrong namespace", "urn:tolvan:qd", "urn:tolvan:zep", lmx60::error_wrong_root, "urn:tolvan:zep"},
        {"cut off", "  </qd:component>\n</qd:repository>\n", "", lmx60::error_not_well_formed, ""},
        {"version with letters", "qd:version=\"2.10\"", "qd:version=\"v2\"", lmx60::error_not_valid, "qd:version=\"v2\""},
        {"width above a short", "qd:dataWidth=\"256\"", "qd:dataWidth=\"32768\"", lmx60::error_above_bound, "32768"},
        {"width below a short", "qd:dataWidth=\"256\"", "qd:dataWidth=\"-32769\"", lmx60::error_below_bound, "32769"},
        {"negative count", "qd:BRAM=\"1680\"", "qd:BRAM=\"-1\"", lmx60::error_below_bound, "qd:BRAM=\"-1\""},
        {"huge index", "qd:index=\"1\"", "qd:index=\"99999999999999999999999\"", lmx60::error_above_bound, "9999999"},
        {"bandwidth that is no number", "qd:readBwUsed=\"100\"", "qd:readBwUsed=\"fast\"", lmx60::error_not_valid, "fast"},
        {"clock without a name", "qd:name=\"ps_clk\" ", "", lmx60::error_missing_attribute, "qd:instanceRef=\"ps_0\""},
        {"default clock missing", " qd:defaultClock=\"2\"", "", lmx60::error_missing_attribute, "<qd:systemClocks>"},
        {"no resource estimates", "<qd:resourceEstimates qd:BRAM=\"1\" qd:DSP=\"2\" qd:FF=\"3\" qd:LUT=\"4\" qd:nocPlNsu=\"5\"/>", "",
         lmx60::error_missing_element, ""},
        {"no bus interface", between(kHpfm, "<qd:busInterface qd:busTypeRef", "<qd:nocConnectivity"), "", lmx60::error_missing_element, ""},
        {"parameter behind the bus interfaces", "<qd:nocConnectivity qd:instanceRef=\"noc_1\"/>",
         "<qd:parameter qd:name=\"late\" qd:instanceRef=\"\" qd:componentRef=\"\" qd:isValid=\"\" qd:value=\"\"/>",
         lmx60::error_missing_element, ""},
        {"two descriptions", "<qd:description>", "<qd:description>again</qd:description><qd:description>", lmx60::error_missing_element,
         ""},
        {"document type", "<qd:repository", "<!DOCTYPE r [<!ENTITY e \"x\">]>\n<qd:repository", lmx60::error_document_type, ""},
    };
    TempDir dir;
    for (const auto& row : rows) {
        SCOPED_TRACE(row.fault);
        const std::string text = edited(kHpfm, row.from, row.to);
        lmx60::s_debug_error error;
        WELHardwarePlatform::Repository repository;
        EXPECT_THROW(repository.Unmarshal(text.data(), text.size(), &error), lmx60::c_lmx_exception);
        EXPECT_EQ(error.error, row.code);
        const std::string place = "Line number:" + (row.lineWith.empty() ? "" : std::to_string(lineOf(text, row.lineWith)) + ". ");

        HPLPlatform platform;
        const std::string untouched = documentOf(platform);
        MessageLog sent;
        Printed printed;
        HZEPHpfmReader stream(text, &platform);
        EXPECT_FALSE(stream.parseStream());
        EXPECT_THAT(stream.getErrorMsg(), StartsWith("Error parsing hardware platform stream from DSA\n" + place));
        EXPECT_EQ(printed.take(), stream.getErrorMsg() + "\n");
        EXPECT_THAT(sent.lines, ElementsAre("error|@74-31@|" + stream.getErrorMsg()));

        const std::string path = dir.write("bad.hpfm", text);
        HZEPHpfmReader file("-", &platform);
        file.setPlatformFile(path);
        Printed again;
        EXPECT_FALSE(file.parseFile());
        EXPECT_EQ(again.take(), "Error parsing hardware platform file: " + path + "\n");
        EXPECT_THAT(file.getErrorMsg(), StartsWith("Error parsing hardware platform file: " + path + "\n" + place));
        EXPECT_EQ(sent.lines.back(), "error|@74-12@|" + file.getErrorMsg());
        EXPECT_EQ(documentOf(platform), untouched);
    }
}

TEST(HZEPHpfmReader, NothingToRead) {
    TempDir dir;
    HPLPlatform platform;
    MessageLog sent;
    Printed printed;
    HZEPHpfmReader reader("", &platform);
    EXPECT_EQ(printed.take(), "CRITICAL WARNING: Empty hpfm string passed in\n");
    EXPECT_FALSE(reader.parseFile());
    reader.setPlatformFile(dir.path("absent.hpfm"));
    EXPECT_FALSE(reader.parseFile());
    EXPECT_EQ(reader.getErrorMsg(), "Specified hardware platform file doens't exists\nSpecified hardware platform file doens't exists\n");
    EXPECT_THAT(sent.lines, IsEmpty());

    Printed more;
    reader.setPlatformFile(dir.path());
    EXPECT_FALSE(reader.parseFile());
    EXPECT_FALSE(reader.parseStream());
    EXPECT_THAT(sent.lines, ElementsAre(StartsWith("error|@74-12@|"), StartsWith("error|@74-31@|")));
}
