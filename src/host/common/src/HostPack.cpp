// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HostFail.h"
#include "HostFile.h"
#include "HostZip.h"
#include "HostZipUpdate.h"
#include "ZipFault.h"

#include <algorithm>
#include <filesystem>
#include <vector>

namespace fs = std::filesystem;

namespace {

/// Relative names of the files below the directory in byte order, without the archive itself.
std::vector<std::string> listFiles(const std::string& directory, const std::string& archive) {
    const fs::path root = HostFile::getCanonicalName(directory);
    std::vector<std::string> names;
    std::error_code error;
    fs::recursive_directory_iterator at(root, error);
    for (; !error && at != fs::recursive_directory_iterator(); at.increment(error)) {
        const std::string path = at->path().string();
        const fs::file_status status = at->symlink_status(error);
        if (error)
            break;
        if (fs::is_directory(status) || path == archive)
            continue;
        if (!fs::is_regular_file(status))
            failArchive(path, "cannot be packed: is a link or a special file");
        names.push_back(path.substr(root.string().size() + (root == root.root_path() ? 0 : 1)));
    }
    if (error)
        failPath("cannot read the directory", directory, error.message());
    std::sort(names.begin(), names.end());
    return names;
}

} // namespace

void HostZip::packDirectory(const std::string& directory, const std::string& archive) {
    if (!HostFile::isDir(directory))
        failPath("cannot pack", directory, "not a directory");
    const std::vector<std::string> names = listFiles(directory, HostFile::getCanonicalName(archive));
    HostZipUpdate update = HostZipUpdate::create(archive);
    for (const std::string& name : names)
        update.putFile(name, directory + "/" + name);
    update.commit();
}
