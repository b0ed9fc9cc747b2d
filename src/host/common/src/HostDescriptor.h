// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include <cerrno>
#include <utility>

#include <unistd.h>

/// Owns one file descriptor; -1 for none.
class HostDescriptor {
public:
    HostDescriptor() = default;
    explicit HostDescriptor(int fd) : fd_(fd) {}
    HostDescriptor(HostDescriptor&& other) noexcept : fd_(std::exchange(other.fd_, -1)) {}
    HostDescriptor& operator=(HostDescriptor&& other) noexcept {
        std::swap(fd_, other.fd_);
        return *this;
    }
    ~HostDescriptor() {
        const int cause = errno;
        static_cast<void>(close());
        errno = cause;
    }

    int get() const { return fd_; }
    explicit operator bool() const { return fd_ >= 0; }

    /// 0, or -1 with the cause in errno; the descriptor is gone in both cases.
    [[nodiscard]] int close() {
        const int fd = std::exchange(fd_, -1);
        return fd >= 0 ? ::close(fd) : 0;
    }

private:
    int fd_ = -1;
};
