// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HZEPSemanticEndpoint.h"

#include "JSONObjectWriter.h"
#include "LabelFields.h"

using namespace label_fields;

HZEPSemanticEndpoint::HZEPSemanticEndpoint(const boost::property_tree::ptree& label) {
    readLabel("@74-84@", [&] {
        endpointName_ = getText(label, "endpoint_name");
        vlnv_ = getText(label, "cell_vlnv");
        cellPath_ = getText(label, "cell");
        interfacePath_ = getText(label, "interface");
        addressSegment_ = getText(label, "addr_seg");
        registerAbstraction_ = getText(label, "reg_abs");
        partition_ = getText(label, "partition");
        partitionPath_ = getText(label, "partition_path");
        addr_ = getAddress(label, "addr");
        addrRange_ = getAddress(label, "range");
        interruptSource_ = label.get("interrupt_source", "");
        interruptSink_ = label.get("interrupt_sink", "");
        interruptSinkCell_ = label.get("interrupt_sink_cell", "");
        interruptSinkVlnv_ = label.get("interrupt_sink_cell_vlnv", "");
        interruptLeft_ = getOptionalNumber(label, "interrupt_sink_start");
        interruptRight_ = getOptionalNumber(label, "interrupt_sink_end");
        firmwareProduct_ = label.get("firmware_product", "");
        firmwareBranch_ = label.get("firmware_branch", "");
        firmwareVersion_ = label.get("firmware_version", "");
    });
}

void HZEPSemanticEndpoint::toJSON(zep_platform::JSONObjectWriter& writer) const {
    writer.addKey("endpoint_name", endpointName_);
    writer.addKey("cell_vlnv", vlnv_);
    writer.addKey("cell", cellPath_);
    writer.addKey("interface", interfacePath_);
    writer.addKey("addr_seg", addressSegment_);
    writer.addKey("reg_abs", registerAbstraction_);
    writer.addKey("partition", partition_);
    writer.addKey("partition_path", partitionPath_);
    writer.addKey("addr_offset", std::to_string(addr_));
    writer.addKey("addr_range", std::to_string(addrRange_));
    writer.addKey("has_firmware", firmwareValid());
    if (firmwareValid()) {
        writer.addKey("firmware_product", firmwareProduct_);
        writer.addKey("firmware_branch", firmwareBranch_);
        writer.addKey("firmware_has_version", firmwareVersionValid());
        writer.addKey("firmware_version", firmwareVersion_);
    }
    writer.addKey("has_interrupt", interruptValid());
    if (interruptValid()) {
        writer.addKey("interrupt_source", interruptSource_);
        writer.addKey("interrupt_sink", interruptSink_);
        writer.addKey("interrupt_sink_cell", interruptSinkCell_);
        writer.addKey("interrupt_sink_cell_vlnv", interruptSinkVlnv_);
        writer.addKey("interrupt_sink_start", std::to_string(interruptLeft_));
        writer.addKey("interrupt_sink_end", std::to_string(interruptRight_));
    }
}
