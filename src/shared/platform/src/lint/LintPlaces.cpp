// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "../hardware/AsciiCase.h"
#include "LintNumbers.h"
#include "LintText.h"
#include "LintTree.h"

#include <algorithm>
#include <array>
#include <limits>
#include <map>
#include <string>

namespace {

using lint::Findings;
using lint::Kind;
using lint::Node;
using lint::Rule;

/// Both ends belong to it.
struct Range {
    unsigned long first;
    unsigned long last;
    const Node* node; ///< where it stands
    std::string name;
};

void complainOfOverlap(Rule rule, const std::string& what, std::vector<Range> ranges, Findings& findings) {
    std::stable_sort(ranges.begin(), ranges.end(), [](const Range& a, const Range& b) { return a.first < b.first; });
    const Range* widest = nullptr; // of those before, the one that ends last
    for (const Range& range : ranges) {
        if (widest && range.first <= widest->last)
            findings.add(rule, range.node->spot(),
                         what + " " + lint::quote(range.name) + " overlaps " + lint::quote(widest->name) + ", line " +
                             std::to_string(widest->node->line),
                         {{}, {}, findings.at(widest->node->spot())});
        if (!widest || range.last > widest->last)
            widest = &range;
    }
}

/// Both addresses 0 are none.
void checkMemories(const Node* list, const char* item, const std::array<const char*, 4>& keys, Findings& findings) {
    constexpr unsigned long kGigabyte = 1UL << 30;
    const auto [nameKey, sizeKey, lowKey, highKey] = keys;
    std::vector<Range> ranges;
    forEachItem(list, item, [&](const Node& memory) {
        const Node* high = memory.find(highKey);
        const auto first = memory.find(lowKey) ? lint::toWhole(memory.get(lowKey)) : 0;
        const auto last = high ? lint::toWhole(high->value) : std::nullopt;
        if (!first || !last || (*first == 0 && *last == 0))
            return;
        if (*last < *first) {
            findings.add(Rule::AddressOrder, high->spot(),
                         "memory " + lint::quote(memory.get(nameKey)) + " ends at " + std::to_string(*last) + ", before it starts at " +
                             std::to_string(*first));
            return;
        }
        const std::string& size = memory.get(sizeKey);
        const auto gigabytes = size.ends_with("GB") ? lint::toWhole(size.substr(0, size.size() - 2)) : std::nullopt;
        if (gigabytes && *gigabytes > 0 && *gigabytes < std::numeric_limits<unsigned long>::max() / kGigabyte &&
            *last - *first != *gigabytes * kGigabyte - 1)
            findings.add(Rule::AddressSize, high->spot(),
                         "the addresses of memory " + lint::quote(memory.get(nameKey)) + " don't hold " + lint::quote(size),
                         {'"' + std::to_string(*first + *gigabytes * kGigabyte - 1) + '"', "", {}});
        ranges.push_back({*first, *last, high, memory.get(nameKey)});
    });
    complainOfOverlap(Rule::AddressOverlap, "memory", std::move(ranges), findings);
}

std::optional<Range> toRange(const Node& node, const char* baseKey, const char* sizeKey, const char* nameKey) {
    const Node* base = node.find(baseKey);
    const auto first = base ? lint::toAddress(base->value) : std::nullopt;
    const auto size = lint::toAddress(node.get(sizeKey));
    if (!first || !size || *size == 0 || *size - 1 > std::numeric_limits<unsigned long>::max() - *first)
        return std::nullopt;
    return Range{*first, *first + (*size - 1), base, node.get(nameKey)};
}

void checkPort(const Node& port, Findings& findings) {
    const auto whole = toRange(port, "Base", "Range", "Name");
    std::vector<Range> ranges;
    forEachItem(port.find("AddressSegments"), "AddressSegment", [&](const Node& segment) {
        const auto range = toRange(segment, "Base", "Range", "Name");
        if (!range)
            return;
        if (whole && (range->first < whole->first || range->last > whole->last))
            findings.add(
                Rule::SegmentLeavesPort, range->node->spot(),
                "segment " + lint::quote(range->name) + " leaves the range of port " + lint::quote(whole->name),
                {lint::quote(port.get("Base")) + " to " + lint::quote(port.get("Range")) + " more", "", findings.at(whole->node->spot())});
        ranges.push_back(*range);
    });
    complainOfOverlap(Rule::SegmentOverlap, "segment", std::move(ranges), findings);
}

/// The keys of the counts: of the whole, and the starts of the names that pblocks give them.
struct Resource {
    const char* json;
    const char* xml;
    const char* name;
};
constexpr Resource kResources[] = {
    {"bramCount", "BRAM", "BRAM"}, {"dspCount", "DSP", "DSP"}, {"lutCount", "LUT", "LUT"}, {"registerCount", "REG", "REG"}};

void checkPblocks(const Node& whole, bool isJson, Findings& findings) {
    for (const Resource& resource : kResources) {
        const Node* count = whole.find(isJson ? resource.json : resource.xml);
        const auto told = count ? lint::toWhole(count->value) : std::nullopt;
        unsigned long sum = 0;
        const auto add = [&](const Node& item) {
            const std::string name = ascii::toUpper(item.get(isJson ? "name" : "Name"));
            const auto part = lint::toWhole(item.get(isJson ? "value" : "Val"));
            if ((name == resource.name || name == std::string(resource.name) + "S") && part &&
                *part < std::numeric_limits<unsigned long>::max() - sum)
                sum += *part;
        };
        if (isJson)
            forEachItem(whole.find("pBlocks"), "", [&](const Node& block) { forEachItem(block.find("resources"), "", add); });
        else
            forEachItem(&whole, "PBlock", [&](const Node& block) { forEachItem(&block, "Resource", add); });
        if (told && *told != 0 && sum > *told)
            findings.add(Rule::PblockSum, count->spot(),
                         lint::quote(count->name) + ": " + lint::quote(count->value) + ", and the pblocks together have " +
                             std::to_string(sum));
    }
}

void checkBanks(const Node& root, Findings& findings) {
    std::map<unsigned long, const Node*> bases;
    forEachItem(root.find("DdrBanks"), "", [&](const Node& bank) {
        const Node* base = bank.find("BASE");
        const auto address = base ? lint::toAddress(base->value) : std::nullopt;
        if (!address)
            return;
        if (const auto [earlier, isFirst] = bases.try_emplace(*address, base); !isFirst)
            findings.add(Rule::BankOverlap, base->spot(),
                         "base " + lint::quote(base->value) + " comes again, line " + std::to_string(earlier->second->line) + " has it too",
                         {{}, {}, findings.at(earlier->second->spot())});
    });
}

using Register = std::pair<unsigned long, unsigned long>;

/// The register that a label names: physical function and number.
std::optional<Register> toRegister(const Node& label) {
    const auto function = lint::toWhole(label.get("physical_function"));
    const auto number = lint::toWhole(label.get("bar"));
    return function && number ? std::optional(Register(*function, *number)) : std::nullopt;
}

void checkEndpoints(const Node& root, Findings& findings) {
    std::map<Register, Range> bars;
    forEachItem(&root, "pcie_bar", [&](const Node& bar) {
        const auto number = toRegister(bar);
        const auto first = bar.find("offset") ? lint::toAddress(bar.get("offset")) : 0;
        const auto size = bar.find("range") ? lint::toAddress(bar.get("range")) : 0x10000;
        if (!number || !first || !size || *size == 0 || *size - 1 > std::numeric_limits<unsigned long>::max() - *first)
            return;
        const Node* spot = bar.find("bar");
        if (const auto [earlier, isFirst] = bars.try_emplace(*number, Range{*first, *first + (*size - 1), spot, ""}); !isFirst)
            findings.add(Rule::DuplicateName, spot->spot(),
                         "register " + std::to_string(number->second) + " of function " + std::to_string(number->first) +
                             " comes again, line " + std::to_string(earlier->second.node->line) + " has it too",
                         {{}, {}, findings.at(earlier->second.node->spot())});
    });
    std::map<Register, std::vector<Range>> endpoints;
    forEachItem(&root, "pcie_endpoint", [&](const Node& endpoint) {
        const auto number = toRegister(endpoint);
        const auto range = toRange(endpoint, "addr", "range", "endpoint_name");
        if (!number || !range)
            return;
        endpoints[*number].push_back(*range);
        if (const auto bar = bars.find(*number); bar != bars.end() && (range->first < bar->second.first || range->last > bar->second.last))
            findings.add(Rule::EndpointLeavesBar, range->node->spot(),
                         "endpoint " + lint::quote(range->name) + " leaves the range of its register, line " +
                             std::to_string(bar->second.node->line),
                         {{}, {}, findings.at(bar->second.node->spot())});
    });
    for (auto& [number, ranges] : endpoints)
        complainOfOverlap(Rule::EndpointOverlap, "endpoint", std::move(ranges), findings);
}

} // namespace

namespace lint {

void checkPlaces(const Node& root, Kind kind, Findings& findings) {
    if (kind == Kind::ArchiveJson)
        checkMemories(root.find("memories"), "", {"name", "size", "lowAddress", "highAddress"}, findings);
    else if (kind == Kind::PropertyFile)
        checkBanks(root, findings);
    else if (kind == Kind::LabelFile)
        checkEndpoints(root, findings);
    if (kind != Kind::ArchiveJson && kind != Kind::ArchiveXml)
        return;
    forEachHolder(root, [&](const Node& node) {
        if (node.name == "availableResources" || node.name == "AvailableResources")
            checkPblocks(node, kind == Kind::ArchiveJson, findings);
        else if (node.name == "Port")
            checkPort(node, findings);
        else if (node.name == "Memories")
            checkMemories(&node, "Memory", {"Name", "Size", "LowestAddress", "HighestAddress"}, findings);
    });
}

} // namespace lint
