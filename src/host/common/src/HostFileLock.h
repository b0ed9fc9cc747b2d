// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HostDescriptor.h"

#include <chrono>
#include <string>

#include <sys/stat.h>

/// Holds one file against all others who would replace it. The lock is on the file itself: it leaves nothing behind, and goes with the
/// process that holds it. Errors are HostError naming the file and the cause.
class HostFileLock {
public:
    /// Waits at most for the time limit of HostFileUtils. Refuses what is no regular file or may not be written, and a file that this
    /// thread holds already: it would wait for itself. Where no file stands, or the file system has no locks, nothing is held.
    explicit HostFileLock(const std::string& path);
    ~HostFileLock() { release(); }
    HostFileLock(const HostFileLock&) = delete;
    HostFileLock& operator=(const HostFileLock&) = delete;

    /// The same again, for a file that has appeared since.
    void acquire();
    void release();

    /// With links resolved.
    const std::string& getTarget() const { return target_; }
    /// The file that stands there; -1 for none.
    int getDescriptor() const { return file_.get(); }

    /// HostError "cannot <step> the file '<path>': <cause>".
    [[noreturn]] void fail(const char* step, const std::string& cause) const;
    /// The cause is in errno.
    [[noreturn]] void fail(const char* step) const;

    static void setTimeLimit(std::chrono::milliseconds limit);

private:
    HostDescriptor openFile() const;

    std::string path_;
    std::string target_;
    HostDescriptor file_;
    struct stat info_ {};
    bool isHeld_ = false;
};
