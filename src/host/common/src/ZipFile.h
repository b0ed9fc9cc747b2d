// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HostDescriptor.h"

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

    int get() const { return fd_.get(); }

    void writeAt(std::uint64_t offset, const std::string& bytes);
    void copyFrom(int source, std::uint64_t from, std::uint64_t to, std::uint64_t size);
    void truncate(std::uint64_t size);
    void close();

    [[noreturn]] void fail(const std::string& step) const;

private:
    ZipFile(int fd, std::string shown);

    HostDescriptor fd_;
    std::string shown_;
};
