// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HostZipArchive.h"

#include "ZipFault.h"
#include "ZipName.h"

#include <algorithm>
#include <numeric>

namespace {

bool isEqual(const timespec& a, const timespec& b) {
    return a.tv_sec == b.tv_sec && a.tv_nsec == b.tv_nsec;
}

} // namespace

bool HostFileIdentity::operator==(const HostFileIdentity& other) const {
    return device == other.device && inode == other.inode && size == other.size && isEqual(modified, other.modified) &&
           isEqual(changed, other.changed);
}

HostZipArchive::HostZipArchive(const std::string& path, ZipFile file, const HostFileIdentity& identity, Check check)
    : path_(path), file_(std::move(file)), identity_(identity),
      directory_(check == Everything ? ZipDirectory::read(file_.get(), path) : ZipDirectory::list(file_.get(), path)) {
    names_.reserve(getMembers().size());
    for (const ZipMember& member : getMembers())
        names_.push_back(getZipName(member));
    // Sorted, not hashed: names made to collide find nothing to collide in.
    sorted_.resize(names_.size());
    std::iota(sorted_.begin(), sorted_.end(), 0U);
    const auto isBefore = [this](std::uint32_t a, std::uint32_t b) { return names_[a] < names_[b]; };
    if (!std::is_sorted(sorted_.begin(), sorted_.end(), isBefore))
        std::stable_sort(sorted_.begin(), sorted_.end(), isBefore);
}

std::shared_ptr<HostZipArchive> HostZipArchive::openFresh(const std::string& path, Check check) {
    ZipFile file = ZipFile::openArchive(path);
    struct stat info {};
    if (fstat(file.get(), &info) != 0)
        file.fail("cannot be opened");
    if (info.st_size == 0)
        failArchive(path, "is empty, not a zip archive");
    return std::shared_ptr<HostZipArchive>(new HostZipArchive(path, std::move(file), HostFileIdentity::of(info), check));
}

std::optional<std::size_t> HostZipArchive::find(const std::string& entry) const {
    const auto at = std::lower_bound(sorted_.begin(), sorted_.end(), entry,
                                     [this](std::uint32_t index, const std::string& name) { return names_[index] < name; });
    if (at == sorted_.end() || names_[*at] != entry)
        return std::nullopt;
    return *at;
}

ZipMemberReader HostZipArchive::openMember(std::size_t index, std::uint64_t maxSize) const {
    return {getSource(), getMembers()[index], names_[index], maxSize};
}

void HostZipArchive::fail(const std::string& entry, const std::string& cause) const {
    failMember(path_, entry, cause);
}
