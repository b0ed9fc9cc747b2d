// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "JSONSerializable.h"

#include <string>
#include <utility>

/// The identity that a board shows on its PCIe connector.
class HZEP_EXPORT HPLPCIeId : public zep_platform::JSONSerializable {
public:
    HPLPCIeId() = default;
    HPLPCIeId(const HPLPCIeId&) = delete;
    HPLPCIeId& operator=(const HPLPCIeId&) = delete;

    void toJSON(zep_platform::JSONObjectWriter& writer) const override;

    const std::string& getVendor() const { return vendor_; }
    void setVendor(std::string vendor) { vendor_ = std::move(vendor); }
    const std::string& getDevice() const { return device_; }
    void setDevice(std::string device) { device_ = std::move(device); }
    const std::string& getSubsystem() const { return subsystem_; }
    void setSubsystem(std::string subsystem) { subsystem_ = std::move(subsystem); }
    const std::string& getFeatureId() const { return featureId_; }
    void setFeatureId(std::string featureId) { featureId_ = std::move(featureId); }

private:
    std::string vendor_;
    std::string device_;
    std::string subsystem_;
    std::string featureId_;
};
