// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HZEPExport.h"

#include <string>

/// Owns a directory under the host's temporary directory and removes it, with all that it holds, at the end of its life.
class HZEP_EXPORT HZEPTmpDirObject {
public:
    /// No directory.
    HZEPTmpDirObject() = default;
    explicit HZEPTmpDirObject(const std::string& name);
    HZEPTmpDirObject(const HZEPTmpDirObject&) = delete;
    HZEPTmpDirObject& operator=(const HZEPTmpDirObject&) = delete;
    ~HZEPTmpDirObject();

    /// Removes the directory at hand and makes a new one.
    void create(const std::string& name);

    /// Absolute path, "" for no directory.
    std::string get() const { return path_; }
    bool empty() const { return path_.empty(); }
    bool exists() const;

    /// A directory that can't be removed is reported and forgotten.
    void deleteTmpDir();

    /// Makes a directory of that name, with a number behind it when the name is taken. One that is held already stays on disk.
    /// Raises HostError when the directory can't be made or written to.
    void createTmpDir(const std::string& name);

private:
    std::string path_;
};
