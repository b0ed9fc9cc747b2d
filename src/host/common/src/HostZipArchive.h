// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include <sys/stat.h>
#include <zip.h>

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

    ~HostZipArchive();
    HostZipArchive(const HostZipArchive&) = delete;
    HostZipArchive& operator=(const HostZipArchive&) = delete;

    zip_t* get() const { return zip_; }
    const std::string& getPath() const { return path_; }
    const HostFileIdentity& getIdentity() const { return identity_; }

    std::optional<zip_uint64_t> find(const std::string& entry) const;

    /// Raises HostError for an index without a directory entry.
    zip_stat_t getStat(zip_uint64_t index) const;

    /// The member's content is more than HostZip::kMaxRatio times what is stored of it, beyond HostZip::kRatioFloor.
    static bool inflatesTooFar(const zip_stat_t& stat);

    /// Why the member must not be read, in a few words; "" for a sound one.
    std::string getRefusal(const zip_stat_t& stat, std::uint64_t maxSize) const;

    /// HostError "<archive>: <member>: <cause>".
    [[noreturn]] void fail(const std::string& entry, const std::string& cause) const;

private:
    HostZipArchive(std::string path, zip_t* zip, const HostFileIdentity& identity);

    std::string path_;
    zip_t* zip_;
    HostFileIdentity identity_;
};
