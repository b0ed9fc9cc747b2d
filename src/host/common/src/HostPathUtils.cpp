// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HostPathUtils.h"

#include "HostFile.h"

#include <filesystem>

namespace fs = std::filesystem;

bool HostPathUtils::exists(const std::string& path) {
    return HostFile::exists(path);
}

std::string HostPathUtils::describe(const std::string& path) {
    if (path.find('\0') != std::string::npos)
        return "nothing";
    std::error_code error;
    switch (fs::status(path, error).type()) {
    case fs::file_type::regular:
        return "a regular file";
    case fs::file_type::directory:
        return "a directory";
    case fs::file_type::fifo:
        return "a named pipe";
    case fs::file_type::socket:
        return "a socket";
    case fs::file_type::block:
    case fs::file_type::character:
        return "a device";
    default:
        break;
    }
    std::error_code unreadable;
    if (!fs::is_symlink(fs::symlink_status(path, unreadable)))
        return error && error != std::errc::no_such_file_or_directory ? "out of reach (" + error.message() + ")" : "nothing";
    return error == std::errc::too_many_symbolic_link_levels ? "a link that loops" : "a link that leads nowhere";
}
