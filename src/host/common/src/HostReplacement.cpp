// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HostReplacement.h"

#include "HostErrors.h"
#include "HostFile.h"

#include <atomic>
#include <cerrno>
#include <charconv>
#include <climits>
#include <csignal>
#include <cstring>
#include <utility>

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr char kMark[] = ".new-";

std::string makeTemporaryName(const std::string& target, unsigned process, unsigned number) {
    return target + kMark + std::to_string(process) + "-" + std::to_string(number);
}

/// The process that a temporary file of the target is named for; 0 when the name is any other.
pid_t getMaker(const std::string& target, const std::string& name) {
    const std::size_t mark = target.size() + sizeof kMark - 1;
    if (name.size() <= mark)
        return 0;
    const char* const end = name.data() + name.size();
    unsigned process = 0, number = 0;
    const char* const dash = std::from_chars(name.data() + mark, end, process).ptr;
    if (dash == end || process == 0 || process > INT_MAX)
        return 0;
    std::from_chars(dash + 1, end, number);
    return name == makeTemporaryName(target, process, number) ? static_cast<pid_t>(process) : 0;
}

/// Takes away what killed processes have left beside the file. The process must be gone and its lock too, which also tells of
/// processes that can't be seen from here. What can't be told or done stays as it is.
void removeLeftOvers(const std::string& target) {
    const std::string parent = HostFile(target).getParent();
    const std::string base = target.substr(parent.size() + (parent.ends_with('/') ? 0 : 1));
    DIR* const directory = opendir(parent.c_str());
    if (!directory)
        return;
    while (const dirent* entry = readdir(directory)) {
        const pid_t maker = getMaker(base, entry->d_name);
        if (maker == 0 || kill(maker, 0) == 0 || errno != ESRCH)
            continue;
        const int fd = openat(dirfd(directory), entry->d_name, O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
        if (fd < 0)
            continue;
        struct stat info {};
        if (fstat(fd, &info) == 0 && S_ISREG(info.st_mode) && flock(fd, LOCK_EX | LOCK_NB) == 0)
            unlinkat(dirfd(directory), entry->d_name, 0);
        close(fd);
    }
    closedir(directory);
}

} // namespace

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
        temporary_ = makeTemporaryName(target_, static_cast<unsigned>(getpid()), counter++);
        fd_ = open(temporary_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, access);
    } while (fd_ < 0 && errno == EEXIST);
    if (fd_ < 0)
        fail("write");
    // Tells others that this file is being written; where the file system has no locks, nobody takes left-overs away.
    flock(fd_, LOCK_EX | LOCK_NB);
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
    if (mode_ != 0 && fchmod(fd_, mode_) != 0)
        fail("set the permissions of");
    if (fsync(fd_) != 0)
        fail("sync");
    if (close(std::exchange(fd_, -1)) != 0)
        fail("close");
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
    removeLeftOvers(target_);
}

void HostReplacement::fail(const char* step) const {
    const int cause = errno;
    throw HostError(std::string("cannot ") + step + " the file '" + path_ + "': " + std::strerror(cause));
}
