// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include <cstddef>
#include <string>

/// The new content of a file, written beside it: a crash at any moment leaves the old file or the new one. Unless committed the
/// new content is removed with this object; what killed processes have left is removed by the next commit. Operations raise HostError
/// naming the file and the cause.
class HostReplacement {
public:
    /// Makes the empty temporary file. A link is resolved: its target is replaced.
    explicit HostReplacement(const std::string& path);
    ~HostReplacement();
    HostReplacement(const HostReplacement&) = delete;
    HostReplacement& operator=(const HostReplacement&) = delete;

    /// Where the new content stands until it is committed.
    const std::string& getTemporaryPath() const { return temporary_; }
    const std::string& getTargetPath() const { return target_; }

    void write(const char* data, std::size_t size);
    void commit();

private:
    [[noreturn]] void fail(const char* step) const;

    std::string path_;
    std::string target_;
    std::string temporary_;
    int fd_ = -1;
    unsigned mode_ = 0;
};
