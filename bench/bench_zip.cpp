// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

// An archive of 2,000 members and 300 MB: opening one member of it, and adding a small file to it against a plain copy of the file by
// copy_file_range. Both copies end synced. Give a folder to measure on its file system; one in memory shows the work alone.

#include "HostZip.h"
#include "HostZipSession.h"
#include "HostZipUpdate.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <zip.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

constexpr int kMembers = 2'000;
constexpr std::size_t kMemberSize = 150'000;
constexpr int kRounds = 9;
const std::string kSmall(2'000, 's');

void check(bool ok, const char* what) {
    if (!ok)
        throw std::runtime_error(std::string("failed: ") + what);
}

void makeArchive(const std::string& path) {
    const int fd = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    const char empty[22] = {'P', 'K', 5, 6};
    check(fd >= 0 && ::write(fd, empty, sizeof empty) == sizeof empty && ::close(fd) == 0, "archive");
    std::mt19937_64 random(1);
    std::string content(kMemberSize, '\0');
    HostZipUpdate update(path);
    for (int i = 0; i < kMembers; ++i) {
        for (std::size_t at = 0; at + 8 <= content.size(); at += 8) {
            const std::uint64_t value = random();
            std::copy_n(reinterpret_cast<const char*>(&value), 8, content.begin() + static_cast<std::ptrdiff_t>(at));
        }
        update.put("bin/member" + std::to_string(i) + ".dcp", content);
    }
    update.put("kar.json", kSmall);
    update.commit();
}

void plainCopy(const std::string& from, const std::string& to) {
    const int in = ::open(from.c_str(), O_RDONLY);
    const int out = ::open(to.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    struct stat info {};
    check(in >= 0 && out >= 0 && ::fstat(in, &info) == 0, "copy");
    for (off_t left = info.st_size; left > 0;) {
        const ssize_t copied = ::copy_file_range(in, nullptr, out, nullptr, static_cast<std::size_t>(left), 0);
        check(copied > 0, "copy_file_range");
        left -= copied;
    }
    check(::fsync(out) == 0 && ::close(out) == 0 && ::close(in) == 0, "fsync");
    std::filesystem::remove(to);
}

void add(const std::string& path, bool withDigest) {
    HostZipUpdate update(path);
    update.put("added.bif", kSmall);
    if (withDigest)
        update.attachDigest();
    update.commit();
}

void addByLibrary(const std::string& path) {
    zip_t* const zip = zip_open(path.c_str(), 0, nullptr);
    check(zip && zip_file_add(zip, "added.bif", zip_source_buffer(zip, kSmall.data(), kSmall.size(), 0), ZIP_FL_OVERWRITE) >= 0 &&
              zip_close(zip) == 0,
          "libzip");
}

double milliseconds(const std::function<void()>& action) {
    const auto begin = std::chrono::steady_clock::now();
    action();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin).count();
}

struct Case {
    const char* name;
    std::function<void()> action;
    std::vector<double> times = {};
    double median() {
        std::sort(times.begin(), times.end());
        return times[times.size() / 2];
    }
};

} // namespace

int main(int argc, char** argv) {
    const std::string directory =
        (argc > 1 ? std::string(argv[1]) : std::filesystem::temp_directory_path().string()) + "/bench_zip." + std::to_string(::getpid());
    std::filesystem::create_directories(directory);
    const std::string path = directory + "/large.kar";
    const std::string stampedPath = directory + "/stamped.kar";
    int result = 0;
    try {
        makeArchive(path);
        std::printf("%d members, %.0f MB\n", kMembers, static_cast<double>(std::filesystem::file_size(path)) / 1e6);
        Case open{"open one member", [&] { HostZip::readMember(path, "kar.json"); }};
        const HostZipSession session(path);
        Case openNext{"open the next one while the archive is open", [&] { HostZip::readMember(path, "bin/member1999.dcp"); }};
        Case copy{"plain copy, synced", [&] { plainCopy(path, directory + "/copy"); }};
        Case update{"add a small file", [&] { add(path, false); }};
        std::filesystem::copy_file(path, stampedPath);
        Case first{"stamp the digest for the first time", [&] { HostZip::attachDigestEn(path); }};
        HostZip::attachDigestEn(stampedPath);
        Case stamped{"add a small file and stamp the digest", [&] { add(stampedPath, true); }};
        Case verify{"verify the digest", [&] { check(HostZip::verifyDigest(stampedPath), "digest"); }};
        Case library{"add a small file by libzip alone, not synced", [&] { addByLibrary(path); }};
        for (int i = 0; i < kRounds; ++i)
            for (Case* c : {&copy, &update, &first, &stamped, &verify, &library})
                c->times.push_back(milliseconds(c->action));
        for (int i = 0; i < 10 * kRounds; ++i) {
            openNext.times.push_back(milliseconds(openNext.action));
            // A change of the file's time makes the session open it anew.
            std::filesystem::last_write_time(path, std::filesystem::file_time_type::clock::now());
            open.times.push_back(milliseconds(open.action));
        }
        for (Case* c : {&open, &openNext})
            std::printf("%-48s %9.3f ms\n", c->name, c->median());
        for (Case* c : {&copy, &update, &first, &stamped, &verify, &library})
            std::printf("%-48s %9.1f ms   %5.2f times the copy\n", c->name, c->median(), c->median() / copy.median());
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        result = 1;
    }
    std::filesystem::remove_all(directory);
    return result;
}
