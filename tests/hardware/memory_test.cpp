// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HPLPlatform.h"
#include "MessageLog.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

using Texts = std::vector<std::string>;

HZEPHardwareBusInterface* addBus(HPLPlatform& platform, const std::string& port, const std::string& tag,
                                 const std::vector<std::uint32_t>& indices = {}) {
    HZEPHardwareBusInterface* bus = platform.addBusInterface();
    bus->setMemPort(port);
    bus->setSPTag(tag);
    for (const std::uint32_t index : indices) {
        HZEPHardwareAddressSegment* segment = bus->addAddressSegment();
        segment->setIndex(index);
        segment->setSlr("SLR" + std::to_string(index));
    }
    return bus;
}

TEST(Memories, AreIndexedOrNotByTheFirstInterfaceThatDecides) {
    struct Bus {
        const char* port;
        const char* tag;
    };
    const struct {
        std::vector<Bus> buses;
        bool indexed;
        int state;
        Texts types;
    } rows[] = {
        {{}, false, 2, {}},
        {{{"", "HBM"}, {"M_AXI_GP", "x"}, {"s_axi_gp", "foo"}, {"ddr", "Default"}}, false, 2, {}},
        {{{"DDR", "bank1"}, {"memss", "HBM"}, {"DDR", "bank0"}}, false, 0, {"bank0", "bank1"}},
        {{{"MEMSS", "hbm"}, {"DDR", "bank0"}}, true, 1, {"HBM"}},
        {{{"DDR", "DEFAULT"}, {"memss", "default"}}, true, 1, {"DEFAULT"}},
        {{{"DDR", ""}, {"memss", "HBM"}}, false, 0, {""}},
    };
    for (const auto& row : rows) {
        HPLPlatform platform;
        for (const Bus& bus : row.buses)
            addBus(platform, bus.port, bus.tag);
        EXPECT_FALSE(platform.supportsMemoryResourceIndex()) << "nothing has looked yet";
        EXPECT_EQ(platform.isMemoryResourceIndexed(), row.indexed);
        EXPECT_EQ(platform.getMemoryResourceIndexState(), row.state);
        EXPECT_EQ(platform.supportsMemoryResourceIndex(), row.indexed);
        Texts types;
        EXPECT_EQ(platform.getUniqueMemoryTypeStrings(types), row.types.size());
        EXPECT_EQ(types, row.types);
        EXPECT_EQ(platform.getUniqueMemoryTypeCount(), row.types.size());
    }
}

TEST(Memories, StayAsFirstFound) {
    HPLPlatform platform;
    EXPECT_FALSE(platform.isMemoryResourceIndexed());
    addBus(platform, "memss", "HBM");
    EXPECT_TRUE(platform.isMemoryResourceIndexed()) << "undecided before";
    platform.setMemoryResourceIndexState(0);
    EXPECT_FALSE(platform.isMemoryResourceIndexed());
}

TEST(Memories, IndexedOnesAnswerByAddressSegments) {
    HPLPlatform platform;
    addBus(platform, "memss", "hbm", {7, 8});
    addBus(platform, "DDR", "bank0")->setSize("4GB");
    addBus(platform, "memss", "Hbm", {5});
    HZEPHardwarePlatform::BusInterfaces buses;
    platform.getMemoryBusInterfaces(buses);
    ASSERT_EQ(buses.size(), 3u);
    EXPECT_EQ(buses[2]->getSPTag(), "bank0") << "indexed ones go first";

    EXPECT_EQ(platform.getMemoryTypeCount("HBM"), 2u);
    EXPECT_EQ(platform.getMemoryTypeCount("hbm"), 0u);
    EXPECT_EQ(platform.getMemoryIndex("HBM", 0), 5u) << "the last interface wins";
    EXPECT_EQ(platform.getMemoryIndex("HBM", 1), 8u);
    EXPECT_EQ(platform.getMemoryIndex("HBM", 2), 0u);
    EXPECT_EQ(platform.getMemorySLR("HBM", 0), "SLR5");
    EXPECT_EQ(platform.getMemorySLR("HBM", 1), "SLR8");
    EXPECT_EQ(platform.getMemorySize("HBM", 1), "16GB");
    EXPECT_EQ(platform.getMemorySize("HBM", 2), "");
    EXPECT_EQ(platform.getMemorySize("bank0", 0), "");
}

TEST(Memories, OthersAnswerByTheLastOfTheirTag) {
    HPLPlatform platform;
    for (const char* size : {"4GB", "8GB"}) {
        HZEPHardwareBusInterface* bus = addBus(platform, "DDR", "bank0", {3});
        bus->setSize(size);
        bus->setSLR(std::string("SLR") + size[0]);
    }
    EXPECT_EQ(platform.getMemoryTypeCount("bank0"), 1u);
    EXPECT_EQ(platform.getMemoryTypeCount("BANK0"), 0u);
    EXPECT_EQ(platform.getMemoryIndex("bank0", 0), 0u);
    EXPECT_EQ(platform.getMemorySize("bank0", 9), "8GB");
    EXPECT_EQ(platform.getMemorySLR("bank0", 9), "SLR8");
}

TEST(HbmBanks, CountForOneInstance) {
    const MessageLog log;
    HPLPlatform platform;
    platform.updateHBMBankInfo("hbm_0", true);
    platform.updateHBMBankInfo("hbm_0", false);
    platform.updateHBMBankInfo("hbm_1", true);
    EXPECT_EQ(platform.getHBMBankCount(), 2u);
    EXPECT_EQ(platform.getHBMDefaultBankCount(), 1u);
    EXPECT_EQ(platform.getHBMInstanceName(), "hbm_0");
    EXPECT_EQ(log.lines, std::vector<std::string>{"error|@74-261@"});
}

TEST(HbmBanks, AdviseOnlyWhenSomeAreDefault) {
    for (const int defaults : {0, 31, 32}) {
        HPLPlatform platform;
        for (int bank = 0; bank < 32; ++bank)
            platform.updateHBMBankInfo("hbm_0", bank < defaults);
        std::ostringstream absent, present;
        platform.issueNormalizeMemoryBanksMessage(absent);
        EXPECT_EQ(absent.str(), "");
        platform.setHBMPresent();
        platform.issueNormalizeMemoryBanksMessage(present);
        EXPECT_EQ(present.str(), defaults != 31 ? ""
                                                : "\n\nThe HBM instance 'hbm_0' has only a subset of its auto-assignable memory banks "
                                                  "tagged as 'default'. To attain better HBM bandwidth, use tz++ parameter "
                                                  "'--advanced.param compiler.normalizeDefaultMemoryBanks=true' to change all HBM "
                                                  "memory banks to 'default'.\n\n");
    }
}

} // namespace
