// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "JSONSerializable.h"

#include <boost/property_tree/ptree_fwd.hpp>

#include <cstdint>
#include <string>

/// A debug network of a shell and where it is reached. A value.
class HZEP_EXPORT HZEPSemanticDebugNetwork : public zep_platform::JSONSerializable {
public:
    HZEPSemanticDebugNetwork() = default;
    /// A label's object. What is missing or malformed is told by a message and ends the reading: the fields before it are set.
    explicit HZEPSemanticDebugNetwork(const boost::property_tree::ptree& label);

    void toJSON(zep_platform::JSONObjectWriter& writer) const override;

    int getPhysicalFunction() const { return physicalFunction_; }
    int getBar() const { return bar_; }
    std::uint64_t getBarAddress() const { return barAddress_; }
    std::uint64_t getSystemAddress() const { return systemAddress_; }
    const std::string& getPartition() const { return partition_; }
    const std::string& getPartitionPath() const { return partitionPath_; }
    /// Both are true for exactly the text "true" in the label.
    bool supportsNanocoreDebug() const { return supportsNanocoreDebug_; }
    bool supportsJtagFallback() const { return supportsJtagFallback_; }

private:
    int physicalFunction_ = 0;
    int bar_ = 0;
    std::uint64_t barAddress_ = 0;
    std::uint64_t systemAddress_ = 0;
    std::string partition_;
    std::string partitionPath_;
    bool supportsNanocoreDebug_ = false;
    bool supportsJtagFallback_ = false;
};
