// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "../hardware/AsciiCase.h"
#include "BasePlatformLMX.h"
#include "HPLMemory.h"
#include "HostEnv.h"
#include "LintNumbers.h"
#include "LintText.h"
#include "LintTree.h"
#include "ZEPEmulationLMX.h"

#include <array>

namespace {

using lint::Findings;
using lint::Kind;
using lint::Node;
using lint::Rule;

/// What a name in a feature ROM keeps, in bytes.
constexpr std::size_t kMaxRomName = 63;

std::string describe(const Node& node) {
    return lint::quote(node.name) + ": " + lint::quote(node.value);
}

bool isTrue(const Node* node) {
    return node && ascii::equalsIgnoringCase(node->value, "true");
}

/// Only platforms for servers are held against the version of the tool.
bool isForServers(const Node& root) {
    if (isTrue(root.find("usesPR")))
        return true;
    const Node* intent = root.find("designIntent");
    for (const char* key : {"dataCenter", "serverManaged", "externalHost"})
        if (const Node* entry = intent ? intent->find(key) : nullptr;
            entry && isTrue(entry->find("value")) && isTrue(entry->find("explicit")))
            return true;
    return false;
}

void checkTool(const Node* version, Findings& findings) {
    const auto made = version ? lint::toVersion(version->value) : std::nullopt;
    const auto running = lint::toVersion(HostEnv::getMajor() + "." + HostEnv::getMinor());
    if (made && running && *made > *running)
        findings.add(Rule::NewerTool, version->spot(), describe(*version) + " is newer than this tool",
                     {"at most \"" + HostEnv::getMajor() + "." + HostEnv::getMinor() + '"', "", {}});
}

void checkUnified(const Node* flag, Findings& findings) {
    if (flag && ascii::equalsIgnoringCase(flag->value, "false"))
        findings.add(Rule::NotUnified, flag->spot(), "the platform is not unified");
}

void checkXmlAges(const Node& root, Findings& findings) {
    const Node* platform = root.find("DSA");
    const Node* build = platform ? platform->find("Build") : nullptr;
    const Node* state = build ? build->find("PlatformState") : nullptr;
    const Node* version = root.find("VersionMajor");
    const unsigned long newest = BasePlatform::Root().GetVersionMajor();
    if (version && lint::toWhole(version->value).value_or(0) > newest && !(state && ascii::equalsIgnoringCase(state->value, "pre_synth")))
        findings.add(Rule::XmlVersion, version->spot(), describe(*version) + " is newer than this library reads",
                     {"at most \"" + std::to_string(newest) + '"', "", {}});
    if (const Node* checkpoint = build ? build->find("StaticSynthCheckpoint") : nullptr; checkpoint && state && state->value != "synth")
        findings.add(Rule::StateTwice, checkpoint->spot(),
                     "the state is " + lint::quote(state->value) + " and, by this attribute, \"synth\", which counts",
                     {{}, {}, findings.at(state->spot())});
    if (platform)
        checkUnified(platform->find("Unified"), findings);
    const Node* tool = root.find("GenAppInfo");
    if (!tool)
        findings.add(Rule::Schema, root.spot(), "the document has no \"GenAppInfo\"");
    else if (build && isTrue(build->find("UsesPR")))
        checkTool(tool->find("Version"), findings);
}

void checkOne(const Node* version, Rule rule, Findings& findings) {
    if (version && lint::toDecimalNumber(version->value) != 1.0)
        findings.add(rule, version->spot(), describe(*version) + " is read as 1", {"\"1\"", "", {}});
}

void checkRomName(const Node* name, Findings& findings) {
    if (name && name->value.size() > kMaxRomName)
        findings.add(Rule::RomNameLength, name->spot(),
                     lint::quote(name->name) + " has " + std::to_string(name->value.size()) + " bytes, of which " +
                         std::to_string(kMaxRomName) + " are kept",
                     {"at most " + std::to_string(kMaxRomName) + " bytes", "", {}});
}

void checkParameter(const std::string& type, const Node* name, Findings& findings) {
    if (!name || name->value.empty())
        return;
    HPLMemory memory;
    memory.setType(type);
    memory.addConfigParam(name->value, "1");
    if (memory.getConfigParamMap().empty())
        findings.add(Rule::UnknownParameter, name->spot(),
                     "a memory of type " + lint::quote(type) + " has no parameter " + lint::quote(name->value));
}

void checkSwitches(const Node* switches, const char* item, Findings& findings) {
    forEachItem(switches, item, [&](const Node& entry) {
        if (const Node* name = entry.find("Name"); name && name->value != "xp")
            findings.add(Rule::SwitchName, name->spot(), describe(*name) + " is read as \"xp\"", {"\"xp\"", "xp", {}});
    });
}

void checkXmlLosses(const Node& root, Findings& findings) {
    const Node* platform = root.find("DSA");
    if (!platform)
        return;
    if (const Node* build = platform->find("Build")) {
        checkSwitches(build->find("BvlcCompileSwitches"), "BvlcCompileSwitch", findings);
        checkSwitches(build->find("BvlcLinkSwitches"), "BvlcLinkSwitch", findings);
    }
    if (const Node* rom = platform->find("FeatureRom"))
        for (const char* key : {"FPGAPartName", "VBNVName"})
            checkRomName(rom->find(key), findings);
    if (const Node* board = platform->find("Board"))
        forEachItem(board->find("Memories"), "Memory", [&](const Node& memory) {
            forEachItem(memory.find("Config"), "Param",
                        [&](const Node& parameter) { checkParameter(memory.get("Type"), parameter.find("Name"), findings); });
        });
    forEachItem(platform->find("Devices"), "Device", [&](const Node& device) {
        const Node* core = device.find("Core");
        if (const Node* base = core ? core->find("DRBaseAddress") : nullptr; base && !base->value.empty())
            findings.add(Rule::WrittenOnly, base->spot(), describe(*base) + " is not read");
    });
}

void checkJsonLosses(const Node& root, Findings& findings) {
    // The XML metadata hold one of each.
    for (const char* key : {"interfaces", "featureRoms"})
        if (const Node* list = root.find(key); list && list->children.size() > 1)
            findings.add(Rule::NoRoomInXml, list->spot(),
                         lint::quote(key) + " has " + std::to_string(list->children.size()) + " items, of which XML metadata hold one");
    forEachItem(root.find("featureRoms"), "", [&](const Node& rom) {
        for (const char* key : {"fpgaPartName", "vbnvName"})
            checkRomName(rom.find(key), findings);
    });
    forEachItem(root.find("memories"), "", [&](const Node& memory) {
        forEachItem(memory.find("configParams"), "",
                    [&](const Node& parameter) { checkParameter(memory.get("type"), parameter.find("name"), findings); });
    });
}

} // namespace

namespace lint {

void checkAges(const Node& root, Kind kind, Findings& findings) {
    if (kind == Kind::ArchiveJson) {
        checkUnified(root.find("unifiedPlatform"), findings);
        if (isForServers(root))
            checkTool(root.find("generatedVersion"), findings);
    } else if (kind == Kind::ArchiveXml) {
        checkXmlAges(root, findings);
    } else if (kind == Kind::EmulationXml) {
        checkOne(root.find("VersionMajor"), Rule::EmulationVersion, findings);
    } else if (kind == Kind::IndexFile) {
        if (const Node* version = root.find("version"))
            checkOne(version->find("major"), Rule::IndexVersion, findings);
    } else if (kind == Kind::PlatformFile || kind == Kind::SoftwareFile) {
        checkOne(root.find("schemaVersion"), Rule::SchemaVersion, findings);
    }
}

void checkLosses(const Node& root, Kind kind, Findings& findings) {
    if (kind == Kind::ArchiveJson)
        checkJsonLosses(root, findings);
    else if (kind == Kind::ArchiveXml)
        checkXmlLosses(root, findings);
}

} // namespace lint
