// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HostDescriptor.h"
#include "HostFail.h"
#include "HostFile.h"
#include "HostZip.h"
#include "HostZipArchive.h"
#include "ZipName.h"

#include <cerrno>
#include <cstring>
#include <set>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr int kOverwrite = 1;

std::vector<std::string> split(const std::string& name) {
    std::vector<std::string> parts;
    for (std::size_t begin = 0; begin < name.size();) {
        const std::size_t end = std::min(name.find('/', begin), name.size());
        parts.push_back(name.substr(begin, end - begin));
        begin = end + 1;
    }
    return parts;
}

struct Item {
    std::size_t index;
    std::string name;
    std::vector<std::string> parts;
    bool isDirectory;
    bool isExecutable;
};

/// What lies below `entry`, everything about it found sound.
std::vector<Item> collect(const HostZipArchive& archive, const std::string& entry) {
    std::string below = entry;
    while (below.ends_with('/'))
        below.pop_back();
    below += below.empty() ? "" : "/";

    std::vector<Item> items;
    std::set<std::string> names;
    std::uint64_t compressed = 0, total = 0;
    for (std::size_t index = 0; index < archive.getMembers().size(); ++index) {
        const ZipMember& member = archive.getMembers()[index];
        const std::string& name = archive.getName(index);
        if (!name.starts_with(below) || !names.insert(name).second)
            continue;
        if (const std::string fault = getZipPathFault(name); !fault.empty())
            archive.fail(name, fault);

        constexpr unsigned unixSystem = 3;
        const unsigned mode = member.madeBy >> 8 == unixSystem ? member.externalAttributes >> 16 : 0;
        if ((mode & S_IFMT) != 0 && !S_ISREG(mode) && !S_ISDIR(mode))
            archive.fail(name, "is a link or a special file");

        const bool isDirectory = name.ends_with('/');
        if (!isDirectory) {
            if (const std::string refusal = ZipMemberReader::getRefusal(archive.getSource(), member, name, HostZip::kMaxUnpackedSize);
                !refusal.empty())
                archive.fail(name, refusal);
            // Members that share their bytes make a small archive of any size.
            compressed += member.compressedSize;
            if (compressed > static_cast<std::uint64_t>(archive.getIdentity().size))
                archive.fail(name, "the members announce more compressed bytes than the archive holds");
            total += member.size;
            if (total > HostZip::kMaxTotalSize)
                archive.fail(name, "the members announce more than " + std::to_string(HostZip::kMaxTotalSize) + " bytes together");
        }
        items.push_back({index, name, split(name), isDirectory, (mode & S_IXUSR) != 0});
    }
    return items;
}

class Unpacker {
public:
    Unpacker(const HostZipArchive& archive, const std::string& directory, bool overwrites)
        : archive_(archive), root_(open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)), overwrites_(overwrites) {
        if (root_.get() < 0)
            failPath("cannot open the directory", directory, std::strerror(errno));
    }

    void unpack(const Item& item) {
        const std::size_t directories = item.parts.size() - (item.isDirectory ? 0 : 1);
        HostDescriptor parent(dup(root_.get()));
        for (std::size_t i = 0; i < directories; ++i)
            parent = enter(parent, item, item.parts[i]);
        if (!item.isDirectory)
            unpackFile(parent, item);
    }

private:
    /// No link is followed, also none that stood below the target before.
    HostDescriptor enter(const HostDescriptor& parent, const Item& item, const std::string& name) {
        if (mkdirat(parent.get(), name.c_str(), 0777) != 0 && errno != EEXIST)
            fail(item);
        HostDescriptor child(openat(parent.get(), name.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
        if (child.get() < 0)
            fail(item);
        return child;
    }

    void unpackFile(const HostDescriptor& parent, const Item& item) {
        const char* name = item.parts.back().c_str();
        struct stat present {};
        if (fstatat(parent.get(), name, &present, AT_SYMLINK_NOFOLLOW) == 0) {
            if (!overwrites_)
                return;
            if (unlinkat(parent.get(), name, 0) != 0)
                fail(item);
        }
        const HostDescriptor file(
            openat(parent.get(), name, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, item.isExecutable ? 0777 : 0666));
        if (file.get() < 0)
            fail(item);
        try {
            copy(file, item);
        } catch (...) {
            unlinkat(parent.get(), name, 0);
            throw;
        }
    }

    void copy(const HostDescriptor& file, const Item& item) {
        archive_.openMember(item.index, HostZip::kMaxUnpackedSize).forEachPiece([&](const char* data, std::size_t size) {
            for (std::size_t done = 0; done < size;) {
                const ssize_t written = write(file.get(), data + done, size - done);
                if (written < 0 && errno != EINTR)
                    fail(item);
                done += written > 0 ? static_cast<std::size_t>(written) : 0;
            }
        });
    }

    [[noreturn]] void fail(const Item& item) const { archive_.fail(item.name, std::string("cannot be unpacked: ") + std::strerror(errno)); }

    const HostZipArchive& archive_;
    HostDescriptor root_;
    bool overwrites_;
};

} // namespace

bool HostZip::uncompressDir(const std::string& archive, const std::string& entry, const std::string& directory, int flags) {
    const auto open = HostZipArchive::open(archive);
    const std::vector<Item> items = collect(*open, entry);
    if (items.empty())
        return false;
    HostFile(directory).mkDirRecursive();
    Unpacker unpacker(*open, directory, (flags & kOverwrite) != 0);
    for (const Item& item : items)
        unpacker.unpack(item);
    return true;
}
