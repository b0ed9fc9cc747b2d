// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HZEPEmulationExtMetaJsonReader.h"

#include "HZEPEmulations.h"
#include "HZEPJSONText.h"
#include "HostErrors.h"
#include "HostPathUtils.h"

#include <boost/property_tree/ptree.hpp>

#include <cstddef>
#include <new>
#include <utility>

using boost::property_tree::ptree;

namespace {

struct RomKey {
    const char* key;
    void (HZEPEmuFeatureRom::*set)(std::string);
};

constexpr RomKey kRomKeys[] = {
    {"vbnvName", &HZEPEmuFeatureRom::setVBNV},
    {"cdmaBaseAddress0", &HZEPEmuFeatureRom::setCdmaBaseAddress0},
    {"cdmaBaseAddress1", &HZEPEmuFeatureRom::setCdmaBaseAddress1},
    {"cdmaBaseAddress2", &HZEPEmuFeatureRom::setCdmaBaseAddress2},
    {"cdmaBaseAddress3", &HZEPEmuFeatureRom::setCdmaBaseAddress3},
};

constexpr RomKey kBitMapKeys[] = {
    {"value", &HZEPEmuFeatureRom::setBitMapValue},
    {"boardScheduler", &HZEPEmuFeatureRom::setBitMapBoardSchedular},
    {"peerToPeer", &HZEPEmuFeatureRom::setBitMapPeerToPeer},
};

template <std::size_t N>
void fill(HZEPEmuFeatureRom& rom, const ptree& item, const RomKey (&keys)[N]) {
    for (const RomKey& key : keys)
        if (const auto value = item.get_optional<std::string>(key.key))
            (rom.*key.set)(*value);
}

} // namespace

HZEPEmulationExtMetaJsonReader::HZEPEmulationExtMetaJsonReader(std::string path, HZEPEmulations* emulations)
    : path_(std::move(path)), emulations_(emulations) {
    if (!HostPathUtils::exists(path_))
        throw HostFileNotFoundException(path_);
}

HZEPEmulationExtMetaJsonReader::HZEPEmulationExtMetaJsonReader(HZEPEmulations* emulations) : emulations_(emulations) {}

bool HZEPEmulationExtMetaJsonReader::isJsonValid() const {
    try {
        ptree root;
        HZEPJSONText::readFile(path_, root);
        return true;
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception&) {
        return false;
    }
}

void HZEPEmulationExtMetaJsonReader::parseJson() {
    ptree root;
    HZEPJSONText::readFile(path_, root);
    parseExtMetaRoot_(root);
}

void HZEPEmulationExtMetaJsonReader::parseExtMetaRoot_(const ptree& root) {
    // One for all of them, made before anything is looked for.
    HZEPEmuFeatureRom& rom = *emulations_->createFeatureRom();
    for (const auto& [key, item] : root.get_child("featureRoms")) {
        fill(rom, item, kRomKeys);
        for (const auto& [bitMapKey, bitMap] : item.get_child("featureBitMap"))
            fill(rom, bitMap, kBitMapKeys);
    }
}
