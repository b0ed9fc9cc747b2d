// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HostZipArchive.h"

#include "HostErrors.h"
#include "HostZip.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

#include <fcntl.h>
#include <unistd.h>

namespace {

bool isEqual(const timespec& a, const timespec& b) {
    return a.tv_sec == b.tv_sec && a.tv_nsec == b.tv_nsec;
}

} // namespace

bool HostFileIdentity::operator==(const HostFileIdentity& other) const {
    return device == other.device && inode == other.inode && size == other.size && isEqual(modified, other.modified) &&
           isEqual(changed, other.changed);
}

HostZipArchive::HostZipArchive(std::string path, zip_t* zip, const HostFileIdentity& identity)
    : path_(std::move(path)), zip_(zip), identity_(identity) {}

HostZipArchive::~HostZipArchive() {
    zip_discard(zip_);
}

std::shared_ptr<HostZipArchive> HostZipArchive::openFresh(const std::string& path) {
    const auto refuse = [&path](const std::string& cause) { throw HostError(path + ": " + cause); };
    if (path.empty() || path.find('\0') != std::string::npos)
        refuse("not a file name");
    // Not blocking, so that a pipe that nobody writes to is no trap.
    const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (fd < 0)
        refuse(std::strerror(errno));
    struct stat info {};
    std::string cause;
    if (fstat(fd, &info) != 0)
        cause = std::strerror(errno);
    else if (S_ISDIR(info.st_mode))
        cause = "is a directory, not an archive";
    else if (!S_ISREG(info.st_mode))
        cause = "is not a regular file";
    else if (info.st_size == 0)
        cause = "is empty, not a zip archive";
    std::FILE* file = cause.empty() ? fdopen(fd, "rb") : nullptr;
    if (!file) {
        if (cause.empty())
            cause = std::strerror(errno);
        close(fd);
        refuse(cause);
    }

    zip_error_t error;
    zip_error_init(&error);
    zip_source_t* source = zip_source_filep_create(file, 0, -1, &error);
    if (!source)
        std::fclose(file);
    zip_t* zip = source ? zip_open_from_source(source, ZIP_RDONLY, &error) : nullptr;
    if (source && !zip)
        zip_source_free(source);
    cause = zip ? "" : zip_error_strerror(&error);
    zip_error_fini(&error);
    if (!zip)
        refuse("cannot be opened as a zip archive: " + cause);
    return std::shared_ptr<HostZipArchive>(new HostZipArchive(path, zip, HostFileIdentity::of(info)));
}

std::optional<zip_uint64_t> HostZipArchive::find(const std::string& entry) const {
    if (entry.empty() || entry.find('\0') != std::string::npos)
        return std::nullopt;
    const zip_int64_t index = zip_name_locate(zip_, entry.c_str(), 0);
    if (index < 0)
        return std::nullopt;
    return static_cast<zip_uint64_t>(index);
}

zip_stat_t HostZipArchive::getStat(zip_uint64_t index) const {
    zip_stat_t stat;
    zip_stat_init(&stat);
    constexpr zip_uint64_t needed = ZIP_STAT_NAME | ZIP_STAT_SIZE | ZIP_STAT_COMP_SIZE | ZIP_STAT_CRC;
    if (zip_stat_index(zip_, index, 0, &stat) != 0 || (stat.valid & needed) != needed)
        fail("member " + std::to_string(index), "its directory entry cannot be read");
    return stat;
}

bool HostZipArchive::inflatesTooFar(const zip_stat_t& stat) {
    return stat.size > HostZip::kRatioFloor && (stat.comp_size == 0 || stat.size / stat.comp_size > HostZip::kMaxRatio ||
                                                (stat.size / stat.comp_size == HostZip::kMaxRatio && stat.size % stat.comp_size != 0));
}

std::string HostZipArchive::getRefusal(const zip_stat_t& stat, std::uint64_t maxSize) const {
    const std::string name = stat.name;
    if (name.ends_with('/'))
        return "is a directory";
    if ((stat.valid & ZIP_STAT_ENCRYPTION_METHOD) != 0 && stat.encryption_method != ZIP_EM_NONE)
        return "is encrypted; encrypted members are not supported";
    if (stat.size > maxSize)
        return "announces " + std::to_string(stat.size) + " bytes, more than the limit of " + std::to_string(maxSize);
    if (stat.comp_size > static_cast<std::uint64_t>(identity_.size))
        return "announces more compressed bytes than the archive holds";
    if (inflatesTooFar(stat))
        return "announces to inflate more than " + std::to_string(HostZip::kMaxRatio) + " times";
    return "";
}

void HostZipArchive::fail(const std::string& entry, const std::string& cause) const {
    throw HostError(path_ + ": " + entry + ": " + cause);
}
