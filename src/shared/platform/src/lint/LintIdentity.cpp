// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "../hardware/AsciiCase.h"
#include "HZEPEmulationUtils.h"
#include "HZEPNearNames.h"
#include "LintDocuments.h"
#include "LintNumbers.h"
#include "LintText.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace {

using lint::Archive;
using lint::Document;
using lint::Findings;
using lint::Identity;
using lint::Kind;
using lint::Node;
using lint::Rule;

const std::string& textOf(const Node* node) {
    static const std::string none;
    return node ? node->value : none;
}

const Node* child(const Node* node, const char* name) {
    return node ? node->find(name) : nullptr;
}

const Node* getMetadata(const Document& document) {
    return !document.root ? nullptr : document.kind == Kind::ArchiveJson ? &*document.root : document.root->find("DSA");
}

/// The first device of the name that questions ask for.
const Node* getDevice(const Document& document) {
    const bool isJson = document.kind == Kind::ArchiveJson;
    const Node* found = nullptr;
    forEachItem(child(getMetadata(document), isJson ? "devices" : "Devices"), isJson ? "" : "Device", [&](const Node& device) {
        if (!found && device.get(isJson ? "name" : "Name") == "fpga0")
            found = &device;
    });
    return found;
}

const Node* getBoard(const Document& document) {
    return child(getMetadata(document), document.kind == Kind::ArchiveJson ? "board" : "Board");
}

std::string where(const Document& document, const Node& node) {
    return (document.member.empty() ? "line " : lint::quote(document.member) + ", line ") + std::to_string(node.line);
}

std::vector<std::string> splitPart(const std::string& part) {
    std::vector<std::string> tokens(1);
    for (const char c : part)
        if (c == ':')
            tokens.emplace_back();
        else
            tokens.back() += c;
    return tokens;
}

/// "DEVICE-PACKAGE-SPEED", as the feature ROM begins its part; "" for a part of another form.
std::string toRomPart(const std::string& part) {
    const std::vector<std::string> tokens = splitPart(part);
    return tokens.size() < 4 ? "" : tokens[1] + "-" + tokens[2] + (tokens[3].starts_with('-') ? "" : "-") + tokens[3];
}

void checkRom(Document& document, const Identity& identity) {
    const bool isJson = document.kind == Kind::ArchiveJson;
    const Node* metadata = getMetadata(document);
    const std::string expected = textOf(identity.vendor) + "_" + textOf(identity.board) + "_" + textOf(identity.name) + "_" +
                                 textOf(identity.major) + "_" + textOf(identity.minor);
    const bool isWhole = !textOf(identity.vendor).empty() && !textOf(identity.board).empty() && !textOf(identity.name).empty() &&
                         identity.major && identity.minor;
    const std::string part = toRomPart(textOf(identity.part));
    const auto check = [&](const Node& rom) {
        if (const Node* name = rom.find(isJson ? "vbnvName" : "VBNVName");
            name && isWhole && !name->value.empty() && name->value != expected && !document.findings.has(Rule::RomNameLength))
            document.findings.add(Rule::RomNameDiffers, name->spot(), "the feature ROM names " + lint::quote(name->value),
                                  {lint::quote(expected), expected, {}});
        if (const Node* romPart = rom.find(isJson ? "fpgaPartName" : "FPGAPartName");
            romPart && !part.empty() && !romPart->value.empty() && !romPart->value.starts_with(part))
            document.findings.add(Rule::PartDiffers, romPart->spot(),
                                  "the feature ROM is for part " + lint::quote(romPart->value) + ", and the device is " +
                                      lint::quote(identity.part->value),
                                  {lint::quote(part + "..."), "", document.findings.at(identity.part->spot())});
    };
    if (isJson)
        forEachItem(child(metadata, "featureRoms"), "", check);
    else if (const Node* rom = child(metadata, "FeatureRom"))
        check(*rom);
}

void checkIdentity(Document& document) {
    const Identity identity = lint::getIdentity(document);
    const Node* metadata = getMetadata(document);
    if (!metadata)
        return;
    const bool isJson = document.kind == Kind::ArchiveJson;
    for (const auto& [node, what] : {std::pair{identity.vendor, "vendor"}, {identity.name, "name"}})
        if (textOf(node).empty())
            document.findings.add(Rule::IdentityMissing, (node ? *node : *metadata).spot(), std::string("the metadata have no ") + what);
    const Node* board = getBoard(document);
    const Node* boardName = child(board, isJson ? "name" : "Name");
    const Node* boardPart = child(board, isJson ? "boardPart" : "BoardPart");
    if (boardName && !boardName->value.empty() && !textOf(identity.board).empty() && boardName->value != identity.board->value)
        document.findings.add(Rule::BoardDiffers, boardName->spot(),
                              "the board is " + lint::quote(boardName->value) + ", and the board id " + lint::quote(identity.board->value),
                              {{}, {}, document.findings.at(identity.board->spot())});
    if (const auto tokens = splitPart(textOf(boardPart)); tokens.size() == 4 && !textOf(boardName).empty() && tokens[1] != boardName->value)
        document.findings.add(Rule::BoardDiffers, boardPart->spot(),
                              "the board part " + lint::quote(boardPart->value) + " is one of board " + lint::quote(tokens[1]) +
                                  ", and the board is " + lint::quote(boardName->value),
                              {{}, {}, document.findings.at(boardName->spot())});
    checkRom(document, identity);
}

/// The hardware platform file has its own words for what the metadata say.
class HpfmCheck {
public:
    HpfmCheck(Document& hpfm, const Document& metadata)
        : hpfm_(hpfm), metadata_(metadata), component_(child(&*hpfm.root, "component")), identity_(lint::getIdentity(metadata)) {}

    void check() {
        if (!component_)
            return;
        if (const Node* vendor = component_->find("vendor");
            vendor && !textOf(identity_.vendor).empty() && vendor->value != identity_.vendor->value)
            complain(Rule::VendorDiffers, *vendor, "the vendor is", *identity_.vendor);
        const Node* version = component_->find("version");
        if (const std::string told = textOf(identity_.major) + "." + textOf(identity_.minor);
            version && identity_.major && identity_.minor && !lint::isSameNumber(version->value, told))
            complain(Rule::VersionDiffers, *version, "the version is", *identity_.major, told);
        checkDevice();
        if (metadata_.kind == Kind::ArchiveJson) {
            checkResources();
            checkClocks();
        }
    }

private:
    void complain(Rule rule, const Node& here, const std::string& what, const Node& there, const std::string& told = {}) {
        hpfm_.findings.add(rule, here.spot(),
                           what + " " + lint::quote(here.value) + ", and in " + where(metadata_, there) + " " +
                               lint::quote(told.empty() ? there.value : told),
                           {{}, {}, metadata_.findings.at(there.spot())});
    }

    void checkDevice() {
        const Node* info = child(child(component_, "platformInfo"), "deviceInfo");
        const std::vector<std::string> tokens = splitPart(textOf(identity_.part));
        if (!info || tokens.size() < 4)
            return;
        std::size_t token = 0;
        for (const char* key : {"architecture", "device", "package", "speedGrade"}) {
            const Node* told = info->find(key);
            if (told && told->value != tokens[token])
                complain(Rule::PartDiffers, *told, "the " + lint::quote(key) + " is", *identity_.part);
            ++token;
        }
    }

    void checkResources() {
        forEachItem(child(&*metadata_.root, "resources"), "", [&](const Node& resource) {
            const Node* count = resource.find("count");
            const Node* told = component_->find(ascii::toUpper(resource.get("type")));
            if (count && told && told->form == Node::Text && !lint::isSameNumber(told->value, count->value))
                complain(Rule::ResourcesDiffer, *told, "the count of " + lint::quote(told->name) + " is", *count);
        });
    }

    void checkClocks() {
        std::map<std::string, const Node*> byId;
        forEachItem(child(&*metadata_.root, "systemClocks"), "", [&](const Node& clock) {
            if (const Node* frequency = clock.find("frequency"); frequency && !clock.get("id").empty())
                byId.try_emplace(clock.get("id"), frequency);
        });
        forEachItem(child(child(component_, "platformInfo"), "systemClocks"), "clock", [&](const Node& clock) {
            const auto same = byId.find(clock.get("id"));
            const Node* frequency = clock.find("frequency");
            if (same != byId.end() && frequency && !lint::isSameNumber(frequency->value, same->second->value))
                complain(Rule::ClocksDiffer, *frequency, "the frequency of clock " + lint::quote(clock.get("id")) + " is", *same->second);
        });
    }

    Document& hpfm_;
    const Document& metadata_;
    const Node* component_;
    Identity identity_;
};

void checkPropertyClocks(Document& properties, const Document& metadata) {
    std::set<std::string> known;
    const bool isJson = metadata.kind == Kind::ArchiveJson;
    forEachItem(child(getDevice(metadata), isJson ? "scalableSystemClocks" : "SystemClocks"), isJson ? "" : "SystemClock",
                [&](const Node& clock) { known.insert(clock.get(isJson ? "name" : "Name")); });
    if (isJson)
        forEachItem(child(&*metadata.root, "systemClocks"), "", [&](const Node& clock) { known.insert(clock.get("name")); });
    const Node* clocks = properties.root->find("SystemClocks");
    if (!clocks || known.empty())
        return;
    for (const Node& clock : clocks->children)
        if (!known.contains(clock.name) && !HZEPEmulationUtils::getUnUsedCLKSettings().contains(clock.name))
            properties.findings.add(Rule::PropertyClock, clock.spot(),
                                    "the archive has no clock " + lint::quote(clock.name) +
                                        HZEPNearNames::suggest(clock.name, {known.begin(), known.end()}, 1));
}

/// The first thing in which metadata that stand beside the primary ones tell another platform.
void checkSecond(Document& second, Rule rule, const Document& primary) {
    const Identity a = lint::getIdentity(second);
    const Identity b = lint::getIdentity(primary);
    for (const auto member : {&Identity::vendor, &Identity::board, &Identity::name, &Identity::major, &Identity::minor, &Identity::part})
        if (const Node* mine = a.*member; mine && !lint::isSameNumber(mine->value, textOf(b.*member))) {
            second.findings.add(rule, mine->spot(),
                                lint::quote(mine->name) + " is " + lint::quote(mine->value) + ", and in " + lint::quote(primary.member) +
                                    " " + lint::quote(textOf(b.*member)),
                                {{}, {}, b.*member ? primary.findings.at((b.*member)->spot()) : HZEPMetadataLint::Place{}});
            return;
        }
}

} // namespace

namespace lint {

bool isSameNumber(const std::string& a, const std::string& b) {
    const auto first = toDecimalNumber(a);
    const auto second = toDecimalNumber(b);
    return first && second ? std::abs(*first - *second) < 1e-9 * std::max(1.0, std::abs(*first)) : a == b;
}

Identity getIdentity(const Document& document) {
    Identity identity;
    const Node* metadata = getMetadata(document);
    if (!metadata)
        return identity;
    const bool isJson = document.kind == Kind::ArchiveJson;
    identity.vendor = metadata->find(isJson ? "vendor" : "Vendor");
    identity.board = metadata->find(isJson ? "boardId" : "BoardId");
    identity.name = metadata->find(isJson ? "name" : "Name");
    identity.major = metadata->find(isJson ? "versionMajor" : "VersionMajor");
    identity.minor = metadata->find(isJson ? "versionMinor" : "VersionMinor");
    identity.part = child(getDevice(document), isJson ? "fpgaPart" : "FpgaDevice");
    identity.isEmulation = isJson ? metadata->find("hardwareEmuPlatform") : nullptr;
    return identity;
}

void compareDocuments(Archive& archive) {
    Document* metadata = archive.metadata ? archive.metadata : archive.alternate;
    if (!metadata || !metadata->root)
        return;
    checkIdentity(*metadata);
    if (archive.hardwareFile && archive.hardwareFile->root)
        HpfmCheck(*archive.hardwareFile, *metadata).check();
    if (archive.alternate && archive.metadata && archive.alternate->root)
        checkSecond(*archive.alternate, Rule::AlternateMetadata, *metadata);
    for (Document& document : archive.documents) {
        if (document.kind == Kind::PropertyFile && document.root)
            checkPropertyClocks(document, *metadata);
        if (document.kind == Kind::ArchiveXml && document.root && archive.hasJson && document.member.find('/') == std::string::npos)
            checkSecond(document, Rule::TwoMetadata, *metadata);
    }
}

} // namespace lint
