// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HZEPMetadataLint.h"
#include "HostText.h"

#include "../hardware/AsciiCase.h"
#include "HPLPlatform.h"
#include "HZEPEmulationUtils.h"
#include "HostErrors.h"
#include "HostFileUtils.h"
#include "HostJson.h"
#include "HostZip.h"
#include "HostZipSession.h"
#include "LintText.h"
#include "LintTree.h"

#include <algorithm>
#include <deque>
#include <filesystem>
#include <iterator>
#include <optional>
#include <set>
#include <utility>

namespace {

using Finding = HZEPMetadataLint::Finding;
using lint::Findings;
using lint::Kind;
using lint::ListedFile;
using lint::Node;
using lint::Rule;

constexpr const char* kArchiveExts[] = {"kar", "dsa"};

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
                                    {"default_prop.json", Kind::PropertyFile}};
/// Members that are documents themselves, by the type that a table of contents gives them.
constexpr NamedKind kMemberTypes[] = {{"HPFM", Kind::HardwareFile},       {"EMU_HPFM", Kind::HardwareFile},
                                      {"EMU_JSON", Kind::EmulationJson},  {"EMU_XML", Kind::EmulationXml},
                                      {"META_JSON", Kind::ExtensionJson}, {"EXT_META_JSON", Kind::ExtensionJson},
                                      {"PROP_JSON", Kind::PropertyFile},  {"USER_PROP_JSON", Kind::PropertyFile}};

template <std::size_t Size>
std::optional<Kind> findKind(const NamedKind (&table)[Size], const std::string& name) {
    for (const NamedKind& row : table)
        if (ascii::equalsIgnoringCase(name, row.name))
            return row.kind;
    return std::nullopt;
}

/// The document's tree when it can be checked further.
std::optional<Node> checkDocument(const std::string& text, Kind kind, Findings& findings) {
    if (text.size() > HostJson::kMaxBytes) {
        findings.add(Rule::TooLarge, 1, "more than " + std::to_string(HostJson::kMaxBytes >> 20) + " MiB of text; not checked");
        return std::nullopt;
    }
    std::optional<Node> root = lint::isJson(kind) ? lint::readJson(text, findings) : lint::readXml(text, kind, findings);
    if (root) {
        lint::checkKeys(*root, kind, findings);
        lint::checkContent(*root, kind, findings);
        if (kind == Kind::PropertyFile)
            lint::checkProperties(*root, findings);
        if (kind == Kind::PropertyFile || kind == Kind::ArchiveXml)
            lint::checkTcl(*root, kind, findings);
    }
    return root;
}

/// One archive with all its documents.
class ArchiveCheck {
public:
    explicit ArchiveCheck(const std::string& path) : path_(path), session_(path), entries_(HostZip::getEntries(path)) {}

    std::vector<Finding> check() {
        Findings own;
        for (const HostZipEntry& entry : entries_) {
            if (!names_.insert(entry.name).second)
                own.add(Rule::DuplicateName, 1, "member " + lint::quote(entry.name) + " comes again; only the first is found");
            addFolders(entry.name);
        }
        for (const std::string& name : getMetadataNames(false))
            checkMember(name, name.ends_with(".xml") ? Kind::ArchiveXml : Kind::ArchiveJson);
        if (checked_.empty())
            own.add(Rule::NoMetadata, 1,
                    "no member " + lint::quote(getMetadataNames(false).at(1)) + " or " + lint::quote(getMetadataNames(false).at(2)));
        for (const std::string& name : getMetadataNames(true))
            checkMember(name, name.ends_with(".xml") ? Kind::ArchiveXml : Kind::ArchiveJson);
        // Emulation scripts are generated from XML metadata only, and then also from files that are found by their names.
        isEmulated_ = std::any_of(checked_.begin(), checked_.end(), [](const std::string& name) { return name.ends_with(".xml"); });
        if (isEmulated_) {
            HPLPlatform platform;
            waiting_.emplace_back(HZEPEmulationUtils::getEmuXmlFile(&platform), Kind::EmulationXml);
        }
        while (!waiting_.empty()) {
            const auto [name, kind] = std::move(waiting_.front());
            waiting_.pop_front();
            checkMember(name, kind);
        }
        if (found_.size() > kMaxArchiveFindings)
            own.add(Rule::MoreFindings, 1, "not all members are checked: there are very many findings");
        take(own);
        return std::move(found_);
    }

private:
    /// Members that the loader looks for: of the platform, or of its child for hardware emulation.
    std::vector<std::string> getMetadataNames(bool isChild) const {
        const std::string own = std::filesystem::path(path_).extension().string();
        const std::string folder = isChild ? HZEPHardwarePlatform::getHwEmuDir() + "/" : "";
        std::vector<std::string> names;
        for (const char* ext : kArchiveExts)
            if (ascii::equalsIgnoringCase(own, std::string(".") + ext) || !HZEPHardwarePlatform::isValidPlatformExt(own))
                for (const std::string& name : {folder + "alt_" + ext + ".json", folder + ext + ".json", folder + ext + ".xml"})
                    names.push_back(name);
        return names;
    }

    void addFolders(const std::string& name) {
        for (std::size_t slash = name.rfind('/'); slash != std::string::npos && slash > 0; slash = name.rfind('/', slash - 1))
            if (!folders_.insert(name.substr(0, slash)).second)
                return;
    }

    bool contains(const std::string& name) const {
        const std::string plain = name.substr(std::min(name.starts_with("./") ? name.find_first_not_of('/', 1) : 0, name.size()));
        const std::string folder = plain.ends_with('/') ? plain.substr(0, plain.size() - 1) : plain;
        return names_.contains(name) || names_.contains(plain) || folders_.contains(folder);
    }

    void checkMember(const std::string& listed, Kind kind) {
        const std::string name = names_.contains(listed) || !listed.starts_with("./")
                                     ? listed
                                     : listed.substr(std::min(listed.find_first_not_of('/', 1), listed.size()));
        if (!names_.contains(name) || found_.size() > kMaxArchiveFindings || !checked_.insert(name).second)
            return;
        Findings findings(HostText::makePrintable(name));
        try {
            if (const std::optional<Node> root =
                    checkDocument(HostZip::readMember(path_, name, HostZip::kMaxMetadataSize), kind, findings)) {
                if (kind == Kind::HardwareFile && isEmulated_)
                    lint::checkTcl(*root, kind, findings);
                for (ListedFile& file : lint::listFiles(*root, kind)) {
                    if (!contains(file.name))
                        findings.add(Rule::MissingMember, file.line, "the archive has no member " + lint::quote(file.name));
                    if (const std::optional<Kind> listedKind = findKind(kMemberTypes, file.type))
                        waiting_.emplace_back(std::move(file.name), *listedKind);
                }
            }
        } catch (const HostError& error) {
            findings.add(Rule::UnreadableMember, 1, HostText::makePrintable(getCause(error.what())));
        }
        take(findings);
    }

    /// The words of the host layer begin with the archive, which stands in front of the finding.
    std::string getCause(const std::string& words) const {
        return words.starts_with(path_ + ": ") ? words.substr(path_.size() + 2) : words;
    }

    void take(Findings& findings) {
        std::vector<Finding> found = findings.take();
        std::move(found.begin(), found.end(), std::back_inserter(found_));
    }

    static constexpr std::size_t kMaxArchiveFindings = 10 * HZEPMetadataLint::kMaxFindings;

    const std::string path_;
    const HostZipSession session_;
    const std::vector<HostZipEntry> entries_;
    // No hashes: names could be made to collide in them.
    std::set<std::string> names_;
    std::set<std::string> folders_;
    std::set<std::string> checked_;
    std::deque<std::pair<std::string, Kind>> waiting_;
    std::vector<Finding> found_;
    bool isEmulated_ = false;
};

/// What a platform file names stands beside it, or below.
void checkNamedFiles(const Node& element, const std::filesystem::path& folder, Findings& findings) {
    static const std::set<std::string, std::less<>> kReferences = {"hardwarePlatform", "hwEmuPlatform", "softwarePlatform"};
    for (const Node& child : element.children) {
        if (child.form == Node::Text || findings.isFull())
            continue;
        checkNamedFiles(child, folder, findings);
        if (!kReferences.contains(child.name) || !child.find("path") || !child.find("name"))
            continue;
        const std::filesystem::path named = folder.string() + "/" + child.get("path") + "/" + child.get("name");
        std::error_code error;
        if (!std::filesystem::is_regular_file(named, error))
            findings.add(Rule::MissingFile, child.line,
                         lint::quote(child.name) + " names " + lint::quote(named.lexically_normal().string()) + ", which is no file");
    }
}

bool isArchive(const std::string& start) {
    return start.starts_with("PK\3\4") || start.starts_with("PK\5\6");
}

std::optional<Kind> recognise(const std::string& path, const std::string& text) {
    const std::filesystem::path file(path);
    if (const auto kind = findKind(kExtensions, file.extension().string()))
        return kind;
    // "kar.json", and "card.kar.json" where somebody took it out.
    const std::string name = file.filename().string();
    const std::size_t point = name.rfind('.', name.rfind('.') - 1);
    if (const auto kind = findKind(kFileNames, name.substr(point == std::string::npos ? 0 : point + 1)))
        return kind;
    if (text.size() > HostJson::kMaxBytes)
        return std::nullopt;
    const std::size_t first = text.find_first_not_of(" \t\r\n", text.starts_with("\xEF\xBB\xBF") ? 3 : 0);
    const char character = first == std::string::npos ? '\0' : text[first];
    return character == '<' ? lint::recogniseXml(text) : character == '{' ? lint::recogniseJson(text) : std::nullopt;
}

} // namespace

std::optional<Kind> lint::getListedKind(const std::string& type) {
    return findKind(kMemberTypes, type);
}

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

std::vector<HZEPMetadataLint::Finding> HZEPMetadataLint::check(const std::string& path) {
    if (HZEPHardwarePlatform::isValidPlatformExt(std::filesystem::path(path).extension().string()))
        return ArchiveCheck(path).check();
    const std::string text = HostFileUtils::readFile(path);
    if (isArchive(text))
        return ArchiveCheck(path).check();
    const std::optional<Kind> kind = recognise(path, text);
    if (!kind)
        throw HostError(path + ": neither its name nor its content tells what it is");
    Findings findings;
    const std::optional<Node> root = checkDocument(text, *kind, findings);
    if (root && *kind == Kind::PlatformFile) {
        const std::filesystem::path folder = std::filesystem::path(path).parent_path();
        checkNamedFiles(*root, folder.empty() ? "." : folder, findings);
    }
    return findings.take();
}
