// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "../hardware/AsciiCase.h"
#include "HZEPNearNames.h"
#include "HostText.h"
#include "LintNumbers.h"
#include "LintText.h"
#include "LintTree.h"

#include <algorithm>
#include <map>
#include <set>
#include <string>

namespace {

using lint::Findings;
using lint::Kind;
using lint::Node;
using lint::Rule;
using lint::Spot;
using Names = std::set<std::string, std::less<>>;

/// Names that are compared for a suggestion.
constexpr std::size_t kMaxCandidates = 100;

std::vector<std::string> candidatesOf(const Names& names) {
    std::vector<std::string> candidates;
    for (const std::string& name : names)
        if (candidates.size() < kMaxCandidates)
            candidates.push_back(HostText::makePrintable(name));
    return candidates;
}

std::string describe(const Node& node) {
    return lint::quote(node.name) + ": " + lint::quote(node.value);
}

void complainOfUnknown(Rule rule, const char* what, const Node& value, const Names& names, Findings& findings) {
    findings.add(rule, value.spot(),
                 lint::quote(value.name) + ": there is no " + what + " " + lint::quote(value.value) +
                     (findings.isFull(rule) ? "" : HZEPNearNames::suggest(value.value, candidatesOf(names), 1)));
}

void addClock(const Node& clock, const char* instance, Names& clocks) {
    for (const char* key : {"name", "origName"})
        if (const std::string& name = clock.get(key); !name.empty()) {
            clocks.insert(name);
            clocks.insert(clock.get(instance) + "/" + name);
        }
}

void checkClockRef(const Node& bus, const Names& clocks, Findings& findings) {
    if (const Node* ref = bus.find("clockRef"); ref && !ref->value.empty() && !clocks.empty() && !clocks.contains(ref->value))
        complainOfUnknown(Rule::UnknownClock, "clock", *ref, clocks, findings);
}

/// Only regions that are numbered can be held against their number.
void checkRegion(const Node& region, unsigned long regions, Findings& findings) {
    if (regions == 0 || !region.value.starts_with("SLR"))
        return;
    if (const auto number = lint::toWhole(region.value.substr(3)); number && *number >= regions)
        findings.add(Rule::UnknownRegion, region.spot(), "the device has no region " + lint::quote(region.value),
                     {"SLR0 to SLR" + std::to_string(regions - 1), "", {}});
}

/// The order of ids: each once is another rule's.
void checkIds(const std::vector<const Node*>& ids, Findings& findings) {
    std::map<unsigned long, const Node*> byNumber;
    for (const Node* id : ids) {
        const auto number = lint::toWhole(id->value);
        if (!number)
            return;
        byNumber.try_emplace(*number, id);
    }
    unsigned long next = 0;
    for (const auto& [number, id] : byNumber) {
        if (number != next)
            findings.add(Rule::ClockIdGap, id->spot(), "clock id " + lint::quote(id->value) + " follows no " + std::to_string(next),
                         {std::to_string(next), "", {}});
        next = number + 1;
    }
}

void checkContentValue(const Node& content, const std::string& valid, Findings& findings) {
    if (!content.value.empty() && !valid.empty() && ("," + valid + ",").find("," + content.value + ",") == std::string::npos &&
        !findings.has(Rule::BinaryContent))
        findings.add(Rule::ContentNotValid, content.spot(), describe(content) + " is not among the valid " + lint::quote(valid));
}

class JsonCheck {
public:
    JsonCheck(const Node& root, Findings& findings) : root_(root), findings_(findings) {}

    void check() {
        gather();
        forEachHolder(root_, [&](const Node& node) { checkHolder(node); });
        if (!used_.empty() && !findings_.has(Rule::UnknownMemory))
            forEachItem(root_.find("memories"), "", [&](const Node& memory) {
                if (const Node* name = memory.find("name"); name && !used_.contains(name->value))
                    findings_.add(Rule::UnusedMemory, name->spot(), "no address segment leads to memory " + lint::quote(name->value));
            });
        checkClocks();
        checkContentValues();
    }

private:
    void gather() {
        forEachItem(root_.find("systemClocks"), "", [&](const Node& clock) { addClock(clock, "instRef", clocks_); });
        forEachItem(root_.find("memories"), "", [&](const Node& memory) { memories_.insert(memory.get("name")); });
        isEmulation_ = ascii::equalsIgnoringCase(root_.get("hardwareEmuPlatform"), "true");
        bool isOfInterest = false;
        const Node* devices = root_.find("devices");
        forEachItem(devices, "", [&](const Node& device) {
            isOfInterest = isOfInterest || device.get("name") == "fpga0";
            regions_ = std::max(regions_, lint::toWhole(device.get("numSLRs")).value_or(0));
            if (!clocks_.empty())
                forEachItem(device.find("scalableSystemClocks"), "", [&](const Node& clock) { clocks_.insert(clock.get("name")); });
        });
        if (devices && !devices->children.empty() && !isOfInterest)
            findings_.add(Rule::NoDevice, devices->spot(), "there is no device \"fpga0\"");
    }

    void checkHolder(const Node& node) {
        static const Names kFilled = {"devices", "systemClocks", "scalableSystemClocks", "validSlrs"};
        for (const Node& child : node.children)
            if (child.form == Node::List && child.children.empty() && kFilled.contains(child.name))
                findings_.add(Rule::EmptyList, child.spot(), lint::quote(child.name) + " is empty");
        if (node.name == "busInterfaces")
            forEachItem(&node, "", [&](const Node& bus) {
                checkClockRef(bus, clocks_, findings_);
                if (const Node* region = bus.find("slr"))
                    checkRegion(*region, regions_, findings_);
            });
        else if (node.name == "addressSegments")
            forEachItem(&node, "", [&](const Node& segment) { checkSegment(segment); });
        else if (node.name == "validSlrs")
            for (const Node& region : node.children)
                checkRegion(region, regions_, findings_);
    }

    void checkSegment(const Node& segment) {
        if (const Node* region = segment.find("slr"))
            checkRegion(*region, regions_, findings_);
        const Node* memory = segment.find("memoryInstance");
        if (!memory || memory->value.empty())
            return;
        // Emulation leaves out memories that its models lack.
        if (!memories_.empty() && !memories_.contains(memory->value) && !isEmulation_)
            complainOfUnknown(Rule::UnknownMemory, "memory", *memory, memories_, findings_);
        used_.insert(memory->value);
        // One bank may be reached through several interfaces, and then has one name.
        const Node* index = segment.find("index");
        if (!index)
            return;
        const auto [earlier, isFirst] =
            indices_.try_emplace(memory->value + "\n" + index->value, Earlier{index->spot(), segment.get("name")});
        if (!isFirst && earlier->second.name != segment.get("name"))
            findings_.add(Rule::SegmentIndexTwice, index->spot(),
                          "segment " + lint::quote(index->value) + " of memory " + lint::quote(memory->value) + " comes again, line " +
                              std::to_string(earlier->second.spot.line) + " has it too",
                          {{}, {}, findings_.at(earlier->second.spot)});
    }

    void checkClocks() {
        const Node* list = root_.find("systemClocks");
        std::vector<const Node*> ids;
        bool hasDefault = false;
        forEachItem(list, "", [&](const Node& clock) {
            if (const Node* id = clock.find("id"); id && !id->value.empty())
                ids.push_back(id);
            hasDefault = hasDefault || ascii::equalsIgnoringCase(clock.get("default"), "true");
        });
        if (!ids.empty() && !hasDefault)
            findings_.add(Rule::NoDefaultClock, list->spot(), "none of the clocks is the default");
        checkIds(ids, findings_);
    }

    void checkContentValues() {
        const Node* content = root_.find("acceleratorBinaryContent");
        if (content)
            checkContentValue(*content, root_.get("validAcceleratorBinaryContentValues"), findings_);
    }

    struct Earlier {
        Spot spot;
        std::string name;
    };

    const Node& root_;
    Findings& findings_;
    Names clocks_;
    Names memories_;
    Names used_;
    std::map<std::string, Earlier> indices_;
    unsigned long regions_ = 0;
    bool isEmulation_ = false;
};

void checkXml(const Node& root, Findings& findings) {
    const Node* platform = root.find("DSA");
    if (!platform)
        return;
    if (const Node* build = platform->find("Build"))
        if (const Node* content = build->find("AcceleratorBinaryContent"))
            checkContentValue(*content, build->get("ValidBinaryContentValues"), findings);
    Names memories;
    if (const Node* board = platform->find("Board"))
        forEachItem(board->find("Memories"), "Memory", [&](const Node& memory) { memories.insert(memory.get("Name")); });
    const Node* devices = platform->find("Devices");
    bool isOfInterest = false;
    forEachItem(devices, "Device", [&](const Node& device) { isOfInterest = isOfInterest || device.get("Name") == "fpga0"; });
    if (devices && devices->find("Device") && !isOfInterest)
        findings.add(Rule::NoDevice, devices->spot(), "there is no device \"fpga0\"");
    // A slave need not be a memory.
    forEachHolder(root, [&](const Node& node) {
        forEachItem(node.name == "AddressSegments" ? &node : nullptr, "AddressSegment", [&](const Node& segment) {
            const Node* slave = segment.find("Slave");
            if (slave && !memories.contains(slave->value) && !findings.isFull(Rule::UnknownMemory) &&
                !HZEPNearNames::find(slave->value, candidatesOf(memories), 1).empty())
                complainOfUnknown(Rule::UnknownMemory, "memory", *slave, memories, findings);
        });
    });
}

void checkHpfm(const Node& root, Findings& findings) {
    Names clocks;
    std::vector<const Node*> ids;
    forEachHolder(root, [&](const Node& node) {
        forEachItem(node.name == "systemClocks" ? &node : nullptr, "clock", [&](const Node& clock) {
            addClock(clock, "instanceRef", clocks);
            if (const Node* id = clock.find("id"))
                ids.push_back(id);
        });
    });
    checkIds(ids, findings);
    forEachHolder(root, [&](const Node& node) {
        if (node.name != "busInterface")
            return;
        checkClockRef(node, clocks, findings);
        std::map<std::string, Spot> indices;
        forEachItem(&node, "addressSegment", [&](const Node& segment) {
            const Node* index = segment.find("index");
            if (!index)
                return;
            const auto [earlier, isFirst] = indices.try_emplace(index->value, index->spot());
            if (!isFirst)
                findings.add(Rule::SegmentIndexTwice, index->spot(),
                             "segment " + lint::quote(index->value) + " comes again, line " + std::to_string(earlier->second.line) +
                                 " has it too",
                             {{}, {}, findings.at(earlier->second)});
        });
    });
}

void checkSoftware(const Node& root, Findings& findings) {
    forEachItem(root.find("systemConfigurations"), "configuration", [&](const Node& configuration) {
        if (!configuration.find("processorGroup"))
            findings.add(Rule::NoProcessorGroup, configuration.spot(),
                         "configuration " + lint::quote(configuration.get("name")) + " has no processor group");
    });
}

void checkPlatformFile(const Node& root, Findings& findings) {
    const Node* platforms = root.find("hardwarePlatforms");
    if (!platforms)
        return;
    const auto hasElement = [](const Node& node) {
        return std::any_of(node.children.begin(), node.children.end(), [](const Node& child) { return child.form == Node::Object; });
    };
    if (!hasElement(*platforms))
        findings.add(Rule::NoHardware, platforms->spot(), "no hardware platform is named");
    bool hasFirst = false;
    forEachItem(platforms, "reconfigurablePartition", [&](const Node& partition) {
        hasFirst = hasFirst || lint::toWhole(partition.get("id")) == 0U;
        if (!partition.find("hardwarePlatform"))
            findings.add(Rule::NoHardware, partition.spot(),
                         "partition " + lint::quote(partition.get("id")) + " names no hardware platform");
    });
    if (const Node* partition = platforms->find("reconfigurablePartition"); partition && !hasFirst && !platforms->find("defaultRP"))
        findings.add(Rule::DanglingDefault, platforms->spot(), "the default is partition 0 where none is named, and there is none");
}

} // namespace

namespace lint {

void checkReferences(const Node& root, Kind kind, Findings& findings) {
    if (kind == Kind::ArchiveJson)
        JsonCheck(root, findings).check();
    else if (kind == Kind::ArchiveXml)
        checkXml(root, findings);
    else if (kind == Kind::HardwareFile)
        checkHpfm(root, findings);
    else if (kind == Kind::SoftwareFile)
        checkSoftware(root, findings);
    else if (kind == Kind::PlatformFile)
        checkPlatformFile(root, findings);
}

} // namespace lint
