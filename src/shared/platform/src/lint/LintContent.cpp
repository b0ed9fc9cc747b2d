// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "../hardware/AsciiCase.h"
#include "HPLMemory.h"
#include "HPLPlatform.h"
#include "HZEPDevice.h"
#include "HZEPNearNames.h"
#include "HostText.h"
#include "LintNumbers.h"
#include "LintText.h"

#include <cstdint>
#include <cstdlib>
#include <exception>
#include <limits>
#include <new>
#include <unordered_map>

namespace {

using lint::Findings;
using lint::Kind;
using lint::Node;
using lint::Rule;

/// Things that stand below `parent`: its children of the name `item`, or the items of a list where that is "".
struct Place {
    Kind kind;
    const char* parent;
    const char* item;
};

enum class Compared { AsText, InAnyCase, AsNumber };
/// Which of several the model finds; Unsaid where callers walk over all and take what they like.
enum class Wins { Unsaid, First, Last };

/// A key by which a thing is found among its neighbours.
struct Identity {
    Place place;
    const char* key;
    const char* what;
    Compared compared = Compared::AsText;
    Wins wins = Wins::Unsaid;
};

constexpr Identity kIdentities[] = {
    {{Kind::PlatformFile, "hardwarePlatforms", "reconfigurablePartition"}, "id", "partition id", Compared::AsNumber},
    {{Kind::SoftwareFile, "systemConfigurations", "configuration"}, "name", "configuration", Compared::AsText, Wins::Last},
    {{Kind::SoftwareFile, "configuration", "processorGroup"}, "name", "processor group", Compared::AsText, Wins::First},
    {{Kind::HardwareFile, "systemClocks", "clock"}, "name", "clock", Compared::AsText, Wins::Last},
    {{Kind::HardwareFile, "systemClocks", "clock"}, "id", "clock id", Compared::AsNumber, Wins::Last},
    {{Kind::ArchiveJson, "systemClocks", ""}, "name", "clock", Compared::AsText, Wins::Last},
    {{Kind::ArchiveJson, "systemClocks", ""}, "id", "clock id", Compared::AsNumber, Wins::Last},
    {{Kind::ArchiveJson, "scalableSystemClocks", ""}, "name", "clock"},
    {{Kind::ArchiveJson, "files", ""}, "type", "file type", Compared::InAnyCase, Wins::Last},
    {{Kind::ArchiveJson, "memories", ""}, "name", "memory"},
    {{Kind::ArchiveJson, "configParams", ""}, "name", "parameter", Compared::AsText, Wins::Last},
    {{Kind::ArchiveJson, "designIpInstances", ""}, "instance", "design IP"},
    {{Kind::ArchiveJson, "devices", ""}, "name", "device", Compared::AsText, Wins::First},
    {{Kind::ArchiveXml, "SystemClocks", "SystemClock"}, "Name", "clock"},
    {{Kind::ArchiveXml, "Files", "File"}, "Type", "file type", Compared::InAnyCase, Wins::Last},
    {{Kind::ArchiveXml, "Memories", "Memory"}, "Name", "memory"},
    {{Kind::ArchiveXml, "Config", "Param"}, "Name", "parameter", Compared::AsText, Wins::Last},
    {{Kind::ArchiveXml, "Configuration", "Parameter"}, "Name", "configuration key", Compared::AsText, Wins::Last},
    {{Kind::ArchiveXml, "DesignIPs", "IP"}, "InstanceName", "design IP"},
    {{Kind::ArchiveXml, "Devices", "Device"}, "Name", "device", Compared::AsText, Wins::First},
    {{Kind::ArchiveXml, "Images", "Img"}, "Type", "image", Compared::AsText, Wins::Last},
    {{Kind::EmulationJson, "emulations", ""}, "name", "emulation"},
    {{Kind::EmulationXml, "Emulations", "Emulation"}, "Name", "emulation"},
    {{Kind::PropertyFile, "DesignIpInstances", ""}, "VLNV", "IP instance", Compared::AsText, Wins::Last},
};

/// A choice among the things below the node that makes it.
struct Default {
    Place place;
    const char* choice;
    std::initializer_list<const char*> keys;
    const char* what;
    Compared compared = Compared::AsText;
};

const Default kDefaults[] = {
    {{Kind::PlatformFile, "hardwarePlatforms", "reconfigurablePartition"}, "defaultRP", {"id"}, "partition", Compared::AsNumber},
    {{Kind::SoftwareFile, "systemConfigurations", "configuration"}, "defaultConfiguration", {"name", "displayName"}, "configuration"},
    {{Kind::SoftwareFile, "configuration", "processorGroup"}, "defaultProcessorGroup", {"name"}, "processor group"},
    {{Kind::SoftwareFile, "bootImages", "image"}, "default", {"name"}, "boot image"},
    {{Kind::HardwareFile, "systemClocks", "clock"}, "defaultClock", {"id"}, "clock id", Compared::AsNumber},
};

/// What a reader can't do without, where no schema says so.
struct Needed {
    Place place;
    const char* key;
};

constexpr Needed kNeeded[] = {
    {{Kind::ArchiveJson, "devices", ""}, "core"},
    {{Kind::EmulationJson, "emulations", ""}, "name"},
    {{Kind::EmulationJson, "emulations", ""}, "files"},
    {{Kind::EmulationJson, "files", ""}, "type"},
    {{Kind::EmulationJson, "files", ""}, "name"},
    {{Kind::PropertyFile, "DesignIpInstances", ""}, "VLNV"},
    {{Kind::PropertyFile, "DesignIpInstances", ""}, "Configuration"},
};

/// Numbers that a document keeps as text, or whose schema has more room than the model.
struct Number {
    Kind kind;
    const char* holder;
    const char* key;
    long min;
    long max;
};

template <class Field>
constexpr Number field(Kind kind, const char* holder, const char* key) {
    return {kind, holder, key, static_cast<long>(std::numeric_limits<Field>::min()), static_cast<long>(std::numeric_limits<Field>::max())};
}

constexpr Number kNumbers[] = {
    field<std::uint32_t>(Kind::PlatformFile, "hardwarePlatforms", "defaultRP"),
    field<std::uint32_t>(Kind::PlatformFile, "reconfigurablePartition", "id"),
    field<std::int32_t>(Kind::HardwareFile, "component", "BRAM"),
    field<std::int32_t>(Kind::HardwareFile, "component", "DSP"),
    field<std::int32_t>(Kind::HardwareFile, "component", "FF"),
    field<std::int32_t>(Kind::HardwareFile, "component", "LUT"),
    field<std::int32_t>(Kind::HardwareFile, "busInterface", "idBits"),
    field<std::int32_t>(Kind::HardwareFile, "addressSegment", "readBwUsed"),
    field<std::int32_t>(Kind::HardwareFile, "addressSegment", "writeBwUsed"),
    field<std::int32_t>(Kind::ArchiveJson, "availableResources", "bramCount"),
    field<std::int32_t>(Kind::ArchiveJson, "availableResources", "dspCount"),
    field<std::int32_t>(Kind::ArchiveJson, "availableResources", "lutCount"),
    field<std::int32_t>(Kind::ArchiveJson, "availableResources", "registerCount"),
    field<std::int32_t>(Kind::ArchiveJson, "resources", "count"),
    field<std::uint32_t>(Kind::ArchiveXml, "GenAppInfo", "CL"),
    field<std::int32_t>(Kind::ArchiveXml, "AvailableResources", "BRAM"),
    field<std::int32_t>(Kind::ArchiveXml, "AvailableResources", "DSP"),
    field<std::int32_t>(Kind::ArchiveXml, "AvailableResources", "LUT"),
    field<std::int32_t>(Kind::ArchiveXml, "AvailableResources", "REG"),
    field<std::uint8_t>(Kind::ArchiveXml, "FeatureRom", "MaxTempLimit"),
    field<std::uint8_t>(Kind::ArchiveXml, "FeatureRom", "MaxPowerLimit"),
};

/// A text of a form of its own: a part, or the size of a memory.
struct Form {
    Place place;
    const char* key;
    void (*check)(const Node& text, Findings& findings);
};

void checkPart(const Node& part, Findings& findings) {
    try {
        HZEPDevice().setFpgaPart(part.value);
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception&) {
        findings.add(Rule::PartForm, part.line,
                     "part " + lint::quote(part.value) +
                         ": expected architecture:device:package:speed and at most three more between colons");
    }
}

void checkMemorySize(const Node& size, Findings& findings) {
    std::string outcome = "counts as 0 GB";
    try {
        HPLPlatform platform;
        platform.addMemory()->setSize(size.value);
        if (platform.getMemSizeInGb(0) > 0)
            return;
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception&) {
        outcome = "can't be worked out";
    }
    findings.add(Rule::MemorySize, size.line, "memory size " + lint::quote(size.value) + " " + outcome + "; expected a form like \"16GB\"");
}

void checkComputeUnits(const Node& core, Findings& findings) {
    constexpr long most = std::numeric_limits<std::uint8_t>::max();
    const Node* units = core.find("numComputeUnits");
    const long number = units ? std::strtol(units->value.c_str(), nullptr, 10) : 0;
    // What is beyond the model's own field is cut before, which is another finding.
    if (number > most && number <= std::numeric_limits<std::uint16_t>::max())
        findings.add(Rule::NoRoomInXml, units->line,
                     lint::quote(units->name) + ": " + lint::quote(units->value) + " is more than " + std::to_string(most) +
                         ", which is the most that XML metadata hold");
}

constexpr Form kForms[] = {
    {{Kind::ArchiveJson, "devices", ""}, "fpgaPart", &checkPart},
    {{Kind::ArchiveXml, "Devices", "Device"}, "FpgaDevice", &checkPart},
    {{Kind::ArchiveJson, "memories", ""}, "size", &checkMemorySize},
    {{Kind::ArchiveXml, "Memories", "Memory"}, "Size", &checkMemorySize},
};

/// Tables of contents, and other keys that hold names of members.
struct Listing {
    Place place;
    const char* type; // "" where files have none
    const char* name;
};

constexpr Listing kListings[] = {
    {{Kind::ArchiveJson, "files", ""}, "type", "name"},   {{Kind::ArchiveXml, "Files", "File"}, "Type", "Name"},
    {{Kind::EmulationJson, "files", ""}, "type", "name"}, {{Kind::EmulationXml, "Files", "File"}, "Type", "Name"},
    {{Kind::ArchiveXml, "Images", "Img"}, "", "File"},
};

std::string normalise(const std::string& value, Compared compared) {
    if (compared == Compared::InAnyCase)
        return ascii::toUpper(value);
    if (compared == Compared::AsText)
        return value;
    const bool isSigned = !value.empty() && (value[0] == '+' || value[0] == '-');
    const std::size_t digit = value.find_first_not_of('0', isSigned ? 1 : 0);
    const std::string digits = digit == std::string::npos ? "" : value.substr(digit);
    return digits.empty() ? "0" : (value[0] == '-' ? "-" : "") + digits;
}

/// Hands over each thing that stands at the place, when the node is its parent.
template <class Take>
void forEachAt(const Place& place, const Node& parent, Kind kind, const Take& take) {
    if (place.kind != kind || parent.name != place.parent)
        return;
    const bool isList = *place.item == '\0';
    for (const Node& child : parent.children)
        if (isList ? child.form == Node::Object : child.form == Node::Object && child.name == place.item)
            take(child);
}

class ContentCheck {
public:
    ContentCheck(Kind kind, Findings& findings) : kind_(kind), findings_(findings) {}

    void check(const Node& node) {
        if (node.form == Node::Text || findings_.isFull())
            return;
        for (const Identity& identity : kIdentities)
            checkIdentity(identity, node);
        for (const Default& choice : kDefaults)
            checkDefault(choice, node);
        for (const Needed& needed : kNeeded)
            forEachAt(needed.place, node, kind_, [&](const Node& thing) {
                if (!thing.find(needed.key))
                    findings_.add(Rule::Schema, thing.line, "an item of " + lint::quote(node.name) + " has no " + lint::quote(needed.key));
            });
        for (const Form& form : kForms)
            forEachAt(form.place, node, kind_, [&](const Node& thing) {
                const Node* text = thing.find(form.key);
                if (text && text->form == Node::Text)
                    form.check(*text, findings_);
            });
        checkNumbers(node);
        if (kind_ == Kind::ArchiveJson)
            checkJson(node);
    }

private:
    void checkIdentity(const Identity& identity, const Node& parent) {
        std::unordered_map<std::string, std::size_t> seen;
        forEachAt(identity.place, parent, kind_, [&](const Node& thing) {
            const Node* key = thing.find(identity.key);
            if (!key || key->form != Node::Text || key->value.empty())
                return;
            const auto [earlier, isFirst] = seen.try_emplace(normalise(key->value, identity.compared), key->line);
            if (!isFirst)
                complainOfDuplicate(identity.what, *key, key->value, earlier->second, identity.wins);
        });
    }

    void complainOfDuplicate(const std::string& what, const Node& key, const std::string& name, std::size_t earlier, Wins wins) {
        const char* const outcome = wins == Wins::First  ? "; only the first is found"
                                    : wins == Wins::Last ? "; only the last is found"
                                                         : "";
        findings_.add(Rule::DuplicateName, key.line,
                      what + " " + lint::quote(name) + " comes again, line " + std::to_string(earlier) + " has it too" + outcome);
    }

    void checkDefault(const Default& choice, const Node& holder) {
        const Node* chosen = choice.place.kind == kind_ && holder.name == choice.place.parent ? holder.find(choice.choice) : nullptr;
        if (!chosen || chosen->value.empty())
            return;
        bool isFound = false;
        std::vector<std::string> names;
        const std::string wanted = normalise(chosen->value, choice.compared);
        forEachAt(choice.place, holder, kind_, [&](const Node& thing) {
            for (const char* key : choice.keys)
                isFound = isFound || (thing.find(key) && normalise(thing.get(key), choice.compared) == wanted);
            if (choice.compared == Compared::AsText && names.size() < kMaxCandidates)
                names.push_back(HostText::makePrintable(thing.get(*choice.keys.begin())));
        });
        if (!isFound)
            findings_.add(Rule::DanglingDefault, chosen->line,
                          lint::quote(chosen->name) + ": there is no " + choice.what + " " + lint::quote(chosen->value) +
                              HZEPNearNames::suggest(chosen->value, names, 1));
    }

    void checkNumbers(const Node& node) {
        for (const Number& number : kNumbers) {
            if (number.kind != kind_ || node.name != number.holder)
                continue;
            checkNumberOf(node, number);
            for (const Node& item : node.children)
                if (node.form == Node::List && item.form == Node::Object)
                    checkNumberOf(item, number);
        }
    }

    void checkNumberOf(const Node& holder, const Number& number) {
        if (const Node* value = holder.find(number.key); value && value->form == Node::Text)
            lint::checkNumber(*value, number.min, number.max, findings_);
    }

    void checkJson(const Node& node) {
        if (node.name == "core")
            checkComputeUnits(node, findings_);
        // The choice stands at the clock itself, and a clock without an id can't be it.
        const Node* earlier = nullptr;
        forEachAt({kind_, "systemClocks", ""}, node, kind_, [&](const Node& clock) {
            const Node* choice = clock.find("default");
            if (!choice || !ascii::equalsIgnoringCase(choice->value, "true"))
                return;
            if (clock.get("id").empty())
                findings_.add(Rule::DanglingDefault, choice->line,
                              "clock " + lint::quote(clock.get("name")) + " has no id and can't be the default");
            else if (earlier)
                complainOfDuplicate("default clock", *choice, clock.get("name"), earlier->line, Wins::Last);
            earlier = choice;
        });
        forEachAt({kind_, "designIpInstances", ""}, node, kind_, [&](const Node& instance) {
            std::unordered_map<std::string, std::size_t> seen;
            if (const Node* configuration = instance.find("configuration"))
                checkConfiguration(*configuration, "", seen);
        });
    }

    /// Nested objects are dotted names.
    void checkConfiguration(const Node& object, const std::string& prefix, std::unordered_map<std::string, std::size_t>& seen) {
        for (const Node& child : object.children) {
            if (findings_.isFull() || prefix.size() > kMaxConfigurationKey)
                return;
            const std::string name = prefix + child.name;
            if (!child.children.empty()) {
                checkConfiguration(child, name + ".", seen);
                continue;
            }
            const auto [earlier, isFirst] = seen.try_emplace(name, child.line);
            if (!isFirst)
                complainOfDuplicate("configuration key", child, name, earlier->second, Wins::Last);
        }
    }

    static constexpr std::size_t kMaxCandidates = 100;
    static constexpr std::size_t kMaxConfigurationKey = 256;

    Kind kind_;
    Findings& findings_;
};

/// The nodes that have children, each before what stands in it; a document may nest deeply.
template <class Take>
void forEachHolder(const Node& root, const Take& take) {
    std::vector<const Node*> waiting = {&root};
    while (!waiting.empty()) {
        const Node& node = *waiting.back();
        waiting.pop_back();
        take(node);
        for (auto child = node.children.rbegin(); child != node.children.rend(); ++child)
            if (!child->children.empty())
                waiting.push_back(&*child);
    }
}

void collectFiles(const Node& node, Kind kind, std::vector<lint::ListedFile>& files) {
    for (const Listing& listing : kListings)
        forEachAt(listing.place, node, kind, [&](const Node& file) {
            const Node* name = file.find(listing.name);
            if (name && !name->value.empty())
                files.push_back({*listing.type ? file.get(listing.type) : "", name->value, name->line});
        });
    if (kind == Kind::ArchiveJson && node.name == "board")
        for (const Node& image : node.children)
            if (image.name.starts_with("imageFile") && !image.value.empty())
                files.push_back({"", image.value, image.line});
}

} // namespace

namespace lint {

const Node* Node::find(std::string_view child) const {
    for (const Node& node : children)
        if (node.name == child)
            return &node;
    return nullptr;
}

const std::string& Node::get(std::string_view child) const {
    static const std::string none;
    const Node* node = find(child);
    return node ? node->value : none;
}

bool isJson(Kind kind) {
    return kind == Kind::ArchiveJson || kind == Kind::EmulationJson || kind == Kind::ExtensionJson || kind == Kind::PropertyFile;
}

void checkContent(const Node& root, Kind kind, Findings& findings) {
    if (kind == Kind::EmulationJson && !root.find("emulations"))
        findings.add(Rule::Schema, root.line, "the document has no \"emulations\"");
    ContentCheck check(kind, findings);
    forEachHolder(root, [&](const Node& node) { check.check(node); });
}

std::vector<ListedFile> listFiles(const Node& root, Kind kind) {
    std::vector<ListedFile> files;
    forEachHolder(root, [&](const Node& node) { collectFiles(node, kind, files); });
    return files;
}

} // namespace lint
