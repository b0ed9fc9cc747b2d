// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "FolderFiles.h"

#include "HostErrors.h"
#include "HostFile.h"

#include <filesystem>

namespace fs = std::filesystem;

std::string withoutTrailingSeparators(std::string name) {
    while (name.ends_with('/'))
        name.pop_back();
    return name;
}

MemberSources findFolderFiles(const std::string& operation, const std::string& archive, const std::string& name,
                              const std::string& folder) {
    const std::string self = HostFile::getCanonicalName(archive);
    const fs::path root = HostFile::getCanonicalName(folder);
    MemberSources sources;
    std::error_code error;
    fs::recursive_directory_iterator at(root, error);
    for (; !error && at != fs::recursive_directory_iterator(); at.increment(error)) {
        const fs::file_status status = at->symlink_status(error);
        if (fs::is_directory(status) || at->path() == self)
            continue;
        if (!error && !fs::is_regular_file(status))
            throw HostUserException(operation + "is a link or a special file: " + at->path().string());
        sources[name + "/" + at->path().lexically_relative(root).string()] = at->path().string();
    }
    if (error)
        throw HostUserException(operation + "Could not read directory: " + folder);
    if (sources.empty())
        throw HostUserException(operation + "directory holds no files: " + folder);
    return sources;
}
