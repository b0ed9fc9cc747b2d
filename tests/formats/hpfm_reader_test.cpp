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

    EXPECT_TRUE(platform.isHBMPresent());
    EXPECT_EQ(platform.getHBMInstanceName(), "hmss_0");
    EXPECT_EQ(platform.getHBMBankCount(), 2u);
    EXPECT_EQ(platform.getHBMDefaultBankCount(), 1u);
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
        {"width above a short", "qd:dataWidth=\"256\"", "qd:dataWidth=\"32768\"", lmx60::error_above_bound, "32768"},
        {"clock without a name", "qd:name=\"ps_clk\" ", "", lmx60::error_missing_attribute, "qd:instanceRef=\"ps_0\""},
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
