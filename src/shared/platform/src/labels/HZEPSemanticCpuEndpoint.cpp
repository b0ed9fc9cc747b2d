// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HZEPSemanticCpuEndpoint.h"

#include "JSONObjectWriter.h"
#include "LabelFields.h"

using namespace label_fields;

HZEPSemanticCpuEndpoint::HZEPSemanticCpuEndpoint(const boost::property_tree::ptree& label) : HZEPSemanticEndpoint(label) {
    readLabel("@74-80@", [&] { cpuType_ = getText(label, "cpu_type"); });
}

void HZEPSemanticCpuEndpoint::toJSON(zep_platform::JSONObjectWriter& writer) const {
    writer.addKey("cpu_type", cpuType_);
    HZEPSemanticEndpoint::toJSON(writer);
}
