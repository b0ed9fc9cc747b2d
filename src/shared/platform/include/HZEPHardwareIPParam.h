// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "JSONSerializable.h"

#include <string>
#include <utility>

/// A parameter of an IP in the platform. The validity is the text that the metadata gave.
class HZEP_EXPORT HZEPHardwareIPParam : public zep_platform::JSONSerializable {
public:
    HZEPHardwareIPParam() = default;
    HZEPHardwareIPParam(const HZEPHardwareIPParam&) = delete;
    HZEPHardwareIPParam& operator=(const HZEPHardwareIPParam&) = delete;

    void toJSON(zep_platform::JSONObjectWriter& writer) const override;

    const std::string& getName() const { return name_; }
    void setName(std::string name) { name_ = std::move(name); }
    const std::string& getValue() const { return value_; }
    void setValue(std::string value) { value_ = std::move(value); }
    const std::string& getCompRef() const { return compRef_; }
    void setCompRef(std::string compRef) { compRef_ = std::move(compRef); }
    const std::string& getInstRef() const { return instRef_; }
    void setInstRef(std::string instRef) { instRef_ = std::move(instRef); }
    const std::string& getIsValid() const { return isValid_; }
    void setIsValid(std::string isValid) { isValid_ = std::move(isValid); }

private:
    std::string name_;
    std::string value_;
    std::string compRef_;
    std::string instRef_;
    std::string isValid_;
};
