// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HostEnv.h"

#include "HostErrors.h"
#include "HostFile.h"
#include "HostFileUtils.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <mutex>

#include <dlfcn.h>
#include <unistd.h>

namespace {

struct State {
    std::mutex mutex;
    std::vector<std::string> roots;
    std::string major = "2021";
    std::string minor = "1";
    std::string productName;
    std::string tmpDir;
    std::string privateTmpDir;
    pid_t privateTmpOwner = 0;
};

/// Never destroyed: objects that go at exit may still ask.
State& state() {
    static State* const only = new State;
    return *only;
}

std::string installPrefix() {
    static const char anchor = 0;
    Dl_info info{};
    if (!dladdr(&anchor, &info) || !info.dli_fname)
        return HostFile::getCanonicalName(".");
    const std::filesystem::path directory = std::filesystem::path(HostFile::getCanonicalName(info.dli_fname)).parent_path();
    // The library may stand in a folder of the machine's architecture below lib.
    for (const auto& candidate : {directory, directory.parent_path()})
        if (const std::string name = candidate.filename().string(); name == "lib" || name == "lib64")
            return candidate.parent_path().string();
    return directory.parent_path().string();
}

std::vector<std::string> splitPathList(const std::string& list) {
    std::vector<std::string> parts;
    for (std::size_t begin = 0; begin <= list.size();) {
        const std::size_t end = std::min(list.find(':', begin), list.size());
        if (end > begin)
            parts.push_back(list.substr(begin, end - begin));
        begin = end + 1;
    }
    return parts;
}

void removePrivateTmpDir() {
    State& s = state();
    if (s.privateTmpOwner == getpid())
        HostFile(s.privateTmpDir).rmRecursive();
}

std::string makePrivateTmpDir() {
    int cause = 0;
    for (std::string base : {HostEnv::getEnv("TMPDIR"), std::string("/tmp")}) {
        if (base.empty())
            continue;
        HostFileUtils::makeAbsolutePath(base);
        std::string name = base + "/hzep-XXXXXX";
        if (mkdtemp(name.data()))
            return name;
        cause = errno;
    }
    throw HostError(std::string("cannot make a temporary directory: ") + std::strerror(cause));
}

} // namespace

std::string HostEnv::getEnv(const std::string& name, bool* isSet) {
    const char* value = std::getenv(name.c_str());
    if (isSet)
        *isSet = value;
    return value ? value : "";
}

std::string HostEnv::getHostAppRoot() {
    return getHostAppRootList().front();
}

std::vector<std::string> HostEnv::getHostAppRootList() {
    {
        const std::lock_guard lock(state().mutex);
        if (!state().roots.empty())
            return state().roots;
    }
    std::vector<std::string> roots = splitPathList(getEnv("HOST_APP_ROOT"));
    if (roots.empty())
        roots.push_back(installPrefix());
    return roots;
}

void HostEnv::setHostAppRootList(const std::vector<std::string>& roots) {
    const std::lock_guard lock(state().mutex);
    state().roots = roots;
}

std::string HostEnv::getMajor() {
    const std::lock_guard lock(state().mutex);
    return state().major;
}

std::string HostEnv::getMinor() {
    const std::lock_guard lock(state().mutex);
    return state().minor;
}

void HostEnv::setVersion(const std::string& major, const std::string& minor) {
    const std::lock_guard lock(state().mutex);
    state().major = major;
    state().minor = minor;
}

std::string HostEnv::getProductName() {
    const std::lock_guard lock(state().mutex);
    return state().productName;
}

void HostEnv::setProductName(const std::string& name) {
    const std::lock_guard lock(state().mutex);
    state().productName = name;
}

std::string HostEnv::getHostTmpDir() {
    State& s = state();
    const std::lock_guard lock(s.mutex);
    if (!s.tmpDir.empty())
        return s.tmpDir;
    // A forked child gets a directory of its own; the parent may go first and take its own with it.
    if (s.privateTmpOwner != getpid() || !HostFile::isDir(s.privateTmpDir)) {
        s.privateTmpDir = makePrivateTmpDir();
        s.privateTmpOwner = getpid();
        static const bool registered = std::atexit(removePrivateTmpDir) == 0;
        (void)registered;
    }
    return s.privateTmpDir;
}

void HostEnv::setHostTmpDir(const std::string& directory) {
    std::string absolute = directory;
    HostFileUtils::makeAbsolutePath(absolute);
    const std::lock_guard lock(state().mutex);
    state().tmpDir = absolute;
}
