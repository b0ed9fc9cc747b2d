// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "Documents.h"
#include "HPLBoard.h"
#include "HPLMemory.h"
#include "HZEPDesignIPInstance.h"
#include "HZEPHardwareBusInterface.h"
#include "HZEPHardwareNocConnectivity.h"
#include "HZEPReconfigPartition.h"
#include "HZEPSystemClock.h"
#include "HostErrors.h"

#include <gtest/gtest.h>

namespace {

using Names = std::vector<std::string>;

TEST(Board, ListsConnectorsByTheirState) {
    HPLBoard board;
    EXPECT_FALSE(board.hasDimmConnectors());
    EXPECT_EQ(board.getBoardConnectionsString(), "");
    board.addDimmConnector("c0", "Slot 0", "DIMM", "d0", "Module 0", true, true);
    board.addDimmConnector("c1", "Slot 1", "DIMM", "", "", false, true);
    board.addDimmConnector("c2", "Slot 2", "DIMM", "d2", "Module 2", true, false);
    EXPECT_EQ(board.addDimmConnector()->getType(), "DIMM");

    EXPECT_EQ(board.getBoardConnectionsString(), "c0 d0 c2 d2");
    EXPECT_EQ(board.getLockedBoardConnectionsString(), "c0 d0");
    EXPECT_EQ(board.getUnlockedBoardConnectionsString(), "c2 d2");
    Names all, locked, connected, modules;
    board.getDimmConnectors(all);
    board.getLockedDimmConnectors(locked);
    board.getConnectedDimmConnectors(connected, modules);
    EXPECT_EQ(all, (Names{"c0", "c1", "c2", ""}));
    EXPECT_EQ(locked, (Names{"c0", "c1"}));
    EXPECT_EQ(connected, (Names{"c0", "c2"}));
    EXPECT_EQ(modules, (Names{"d0", "d2"}));

    EXPECT_EQ(board.getConnectorDisplayName("C1"), "Slot 1");
    EXPECT_EQ(board.getConnectorDisplayName("D2"), "Module 2");
    EXPECT_EQ(board.getConnectorDisplayName("c9"), "");
}

TEST(Memory, KeepsKnownParametersOfItsType) {
    const struct {
        const char* type;
        const char* kept;
        const char* dropped;
    } rows[] = {
        {"ddr4", "C0.DDR4_tCK", "C0.DDR3_tCK"}, {"ddr3", "C0.DDR3_tCK", "C0.DDR4_tCK"},     {"", "C0.DDR4_CL", "C0.DDR3_CL"},
        {"DDR3", "C0.DDR4_CL", "C0.DDR3_CL"},   {"ddr4", "TIMEPERIOD_PS", "timeperiod_ps"}, {"ddr3", "C0.ControllerType", "C0.DDR3"},
        {"hbm", "MEMORY_PART", "FOO"},
    };
    for (const auto& row : rows) {
        HPLMemory memory;
        memory.setType(row.type);
        memory.addConfigParam(row.kept, "1");
        memory.addConfigParam(row.kept, "833");
        memory.addConfigParam(row.dropped, "1");
        EXPECT_EQ(memory.getConfigParamMap(), (std::map<std::string, std::string>{{row.kept, "833"}})) << row.type;
    }
}

TEST(Memory, WritesBothAddressesUnlessBothAreZero) {
    HPLMemory memory;
    memory.setName("bank");
    EXPECT_EQ(documentOf(memory), laidOut(R"({"name": "bank"})"));
    memory.setHighestAddress(0xFFFFFFFFFFFFFFFF);
    EXPECT_EQ(documentOf(memory), laidOut(R"({"name": "bank", "lowAddress": "0", "highAddress": "18446744073709551615"})"));
}

TEST(BusInterface, AnswersPastItsSegmentsWithNothing) {
    HZEPHardwareBusInterface bus;
    bus.addAddressSegment();
    HZEPHardwareAddressSegment* second = bus.addAddressSegment();
    second->setIndex(4);
    second->setSlr("SLR1");
    EXPECT_EQ(bus.getMemoryIndex(1), 4u);
    EXPECT_EQ(bus.getMemorySLR(1), "SLR1");
    EXPECT_EQ(bus.getMemoryIndex(2), 0u);
    EXPECT_EQ(bus.getMemorySLR(2), "");
}

TEST(BusInterface, GivesItsSizeAsPeakBandwidth) {
    HZEPHardwareBusInterface bus;
    bus.setSize("2GB");
    bus.setPeakMemoryBandwidth("19.2");
    EXPECT_EQ(bus.getPeakMemoryBandwidth(), "2GB");
    EXPECT_EQ(bus.getSize(), "2GB");
}

TEST(NocConnectivity, FindsTheFirstInterfaceOfAName) {
    HZEPHardwareNocConnectivity noc;
    EXPECT_EQ(noc.getBusInterfaceByName(""), nullptr);
    HZEPHardwareBusInterface* first = noc.addBusInterface();
    first->setName("S00");
    noc.addBusInterface()->setName("S00");
    HZEPHardwareBusInterface* nameless = noc.addBusInterface();
    EXPECT_EQ(noc.getBusInterfaceByName("S00"), first);
    EXPECT_EQ(noc.getBusInterfaceByName(""), nameless);
    EXPECT_EQ(noc.getBusInterfaceByName("s00"), nullptr);
}

TEST(DesignIPInstance, RefusesASecondValueOfAParameter) {
    HZEPDesignIPInstance ip;
    ip.addConfigParam("WIDTH", "32");
    try {
        ip.addConfigParam("WIDTH", "64");
        FAIL();
    } catch (const HostAlgException& error) {
        EXPECT_STREQ(error.what(), "Attempt to readd Design IP Instance Config Param key: 'WIDTH' is not allowed!");
    }
    std::map<std::string, std::string> params = {{"gone", ""}};
    ip.getConfigParamMap(params);
    EXPECT_EQ(params, (std::map<std::string, std::string>{{"WIDTH", "32"}}));
}

TEST(DesignIPInstance, WritesEveryConfiguration) {
    const std::string deep = "p.p.p.p.p.p.p.p.p.p.p.p.p.p.p.p.p";
    const struct {
        std::map<std::string, std::string> params;
        std::string configuration;
    } rows[] = {
        {{{"b", "2"}, {"a", "1"}, {"none", ""}}, R"({"a": "1", "b": "2"})"},
        {{{"a.b", "1"}, {"a.c.d", "2"}, {"a.c.e", "3"}}, R"({"a": {"b": "1", "c": {"d": "2", "e": "3"}}})"},
        {{{"a", "1"}, {"a.b", "2"}, {"a.b.c", "3"}}, R"({"a": "1", "a.b": "2", "a.b.c": "3"})"},
        {{{"a.b", "1"}, {"a-b", "2"}, {"a.b.c", "3"}}, R"({"a-b": "2", "a": {"b": "1"}, "a.b.c": "3"})"},
        {{{"a", ""}, {"a.b", "2"}}, R"({"a": {"b": "2"}})"},
        {{{"", "0"}, {".", "1"}, {"..", "2"}, {".a", "3"}, {"a.", "4"}, {"a..b", "5"}},
         R"({"": "0", ".": "1", "..": "2", ".a": "3", "a.": "4", "a..b": "5"})"},
        {{{deep, "1"}}, "{\"" + deep + "\": \"1\"}"},
        {{{std::string(100000, '.'), "1"}}, "{\"" + std::string(100000, '.') + "\": \"1\"}"},
    };
    for (const auto& row : rows) {
        HZEPDesignIPInstance ip;
        ip.setVLNV("v:l:n:1");
        for (const auto& [name, value] : row.params)
            ip.addConfigParam(name, value);
        EXPECT_EQ(documentOf(ip), laidOut(R"({"vlnv": "v:l:n:1", "configuration": )" + row.configuration + "}"));
    }
    HZEPDesignIPInstance nameless;
    nameless.addConfigParam("", "1");
    EXPECT_NO_THROW(documentOf(nameless));
}

TEST(ReconfigPartition, WritesOnlyIdsThatAreSet) {
    HZEPReconfigPartition partition;
    EXPECT_EQ(documentOf(partition), laidOut("{}"));
    partition.setFunctionID(4294967295);
    partition.setVCEPlInterfaceID(1);
    partition.setVCENodeID(2);
    partition.setVCEUniqueID(3);
    partition.setVCEPuID(4);
    EXPECT_EQ(documentOf(partition), laidOut(R"({"functionID": "4294967295",
        "vcengineIDs": {"plInterfaceID": "1", "nodeID": "2", "uniqueID": "3", "puID": "4"}})"));
}

TEST(SystemClock, KnowsItsStatusInAnyCase) {
    const struct {
        const char* status;
        bool scalable, fixed, reserved;
    } rows[] = {{"scalable", true, false, false}, {"Changeable", true, false, false}, {"FIXED", false, true, false},
                {"Reserved", false, false, true}, {"", false, false, false},          {"scalable ", false, false, false}};
    for (const auto& row : rows) {
        HZEPSystemClock clock;
        clock.setStatus(row.status);
        EXPECT_EQ(clock.isScalable(), row.scalable) << row.status;
        EXPECT_EQ(clock.isFixed(), row.fixed) << row.status;
        EXPECT_EQ(clock.isReserved(), row.reserved) << row.status;
    }
}

} // namespace
