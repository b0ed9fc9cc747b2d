// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "HZEPHardwareFeatureRom.h"

#include "Documents.h"
#include "HostErrors.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

namespace {

struct Name {
    unsigned char bytes[64];

    explicit Name(const std::string& text, unsigned char rest = 0) {
        std::memset(bytes, rest, sizeof bytes);
        std::memcpy(bytes, text.data(), text.size());
    }
};

std::vector<unsigned char> imageOf(const HZEPHardwareFeatureRom& rom) {
    return {rom.getRomHeader(), rom.getRomHeader() + HZEPHardwareFeatureRom::kRomHeaderSize};
}

} // namespace

TEST(FeatureRom, AFreshOneIsAllZero) {
    const HZEPHardwareFeatureRom rom;
    EXPECT_EQ(imageOf(rom), std::vector<unsigned char>(224, 0));
    EXPECT_EQ(rom.getUUIDAsString(), "00000000-0000-0000-0000-000000000000");
    EXPECT_EQ(rom.getSearchPropertyName(), "ZEP_FEATURE_ROM");
    EXPECT_EQ(rom.getFPGAPartName(), "");
}

TEST(FeatureRom, EveryFieldHasItsBytesInTheImage) {
    HZEPHardwareFeatureRom rom;
    rom.setMajorVersion(0x11);
    rom.setMinorVersion(0x12);
    rom.setDruvelBuildID(0x23222120);
    rom.setIPBuildID(0x33323130);
    rom.setTimeSinceEpoch(0x4746454443424140);
    rom.setFPGAPartName(Name("part").bytes);
    rom.setVBNVName(Name("vbnv").bytes);
    rom.setDDRChannelCount(0x51);
    rom.setDDRChannelSize(0x52);
    rom.setDRBaseAddress(0x6766656463626160);
    rom.setFeatureBitMap(0x7776757473727170);
    rom.setUUID("00010203-0405-0607-0809-0a0b0c0d0e0f");
    for (unsigned i = 0; i < rom.getCDMABaseAddressSize(); ++i)
        rom.setCDMABaseAddress(i, 0x83828180 + i);
    rom.setMaxTempLimit(0x91);
    rom.setMaxPowerLimit(0x92);

    std::vector<unsigned char> expected(224, 0);
    const auto run = [&expected](std::size_t offset, std::size_t size, unsigned char first) {
        for (std::size_t i = 0; i < size; ++i)
            expected[offset + i] = static_cast<unsigned char>(first + i);
    };
    run(4, 2, 0x11);
    run(8, 4, 0x20);
    run(12, 4, 0x30);
    run(24, 8, 0x40);
    std::memcpy(&expected[32], "part", 4);
    std::memcpy(&expected[96], "vbnv", 4);
    run(160, 2, 0x51);
    run(168, 8, 0x60);
    run(176, 8, 0x70);
    run(184, 16, 0x00);
    for (unsigned char i = 0; i < 4; ++i) {
        run(204 + 4 * i, 4, 0x80);
        expected[204 + 4 * i] = static_cast<unsigned char>(0x80 + i);
    }
    run(220, 2, 0x91);
    EXPECT_EQ(imageOf(rom), expected);
}

TEST(FeatureRom, NamesMustEndWithinTheirField) {
    HZEPHardwareFeatureRom rom;
    const std::string longest(63, 'x');
    rom.setFPGAPartName(Name(longest).bytes);
    EXPECT_EQ(rom.getFPGAPartName(), longest);

    const auto before = imageOf(rom);
    const std::string all(64, 'y');
    EXPECT_EQ(errorOf<HostError>([&] { rom.setFPGAPartName(Name(all).bytes); }),
              "The FPGAPartName specified for the Feature ROM is not a 64 char null terminated string: '" + all + "'");
    EXPECT_EQ(errorOf<HostError>([&] { rom.setVBNVName(Name(all).bytes); }),
              "The VBNVName specified for the Feature ROM is not a 64 char null terminated string: '" + all + "'");
    EXPECT_THROW(rom.setVBNVName(Name(all).bytes), HostDataException);
    EXPECT_EQ(imageOf(rom), before);

    // What stands behind the zero, here and from a longer name before, is no part of the name.
    rom.setFPGAPartName(Name(std::string("ab\0", 3), 'z').bytes);
    EXPECT_EQ(rom.getFPGAPartName(), "ab");
    EXPECT_EQ(std::string(rom.getRomHeader() + 34, rom.getRomHeader() + 96), std::string(62, '\0'));
}

TEST(FeatureRom, UuidsComeAsTextOrBytes) {
    HZEPHardwareFeatureRom rom;
    rom.setUUID("00112233-4455-6677-8899-AABBCCDDEEFF");
    const std::string text = "00112233-4455-6677-8899-aabbccddeeff";
    EXPECT_EQ(rom.getUUIDAsString(), text);
    rom.setUUID("");
    for (const std::string& bad : {std::string("not-a-uuid"), text + "0", text + " ", " " + text, text.substr(1), std::string(" ")}) {
        EXPECT_EQ(errorOf<HostError>([&] { rom.setUUID(bad); }), "Unable to convert string to Feature ROM UUID: '" + bad + "'");
        EXPECT_THROW(rom.setUUID(bad), HostAlgException);
        EXPECT_EQ(rom.getUUIDAsString(), text);
    }
    const unsigned char bytes[16] = {0xf0};
    rom.setUUID(bytes);
    EXPECT_EQ(rom.getUUIDAsString(), "f0000000-0000-0000-0000-000000000000");
}

TEST(FeatureRom, CdmaAddressesOutOfBoundsRaiseTheSameText) {
    HZEPHardwareFeatureRom rom;
    const std::string text =
        "Attempt to set the CDMA Base Address on the DSA XML DOM object using index '4' which is out of bounds (max is: '3')";
    EXPECT_EQ(errorOf<HostError>([&] { rom.setCDMABaseAddress(4, 1); }), text);
    EXPECT_EQ(errorOf<HostError>([&] { rom.getCDMABaseAddress(4); }), text);
    EXPECT_THROW(rom.getCDMABaseAddress(0xFFFFFFFF), HostAlgException);
    EXPECT_EQ(imageOf(rom), imageOf(HZEPHardwareFeatureRom()));
}

TEST(FeatureRom, EachBitOfTheMapHasItsField) {
    const auto fieldsOf = [](std::uint64_t bits) {
        HZEPHardwareFeatureRom rom;
        rom.setFeatureBitMap(bits);
        return parse(documentOf(rom)).get_child("featureBitMap");
    };
    std::string told;
    for (unsigned bit = 0; bit < 64; ++bit)
        for (const auto& [field, value] : fieldsOf(1ULL << bit))
            if (field != "value" && value != fieldsOf(0).get_child(field))
                told += std::to_string(bit) + ":" + field + "=" + value.data() + " ";
    EXPECT_EQ(told,
              "0:unifiedPlatform=enabled 1:auroraLink=enabled 2:boardMgmt=enabled 3:boardScheduler=enabled 4:promType=0x1 "
              "5:promType=0x2 6:promType=0x4 8:debugType=0x1 9:debugType=0x2 10:debugType=0x4 11:debugType=0x8 12:debugType=0x10 "
              "13:debugType=0x20 14:debugType=0x40 15:debugType=0x80 16:peerToPeer=enabled 17:uuid=enabled 21:clockThrottling=enabled "
              "22:passthruTrans=enabled ");
}
