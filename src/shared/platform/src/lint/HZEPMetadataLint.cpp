// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HZEPMetadataLint.h"

#include "../hardware/AsciiCase.h"
#include "HPLPlatform.h"
#include "HostErrors.h"
#include "HostFileUtils.h"
#include "HostJson.h"
#include "LintDocuments.h"

#include <filesystem>
#include <utility>

namespace {

using lint::Document;
using lint::Kind;
using lint::Rule;

struct NamedKind {
    const char* name;
    Kind kind;
};
constexpr NamedKind kExtensions[] = {{".zpfm", Kind::PlatformFile}, {".spfm", Kind::SoftwareFile}, {".hpfm", Kind::HardwareFile}};
constexpr NamedKind kFileNames[] = {{"hw_emu.json", Kind::EmulationJson},
                                    {"hw_emu.xml", Kind::EmulationXml},
                                    {"kar.json", Kind::ArchiveJson},
                                    {"alt_kar.json", Kind::ArchiveJson},
                                    {"dsa.json", Kind::ArchiveJson},
                                    {"alt_dsa.json", Kind::ArchiveJson},
                                    {"kar.xml", Kind::ArchiveXml},
                                    {"dsa.xml", Kind::ArchiveXml},
                                    {"prop.json", Kind::PropertyFile},
                                    {"user_prop.json", Kind::PropertyFile},
                                    {"default_prop.json", Kind::PropertyFile},
                                    {"labels.json", Kind::LabelFile},
                                    {"board.json", Kind::BoardFile},
                                    {"mda.json", Kind::IndexFile},
                                    {"achromatic", Kind::PolicyFile},
                                    {"platform_keys_doc.json", Kind::KeysFile}};

template <std::size_t Size>
std::optional<Kind> findKind(const NamedKind (&table)[Size], const std::string& name) {
    for (const NamedKind& row : table)
        if (ascii::equalsIgnoringCase(name, row.name))
            return row.kind;
    return std::nullopt;
}

bool isArchive(const std::string& start) {
    return start.starts_with("PK\3\4") || start.starts_with("PK\5\6");
}

std::optional<Kind> recognise(const std::string& path, const std::string& text) {
    if (const auto kind = lint::getKindByName(std::filesystem::path(path).filename().string()))
        return kind;
    if (text.size() > HostJson::kMaxBytes)
        return std::nullopt;
    const std::size_t first = text.find_first_not_of(" \t\r\n", text.starts_with("\xEF\xBB\xBF") ? 3 : 0);
    const char character = first == std::string::npos ? '\0' : text[first];
    return character == '<' ? lint::recogniseXml(text) : character == '{' ? lint::recogniseJson(text) : std::nullopt;
}

} // namespace

std::optional<Finding> lint::findRefusal(const std::string& text, Kind kind) {
    if (text.empty() && kind == Kind::ExtensionJson)
        return std::nullopt;
    Findings findings;
    if (isJson(kind))
        readJson(text, findings);
    else
        readXml(text, kind, findings);
    if (!findings.has(Rule::Parse) && !findings.has(Rule::Schema))
        return std::nullopt;
    const std::vector<Finding> found = findings.take();
    return *std::find_if(found.begin(), found.end(),
                         [](const Finding& finding) { return finding.rule->severity == HZEPMetadataLint::Error; });
}

namespace lint {

std::optional<Kind> getKindByName(const std::string& name) {
    if (const auto kind = findKind(kExtensions, std::filesystem::path(name).extension().string()))
        return kind;
    // "kar.json", and "card.kar.json" where somebody took it out.
    const std::size_t point = name.rfind('.', name.rfind('.') - 1);
    return findKind(kFileNames, name.substr(point == std::string::npos ? 0 : point + 1));
}

bool isArchiveName(const std::string& name) {
    return HZEPHardwarePlatform::isValidPlatformExt(std::filesystem::path(name).extension().string()) || name.ends_with(".mda");
}

void checkDocument(Document& document, std::string text) {
    Findings& findings = document.findings;
    if (text.size() > HostJson::kMaxBytes) {
        findings.add(Rule::TooLarge, 1, "more than " + std::to_string(HostJson::kMaxBytes >> 20) + " MiB of text; not checked");
        return;
    }
    const Kind kind = document.kind;
    std::optional<Node> root = isJson(kind) ? readJson(text, findings) : readXml(text, kind, findings);
    if (root) {
        if (!isJson(kind))
            locateXml(text, *root);
        checkKeys(*root, kind, findings);
        checkContent(*root, kind, findings);
        checkWords(*root, kind, findings);
        checkForms(*root, kind, findings);
        checkReferences(*root, kind, findings);
        checkPlaces(*root, kind, findings);
        checkAges(*root, kind, findings);
        checkLosses(*root, kind, findings);
        if (kind == Kind::PropertyFile)
            checkProperties(*root, findings);
        if (kind == Kind::PropertyFile || kind == Kind::ArchiveXml)
            checkTcl(*root, kind, findings);
        if (kind == Kind::LabelFile)
            checkLabels(*root, findings);
        else if (kind == Kind::IndexFile)
            checkIndex(*root, findings);
        else if (kind == Kind::BoardFile)
            checkBoard(*root, findings);
        else if (kind == Kind::PolicyFile)
            checkPolicy(*root, findings);
    }
    document.text = std::move(text);
    document.root = std::move(root);
}

void keep(Document& document, Room& room) {
    if (room.take(document.text.size()))
        return;
    document.text = {};
    document.root.reset();
}

} // namespace lint

std::vector<HZEPMetadataLint::Finding> HZEPMetadataLint::check(const std::string& path) {
    std::vector<Finding> found;
    lint::Room room;
    const auto checkArchive = [&] {
        lint::Archive archive = lint::checkArchive(path, room);
        lint::takeFindings(archive, found);
    };
    if (lint::isArchiveName(path)) {
        checkArchive();
    } else {
        std::string text = HostFileUtils::readFile(path);
        if (isArchive(text)) {
            checkArchive();
        } else {
            const std::optional<Kind> kind = recognise(path, text);
            if (!kind)
                throw HostError(path + ": neither its name nor its content tells what it is");
            if (*kind == Kind::PlatformFile)
                return lint::checkPlatform(path, std::move(text));
            Document document(path, "", *kind);
            lint::checkDocument(document, std::move(text));
            found = document.findings.take(document.text);
        }
    }
    lint::applyIgnores(std::filesystem::path(path).parent_path().string(), false, found);
    return found;
}
