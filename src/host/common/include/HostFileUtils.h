// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HostExport.h"

#include <chrono>
#include <cstddef>
#include <string>

/// Operations on path texts and whole files.
class HOST_EXPORT HostFileUtils {
public:
    /// Changes the last part of the path, by a number behind it, until nothing of that name exists.
    static void uniquifyFilenameInDir(std::string& path);

    /// Puts the current directory in front of a relative path and tidies "." and ".."; an empty path stays empty.
    static void makeAbsolutePath(std::string& path);

    /// The whole file. Raises HostError naming the file and the cause, in its fault too; a file above `limit` bytes is refused before it is
    /// read. Nothing but regular files is read, here and below: pipes, devices and directories are refused and never waited for.
    static std::string readFile(const std::string& path, unsigned long long limit = kDefaultReadLimit);

    /// The first `count` bytes of a file, or all when there are fewer. Raises HostError as readFile does.
    static std::string readStart(const std::string& path, std::size_t count);

    /// There is a regular file that can be opened for reading.
    static bool isReadable(const std::string& path);

    /// Largest plain metadata file that is read into memory: 1 GiB.
    static constexpr unsigned long long kDefaultReadLimit = 1ULL << 30;

    /// How long whoever replaces a file or changes an archive waits for others who do.
    static constexpr std::chrono::seconds kLockTimeLimit{60};
    /// Another time for this process; 0 doesn't wait.
    static void setLockTimeLimit(std::chrono::milliseconds limit);

    /// Replaces the file so that a crash leaves the old or the new one: temporary file beside it, sync, rename, directory sync. What is
    /// not content stays as far as the system allows it: permissions, owner, group, access list and other attributes; a link is followed.
    /// Raises HostError naming the file and the cause, also for a file that may not be written though its folder may. The one error after
    /// which the new content is in place is that of the directory sync, which says so.
    static void writeFileAtomically(const std::string& path, const std::string& bytes);
};
