// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "JSONSerializable.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

/// The header that a platform's bitstream offers to software, kept as the byte image that stands in the device (little-endian).
class HZEP_EXPORT HZEPHardwareFeatureRom : public zep_platform::JSONSerializable {
public:
    static constexpr std::size_t kRomHeaderSize = 224;

    void toJSON(zep_platform::JSONObjectWriter& writer) const override;

    /// kRomHeaderSize bytes, owned by this object.
    const unsigned char* getRomHeader() const { return image_.data(); }

    std::uint8_t getMajorVersion() const;
    void setMajorVersion(std::uint8_t version);
    std::uint8_t getMinorVersion() const;
    void setMinorVersion(std::uint8_t version);
    std::uint32_t getDruvelBuildID() const;
    void setDruvelBuildID(std::uint32_t id);
    std::uint32_t getIPBuildID() const;
    void setIPBuildID(std::uint32_t id);
    std::uint64_t getTimeSinceEpoch() const;
    void setTimeSinceEpoch(std::uint64_t time);

    /// At most 63 characters. The setters raise HostDataException for 64 bytes without a zero among them.
    std::string getFPGAPartName() const;
    void setFPGAPartName(const unsigned char (&name)[64]);
    std::string getVBNVName() const;
    void setVBNVName(const unsigned char (&name)[64]);

    std::uint8_t getDDRChannelCount() const;
    void setDDRChannelCount(std::uint8_t count);
    std::uint8_t getDDRChannelSize() const;
    void setDDRChannelSize(std::uint8_t size);
    std::uint64_t getDRBaseAddress() const;
    void setDRBaseAddress(std::uint64_t address);
    std::uint64_t getFeatureBitMap() const;
    void setFeatureBitMap(std::uint64_t bits);

    void setUUID(const unsigned char (&uuid)[16]);
    /// An empty text changes nothing; one that is no UUID raises HostAlgException.
    void setUUID(const std::string& uuid);
    /// 36 characters, lower case.
    std::string getUUIDAsString() const;

    static constexpr unsigned int getCDMABaseAddressSize() { return 4; }
    /// Both raise HostAlgException for an index of 4 or more.
    std::uint32_t getCDMABaseAddress(unsigned int index) const;
    void setCDMABaseAddress(unsigned int index, std::uint32_t address);

    std::uint8_t getMaxTempLimit() const;
    void setMaxTempLimit(std::uint8_t limit);
    std::uint8_t getMaxPowerLimit() const;
    void setMaxPowerLimit(std::uint8_t limit);

    const std::string& getSearchPropertyName() const { return searchPropertyName_; }
    void setSearchPropertyName(const std::string& name) { searchPropertyName_ = name; }

private:
    std::array<unsigned char, kRomHeaderSize> image_{};
    std::string searchPropertyName_ = "ZEP_FEATURE_ROM";
};
