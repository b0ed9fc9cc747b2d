// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HMDAArchive.h"

#include "../foundations/CheckedDocument.h"
#include "FolderFiles.h"
#include "HZEPJSONText.h"
#include "HZEPJSONUtils.h"
#include "HostErrors.h"
#include "HostFile.h"
#include "HostFileUtils.h"
#include "HostMsgMgr.h"
#include "HostText.h"
#include "HostZip.h"
#include "HostZipMember.h"
#include "HostZipSession.h"
#include "HostZipStreams.h"
#include "HostZipUpdate.h"
#include "JSONObjectWriter.h"

#include <algorithm>
#include <filesystem>
#include <optional>

namespace fs = std::filesystem;
using boost::property_tree::ptree;

namespace {

constexpr char kVersion[] = "version";
constexpr char kMajor[] = "major";
constexpr char kMinor[] = "minor";
constexpr char kInstPath[] = "instPath";
constexpr char kDrBdInstName[] = "drBdInstName";
constexpr char kPfmName[] = "pfmName";
constexpr char kHierName[] = "hierName";

constexpr char kBlockDesign[] = "DR_BD";
constexpr char kBlockDesignFolder[] = "bd";
constexpr int kOverwrite = 1;

/// The index's text, which raises before any archive is touched when nobody could read it.
std::string render(const HMDAArchive& archive) {
    zep_platform::JSONObjectWriter writer;
    writer.writeObject(archive);
    return zep_platform::renderChecked(writer);
}

/// Makes the folders of a member below a directory; none of them may be a link.
void makeFolders(const std::string& directory, const fs::path& name) {
    fs::path at = directory;
    for (const fs::path& part : name.parent_path()) {
        at /= part;
        std::error_code ignored;
        if (fs::is_symlink(fs::symlink_status(at, ignored)))
            throw HostUserException("HMDAArchive::_extractFile() - is a link: " + at.string());
    }
    HostFile(at.string()).mkDirRecursive();
}

} // namespace

std::string HMDAArchive::getJsonFileName() const {
    return "mda.json";
}

void HMDAArchive::toJSON(zep_platform::JSONObjectWriter& writer) const {
    zep_platform::JSONObjectWriter version;
    version.addKey(kMajor, "1");
    version.addKey(kMinor, "0");
    writer.addKey(kVersion, std::move(version));
    writer.addKey(kInstPath, instPath_);
    writer.addKey(kDrBdInstName, drBdInstName_);
    writer.addKey(kPfmName, pfmName_);
    writer.addKey(kHierName, hierName_);
    writer.writeObject(files_);
}

bool HMDAArchive::parse() {
    try {
        return parseJsonString(readJsonFile());
    } catch (const HZEPJSONTextError& error) {
        throw error.in(file_, getJsonFileName());
    }
}

std::string HMDAArchive::readJsonFile() const {
    const auto complain = [](const char* key, std::vector<std::string> args) {
        HostMsgMgr::getGlobal().send("platform", HostMsgMgr::CriticalWarning, key, std::move(args));
        return std::string();
    };
    if (!HostFile::isRegularFile(file_))
        return complain("@74-89@%s", {file_});
    std::optional<HostZipMember> member;
    try {
        member.emplace(file_, getJsonFileName(), HostZip::kMaxMetadataSize);
    } catch (const HostError&) {
        return complain("@74-67@%s%s", {getJsonFileName(), file_});
    }
    return member->readAll();
}

bool HMDAArchive::parseJsonString(const std::string& text) {
    if (text.empty())
        return false;
    ptree root;
    HZEPJSONText::read(text, root);
    parseRoot(root);
    return true;
}

// Whatever the version says, the index is read.
void HMDAArchive::parseRoot(const ptree& root) {
    instPath_ = HZEPJSONUtils::getValue(root, kInstPath);
    drBdInstName_ = HZEPJSONUtils::getValue(root, kDrBdInstName);
    pfmName_ = HZEPJSONUtils::getValue(root, kPfmName);
    hierName_ = HZEPJSONUtils::getValue(root, kHierName);
    files_.parse(root);
}

void HMDAArchive::create() const {
    const std::string operation = "HMDAArchive::create() - ";
    if (file_.empty())
        throw HostAlgException(operation + "mdaFile is not set");
    if (HostFile::exists(file_))
        throw HostUserException(operation + "mdaFile exists already: " + file_);
    const std::string index = render(*this);
    HostZipUpdate archive = HostZipUpdate::create(file_);
    archive.put(getJsonFileName(), index);
    archive.attachDigest();
    archive.commit();
}

void HMDAArchive::archive(const std::string& type, const std::string& name, const std::string& source) {
    ensureArchive_("HMDAArchive::archive() - ");
    put_(type, name, {{name, source}});
}

void HMDAArchive::archiveDirectory(const std::string& type, const std::string& name, const std::string& source) {
    const std::string operation = "HMDAArchive::archiveDirectory() - ";
    ensureArchive_(operation);
    const std::string folder = withoutTrailingSeparators(name);
    put_(type, folder, findFolderFiles(operation, file_, folder, source));
}

void HMDAArchive::ensureArchive_(const std::string& operation) const {
    if (file_.empty())
        throw HostAlgException(operation + "mdaFile is not set");
    if (getJsonFileName().empty())
        throw HostAlgException(operation + "jsonFile is not set");
    if (!HostFile::isRegularFile(file_))
        throw HostAlgException(operation + "mdaFile does not exist");
}

void HMDAArchive::put_(const std::string& type, const std::string& name, const MemberSources& sources) {
    const std::string operation = "HMDAArchive::archiveFile() - ";
    HMDAArchive next(*this);
    next.files_.add(type, name);
    for (const auto& [member, source] : sources)
        if (!HostFileUtils::isReadable(source))
            throw HostUserException(operation + "Could not open file for reading: " + source);
    const std::string index = render(next);
    std::optional<HostZipUpdate> update;
    HostFault fault;
    try {
        update.emplace(file_);
    } catch (const HostError& error) {
        fault = error.getFault(); // told below, with a name that it would refuse
        fault.cause = fault.cause.empty() ? error.what() : fault.cause;
    }
    for (const auto& [member, source] : sources) {
        if (update)
            // The index would take the file's place.
            fault = {file_, member, 0, 0, member == getJsonFileName() ? "it is the index" : HostZipUpdate::getNameFault(member)};
        if (!fault.cause.empty())
            throw HostUserException(operation + "Could not open file for streaming: " + member, fault);
        update->putFile(member, source);
    }
    update->put(getJsonFileName(), index);
    update->attachDigest();
    update->commit();
    files_ = next.files_;
}

void HMDAArchive::writeJSON() const {
    const std::string index = render(*this);
    hoststream::iostreams::zip_ostream out(getJsonFileName(), file_, 0);
    if (!out.is_open())
        throw HostUserException("HMDAArchive::writeJSON() - Could not open file for streaming: " + file_);
    out << index;
    out.close();
}

void HMDAArchive::attachDigest() const {
    HostZip::attachDigestEn(file_);
}

std::string HMDAArchive::extract(const std::string& type, const std::string& destDir) const {
    if (destDir.empty())
        throw HostUserException("HMDAArchive::extract() - destDir argument must not be empty");
    HostFile(destDir).mkDirRecursive();
    const std::string name = files_.get(type);
    if (name.empty())
        return "";
    if (type == kBlockDesign)
        return extractDir_(kBlockDesignFolder, destDir);
    return isDirectoryType(type) ? extractDir_(name, destDir) : extractFile_(name, destDir);
}

bool HMDAArchive::isDirectoryType(const std::string& type) {
    return type == kBlockDesign || type == "BOARD_REPO_PATH" || type == "IP_REPO_PATH";
}

std::string HMDAArchive::extractDir_(const std::string& name, const std::string& destDir) const {
    const std::string folder = withoutTrailingSeparators(name);
    const std::string path = destDir + "/" + name;
    // A name that leads out may well be that of a folder, but of one that nothing was unpacked to.
    if (!HostZipUpdate::getNameFault(folder).empty() || !HostZip::uncompressDir(file_, folder, destDir, kOverwrite) ||
        !HostFile::isDir(path))
        throw HostUserException("HMDAArchive::_extractDir() - dir was not extracted to the expected location: " + path);
    return path;
}

std::string HMDAArchive::extractFile_(const std::string& name, const std::string& destDir) const {
    const std::string operation = "HMDAArchive::_extractFile() - ";
    if (const std::string fault = HostZipUpdate::getNameFault(name); !fault.empty())
        throw HostUserException(operation + "Could not extract file: " + file_ + ": " + name + ": " + fault);
    const HostZipSession session(file_);
    if (const std::string broken = HostZip::getFault(file_); !broken.empty())
        throw HostUserException(operation + "Could not extract file: " + file_ + ": " + broken);
    std::string path = destDir + "/" + name;
    if (!HostZip::containsFile(file_, name))
        return path;
    makeFolders(destDir, name);
    // A link there would lead out of the directory.
    if (std::error_code ignored; fs::is_symlink(fs::symlink_status(path, ignored)))
        HostFile(path).rm();
    HostZip::extractMember(file_, name, path);
    return path;
}
