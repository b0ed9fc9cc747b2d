// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "CanonicalFile.h"

#include "../hardware/AsciiCase.h"
#include "HostFile.h"

#include <filesystem>

namespace fs = std::filesystem;

CanonicalFile::CanonicalFile(const std::string& path)
    : text_(HostFile::getCanonicalName(path)), name_(fs::path(text_).filename().string()) {}

bool CanonicalFile::equals(const std::string& file) const {
    return mayEqual_(file) && text_ == HostFile::getCanonicalName(file);
}

bool CanonicalFile::equalsIgnoringCase(const std::string& file) const {
    return mayEqual_(file) && ascii::equalsIgnoringCase(text_, HostFile::getCanonicalName(file));
}

/// A file that is no link keeps its name, which spares most files the look at every directory above them.
bool CanonicalFile::mayEqual_(const std::string& file) const {
    const fs::path path(file);
    const std::string name = path.filename().string();
    std::error_code none;
    return ascii::equalsIgnoringCase(name, name_) || name.empty() || name == "." || name == ".." ||
           fs::is_symlink(fs::symlink_status(path, none));
}
