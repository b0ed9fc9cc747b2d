// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "../../src/shared/platform/src/formats/DsaJsonPlatformKeys.h"
#include "Documents.h"
#include "HPLPlatform.h"
#include "HZEPDsaJsonReader.h"
#include "HostErrors.h"

#include <gmock/gmock.h>

using boost::property_tree::ptree;
using testing::ElementsAre;

namespace {

/// What a fresh platform writes after it has read the document.
std::string readAndRender(const std::string& document) {
    HPLPlatform platform;
    EXPECT_TRUE(HZEPDsaJsonReader(&platform).parseJsonString(document));
    return documentOf(platform);
}

} // namespace

TEST(DsaJsonFormat, EmptyDocument) {
    EXPECT_EQ(readAndRender("{}"), readAndRender(R"({"unknown": {"devices": [1]}, "usesPR": "no"})"));
    HPLPlatform platform;
    ASSERT_TRUE(HZEPDsaJsonReader(&platform).parseJsonString("{}"));
    const ptree written = parse(documentOf(platform));
    EXPECT_EQ(written.get<std::string>("hardware"), "true");
    EXPECT_EQ(written.get<std::string>("softwareEmulation"), "true");
    EXPECT_EQ(written.get<std::string>("expandablePlatform"), "true");
    EXPECT_EQ(written.get<std::string>("defaultOutputType"), "unknown");
    EXPECT_FALSE(HZEPDsaJsonReader(&platform).parseJsonString(""));
}

TEST(DsaJsonFormat, DesignIntentIsStatedOrFollowsPartialReconfiguration) {
    const struct {
        const char* document;
        const char* dataCenterEmbeddedHostServer;
    } rows[] = {
        {R"({})", "0100"},
        {R"({"usesPR": true})", "1011"},
        {R"({"usesPR": "TRUE", "designIntent": {}})", "1011"},
        {R"({"designIntent": {"dataCenter": {"value": "true", "explicit": "false"}}})", "0100"},
        {R"({"designIntent": {"dataCenter": {"value": "true", "explicit": "true"}, "embedded": {"value": "false", "explicit": true}}})",
         "1000"},
        {R"({"usesPR": true, "designIntent": {"serverManaged": {"value": "", "explicit": "true"}}})", "1010"},
        {R"({"usesPR": true, "designIntent": {"serverManaged": {"explicit": "true"}, "externalHost": {"value": "false"}}})", "1011"},
        {R"({"designIntent": "dataCenter"})", "0100"},
    };
    for (const auto& row : rows) {
        const ptree intent = parse(readAndRender(row.document)).get_child("designIntent");
        std::string values;
        for (const char* key : {"dataCenter", "embedded", "externalHost", "serverManaged"})
            values += intent.get<std::string>(std::string(key) + ".value") == "true" ? '1' : '0';
        EXPECT_EQ(values, row.dataCenterEmbeddedHostServer) << row.document;
    }
}

TEST(DsaJsonFormat, ClocksNeedAnIdToBeTheDefault) {
    HPLPlatform platform;
    ASSERT_TRUE(HZEPDsaJsonReader(&platform).parseJsonString(R"({"systemClocks": [
        {"name": "a", "id": "4", "default": "true"}, {"name": "b", "id": "7", "default": true}, {"name": "c", "default": "true"}]})"));
    EXPECT_EQ(platform.getDefaultClockId(), "7");
    EXPECT_EQ(platform.getDefaultClockName(), "b");
    EXPECT_EQ(platform.getClockId("c"), "-1");
}

// One item each; the expected text is what the item says when it is written again.
TEST(DsaJsonFormat, NumbersAreReadAsFarAsTheirDigitsGo) {
    const struct {
        const char* document;
        const char* path;
        const char* text;
    } rows[] = {
        {R"({"versionMajor": 4294967297})", "versionMajor", "1"},
        {R"({"featureRoms": [{"majorVersion": 257, "minorVersion": "x"}]})", "featureRoms..majorVersion", "1"},
        {R"({"featureRoms": [{"cdmaBaseAddress2": "0x123456789"}]})", "featureRoms..cdmaBaseAddress2", "0x0"},
        {R"({"featureRoms": [{"featureBitMap": {"value": "0x8", "auroraLink": "enabled"}}]})", "featureRoms..featureBitMap.auroraLink",
         "disabled"},
        {R"({"featureRoms": [{"featureBitMap": "0x8"}]})", "featureRoms..featureBitMap.boardScheduler", "disabled"},
        {R"({"busInterfaces": [{"name": "b", "dataWidth": "64", "numIdBits": "9"}]})", "busInterfaces..numIdBits", "0"},
        {R"({"memories": [{"name": "m", "highAddress": "99999999999999999999"}]})", "memories..highAddress", "9223372036854775807"},
        {R"({"memories": [{"name": "m", "lowAddress": "-1"}]})", "memories..lowAddress", "18446744073709551615"},
        {R"({"devices": [{"core": {"numComputeUnits": "65537"}}]})", "devices..core.numComputeUnits", "1"},
        {R"({"resources": [{"type": "bram", "count": "5"}, {"type": "REG", "count": "6"}]})", "resources..count", "5"},
        {R"({"validAcceleratorBinaryContentValues": ",a,,a,b"})", "validAcceleratorBinaryContentValues", ",a,b"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(parse(readAndRender(row.document)).get<std::string>(row.path, ""), row.text) << row.document;
}

TEST(DsaJsonFormat, NamesOfTheFeatureRomAreCutTo63Characters) {
    const std::string name(200, 'n');
    const ptree written = parse(readAndRender(R"({"featureRoms": [{"vbnvName": ")" + name + R"("}]})"));
    EXPECT_EQ(written.get<std::string>("featureRoms..vbnvName"), name.substr(0, 63));
}

TEST(DsaJsonFormat, WrongFormsReadAsNothing) {
    const char* lists[] = {"bvlcCompileXPSwitches",
                           "bvlcLinkXPSwitches",
                           "designIpInstances",
                           "reconfigPartitionIDs",
                           "vcePartitions",
                           "resources",
                           "devices",
                           "interfaces",
                           "memories",
                           "files",
                           "featureRoms",
                           "systemClocks",
                           "busInterfaces",
                           "nocConnectivity",
                           "ipParameters"};
    const std::string nothing = readAndRender("{}");
    for (const char* list : lists) {
        for (const char* value : {R"("text")", "true", "null", "[]", "{}"})
            EXPECT_EQ(readAndRender("{\"" + std::string(list) + "\": " + value + "}"), nothing) << list << " " << value;
    }
    for (const char* object : {"flash", "designIDs", "vceHardware", "board"})
        EXPECT_EQ(readAndRender("{\"" + std::string(object) + "\": \"text\"}"), readAndRender("{\"" + std::string(object) + "\": {}}"))
            << object;
    for (const char* document : {"[]", "[1, 2]", "\"text\"", "17"})
        EXPECT_EQ(readAndRender(document), nothing) << document;
    const std::string bare = readAndRender(R"({"devices": [{"core": {}}]})");
    for (const char* device : {R"({"core": "text"})", R"({"core": [], "scalableSystemClocks": "x"})",
                               R"({"core": {"availableResources": "x"}})", R"({"core": {"availableResources": {"pBlocks": "x"}}})"})
        EXPECT_EQ(readAndRender("{\"devices\": [" + std::string(device) + "]}"), bare) << device;
}

TEST(DsaJsonFormat, ConfigurationOfDesignIp) {
    HPLPlatform platform;
    ASSERT_TRUE(HZEPDsaJsonReader(&platform).parseJsonString(
        R"({"designIpInstances": [{"configuration": {"CONFIG.A": "1", "CONFIG": {"B": "2", "C": {"D": "3"}}, "E": ""}}]})"));
    std::map<std::string, std::string> configuration;
    platform.getDesignIPInstances().front()->getConfigParamMap(configuration);
    using Entry = std::pair<const std::string, std::string>;
    EXPECT_THAT(configuration, ElementsAre(Entry("CONFIG.A", "1"), Entry("CONFIG.B", "2"), Entry("CONFIG.C.D", "3"), Entry("E", "")));

    HPLPlatform twice;
    EXPECT_THROW(HZEPDsaJsonReader(&twice).parseJsonString(R"({"designIpInstances": [{"configuration": {"a": "1", "a": "2"}}]})"),
                 HostAlgException);

    // Names stay bounded, however deep a document nests them.
    const std::string key(dsa_json::kMaxNestedName, 'k');
    HPLPlatform deep;
    ASSERT_TRUE(HZEPDsaJsonReader(&deep).parseJsonString(R"({"designIpInstances": [{"configuration": {")" + key + R"(": {"x": "1"}}}]})"));
    deep.getDesignIPInstances().front()->getConfigParamMap(configuration);
    EXPECT_THAT(configuration, ElementsAre(Entry(key, "")));
}
