// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "ZipDirectory.h"
#include "ZipFile.h"
#include "ZipMemberReader.h"

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

    /// How much of the directory is checked: see ZipDirectory.
    enum Check { Members, Everything };

    /// Opened anew, whatever sessions there are.
    static std::shared_ptr<HostZipArchive> openFresh(const std::string& path, Check check = Members);

    HostZipArchive(const HostZipArchive&) = delete;
    HostZipArchive& operator=(const HostZipArchive&) = delete;

    const std::string& getPath() const { return path_; }
    const HostFileIdentity& getIdentity() const { return identity_; }
    int getDescriptor() const { return file_.get(); }

    const ZipDirectory& getDirectory() const { return directory_; }
    /// In the order of the directory.
    const std::vector<ZipMember>& getMembers() const { return directory_.members; }
    /// In UTF-8.
    const std::string& getName(std::size_t index) const { return names_[index]; }

    /// Of members with one name the first.
    std::optional<std::size_t> find(const std::string& entry) const;

    ZipMemberReader::Source getSource() const { return {file_.get(), static_cast<std::uint64_t>(identity_.size), path_}; }

    /// To be read while this archive lives.
    ZipMemberReader openMember(std::size_t index, std::uint64_t maxSize) const;

    /// HostError "<archive>: <member>: <cause>".
    [[noreturn]] void fail(const std::string& entry, const std::string& cause) const;

private:
    HostZipArchive(const std::string& path, ZipFile file, const HostFileIdentity& identity, Check check);

    std::string path_;
    ZipFile file_;
    HostFileIdentity identity_;
    ZipDirectory directory_;
    std::vector<std::string> names_;
    std::vector<std::uint32_t> sorted_; // indices, in the order of names
};
