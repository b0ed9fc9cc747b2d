// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HostReplacement.h"

#include "HostErrors.h"
#include "HostFile.h"

#include <atomic>
#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

HostReplacement::HostReplacement(const std::string& path) : path_(path), target_(HostFile::getCanonicalName(path)) {
    if (path.empty() || path.find('\0') != std::string::npos)
        throw HostError("cannot write the file '" + path + "': not a file name");
    struct stat old {};
    if (stat(target_.c_str(), &old) == 0) {
        if (!S_ISREG(old.st_mode)) {
            errno = S_ISDIR(old.st_mode) ? EISDIR : EINVAL;
            fail("replace");
        }
        mode_ = old.st_mode & 07777;
    }
    // Who must not read the old content must not read the new one while it is written.
    const unsigned access = mode_ == 0 ? 0666 : (mode_ & 0777) | 0600;
    static std::atomic<unsigned> counter{0};
    do {
        temporary_ = target_ + ".new-" + std::to_string(getpid()) + "-" + std::to_string(counter++);
        fd_ = open(temporary_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, access);
    } while (fd_ < 0 && errno == EEXIST);
    if (fd_ < 0)
        fail("write");
}

HostReplacement::~HostReplacement() {
    if (fd_ >= 0)
        close(fd_);
    if (!temporary_.empty())
        unlink(temporary_.c_str());
}

void HostReplacement::write(const char* data, std::size_t size) {
    while (size > 0) {
        const ssize_t written = ::write(fd_, data, size);
        if (written < 0 && errno == EINTR)
            continue;
        if (written < 0)
            fail("write");
        data += written;
        size -= static_cast<std::size_t>(written);
    }
}

void HostReplacement::commit() {
    // The file is opened anew: whoever filled it by its path may have replaced it.
    const int first = fd_;
    fd_ = -1;
    if (close(first) != 0)
        fail("close");
    fd_ = open(temporary_.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW);
    if (fd_ < 0)
        fail("write");
    if (mode_ != 0 && fchmod(fd_, mode_) != 0)
        fail("set the permissions of");
    if (fsync(fd_) != 0)
        fail("sync");
    if (rename(temporary_.c_str(), target_.c_str()) != 0)
        fail("replace");
    temporary_.clear();

    const std::string parent = HostFile(target_).getParent();
    const int directory = open(parent.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    const bool synced = directory >= 0 && fsync(directory) == 0;
    const int cause = errno;
    if (directory >= 0)
        close(directory);
    errno = cause;
    // Some file systems cannot sync a directory; the file itself is whole.
    if (!synced && cause != EINVAL && cause != ENOTSUP && cause != EACCES)
        fail("sync the directory of");
}

void HostReplacement::fail(const char* step) const {
    const int cause = errno;
    throw HostError(std::string("cannot ") + step + " the file '" + path_ + "': " + std::strerror(cause));
}
