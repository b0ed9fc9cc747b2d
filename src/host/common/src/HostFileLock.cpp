// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HostFileLock.h"

#include "HostFail.h"
#include "HostFile.h"
#include "HostFileUtils.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstring>
#include <mutex>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <sys/file.h>

namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr milliseconds kLongestPause{20};

std::atomic<milliseconds::rep> timeLimit{milliseconds(HostFileUtils::kLockTimeLimit).count()};

/// Files that this process holds. A child has its parent's entries, but not its locks to give back.
struct Held {
    dev_t device;
    ino_t inode;
    std::thread::id thread;
    pid_t process;

    bool operator==(const Held&) const = default;
};

struct HeldFiles {
    std::mutex mutex;
    std::vector<Held> files;
};

/// Never destroyed: others may still be at work when the process ends.
HeldFiles& heldFiles() {
    static auto* const held = new HeldFiles;
    return *held;
}

Held describe(const struct stat& info) {
    return {info.st_dev, info.st_ino, std::this_thread::get_id(), getpid()};
}

bool isHeldHere(const struct stat& info) {
    const std::lock_guard guard(heldFiles().mutex);
    const auto& files = heldFiles().files;
    return std::find(files.begin(), files.end(), describe(info)) != files.end();
}

bool isSameFile(const struct stat& a, const struct stat& b) {
    return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

} // namespace

HostFileLock::HostFileLock(const std::string& path) : path_(path), target_(HostFile::getCanonicalName(path)) {
    if (path.empty() || path.find('\0') != std::string::npos)
        fail("write", "not a file name");
    acquire();
}

void HostFileLock::acquire() {
    const milliseconds limit(timeLimit.load());
    const auto end = steady_clock::now() + limit;
    for (milliseconds pause{1};; pause = std::min(2 * pause, kLongestPause)) {
        HostDescriptor file = openFile();
        if (!file)
            return;
        if (fstat(file.get(), &info_) != 0)
            fail("replace");
        if (isHeldHere(info_))
            fail("replace", "this thread is changing it already, and has not ended that");
        const bool isLocked = flock(file.get(), LOCK_EX | LOCK_NB) == 0;
        if (!isLocked && errno == EINTR)
            continue;
        if (isLocked || errno != EWOULDBLOCK) {
            struct stat now {};
            if (stat(target_.c_str(), &now) != 0 || !isSameFile(now, info_))
                continue; // replaced by who held it before
            if (isLocked) {
                const std::lock_guard guard(heldFiles().mutex);
                heldFiles().files.push_back(describe(info_));
            }
            isHeld_ = isLocked;
            file_ = std::move(file);
            return;
        }
        if (steady_clock::now() >= end)
            fail("replace", "somebody else is changing it, and has not ended that in " + std::to_string(limit.count()) + " ms");
        std::this_thread::sleep_for(pause);
    }
}

/// None when no file stands there.
HostDescriptor HostFileLock::openFile() const {
    struct stat info {};
    if (stat(target_.c_str(), &info) != 0)
        return {};
    if (!S_ISREG(info.st_mode)) {
        errno = S_ISDIR(info.st_mode) ? EISDIR : EINVAL;
        fail("replace");
    }
    constexpr int flags = O_CLOEXEC | O_NONBLOCK | O_NOCTTY | O_NOFOLLOW;
    HostDescriptor file(open(target_.c_str(), O_RDWR | flags));
    // A program that runs can be replaced, though not written.
    if (!file && errno == ETXTBSY)
        file = HostDescriptor(open(target_.c_str(), O_RDONLY | flags));
    if (!file && (errno == EACCES || errno == EPERM || errno == EROFS))
        fail("replace", std::string("it may not be written: ") + std::strerror(errno));
    if (!file && errno != ENOENT)
        fail("replace");
    return file;
}

void HostFileLock::release() {
    if (isHeld_) {
        const std::lock_guard guard(heldFiles().mutex);
        auto& files = heldFiles().files;
        const auto mine = std::find_if(files.begin(), files.end(), [this](const Held& held) {
            return held.device == info_.st_dev && held.inode == info_.st_ino && held.process == getpid();
        });
        if (mine != files.end()) {
            files.erase(mine);
            // Given back for copies of the descriptor in child processes too.
            flock(file_.get(), LOCK_UN);
        }
        isHeld_ = false;
    }
    file_ = {};
}

void HostFileLock::fail(const char* step, const std::string& cause) const {
    failPath(std::string("cannot ") + step + " the file", path_, cause);
}

void HostFileLock::fail(const char* step) const {
    fail(step, std::strerror(errno));
}

void HostFileLock::setTimeLimit(milliseconds limit) {
    timeLimit = limit.count();
}
