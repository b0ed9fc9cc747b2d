// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "DsaJsonKeys.h"
#include "HPLCore.h"
#include "HPLDevice.h"
#include "HPLPort.h"

#include <set>

/// Devices, their cores and what the cores have.
namespace dsa_json {

struct PBlock {
    std::string name;
    boost::optional<std::set<std::string>> slrs;
    std::vector<Pair> resources;
};

using PBlockRow = Keys<PBlock>;
inline constexpr Key<PBlock> kPBlockKeys[] = {
    PBlockRow::text<&PBlock::name>("name"),
    PBlockRow::child<[](PBlock& block, Tree& list) {
        block.slrs.emplace();
        drain(list, [&block](Tree::value_type& item) { block.slrs->insert(item.second.data()); });
    }>("validSlrs", Shape::List),
    PBlockRow::records<Pair, kNameValueKeys, [](PBlock& block, Pair& resource) { block.resources.push_back(std::move(resource)); }>(
        "resources"),
};

using CoreRow = Keys<HPLCore>;
inline constexpr Key<HPLCore> kAvailableResourcesKeys[] = {
    CoreRow::text<&HPLCore::setBRAMCount>("bramCount"),
    CoreRow::text<&HPLCore::setDSPCount>("dspCount"),
    CoreRow::text<&HPLCore::setLUTCount>("lutCount"),
    CoreRow::text<&HPLCore::setRegisterCount>("registerCount"),
    CoreRow::records<PBlock, kPBlockKeys,
                     [](HPLCore& core, const PBlock& block) {
                         if (block.slrs)
                             core.addSLRInfo(block.name, *block.slrs);
                         for (const Pair& resource : block.resources)
                             core.addResourceInfo(block.name, resource.first, resource.second);
                     }>("pBlocks"),
};

using PortRow = Keys<HPLPort>;
inline constexpr Key<HPLPort> kPortKeys[] = {
    PortRow::writtenOnly("name"),      PortRow::writtenOnly("type"),           PortRow::writtenOnly("mode"),
    PortRow::writtenOnly("base"),      PortRow::writtenOnly("range"),          PortRow::writtenOnly("dataWidth"),
    PortRow::writtenOnly("protocol"),  PortRow::writtenOnly("idWidth"),        PortRow::writtenOnly("addrWidth"),
    PortRow::writtenOnly("userWidth"), PortRow::writtenOnly("addrOffset"),     PortRow::writtenOnly("addrRange"),
    PortRow::writtenOnly("frequency"), PortRow::writtenOnly("maxBurstLength"), PortRow::writtenOnly("polarity"),
    PortRow::writtenOnly("direction"),
};

inline constexpr Key<HPLCore> kCoreKeys[] = {
    CoreRow::text<&HPLCore::setName>("name"),
    CoreRow::text<&HPLCore::setType>("type"),
    CoreRow::text<&HPLCore::setInstPath>("instPath"),
    CoreRow::text<&HPLCore::setSourceViewInstPath>("sourceViewInstPath"),
    CoreRow::writtenOnly("parentRMInstPath"),
    CoreRow::text<&HPLCore::setReconfigModuleName>("reconfigModuleName"),
    CoreRow::text<&HPLCore::setDRBDName>("drBDName"),
    CoreRow::writtenOnly("vlnv"),
    CoreRow::writtenOnly("clockFreq"),
    CoreRow::number<&HPLCore::setNumComputeUnits>("numComputeUnits"),
    CoreRow::object<std::identity{}, kAvailableResourcesKeys>("availableResources"),
    CoreRow::writtenOnly<kNameValueKeys>("configParams", Shape::List),
    CoreRow::writtenOnly<kPortKeys>("ports", Shape::List),
};

inline constexpr Key<Pair> kScalableClockKeys[] = {
    Keys<Pair>::text<&Pair::first>("name"),
    Keys<Pair>::text<&Pair::second>("frequency"),
};

using DeviceRow = Keys<HPLDevice>;
inline constexpr Key<HPLDevice> kPartKeys[] = {
    DeviceRow::derived("name"),       DeviceRow::derived("architecture"), DeviceRow::derived("device"),   DeviceRow::derived("package"),
    DeviceRow::derived("speedGrade"), DeviceRow::derived("tempGrade"),    DeviceRow::derived("staPower"), DeviceRow::derived("revision"),
};

inline constexpr Key<HPLDevice> kDeviceKeys[] = {
    DeviceRow::text<&HPLDevice::setName>("name"),
    DeviceRow::text<&HPLDevice::setType>("type"),
    DeviceRow::text<[](HPLDevice& device, const std::string& part) { device.setFpgaPart(part); }>("fpgaPart"),
    DeviceRow::derived<kPartKeys>("part", Shape::Object),
    DeviceRow::numberUnlessEmpty<&HPLDevice::setNumSLRs>("numSLRs"),
    DeviceRow::records<Pair, kScalableClockKeys,
                       [](HPLDevice& device, const Pair& clock) { device.addSystemClock(clock.first, clock.second); }>(
        "scalableSystemClocks"),
    // The one child that a document can't do without.
    Key<HPLDevice>{{"core", Shape::Object, &membersOf<kCoreKeys>},
                   [](HPLDevice& device, Tree& object, const char* name) { fill(device.getCore(), object.get_child(name), kCoreKeys); }},
};

} // namespace dsa_json
