// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HostDescriptor.h"
#include "HostFileLock.h"

#include <cstddef>
#include <string>

#include <sys/types.h>

/// The new content of a file, written beside it: a crash at any moment leaves the old file or the new one. Unless committed the
/// new content is removed with this object; what killed processes have left is removed by the next commit. An old file is held against
/// other writers for the life of this object, or until commit() has succeeded, and leaves its owner, group, access list, other attributes
/// and permissions to the new one, as far as the system allows it: message "@76-2@%s" when owner or group are others. A file of several
/// names (hard links) is replaced under this one alone, which the message "@76-1@%s%d" tells. Operations raise HostError naming the file
/// and the cause.
class HostReplacement {
public:
    /// Makes the empty temporary file. A link is resolved: its target is replaced. Refuses a file that may not be written, though its
    /// folder may. Waits for other writers as HostFileLock does.
    explicit HostReplacement(const std::string& path);
    ~HostReplacement();
    HostReplacement(const HostReplacement&) = delete;
    HostReplacement& operator=(const HostReplacement&) = delete;

    /// Where the new content stands until it is committed.
    const std::string& getTemporaryPath() const { return temporary_; }

    void write(const char* data, std::size_t size);
    /// All of commit() but putting the new file in place, for who has to look at something in between.
    void seal();
    /// When the folder can't be synced after the file was replaced, the error says that the new content is in place.
    void commit();

private:
    void tellOfOthers(int old, bool hasOtherOwner) const;

    std::string path_;
    HostFileLock lock_;
    pid_t maker_;
    std::string temporary_;
    HostDescriptor file_;
    HostDescriptor kept_;
};
