// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "Documents.h"
#include "HPLPlatform.h"
#include "WholePlatform.h"

#include <gtest/gtest.h>

namespace {

TEST(PlatformDocument, OfANewPlatformHoldsTheDefaults) {
    EXPECT_EQ(documentOf(HPLPlatform()), laidOut(R"({
        "versionMajor": "0", "versionMinor": "0", "hostArchitecture": "unknown", "hostInterface": "unknown", "usesPR": "true",
        "acceleratorBinaryFormat": "acclib2", "acceleratorBinaryContent": "bitstream", "dcpFunctionStripped": "false",
        "dcpEncrypted": "false", "defaultOutputType": "unknown",
        "designIntent": {
            "dataCenter": {"value": "false", "explicit": "false"}, "embedded": {"value": "false", "explicit": "false"},
            "externalHost": {"value": "false", "explicit": "false"}, "serverManaged": {"value": "false", "explicit": "false"}},
        "uniqueName": ":::0.0", "unifiedPlatform": "false", "expandablePlatform": "true", "hardware": "true", "softwareEmulation": "true",
        "hardwareEmulation": "false", "hardwareEmuPlatform": "false", "maxAXIMMManagers": "0", "maxAXIMMSubordinates": "0",
        "maxInterrupts": "0", "usesNIFD": "false", "generatedChangeList": "0", "vceHardware": {"arch": "NO_VCE"}
    })"));
}

TEST(PlatformDocument, LeavesOutWhatAFixedPlatformHasNotAndAHostItDoesNotUse) {
    HPLPlatform platform;
    platform.setUsesPR(false);
    platform.setExpandable(false);
    platform.addVcePartition(1, 2);
    const std::string document = documentOf(platform);
    for (const char* key :
         {"hostArchitecture", "hostInterface", "maxAXIMMManagers", "maxAXIMMSubordinates", "maxInterrupts", "vcePartitions"})
        EXPECT_EQ(document.find(std::string("\"") + key + "\""), std::string::npos) << key;
}

TEST(PlatformDocument, ComparesIgnoringCase) {
    HPLPlatform one;
    HPLPlatform other;
    fillWhole(one);
    fillWhole(other);
    EXPECT_TRUE(one.isEquals(other));
    other.setDescription("T154");
    EXPECT_TRUE(one.isEquals(other));
    other.setDescription("otherwise");
    EXPECT_FALSE(one.isEquals(other));
}

} // namespace
