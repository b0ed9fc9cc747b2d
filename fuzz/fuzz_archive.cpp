// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "FuzzInput.h"
#include "HostErrors.h"
#include "HostZip.h"
#include "HostZipUpdate.h"
#include "ZipBuilder.h"

#include <algorithm>
#include <map>
#include <random>
#include <sstream>

namespace fs = std::filesystem;

namespace {

constexpr std::size_t kMaxMembers = 64;

/// An archive out of lines, what else they hold is skipped:
///   + NAME=CONTENT   a deflated member      = NAME=CONTENT   a stored one      > NAME=TARGET   a link
///   # COMMENT        the archive's comment
///   ! PLACE VALUE    puts a byte            ~ SEED           puts three bytes at random      < SIZE   cuts off
/// An input that begins with "PK" is the archive itself.
std::string build(const std::string& input) {
    if (input.starts_with("PK"))
        return input;
    ZipBuilder builder;
    std::istringstream lines(input);
    std::string damages;
    std::size_t members = 0;
    for (std::string line; std::getline(lines, line);) {
        const std::string rest = line.size() > 2 ? line.substr(2) : "";
        const std::size_t equals = std::min(rest.find('='), rest.size());
        ZipBuilder::Member member;
        member.name = rest.substr(0, equals);
        member.content = equals < rest.size() ? rest.substr(equals + 1) : "";
        const char kind = line.empty() ? ' ' : line[0];
        if (kind == '#')
            builder.setComment(rest.substr(0, 1000));
        else if (kind == '!' || kind == '~' || kind == '<')
            damages += line + "\n";
        if ((kind != '+' && kind != '=' && kind != '>') || member.name.size() > 1000 || ++members > kMaxMembers)
            continue;
        member.method = kind == '+' ? ZipBuilder::Deflated : ZipBuilder::Stored;
        if (kind == '>')
            member.unixMode = 0120777;
        builder.add(member);
    }
    std::string bytes = builder.bytes();
    std::istringstream changes(damages);
    char kind = 0;
    for (std::string line; std::getline(changes, line) && !bytes.empty();) {
        std::istringstream words(line);
        std::size_t first = 0, value = 0;
        words >> kind >> first >> value;
        if (kind == '!') {
            bytes[first % bytes.size()] = static_cast<char>(value);
        } else if (kind == '<') {
            bytes.resize(first % bytes.size());
        } else {
            std::mt19937_64 random(first);
            for (int i = 0; i < 3; ++i)
                bytes[random() % bytes.size()] = static_cast<char>(random());
        }
    }
    return bytes;
}

/// Whether the work was done; it may be refused as the host refuses things.
template <class Work>
bool attempt(Work work) {
    try {
        work();
        return true;
    } catch (const HostError&) {
        return false;
    }
}

std::map<std::string, std::string> readAll(const std::string& archive) {
    std::map<std::string, std::string> members;
    for (const HostZipEntry& entry : HostZip::getEntries(archive))
        if (members.size() <= kMaxMembers)
            attempt([&] { members.emplace(entry.name, HostZip::readMember(archive, entry.name)); });
    return members;
}

/// One folder of this process, removed at exit.
class Folder {
public:
    Folder() : path_(fs::temp_directory_path() / ("hzep-fuzz-" + std::to_string(::getpid()))) { fs::create_directories(path_); }
    ~Folder() { fs::remove_all(path_); }
    const fs::path& path() const { return path_; }

private:
    fs::path path_;
};

} // namespace

/// An archive is listed, read, unpacked, changed and verified, or refused as a whole. Nothing lands outside of the folder; a change
/// that succeeds keeps every other member and verifies, one that fails leaves the bytes.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    silence();
    static const Folder folder;
    const std::string bytes = build(std::string(reinterpret_cast<const char*>(data), size));
    const std::string archive = folder.path() / "a.kar";
    const fs::path target = folder.path() / "outer" / "target";
    fs::create_directories(target);
    std::ofstream(archive, std::ios::binary | std::ios::trunc) << bytes;

    std::map<std::string, std::string> before;
    const bool isListed = attempt([&] { before = readAll(archive); });
    if (isListed != HostZip::getFault(archive).empty())
        std::abort();
    attempt([&] { HostZip::verifyDigest(archive); });
    attempt([&] { HostZip::uncompressDir(archive, "", target, 1); });
    if (std::distance(fs::directory_iterator(folder.path()), {}) != 2 ||
        std::distance(fs::directory_iterator(target.parent_path()), {}) != 1)
        std::abort();
    fs::remove_all(target.parent_path());

    const bool isChanged = attempt([&] {
        HostZipUpdate update(archive);
        update.put("new/member", "content");
        update.commit();
    });
    if (isChanged) {
        before["new/member"] = "content";
        if (readAll(archive) != before)
            std::abort();
        if (attempt([&] { HostZip::attachDigestEn(archive); }) && !HostZip::verifyDigest(archive))
            std::abort();
    } else {
        std::ifstream in(archive, std::ios::binary);
        if (std::string(std::istreambuf_iterator<char>(in), {}) != bytes)
            std::abort();
    }
    if (std::distance(fs::directory_iterator(folder.path()), {}) != 1)
        std::abort();
    return 0;
}
