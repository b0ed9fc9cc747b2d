// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HZEPHardwareBusInterface.h"

#include "ModelJson.h"

using zep_platform::JSONObjectWriter;

void HZEPHardwareBusInterface::toJSON(JSONObjectWriter& writer) const {
    writer.addKey("name", name_);
    writer.addKey("mode", mode_);
    writer.addKey("instRef", instRef_);
    writer.addKey("compRef", compRef_);
    writer.addKey("typeRef", busTypeRef_);
    writer.addKey("interfaceRef", busInterfaceRef_);
    writer.addKey("clockRef", clockRef_);
    writer.addKey("resetRef", resetRef_);
    writer.addKey("memPort", memPort_);
    writer.addKey("spTag", spTag_);
    writer.addKey("slr", slr_);
    writer.addKey("memoryInstance", memoryInstance_);
    writer.addKey("dataWidth", std::to_string(dataWidth_));
    writer.addKey("numIdBits", std::to_string(numIdBits_));
    writer.addKey("addressSegment", addressSegment_);
    writer.addKey("direction", direction_);
    writer.addKey("isrId", std::to_string(isrId_));
    writer.addKey("category", category_);
    model_json::addObjects(writer, "addressSegments", addressSegments_);
}

HZEPHardwareAddressSegment* HZEPHardwareBusInterface::addAddressSegment() {
    return addressSegments_.add();
}

void HZEPHardwareBusInterface::getAddressSegments(std::vector<HZEPHardwareAddressSegment*>& out) const {
    addressSegments_.appendTo(out);
}

std::uint32_t HZEPHardwareBusInterface::getMemoryIndex(std::size_t segment) const {
    return segment < addressSegments_.size() ? addressSegments_.items()[segment]->getIndex() : 0;
}

std::string HZEPHardwareBusInterface::getMemorySLR(std::size_t segment) const {
    return segment < addressSegments_.size() ? addressSegments_.items()[segment]->getSlr() : "";
}
