// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "JSONSerializable.h"

#include <boost/property_tree/ptree.hpp>

#include <string>
#include <vector>

/// A range of columns of the vector engine array, and the ranges within it. A value.
class HZEP_EXPORT HZEPVcePartition : public zep_platform::JSONSerializable {
public:
    HZEPVcePartition() = default;
    HZEPVcePartition(int start, int num) : startColumn_(start), numColumns_(num) {}

    void toJSON(zep_platform::JSONObjectWriter& writer) const override;
    /// Sets what toJSON writes; a missing key sets "" or 0.
    void fromJSON(const boost::property_tree::ptree& tree);

    bool isRoot() const { return isRoot_; }
    void isRoot(bool root) { isRoot_ = root; }
    int startColumn() const { return startColumn_; }
    void startColumn(int column) { startColumn_ = column; }
    int numColumns() const { return numColumns_; }
    void numColumns(int columns) { numColumns_ = columns; }
    const std::string& vceInst() const { return vceInst_; }
    void vceInst(const std::string& instance) { vceInst_ = instance; }
    const std::string& uuid() const { return uuid_; }
    void uuid(const std::string& uuid) { uuid_ = uuid; }
    const std::string& plIntefaceID() const { return plIntefaceID_; }
    void plIntefaceID(const std::string& id) { plIntefaceID_ = id; }
    const std::vector<HZEPVcePartition>& partitions() const { return partitions_; }
    std::vector<HZEPVcePartition>& partitions() { return partitions_; }

    /// It has columns; start column 0 is no sign of absence.
    bool isPartition() const { return numColumns_ > 0; }
    bool hasPartitions() const { return !partitions_.empty(); }

    /// Compares all fields and the sub-partitions in order, all the way down.
    bool operator==(const HZEPVcePartition& other) const;
    bool operator!=(const HZEPVcePartition& other) const { return !(*this == other); }

    /// The first direct sub-partition with exactly these columns; with none, one object that is no partition, the same at every call.
    const HZEPVcePartition& findPartition(int start, int num) const;
    /// A direct sub-partition has that plIntefaceID.
    bool hasPartition(const std::string& plInterfaceId) const;

    /// The reference holds until the next partition is added.
    HZEPVcePartition& addPartition();
    HZEPVcePartition& addPartition(int start, int num);
    void clear();

private:
    bool isRoot_ = false;
    int startColumn_ = 0;
    int numColumns_ = 0;
    std::string vceInst_;
    std::string uuid_;
    std::string plIntefaceID_;
    std::vector<HZEPVcePartition> partitions_;
};
