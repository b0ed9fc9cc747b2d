// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "HZEPHardwareFeatureRom.h"

#include "CutName.h"
#include "HostConvert.h"
#include "HostErrors.h"
#include "JSONObjectWriter.h"

#include <boost/uuid/uuid.hpp>
#include <boost/uuid/uuid_io.hpp>

#include <algorithm>
#include <cstring>
#include <sstream>

namespace {

// Offsets in the image.
constexpr std::size_t kMajorVersion = 4;
constexpr std::size_t kMinorVersion = 5;
constexpr std::size_t kDruvelBuildID = 8;
constexpr std::size_t kIPBuildID = 12;
constexpr std::size_t kTimeSinceEpoch = 24;
constexpr std::size_t kFPGAPartName = 32;
constexpr std::size_t kVBNVName = 96;
constexpr std::size_t kDDRChannelCount = 160;
constexpr std::size_t kDDRChannelSize = 161;
constexpr std::size_t kDRBaseAddress = 168;
constexpr std::size_t kFeatureBitMap = 176;
constexpr std::size_t kUUID = 184;
constexpr std::size_t kCDMABaseAddress = 204;
constexpr std::size_t kMaxTempLimit = 220;
constexpr std::size_t kMaxPowerLimit = 221;

constexpr std::size_t kNameSize = 64;
constexpr std::size_t kUUIDSize = 16;

using Image = std::array<unsigned char, HZEPHardwareFeatureRom::kRomHeaderSize>;

template <class Number>
Number load(const Image& image, std::size_t offset) {
    Number number;
    std::memcpy(&number, image.data() + offset, sizeof number);
    return number;
}

template <class Number>
void store(Image& image, std::size_t offset, Number number) {
    std::memcpy(image.data() + offset, &number, sizeof number);
}

std::string loadName(const Image& image, std::size_t offset) {
    const unsigned char* const begin = image.data() + offset;
    return std::string(begin, std::find(begin, begin + kNameSize, 0));
}

void storeName(Image& image, std::size_t offset, const unsigned char (&name)[kNameSize], const char* what) {
    const unsigned char* const end = std::find(std::begin(name), std::end(name), 0);
    if (end == std::end(name))
        throw HostDataException(std::string("The ") + what + " specified for the Feature ROM is not a 64 char null terminated string: '" +
                                std::string(std::begin(name), std::end(name)) + "'");
    unsigned char* const to = image.data() + offset;
    std::fill(std::copy(std::begin(name), end, to), to + kNameSize, 0);
}

std::size_t cdmaOffset(unsigned int index) {
    if (index >= HZEPHardwareFeatureRom::getCDMABaseAddressSize())
        throw HostAlgException("Attempt to set the CDMA Base Address on the DSA XML DOM object using index '" + std::to_string(index) +
                               "' which is out of bounds (max is: '" +
                               std::to_string(HZEPHardwareFeatureRom::getCDMABaseAddressSize() - 1) + "')");
    return kCDMABaseAddress + index * sizeof(std::uint32_t);
}

template <class Number>
std::string hexadecimal(Number number) {
    return "0x" + HostConvert::trimLeading(HostConvert::dataToHexLittleEndian(&number, sizeof number), '0');
}

zep_platform::JSONObjectWriter describeFeatures(std::uint64_t bits) {
    struct Field {
        const char* key;
        unsigned int firstBit;
        unsigned int width;
    };
    static constexpr Field kFields[] = {
        {"unifiedPlatform", 0, 1}, {"auroraLink", 1, 1},  {"boardMgmt", 2, 1}, {"boardScheduler", 3, 1},   {"promType", 4, 3},
        {"debugType", 8, 8},       {"peerToPeer", 16, 1}, {"uuid", 17, 1},     {"clockThrottling", 21, 1}, {"passthruTrans", 22, 1},
    };
    zep_platform::JSONObjectWriter writer;
    writer.addKey("value", hexadecimal(bits));
    for (const Field& field : kFields) {
        const std::uint64_t value = bits >> field.firstBit & ((1U << field.width) - 1);
        if (field.width == 1)
            writer.addKey(field.key, value ? "enabled" : "disabled");
        else
            writer.addKey(field.key, hexadecimal(value));
    }
    return writer;
}

} // namespace

void HZEPHardwareFeatureRom::toJSON(zep_platform::JSONObjectWriter& writer) const {
    writer.addKey("majorVersion", std::to_string(getMajorVersion()));
    writer.addKey("minorVersion", std::to_string(getMinorVersion()));
    writer.addKey("druvelBuildID", std::to_string(getDruvelBuildID()));
    writer.addKey("ipBuildID", std::to_string(getIPBuildID()));
    writer.addKey("timeSinceEpoch", std::to_string(getTimeSinceEpoch()));
    writer.addKey("fpgaPartName", withoutCutCharacter(getFPGAPartName()));
    writer.addKey("vbnvName", withoutCutCharacter(getVBNVName()));
    writer.addKey("ddrChannelCount", std::to_string(getDDRChannelCount()));
    writer.addKey("ddrChannelSize", std::to_string(getDDRChannelSize()));
    writer.addKey("drBaseAddress", hexadecimal(getDRBaseAddress()));
    writer.addKey("featureBitMap", describeFeatures(getFeatureBitMap()));
    writer.addKey("uuid", getUUIDAsString());
    for (unsigned int i = 0; i < getCDMABaseAddressSize(); ++i)
        writer.addKey("cdmaBaseAddress" + std::to_string(i), hexadecimal(getCDMABaseAddress(i)));
    writer.addKey("maxTempLimit", std::to_string(getMaxTempLimit()));
    writer.addKey("maxPowerLimit", std::to_string(getMaxPowerLimit()));
}

std::uint8_t HZEPHardwareFeatureRom::getMajorVersion() const {
    return load<std::uint8_t>(image_, kMajorVersion);
}
void HZEPHardwareFeatureRom::setMajorVersion(std::uint8_t version) {
    store(image_, kMajorVersion, version);
}
std::uint8_t HZEPHardwareFeatureRom::getMinorVersion() const {
    return load<std::uint8_t>(image_, kMinorVersion);
}
void HZEPHardwareFeatureRom::setMinorVersion(std::uint8_t version) {
    store(image_, kMinorVersion, version);
}
std::uint32_t HZEPHardwareFeatureRom::getDruvelBuildID() const {
    return load<std::uint32_t>(image_, kDruvelBuildID);
}
void HZEPHardwareFeatureRom::setDruvelBuildID(std::uint32_t id) {
    store(image_, kDruvelBuildID, id);
}
std::uint32_t HZEPHardwareFeatureRom::getIPBuildID() const {
    return load<std::uint32_t>(image_, kIPBuildID);
}
void HZEPHardwareFeatureRom::setIPBuildID(std::uint32_t id) {
    store(image_, kIPBuildID, id);
}
std::uint64_t HZEPHardwareFeatureRom::getTimeSinceEpoch() const {
    return load<std::uint64_t>(image_, kTimeSinceEpoch);
}
void HZEPHardwareFeatureRom::setTimeSinceEpoch(std::uint64_t time) {
    store(image_, kTimeSinceEpoch, time);
}

std::string HZEPHardwareFeatureRom::getFPGAPartName() const {
    return loadName(image_, kFPGAPartName);
}
void HZEPHardwareFeatureRom::setFPGAPartName(const unsigned char (&name)[64]) {
    storeName(image_, kFPGAPartName, name, "FPGAPartName");
}
std::string HZEPHardwareFeatureRom::getVBNVName() const {
    return loadName(image_, kVBNVName);
}
void HZEPHardwareFeatureRom::setVBNVName(const unsigned char (&name)[64]) {
    storeName(image_, kVBNVName, name, "VBNVName");
}

std::uint8_t HZEPHardwareFeatureRom::getDDRChannelCount() const {
    return load<std::uint8_t>(image_, kDDRChannelCount);
}
void HZEPHardwareFeatureRom::setDDRChannelCount(std::uint8_t count) {
    store(image_, kDDRChannelCount, count);
}
std::uint8_t HZEPHardwareFeatureRom::getDDRChannelSize() const {
    return load<std::uint8_t>(image_, kDDRChannelSize);
}
void HZEPHardwareFeatureRom::setDDRChannelSize(std::uint8_t size) {
    store(image_, kDDRChannelSize, size);
}
std::uint64_t HZEPHardwareFeatureRom::getDRBaseAddress() const {
    return load<std::uint64_t>(image_, kDRBaseAddress);
}
void HZEPHardwareFeatureRom::setDRBaseAddress(std::uint64_t address) {
    store(image_, kDRBaseAddress, address);
}
std::uint64_t HZEPHardwareFeatureRom::getFeatureBitMap() const {
    return load<std::uint64_t>(image_, kFeatureBitMap);
}
void HZEPHardwareFeatureRom::setFeatureBitMap(std::uint64_t bits) {
    store(image_, kFeatureBitMap, bits);
}

void HZEPHardwareFeatureRom::setUUID(const unsigned char (&uuid)[16]) {
    std::copy(std::begin(uuid), std::end(uuid), image_.begin() + kUUID);
}

void HZEPHardwareFeatureRom::setUUID(const std::string& uuid) {
    if (uuid.empty())
        return;
    boost::uuids::uuid value{};
    std::istringstream stream(uuid);
    if (!(stream >> std::noskipws >> value) || stream.peek() != std::istringstream::traits_type::eof())
        throw HostAlgException("Unable to convert string to Feature ROM UUID: '" + uuid + "'");
    std::copy(value.begin(), value.end(), image_.begin() + kUUID);
}

std::string HZEPHardwareFeatureRom::getUUIDAsString() const {
    boost::uuids::uuid value{};
    std::copy_n(image_.begin() + kUUID, kUUIDSize, value.begin());
    return boost::uuids::to_string(value);
}

std::uint32_t HZEPHardwareFeatureRom::getCDMABaseAddress(unsigned int index) const {
    return load<std::uint32_t>(image_, cdmaOffset(index));
}
void HZEPHardwareFeatureRom::setCDMABaseAddress(unsigned int index, std::uint32_t address) {
    store(image_, cdmaOffset(index), address);
}

std::uint8_t HZEPHardwareFeatureRom::getMaxTempLimit() const {
    return load<std::uint8_t>(image_, kMaxTempLimit);
}
void HZEPHardwareFeatureRom::setMaxTempLimit(std::uint8_t limit) {
    store(image_, kMaxTempLimit, limit);
}
std::uint8_t HZEPHardwareFeatureRom::getMaxPowerLimit() const {
    return load<std::uint8_t>(image_, kMaxPowerLimit);
}
void HZEPHardwareFeatureRom::setMaxPowerLimit(std::uint8_t limit) {
    store(image_, kMaxPowerLimit, limit);
}
