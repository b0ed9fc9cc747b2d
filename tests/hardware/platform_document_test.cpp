// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HPLPlatform.h"
#include "document_text.h"

#include <gtest/gtest.h>

namespace {

/// Something in every field that is written.
void fill(HPLPlatform& platform) {
    platform.setVersionMajor(4294967295);
    platform.setVersionMinor(2);
    platform.setHostArch("x86_64");
    platform.setHostInterface("pcie");
    platform.setPlatformState("impl");
    platform.setTopModuleName("top");
    platform.addValidBinaryContentValue("bitstream");
    platform.addValidBinaryContentValue("dcp");
    platform.addBvlcCompileXpSwitch("param:a=b");
    platform.addBvlcLinkXpSwitch("param:c=d");
    platform.addBvlcLinkXpSwitch("param:c=d");
    platform.setDcpFuncStripped(true);
    platform.setDcpEncrypt(true);
    platform.setDefaultOutputType("xp");
    platform.addValidOutputTypeValue("xp");
    platform.setComputedDesignIntent(HZEPDesignIntentStorage::DataCenter, true);
    platform.setExplicitDesignIntent(HZEPDesignIntentStorage::ServerManaged, true);

    HPLBoard& board = platform.getBoard();
    board.setName("rb200");
    board.setVendor("ridge");
    board.setPart("part");
    board.setBoardPart("ridge:rb200:1.0");
    board.setImgFileHdpi("h.png");
    board.setImgFileMdpi("m.png");
    board.setImgFileLdpi("l.png");
    board.addDimmConnector("c0", "Slot 0", "DIMM", "d0", "Module 0", true, false);
    board.addDriver()->setName("unseen");
    board.addDriver();
    board.getWriteablePCIeId().setVendor("0x1d0f");
    board.getWriteablePCIeId().setDevice("0x5000");
    board.getWriteablePCIeId().setSubsystem("0x000e");
    board.getWriteablePCIeId().setFeatureId("f");

    HPLDevice* device = platform.addDevice();
    device->setName("fpga0");
    device->setType("zz");
    device->setFpgaPart("xx:tlv9pz:fsgd2104:-2:e:L:es1");
    device->setNumSLRs(3);
    device->addSystemClock("u1", "300");
    device->addSystemClock("u0", "500");
    HPLCore& core = device->getCore();
    core.setName("OCL_Region_0");
    core.setType("clc_region");
    core.setInstPath("top/region");
    core.setSourceViewInstPath("src/region");
    core.setParentRMInstPath("top");
    core.setReconfigModuleName("rm");
    core.setDRBDName("dr.bd");
    core.setDRBaseAddress("0x10");
    core.setVlnv("v:l:n:1");
    core.setNumComputeUnits(60);
    core.addResourceInfo("pblock_a", "BRAM", "12");
    core.addResourceInfo("pblock_a", "DSPs", "13");
    core.addResourceInfo("pblock_a", "LUT", "0");
    core.addSLRInfo("pblock_a", std::vector<std::string>{"SLR1", "SLR0"});
    core.setRegisterCount("99");
    core.addConfigParam("p", "1");
    HPLPort* port = core.addPort();
    port->setName("ACLK");
    port->setType("clk");
    port->setMode("slave");
    port->setBase("0x0");
    port->setRange("4K");
    port->setDataWidth("1");
    port->setProtocol("none");
    port->setIdWidth("2");
    port->setAddrWidth("3");
    port->setUserWidth("4");
    port->setAddrOffset("5");
    port->setAddrRange("6");
    port->setMaxBurstLength("7");
    port->setFrequency("250");
    port->setPolarity("high");
    port->setDirection("in");
    port->addAddressSegment(new HPLAddressSegment);

    HPLInterface* interface = platform.addInterface();
    interface->setId("int0");
    interface->setName("PCIe");
    interface->setType("gen3x16");
    HPLMemory* memory = platform.addMemory();
    memory->setName("m0");
    memory->setType("ddr4");
    memory->setSize("16GB");
    memory->addConfigParam("DATA_WIDTH", "64");
    memory->addConfigParam("C0.DDR4_CL", "17");
    memory->setHighestAddress(5);
    HPLFile* file = platform.addFile("HPFM", "plat.hpfm");
    file->setUsedIn("synth");
    file->setProcessingOrder("early");

    platform.setVendor("ridge");
    platform.setBoardId("rb200");
    platform.setName("gen/3");
    platform.setDescription("described");
    platform.setDetailedDescription("described in detail");
    platform.setPlatformFile("/plat/x.kar");
    platform.setUnifiedPlatform(true);
    platform.setSupportsHardware(false);
    platform.setSupportsSWEmulation(false);
    platform.setIsHWEmuPlatform(true);
    platform.setUsesNIFD(true);
    platform.setStatic(true);
    platform.setRM(true);
    platform.setDrBdInstName("dr_i");
    platform.setGeneratedName("Druvel");
    platform.setGeneratedVersion("2021.1");
    platform.setGeneratedChangeList(3000000000);
    platform.setGeneratedIpChangeList("ip");
    platform.setGeneratedSharedDataChangeList("shared");
    platform.setGeneratedTimestamp("now");
    platform.setHasExternalSources(true);
    platform.setHasMDAContent(true);
    platform.setGeneratedByLink(true);
    platform.setGeneratedBySwEmuLink(true);
    platform.setIdCode("0x1");
    platform.setExtendedIdCode("0x2");
    platform.setFlashInterfaceType("spix4");
    platform.setFlashOffsetAddress("0x0");
    platform.setFlashSize("1024");
    platform.setDesignID(1);
    platform.setParentID(2);
    platform.setNodeID(3);
    platform.setFunctionID(4);
    platform.setVCENodeID(5);
    platform.setVCEUniqueID(6);
    platform.setVCEPuID(7);
    platform.addReconfigPartition()->setNodeID(8);
    platform.addReconfigPartition();
    platform.getVceHardware().setArch("VCE1");
    HZEPVcePartition* root = platform.addVcePartition(1, 2);
    root->vceInst("vce_0");
    root->addPartition(1, 1).uuid("u");
    HZEPDesignIPInstance* ip = platform.addDesignIPInstance();
    ip->setVLNV("v:l:cips:1");
    ip->setInstanceName("cips_0");
    ip->addConfigParam("PS.CLK", "33");
    ip->addConfigParam("PS.DDR", "1");
    platform.setBRAMCount(10);
    platform.setFFCount(11);
    for (const char* name : {"kernel", "data"}) {
        HZEPSystemClock* clock = platform.addSystemClock();
        clock->setName(name);
        clock->setOrigName("orig");
        clock->setFrequency("300.0");
        clock->setInstRef("i");
        clock->setCompRef("c");
        clock->setPeriod("3.3");
        clock->setNormalizedPeriod(".0033");
        clock->setStatus("scalable");
    }
    platform.addSystemClock()->setId(0);
    platform.setDefaultClkId(-1);
    HZEPHardwareIPParam* param = platform.addHardwareIPParam();
    param->setName("n");
    param->setValue("v");
    param->setInstRef("i");
    param->setCompRef("c");
    param->setIsValid("TRUE");
    const auto fillBus = [](HZEPHardwareBusInterface* bus) {
        bus->setName("M00");
        bus->setMode("master");
        bus->setInstRef("i");
        bus->setCompRef("c");
        bus->setBusTypeRef("aximm");
        bus->setBusInterfaceRef("m00");
        bus->setClockRef("clk");
        bus->setResetRef("rst");
        bus->setMemPort("memss");
        bus->setSPTag("HBM");
        bus->setSLR("SLR0");
        bus->setMemoryInstance("hbm");
        bus->setDataWidth(-1);
        bus->setNumIdBits(2);
        bus->setAddressSegment("seg");
        bus->setDirection("out");
        bus->setISRId(3);
        bus->setCategory("cat");
        bus->setSize("unwritten");
        bus->setMaxMasters(1);
        HZEPHardwareAddressSegment* segment = bus->addAddressSegment();
        segment->setBaseName("base");
        segment->setIndex(4294967295);
        segment->setMemoryInstance("hbm");
        segment->setAuto("true");
        segment->setSpTag("HBM");
        segment->setSlr("SLR0");
        segment->setMaxMasters(16);
        segment->setName("HBM00");
        segment->setInstanceRef("i");
        segment->setRegion("r");
        segment->setReadBwUsed(-5);
        segment->setWriteBwUsed(6);
        segment->setInterleave(7);
    };
    fillBus(platform.addBusInterface());
    HZEPHardwareNocConnectivity* noc = platform.addNocConnectivity();
    noc->setInstanceRef("noc_0");
    fillBus(noc->addBusInterface());
    platform.addFeatureRom()->setFeatureBitMap(0x10001);
}

const char* const kBus = R"({"name": "M00", "mode": "master", "instRef": "i", "compRef": "c", "typeRef": "aximm", "interfaceRef": "m00",
    "clockRef": "clk", "resetRef": "rst", "memPort": "memss", "spTag": "HBM", "slr": "SLR0", "memoryInstance": "hbm", "dataWidth": "-1",
    "numIdBits": "2", "addressSegment": "seg", "direction": "out", "isrId": "3", "category": "cat",
    "addressSegments": [{"baseName": "base", "index": "4294967295", "memoryInstance": "hbm", "auto": "true", "spTag": "HBM", "slr": "SLR0",
        "maxMasters": "16", "name": "HBM00", "instRef": "i", "region": "r", "readBwUsed": "-5", "writeBwUsed": "6", "interleave": "7"}]})";

TEST(PlatformDocument, HoldsEveryKeyInOrder) {
    HPLPlatform platform;
    fill(platform);
    const std::string bus = kBus;
    EXPECT_EQ(documentOf(platform), laidOut(R"({
        "versionMajor": "4294967295", "versionMinor": "2", "hostArchitecture": "x86_64", "hostInterface": "pcie", "usesPR": "true",
        "platformState": "impl", "topModuleName": "top", "acceleratorBinaryFormat": "acclib2", "acceleratorBinaryContent": "bitstream",
        "validAcceleratorBinaryContentValues": "bitstream,dcp", "bvlcCompileXPSwitches": ["param:a=b"],
        "bvlcLinkXPSwitches": ["param:c=d", "param:c=d"], "dcpFunctionStripped": "true", "dcpEncrypted": "true", "defaultOutputType": "xp",
        "designIntent": {
            "dataCenter": {"value": "true", "explicit": "false"}, "embedded": {"value": "false", "explicit": "false"},
            "externalHost": {"value": "false", "explicit": "false"}, "serverManaged": {"value": "true", "explicit": "true"}},
        "board": {"name": "rb200", "vendor": "ridge", "part": "part", "boardPart": "ridge:rb200:1.0", "imageFileHdpi": "h.png",
            "imageFileMdpi": "m.png", "imageFileLdpi": "l.png",
            "connectors": [{"name": "c0", "displayName": "Slot 0", "type": "DIMM", "connectedName": "d0",
                "connectedDisplayName": "Module 0", "connected": "true", "locked": "false"}],
            "drivers": ["true", "true"],
            "pcie": {"vendor": "0x1d0f", "device": "0x5000", "subsystem": "0x000e", "featureId": "f"}},
        "devices": [{"name": "fpga0", "type": "zz", "fpgaPart": "xx:tlv9pz:fsgd2104:-2:e:L:es1",
            "part": {"name": "tlv9pz-fsgd2104-2-e-L-es1", "architecture": "xx", "device": "tlv9pz", "package": "fsgd2104",
                "speedGrade": "-2", "tempGrade": "e", "staPower": "L", "revision": "es1"},
            "numSLRs": "3",
            "scalableSystemClocks": [{"name": "u0", "frequency": "500"}, {"name": "u1", "frequency": "300"}],
            "core": {"name": "OCL_Region_0", "type": "clc_region", "instPath": "top/region", "sourceViewInstPath": "src/region",
                "parentRMInstPath": "top", "reconfigModuleName": "rm", "drBDName": "dr.bd", "vlnv": "v:l:n:1", "clockFreq": "250",
                "numComputeUnits": "60",
                "availableResources": {"bramCount": "12", "dspCount": "13", "registerCount": "99",
                    "pBlocks": [{"name": "pblock_a", "validSlrs": ["SLR0", "SLR1"],
                        "resources": [{"name": "BRAM", "value": "12"}, {"name": "DSPs", "value": "13"}, {"name": "LUT", "value": "0"}]}]},
                "configParams": [{"name": "p", "value": "1"}],
                "ports": [{"name": "ACLK", "type": "clk", "mode": "slave", "base": "0x0", "range": "4K", "dataWidth": "1",
                    "protocol": "none", "idWidth": "2", "addrWidth": "3", "userWidth": "4", "addrOffset": "5", "addrRange": "6",
                    "maxBurstLength": "7", "frequency": "250", "polarity": "high", "direction": "in"}]}}],
        "interfaces": [{"id": "int0", "name": "PCIe", "type": "gen3x16"}],
        "memories": [{"name": "m0", "type": "ddr4", "size": "16GB",
            "configParams": [{"name": "C0.DDR4_CL", "value": "17"}, {"name": "DATA_WIDTH", "value": "64"}],
            "lowAddress": "0", "highAddress": "5"}],
        "files": [{"name": "plat.hpfm", "type": "HPFM", "usedIn": "synth", "processingOrder": "early"}],
        "vendor": "ridge", "boardId": "rb200", "name": "gen/3", "description": "described", "detailedDescription": "described in detail",
        "uniqueName": "ridge:rb200:gen/3:4294967295.2", "fpgaPart": "xx:tlv9pz:fsgd2104:-2:e:L:es1", "fpgaDevice": "tlv9pz",
        "interfaceDescription": "PCIe gen3x16", "platformFile": "/plat/x.kar", "unifiedPlatform": "true", "expandablePlatform": "true",
        "hardware": "false", "softwareEmulation": "false", "hardwareEmulation": "true", "hardwareEmuPlatform": "true",
        "maxAXIMMManagers": "1", "maxAXIMMSubordinates": "0", "maxInterrupts": "0", "usesNIFD": "true", "static": "true", "rm": "true",
        "drBdInstName": "dr_i", "generatedName": "Druvel", "generatedVersion": "2021.1", "generatedChangeList": "3000000000",
        "generatedIpChangeList": "ip", "generatedSharedDataChangeList": "shared", "generatedTimestamp": "now",
        "hasExternalSources": "true", "hasMDAContent": "true", "genLink": "true", "genSwEmuLink": "true", "idCode": "0x1",
        "extendedIdCode": "0x2", "flash": {"interfaceType": "spix4", "offsetAddress": "0x0", "size": "1024"},
        "designIDs": {"designID": "1", "parentID": "2", "nodeID": "3", "functionID": "4",
            "vcengineIDs": {"nodeID": "5", "uniqueID": "6", "puID": "7"}},
        "reconfigPartitionIDs": [{"nodeID": "8"}],
        "vceHardware": {"arch": "VCE1"},
        "vcePartitions": [{"vceInst": "vce_0", "startColumn": "1", "numColumns": "2",
            "partitions": [{"startColumn": "1", "numColumns": "1", "uuid": "u"}]}],
        "designIpInstances": [{"vlnv": "v:l:cips:1", "instance": "cips_0", "configuration": {"PS": {"CLK": "33", "DDR": "1"}}}],
        "resources": [{"type": "BRAM", "count": "10"}, {"type": "FF", "count": "11"}, {"type": "REG", "count": "99"}],
        "systemClocks": [
            {"default": "false", "name": "kernel", "origName": "orig", "id": "-1", "frequency": "300.0", "instRef": "i", "compRef": "c",
                "period": "3.3", "normalizedPeriod": ".0033", "status": "scalable"},
            {"default": "true", "name": "data", "origName": "orig", "id": "-1", "frequency": "300.0", "instRef": "i", "compRef": "c",
                "period": "3.3", "normalizedPeriod": ".0033", "status": "scalable"},
            {"default": "false", "id": "0"}],
        "ipParameters": [{"name": "n", "value": "v", "instRef": "i", "compRef": "c", "valid": "TRUE"}],
        "busInterfaces": [)" + bus + R"(],
        "nocConnectivity": [{"instRef": "noc_0", "busInterfaces": [)" +
                                            bus + R"(]}],
        "featureRoms": [{"majorVersion": "0", "minorVersion": "0", "druvelBuildID": "0", "ipBuildID": "0", "timeSinceEpoch": "0",
            "ddrChannelCount": "0", "ddrChannelSize": "0", "drBaseAddress": "0x0",
            "featureBitMap": {"value": "0x10001", "unifiedPlatform": "enabled", "auroraLink": "disabled", "boardMgmt": "disabled",
                "boardScheduler": "disabled", "promType": "0x0", "debugType": "0x0", "peerToPeer": "enabled", "uuid": "disabled",
                "clockThrottling": "disabled", "passthruTrans": "disabled"},
            "uuid": "00000000-0000-0000-0000-000000000000", "cdmaBaseAddress0": "0x0", "cdmaBaseAddress1": "0x0",
            "cdmaBaseAddress2": "0x0", "cdmaBaseAddress3": "0x0", "maxTempLimit": "0", "maxPowerLimit": "0"}]
    })"));
}

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
    fill(one);
    fill(other);
    EXPECT_TRUE(one.isEquals(other));
    other.setDescription("DESCRIBED");
    EXPECT_TRUE(one.isEquals(other));
    other.setDescription("described otherwise");
    EXPECT_FALSE(one.isEquals(other));
}

} // namespace
