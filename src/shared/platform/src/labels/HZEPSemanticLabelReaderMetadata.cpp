// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HZEPSemanticLabelReader.h"

#include "../foundations/CheckedDocument.h"
#include "HostErrors.h"
#include "HostFileUtils.h"

#include <boost/algorithm/string/classification.hpp>
#include <boost/algorithm/string/split.hpp>
#include <boost/format.hpp>
#include <boost/property_tree/json_parser/error.hpp>

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <ostream>
#include <utility>

using boost::property_tree::ptree;

namespace {

std::string shortHex(int value) {
    return (boost::format("0x%01X") % static_cast<unsigned>(value)).str();
}

std::string twoDigitHex(int value) {
    return (boost::format("0x%02X") % static_cast<unsigned>(value)).str();
}

std::string address(std::uint64_t value) {
    return (boost::format("0x%016X") % value).str();
}

void add(ptree& object, const char* key, const std::string& value) {
    object.push_back({key, ptree(value)});
}

void add(ptree& object, const std::string& key, ptree&& value) {
    object.push_back({key, ptree()})->second.swap(value);
}

/// Under the last name of a path of names that "." separates; any of them may be empty.
void addAtPath(ptree& object, const std::string& path, ptree&& value) {
    if (static_cast<std::size_t>(std::count(path.begin(), path.end(), '.')) >= HZEPSemanticLabelReader::kMaxNameParts)
        throw HostDataException("the name of an endpoint has more than " + std::to_string(HZEPSemanticLabelReader::kMaxNameParts) +
                                " parts: " + path.substr(0, 100) + "...");
    ptree* parent = &object;
    std::size_t begin = 0;
    for (std::size_t point; (point = path.find('.', begin)) != path.npos; begin = point + 1) {
        const std::string name = path.substr(begin, point - begin);
        const auto found = parent->find(name);
        parent = found == parent->not_found() ? &parent->push_back({name, ptree()})->second : &found->second;
    }
    add(*parent, path.substr(begin), std::move(value));
}

ptree makeRegion(int physicalFunction, int bar, std::uint64_t offset, std::uint64_t range) {
    ptree region;
    add(region, "pcie_physical_function", shortHex(physicalFunction));
    add(region, "pcie_base_address_register", shortHex(bar));
    add(region, "offset", address(offset));
    add(region, "range", address(range));
    return region;
}

ptree makeFirmware(const HZEPSemanticEndpoint& endpoint) {
    ptree firmware;
    add(firmware, "firmware_product_name", endpoint.getFirmwareProduct());
    add(firmware, "firmware_branch_name", endpoint.getFirmwareBranch());
    if (!endpoint.firmwareVersionValid())
        return firmware;
    static constexpr const char* kPartKeys[] = {"firmware_version_major", "firmware_version_minor", "firmware_version_revision"};
    std::vector<std::string> parts;
    boost::split(parts, endpoint.getFirmwareVersion(), boost::is_any_of("."), boost::token_compress_on);
    for (std::size_t i = 0; i < std::min(parts.size(), std::size(kPartKeys)); ++i)
        add(firmware, kPartKeys[i], parts[i]);
    return firmware;
}

ptree makeEndpoint(const HZEPSemanticPcieEndpoint& endpoint) {
    ptree node = makeRegion(endpoint.getPhysicalFunction(), endpoint.getBar(), endpoint.getAddr(), endpoint.getAddrRange());
    add(node, "register_abstraction_type", endpoint.getRegisterAbstraction());
    if (endpoint.interruptValid()) {
        add(node, "msix_interrupt_start_index", twoDigitHex(endpoint.getInterruptLeft()));
        add(node, "msix_interrupt_end_index", twoDigitHex(endpoint.getInterruptRight()));
    }
    if (endpoint.firmwareValid())
        add(node, "firmware", makeFirmware(endpoint));
    return node;
}

ptree makeInterfaces(const std::vector<HZEPSemanticUuid>& uuids) {
    ptree interfaces;
    for (const HZEPSemanticUuid& uuid : uuids)
        if (uuid.getUuidType() == HZEPSemanticUuid::INTERFACE_UUID) {
            ptree item;
            add(item, "interface_uuid", uuid.getUuid());
            add(interfaces, "", std::move(item));
        }
    return interfaces;
}

ptree makeSchemaVersion() {
    ptree version;
    add(version, "minor", shortHex(0));
    add(version, "major", shortHex(1));
    return version;
}

/// Its name and its object.
std::pair<std::string, ptree> makeDebugNetwork(const HZEPSemanticDebugNetwork& network) {
    const int function = network.getPhysicalFunction();
    std::string key = "pf" + std::to_string(function);
    std::string name = "Debug network for physical function " + std::to_string(function);
    if (function == 0) {
        key = "mgmt";
        name = "Management Debug Network";
    } else if (function == 1) {
        key = "user";
        name = "User Debug Network";
    }
    ptree node;
    add(node, "is_user_visible", function == 0 ? "false" : "true");
    add(node, "name", name);
    add(node, "pcie_pf", std::to_string(function));
    add(node, "bar_number", std::to_string(network.getBar()));
    add(node, "axi_baseaddr", address(network.getSystemAddress()));
    add(node, "supports_nanocore_debug", network.supportsNanocoreDebug() ? "true" : "false");
    add(node, "supports_jtag_fallback", network.supportsJtagFallback() ? "true" : "false");
    return {std::move(key), std::move(node)};
}

void writeFile(const std::string& file, const ptree& document) {
    HostFileUtils::writeFileAtomically(file, zep_platform::renderChecked(document));
}

void writeStream(std::ostream& stream, const ptree& document) {
    stream << zep_platform::renderChecked(document) << std::flush;
    if (!stream)
        throw boost::property_tree::json_parser::json_parser_error("write error", "", 0);
}

} // namespace

void HZEPSemanticLabelReader::generateAddressableEndpoints(const std::string& partitionPath, ptree& out) const {
    for (const HZEPSemanticPcieEndpoint& endpoint : pcieEndpoints_)
        if (partitionPath.ends_with(endpoint.getPartitionPath()))
            addAtPath(out, endpoint.getEndpointName(), makeEndpoint(endpoint));
}

void HZEPSemanticLabelReader::generatePartitionMetadata(ptree& out) const {
    std::string logicUuid = "UNDEFINED";
    for (const HZEPSemanticUuid& uuid : uuids_)
        if (uuid.getUuidType() == HZEPSemanticUuid::LOGIC_UUID)
            logicUuid = uuid.getUuid();

    ptree bars, endpoints;
    for (const HZEPSemanticPcieBar& bar : pcieBars_) {
        ptree region = makeRegion(bar.getPhysicalFunction(), bar.getBar(), bar.getBarOffset(), bar.getBarRange());
        bars.push_back({"", region});
        if (bar.getBarType() == HZEPSemanticPcieBar::DMA_BAR) {
            add(region, "register_abstraction_type", "tolvan:reg_abs:" + bar.getDmaType() + ":1.0");
            addAtPath(endpoints, "ep_" + bar.getDmaType() + "_00", std::move(region));
        }
    }
    generateAddressableEndpoints("/", endpoints);

    ptree metadata;
    if (ptree interfaces = makeInterfaces(uuids_); !interfaces.empty())
        add(metadata, "interfaces", std::move(interfaces));
    if (!bars.empty()) {
        ptree pcie;
        add(pcie, "bars", std::move(bars));
        add(metadata, "pcie", std::move(pcie));
    }
    if (!endpoints.empty())
        add(metadata, "addressable_endpoints", std::move(endpoints));
    add(metadata, "schema_version", makeSchemaVersion());
    add(metadata, "logic_uuid", logicUuid);
    add(out, "partition_metadata", std::move(metadata));
}

void HZEPSemanticLabelReader::generatePartitionMetadata(const std::string& file) const {
    ptree document;
    generatePartitionMetadata(document);
    writeFile(file, document);
}

void HZEPSemanticLabelReader::generatePartitionMetadata(std::ostream& stream) const {
    ptree document;
    generatePartitionMetadata(document);
    writeStream(stream, document);
}

void HZEPSemanticLabelReader::generateExtMetadata(const std::string& partitionPath, ptree& out) const {
    ptree metadata, endpoints, networks;
    if (ptree interfaces = makeInterfaces(uuids_); !interfaces.empty())
        add(metadata, "interfaces", std::move(interfaces));
    generateAddressableEndpoints(partitionPath, endpoints);
    if (!endpoints.empty())
        add(metadata, "addressable_endpoints", std::move(endpoints));
    add(metadata, "schema_version", makeSchemaVersion());
    for (const HZEPSemanticDebugNetwork& network : debugNetworks_)
        networks.push_back(makeDebugNetwork(network));

    ptree sections, library;
    add(sections, "partition_metadata", std::move(metadata));
    add(library, "append_sections", std::move(sections));
    add(out, "acclib", std::move(library));
    if (!networks.empty()) {
        ptree debug;
        add(debug, "debug_networks", std::move(networks));
        add(out, "tracelens_debug", std::move(debug));
    }
}

void HZEPSemanticLabelReader::generateExtMetadata(const std::string& partitionPath, const std::string& file) const {
    ptree document;
    generateExtMetadata(partitionPath, document);
    writeFile(file, document);
}

void HZEPSemanticLabelReader::generateExtMetadata(const std::string& partitionPath, std::ostream& stream) const {
    ptree document;
    generateExtMetadata(partitionPath, document);
    writeStream(stream, document);
}
