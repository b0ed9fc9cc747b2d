// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HostZip.h"

#include "HostErrors.h"
#include "HostReplacement.h"
#include "HostZipArchive.h"
#include "HostZipMember.h"
#include "ZipFault.h"
#include "ZipName.h"

bool HostZip::containsFile(const std::string& archive, const std::string& entry) {
    try {
        return HostZipArchive::open(archive)->find(entry).has_value();
    } catch (const HostError&) {
        return false;
    }
}

std::string HostZip::readMember(const std::string& archive, const std::string& entry, std::uint64_t maxSize) {
    return HostZipMember(archive, entry, maxSize).readAll();
}

void HostZip::extractMember(const std::string& archive, const std::string& entry, const std::string& file) {
    HostZipMember member(archive, entry, kMaxUnpackedSize);
    if (const std::string fault = getZipPathFault(entry); !fault.empty())
        failMember(archive, entry, fault);
    HostReplacement replacement(file);
    std::vector<char> buffer(256 << 10);
    while (const std::size_t got = member.read(buffer.data(), buffer.size()))
        replacement.write(buffer.data(), got);
    replacement.commit();
}

std::string HostZip::getFault(const std::string& archive) {
    try {
        HostZipArchive::open(archive);
        return "";
    } catch (const HostError& error) {
        const std::string text = error.what();
        return text.starts_with(archive + ": ") ? text.substr(archive.size() + 2) : text;
    }
}

std::vector<HostZipEntry> HostZip::getEntries(const std::string& archive) {
    const auto open = HostZipArchive::open(archive);
    std::vector<HostZipEntry> entries;
    for (std::size_t i = 0; i < open->getMembers().size(); ++i) {
        const ZipMember& member = open->getMembers()[i];
        const std::string& name = open->getName(i);
        entries.push_back({name, member.size, member.compressedSize, member.crc32, name.ends_with('/'), member.isEncrypted()});
    }
    return entries;
}
