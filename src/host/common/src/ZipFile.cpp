// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "ZipFile.h"

#include "ZipFault.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

ZipFile::ZipFile(int fd, std::string shown) : fd_(fd), shown_(std::move(shown)) {}

ZipFile ZipFile::openArchive(const std::string& path) {
    if (path.empty() || path.find('\0') != std::string::npos)
        failArchive(path, "not a file name");
    // Not blocking, so that a pipe that nobody writes to is no trap.
    ZipFile file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY), path);
    struct stat info {};
    if (!file.fd_ || fstat(file.get(), &info) != 0)
        file.fail("cannot be opened");
    if (!S_ISREG(info.st_mode))
        failArchive(path, S_ISDIR(info.st_mode) ? "is a directory" : "is not a regular file");
    return file;
}

ZipFile ZipFile::openTemporary(const std::string& path, const std::string& shown) {
    ZipFile file(::open(path.c_str(), O_RDWR | O_CLOEXEC | O_NOFOLLOW), shown);
    if (!file.fd_)
        file.fail("cannot be written");
    return file;
}

void ZipFile::writeAt(std::uint64_t offset, const std::string& bytes) {
    for (std::size_t done = 0; done < bytes.size();) {
        const ssize_t written = pwrite(get(), bytes.data() + done, bytes.size() - done, static_cast<off_t>(offset + done));
        if (written < 0 && errno == EINTR)
            continue;
        if (written < 0)
            fail("cannot be written");
        done += static_cast<std::size_t>(written);
    }
}

void ZipFile::copyFrom(int source, std::uint64_t from, std::uint64_t to, std::uint64_t size) {
    constexpr std::uint64_t kStep = 1ULL << 30;
    bool inKernel = true;
    std::vector<char> buffer;
    while (size > 0) {
        ssize_t copied;
        if (inKernel) {
            loff_t in = static_cast<loff_t>(from);
            loff_t out = static_cast<loff_t>(to);
            copied = copy_file_range(source, &in, get(), &out, static_cast<std::size_t>(std::min(size, kStep)), 0);
            if (copied < 0 && (errno == EXDEV || errno == ENOSYS || errno == EOPNOTSUPP || errno == EINVAL)) {
                inKernel = false;
                continue;
            }
        } else {
            buffer.resize(1 << 20);
            copied = pread(source, buffer.data(), std::min<std::uint64_t>(size, buffer.size()), static_cast<off_t>(from));
            if (copied > 0)
                copied = pwrite(get(), buffer.data(), static_cast<std::size_t>(copied), static_cast<off_t>(to));
        }
        if (copied < 0 && errno == EINTR)
            continue;
        if (copied < 0)
            fail("cannot be copied");
        if (copied == 0)
            failArchive(shown_, "became shorter while it was copied");
        from += static_cast<std::uint64_t>(copied);
        to += static_cast<std::uint64_t>(copied);
        size -= static_cast<std::uint64_t>(copied);
    }
}

void ZipFile::truncate(std::uint64_t size) {
    if (ftruncate(get(), static_cast<off_t>(size)) != 0)
        fail("cannot be written");
}

void ZipFile::close() {
    if (fd_.close() != 0)
        fail("cannot be written");
}

void ZipFile::fail(const std::string& step) const {
    failArchive(shown_, step + ": " + std::strerror(errno));
}
