// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

/// An open file that is read and written at offsets. Failures are HostError with the name given and the cause.
class ZipFile {
public:
    /// For reading; refuses what is no regular file.
    static ZipFile openArchive(const std::string& path);
    /// For reading and writing. Errors name `shown`.
    static ZipFile openTemporary(const std::string& path, const std::string& shown);

    ZipFile(ZipFile&& other) noexcept;
    ~ZipFile();
    ZipFile& operator=(ZipFile&&) = delete;

    int get() const { return fd_; }

    void writeAt(std::uint64_t offset, const std::string& bytes);
    void copyFrom(const ZipFile& source, std::uint64_t from, std::uint64_t to, std::uint64_t size);
    void truncate(std::uint64_t size);
    void close();

    [[noreturn]] void fail(const std::string& step) const;

private:
    ZipFile(int fd, std::string shown);

    int fd_;
    std::string shown_;
};
