// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HZEPDsaXmlWriter.h"

#include "DsaXmlSupport.h"
#include "HZEPDsaJsonReader.h"
#include "HZEPJSONText.h"
#include "HostErrors.h"
#include "WholePlatform.h"
#include "lmx60.h"

#include <boost/algorithm/string/join.hpp>
#include <boost/property_tree/ptree.hpp>
#include <gmock/gmock.h>

#include <filesystem>
#include <map>
#include <set>

using boost::property_tree::ptree;
using testing::HasSubstr;
using testing::Not;

namespace {

std::string written(HPLPlatform& platform) {
    TempDir dir;
    HZEPDsaXmlWriter(&platform, dir.path("dsa.xml")).writeDSA();
    return dir.read("dsa.xml");
}

/// A platform with the one device that a document needs.
struct Minimal : HPLPlatform {
    Minimal() { addDevice()->setName("fpga0"); }
};

using Leaves = std::map<std::string, std::string>;

void collectLeaves(const ptree& tree, const std::string& path, Leaves& leaves) {
    int index = 0;
    for (const auto& [key, child] : tree)
        collectLeaves(child, path + "/" + (key.empty() ? std::to_string(index++) : key), leaves);
    if (tree.empty())
        leaves[path] = tree.data();
}

Leaves leavesOf(const HPLPlatform& platform) {
    ptree tree;
    HZEPJSONText::read(documentOf(platform), tree);
    Leaves leaves;
    collectLeaves(tree, "", leaves);
    return leaves;
}

/// The paths that differ, each shortened to what it is part of when that is lost as a whole.
std::set<std::string> differences(const Leaves& before, const Leaves& after, std::initializer_list<const char*> wholes) {
    std::set<std::string> paths;
    const auto note = [&](const Leaves& from, const Leaves& in) {
        for (const auto& [path, value] : from) {
            const auto other = in.find(path);
            if (other != in.end() && other->second == value)
                continue;
            std::string shortened = path;
            for (const std::string whole : wholes) {
                if (path.rfind(whole + "/", 0) == 0)
                    shortened = whole;
            }
            paths.insert(shortened);
        }
    };
    note(before, after);
    note(after, before);
    return paths;
}

/// What the document of a card loses, or finds changed, on its way through XML.
const std::set<std::string> kLost = {
    "/busInterfaces",
    "/designIDs",
    "/designIntent/dataCenter/explicit",
    "/designIntent/externalHost/explicit",
    "/designIntent/externalHost/value",
    "/devices/0/core/availableResources/pBlocks/0/validSlrs", // comes back as one name
    "/devices/0/core/reconfigModuleName",
    "/devices/0/core/sourceViewInstPath",
    "/devices/0/numSLRs",
    "/drBdInstName",
    "/extendedIdCode",
    "/flash",
    "/genLink",
    "/genSwEmuLink",
    "/hardware",
    "/hardwareEmuPlatform",
    "/hardwareEmulation",
    "/hasExternalSources",
    "/hasMDAContent",
    "/idCode",
    "/ipParameters",
    "/maxAXIMMManagers", // counted from the bus interfaces
    "/nocConnectivity",
    "/reconfigPartitionIDs",
    "/resources", // those of the core
    "/rm",
    "/softwareEmulation",
    "/static",
    "/systemClocks",
    "/usesNIFD",
    "/vceHardware",
    "/vcePartitions",
};

} // namespace

TEST(HZEPDsaXmlWriter, WritesWhatWasRead) {
    HPLPlatform platform;
    ASSERT_TRUE(readDsa(platform, kDsaXml));
    EXPECT_EQ(written(platform), kDsaXml);
}

TEST(HZEPDsaXmlWriter, ALineOfTextComesBackInEveryCharacter) {
    const std::string text = "<&>\"'\t\n\r  \u00e9\u20ac\U0001f600 ]]>";
    Minimal platform;
    platform.setDescription(text);
    HPLPlatform read;
    ASSERT_TRUE(readDsa(read, written(platform)));
    EXPECT_EQ(read.getDescription(), text);
}

TEST(HZEPDsaXmlWriter, LeavesOutWhatIsEmpty) {
    Minimal platform;
    platform.setUsesPR(false);
    EXPECT_EQ(written(platform), R"xml(<?xml version="1.0" encoding="UTF-8"?>
<Root VersionMajor="1" VersionMinor="15">
  <GenAppInfo Name="" Version="" CL="0" TimeStamp=""/>
  <DSA Vendor="" BoardId="" Name="" VersionMajor="0" VersionMinor="0" Description="" FeatureRomTimestamp="0" DcpLogicFunctionStripped="false" DcpEncrypt="false" Unified="false" Fixed="false" DefaultOutputType="unknown">
    <Build UsesPR="false" AcceleratorBinaryContent="bitstream"/>
    <Board Name="" Vendor="" Part="">
      <Images>
        <Img Type="HDPI" File=""/>
        <Img Type="MDPI" File=""/>
        <Img Type="LDPI" File=""/>
      </Images>
    </Board>
    <Devices>
      <Device Name="fpga0" Type="">
        <Core Name="" Type="" ComputeUnits="0"/>
      </Device>
    </Devices>
    <Files/>
  </DSA>
</Root>
)xml");
}

TEST(HZEPDsaXmlWriter, TheHostAndItsIdNeedPartialReconfiguration) {
    Minimal platform;
    platform.setUsesPR(false);
    EXPECT_THAT(written(platform), Not(HasSubstr("<PCIeId")));
    platform.setUsesPR(true);
    EXPECT_THAT(written(platform), HasSubstr("<Host Architecture=\"unknown\" Interface=\"unknown\"/>"));
    EXPECT_THAT(written(platform), HasSubstr("<PCIeId Vendor=\"\" Device=\"\" Subsystem=\"\"/>"));
    // A flat shell has the id, and no host.
    platform.setUsesPR(false);
    platform.setState(HZEPHardwarePlatform::synth);
    platform.setExplicitDesignIntent(HZEPDesignIntentStorage::DataCenter, true);
    ASSERT_TRUE(platform.isFlatShell());
    EXPECT_THAT(written(platform), HasSubstr("<PCIeId"));
    EXPECT_THAT(written(platform), Not(HasSubstr("<Host")));
}

TEST(HZEPDsaXmlWriter, TheLastInterfaceAndFeatureRomStand) {
    Minimal platform;
    for (const char* name : {"first", "last"}) {
        platform.addInterface()->setName(name);
        platform.addFeatureRom()->setIPBuildID(name[0]);
    }
    const std::string text = written(platform);
    EXPECT_THAT(text, HasSubstr("<Interface Id=\"\" Name=\"last\" Type=\"\"/>"));
    EXPECT_THAT(text, Not(HasSubstr("first")));
    EXPECT_THAT(text, HasSubstr("IPBuildID=\"" + std::to_string('l') + "\""));
    HPLPlatform read;
    EXPECT_TRUE(readDsa(read, text));
}

/// The same card in JSON and in XML: all that may differ.
TEST(HZEPDsaXmlWriter, WhatXmlCannotHold) {
    HPLPlatform before;
    ASSERT_TRUE(HZEPDsaJsonReader(&before).parseJsonString(wholeMetadata()));
    HPLPlatform after;
    ASSERT_TRUE(readDsa(after, written(before)));
    before.setPlatformFile(after.getPlatformFile());
    const std::set<std::string> lost =
        differences(leavesOf(before), leavesOf(after),
                    {"/busInterfaces", "/designIDs", "/devices/0/core/availableResources/pBlocks/0/validSlrs", "/flash", "/ipParameters",
                     "/nocConnectivity", "/reconfigPartitionIDs", "/resources", "/systemClocks", "/vceHardware", "/vcePartitions"});
    EXPECT_EQ(boost::algorithm::join(lost, "\n"), boost::algorithm::join(kLost, "\n"));
    EXPECT_EQ(written(after), written(before)) << "a second round changes nothing";
}

TEST(HZEPDsaXmlWriter, WhatTheSchemaHasNoRoomFor) {
    TempDir dir;
    const std::string path = dir.write("dsa.xml", "old");
    HPLPlatform noDevice;
    EXPECT_THROW(HZEPDsaXmlWriter(&noDevice, path).writeDSA(), lmx60::lmx_exception);
    Minimal emptyBlock;
    emptyBlock.getDevice("fpga0")->getCore().getResourceMap("pblock_a");
    EXPECT_THROW(HZEPDsaXmlWriter(&emptyBlock, path).writeDSA(), lmx60::lmx_exception);
    EXPECT_EQ(dir.read("dsa.xml"), "old");

    Minimal platform;
    EXPECT_THROW(HZEPDsaXmlWriter(&platform, dir.path("no/dir/dsa.xml")).writeDSA(), HostXMLException);
    EXPECT_THROW(HZEPDsaXmlWriter(&platform, dir.path()).writeDSA(), HostXMLException);
    EXPECT_FALSE(std::filesystem::exists(dir.path("no")));
    platform.setDescription("a\x01 control character");
    EXPECT_THROW(HZEPDsaXmlWriter(&platform, path).writeDSA(), HostXMLException);
    EXPECT_EQ(dir.read("dsa.xml"), "old");
}
