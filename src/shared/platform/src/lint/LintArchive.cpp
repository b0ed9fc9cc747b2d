// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "../hardware/AsciiCase.h"
#include "HPLPlatform.h"
#include "HZEPEmulationUtils.h"
#include "HZEPPfmFileTypes.h"
#include "HostErrors.h"
#include "HostText.h"
#include "HostZip.h"
#include "HostZipSession.h"
#include "LintDocuments.h"
#include "LintText.h"

#include <tcl.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <utility>

namespace {

using lint::Archive;
using lint::Document;
using lint::Findings;
using lint::Kind;
using lint::ListedFile;
using lint::Node;
using lint::Rule;

constexpr const char* kArchiveExts[] = {"kar", "dsa"};
constexpr const char* kIndexMember = "mda.json";
/// Largest script that is looked at, in bytes, and how much of one is read on for the end of a command.
constexpr std::size_t kMaxScript = std::size_t{4} << 20;
constexpr std::size_t kMaxCommand = std::size_t{8} << 10;

/// Members that are documents themselves, by the type that a table of contents gives them.
struct TypedKind {
    const char* type;
    Kind kind;
};
constexpr TypedKind kMemberTypes[] = {
    {"HPFM", Kind::HardwareFile},      {"EMU_HPFM", Kind::HardwareFile},       {"EMU_JSON", Kind::EmulationJson},
    {"EMU_XML", Kind::EmulationXml},   {"META_JSON", Kind::ExtensionJson},     {"EXT_META_JSON", Kind::ExtensionJson},
    {"PROP_JSON", Kind::PropertyFile}, {"USER_PROP_JSON", Kind::PropertyFile}, {"SEMANTIC_LABEL", Kind::LabelFile}};

bool isFolderType(const std::string& type) {
    return type == "IP_REPO_PATH" || type == "IP_CACHE_DIR" || type == "BOARD_REPO_PATH";
}

bool isScript(const ListedFile& file) {
    return file.name.ends_with(".tcl") || file.name.ends_with(".xdc") || file.type.ends_with("_TCL");
}

/// How an archive has the name: without what leads out of it, and with "/" alone.
std::string toMemberName(std::string name) {
    std::replace(name.begin(), name.end(), '\\', '/');
    const std::string plain = std::filesystem::path(name).relative_path().lexically_normal().string();
    const std::size_t start = plain.starts_with("../") ? plain.find_first_not_of("./") : 0;
    return plain.substr(std::min(start, plain.size()));
}

bool isOddName(const std::string& name) {
    const std::filesystem::path path(name);
    return name.starts_with('/') || name.find('\\') != std::string::npos || std::find(path.begin(), path.end(), "..") != path.end();
}

/// The line in which the command begins that a script does not end.
std::size_t findOpenCommand(const std::string& script) {
    std::size_t line = 1;
    std::size_t begin = 0; // of the command
    std::size_t first = 1;
    for (std::size_t at = 0; at < script.size(); ++line) {
        const std::size_t end = std::min(script.find('\n', at), script.size() - 1) + 1;
        at = end;
        if (Tcl_CommandComplete(script.substr(begin, end - begin).c_str()) != 0) {
            begin = end;
            first = line + 1;
        } else if (end - begin > kMaxCommand) {
            break;
        }
    }
    return first;
}

void checkScript(const std::string& script, Findings& findings) {
    const auto control = std::find_if(script.begin(), script.end(), [](char c) {
        return static_cast<unsigned char>(c) < 0x20 && c != '\t' && c != '\n' && c != '\r' && c != '\f' && c != '\v';
    });
    if (control != script.end())
        findings.add(Rule::MemberKind, static_cast<std::size_t>(std::count(script.begin(), control, '\n')) + 1,
                     "the content is no text, and the type says that it is a script");
    else if (Tcl_CommandComplete(script.c_str()) == 0)
        findings.add(Rule::ScriptSyntax, findOpenCommand(script),
                     "a brace, bracket or quote of the command that begins here is not closed");
}

class ArchiveCheck {
public:
    ArchiveCheck(const std::string& path, lint::Room& room)
        : path_(path), room_(room), session_(path), entries_(HostZip::getEntries(path)) {
        archive_.file = path;
        archive_.own = Findings(path);
    }

    Archive check() {
        Findings& own = archive_.own;
        for (const HostZipEntry& entry : entries_) {
            if (!sizes_.emplace(entry.name, entry.size).second)
                own.add(Rule::DuplicateName, 1, "member " + lint::quote(entry.name) + " comes again; only the first is found");
            addFolders(entry.name);
        }
        if (isIndexed())
            checkIndexed();
        else
            checkMetadata();
        while (!waiting_.empty()) {
            const auto [name, kind] = std::move(waiting_.front());
            waiting_.pop_front();
            checkMember(name, kind);
        }
        checkListed();
        if (isLeft_)
            own.add(Rule::MoreFindings, 1, "not all members are checked: there are very many findings");
        lint::compareDocuments(archive_);
        return std::move(archive_);
    }

private:
    bool isIndexed() const { return path_.ends_with(".mda") || (sizes_.contains(kIndexMember) && getMetadataNames(false).size() > 3); }

    void checkIndexed() {
        checkMember(kIndexMember, Kind::IndexFile);
        if (checked_.empty())
            archive_.own.add(Rule::NoMetadata, 1, "no member " + lint::quote(kIndexMember));
        else if (Document& index = archive_.documents.front(); index.root && !folders_.contains("bd"))
            forEachItem(index.root->find("files"), "", [&](const Node& file) {
                if (const Node* type = file.find("type"); type && type->value == "DR_BD")
                    index.findings.add(Rule::FolderExpected, type->spot(),
                                       "the type \"DR_BD\" stands for a folder \"bd\", which is not there");
            });
    }

    void checkMetadata() {
        for (const std::string& name : getMetadataNames(false))
            checkMember(name, name.ends_with(".xml") ? Kind::ArchiveXml : Kind::ArchiveJson);
        if (checked_.empty())
            archive_.own.add(Rule::NoMetadata, 1,
                             "no member " + lint::quote(getMetadataNames(false).at(1)) + " or " +
                                 lint::quote(getMetadataNames(false).at(2)));
        for (const std::string& name : getMetadataNames(true))
            checkMember(name, name.ends_with(".xml") ? Kind::ArchiveXml : Kind::ArchiveJson);
        // Emulation scripts are generated from XML metadata only, and then also from files that are found by their names.
        isEmulated_ = std::any_of(checked_.begin(), checked_.end(), [](const std::string& name) { return name.ends_with(".xml"); });
        if (isEmulated_) {
            HPLPlatform platform;
            waiting_.emplace_back(HZEPEmulationUtils::getEmuXmlFile(&platform), Kind::EmulationXml);
        }
    }

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
        return sizes_.contains(name) || sizes_.contains(plain) || folders_.contains(folder);
    }

    void checkMember(const std::string& listed, Kind kind) {
        const std::string name = sizes_.contains(listed) || !listed.starts_with("./")
                                     ? listed
                                     : listed.substr(std::min(listed.find_first_not_of('/', 1), listed.size()));
        if (!sizes_.contains(name) || checked_.contains(name))
            return;
        isLeft_ = isLeft_ || counted_ > HZEPMetadataLint::kMaxFindings;
        if (isLeft_)
            return;
        checked_.insert(name);
        Document& document = archive_.documents.emplace_back(path_, name, kind);
        try {
            lint::checkDocument(document, HostZip::readMember(path_, name));
            if (document.root)
                takeDocument(document);
            lint::keep(document, room_);
        } catch (const HostError& error) {
            document.findings.add(Rule::UnreadableMember, 1, HostText::makePrintable(getCause(error.what())));
        }
        counted_ += document.findings.count();
    }

    void takeDocument(Document& document) {
        const std::string& name = document.member;
        if (document.kind == Kind::HardwareFile && isEmulated_)
            lint::checkTcl(*document.root, document.kind, document.findings);
        if (name.find('/') == std::string::npos && (document.kind == Kind::ArchiveJson || document.kind == Kind::ArchiveXml)) {
            const bool isAlternate = name.starts_with("alt_");
            if (isAlternate)
                archive_.alternate = &document;
            else if (!archive_.metadata)
                archive_.metadata = &document;
            archive_.hasJson = archive_.hasJson || document.kind == Kind::ArchiveJson;
        }
        if (document.kind == Kind::HardwareFile && !archive_.hardwareFile)
            archive_.hardwareFile = &document;
        for (ListedFile file : lint::listFiles(*document.root, document.kind)) {
            if (isOddName(file.name)) {
                document.findings.add(
                    Rule::MemberName, file.spot, "the name " + lint::quote(file.name) + " is no name in an archive",
                    {lint::quote(toMemberName(file.name)), contains(toMemberName(file.name)) ? toMemberName(file.name) : "", {}});
                file.name = toMemberName(file.name);
            } else if (!contains(file.name)) {
                document.findings.add(Rule::MissingMember, file.spot, "the archive has no member " + lint::quote(file.name));
            }
            if (isFolderType(file.type) && sizes_.contains(file.name) && !file.name.ends_with('/'))
                document.findings.add(Rule::FolderExpected, file.spot,
                                      "the type " + lint::quote(file.type) + " stands for a folder, and " + lint::quote(file.name) +
                                          " is a file");
            if (const std::optional<Kind> listedKind = lint::getListedKind(file.type))
                waiting_.emplace_back(file.name, *listedKind);
            listed_.insert(file.name);
            if (const auto size = sizes_.find(file.name); size != sizes_.end() && !file.name.ends_with('/'))
                looked_.emplace(size->first, Listed{file, &document, size->second});
        }
    }

    /// What the listed files hold, and which files nobody lists.
    void checkListed() {
        for (const auto& [name, listed] : looked_) {
            if (listed.size == 0) {
                listed.document->findings.add(Rule::EmptyMember, listed.file.spot, "the file " + lint::quote(name) + " is empty");
            } else if (isScript(listed.file) && listed.size <= kMaxScript && !checked_.contains(name)) {
                isLeft_ = isLeft_ || counted_ > HZEPMetadataLint::kMaxFindings;
                if (isLeft_)
                    return;
                checkScriptMember(name);
            }
        }
        // Without a list that was read nobody can say what is missing in it.
        const bool isListed = archive_.metadata || (isIndexed() && !archive_.documents.empty() && archive_.documents.front().root);
        for (const auto& [name, size] : sizes_)
            if (isListed && !name.ends_with('/') && !isKnown(name))
                archive_.own.add(Rule::UnlistedMember, 1, "no list names the member " + lint::quote(name));
    }

    void checkScriptMember(const std::string& name) {
        Document script(path_, name, Kind::ExtensionJson);
        try {
            script.text = HostZip::readMember(path_, name);
            checkScript(script.text, script.findings);
        } catch (const HostError& error) {
            script.findings.add(Rule::UnreadableMember, 1, HostText::makePrintable(getCause(error.what())));
        }
        counted_ += script.findings.count();
        if (script.findings.count() > 0)
            archive_.documents.push_back(std::move(script));
    }

    /// Read for what it is, listed, or in a folder that is.
    bool isKnown(const std::string& name) const {
        if (checked_.contains(name) || listed_.contains(name) || listed_.contains("./" + name) ||
            name.starts_with(HZEPHardwarePlatform::getHwEmuDir() + "/") || name == "hwdef.xml" || name == "sysdef.xml" ||
            (isIndexed() && name.starts_with("bd/")))
            return true;
        for (std::size_t slash = name.rfind('/'); slash != std::string::npos && slash > 0; slash = name.rfind('/', slash - 1))
            if (const std::string folder = name.substr(0, slash); listed_.contains(folder) || listed_.contains(folder + "/"))
                return true;
        return false;
    }

    /// The words of the host layer begin with the archive, which stands in front of the finding.
    std::string getCause(const std::string& words) const {
        return words.starts_with(path_ + ": ") ? words.substr(path_.size() + 2) : words;
    }

    struct Listed {
        ListedFile file;
        Document* document;
        std::uint64_t size;
    };

    const std::string path_;
    lint::Room& room_;
    const HostZipSession session_;
    const std::vector<HostZipEntry> entries_;
    Archive archive_;
    // No hashes: names could be made to collide in them.
    std::map<std::string, std::uint64_t> sizes_;
    std::set<std::string> folders_;
    std::set<std::string> checked_;
    std::set<std::string> listed_;
    std::map<std::string, Listed> looked_;
    std::deque<std::pair<std::string, Kind>> waiting_;
    std::size_t counted_ = 0;
    bool isEmulated_ = false;
    bool isLeft_ = false;
};

} // namespace

std::optional<Kind> lint::getListedKind(const std::string& type) {
    for (const TypedKind& row : kMemberTypes)
        if (ascii::equalsIgnoringCase(type, row.type))
            return row.kind;
    return std::nullopt;
}

namespace lint {

Archive checkArchive(const std::string& path, Room& room) {
    return ArchiveCheck(path, room).check();
}

void takeFindings(Archive& archive, std::vector<HZEPMetadataLint::Finding>& found) {
    for (Document& document : archive.documents)
        for (auto& finding : document.findings.take(document.text))
            found.push_back(std::move(finding));
    for (auto& finding : archive.own.take())
        found.push_back(std::move(finding));
}

} // namespace lint
