// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "JSONSerializable.h"

#include <cstdint>

/// The identifiers of a reconfigurable partition, or of a platform itself. An id of 0 is none, and stays out of the document.
class HZEP_EXPORT HZEPReconfigPartition : public zep_platform::JSONSerializable {
public:
    HZEPReconfigPartition() = default;
    HZEPReconfigPartition(const HZEPReconfigPartition&) = delete;
    HZEPReconfigPartition& operator=(const HZEPReconfigPartition&) = delete;

    void toJSON(zep_platform::JSONObjectWriter& writer) const override;

    std::uint32_t getDesignID() const { return designID_; }
    void setDesignID(std::uint32_t designID) { designID_ = designID; }
    std::uint32_t getParentID() const { return parentID_; }
    void setParentID(std::uint32_t parentID) { parentID_ = parentID; }
    std::uint32_t getNodeID() const { return nodeID_; }
    void setNodeID(std::uint32_t nodeID) { nodeID_ = nodeID; }
    std::uint32_t getFunctionID() const { return functionID_; }
    void setFunctionID(std::uint32_t functionID) { functionID_ = functionID; }
    std::uint32_t getVCEPlInterfaceID() const { return vcePlInterfaceID_; }
    void setVCEPlInterfaceID(std::uint32_t vcePlInterfaceID) { vcePlInterfaceID_ = vcePlInterfaceID; }
    std::uint32_t getVCENodeID() const { return vceNodeID_; }
    void setVCENodeID(std::uint32_t vceNodeID) { vceNodeID_ = vceNodeID; }
    std::uint32_t getVCEUniqueID() const { return vceUniqueID_; }
    void setVCEUniqueID(std::uint32_t vceUniqueID) { vceUniqueID_ = vceUniqueID; }
    std::uint32_t getVCEPuID() const { return vcePuID_; }
    void setVCEPuID(std::uint32_t vcePuID) { vcePuID_ = vcePuID; }

private:
    std::uint32_t designID_ = 0;
    std::uint32_t parentID_ = 0;
    std::uint32_t nodeID_ = 0;
    std::uint32_t functionID_ = 0;
    std::uint32_t vcePlInterfaceID_ = 0;
    std::uint32_t vceNodeID_ = 0;
    std::uint32_t vceUniqueID_ = 0;
    std::uint32_t vcePuID_ = 0;
};
