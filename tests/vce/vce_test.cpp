// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "Documents.h"
#include "HPLPlatform.h"
#include "HZEPJSONText.h"
#include "HZEPVceHardware.h"
#include "HZEPVcePartition.h"
#include "HZEPVcePartitionsJsonReader.h"
#include "HostErrors.h"
#include "JSONObjectWriter.h"
#include "TempDir.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

TEST(VceHardware, KnowsItsArchitecturesByName) {
    EXPECT_EQ(HZEPVceHardware::getArchMap().size(), 6u);
    for (const auto& [arch, name] : HZEPVceHardware::getArchMap())
        EXPECT_EQ(HZEPVceHardware::stringToArch(name), arch);
    EXPECT_EQ(HZEPVceHardware::stringToArch("VCE2PS"), 4);
    EXPECT_EQ(HZEPVceHardware::archToString(HZEPVceHardware::stringToArch("X")), "NO_VCE");
    EXPECT_EQ(HZEPVceHardware::archToString(static_cast<HZEPVceHardware::Arch>(7)), "NO_VCE");
}

TEST(VceHardware, WritesOnlyTheRowsThatItHas) {
    HZEPVceHardware hardware;
    hardware.setStartShimRow(3);
    EXPECT_EQ(documentOf(hardware), "{\n    \"arch\": \"NO_VCE\"\n}\n");

    hardware.setArch("VCEML");
    hardware.setNpiBaseAddress(0xF0000000u);
    hardware.setNumShimRows(1);
    hardware.setStartCoreRow(-2);
    hardware.setNumCoreRows(8);
    hardware.setStartMemRow(9);
    EXPECT_EQ(documentOf(hardware), laidOut(R"({"arch": "VCEML", "npiBaseAddress": "4026531840", "shimRows": {"start": "3", "num": "1"},
        "coreRows": {"start": "-2", "num": "8"}})"));
}

TEST(VcePartition, FindsAndComparesItsSubPartitions) {
    HZEPVcePartition root(0, 1);
    EXPECT_TRUE(root.isPartition());
    EXPECT_FALSE(root.hasPartitions());
    root.addPartition(0, 4).addPartition(2, 2);
    root.addPartition(4, 4).plIntefaceID("pl1");
    root.addPartition(4, 4);

    EXPECT_EQ(root.findPartition(4, 4).plIntefaceID(), "pl1");
    EXPECT_FALSE(root.findPartition(2, 2).isPartition()) << "looks no deeper";
    EXPECT_EQ(&root.findPartition(9, 9), &HZEPVcePartition().findPartition(0, 0));
    EXPECT_TRUE(root.hasPartition("pl1"));
    EXPECT_FALSE(root.hasPartition("pl2"));

    HZEPVcePartition copy = root;
    EXPECT_EQ(copy, root);
    copy.partitions()[0].partitions()[0].uuid("other");
    EXPECT_NE(copy, root);
    copy.clear();
    EXPECT_EQ(copy, HZEPVcePartition());
}

TEST(VcePartition, ComesBackFromItsOwnText) {
    HZEPVcePartition root(0, 10);
    root.vceInst("engine0");
    root.uuid("1234");
    root.addPartition(6, 4).plIntefaceID("pl6");
    zep_platform::JSONObjectWriter writer;
    root.toJSON(writer);
    std::ostringstream text;
    writer.write(text);
    EXPECT_EQ(text.str(), laidOut(R"({"vceInst": "engine0", "startColumn": "0", "numColumns": "10", "uuid": "1234",
        "partitions": [{"startColumn": "6", "numColumns": "4", "plIntefaceID": "pl6"}]})"));
    HZEPVcePartition again(7, 7);
    again.addPartition(1, 1);
    again.fromJSON(writer.getTree());
    EXPECT_EQ(again, root);
}

TEST(VcePartitionsReader, MakesAPartitionOfEachInstanceWithColumns) {
    const TempDir dir;
    const std::string file = dir.write("vce_partition.json", R"({"VCE": {
        "upper": {"startColumn": 0, "numColumns": 20, "uuid": "u0", "vce_pl_intf_id": "p0", "partitions": {
            "x": {"startColumn": 0, "numColumns": 5, "uuid": "u1", "vce_pl_intf_id": "p1", "partitions": [{"numColumns": 1}]},
            "y": {"startColumn": 5},
            "z": {"startColumn": 5, "numColumns": "15"}}},
        "none": {"numColumns": 0, "partitions": [{"numColumns": 3}]},
        "lower": {"numColumns": 1}}})");
    HPLPlatform platform;
    HZEPVcePartitionsJsonReader(platform).parse(file);
    HZEPVcePartition upper(0, 20);
    upper.isRoot(true);
    upper.vceInst("upper");
    upper.uuid("u0");
    upper.plIntefaceID("p0");
    HZEPVcePartition& x = upper.addPartition(0, 5);
    x.vceInst("upper");
    x.uuid("u1");
    x.plIntefaceID("p1");
    upper.addPartition(5, 15).vceInst("upper");
    HZEPVcePartition lower(0, 1);
    lower.isRoot(true);
    lower.vceInst("lower");
    EXPECT_EQ(platform.getVcePartitions(), (std::vector<HZEPVcePartition>{upper, lower}));
}

TEST(VcePartitionsReader, RefusesWhatIsNoJsonAndTakesAFileWithoutPartitions) {
    const TempDir dir;
    HPLPlatform platform;
    HZEPVcePartitionsJsonReader reader(platform);
    for (const std::string& bad : {dir.write("bad.json", "{\"VCE\": {"), dir.path("missing.json"), dir.path()}) {
        try {
            reader.parse(bad);
            ADD_FAILURE() << bad;
        } catch (const HostAlgException& error) {
            EXPECT_EQ(error.what(), "An error occurred while parsing the vce partitions json file: " + bad);
        }
    }
    reader.parse(dir.write("other.json", "{\"vce\": {\"a\": {\"numColumns\": 1}}}"));
    reader.parse(dir.write("scalar.json", "{\"VCE\": \"text\"}"));
    EXPECT_TRUE(platform.getVcePartitions().empty());
}
