// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HPLPort.h"

#include "JSONObjectWriter.h"

using zep_platform::JSONObjectWriter;

void HPLPort::toJSON(JSONObjectWriter& writer) const {
    writer.addKey("name", name_);
    writer.addKey("type", type_);
    writer.addKey("mode", mode_);
    writer.addKey("base", base_);
    writer.addKey("range", range_);
    writer.addKey("dataWidth", dataWidth_);
    writer.addKey("protocol", protocol_);
    writer.addKey("idWidth", idWidth_);
    writer.addKey("addrWidth", addrWidth_);
    writer.addKey("userWidth", userWidth_);
    writer.addKey("addrOffset", addrOffset_);
    writer.addKey("addrRange", addrRange_);
    writer.addKey("maxBurstLength", maxBurstLength_);
    writer.addKey("frequency", frequency_);
    writer.addKey("polarity", polarity_);
    writer.addKey("direction", direction_);
}

void HPLPort::addAddressSegment(HPLAddressSegment* segment) {
    if (segment)
        addressSegments_.add(std::unique_ptr<HPLAddressSegment>(segment));
}

HostFwdIter<HPLAddressSegment*>* HPLPort::createAddressSegmentIter() const {
    return addressSegments_.createIter();
}
