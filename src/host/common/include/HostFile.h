// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HostExport.h"
#include "HostFwdIter.h"

#include <string>

/// One path and what stands there. No operation raises unless it says so.
class HOST_EXPORT HostFile {
public:
    explicit HostFile(std::string path);

    const std::string& getPath() const { return path_; }

    /// The text behind the last point of the file name, without the point; "" when there is none.
    std::string getExt() const;

    /// The directory part of the path; "" when there is none.
    std::string getParent() const;

    /// The absolute path with links, "." and ".." resolved as far as it exists. An empty path gives "".
    std::string getCanonicalName() const;

    bool exists() const;
    bool isDir() const;
    bool isRegularFile() const;

    /// Makes the directory and its parents. Raises HostError when that fails.
    void mkDirRecursive() const;

    /// Removes the file or the empty directory; false when it could not.
    bool rm() const;

    /// Removes the directory with all that it holds, never following a link out of it; false when something stayed.
    bool rmRecursive() const;

    /// The regular files in this directory in byte order of their names, without links and what lies deeper. The iterator is the caller's.
    /// Raises HostError when the directory can't be read.
    HostFwdIter<HostFile>* createFileIter() const;

    static std::string getCanonicalName(const std::string& path);
    static bool exists(const std::string& path);
    static bool isDir(const std::string& path);
    static bool isRegularFile(const std::string& path);

    /// "/"
    static std::string getDirSeparator();

    /// Raises HostError naming the directory unless it exists and can be written to.
    static void ensureWritableDirectory(const std::string& directory);

private:
    std::string path_;
};
