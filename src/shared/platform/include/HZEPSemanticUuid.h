// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "JSONSerializable.h"

#include <boost/property_tree/ptree_fwd.hpp>

#include <string>

/// The identifier of a shell's logic or of one of its interfaces. A value.
class HZEP_EXPORT HZEPSemanticUuid : public zep_platform::JSONSerializable {
public:
    enum UuidType { LOGIC_UUID, INTERFACE_UUID, UNKNOWN_UUID };

    HZEPSemanticUuid() = default;
    /// A label's object. What is missing or malformed is told by a message and ends the reading: the fields before it are set.
    explicit HZEPSemanticUuid(const boost::property_tree::ptree& label);

    void toJSON(zep_platform::JSONObjectWriter& writer) const override;

    /// "logic" or "interface"; the unknown type is "UNKNOWN", and any other text is of the unknown type.
    static std::string uuidTypeToString(UuidType type);
    static UuidType stringToUuidType(const std::string& text);

    UuidType getUuidType() const { return uuidType_; }
    const std::string& getUuidDesignComponent() const { return uuidDesignComponent_; }
    const std::string& getUuid() const { return uuid_; }

private:
    UuidType uuidType_ = LOGIC_UUID;
    std::string uuidDesignComponent_;
    std::string uuid_;
};
