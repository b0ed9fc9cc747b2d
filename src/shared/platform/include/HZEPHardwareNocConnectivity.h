// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HZEPHardwareBusInterface.h"
#include "HZEPOwnedList.h"
#include "JSONSerializable.h"

#include <string>
#include <utility>
#include <vector>

/// The bus interfaces that one instance on the network on chip offers.
class HZEP_EXPORT HZEPHardwareNocConnectivity : public zep_platform::JSONSerializable {
public:
    HZEPHardwareNocConnectivity() = default;
    HZEPHardwareNocConnectivity(const HZEPHardwareNocConnectivity&) = delete;
    HZEPHardwareNocConnectivity& operator=(const HZEPHardwareNocConnectivity&) = delete;

    void toJSON(zep_platform::JSONObjectWriter& writer) const override;

    const std::string& getInstanceRef() const { return instanceRef_; }
    void setInstanceRef(std::string instanceRef) { instanceRef_ = std::move(instanceRef); }

    HZEPHardwareBusInterface* addBusInterface();
    HostFwdIter<HZEPHardwareBusInterface*>* createBusInterfaceIter() const;
    void getBusInterfaces(std::vector<HZEPHardwareBusInterface*>& out) const;

    /// First interface of exactly this name, else null.
    HZEPHardwareBusInterface* getBusInterfaceByName(const std::string& name) const;

private:
    std::string instanceRef_;
    HZEPOwnedList<HZEPHardwareBusInterface> busInterfaces_;
};
