// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HPLCore.h"
#include "HZEPDevice.h"
#include "JSONSerializable.h"

#include <map>
#include <string>
#include <utility>

/// A device with its core and the system clocks that a user may scale. The device of interest is the one named "fpga0".
class HZEP_EXPORT HPLDevice : public HZEPDevice, public zep_platform::JSONSerializable {
public:
    void toJSON(zep_platform::JSONObjectWriter& writer) const override;

    const std::string& getType() const { return type_; }
    void setType(std::string type) { type_ = std::move(type); }

    HPLCore& getCore() { return core_; }
    const HPLCore& getReadOnlyCore() const { return core_; }

    /// Clock name to frequency text.
    const std::map<std::string, std::string>& getSystemClockMap() const { return systemClockMap_; }
    /// A name that is there already takes the new frequency.
    void addSystemClock(const std::string& name, const std::string& frequency);

    unsigned getAddrWidth() const { return core_.getMaxAddrWidth(); }

private:
    std::string type_;
    HPLCore core_;
    std::map<std::string, std::string> systemClockMap_;
};
