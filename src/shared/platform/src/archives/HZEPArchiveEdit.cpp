// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HZEPArchiveEdit.h"

#include "../foundations/CheckedDocument.h"
#include "../lint/LintTree.h"
#include "FolderFiles.h"
#include "HMDAArchive.h"
#include "HPLPlatform.h"
#include "HZEPDsaJsonReader.h"
#include "HZEPDsaXmlReader.h"
#include "HZEPJSONText.h"
#include "HZEPTextEdit.h"
#include "HostErrors.h"
#include "HostFile.h"
#include "HostFileUtils.h"
#include "HostText.h"
#include "HostZip.h"
#include "HostZipSession.h"
#include "HostZipUpdate.h"
#include "PlatformLoader.h"

#include <algorithm>
#include <optional>

using Value = HZEPTextEdit::Value;

namespace {

/// Names of the metadata that list an archive's files, the first that is there counts.
std::vector<std::string> getMetadataNames(const std::string& archive) {
    const std::string ext = HostFile(HostFile::getCanonicalName(archive)).getExt(); // of the file behind a link, as the loader has it
    return {ext + ".json", "alt_" + ext + ".json", ext + ".xml"};
}

/// What is written before the list of files, in this order.
const std::vector<std::string> kDocumentOrder = {"versionMajor",
                                                 "versionMinor",
                                                 "hostArchitecture",
                                                 "hostInterface",
                                                 "usesPR",
                                                 "platformState",
                                                 "topModuleName",
                                                 "acceleratorBinaryFormat",
                                                 "acceleratorBinaryContent",
                                                 "validAcceleratorBinaryContentValues",
                                                 "bvlcCompileXPSwitches",
                                                 "bvlcLinkXPSwitches",
                                                 "dcpFunctionStripped",
                                                 "dcpEncrypted",
                                                 "defaultOutputType",
                                                 "designIntent",
                                                 "board",
                                                 "devices",
                                                 "interfaces",
                                                 "memories",
                                                 "files"};
const std::vector<std::string> kIndexOrder = {"version", "instPath", "drBdInstName", "pfmName", "hierName", "files"};

[[noreturn]] void refuse(const std::string& archive, const std::string& member, const std::string& cause) {
    throw HostUserException(archive + ": " + HostText::makePrintable(member) + ": " + cause, {archive, member, 0, 0, cause});
}

void checkName(const std::string& archive, const std::string& entry) {
    if (const std::string fault = HostZipUpdate::getNameFault(entry); !fault.empty())
        refuse(archive, entry, fault);
}

void checkType(const std::string& type) {
    if (type.empty())
        throw HostUserException("the type is empty", {"", "", 0, 0, "the type is empty"});
    zep_platform::refuseUnlessUtf8("the type", type);
}

void checkSource(const std::string& source) {
    if (!HostFile::isRegularFile(source)) {
        const std::string cause = HostFile::exists(source) ? "is no regular file" : "no such file";
        throw HostUserException(source + ": " + cause, {source, "", 0, 0, cause});
    }
}

std::size_t getDepth(const boost::property_tree::ptree& tree) {
    std::size_t depth = 0;
    for (const auto& [key, child] : tree)
        depth = std::max(depth, getDepth(child));
    return tree.empty() ? 0 : depth + 1;
}

/// Refuses a file that its own readers would refuse, where the type tells which these are.
void checkContent(const std::string& type, const std::string& source) {
    const std::optional<lint::Kind> kind = lint::getListedKind(type);
    if (!kind)
        return;
    const std::string text = HostFileUtils::readFile(source, HostZip::kMaxMemberSize);
    const auto refuseAt = [&](std::size_t line, const std::string& cause) {
        throw HostDataException(source + ":" + std::to_string(line) + ": " + cause, {source, "", line, 0, cause});
    };
    if (const auto refusal = lint::findRefusal(text, *kind))
        refuseAt(refusal->line, refusal->text);
    // It is a member of the platform's document, one level below its root.
    if (*kind != lint::Kind::ExtensionJson || text.empty())
        return;
    boost::property_tree::ptree tree;
    HZEPJSONText::read(text, tree);
    if (getDepth(tree) >= HZEPJSONText::kMaxDepth)
        refuseAt(1, "is nested deeper than " + std::to_string(HZEPJSONText::kMaxDepth - 1) + " levels");
}

void checkFile(const std::string& archive, const std::string& type, const std::string& entry, const std::string& source) {
    checkType(type);
    checkName(archive, entry);
    checkSource(source);
    checkContent(type, source);
}

/// Takes all items of the type out of the list at the path and puts a new one at its end.
void listFile(HZEPTextEdit& edit, const std::string& path, const char* typeKey, const std::string& type, const Value& item) {
    const std::size_t count = edit.getCount(path);
    for (std::size_t i = 0; i < count; ++i)
        if (const std::string at = path + "[" + std::to_string(i) + "]"; edit.getText(at + "." + typeKey) == type)
            edit.remove(at);
    edit.insert(path + "[" + std::to_string(count) + "]", item);
}

/// False when there is no list, or nothing in its place that has a value: that reads as a list without items.
bool hasList(const HZEPTextEdit& edit, const std::string& path) {
    const HZEPTextEdit::Kind kind = edit.getKind(path);
    if (kind == HZEPTextEdit::None || kind == HZEPTextEdit::List)
        return kind == HZEPTextEdit::List;
    if (!edit.getText(path).empty() || edit.getCount(path) > 0)
        throw HostDataException("\"" + path + "\": is no list", {"", path, 0, 0, "is no list"});
    return false;
}

/// Puts a list of one item where there is none, or one without a value.
void putList(HZEPTextEdit& edit, const std::string& path, const Value& item, const std::vector<std::string>& order) {
    const Value list(Value::List, {item});
    if (edit.contains(path))
        edit.replace(path, list);
    else
        edit.insert(path, list, order);
}

/// The metadata with the file listed; what is wrong with them is told with archive and member.
template <class Change>
std::string changeText(const std::string& archive, const std::string& member, HZEPTextEdit::Form form, const Change& change) {
    try {
        HZEPTextEdit edit(HostZip::readMember(archive, member), form);
        change(edit);
        return edit.apply();
    } catch (const HostDataException& error) {
        HostFault fault = error.getFault();
        fault.file = archive;
        fault.member = fault.member.empty() ? member : member + ": " + fault.member;
        throw HostUserException(archive + ": " + member + ": " + error.what(), std::move(fault));
    }
}

} // namespace

std::string HZEPArchiveEdit::getMetadataName(const std::string& archive) {
    const HostZipSession session(archive);
    for (const std::string& name : getMetadataNames(archive))
        if (HostZip::containsFile(archive, name))
            return name;
    return "";
}

void HZEPArchiveEdit::addFile(const std::string& archive, const std::string& type, const std::string& entry, const std::string& source) {
    checkFile(archive, type, entry, source);
    HostZipUpdate update(archive);
    const std::string member = getMetadataName(archive);
    if (member.empty())
        refuse(archive, getMetadataNames(archive).front(), "there is no such metadata to list the file in");
    const std::vector<std::string> names = getMetadataNames(archive);
    if (entry == member || entry == names[0] || entry == names[1])
        refuse(archive, entry, "is the archive's metadata, not a file of a type");
    const HZEPTextEdit::Form form = member.ends_with(".xml") ? HZEPTextEdit::Xml : HZEPTextEdit::Json;
    const std::string text = changeText(archive, member, form, [&](HZEPTextEdit& edit) {
        if (form == HZEPTextEdit::Xml)
            return listFile(edit, "DSA.Files.File", "Type", type,
                            Value(Value::Object, {Value(type).named("Type"), Value(entry).named("Name")}));
        const Value item(Value::Object, {Value(entry).named("name"), Value(type).named("type")});
        if (hasList(edit, "files"))
            listFile(edit, "files", "type", type, item);
        else
            putList(edit, "files", item, kDocumentOrder);
    });
    update.putFile(entry, source);
    update.put(member, text);
    update.attachDigest();
    update.commit();
}

void HZEPArchiveEdit::addFileAnew(const std::string& archive, const std::string& type, const std::string& entry, const std::string& source,
                                  const Check& check) {
    checkFile(archive, type, entry, source);
    HostZipUpdate update(archive);
    const std::string member = getMetadataName(archive);
    if (member.empty())
        refuse(archive, getMetadataNames(archive).front(), "there is no such metadata");
    HPLPlatform platform;
    const bool isRead =
        member.ends_with(".xml")
            ? HZEPDsaXmlReader(archive, &platform).parseDSA()
            : HZEPDsaJsonReader(&platform).parseDSA(archive, member.starts_with("alt_") ? zep_platform::PlatformLoader::PreferAlternateJson
                                                                                        : zep_platform::PlatformLoader::PrimaryJsonOnly);
    if (!isRead)
        refuse(archive, member, "can't be read");
    if (entry == member || entry == platform.getJsonFileName() || entry == platform.getAltJsonFileName())
        refuse(archive, entry, "is the archive's metadata, not a file of a type");
    std::string document;
    try {
        document = platform.renderWith_("", type, entry, source);
    } catch (const HostDataException& error) {
        HostFault fault = error.getFault();
        fault.file = archive;
        throw HostUserException(archive + ": " + error.what(), std::move(fault));
    }
    check(HostZip::readMember(archive, member), platform, document);
    update.putFile(entry, source);
    update.put(platform.getJsonFileName(), document);
    update.attachDigest();
    update.commit();
}

void HZEPArchiveEdit::addToIndex(const std::string& archive, const std::string& type, const std::string& entry, const std::string& source) {
    checkType(type);
    const bool isFolder = HostFile::isDir(source);
    const std::string name = isFolder ? withoutTrailingSeparators(entry) : entry;
    MemberSources sources;
    if (isFolder)
        sources = findFolderFiles("", archive, name, source);
    else
        sources[name] = source;
    const std::string index = HMDAArchive().getJsonFileName();
    for (const auto& [member, file] : sources) {
        checkName(archive, member);
        checkSource(file);
        if (member == index)
            refuse(archive, member, "is the archive's index, not a file of a type");
    }
    HostZipUpdate update(archive);
    const std::string text = changeText(archive, index, HZEPTextEdit::Json, [&](HZEPTextEdit& edit) {
        const Value item(Value::Object, {Value(name).named("name"), Value(type).named("type")});
        if (!hasList(edit, "files"))
            return putList(edit, "files", item, kIndexOrder);
        // Of several items of one type the last counts, and those that lack something don't; the list is written in the order of types.
        const std::size_t count = edit.getCount("files");
        std::size_t last = count, place = count;
        for (std::size_t i = 0; i < count; ++i) {
            const std::string at = "files[" + std::to_string(i) + "]";
            const std::string itemType = edit.getText(at + ".type");
            if (itemType == type && !edit.getText(at + ".name").empty())
                last = i;
            else if (itemType > type)
                place = std::min(place, i);
        }
        if (last < count)
            edit.replace("files[" + std::to_string(last) + "].name", name);
        else
            edit.insert("files[" + std::to_string(place) + "]", item);
    });
    for (const auto& [member, file] : sources)
        update.putFile(member, file);
    update.put(index, text);
    update.attachDigest();
    update.commit();
}
