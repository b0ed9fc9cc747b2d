// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HZEPSemanticDebugNetwork.h"

#include "JSONObjectWriter.h"
#include "LabelFields.h"

using namespace label_fields;

HZEPSemanticDebugNetwork::HZEPSemanticDebugNetwork(const boost::property_tree::ptree& label) {
    readLabel("@74-81@", [&] {
        physicalFunction_ = getNumber(label, "physical_function");
        bar_ = getNumber(label, "bar");
        barAddress_ = getAddress(label, "bar_addr");
        systemAddress_ = getAddress(label, "system_addr");
        partition_ = getText(label, "partition");
        partitionPath_ = getText(label, "partition_path");
        supportsNanocoreDebug_ = getText(label, "supports_nanocore_debug") == "true";
        supportsJtagFallback_ = getText(label, "supports_jtag_fallback") == "true";
    });
}

void HZEPSemanticDebugNetwork::toJSON(zep_platform::JSONObjectWriter& writer) const {
    writer.addKey("physical_function", std::to_string(physicalFunction_));
    writer.addKey("bar", std::to_string(bar_));
    writer.addKey("bar_addr", std::to_string(barAddress_));
    writer.addKey("system_addr", std::to_string(systemAddress_));
    writer.addKey("partition", partition_);
    writer.addKey("partition_path", partitionPath_);
    writer.addKey("supports_nanocore_debug", supportsNanocoreDebug_);
    writer.addKey("supports_jtag_fallback", supportsJtagFallback_);
}
