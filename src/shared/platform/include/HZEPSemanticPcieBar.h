// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "JSONSerializable.h"

#include <boost/property_tree/ptree_fwd.hpp>

#include <cstdint>
#include <string>

/// One PCIe base address register of a shell. A value.
class HZEP_EXPORT HZEPSemanticPcieBar : public zep_platform::JSONSerializable {
public:
    enum BarType { AXI_BRIDGE_MASTER_BAR, DMA_BAR, UNKNOWN_BAR };

    HZEPSemanticPcieBar() = default;
    /// A label's object. What is missing or malformed is told by a message and ends the reading: the fields before it are set.
    explicit HZEPSemanticPcieBar(const boost::property_tree::ptree& label);

    /// The type is written as a boolean, so what is written can't be read again.
    void toJSON(zep_platform::JSONObjectWriter& writer) const override;

    /// "AXI_Bridge_Master" or "DMA"; the unknown type is "UNKNOWN", and any other text is of the unknown type.
    static std::string barTypeToString(BarType type);
    static BarType stringToBarType(const std::string& text);

    BarType getBarType() const { return barType_; }
    int getPhysicalFunction() const { return physicalFunction_; }
    int getBar() const { return bar_; }
    /// "INVALID" without one.
    const std::string& getDmaType() const { return dmaType_; }
    std::uint64_t getBarOffset() const { return barOffset_; }
    std::uint64_t getBarRange() const { return barRange_; }

private:
    BarType barType_ = AXI_BRIDGE_MASTER_BAR;
    int physicalFunction_ = 0;
    int bar_ = 0;
    std::string dmaType_ = "INVALID";
    std::uint64_t barOffset_ = 0;
    std::uint64_t barRange_ = 0;
};
