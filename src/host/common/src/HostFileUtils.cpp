// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HostFileUtils.h"

#include "HostErrors.h"
#include "HostReplacement.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

void stripTrailingSeparators(std::string& path) {
    while (path.size() > 1 && path.back() == '/')
        path.pop_back();
}

class Descriptor {
public:
    explicit Descriptor(int fd) : fd_(fd) {}
    ~Descriptor() {
        if (fd_ >= 0)
            close(fd_);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    int get() const { return fd_; }

private:
    int fd_;
};

} // namespace

void HostFileUtils::uniquifyFilenameInDir(std::string& path) {
    stripTrailingSeparators(path);
    const std::string base = path;
    struct stat info {};
    for (unsigned long number = 1; lstat(path.c_str(), &info) == 0; ++number)
        path = base + "_" + std::to_string(number);
}

void HostFileUtils::makeAbsolutePath(std::string& path) {
    if (path.empty())
        return;
    std::error_code error;
    const std::filesystem::path absolute = std::filesystem::absolute(path, error);
    if (!error)
        path = absolute.lexically_normal().string();
    stripTrailingSeparators(path);
}

std::string HostFileUtils::readFile(const std::string& path, unsigned long long limit) {
    const auto fail = [&path](const std::string& cause) { throw HostError("cannot read the file '" + path + "': " + cause); };
    if (path.empty() || path.find('\0') != std::string::npos)
        fail("not a file name");
    // Not blocking, so that a pipe that nobody writes to is no trap.
    const Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    struct stat info {};
    if (file.get() < 0 || fstat(file.get(), &info) != 0)
        fail(std::strerror(errno));
    if (!S_ISREG(info.st_mode))
        fail(S_ISDIR(info.st_mode) ? std::strerror(EISDIR) : "not a regular file");
    const std::string tooLarge = "larger than the limit of " + std::to_string(limit) + " bytes";
    if (static_cast<unsigned long long>(info.st_size) > limit)
        fail(tooLarge);

    // One byte more than announced, so that the end is seen in the first round.
    std::string text(static_cast<std::size_t>(info.st_size) + 1, '\0');
    std::size_t size = 0;
    for (;;) {
        if (size == text.size())
            text.resize(size * 2 + 4096);
        const ssize_t got = read(file.get(), text.data() + size, text.size() - size);
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0)
            fail(std::strerror(errno));
        if (got == 0)
            break;
        size += static_cast<std::size_t>(got);
        if (size > limit)
            fail(tooLarge);
    }
    text.resize(size);
    return text;
}

void HostFileUtils::writeFileAtomically(const std::string& path, const std::string& bytes) {
    HostReplacement replacement(path);
    replacement.write(bytes.data(), bytes.size());
    replacement.commit();
}
