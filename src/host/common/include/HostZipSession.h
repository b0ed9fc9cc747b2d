// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HostExport.h"

#include <memory>
#include <string>

/// Keeps one archive open, and its directory read, for the life of this object: reads through HostZip and the zip streams on the
/// same path and thread use it. Sessions nest. A file that is no archive is no error here; each read then says so itself.
class HOST_EXPORT HostZipSession {
public:
    explicit HostZipSession(const std::string& archive);
    ~HostZipSession();
    HostZipSession(const HostZipSession&) = delete;
    HostZipSession& operator=(const HostZipSession&) = delete;

private:
    struct Open;
    std::shared_ptr<Open> open_;
};
