// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HostEnv.h"
#include "HostFile.h"

#include <string>

/// A name in the host's temporary directory that nothing bears before and after the life of this object.
class TemporaryFile : public HostFile {
public:
    explicit TemporaryFile(const std::string& name) : HostFile(HostEnv::getHostTmpDir() + "/" + name) {
        rm(); // what another platform may have left must not become this one's
    }
    ~TemporaryFile() { rm(); }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
};
