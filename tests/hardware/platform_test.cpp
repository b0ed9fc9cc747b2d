// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HPLPlatform.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>

namespace {

using Texts = std::vector<std::string>;

TEST(Platform, FindsNothingWhenItHoldsNothing) {
    const HPLPlatform platform;
    EXPECT_EQ(platform.getMemSizeInGb(3), 0);
    EXPECT_EQ(platform.getDefaultClock(), nullptr);
    EXPECT_EQ(platform.getBusInterfaceByName(""), nullptr);
    EXPECT_EQ(platform.findReconfigPartition(0), nullptr);
}

TEST(Platform, ComposesItsNames) {
    HPLPlatform platform;
    platform.setVendor("a");
    platform.setBoardId("b");
    platform.setName("c");
    platform.setVersionMajor(1);
    platform.setVersionMinor(2);
    EXPECT_EQ(platform.getPrettyName(), "B (c)");
    platform.setComputedDesignIntent(HZEPDesignIntentStorage::Embedded, true);
    EXPECT_EQ(platform.getPrettyName(), "c");
}

TEST(Platform, DescribesTheInterfaceOfAnAttachedHost) {
    HPLPlatform platform;
    HPLDevice* device = platform.addDevice();
    device->setFpgaPart("x:TLV9PZ:p:-2");
    EXPECT_EQ(platform.getInterfaceDesc(), "");
    platform.setExplicitDesignIntent(HZEPDesignIntentStorage::ExternalHost, true);
    EXPECT_EQ(platform.getInterfaceDesc(), "PCIe gen3x16");
    device->setFpgaPart("x:other:p:-2");
    EXPECT_EQ(platform.getInterfaceDesc(), "PCIe gen3x8");
    HPLInterface* interface = platform.addInterface();
    interface->setName("PCIe");
    EXPECT_EQ(platform.getInterfaceDesc(), "PCIe gen3x8");
    interface->setType("gen4x8");
    EXPECT_EQ(platform.getInterfaceDesc(), "PCIe gen4x8");
}

TEST(Platform, ReadsMemorySizes) {
    const struct {
        const char* size;
        int gigabytes;
    } rows[] = {{"16GB", 16},
                {"16 GB", 16},
                {"512MB", 0},
                {"16", 0},
                {"GB", 0},
                {"GB16", 0},
                {"16gb", 0},
                {"8GB or 16GB", 8},
                {"007 GB", 7},
                {"4\n8GB GB", 4},
                {"2147483647GB", 2147483647}};
    HPLPlatform all;
    for (const auto& row : rows) {
        HPLPlatform platform;
        platform.addMemory()->setSize(row.size);
        EXPECT_EQ(platform.getMemSizeInGb(0), row.gigabytes) << row.size;
        all.addMemory()->setSize(row.size);
    }
    EXPECT_EQ(all.getTotalMemSizeInGb(), 2147483647) << "the sum stays in range";

    HPLPlatform platform;
    platform.addMemory()->setSize("16GB");
    platform.addMemory()->setSize("512MB");
    EXPECT_EQ(platform.getMemSize(), "16 GB");
    EXPECT_THROW(platform.getMemSizeInGb(2), std::out_of_range);
}

TEST(Platform, RaisesOverMemorySizesThatAreNoNumbers) {
    const auto raisesStoi = [](const std::string& size, auto&& kind) {
        HPLPlatform platform;
        platform.addMemory()->setSize(size);
        try {
            platform.getMemSize();
            ADD_FAILURE() << size;
        } catch (const std::decay_t<decltype(kind)>& error) {
            EXPECT_STREQ(error.what(), "stoi");
        }
    };
    raisesStoi("", std::invalid_argument(""));
    raisesStoi("about 16GB", std::invalid_argument(""));
    raisesStoi("2147483648GB", std::out_of_range(""));
    raisesStoi("x" + std::string(200000, '1') + "GB", std::invalid_argument(""));
}

TEST(Platform, AsksFirstAndLastDevice) {
    HPLPlatform platform;
    HPLDevice* host = platform.addDevice();
    host->setName("host0");
    host->setFpgaPart("x:dev:pkg:-1:i");
    host->getCore().setNumComputeUnits(4);
    HPLDevice* fpga = platform.addDevice();
    fpga->setName("fpga0");
    HPLCore& core = fpga->getCore();
    core.setNumComputeUnits(60);
    core.setRegisterCount("1200");
    core.setInstPath("top/region");
    core.setParentRMInstPath("top");
    core.setReconfigModuleName("rm");
    core.addSLRInfo("p", "SLR0");
    platform.addDevice()->setName("fpga0");
    platform.setRegisterCount(7);

    EXPECT_EQ(platform.getFpgaPart(), "x:dev:pkg:-1:i");
    EXPECT_EQ(platform.getFpgaDevice(), "dev");
    EXPECT_EQ(platform.getPartName(), "dev-pkg-1-i");
    EXPECT_EQ(platform.getDevice("fpga0"), fpga);
    EXPECT_EQ(platform.getDevice("FPGA0"), nullptr);
    EXPECT_EQ(platform.getNumComputeUnits(), 0u) << "of the last device";
    EXPECT_EQ(platform.getOCLRegionCount(), 3u);
    EXPECT_EQ(platform.getRegisterCount(), 1200);
    EXPECT_EQ(platform.getOclInstPath(), "top/region");
    EXPECT_EQ(platform.getReconfigModuleName(), "rm");
    EXPECT_TRUE(platform.usesExpandedPR());
    Texts names;
    platform.getValidSLRNames(names);
    EXPECT_EQ(names, Texts{"SLR0"});

    platform.setLUTCount(5);
    platform.setDSPCount(-1);
    platform.setBRAMCount(3);
    Texts types, counts;
    platform.getAllResources(types, counts);
    EXPECT_EQ(types, (Texts{"BRAM", "LUT", "REG"}));
    EXPECT_EQ(counts, (Texts{"3", "5", "1200"}));
}

TEST(Platform, PicksTheLastOfEqualClocks) {
    HPLPlatform platform;
    const struct {
        const char* name;
        int id;
        const char* frequency;
        const char* status;
    } clocks[] = {{"data", 0, "100", ""}, {"kernel", 1, "200", ""}, {"data", 1, "300", "fixed"}};
    for (const auto& row : clocks) {
        HZEPSystemClock* clock = platform.addSystemClock();
        clock->setName(row.name);
        clock->setId(row.id);
        clock->setFrequency(row.frequency);
        clock->setStatus(row.status);
    }
    EXPECT_EQ(platform.getClockFrequency("data"), "300");
    EXPECT_EQ(platform.getClockId("data"), "1");
    EXPECT_EQ(platform.getClockId("DATA"), "");
    EXPECT_EQ(platform.getPlatformFrequency(1), "300");
    EXPECT_EQ(platform.getPlatformFrequency(2), "");
    platform.setDefaultClkId(1);
    EXPECT_EQ(platform.getDefaultClockName(), "data");
    EXPECT_EQ(platform.getDefaultClockFrequency(), "300");
    platform.setDefaultClkId(9);
    EXPECT_EQ(platform.getDefaultClockId(), "9");
    EXPECT_EQ(platform.getDefaultClockName(), "");
    Texts names, frequencies;
    platform.getAllClockFrequencies(names, frequencies);
    EXPECT_EQ(names, (Texts{"data", "kernel", "data"}));
    EXPECT_EQ(frequencies, (Texts{"100", "200", "300"}));

    EXPECT_TRUE(platform.hasFixedClocks());
    EXPECT_FALSE(platform.hasScalableClocks());
    HPLDevice* device = platform.addDevice();
    device->addSystemClock("user", "300");
    EXPECT_FALSE(platform.hasUserDefinedScalableClocks()) << "only fpga0 counts";
    device->setName("fpga0");
    EXPECT_TRUE(platform.hasScalableClocks());
}

TEST(Platform, CountsBusInterfacesInAnyCase) {
    HPLPlatform platform;
    const struct {
        const char* type;
        const char* mode;
        int width;
    } buses[] = {{"AXIMM", "Master", 512}, {"aximm", "master", -1}, {"aximm", "slave", 64},
                 {"interrupt", "", 0},     {"Interrupt", "x", 0},   {"axis", "master", 128}};
    for (const auto& row : buses) {
        HZEPHardwareBusInterface* bus = platform.addBusInterface();
        bus->setBusTypeRef(row.type);
        bus->setMode(row.mode);
        bus->setDataWidth(row.width);
    }
    EXPECT_EQ(platform.getMaxAXIMMManagers(), 2u);
    EXPECT_EQ(platform.getMaxAXIMMSubordinates(), 1u);
    EXPECT_EQ(platform.getMaxInterrupts(), 2u);
    EXPECT_EQ(platform.getBusInterfaceMaxDataWidth(), 512);
}

TEST(Platform, KnowsItsStateAndFlatShells) {
    HPLPlatform platform;
    EXPECT_EQ(platform.getState(), 3);
    for (const int state : {0, 1, 2}) {
        platform.setState(static_cast<HZEPHardwarePlatform::PlatformState>(state));
        EXPECT_EQ(platform.getPlatformState(), (Texts{"synth", "impl", "pre_synth"})[static_cast<std::size_t>(state)]);
        EXPECT_EQ(platform.getState(), state);
        platform.setUsesPR(false);
        platform.setComputedDesignIntent(HZEPDesignIntentStorage::DataCenter, true);
        EXPECT_EQ(platform.isSynthFlatShell(), state == 0);
        EXPECT_EQ(platform.isPreSynthFlatShell(), state == 2);
        EXPECT_EQ(platform.isFlatShell(), state != 1);
        platform.setUsesPR(true);
        EXPECT_FALSE(platform.isFlatShell());
        platform.setUsesPR(false);
        platform.setExpandable(false);
        EXPECT_FALSE(platform.isFlatShell());
        platform.setExpandable(true);
        platform.setExplicitDesignIntent(HZEPDesignIntentStorage::DataCenter, false);
        EXPECT_FALSE(platform.isFlatShell());
        platform.setExplicitDesignIntent(HZEPDesignIntentStorage::DataCenter, true);
    }
    platform.setPlatformState("Synth");
    EXPECT_EQ(platform.getState(), 3);
    platform.setState(static_cast<HZEPHardwarePlatform::PlatformState>(17));
    EXPECT_EQ(platform.getPlatformState(), "");
}

TEST(Platform, TranslatesHostNames) {
    HPLPlatform platform;
    EXPECT_EQ(platform.getHostArch(), "unknown");
    for (const auto& [given, value, name] : {std::tuple{"X86_64", 0, "x86_64"}, {"aarch64", 3, "aarch64"}, {"sparc", 4, "unknown"}}) {
        platform.setHostArch(given);
        EXPECT_EQ(platform.getHostArchAsEnum(), value);
        EXPECT_EQ(platform.getHostArch(), name);
    }
    platform.setHostInterface("AXI");
    EXPECT_EQ(platform.getHostInterfaceAsEnum(), 1);
    platform.setHostInterface("usb");
    EXPECT_EQ(platform.getHostInterface(), "unknown");
    EXPECT_EQ(HPLPlatform::getHostArchAsStr(static_cast<HPLPlatform::HostArchType>(9)), "unknown");
    EXPECT_EQ(HPLPlatform::getHostArchTypesAsStr(), (Texts{"x86_64", "armv7l", "ppc64le", "aarch64", "unknown"}));
}

TEST(Platform, KeepsValueListsWithoutDuplicatesAndSwitchesWithThem) {
    HPLPlatform platform;
    for (const char* value : {"dcp", "bitstream", "dcp"}) {
        platform.addValidBinaryContentValue(value);
        platform.addValidOutputTypeValue(value);
        platform.addBvlcLinkXpSwitch(value);
        platform.addBvlcCompileXpSwitch(value);
    }
    EXPECT_EQ(platform.getValidBinaryContentValuesAsStr(), "dcp,bitstream");
    EXPECT_EQ(platform.getValidOutputTypeValuesAsStr(), "dcp,bitstream");
    Texts switches = {"first"};
    platform.getBvlcLinkXpSwitches(switches);
    EXPECT_EQ(switches, (Texts{"first", "dcp", "bitstream", "dcp"}));
}

TEST(Platform, FindsFilesByType) {
    HPLPlatform platform;
    HPLFile* first = platform.addFile("HPFM", "old.hpfm");
    platform.addFile("hpfm", "new.hpfm");
    platform.addFile("HPFM", "newer.hpfm");
    EXPECT_EQ(platform.getFile("Hpfm"), "newer.hpfm");
    EXPECT_EQ(platform.getFile(HZEPPfmFileTypes::toFileType("HPFM")), "newer.hpfm");
    EXPECT_EQ(platform.findFile("HPFM"), first);
    EXPECT_EQ(platform.findFile("Hpfm"), nullptr);
    EXPECT_FALSE(platform.hasFile("DCP"));
    EXPECT_FALSE(platform.hasFile(static_cast<HZEPPfmFileTypes::FileType>(71)));

    const HPLFile elsewhere;
    platform.removeFile(nullptr);
    platform.removeFileType("HPFM");
    EXPECT_EQ(platform.getNumFiles(), 1u);
    EXPECT_EQ(platform.getFile("HPFM"), "new.hpfm");
}

TEST(Platform, MarksAnEmulationPlatformAsSupportingIt) {
    HPLPlatform platform;
    platform.setIsHWEmuPlatform(true);
    platform.setIsHWEmuPlatform(false);
    EXPECT_TRUE(platform.supportsHWEmulation());
    EXPECT_FALSE(platform.isHWEmuPlatform());
}

TEST(Platform, AnswersThroughOverrides) {
    struct Emulated : HPLPlatform {
        HPLDevice* getDevice(const std::string&) const override { return &device; }
        std::string getPlatformFile() const override { return "elsewhere.dsa"; }
        mutable HPLDevice device;
    };
    Emulated platform;
    platform.device.addSystemClock("user", "1");
    EXPECT_TRUE(platform.hasUserDefinedScalableClocks());
    EXPECT_EQ(platform.getJsonFileName(), "dsa.json");
}

TEST(Platform, HandsOutPartitionsByNodeAndByInstance) {
    HPLPlatform platform;
    HZEPReconfigPartition* first = platform.addReconfigPartition();
    first->setNodeID(5);
    platform.addReconfigPartition()->setNodeID(5);
    EXPECT_EQ(platform.findReconfigPartition(5), first);
    EXPECT_EQ(platform.getReconfigPartitions().size(), 2u);
    platform.setNodeID(9);
    EXPECT_EQ(platform.findReconfigPartition(9), nullptr) << "the platform's own id names no partition";

    platform.addVcePartition(4, 8)->vceInst("one");
    platform.addVcePartition()->addPartition(0, 1).plIntefaceID("id");
    EXPECT_EQ(platform.findVcePartition("one").numColumns(), 8);
    EXPECT_FALSE(platform.findVcePartition("two").isPartition());
    EXPECT_EQ(&platform.findVcePartition("two"), &HPLPlatform().findVcePartition("three"));
    EXPECT_TRUE(platform.hasVcePartition("id"));
    EXPECT_FALSE(platform.hasVcePartition("one"));
}

} // namespace
