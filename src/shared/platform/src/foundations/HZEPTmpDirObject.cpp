// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "HZEPTmpDirObject.h"

#include "HostEnv.h"
#include "HostFile.h"
#include "HostFileUtils.h"
#include "HostMsgMgr.h"

#include <utility>

HZEPTmpDirObject::HZEPTmpDirObject(const std::string& name) {
    createTmpDir(name);
}

HZEPTmpDirObject::~HZEPTmpDirObject() {
    deleteTmpDir();
}

void HZEPTmpDirObject::create(const std::string& name) {
    deleteTmpDir();
    createTmpDir(name);
}

bool HZEPTmpDirObject::exists() const {
    return !empty() && HostFile::isDir(path_);
}

void HZEPTmpDirObject::deleteTmpDir() {
    if (empty())
        return;
    const std::string path = std::exchange(path_, std::string());
    if (!HostFile::isDir(path))
        return;
    HostFile(path).rmRecursive();
    if (HostFile::isDir(path))
        HostMsgMgr::getGlobal().send("platform", HostMsgMgr::Warning, "@1-1874@%s", {path});
}

void HZEPTmpDirObject::createTmpDir(const std::string& name) {
    std::string path = HostEnv::getHostTmpDir() + "/" + name;
    HostFileUtils::uniquifyFilenameInDir(path);
    HostFileUtils::makeAbsolutePath(path);
    HostFile(path).mkDirRecursive();
    HostFile::ensureWritableDirectory(path);
    path_ = std::move(path);
}
