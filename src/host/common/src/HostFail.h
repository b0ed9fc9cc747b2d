// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HostErrors.h"

#include <new>
#include <string>
#include <system_error>

/// Raises HostError "<step> '<path>': <cause>", for example "cannot read the file 'a': Is a directory".
[[noreturn]] inline void failPath(const std::string& step, const std::string& path, const std::string& cause) {
    throw HostError(step + " '" + path + "': " + cause, HostFault{path, "", 0, 0, cause});
}

/// A lack of memory says nothing about a path: raises std::bad_alloc for it.
inline void passLackOfMemory(const std::error_code& error) {
    if (error == std::errc::not_enough_memory)
        throw std::bad_alloc();
}
