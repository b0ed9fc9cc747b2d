// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HZEPHardwareNocConnectivity.h"

#include "ModelJson.h"

using zep_platform::JSONObjectWriter;

void HZEPHardwareNocConnectivity::toJSON(JSONObjectWriter& writer) const {
    writer.addKey("instRef", instanceRef_);
    model_json::addObjects(writer, "busInterfaces", busInterfaces_);
}

HZEPHardwareBusInterface* HZEPHardwareNocConnectivity::addBusInterface() {
    return busInterfaces_.add();
}

HostFwdIter<HZEPHardwareBusInterface*>* HZEPHardwareNocConnectivity::createBusInterfaceIter() const {
    return busInterfaces_.createIter();
}

void HZEPHardwareNocConnectivity::getBusInterfaces(std::vector<HZEPHardwareBusInterface*>& out) const {
    busInterfaces_.appendTo(out);
}

HZEPHardwareBusInterface* HZEPHardwareNocConnectivity::getBusInterfaceByName(const std::string& name) const {
    for (HZEPHardwareBusInterface* busInterface : busInterfaces_) {
        if (busInterface->getName() == name)
            return busInterface;
    }
    return nullptr;
}
