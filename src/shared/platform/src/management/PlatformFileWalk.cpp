// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "PlatformFileWalk.h"

#include <filesystem>

namespace fs = std::filesystem;

void walkPlatformFiles(const std::string& directory, int levels, const std::function<bool(const std::string& path)>& use) {
    for (fs::recursive_directory_iterator at(directory, fs::directory_options::follow_directory_symlink), end; at != end; ++at) {
        const fs::directory_entry& entry = *at;
        std::error_code none;
        if (at.depth() >= levels || (entry.is_symlink(none) && !entry.exists(none)))
            at.disable_recursion_pending();
        if (entry.path().extension() == ".zpfm" && entry.is_regular_file(none) && !use(entry.path().string()))
            return;
    }
}
