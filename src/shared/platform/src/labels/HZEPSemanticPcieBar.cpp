// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HZEPSemanticPcieBar.h"

#include "JSONObjectWriter.h"
#include "LabelFields.h"

using namespace label_fields;

HZEPSemanticPcieBar::HZEPSemanticPcieBar(const boost::property_tree::ptree& label) {
    readLabel("@74-85@", [&] {
        barType_ = stringToBarType(getText(label, "bar_type"));
        physicalFunction_ = getNumber(label, "physical_function");
        bar_ = getNumber(label, "bar");
        dmaType_ = barType_ == DMA_BAR ? getText(label, "dma_type") : label.get("dma_type", dmaType_);
        barOffset_ = toAddress(label.get("offset", "0x0"));
        barRange_ = toAddress(label.get("range", "0x10000"));
    });
}

void HZEPSemanticPcieBar::toJSON(zep_platform::JSONObjectWriter& writer) const {
    writer.addKey("bar_type", barType_ != AXI_BRIDGE_MASTER_BAR);
    writer.addKey("physical_function", std::to_string(physicalFunction_));
    writer.addKey("bar", std::to_string(bar_));
    if (barType_ == AXI_BRIDGE_MASTER_BAR) {
        writer.addKey("offset", std::to_string(barOffset_));
        writer.addKey("range", std::to_string(barRange_));
    } else if (barType_ == DMA_BAR) {
        writer.addKey("dma_type", dmaType_);
    }
}

std::string HZEPSemanticPcieBar::barTypeToString(BarType type) {
    return type == AXI_BRIDGE_MASTER_BAR ? "AXI_Bridge_Master" : type == DMA_BAR ? "DMA" : "UNKNOWN";
}

HZEPSemanticPcieBar::BarType HZEPSemanticPcieBar::stringToBarType(const std::string& text) {
    return text == "AXI_Bridge_Master" ? AXI_BRIDGE_MASTER_BAR : text == "DMA" ? DMA_BAR : UNKNOWN_BAR;
}
