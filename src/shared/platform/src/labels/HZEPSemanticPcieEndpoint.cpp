// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HZEPSemanticPcieEndpoint.h"

#include "JSONObjectWriter.h"
#include "LabelFields.h"

using namespace label_fields;

HZEPSemanticPcieEndpoint::HZEPSemanticPcieEndpoint(const boost::property_tree::ptree& label) : HZEPSemanticEndpoint(label) {
    readLabel("@74-83@", [&] {
        physicalFunction_ = getNumber(label, "physical_function");
        bar_ = getNumber(label, "bar");
    });
}

void HZEPSemanticPcieEndpoint::toJSON(zep_platform::JSONObjectWriter& writer) const {
    writer.addKey("physical_function", std::to_string(physicalFunction_));
    writer.addKey("bar", std::to_string(bar_));
    HZEPSemanticEndpoint::toJSON(writer);
}
