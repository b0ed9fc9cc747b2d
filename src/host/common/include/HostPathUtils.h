// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HostExport.h"

#include <string>

/// Questions about paths.
class HOST_EXPORT HostPathUtils {
public:
    /// Something stands at the path; false for an empty path.
    static bool exists(const std::string& path);

    /// What stands at the path, in words: "a regular file", "a directory", "a named pipe", "a link that leads nowhere", "nothing".
    static std::string describe(const std::string& path);
};
