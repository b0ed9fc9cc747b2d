// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HostZip.h"

#include "HostErrors.h"
#include "HostZipArchive.h"
#include "HostZipMember.h"

bool HostZip::containsFile(const std::string& archive, const std::string& entry) {
    try {
        return HostZipArchive::open(archive)->find(entry).has_value();
    } catch (const HostError&) {
        return false;
    }
}

std::string HostZip::readMember(const std::string& archive, const std::string& entry) {
    return HostZipMember(archive, entry, kMaxMemberSize).readAll();
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
    const zip_int64_t count = zip_get_num_entries(open->get(), 0);
    std::vector<HostZipEntry> entries;
    for (zip_int64_t i = 0; i < count; ++i) {
        const zip_stat_t stat = open->getStat(static_cast<zip_uint64_t>(i));
        const std::string name = stat.name;
        const bool encrypted = (stat.valid & ZIP_STAT_ENCRYPTION_METHOD) != 0 && stat.encryption_method != ZIP_EM_NONE;
        entries.push_back({name, stat.size, stat.comp_size, stat.crc, name.ends_with('/'), encrypted});
    }
    return entries;
}
