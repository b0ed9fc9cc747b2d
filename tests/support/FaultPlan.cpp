// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "FaultPlan.h"

#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <string>

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

unsigned kindsAtHand = 0;
unsigned callsLeft = 0;
FaultPlan::Action actionAtHand = FaultPlan::Fail;

/// Exit codes of the child.
enum : int { kDone = 0, kRaised = 1, kDoneUnharmed = 2, kRaisedUnharmed = 3 };

template <class Function>
Function next(const char* name) {
    void* const found = dlsym(RTLD_NEXT, name);
    if (!found)
        std::abort();
    return reinterpret_cast<Function>(found);
}

/// Whether the call at hand is the one. Only regular files and directories count, so that what a test prints does not.
bool strikes(FaultPlan::Kind kind, int fd = -1) {
    if (!(kindsAtHand & kind))
        return false;
    struct stat info {};
    if (fd >= 0 && (fstat(fd, &info) != 0 || (!S_ISREG(info.st_mode) && !S_ISDIR(info.st_mode))))
        return false;
    if (--callsLeft > 0)
        return false;
    kindsAtHand = 0;
    return true;
}

void killIfPlanned() {
    if (actionAtHand == FaultPlan::KillNow)
        raise(SIGKILL);
}

int failWith(int cause) {
    killIfPlanned();
    errno = cause;
    return -1;
}

} // namespace

// Seen by the library under test, in place of the C library's.
#pragma GCC visibility push(default)
extern "C" {

ssize_t write(int fd, const void* data, size_t size) {
    static const auto real = next<ssize_t (*)(int, const void*, size_t)>("write");
    if (!strikes(FaultPlan::Write, fd))
        return real(fd, data, size);
    static_cast<void>(real(fd, data, size / 2));
    return failWith(ENOSPC);
}

ssize_t pwrite(int fd, const void* data, size_t size, off_t offset) {
    static const auto real = next<ssize_t (*)(int, const void*, size_t, off_t)>("pwrite");
    if (!strikes(FaultPlan::Write, fd))
        return real(fd, data, size, offset);
    static_cast<void>(real(fd, data, size / 2, offset));
    return failWith(ENOSPC);
}

ssize_t copy_file_range(int in, off64_t* inOffset, int out, off64_t* outOffset, size_t size, unsigned flags) {
    static const auto real = next<ssize_t (*)(int, off64_t*, int, off64_t*, size_t, unsigned)>("copy_file_range");
    if (!strikes(FaultPlan::Write, out))
        return real(in, inOffset, out, outOffset, size, flags);
    static_cast<void>(real(in, inOffset, out, outOffset, size / 2, flags));
    return failWith(ENOSPC);
}

int ftruncate(int fd, off_t size) noexcept {
    static const auto real = next<int (*)(int, off_t)>("ftruncate");
    return strikes(FaultPlan::Write, fd) ? failWith(EIO) : real(fd, size);
}

int fsync(int fd) {
    static const auto real = next<int (*)(int)>("fsync");
    return strikes(FaultPlan::Sync, fd) ? failWith(EIO) : real(fd);
}

int rename(const char* from, const char* to) noexcept {
    static const auto real = next<int (*)(const char*, const char*)>("rename");
    return strikes(FaultPlan::Rename) ? failWith(EIO) : real(from, to);
}

int close(int fd) {
    static const auto real = next<int (*)(int)>("close");
    if (!strikes(FaultPlan::Close, fd))
        return real(fd);
    killIfPlanned();
    real(fd);
    return failWith(EIO);
}

int open(const char* path, int flags, ...) {
    static const auto real = next<int (*)(const char*, int, ...)>("open");
    va_list args;
    va_start(args, flags);
    const mode_t mode = flags & (O_CREAT | O_TMPFILE) ? va_arg(args, mode_t) : 0;
    va_end(args);
    return strikes(FaultPlan::Open) ? failWith(EMFILE) : real(path, flags, mode);
}

} // extern "C"
#pragma GCC visibility pop

FaultPlan::Outcome FaultPlan::run(unsigned kinds, unsigned n, Action action, const std::function<void()>& work) {
    std::fflush(nullptr);
    const pid_t child = fork();
    if (child < 0)
        throw std::runtime_error("cannot fork");
    if (child == 0) {
        bool raised = false;
        actionAtHand = action;
        callsLeft = n;
        kindsAtHand = kinds;
        try {
            work();
        } catch (const std::exception&) {
            raised = true;
        }
        const bool unharmed = kindsAtHand != 0;
        kindsAtHand = 0;
        _exit(raised ? (unharmed ? kRaisedUnharmed : kRaised) : (unharmed ? kDoneUnharmed : kDone));
    }
    int status = 0;
    while (waitpid(child, &status, 0) < 0)
        if (errno != EINTR)
            throw std::runtime_error("cannot wait for the child");
    if (WIFSIGNALED(status)) {
        if (WTERMSIG(status) != SIGKILL)
            throw std::runtime_error("the child ended by signal " + std::to_string(WTERMSIG(status)));
        return {true, false};
    }
    switch (WEXITSTATUS(status)) {
    case kDone:
        return {true, true};
    case kRaised:
        return {true, false};
    case kDoneUnharmed:
        return {false, true};
    case kRaisedUnharmed:
        return {false, false};
    default:
        throw std::runtime_error("the child ended with " + std::to_string(WEXITSTATUS(status)));
    }
}
