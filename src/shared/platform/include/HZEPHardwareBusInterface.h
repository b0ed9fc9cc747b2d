// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HZEPHardwareAddressSegment.h"
#include "HZEPOwnedList.h"
#include "JSONSerializable.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

/// A connection point that the platform offers to a design: a bus, an interrupt, or the port of a memory.
class HZEP_EXPORT HZEPHardwareBusInterface : public zep_platform::JSONSerializable {
public:
    HZEPHardwareBusInterface() = default;
    HZEPHardwareBusInterface(const HZEPHardwareBusInterface&) = delete;
    HZEPHardwareBusInterface& operator=(const HZEPHardwareBusInterface&) = delete;

    void toJSON(zep_platform::JSONObjectWriter& writer) const override;

    const std::string& getName() const { return name_; }
    void setName(std::string name) { name_ = std::move(name); }
    const std::string& getMode() const { return mode_; }
    void setMode(std::string mode) { mode_ = std::move(mode); }
    const std::string& getBusTypeRef() const { return busTypeRef_; }
    void setBusTypeRef(std::string busTypeRef) { busTypeRef_ = std::move(busTypeRef); }
    const std::string& getBusInterfaceRef() const { return busInterfaceRef_; }
    void setBusInterfaceRef(std::string busInterfaceRef) { busInterfaceRef_ = std::move(busInterfaceRef); }
    const std::string& getCompRef() const { return compRef_; }
    void setCompRef(std::string compRef) { compRef_ = std::move(compRef); }
    const std::string& getInstRef() const { return instRef_; }
    void setInstRef(std::string instRef) { instRef_ = std::move(instRef); }
    const std::string& getClockRef() const { return clockRef_; }
    void setClockRef(std::string clockRef) { clockRef_ = std::move(clockRef); }
    const std::string& getResetRef() const { return resetRef_; }
    void setResetRef(std::string resetRef) { resetRef_ = std::move(resetRef); }
    const std::string& getMemPort() const { return memPort_; }
    void setMemPort(std::string memPort) { memPort_ = std::move(memPort); }
    const std::string& getSPTag() const { return spTag_; }
    void setSPTag(std::string spTag) { spTag_ = std::move(spTag); }
    const std::string& getDirection() const { return direction_; }
    void setDirection(std::string direction) { direction_ = std::move(direction); }
    const std::string& getAddressSegment() const { return addressSegment_; }
    void setAddressSegment(std::string addressSegment) { addressSegment_ = std::move(addressSegment); }
    const std::string& getMemoryInstance() const { return memoryInstance_; }
    void setMemoryInstance(std::string memoryInstance) { memoryInstance_ = std::move(memoryInstance); }
    const std::string& getSLR() const { return slr_; }
    void setSLR(std::string slr) { slr_ = std::move(slr); }
    const std::string& getSize() const { return size_; }
    void setSize(std::string size) { size_ = std::move(size); }

    /// Answers the size, not what setPeakMemoryBandwidth stored, which nothing reads back.
    const std::string& getPeakMemoryBandwidth() const { return size_; }
    void setPeakMemoryBandwidth(std::string peakMemoryBandwidth) { peakMemoryBandwidth_ = std::move(peakMemoryBandwidth); }

    const std::string& getCategory() const { return category_; }
    void setCategory(std::string category) { category_ = std::move(category); }
    int getDataWidth() const { return dataWidth_; }
    void setDataWidth(int dataWidth) { dataWidth_ = dataWidth; }
    int getNumIdBits() const { return numIdBits_; }
    void setNumIdBits(int numIdBits) { numIdBits_ = numIdBits; }
    int getMaxMasters() const { return maxMasters_; }
    void setMaxMasters(int maxMasters) { maxMasters_ = maxMasters; }
    int getISRId() const { return isrId_; }
    void setISRId(int isrId) { isrId_ = isrId; }

    HZEPHardwareAddressSegment* addAddressSegment();
    void getAddressSegments(std::vector<HZEPHardwareAddressSegment*>& out) const;
    std::size_t getNumAddressSegments() const { return addressSegments_.size(); }

    /// Index and region of one segment; 0 and "" past the last one.
    std::uint32_t getMemoryIndex(std::size_t segment) const;
    std::string getMemorySLR(std::size_t segment) const;

private:
    std::string name_;
    std::string mode_;
    std::string busTypeRef_;
    std::string busInterfaceRef_;
    std::string compRef_;
    std::string instRef_;
    std::string clockRef_;
    std::string resetRef_;
    std::string memPort_;
    std::string spTag_;
    std::string direction_;
    std::string addressSegment_;
    std::string memoryInstance_;
    std::string slr_;
    std::string size_;
    std::string peakMemoryBandwidth_;
    std::string category_;
    HZEPOwnedList<HZEPHardwareAddressSegment> addressSegments_;
    int dataWidth_ = 0;
    int numIdBits_ = 0;
    int maxMasters_ = 0;
    int isrId_ = 0;
};
