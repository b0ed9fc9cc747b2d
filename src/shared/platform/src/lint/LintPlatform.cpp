// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "../hardware/AsciiCase.h"
#include "HPLPlatform.h"
#include "HZEPNearNames.h"
#include "HostErrors.h"
#include "HostFileUtils.h"
#include "HostText.h"
#include "LintDocuments.h"
#include "LintText.h"

#include <algorithm>
#include <filesystem>
#include <map>

namespace {

namespace fs = std::filesystem;
using lint::Archive;
using lint::Document;
using lint::Identity;
using lint::Kind;
using lint::Node;
using lint::Rule;

const std::string& textOf(const Node* node) {
    static const std::string none;
    return node ? node->value : none;
}

class PlatformCheck {
public:
    PlatformCheck(const std::string& path, std::string text)
        : path_(path), folder_(fs::path(path).parent_path()), file_(path, "", Kind::PlatformFile) {
        lint::checkDocument(file_, std::move(text));
        lint::keep(file_, room_);
    }

    std::vector<HZEPMetadataLint::Finding> check() {
        if (file_.root) {
            named_.insert(canonical(path_));
            if (const Node* platforms = file_.root->find("hardwarePlatforms"))
                checkHardware(*platforms, false);
            if (const Node* software = file_.root->find("softwarePlatforms"))
                forEachItem(software, "softwarePlatform", [&](const Node& element) { checkSoftware(element); });
            compare();
        }
        checkCompanions();
        std::vector<HZEPMetadataLint::Finding> found = file_.findings.take(file_.text);
        for (Archive& archive : archives_)
            lint::takeFindings(archive, found);
        for (Document& document : documents_)
            for (auto& finding : document.findings.take(document.text))
                found.push_back(std::move(finding));
        lint::applyIgnores(folder_.string(), true, found);
        return found;
    }

private:
    /// An archive with the element that names it.
    struct Named {
        Archive* archive;
        const Node* element;
        bool isEmulation;
    };

    static std::string canonical(const std::string& path) {
        std::error_code error;
        const fs::path found = fs::weakly_canonical(path, error);
        return error ? path : found.string();
    }

    void checkHardware(const Node& parent, bool isPartition) {
        const Node* hardware = parent.find("hardwarePlatform");
        if (hardware)
            takeArchive(*hardware, false, isPartition);
        // An emulation platform alone is the hardware too.
        if (const Node* emulation = parent.find("hwEmuPlatform"))
            takeArchive(*emulation, hardware != nullptr || isPartition, hardware != nullptr || isPartition);
        forEachItem(&parent, "reconfigurablePartition", [&](const Node& partition) { checkHardware(partition, true); });
    }

    /// The file that an element names, "" when there is none; what keeps it from being found is a finding.
    std::string resolve(const Node& element, bool isArchive) {
        const Node* name = element.find("name");
        const Node* path = element.find("path");
        if (!name || !path)
            return {};
        const fs::path named = (folder_.empty() ? "." : folder_.string()) + "/" + path->value + "/" + name->value;
        const std::string shown = (folder_.empty() ? fs::path(path->value) / name->value : named).lexically_normal().string();
        const std::string inside = (fs::path(path->value) / name->value).lexically_normal().string();
        if (inside.starts_with("..") || inside.starts_with('/') || path->value.find("..") != std::string::npos)
            file_.findings.add(Rule::PathLeadsOut, element.spot(),
                               lint::quote(element.name) + " names " + lint::quote(path->value + "/" + name->value) +
                                   ", which leads out of the folder");
        if (isArchive && !HZEPHardwarePlatform::isValidPlatformExt(fs::path(name->value).extension().string())) {
            file_.findings.add(Rule::ArchiveExtension, element.spot(), lint::quote(name->value) + " has no extension of an archive",
                               {"\".dsa\" or \".kar\"", "", {}});
            return {};
        }
        std::error_code error;
        if (fs::is_regular_file(named, error))
            return shown;
        file_.findings.add(Rule::MissingFile, element.spot(),
                           lint::quote(element.name) + " names " + lint::quote(shown) + ", which is no file" + suggestFile(named));
        return {};
    }

    static std::string suggestFile(const fs::path& named) {
        std::vector<std::string> names;
        for (const std::string& file : lint::listFolder(named.parent_path().string(), false))
            names.push_back(HostText::makePrintable(fs::path(file).filename().string()));
        return HZEPNearNames::suggest(named.filename().string(), names, 1);
    }

    void takeArchive(const Node& element, bool isEmulation, bool needsJson) {
        const std::string path = resolve(element, true);
        if (path.empty())
            return;
        const auto [earlier, isFirst] = byFile_.try_emplace(canonical(path), &element);
        if (!isFirst) {
            file_.findings.add(Rule::SameArchiveTwice, element.spot(),
                               lint::quote(path) + " is named again, line " + std::to_string(earlier->second->line) + " names it too",
                               {{}, {}, file_.findings.at(earlier->second->spot())});
            return;
        }
        named_.insert(canonical(path));
        try {
            Archive& archive = archives_.emplace_back(lint::checkArchive(path, room_));
            if (needsJson && archive.metadata && !archive.hasJson)
                archive.own.add(Rule::NoMetadata, 1, "here only JSON metadata are read, and the archive has XML ones");
            hardware_.push_back({&archive, &element, isEmulation});
        } catch (const HostError& error) {
            file_.findings.add(Rule::UnreadableMember, element.spot(), HostText::makePrintable(error.what()));
        }
    }

    void takeFile(const std::string& path, Kind kind) {
        Document& document = documents_.emplace_back(path, "", kind);
        try {
            lint::checkDocument(document, HostFileUtils::readFile(path));
            lint::keep(document, room_);
        } catch (const HostError& error) {
            document.findings.add(Rule::UnreadableMember, 1, HostText::makePrintable(error.what()));
        }
    }

    void checkSoftware(const Node& element) {
        const std::string path = resolve(element, false);
        if (path.empty() || !named_.insert(canonical(path)).second)
            return;
        takeFile(path, Kind::SoftwareFile);
        software_ = &documents_.back();
    }

    void compare() {
        const Node* reference = nullptr; // vendor of the hardware
        const Document* referenceDocument = nullptr;
        for (const Named& named : hardware_) {
            Archive& archive = *named.archive;
            if (!archive.metadata || !archive.metadata->root)
                continue;
            const Identity identity = lint::getIdentity(*archive.metadata);
            compareVersion(identity, archive);
            if (!reference && identity.vendor && !identity.vendor->value.empty()) {
                reference = identity.vendor;
                referenceDocument = archive.metadata;
            } else if (reference && identity.vendor && !identity.vendor->value.empty() && identity.vendor->value != reference->value) {
                complain(*archive.metadata, Rule::VendorDiffers, *identity.vendor, "the vendor is", *reference, *referenceDocument);
            }
            compareMarks(identity, named);
        }
        if (reference) {
            compareVendor(file_, *reference, *referenceDocument);
            if (software_ && software_->root)
                compareVendor(*software_, *reference, *referenceDocument);
        }
        compareNames();
        compareEmulations();
    }

    static void complain(Document& document, Rule rule, const Node& here, const std::string& what, const Node& there,
                         const Document& other) {
        const HZEPMetadataLint::Place place = other.findings.at(there.spot());
        document.findings.add(rule, here.spot(),
                              what + " " + lint::quote(here.value) + ", and in " + place.file +
                                  (place.member.empty() ? "" : "(" + place.member + ")") + ", line " + std::to_string(there.line) + ", " +
                                  lint::quote(there.value),
                              {{}, {}, place});
    }

    void compareVendor(Document& document, const Node& reference, const Document& referenceDocument) {
        if (const Node* vendor = document.root->find("vendor"); vendor && vendor->value != reference.value)
            complain(document, Rule::VendorDiffers, *vendor, "the vendor is", reference, referenceDocument);
    }

    void compareVersion(const Identity& identity, Archive& archive) {
        const Node* version = file_.root->find("version");
        const std::string told = textOf(identity.major) + "." + textOf(identity.minor);
        if (version && identity.major && identity.minor && !lint::isSameNumber(version->value, told))
            archive.metadata->findings.add(Rule::VersionDiffers, identity.minor->spot(),
                                           "the version is " + lint::quote(told) + ", and in the platform file, line " +
                                               std::to_string(version->line) + ", " + lint::quote(version->value),
                                           {{}, {}, file_.findings.at(version->spot())});
    }

    static void compareMarks(const Identity& identity, const Named& named) {
        Document& metadata = *named.archive->metadata;
        if (metadata.kind != Kind::ArchiveJson)
            return;
        const bool isMarked = identity.isEmulation && ascii::equalsIgnoringCase(identity.isEmulation->value, "true");
        const bool isHardware = named.element->name == "hardwarePlatform";
        const lint::Spot spot = identity.isEmulation ? identity.isEmulation->spot() : metadata.root->spot();
        if (named.isEmulation && !isMarked)
            metadata.findings.add(Rule::EmulationUnmarked, spot, "the archive is named for emulation and doesn't say that it is",
                                  {"\"true\"", "true", {}});
        else if (isHardware && isMarked)
            metadata.findings.add(Rule::EmulationMarked, spot, "the archive is named for hardware and says that it is for emulation");
    }

    void compareNames() {
        const Node* name = file_.root->find("name");
        std::vector<std::string> names;
        bool isFound = hardware_.empty() || !name;
        for (const Named& named : hardware_) {
            if (named.isEmulation)
                continue;
            if (!named.archive->metadata || !named.archive->metadata->root)
                return;
            const Identity identity = lint::getIdentity(*named.archive->metadata);
            const std::string& own = textOf(identity.name);
            const std::string& board = textOf(identity.board);
            for (const std::string& candidate : {board + "_" + own, own, board}) {
                if (own.empty() || board.empty())
                    return;
                isFound = isFound || candidate == textOf(name);
                names.push_back(candidate);
            }
        }
        if (!isFound && !names.empty())
            file_.findings.add(Rule::NameDiffers, name->spot(), "the name is " + lint::quote(name->value) + ", and no hardware is named so",
                               {lint::quote(names.front()), "", {}});
        const Node* other = software_ && software_->root ? software_->root->find("name") : nullptr;
        if (other && name && other->value != name->value && isFound)
            complain(*software_, Rule::NameDiffers, *other, "the name is", *name, file_);
        const Node* version = file_.root->find("version");
        const Node* otherVersion = software_ && software_->root ? software_->root->find("version") : nullptr;
        if (version && otherVersion && !lint::isSameNumber(version->value, otherVersion->value))
            complain(*software_, Rule::VersionDiffers, *otherVersion, "the version is", *version, file_);
    }

    /// One of another form is another rule's.
    static bool isPart(const Node* part) { return part && std::count(part->value.begin(), part->value.end(), ':') >= 3; }

    /// Each emulation is held against the hardware that is named before it.
    void compareEmulations() {
        const Archive* hardware = nullptr;
        for (const Named& named : hardware_) {
            if (!named.isEmulation) {
                hardware = named.archive;
                continue;
            }
            if (!hardware || !hardware->metadata || !hardware->metadata->root || !named.archive->metadata || !named.archive->metadata->root)
                continue;
            Document& emulation = *named.archive->metadata;
            const Identity own = lint::getIdentity(emulation);
            const Identity other = lint::getIdentity(*hardware->metadata);
            if (isPart(own.part) && isPart(other.part) && own.part->value != other.part->value)
                complain(emulation, Rule::PartDiffers, *own.part, "the part is", *other.part, *hardware->metadata);
            if (!textOf(own.board).empty() && !textOf(other.board).empty() && own.board->value != other.board->value)
                complain(emulation, Rule::BoardDiffers, *own.board, "the board id is", *other.board, *hardware->metadata);
        }
    }

    /// What stands beside the platform file, if no other one has a better claim to it.
    void checkCompanions() {
        const std::vector<std::string> beside = lint::listFolder(folder_.empty() ? "." : folder_.string(), false);
        const auto first = std::find_if(beside.begin(), beside.end(), [](const std::string& file) { return file.ends_with(".zpfm"); });
        if (first == beside.end() || fs::path(*first).filename() != fs::path(path_).filename())
            return;
        std::vector<std::string> files;
        lint::listBelow(folder_.empty() ? "." : folder_.string(), files);
        // Who misspells one name doesn't need to hear of the file as well.
        const bool isComplete = file_.root && !file_.findings.has(Rule::MissingFile) && !file_.findings.has(Rule::ArchiveExtension) &&
                                !file_.findings.has(Rule::NoHardware) && !file_.findings.has(Rule::SameArchiveTwice) &&
                                !file_.findings.has(Rule::Schema);
        for (const std::string& file : files) {
            const std::string shown = folder_.empty() ? fs::path(file).lexically_normal().string() : file;
            if (file.ends_with(".zpfm") || !named_.insert(canonical(file)).second)
                continue;
            const std::string name = fs::path(file).filename().string();
            if (lint::isArchiveName(name)) {
                Archive archive;
                try {
                    archive = lint::checkArchive(shown, room_);
                } catch (const HostError& error) {
                    archive.own = lint::Findings(shown);
                    archive.own.add(Rule::UnreadableMember, 1, HostText::makePrintable(error.what()));
                }
                if (isComplete && !name.ends_with(".mda"))
                    archive.own.add(Rule::UnnamedFile, 1, "the platform file does not name this archive");
                archives_.push_back(std::move(archive));
            } else if (const auto kind = lint::getKindByName(name)) {
                takeFile(shown, *kind);
                if (isComplete && *kind == Kind::SoftwareFile)
                    documents_.back().findings.add(Rule::UnnamedFile, 1, "the platform file does not name this file");
            }
        }
    }

    const std::string path_;
    const fs::path folder_;
    lint::Room room_;
    Document file_;
    std::deque<Archive> archives_;
    std::deque<Document> documents_;
    std::vector<Named> hardware_;
    Document* software_ = nullptr;
    std::map<std::string, const Node*> byFile_;
    std::set<std::string> named_;
};

} // namespace

namespace lint {

std::vector<HZEPMetadataLint::Finding> checkPlatform(const std::string& path, std::string text) {
    return PlatformCheck(path, std::move(text)).check();
}

} // namespace lint
