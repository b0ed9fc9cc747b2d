// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "../hardware/AsciiCase.h"
#include "HPLPlatform.h"
#include "HZEPNearNames.h"
#include "HZEPPfmFileTypes.h"
#include "HZEPSemanticPcieBar.h"
#include "LintHolders.h"
#include "LintNumbers.h"
#include "LintText.h"

#include <algorithm>

namespace {

using lint::Findings;
using lint::Kind;
using lint::Node;
using lint::Rule;
using Words = std::vector<std::string>;

/// Closed: what isn't in the list is wrong. Open: only what is nearly one of its words. Letters count in the exact ones.
enum class Match { Closed, ClosedExact, Open, OpenExact };

struct Row : lint::Holder {
    const char* key;
    Rule rule;
    Match match;
    Words (*words)();
    const char* outcome;
    /// Several words with commas between them.
    bool isList = false;
};

// clang-format off
Words states() { return {"synth", "impl", "pre_synth"}; }
Words hosts() { Words words = HPLPlatform::getHostArchTypesAsStr(); words.push_back(""); return words; }
Words hostInterfaces() { return {"pcie", "axi", "unknown", ""}; }
Words statuses() { return {"scalable", "changeable", "fixed", "reserved", ""}; }
Words contents() { return {"bitstream", "partial_bitstream", "dcp", "pdi"}; }
Words modes() { return {"master", "slave", "monitor", "mirroredMaster", "mirroredSlave", "system"}; }
Words busTypes() { return {"aximm", "axis", "interrupt", "clock", "reset"}; }
Words categories() { return {"memory", "control", "stream", "interrupt"}; }
Words memoryTypes() { return {"ddr3", "ddr4", "ddr5", "lpddr4", "lpddr5", "hbm", "hbm2", "bram", "uram", "sram", "qdr"}; }
Words autos() { return {"true", "false", "preferred", ""}; }
Words runtimes() { return {"ocl", "OpenCL", "cpp", "C/C++", ""}; }
Words systems() { return {"linux", "standalone", "freertos", "windows"}; }
Words images() { return {"HDPI", "MDPI", "LDPI"}; }
Words orders() { return {"early", "normal", "late"}; }
Words steps() { return {"synthesis", "implementation", "simulation", "out_of_context"}; }
Words yesOrNo() { return {"yes", "no", ""}; }
Words flags() { return {"true", "false", ""}; }
Words portTypes() { return {"addressable", "stream", "clk", "reset", "interrupt"}; }
Words directions() { return {"in", "out", "inout"}; }
Words polarities() { return {"active_low", "active_high"}; }
Words resources() { return {"BRAM", "DSP", "LUT", "FF"}; }
Words uuidTypes() { return {"logic", "interface"}; }
Words barTypes() {
    return {HZEPSemanticPcieBar::barTypeToString(HZEPSemanticPcieBar::AXI_BRIDGE_MASTER_BAR),
            HZEPSemanticPcieBar::barTypeToString(HZEPSemanticPcieBar::DMA_BAR)};
}
// clang-format on

Words fileTypes() {
    Words words;
    for (const auto& [type, word] : HZEPPfmFileTypes::getFileTypeMap())
        words.push_back(word);
    return words;
}

Words emulationFileTypes() {
    Words words = fileTypes();
    words.insert(words.end(), {"EMU_HPFM", "PROP_JSON", "USER_PROP_JSON"});
    return words;
}

constexpr const char* kNoMeaning = "is no word that is known here";
constexpr const char* kReadAsFalse = "is read as false";
constexpr const char* kReadAsUnknown = "is read as unknown";

constexpr Row kRows[] = {
    {{Kind::ArchiveJson, lint::kRoot}, "platformState", Rule::PlatformState, Match::ClosedExact, &states, kNoMeaning},
    {{Kind::ArchiveXml, "Build"}, "PlatformState", Rule::PlatformState, Match::ClosedExact, &states, kNoMeaning},
    {{Kind::ArchiveJson, lint::kRoot}, "hostArchitecture", Rule::HostWord, Match::Closed, &hosts, kReadAsUnknown},
    {{Kind::ArchiveXml, "Host"}, "Architecture", Rule::HostWord, Match::Closed, &hosts, kReadAsUnknown},
    {{Kind::ArchiveJson, lint::kRoot}, "hostInterface", Rule::HostWord, Match::Closed, &hostInterfaces, kReadAsUnknown},
    {{Kind::ArchiveXml, "Host"}, "Interface", Rule::HostWord, Match::Closed, &hostInterfaces, kReadAsUnknown},
    {{Kind::ArchiveJson, "files", ""}, "type", Rule::FileType, Match::ClosedExact, &fileTypes, kNoMeaning},
    {{Kind::ArchiveXml, "File"}, "Type", Rule::FileType, Match::ClosedExact, &fileTypes, kNoMeaning},
    {{Kind::EmulationJson, "files", ""}, "type", Rule::FileType, Match::OpenExact, &emulationFileTypes, kNoMeaning},
    {{Kind::EmulationXml, "File"}, "Type", Rule::FileType, Match::OpenExact, &emulationFileTypes, kNoMeaning},
    {{Kind::IndexFile, "files", ""}, "type", Rule::IndexType, Match::OpenExact, &fileTypes, kNoMeaning},
    {{Kind::ArchiveJson, "systemClocks", ""}, "status", Rule::ClockStatus, Match::Closed, &statuses, kNoMeaning},
    {{Kind::HardwareFile, "clock"}, "status", Rule::ClockStatus, Match::Closed, &statuses, kNoMeaning},
    {{Kind::ArchiveJson, lint::kRoot}, "acceleratorBinaryContent", Rule::BinaryContent, Match::Open, &contents, kNoMeaning},
    {{Kind::ArchiveJson, lint::kRoot},
     "validAcceleratorBinaryContentValues",
     Rule::BinaryContent,
     Match::Open,
     &contents,
     kNoMeaning,
     true},
    {{Kind::ArchiveXml, "Build"}, "AcceleratorBinaryContent", Rule::BinaryContent, Match::Open, &contents, kNoMeaning},
    {{Kind::ArchiveXml, "Build"}, "ValidBinaryContentValues", Rule::BinaryContent, Match::Open, &contents, kNoMeaning, true},
    {{Kind::ArchiveJson, "busInterfaces", ""}, "mode", Rule::BusMode, Match::Open, &modes, kNoMeaning},
    {{Kind::HardwareFile, "busInterface"}, "mode", Rule::BusMode, Match::Open, &modes, kNoMeaning},
    {{Kind::ArchiveJson, "busInterfaces", ""}, "typeRef", Rule::BusType, Match::Open, &busTypes, kNoMeaning},
    {{Kind::HardwareFile, "busInterface"}, "busTypeRef", Rule::BusType, Match::Open, &busTypes, kNoMeaning},
    {{Kind::ArchiveJson, "busInterfaces", ""}, "category", Rule::BusCategory, Match::Open, &categories, kNoMeaning},
    {{Kind::HardwareFile, "busInterface"}, "category", Rule::BusCategory, Match::Open, &categories, kNoMeaning},
    {{Kind::ArchiveJson, "memories", ""}, "type", Rule::MemoryType, Match::OpenExact, &memoryTypes, kNoMeaning},
    {{Kind::ArchiveXml, "Memory"}, "Type", Rule::MemoryType, Match::OpenExact, &memoryTypes, kNoMeaning},
    {{Kind::ArchiveJson, "addressSegments", ""}, "auto", Rule::SegmentAuto, Match::ClosedExact, &autos, "counts as true"},
    {{Kind::HardwareFile, "addressSegment"}, "auto", Rule::SegmentAuto, Match::ClosedExact, &autos, "counts as true"},
    {{Kind::SoftwareFile, "configuration"}, "runtimes", Rule::RuntimeWord, Match::Closed, &runtimes, "is no runtime that is known", true},
    {{Kind::SoftwareFile, "os"}, "name", Rule::OperatingSystem, Match::Open, &systems, kNoMeaning},
    {{Kind::SoftwareFile, "os"}, "hypervisorGuest", Rule::HypervisorFlag, Match::Closed, &yesOrNo, "is read as no"},
    {{Kind::ArchiveXml, "Img"}, "Type", Rule::ImageType, Match::ClosedExact, &images, "is dropped"},
    {{Kind::ArchiveJson, "files", ""}, "processingOrder", Rule::ProcessingOrder, Match::Open, &orders, kNoMeaning},
    {{Kind::ArchiveXml, "File"}, "ProcessingOrder", Rule::ProcessingOrder, Match::Open, &orders, kNoMeaning},
    {{Kind::ArchiveJson, "files", ""}, "usedIn", Rule::UsedIn, Match::Open, &steps, kNoMeaning, true},
    {{Kind::ArchiveXml, "File"}, "UsedIn", Rule::UsedIn, Match::Open, &steps, kNoMeaning, true},
    {{Kind::ArchiveXml, "DSA"}, "DcpLogicFunctionStripped", Rule::NotAFlag, Match::Closed, &flags, kReadAsFalse},
    {{Kind::ArchiveXml, "DSA"}, "DcpEncrypt", Rule::NotAFlag, Match::Closed, &flags, kReadAsFalse},
    {{Kind::ArchiveXml, "DSA"}, "Unified", Rule::NotAFlag, Match::Closed, &flags, kReadAsFalse},
    {{Kind::ArchiveXml, "DSA"}, "Fixed", Rule::NotAFlag, Match::Closed, &flags, kReadAsFalse},
    {{Kind::ArchiveXml, "Build"}, "UsesPR", Rule::NotAFlag, Match::Closed, &flags, kReadAsFalse},
    {{Kind::ArchiveXml, "Connector"}, "IsLocked", Rule::NotAFlag, Match::Closed, &flags, kReadAsFalse},
    {{Kind::ArchiveXml, "Port"}, "Type", Rule::PortWord, Match::Open, &portTypes, kNoMeaning},
    {{Kind::ArchiveXml, "Port"}, "Mode", Rule::PortWord, Match::Open, &modes, kNoMeaning},
    {{Kind::ArchiveXml, "Port"}, "Direction", Rule::PortWord, Match::Open, &directions, kNoMeaning},
    {{Kind::ArchiveXml, "Port"}, "Polarity", Rule::PortWord, Match::Open, &polarities, kNoMeaning},
    {{Kind::LabelFile, "uuid"}, "uuid_type", Rule::LabelWord, Match::ClosedExact, &uuidTypes, kReadAsUnknown},
    {{Kind::LabelFile, "pcie_bar"}, "bar_type", Rule::LabelWord, Match::ClosedExact, &barTypes, kReadAsUnknown},
    {{Kind::LabelFile, "debug_network"}, "supports_nanocore_debug", Rule::LabelFlag, Match::ClosedExact, &flags, kReadAsFalse},
    {{Kind::LabelFile, "debug_network"}, "supports_jtag_fallback", Rule::LabelFlag, Match::ClosedExact, &flags, kReadAsFalse},
};

const Words& wordsOf(const Row& row) {
    thread_local std::unordered_map<Words (*)(), Words> made;
    const auto [found, isNew] = made.try_emplace(row.words);
    if (isNew)
        found->second = row.words();
    return found->second;
}

std::string trim(const std::string& text) {
    const std::size_t start = text.find_first_not_of(" \t");
    return start == std::string::npos ? "" : text.substr(start, text.find_last_not_of(" \t") - start + 1);
}

/// Longest list that is shown.
constexpr std::size_t kMaxShownWords = 8;

std::string describeWords(const Words& words) {
    std::string text;
    std::size_t shown = 0;
    for (const std::string& word : words)
        if (!word.empty() && ++shown <= kMaxShownWords)
            text += (text.empty() ? "one of \"" : ", \"") + word + '"';
    return shown > kMaxShownWords ? "a word of the list" : text;
}

/// Known words that a wrong one may stand for: a few letters away, or what it begins, or what begins with it.
Words findNear(const std::string& word, const Words& words) {
    constexpr std::size_t kMinStart = 4;
    Words near = HZEPNearNames::find(word, words, 1);
    for (const std::string& known : words)
        if (near.empty() && std::min(word.size(), known.size()) >= kMinStart && (known.starts_with(word) || word.starts_with(known)))
            near.push_back(known);
    return near;
}

void checkWord(const Row& row, const Node& node, const std::string& word, Findings& findings) {
    const Words& words = wordsOf(row);
    const bool isExact = row.match == Match::ClosedExact || row.match == Match::OpenExact;
    const bool isOpen = row.match == Match::Open || row.match == Match::OpenExact;
    const auto known =
        std::find_if(words.begin(), words.end(), [&](const std::string& candidate) { return ascii::equalsIgnoringCase(candidate, word); });
    if (known != words.end() && (!isExact || *known == word))
        return;
    const Words near = known != words.end() ? Words{*known} : findNear(word, words);
    if (isOpen && (near.empty() || word.empty()))
        return;
    // Only letters of another size, and the words for a flag, leave no doubt.
    std::string fix = known != words.end() && !row.isList ? *known : "";
    if (row.words == &flags)
        fix = lint::toFlag(word);
    else if (row.words == &yesOrNo && !lint::toFlag(word).empty())
        fix = lint::toFlag(word) == "true" ? "yes" : "no";
    findings.add(row.rule, node.spot(),
                 lint::quote(node.name) + ": " + lint::quote(word) + " " + row.outcome +
                     (row.words == &flags || findings.isFull(row.rule) ? "" : HZEPNearNames::describe(near)),
                 {describeWords(words), fix, {}});
}

/// Of one list; longer ones are not looked at to their end.
constexpr std::size_t kMaxWords = 1000;

void checkList(const Row& row, const Node& node, Findings& findings) {
    const std::string& value = node.value;
    std::string trimmed;
    std::size_t words = 0;
    for (std::size_t at = 0; at < value.size() + !value.empty();) {
        const std::size_t end = std::min(value.find(',', at), value.size());
        const std::string word = trim(value.substr(at, end - at));
        trimmed += (at == 0 ? "" : ",") + word;
        if (++words > kMaxWords)
            return;
        checkWord(row, node, word, findings);
        at = end + 1;
    }
    if (row.rule == Rule::RuntimeWord && trimmed != value)
        findings.add(Rule::RuntimeBlank, node.spot(),
                     lint::quote(node.name) + ": " + lint::quote(value) + " has blanks between its runtimes",
                     {"a list without blanks", trimmed, {}});
}

void checkResourceTypes(const Node& root, Findings& findings) {
    constexpr Row row = {{Kind::ArchiveJson, "resources", ""}, "type", Rule::ResourceType, Match::Closed, &resources, "is not counted"};
    forEachItem(root.find("resources"), "", [&](const Node& item) {
        if (const Node* type = item.find("type"); type && type->form == Node::Text)
            checkWord(row, *type, type->value, findings);
    });
}

} // namespace

namespace lint {

void checkWords(const Node& root, Kind kind, Findings& findings) {
    static const ByHolder<Row> rows(kRows);
    forEachHolder(root, [&](const Node& holder) {
        rows.apply(kind, root, holder, [&](const Row& row, const Node& thing) {
            const Node* value = thing.find(row.key);
            if (!value || value->form != Node::Text || findings.isFull())
                return;
            if (row.isList)
                checkList(row, *value, findings);
            else if (!value->value.empty())
                checkWord(row, *value, value->value, findings);
        });
    });
    // Pblocks have resources too, with other names.
    if (kind == Kind::ArchiveJson)
        checkResourceTypes(root, findings);
}

} // namespace lint
