// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HPLAddressSegment.h"
#include "HZEPOwnedList.h"
#include "JSONSerializable.h"

#include <string>
#include <utility>

/// A port of a core; every value is the text that the metadata gave. The address segments are not part of the document.
class HZEP_EXPORT HPLPort : public zep_platform::JSONSerializable {
public:
    HPLPort() = default;
    HPLPort(const HPLPort&) = delete;
    HPLPort& operator=(const HPLPort&) = delete;

    void toJSON(zep_platform::JSONObjectWriter& writer) const override;

    const std::string& getName() const { return name_; }
    void setName(std::string name) { name_ = std::move(name); }
    const std::string& getType() const { return type_; }
    void setType(std::string type) { type_ = std::move(type); }
    const std::string& getMode() const { return mode_; }
    void setMode(std::string mode) { mode_ = std::move(mode); }
    const std::string& getBase() const { return base_; }
    void setBase(std::string base) { base_ = std::move(base); }
    const std::string& getRange() const { return range_; }
    void setRange(std::string range) { range_ = std::move(range); }
    const std::string& getDataWidth() const { return dataWidth_; }
    void setDataWidth(std::string dataWidth) { dataWidth_ = std::move(dataWidth); }
    const std::string& getProtocol() const { return protocol_; }
    void setProtocol(std::string protocol) { protocol_ = std::move(protocol); }
    const std::string& getIdWidth() const { return idWidth_; }
    void setIdWidth(std::string idWidth) { idWidth_ = std::move(idWidth); }
    const std::string& getAddrWidth() const { return addrWidth_; }
    void setAddrWidth(std::string addrWidth) { addrWidth_ = std::move(addrWidth); }
    const std::string& getUserWidth() const { return userWidth_; }
    void setUserWidth(std::string userWidth) { userWidth_ = std::move(userWidth); }
    const std::string& getAddrOffset() const { return addrOffset_; }
    void setAddrOffset(std::string addrOffset) { addrOffset_ = std::move(addrOffset); }
    const std::string& getAddrRange() const { return addrRange_; }
    void setAddrRange(std::string addrRange) { addrRange_ = std::move(addrRange); }
    const std::string& getMaxBurstLength() const { return maxBurstLength_; }
    void setMaxBurstLength(std::string maxBurstLength) { maxBurstLength_ = std::move(maxBurstLength); }
    const std::string& getFrequency() const { return frequency_; }
    void setFrequency(std::string frequency) { frequency_ = std::move(frequency); }
    const std::string& getPolarity() const { return polarity_; }
    void setPolarity(std::string polarity) { polarity_ = std::move(polarity); }
    const std::string& getDirection() const { return direction_; }
    void setDirection(std::string direction) { direction_ = std::move(direction); }

    /// Takes ownership of the segment.
    void addAddressSegment(HPLAddressSegment* segment);
    HostFwdIter<HPLAddressSegment*>* createAddressSegmentIter() const;

private:
    std::string name_;
    std::string type_;
    std::string mode_;
    std::string base_;
    std::string range_;
    std::string dataWidth_;
    std::string protocol_;
    std::string idWidth_;
    std::string addrWidth_;
    std::string userWidth_;
    std::string addrOffset_;
    std::string addrRange_;
    std::string maxBurstLength_;
    std::string frequency_;
    std::string polarity_;
    std::string direction_;
    HZEPOwnedList<HPLAddressSegment> addressSegments_;
};
