// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HostZipArchive.h"

#include "HostErrors.h"
#include "HostZip.h"

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

HostZipArchive::HostZipArchive(const std::string& path, ZipFile file, const HostFileIdentity& identity)
    : path_(path), file_(std::move(file)), identity_(identity), members_(ZipDirectory::list(file_.get(), path).members) {
    names_.reserve(members_.size());
    for (const ZipMember& member : members_)
        names_.push_back(getZipName(member));
    // Sorted, not hashed: names made to collide find nothing to collide in.
    sorted_.resize(names_.size());
    std::iota(sorted_.begin(), sorted_.end(), 0U);
    const auto isBefore = [this](std::uint32_t a, std::uint32_t b) { return names_[a] < names_[b]; };
    if (!std::is_sorted(sorted_.begin(), sorted_.end(), isBefore))
        std::stable_sort(sorted_.begin(), sorted_.end(), isBefore);
}

std::shared_ptr<HostZipArchive> HostZipArchive::openFresh(const std::string& path) {
    ZipFile file = ZipFile::openArchive(path);
    struct stat info {};
    if (fstat(file.get(), &info) != 0)
        file.fail("cannot be opened");
    if (info.st_size == 0)
        throw HostError(path + ": is empty, not a zip archive");
    return std::shared_ptr<HostZipArchive>(new HostZipArchive(path, std::move(file), HostFileIdentity::of(info)));
}

std::optional<std::size_t> HostZipArchive::find(const std::string& entry) const {
    const auto at = std::lower_bound(sorted_.begin(), sorted_.end(), entry,
                                     [this](std::uint32_t index, const std::string& name) { return names_[index] < name; });
    if (entry.empty() || at == sorted_.end() || names_[*at] != entry)
        return std::nullopt;
    return *at;
}

std::string HostZipArchive::getRefusal(std::size_t index, std::uint64_t maxSize) const {
    const ZipMember& member = members_[index];
    const std::uint64_t size = member.size, compressed = member.compressedSize;
    if (names_[index].ends_with('/'))
        return "is a directory";
    if (isEncrypted(member))
        return "is encrypted; encrypted members are not supported";
    if (size > maxSize)
        return "announces " + std::to_string(size) + " bytes, more than the limit of " + std::to_string(maxSize);
    if (compressed > static_cast<std::uint64_t>(identity_.size))
        return "announces more compressed bytes than the archive holds";
    const std::uint64_t ratio = HostZip::kMaxRatio;
    if (size > HostZip::kRatioFloor && (compressed == 0 || size / compressed > ratio || (size / compressed == ratio && size % compressed)))
        return "announces to inflate more than " + std::to_string(ratio) + " times";
    return "";
}

void HostZipArchive::fail(const std::string& entry, const std::string& cause) const {
    throw HostError(path_ + ": " + entry + ": " + cause);
}
