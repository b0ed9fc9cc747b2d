// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HostFileUtils.h"

#include "HostDescriptor.h"
#include "HostFail.h"
#include "HostFileLock.h"
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

[[noreturn]] void fail(const std::string& path, const std::string& cause) {
    failPath("cannot read the file", path, cause);
}

/// A regular file that is open for reading.
class Input {
public:
    explicit Input(const std::string& path) : path_(path) {
        if (path.empty() || path.find('\0') != std::string::npos)
            fail(path, "not a file name");
        // Not blocking, so that a pipe that nobody writes to is no trap; what was opened is judged, not what stands there.
        file_ = HostDescriptor(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
        struct stat info {};
        const int cause = !file_ || fstat(file_.get(), &info) != 0 ? errno : S_ISDIR(info.st_mode) ? EISDIR : 0;
        if (cause == 0 && S_ISREG(info.st_mode)) {
            size_ = static_cast<unsigned long long>(info.st_size);
            return;
        }
        fail(path, cause != 0 ? std::strerror(cause) : "not a regular file");
    }

    /// When it was opened.
    unsigned long long getSize() const { return size_; }

    /// The first bytes, at most so many.
    std::string read(std::size_t most) {
        // One byte more than announced, so that the end is seen in the first round.
        std::string text(static_cast<std::size_t>(std::min<unsigned long long>(size_ + 1, most)), '\0');
        std::size_t size = 0;
        while (const std::size_t got = readSome(text.data() + size, text.size() - size)) {
            size += got;
            if (size == text.size())
                text.resize(std::min(size * 2 + 4096, most));
        }
        text.resize(size);
        return text;
    }

private:
    std::size_t readSome(char* buffer, std::size_t count) {
        for (;;) {
            const ssize_t got = ::read(file_.get(), buffer, count);
            if (got >= 0)
                return static_cast<std::size_t>(got);
            if (errno != EINTR)
                fail(path_, std::strerror(errno));
        }
    }

    const std::string& path_;
    HostDescriptor file_;
    unsigned long long size_ = 0;
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
    passLackOfMemory(error);
    if (!error)
        path = absolute.lexically_normal().string();
    stripTrailingSeparators(path);
}

std::string HostFileUtils::readFile(const std::string& path, unsigned long long limit) {
    Input file(path);
    const auto check = [&](unsigned long long size) {
        if (size > limit)
            fail(path, "larger than the limit of " + std::to_string(limit) + " bytes");
    };
    check(file.getSize());
    std::string text = file.read(static_cast<std::size_t>(std::max(limit, limit + 1)));
    check(text.size());
    return text;
}

std::string HostFileUtils::readStart(const std::string& path, std::size_t count) {
    return Input(path).read(count);
}

bool HostFileUtils::isReadable(const std::string& path) {
    try {
        const Input file(path);
        return true;
    } catch (const HostError&) {
        return false;
    }
}

void HostFileUtils::setLockTimeLimit(std::chrono::milliseconds limit) {
    HostFileLock::setTimeLimit(limit);
}

void HostFileUtils::writeFileAtomically(const std::string& path, const std::string& bytes) {
    HostReplacement replacement(path);
    replacement.write(bytes.data(), bytes.size());
    replacement.commit();
}
