// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "Documents.h"
#include "HPLDevice.h"
#include "HostErrors.h"

#include <gtest/gtest.h>

#include <memory>
#include <tuple>

namespace {

std::string partsOf(const HZEPDevice& device) {
    return device.getPartArch() + "|" + device.getPartDevice() + "|" + device.getPartPackage() + "|" + device.getPartSpeed() + "|" +
           device.getPartTempGrade() + "|" + device.getPartStaPower() + "|" + device.getPartRevision();
}

TEST(Device, SplitsPartStrings) {
    const struct {
        const char* part;
        const char* name;
        const char* parts;
    } rows[] = {
        {"xx:tlv9pz:fsgd2104:-2", "tlv9pzfsgd2104-2", "xx|tlv9pz|fsgd2104|-2|||"},
        {"xx:tlv9pz:fsgd2104:-2:e", "tlv9pz-fsgd2104-2-e", "xx|tlv9pz|fsgd2104|-2|e||"},
        {"xx:tlv9pz:fsgd2104:-2:e:es1", "tlv9pz-fsgd2104-2-e-es1", "xx|tlv9pz|fsgd2104|-2|e||es1"},
        {"xx:tlv9pz:fsgd2104:-2:e:L:es1", "tlv9pz-fsgd2104-2-e-L-es1", "xx|tlv9pz|fsgd2104|-2|e|L|es1"},
        {"xx::fsgd2104:-2", "fsgd2104-2", "xx||fsgd2104|-2|||"},
        {"a:b:c:d:", "b-cd-", "a|b|c|d|||"},
        {":::", "", "||||||"},
        {"", "", "||||||"},
    };
    for (const auto& row : rows) {
        HZEPDevice device;
        device.setFpgaPart(row.part);
        EXPECT_EQ(device.getFpgaPart(), row.part);
        EXPECT_EQ(device.getPartName(), row.name) << row.part;
        EXPECT_EQ(partsOf(device), row.parts) << row.part;
    }
}

TEST(Device, RefusesPartStringsOfTooFewOrTooManyParts) {
    for (const std::string part : {"one", "a:b:c", "a:b:c:d:e:f:g:h"}) {
        HZEPDevice device;
        try {
            device.setFpgaPart(part);
            FAIL() << part;
        } catch (const HostAlgException& error) {
            EXPECT_EQ(error.what(), "HZEPDevice::convertFpgaDeviceToPart_ - FPGA Device (string) format not as expected: '" + part + "'");
        }
        EXPECT_EQ(device.getFpgaPart(), part);
        EXPECT_EQ(device.getPartName(), "");
    }
}

TEST(Device, KeepsComponentsThatAShorterPartStringDoesNotName) {
    HZEPDevice device;
    device.setFpgaPart("a:b:c:-1:i:L:es");
    device.setFpgaPart("A:B:C:-3");
    EXPECT_EQ(partsOf(device), "A|B|C|-3|i|L|es");
    EXPECT_EQ(device.getPartName(), "BC-3");
    device.setFpgaPart("");
    EXPECT_EQ(device.getPartName(), "BC-3");
}

TEST(Core, DerivesCountsFromTheDynamicPblock) {
    HPLCore core;
    EXPECT_FALSE(core.hasResourceInfo());
    EXPECT_EQ(core.getBRAMCount(), "");

    core.addResourceInfo("Region", "BRAM", "12");
    core.addResourceInfo("Region", "DSPs", "34");
    core.addResourceInfo("Region", "LUTs", "5");
    core.addResourceInfo("Region", "REG", "0");
    core.addResourceInfo("Region", "DSPs_SLR0", "7");
    core.addResourceInfo("Region", "BRAM_SLR0", "3x");
    EXPECT_EQ(core.getBRAMCount(), "12");
    EXPECT_EQ(core.getDSPCount(), "34");
    EXPECT_EQ(core.getLUTCount(), "") << "only DSP may stand in the plural";
    EXPECT_EQ(core.getRegisterCount(), "");
    EXPECT_EQ(core.getResCount("dsp", "SLR0"), 0) << "keys are case sensitive, though the type is known in any case";
    EXPECT_EQ(core.getResCount("DSP", "SLR0"), 7);
    EXPECT_EQ(core.getResCount("REGION", "BRAM", "SLR0"), 3);
    EXPECT_EQ(core.getResCount("elsewhere", "BRAM", ""), 0);

    core.setBRAMCount("given");
    EXPECT_EQ(core.getBRAMCount(), "given");

    core.getResourceMap("pblock_dynamic_REGION")["BRAM"] = "99";
    core.setBRAMCount("");
    EXPECT_EQ(core.getBRAMCount(), "99") << "of several pblocks the one of the fixed name counts";

    HPLCore touched;
    touched.getResourceMap("new");
    EXPECT_TRUE(touched.hasResourceInfo());
}

TEST(Core, TakesTheClockOfTheFirstQualifyingPort) {
    HPLCore core;
    for (const auto& [type, name, frequency] : {std::tuple{"reset", "ACLK", "1"}, {"Clk", "kernel_clk", "2"}, {"clk", "ACLK", "3"}}) {
        HPLPort* port = core.addPort();
        port->setType(type);
        port->setName(name);
        port->setFrequency(frequency);
        port->setAddrWidth(frequency);
    }
    core.addPort()->setAddrWidth("wide");
    EXPECT_EQ(core.getClockFreq(), "2");
    EXPECT_EQ(core.getMaxAddrWidth(), 3u);
    EXPECT_EQ(core.getMaxDataWidth(), 0u);

    const std::unique_ptr<HostFwdIter<HPLPort*>> at(core.createPortIter());
    at->next();
    core.removePort(at->next());
    core.removePort(nullptr);
    EXPECT_EQ(core.getClockFreq(), "3");
    core.setClockFreq("300");
    EXPECT_EQ(core.getClockFreq(), "300");
}

TEST(Core, ListsEachSlrOnce) {
    HPLCore core;
    core.addSLRInfo("b", std::set<std::string>{"SLR1", "SLR0"});
    core.addSLRInfo("c", std::vector<std::string>{"SLR2", "SLR1"});
    core.addSLRInfo("d", std::vector<std::string>{});
    core.addSLRInfo("a", "SLR3");
    std::vector<std::string> names = {"SLR2"};
    core.getValidSLRNames(names);
    EXPECT_EQ(names, (std::vector<std::string>{"SLR2", "SLR3", "SLR0", "SLR1"}));

    std::set<std::string> ofOne = {"kept"};
    core.getSLRNames("b", ofOne);
    core.getSLRNames("none", ofOne);
    EXPECT_EQ(ofOne, (std::set<std::string>{"SLR0", "SLR1", "kept"}));
}

TEST(Device, WritesPblocksThatHaveOnlySlrs) {
    HPLDevice device;
    device.setName("fpga0");
    device.getCore().addSLRInfo("dynamic", "SLR0");
    EXPECT_EQ(documentOf(device), laidOut(R"({"name": "fpga0", "core": {"numComputeUnits": "0",
        "availableResources": {"pBlocks": [{"name": "dynamic", "validSlrs": ["SLR0"]}]}}})"));
}

} // namespace
