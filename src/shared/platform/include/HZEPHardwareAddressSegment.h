// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "JSONSerializable.h"

#include <cstdint>
#include <string>
#include <utility>

/// One address segment of a bus interface; for an indexed memory, one of its banks.
class HZEP_EXPORT HZEPHardwareAddressSegment : public zep_platform::JSONSerializable {
public:
    HZEPHardwareAddressSegment() = default;
    HZEPHardwareAddressSegment(const HZEPHardwareAddressSegment&) = delete;
    HZEPHardwareAddressSegment& operator=(const HZEPHardwareAddressSegment&) = delete;

    void toJSON(zep_platform::JSONObjectWriter& writer) const override;

    const std::string& getBaseName() const { return baseName_; }
    void setBaseName(std::string baseName) { baseName_ = std::move(baseName); }
    const std::string& getMemoryInstance() const { return memoryInstance_; }
    void setMemoryInstance(std::string memoryInstance) { memoryInstance_ = std::move(memoryInstance); }
    const std::string& getAuto() const { return autoAssign_; }
    void setAuto(std::string autoAssign) { autoAssign_ = std::move(autoAssign); }
    const std::string& getSpTag() const { return spTag_; }
    void setSpTag(std::string spTag) { spTag_ = std::move(spTag); }
    const std::string& getSlr() const { return slr_; }
    void setSlr(std::string slr) { slr_ = std::move(slr); }
    const std::string& getName() const { return name_; }
    void setName(std::string name) { name_ = std::move(name); }
    const std::string& getInstanceRef() const { return instanceRef_; }
    void setInstanceRef(std::string instanceRef) { instanceRef_ = std::move(instanceRef); }
    const std::string& getRegion() const { return region_; }
    void setRegion(std::string region) { region_ = std::move(region); }
    std::uint32_t getIndex() const { return index_; }
    void setIndex(std::uint32_t index) { index_ = index; }
    std::uint32_t getMaxMasters() const { return maxMasters_; }
    void setMaxMasters(std::uint32_t maxMasters) { maxMasters_ = maxMasters; }
    int getReadBwUsed() const { return readBwUsed_; }
    void setReadBwUsed(int readBwUsed) { readBwUsed_ = readBwUsed; }
    int getWriteBwUsed() const { return writeBwUsed_; }
    void setWriteBwUsed(int writeBwUsed) { writeBwUsed_ = writeBwUsed; }
    std::uint32_t getInterleave() const { return interleave_; }
    void setInterleave(std::uint32_t interleave) { interleave_ = interleave; }

private:
    std::string baseName_;
    std::string memoryInstance_;
    std::string autoAssign_;
    std::string spTag_;
    std::string slr_;
    std::string name_;
    std::string instanceRef_;
    std::string region_;
    std::uint32_t index_ = 0;
    std::uint32_t maxMasters_ = 0;
    int readBwUsed_ = 0;
    int writeBwUsed_ = 0;
    std::uint32_t interleave_ = 0;
};
