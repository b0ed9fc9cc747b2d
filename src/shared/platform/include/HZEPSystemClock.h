// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "JSONSerializable.h"

#include <string>
#include <utility>

/// A clock of a platform. Frequency and periods are the text of the metadata; the id is -1 until it is set.
class HZEP_EXPORT HZEPSystemClock : public zep_platform::JSONSerializable {
public:
    HZEPSystemClock() = default;
    HZEPSystemClock(const HZEPSystemClock&) = delete;
    HZEPSystemClock& operator=(const HZEPSystemClock&) = delete;

    void toJSON(zep_platform::JSONObjectWriter& writer) const override;

    const std::string& getName() const { return name_; }
    void setName(std::string name) { name_ = std::move(name); }
    const std::string& getOrigName() const { return origName_; }
    void setOrigName(std::string origName) { origName_ = std::move(origName); }
    const std::string& getFrequency() const { return frequency_; }
    void setFrequency(std::string frequency) { frequency_ = std::move(frequency); }
    const std::string& getPeriod() const { return period_; }
    void setPeriod(std::string period) { period_ = std::move(period); }
    const std::string& getNormalizedPeriod() const { return normalizedPeriod_; }
    void setNormalizedPeriod(std::string normalizedPeriod) { normalizedPeriod_ = std::move(normalizedPeriod); }
    const std::string& getCompRef() const { return compRef_; }
    void setCompRef(std::string compRef) { compRef_ = std::move(compRef); }
    const std::string& getInstRef() const { return instRef_; }
    void setInstRef(std::string instRef) { instRef_ = std::move(instRef); }
    const std::string& getStatus() const { return status_; }
    void setStatus(std::string status) { status_ = std::move(status); }
    int getId() const { return id_; }
    void setId(int id) { id_ = id; }

    /// The status is "scalable" or "changeable", ignoring case.
    bool isScalable() const;
    bool isFixed() const;
    bool isReserved() const;

private:
    std::string name_;
    std::string origName_;
    std::string frequency_;
    std::string period_;
    std::string normalizedPeriod_;
    std::string compRef_;
    std::string instRef_;
    std::string status_;
    int id_ = -1;
};
