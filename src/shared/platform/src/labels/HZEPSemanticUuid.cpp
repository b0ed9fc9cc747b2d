// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HZEPSemanticUuid.h"

#include "JSONObjectWriter.h"
#include "LabelFields.h"

using namespace label_fields;

HZEPSemanticUuid::HZEPSemanticUuid(const boost::property_tree::ptree& label) {
    readLabel("@74-82@", [&] {
        uuidType_ = stringToUuidType(getText(label, "uuid_type"));
        uuidDesignComponent_ = getText(label, "uuid_design_component");
        uuid_ = getText(label, "uuid");
    });
}

void HZEPSemanticUuid::toJSON(zep_platform::JSONObjectWriter& writer) const {
    writer.addKey("uuid_type", uuidTypeToString(uuidType_));
    writer.addKey("uuid_design_component", uuidDesignComponent_);
    writer.addKey("uuid", uuid_);
}

std::string HZEPSemanticUuid::uuidTypeToString(UuidType type) {
    return type == LOGIC_UUID ? "logic" : type == INTERFACE_UUID ? "interface" : "UNKNOWN";
}

HZEPSemanticUuid::UuidType HZEPSemanticUuid::stringToUuidType(const std::string& text) {
    return text == "logic" ? LOGIC_UUID : text == "interface" ? INTERFACE_UUID : UNKNOWN_UUID;
}
