// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HostExport.h"

#include <memory>
#include <string>

class HostZipArchive;

/// Keeps one archive open, from the first read on, for the life of this object: reads through HostZip and the zip streams of the
/// same thread on the same file use it, whatever path leads there. A file replaced or changed meanwhile is opened anew. Sessions
/// nest. A file that is no archive is no error here; each read then says so itself.
class HOST_EXPORT HostZipSession {
public:
    explicit HostZipSession(const std::string& archive);
    ~HostZipSession();
    HostZipSession(const HostZipSession&) = delete;
    HostZipSession& operator=(const HostZipSession&) = delete;

private:
    friend class HostZipArchive;
    struct Open;
    static std::shared_ptr<HostZipArchive> openShared_(const std::string& path);
    std::shared_ptr<Open> open_;
};
