// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "Output.h"

#include "Session.h"

#include "HostErrors.h"
#include "HostFile.h"

bool Output::isFolder() const {
    return path.ends_with('/') || HostFile::isDir(path);
}

std::string Output::claimFile(const std::string& name) const {
    std::string file = path.empty() ? name : path;
    if (isFolder()) {
        try {
            HostFile(path).mkDirRecursive();
        } catch (const HostError& error) {
            throw Unusable(error);
        }
        file += (path.ends_with('/') ? "" : "/") + name;
    }
    ensureFree(file, isForced);
    return file;
}

CLI::Option* addOutput(CLI::App* verb, Output& output, const std::string& what) {
    addForce(verb, output.isForced);
    return verb->add_option("-o,--output", output.path, what)->type_name("PATH");
}

void addForce(CLI::App* verb, bool& isForced) {
    verb->add_flag("--force", isForced, "Replace what stands there");
}

void ensureFree(const std::string& path, bool isForced) {
    if (HostFile::isDir(path))
        throw Unusable(path + ": is a directory");
    if (!isForced && HostFile::exists(path))
        throw Unusable(path + ": is there already; --force replaces it", {path, "", 0, 0, "is there already"});
}
