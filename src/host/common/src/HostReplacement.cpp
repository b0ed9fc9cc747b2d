// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HostReplacement.h"

#include "HostFile.h"
#include "HostFileAttributes.h"
#include "HostMsgMgr.h"

#include <atomic>
#include <cerrno>
#include <charconv>
#include <climits>
#include <csignal>
#include <cstring>
#include <memory>
#include <new>
#include <utility>
#include <vector>

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr char kMark[] = ".new-";
constexpr char kInPlace[] = "; the new content is in place, but may not survive a power cut";

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
void removeLeftOvers(const std::string& target, const std::string& parent) try {
    const std::unique_ptr<DIR, int (*)(DIR*)> folder(opendir(parent.c_str()), closedir);
    DIR* const directory = folder.get();
    if (!directory)
        return;
    const std::string base = target.substr(parent.size() + (parent.ends_with('/') ? 0 : 1));
    while (const dirent* entry = readdir(directory)) {
        const pid_t maker = getMaker(base, entry->d_name);
        if (maker == 0 || kill(maker, 0) == 0 || errno != ESRCH)
            continue;
        const HostDescriptor file(openat(dirfd(directory), entry->d_name, O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
        struct stat info {};
        if (file && fstat(file.get(), &info) == 0 && S_ISREG(info.st_mode) && flock(file.get(), LOCK_EX | LOCK_NB) == 0)
            unlinkat(dirfd(directory), entry->d_name, 0);
    }
} catch (const std::bad_alloc&) {
    // The next one takes them away.
}

} // namespace

HostReplacement::HostReplacement(const std::string& path) : path_(path), lock_(path), maker_(getpid()) {
    // Who must not read the old content must not read the new one while it is written.
    const mode_t access = lock_.getDescriptor() < 0 ? 0666 : 0600;
    static std::atomic<unsigned> counter{0};
    do {
        temporary_ = makeTemporaryName(lock_.getTarget(), static_cast<unsigned>(maker_), counter++);
        file_ = HostDescriptor(open(temporary_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, access));
    } while (!file_ && errno == EEXIST);
    if (!file_)
        lock_.fail("write");
    // Tells others that this file is being written; where the file system has no locks, nobody takes left-overs away.
    flock(file_.get(), LOCK_EX | LOCK_NB);
}

HostReplacement::~HostReplacement() {
    if (!temporary_.empty() && maker_ == getpid())
        unlink(temporary_.c_str());
}

void HostReplacement::write(const char* data, std::size_t size) {
    while (size > 0) {
        const ssize_t written = ::write(file_.get(), data, size);
        if (written < 0 && errno == EINTR)
            continue;
        if (written < 0)
            lock_.fail("write");
        data += written;
        size -= static_cast<std::size_t>(written);
    }
}

void HostReplacement::seal() {
    if (lock_.getDescriptor() < 0)
        lock_.acquire();
    if (const int old = lock_.getDescriptor(); old >= 0) {
        const auto outcome = host_file_attributes::copy(old, file_.get());
        if (outcome == host_file_attributes::Outcome::Failed)
            lock_.fail("set the permissions of");
        tellOfOthers(old, outcome == host_file_attributes::Outcome::OwnerChanged);
    }
    if (fsync(file_.get()) != 0)
        lock_.fail("sync");
    // Keeps the lock on the temporary file until it has its name.
    kept_ = HostDescriptor(fcntl(file_.get(), F_DUPFD_CLOEXEC, 0));
    if (file_.close() != 0)
        lock_.fail("close");
}

/// Before the file is replaced: a listener that raises then leaves it as it is.
void HostReplacement::tellOfOthers(int old, bool hasOtherOwner) const {
    struct stat info {};
    const auto tell = [this](const char* key, std::vector<std::string> args) {
        HostMsgMgr::getGlobal().send("platform", HostMsgMgr::Warning, key, std::move(args), HostFault{path_, "", 0, 0, ""});
    };
    if (fstat(old, &info) == 0 && info.st_nlink > 1)
        tell("@76-1@%s%d", {path_, std::to_string(info.st_nlink)});
    if (hasOtherOwner)
        tell("@76-2@%s", {path_});
}

void HostReplacement::commit() {
    if (file_)
        seal();
    const std::string parent = HostFile(lock_.getTarget()).getParent();
    const HostDescriptor directory(open(parent.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    // Who may change a folder may not always list it.
    if (!directory && errno != EACCES)
        lock_.fail("sync the directory of");
    if (rename(temporary_.c_str(), lock_.getTarget().c_str()) != 0)
        lock_.fail("replace");
    temporary_.clear();
    // Some file systems cannot sync a directory; the file itself is whole.
    const int cause = !directory || fsync(directory.get()) == 0 || errno == EINVAL || errno == ENOTSUP ? 0 : errno;
    removeLeftOvers(lock_.getTarget(), parent);
    kept_ = {};
    lock_.release();
    if (cause != 0)
        lock_.fail("sync the directory of", std::strerror(cause) + std::string(kInPlace));
}
