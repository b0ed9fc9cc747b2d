// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "DsaJsonKeys.h"
#include "HZEPHardwareFeatureRom.h"
#include "HostConvert.h"
#include "RomName.h"

#include <cstdint>

/// The feature ROM: decimal texts, hexadecimal texts and names in fixed fields.
namespace dsa_json {

template <unsigned Index>
void setCdmaBaseAddress(HZEPHardwareFeatureRom& rom, const std::string& text) {
    std::uint32_t address = 0;
    HostConvert::hexToDataLittleEndian(text, &address, sizeof address);
    rom.setCDMABaseAddress(Index, address);
}

using RomRow = Keys<HZEPHardwareFeatureRom>;
inline constexpr Key<HZEPHardwareFeatureRom> kFeatureBitMapKeys[] = {
    RomRow::hex<[](HZEPHardwareFeatureRom& rom, const std::string& text) {
        std::uint64_t bits = 0;
        HostConvert::hexToDataLittleEndian(text, &bits, sizeof bits);
        rom.setFeatureBitMap(bits);
    }>("value", sizeof(std::uint64_t)),
    RomRow::derived("unifiedPlatform"),
    RomRow::derived("auroraLink"),
    RomRow::derived("boardMgmt"),
    RomRow::derived("boardScheduler"),
    RomRow::derived("promType"),
    RomRow::derived("debugType"),
    RomRow::derived("peerToPeer"),
    RomRow::derived("uuid"),
    RomRow::derived("clockThrottling"),
    RomRow::derived("passthruTrans"),
};

inline constexpr Key<HZEPHardwareFeatureRom> kFeatureRomKeys[] = {
    RomRow::number<&HZEPHardwareFeatureRom::setMajorVersion>("majorVersion"),
    RomRow::number<&HZEPHardwareFeatureRom::setMinorVersion>("minorVersion"),
    RomRow::number<&HZEPHardwareFeatureRom::setDruvelBuildID>("druvelBuildID"),
    RomRow::number<&HZEPHardwareFeatureRom::setIPBuildID>("ipBuildID"),
    RomRow::number<&HZEPHardwareFeatureRom::setTimeSinceEpoch>("timeSinceEpoch"),
    RomRow::text<&setRomName<&HZEPHardwareFeatureRom::setFPGAPartName>>("fpgaPartName"),
    RomRow::text<&setRomName<&HZEPHardwareFeatureRom::setVBNVName>>("vbnvName"),
    RomRow::number<&HZEPHardwareFeatureRom::setDDRChannelCount>("ddrChannelCount"),
    RomRow::number<&HZEPHardwareFeatureRom::setDDRChannelSize>("ddrChannelSize"),
    // Written in base 16 and read in base 10 all the same: what is written comes back as 0.
    RomRow::number<&HZEPHardwareFeatureRom::setDRBaseAddress>("drBaseAddress"),
    RomRow::object<std::identity{}, kFeatureBitMapKeys>("featureBitMap"),
    RomRow::text<[](HZEPHardwareFeatureRom& rom, const std::string& text) { rom.setUUID(text); }>("uuid"),
    RomRow::hex<&setCdmaBaseAddress<0>>("cdmaBaseAddress0", sizeof(std::uint32_t)),
    RomRow::hex<&setCdmaBaseAddress<1>>("cdmaBaseAddress1", sizeof(std::uint32_t)),
    RomRow::hex<&setCdmaBaseAddress<2>>("cdmaBaseAddress2", sizeof(std::uint32_t)),
    RomRow::hex<&setCdmaBaseAddress<3>>("cdmaBaseAddress3", sizeof(std::uint32_t)),
    RomRow::optionalNumber<&HZEPHardwareFeatureRom::setMaxTempLimit>("maxTempLimit"),
    RomRow::optionalNumber<&HZEPHardwareFeatureRom::setMaxPowerLimit>("maxPowerLimit"),
};

} // namespace dsa_json
