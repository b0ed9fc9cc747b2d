// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "Documents.h"
#include "HPLPlatform.h"
#include "HZEPDsaJsonReader.h"

#include <gtest/gtest.h>

#include <string>

namespace {

std::string writtenFor(const std::string& metadata) {
    HPLPlatform platform;
    EXPECT_TRUE(HZEPDsaJsonReader(&platform).parseJsonString(metadata));
    return documentOf(platform);
}

std::string list(const std::string& name, const std::string& items) {
    return "\"" + name + "\": [" + items + "],";
}

} // namespace

// Blanks make a text large without changing what it says; the lists of a large text are read item by item.
TEST(LargeMetadata, SaysTheSameAsTheSmallText) {
    std::string interfaces;
    for (int i = 0; i < 40; ++i)
        interfaces += std::string(i ? "," : "") + "{\"name\": \"M" + std::to_string(i) +
                      "\", \"mode\": \"master\", \"addressSegments\": [{\"name\": \"seg\", \"index\": \"" + std::to_string(i) + "\"}, {}]}";
    const std::string text = "{\"name\": \"card\"," + list("busInterfaces", interfaces) +
                             list("busInterfaces", "{\"name\": \"a second list of the name\"}") +
                             list("memories", "{\"name\": \"HBM\", \"type\": \"hbm\", \"size\": \"0x1000\", \"spTag\": \"HBM\"}") +
                             list("nocConnectivity", "") + list("ipParameters", "{\"name\": \"p\", \"value\": \"1\"}, \"no object\"") +
                             list("devices", "{\"name\": \"fpga0\", \"core\": {\"name\": \"OCL_REGION_0\"}}") +
                             "\"featureRoms\": {\"no\": {\"vbnvName\": \"list\"}}, \"resources\": [{\"type\": \"LUT\", \"count\": \"7\"}]}";
    const std::string small = writtenFor(text);
    EXPECT_EQ(writtenFor(text + std::string(300'000, ' ')), small);
    EXPECT_NE(small.find("\"M39\""), small.npos);
    EXPECT_EQ(small.find("second list"), small.npos);
}

TEST(LargeMetadata, RaisesForADeviceWithoutItsCore) {
    HPLPlatform platform;
    const std::string text = "{\"devices\": [{\"name\": \"fpga0\"}]}" + std::string(300'000, ' ');
    EXPECT_THROW(HZEPDsaJsonReader(&platform).parseJsonString(text), boost::property_tree::ptree_bad_path);
}
