// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "DsaJsonKeys.h"
#include "HZEPDesignIPInstance.h"
#include "HZEPHardwareAddressSegment.h"
#include "HZEPHardwareBusInterface.h"
#include "HZEPHardwareIPParam.h"
#include "HZEPHardwareNocConnectivity.h"

/// What a design attaches to: bus interfaces, their address segments, the NoC, and the IP of the platform.
namespace dsa_json {

using SegmentRow = Keys<HZEPHardwareAddressSegment>;
inline constexpr Key<HZEPHardwareAddressSegment> kAddressSegmentKeys[] = {
    SegmentRow::text<&HZEPHardwareAddressSegment::setBaseName>("baseName"),
    SegmentRow::number<&HZEPHardwareAddressSegment::setIndex>("index"),
    SegmentRow::text<&HZEPHardwareAddressSegment::setMemoryInstance>("memoryInstance"),
    SegmentRow::text<&HZEPHardwareAddressSegment::setAuto>("auto"),
    SegmentRow::text<&HZEPHardwareAddressSegment::setSpTag>("spTag"),
    SegmentRow::text<&HZEPHardwareAddressSegment::setSlr>("slr"),
    SegmentRow::number<&HZEPHardwareAddressSegment::setMaxMasters>("maxMasters"),
    SegmentRow::text<&HZEPHardwareAddressSegment::setName>("name"),
    SegmentRow::text<&HZEPHardwareAddressSegment::setInstanceRef>("instRef"),
    SegmentRow::text<&HZEPHardwareAddressSegment::setRegion>("region"),
    SegmentRow::number<&HZEPHardwareAddressSegment::setReadBwUsed>("readBwUsed"),
    SegmentRow::number<&HZEPHardwareAddressSegment::setWriteBwUsed>("writeBwUsed"),
    SegmentRow::number<&HZEPHardwareAddressSegment::setInterleave>("interleave"),
};

using BusRow = Keys<HZEPHardwareBusInterface>;
inline constexpr Key<HZEPHardwareBusInterface> kBusInterfaceKeys[] = {
    BusRow::text<&HZEPHardwareBusInterface::setName>("name"),
    BusRow::text<&HZEPHardwareBusInterface::setMode>("mode"),
    BusRow::text<&HZEPHardwareBusInterface::setInstRef>("instRef"),
    BusRow::text<&HZEPHardwareBusInterface::setCompRef>("compRef"),
    BusRow::text<&HZEPHardwareBusInterface::setBusTypeRef>("typeRef"),
    BusRow::text<&HZEPHardwareBusInterface::setBusInterfaceRef>("interfaceRef"),
    BusRow::text<&HZEPHardwareBusInterface::setClockRef>("clockRef"),
    BusRow::writtenOnly("resetRef"),
    BusRow::text<&HZEPHardwareBusInterface::setMemPort>("memPort"),
    BusRow::text<&HZEPHardwareBusInterface::setSPTag>("spTag"),
    BusRow::writtenOnly("slr"),
    BusRow::writtenOnly("memoryInstance"),
    BusRow::numberUnlessEmpty<&HZEPHardwareBusInterface::setDataWidth>("dataWidth"),
    BusRow::writtenOnly("numIdBits", Shape::Number),
    BusRow::optionalText<&HZEPHardwareBusInterface::setAddressSegment>("addressSegment"),
    BusRow::writtenOnly("direction"),
    BusRow::writtenOnly("isrId", Shape::Number),
    BusRow::text<&HZEPHardwareBusInterface::setCategory>("category"),
    BusRow::list<&HZEPHardwareBusInterface::addAddressSegment, kAddressSegmentKeys>("addressSegments"),
};

using NocRow = Keys<HZEPHardwareNocConnectivity>;
inline constexpr Key<HZEPHardwareNocConnectivity> kNocConnectivityKeys[] = {
    NocRow::text<&HZEPHardwareNocConnectivity::setInstanceRef>("instRef"),
    NocRow::list<&HZEPHardwareNocConnectivity::addBusInterface, kBusInterfaceKeys>("busInterfaces"),
};

using IpParamRow = Keys<HZEPHardwareIPParam>;
inline constexpr Key<HZEPHardwareIPParam> kIpParamKeys[] = {
    IpParamRow::text<&HZEPHardwareIPParam::setName>("name"),       IpParamRow::text<&HZEPHardwareIPParam::setValue>("value"),
    IpParamRow::text<&HZEPHardwareIPParam::setIsValid>("valid"),   IpParamRow::text<&HZEPHardwareIPParam::setCompRef>("compRef"),
    IpParamRow::text<&HZEPHardwareIPParam::setInstRef>("instRef"),
};

/// Longest dotted name that nested objects of a configuration are read into. It keeps what a document can make of its text in
/// bounds; a deeper object counts as a parameter without a value.
inline constexpr std::size_t kMaxNestedName = 256;

/// Dotted names are written as nested objects, so nested objects are read back as dotted names.
inline void readConfiguration(HZEPDesignIPInstance& instance, Tree& object, const std::string& prefix = "") {
    drain(object, [&](Tree::value_type& item) {
        const std::string name = prefix + item.first;
        if (item.second.empty() || name.size() >= kMaxNestedName)
            instance.addConfigParam(name, item.second.data());
        else
            readConfiguration(instance, item.second, name + ".");
    });
}

using DesignIpRow = Keys<HZEPDesignIPInstance>;
inline constexpr Key<HZEPDesignIPInstance> kDesignIpInstanceKeys[] = {
    DesignIpRow::text<&HZEPDesignIPInstance::setVLNV>("vlnv"),
    DesignIpRow::text<&HZEPDesignIPInstance::setInstanceName>("instance"),
    DesignIpRow::child<[](HZEPDesignIPInstance& instance, Tree& configuration) { readConfiguration(instance, configuration); }>(
        "configuration", Shape::Object),
};

} // namespace dsa_json
