// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include <algorithm>
#include <filesystem>
#include <string>

/// Whether a name out of an archive's metadata, which anybody may have written, stays below the directory that it is put behind.
inline bool staysBelowDirectory(const std::string& name) {
    const std::filesystem::path path(name);
    return name.find('\0') == std::string::npos && std::find(path.begin(), path.end(), "..") == path.end();
}
