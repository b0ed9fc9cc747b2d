// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "ZipDirectory.h"
#include "ZipFile.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <sys/stat.h>

/// What tells one content of a path from another.
struct HostFileIdentity {
    dev_t device = 0;
    ino_t inode = 0;
    off_t size = 0;
    timespec modified{};
    timespec changed{};

    static HostFileIdentity of(const struct stat& info) { return {info.st_dev, info.st_ino, info.st_size, info.st_mtim, info.st_ctim}; }
    bool operator==(const HostFileIdentity& other) const;
};

/// One archive open for reading, with its directory.
class HostZipArchive {
public:
    /// The open archive of a session of this thread on the same file, else a newly opened one. Raises HostError.
    static std::shared_ptr<HostZipArchive> open(const std::string& path);

    /// Opened anew, whatever sessions there are.
    static std::shared_ptr<HostZipArchive> openFresh(const std::string& path);

    HostZipArchive(const HostZipArchive&) = delete;
    HostZipArchive& operator=(const HostZipArchive&) = delete;

    const std::string& getPath() const { return path_; }
    const HostFileIdentity& getIdentity() const { return identity_; }
    int getDescriptor() const { return file_.get(); }

    /// In the order of the directory.
    const std::vector<ZipMember>& getMembers() const { return members_; }
    /// In UTF-8.
    const std::string& getName(std::size_t index) const { return names_[index]; }

    /// Of members with one name the first.
    std::optional<std::size_t> find(const std::string& entry) const;

    static bool isEncrypted(const ZipMember& member) { return (member.flags & 1) != 0; }

    /// Why the member must not be read, in a few words; "" for a sound one.
    std::string getRefusal(std::size_t index, std::uint64_t maxSize) const;

    /// HostError "<archive>: <member>: <cause>".
    [[noreturn]] void fail(const std::string& entry, const std::string& cause) const;

private:
    HostZipArchive(const std::string& path, ZipFile file, const HostFileIdentity& identity);

    std::string path_;
    ZipFile file_;
    HostFileIdentity identity_;
    std::vector<ZipMember> members_;
    std::vector<std::string> names_;
    std::vector<std::uint32_t> sorted_; // indices, in the order of names
};
