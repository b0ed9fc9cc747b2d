// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "DirectoryWalk.h"

#include <boost/filesystem/directory.hpp>
#include <boost/filesystem/operations.hpp>

namespace fs = boost::filesystem;

boost::system::error_code walkDirectory(const std::string& directory, int levels, const std::function<bool(const fs::path&)>& visit) {
    boost::system::error_code error;
    fs::recursive_directory_iterator entry(directory, fs::directory_options::follow_directory_symlink, error);
    while (!error && entry != fs::recursive_directory_iterator()) {
        // The iterator would take a link that leads nowhere for an error.
        boost::system::error_code unresolved;
        if (entry.depth() >= levels || !fs::exists(entry->status(unresolved)))
            entry.disable_recursion_pending();
        if (!visit(entry->path()))
            break;
        entry.increment(error);
    }
    return error;
}
