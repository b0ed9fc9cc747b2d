// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "JSONSerializable.h"

#include <boost/property_tree/ptree_fwd.hpp>

#include <cstdint>
#include <string>

/// What a driver or a processor can address in a shell, with its interrupt and its firmware. A value.
class HZEP_EXPORT HZEPSemanticEndpoint : public zep_platform::JSONSerializable {
public:
    HZEPSemanticEndpoint() = default;
    /// A label's object. What is missing or malformed is told by a message and ends the reading: the fields before it are set.
    explicit HZEPSemanticEndpoint(const boost::property_tree::ptree& label);

    /// The address and its range are written under other keys than they are read from, so what is written can't be read again.
    void toJSON(zep_platform::JSONObjectWriter& writer) const override;

    const std::string& getEndpointName() const { return endpointName_; }
    const std::string& getVlnv() const { return vlnv_; }
    const std::string& getCellPath() const { return cellPath_; }
    const std::string& getInterfacePath() const { return interfacePath_; }
    const std::string& getAddressSegment() const { return addressSegment_; }
    const std::string& getRegisterAbstraction() const { return registerAbstraction_; }
    const std::string& getPartition() const { return partition_; }
    const std::string& getPartitionPath() const { return partitionPath_; }
    std::uint64_t getAddr() const { return addr_; }
    std::uint64_t getAddrRange() const { return addrRange_; }

    /// There is an interrupt source; what else is told of interrupts doesn't count without one.
    bool interruptValid() const { return !interruptSource_.empty(); }
    const std::string& getInterruptSource() const { return interruptSource_; }
    const std::string& getInterruptSink() const { return interruptSink_; }
    const std::string& getInterruptSinkCell() const { return interruptSinkCell_; }
    const std::string& getInterruptSinkVlnv() const { return interruptSinkVlnv_; }
    int getInterruptLeft() const { return interruptLeft_; }
    int getInterruptRight() const { return interruptRight_; }

    /// There is a firmware product.
    bool firmwareValid() const { return !firmwareProduct_.empty(); }
    bool firmwareVersionValid() const { return !firmwareVersion_.empty(); }
    const std::string& getFirmwareProduct() const { return firmwareProduct_; }
    const std::string& getFirmwareBranch() const { return firmwareBranch_; }
    const std::string& getFirmwareVersion() const { return firmwareVersion_; }

private:
    std::string endpointName_;
    std::string vlnv_;
    std::string cellPath_;
    std::string interfacePath_;
    std::string addressSegment_;
    std::string registerAbstraction_;
    std::string partition_;
    std::string partitionPath_;
    std::uint64_t addr_ = 0;
    std::uint64_t addrRange_ = 0;
    std::string interruptSource_;
    std::string interruptSink_;
    std::string interruptSinkCell_;
    std::string interruptSinkVlnv_;
    int interruptLeft_ = 0;
    int interruptRight_ = 0;
    std::string firmwareProduct_;
    std::string firmwareBranch_;
    std::string firmwareVersion_;
};
