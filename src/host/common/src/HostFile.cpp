// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HostFile.h"

#include "HostFail.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <vector>

#include <unistd.h>

namespace fs = std::filesystem;

namespace {

/// The system's calls would stop at a NUL and look at another file.
bool isName(const std::string& path) {
    return !path.empty() && path.find('\0') == std::string::npos;
}

fs::file_status status(const std::string& path) {
    std::error_code ignored;
    return isName(path) ? fs::status(path, ignored) : fs::file_status(fs::file_type::not_found);
}

std::string withoutTrailingSeparators(std::string path) {
    while (path.size() > 1 && path.back() == '/')
        path.pop_back();
    return path;
}

class FileIter : public HostFwdIter<HostFile> {
public:
    explicit FileIter(std::vector<std::string> paths) : paths_(std::move(paths)) {}
    bool hasNext() const override { return at_ < paths_.size(); }
    HostFile next() override { return HostFile(paths_[at_++]); }

private:
    std::vector<std::string> paths_;
    std::size_t at_ = 0;
};

} // namespace

HostFile::HostFile(std::string path) : path_(std::move(path)) {}

std::string HostFile::getExt() const {
    const std::string name = path_.substr(path_.rfind('/') + 1);
    const auto point = name.rfind('.');
    return point == std::string::npos ? "" : name.substr(point + 1);
}

std::string HostFile::getParent() const {
    return fs::path(path_).parent_path().string();
}

std::string HostFile::getCanonicalName() const {
    return getCanonicalName(path_);
}

bool HostFile::exists() const {
    return exists(path_);
}

bool HostFile::isDir() const {
    return isDir(path_);
}

bool HostFile::isRegularFile() const {
    return isRegularFile(path_);
}

void HostFile::mkDirRecursive() const {
    if (!isName(path_))
        failPath("cannot make the directory", path_, "not a name");
    std::error_code error;
    fs::create_directories(path_, error);
    if (!error && !isDir())
        error = std::make_error_code(std::errc::not_a_directory);
    if (error)
        failPath("cannot make the directory", path_, error.message());
}

bool HostFile::rm() const {
    std::error_code error;
    return isName(path_) && fs::remove(path_, error);
}

bool HostFile::rmRecursive() const {
    std::error_code error;
    if (!isName(path_) || withoutTrailingSeparators(path_) == "/")
        return false;
    fs::remove_all(withoutTrailingSeparators(path_), error);
    return !error;
}

HostFwdIter<HostFile>* HostFile::createFileIter() const {
    std::vector<std::string> paths;
    std::error_code error = isName(path_) ? std::error_code() : std::make_error_code(std::errc::no_such_file_or_directory);
    fs::directory_iterator at;
    if (!error)
        at = fs::directory_iterator(path_, error);
    for (; !error && at != fs::directory_iterator(); at.increment(error))
        if (fs::is_regular_file(at->symlink_status(error)) && !error)
            paths.push_back(at->path().string());
    if (error)
        failPath("cannot read the directory", path_, error.message());
    std::sort(paths.begin(), paths.end());
    return new FileIter(std::move(paths));
}

std::string HostFile::getCanonicalName(const std::string& path) {
    if (!isName(path))
        return path;
    std::error_code error;
    const fs::path absolute = fs::absolute(path, error);
    passLackOfMemory(error);
    if (error)
        return path;
    fs::path canonical = fs::weakly_canonical(absolute, error);
    passLackOfMemory(error);
    if (error)
        canonical = absolute.lexically_normal();
    return withoutTrailingSeparators(canonical.string());
}

bool HostFile::exists(const std::string& path) {
    return fs::exists(status(path));
}

bool HostFile::isDir(const std::string& path) {
    return fs::is_directory(status(path));
}

bool HostFile::isRegularFile(const std::string& path) {
    return fs::is_regular_file(status(path));
}

std::string HostFile::getDirSeparator() {
    return "/";
}

void HostFile::ensureWritableDirectory(const std::string& directory) {
    if (!exists(directory))
        throw HostError("the directory '" + directory + "' does not exist", HostFault{directory, "", 0, 0, "does not exist"});
    if (!isDir(directory))
        throw HostError("'" + directory + "' is not a directory", HostFault{directory, "", 0, 0, "is not a directory"});
    if (access(directory.c_str(), W_OK | X_OK) != 0) {
        const std::string cause = std::string("cannot be written to: ") + std::strerror(errno);
        throw HostError("the directory '" + directory + "' " + cause, HostFault{directory, "", 0, 0, cause});
    }
}
