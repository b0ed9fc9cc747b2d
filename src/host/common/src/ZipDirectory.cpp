// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "ZipDirectory.h"

#include "HostZipUpdate.h"
#include "ZipFault.h"
#include "ZipName.h"
#include "ZipRecord.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <numeric>
#include <string_view>
#include <utility>

#include <sys/stat.h>
#include <unistd.h>

namespace {

using zip_record::Reader;

constexpr std::uint32_t kLocalSignature = 0x04034b50;
constexpr std::uint32_t kMemberSignature = 0x02014b50;
constexpr std::uint32_t kEndSignature = 0x06054b50;
constexpr std::uint32_t kWideEndSignature = 0x06064b50;
constexpr std::uint32_t kWideLocatorSignature = 0x07064b50;
constexpr std::size_t kLocalSize = 30;
constexpr std::size_t kMemberSize = 46;
constexpr std::size_t kEndSize = 22;
constexpr std::size_t kWideEndSize = 56;
constexpr std::size_t kWideLocatorSize = 20;
constexpr std::size_t kMaxComment = 0xffff;
constexpr std::uint16_t kWideField = 0x0001;
constexpr std::uint32_t kWide32 = 0xffffffff;
constexpr std::uint16_t kWide16 = 0xffff;
constexpr std::uint16_t kEncrypted = 1 << 0;
constexpr std::uint16_t kSizesFollow = 1 << 3;
constexpr std::uint16_t kHiddenDirectory = 1 << 13;
constexpr std::uint16_t kNeedsWide = 45;

struct End {
    std::uint64_t members;
    std::uint64_t size;
    std::uint64_t offset;
};

std::string readAt(int fd, const std::string& archive, std::uint64_t offset, std::size_t size) {
    std::string bytes(size, '\0');
    for (std::size_t done = 0; done < size;) {
        const ssize_t got = pread(fd, bytes.data() + done, size - done, static_cast<off_t>(offset + done));
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0)
            failArchive(archive, std::strerror(errno));
        if (got == 0)
            failArchive(archive, "the file is cut off");
        done += static_cast<std::size_t>(got);
    }
    return bytes;
}

void readWideSizes(Reader extra, std::uint64_t& size, std::uint64_t& compressedSize) {
    while (extra.left() >= 4) {
        const std::uint16_t id = extra.u16();
        Reader field(extra.text(std::min<std::size_t>(extra.u16(), extra.left())));
        if (id != kWideField)
            continue;
        for (std::uint64_t* value : {&size, &compressedSize})
            if (*value == kWide32 && field.left() >= 8)
                *value = field.u64();
        return;
    }
}

class DirectoryReader {
public:
    DirectoryReader(int fd, const std::string& archive, bool isStrict) : fd_(fd), archive_(archive), isStrict_(isStrict) {}

    ZipDirectory read() {
        struct stat info {};
        if (fstat(fd_, &info) != 0)
            fail(std::strerror(errno));
        fileSize_ = static_cast<std::uint64_t>(info.st_size);
        ZipDirectory directory;
        const End end = readEnd(directory.comment);
        readMembers(end, directory.members);
        if (isStrict_) {
            checkNames(directory.members);
            directory.start = checkExtents(end, directory.members);
        }
        directory.shift = shift_;
        return directory;
    }

private:
    [[noreturn]] void fail(const std::string& cause) const { failArchive(archive_, cause); }
    [[noreturn]] void fail(const ZipMember& member, const std::string& cause) const { failMember(archive_, member.name, cause); }

    End readEnd(std::string& comment) {
        const std::size_t tailSize = static_cast<std::size_t>(std::min<std::uint64_t>(fileSize_, kEndSize + kMaxComment));
        const std::string tail = readAt(fd_, archive_, fileSize_ - tailSize, tailSize);
        std::size_t found = std::string::npos;
        std::size_t last = std::string::npos;
        for (std::size_t at = 0; at + kEndSize <= tailSize; ++at) {
            if (tail[at] != 'P')
                continue;
            Reader record(std::string_view(tail).substr(at, kEndSize));
            if (record.u32() != kEndSignature)
                continue;
            record.skip(kEndSize - 6);
            const std::size_t commentSize = record.u16();
            if (commentSize < tailSize - at - kEndSize)
                last = at;
            if (commentSize != tailSize - at - kEndSize)
                continue;
            // Readers differ in which one they take, so what they show differs.
            if (found != std::string::npos)
                fail("it has two directories");
            found = at;
        }
        // Something behind the archive hides nothing from who only reads.
        if (found == std::string::npos && !isStrict_)
            found = last;
        if (found == std::string::npos)
            fail("not a zip archive");
        comment = tail.substr(found + kEndSize);

        Reader record(std::string_view(tail).substr(found + 4, kEndSize - 4));
        const std::uint16_t disk = record.u16();
        const std::uint16_t startDisk = record.u16();
        const std::uint16_t here = record.u16();
        End end{record.u16(), record.u32(), record.u32()};
        std::uint64_t endOffset = fileSize_ - tailSize + found;
        const bool wide = disk == kWide16 || startDisk == kWide16 || here == kWide16 || end.members == kWide16 || end.size == kWide32 ||
                          end.offset == kWide32;
        if (!wide || !readWideEnd(end, endOffset))
            if (disk != 0 || startDisk != 0 || here != end.members)
                fail("it is one of several parts");
        if (end.members > HostZipUpdate::kMaxMembers)
            fail("more than " + std::to_string(HostZipUpdate::kMaxMembers) + " members");
        if (end.size > HostZipUpdate::kMaxDirectorySize)
            fail("its directory is larger than " + std::to_string(HostZipUpdate::kMaxDirectorySize) + " bytes");
        if (end.offset > endOffset || end.size > endOffset - end.offset)
            fail("its directory is not where it is announced");
        if (const std::uint64_t before = endOffset - end.size; before != end.offset)
            findShift(end, before);
        return end;
    }

    /// The directory ends where its end record starts, or where it is announced. In the first case the archive stands behind something
    /// that its offsets don't count.
    void findShift(End& end, std::uint64_t before) {
        const bool isShifted = end.members == 0 ? end.size == 0 : isMemberAt(before);
        const bool isPlain = end.members > 0 && isMemberAt(end.offset);
        if (isStrict_ && isShifted && isPlain)
            fail("it has two directories");
        if (isShifted) {
            shift_ = before - end.offset;
            end.offset = before;
        } else if (isStrict_ || !isPlain) {
            fail("its directory is not where it is announced");
        }
    }

    bool isMemberAt(std::uint64_t offset) const {
        return offset + kMemberSize <= fileSize_ && Reader(readAt(fd_, archive_, offset, 4)).u32() == kMemberSignature;
    }

    /// False when there is no 64-bit record: the values that asked for one are then meant as they are.
    bool readWideEnd(End& end, std::uint64_t& endOffset) const {
        if (endOffset < kWideLocatorSize + kWideEndSize)
            return false;
        const std::string locatorBytes = readAt(fd_, archive_, endOffset - kWideLocatorSize, kWideLocatorSize);
        Reader locator(locatorBytes);
        if (locator.u32() != kWideLocatorSignature)
            return false;
        const std::uint32_t disk = locator.u32();
        std::uint64_t offset = locator.u64();
        if (disk != 0 || locator.u32() > 1)
            fail("it is one of several parts");
        if (offset > endOffset - kWideLocatorSize - kWideEndSize)
            fail("its directory is not where it is announced");
        std::string bytes = readAt(fd_, archive_, offset, kWideEndSize);
        if (Reader(bytes).u32() != kWideEndSignature) {
            offset = endOffset - kWideLocatorSize - kWideEndSize;
            bytes = readAt(fd_, archive_, offset, kWideEndSize);
        }
        Reader record(bytes);
        if (record.u32() != kWideEndSignature || record.u64() != endOffset - kWideLocatorSize - offset - 12)
            fail("its directory is not where it is announced");
        record.skip(4);
        const bool single = record.u32() == 0 && record.u32() == 0;
        const std::uint64_t here = record.u64();
        end.members = record.u64();
        end.size = record.u64();
        end.offset = record.u64();
        if (!single || here != end.members)
            fail("it is one of several parts");
        endOffset = offset;
        return true;
    }

    void readMembers(const End& end, std::vector<ZipMember>& members) const {
        const std::string bytes = readAt(fd_, archive_, end.offset, static_cast<std::size_t>(end.size));
        Reader at(bytes);
        members.reserve(static_cast<std::size_t>(end.members));
        while (members.size() < end.members) {
            if (at.left() < kMemberSize || at.u32() != kMemberSignature)
                fail("its directory is damaged");
            members.push_back(readMember(at));
        }
        if (at.left() != 0)
            fail("its directory is damaged");
    }

    ZipMember readMember(Reader& at) const {
        ZipMember member;
        member.madeBy = at.u16();
        member.needed = at.u16();
        member.flags = at.u16();
        member.method = at.u16();
        member.time = at.u16();
        member.date = at.u16();
        member.crc32 = at.u32();
        member.compressedSize = at.u32();
        member.size = at.u32();
        const std::size_t nameSize = at.u16();
        const std::size_t extraSize = at.u16();
        const std::size_t commentSize = at.u16();
        std::uint32_t disk = at.u16();
        member.internalAttributes = at.u16();
        member.externalAttributes = at.u32();
        member.offset = at.u32();
        if (at.left() < nameSize + extraSize + commentSize)
            fail("its directory is damaged");
        member.name = at.text(nameSize);
        Reader extra(at.text(extraSize));
        member.comment = at.text(commentSize);

        bool seen = false;
        while (extra.left() >= 4) {
            const std::uint16_t id = extra.u16();
            const std::uint16_t size = extra.u16();
            if (extra.left() < size)
                fail(member, "its additional field is damaged");
            if (id != kWideField) {
                zip_record::put(member.extra, id, 2);
                zip_record::put(member.extra, size, 2);
                member.extra += extra.text(size);
                continue;
            }
            if (std::exchange(seen, true))
                fail(member, "two 64-bit fields");
            Reader field(extra.text(size));
            for (std::uint64_t* value : {&member.size, &member.compressedSize, &member.offset})
                if (*value == kWide32)
                    *value = wideValue(member, field);
            if (disk == kWide16 && field.left() >= 4)
                disk = field.u32();
        }
        member.extra += extra.text(extra.left());
        if (disk != 0)
            fail("it is one of several parts");
        if (member.offset <= fileSize_)
            member.offset += shift_;
        return member;
    }

    std::uint64_t wideValue(const ZipMember& member, Reader& field) const {
        if (field.left() < 8)
            fail(member, "its 64-bit field is too short");
        return field.u64();
    }

    void checkNames(const std::vector<ZipMember>& members) const {
        std::vector<const ZipMember*> sorted;
        sorted.reserve(members.size());
        for (const ZipMember& member : members) {
            for (const std::string& name : {member.name, getZipName(member)})
                if (const std::string fault = getZipNameFault(name); !fault.empty())
                    fail(member, fault);
            constexpr int unixSystem = 3;
            const std::uint32_t type = member.madeBy >> 8 == unixSystem ? member.externalAttributes >> 16 & S_IFMT : 0;
            if (type == S_IFLNK)
                fail(member, "it is a link");
            if (type != 0 && type != S_IFREG && type != S_IFDIR)
                fail(member, "it is a special file");
            if (member.flags & kHiddenDirectory)
                fail(member, "its name is encrypted");
            sorted.push_back(&member);
        }
        std::sort(sorted.begin(), sorted.end(), [](const ZipMember* a, const ZipMember* b) { return a->name < b->name; });
        const auto twin =
            std::adjacent_find(sorted.begin(), sorted.end(), [](const ZipMember* a, const ZipMember* b) { return a->name == b->name; });
        if (twin != sorted.end())
            fail(**twin, "there are two of this name");
    }

    /// Members in the order of the file: each ends before the next one starts, and between them there is nothing to lose. Gives the place
    /// of the first one.
    std::uint64_t checkExtents(const End& end, std::vector<ZipMember>& members) const {
        std::vector<std::size_t> order(members.size());
        std::iota(order.begin(), order.end(), std::size_t{0});
        std::sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) { return members[a].offset < members[b].offset; });
        const std::uint64_t start = members.empty() ? end.offset : members[order.front()].offset;
        // Other readers may take for a member what the directory doesn't tell of.
        if (start > 0 && Reader(readAt(fd_, archive_, 0, 4)).u32() == kLocalSignature)
            fail("something stands in front of its first member");
        for (std::size_t i = 0; i < order.size(); ++i) {
            ZipMember& member = members[order[i]];
            member.end = i + 1 < order.size() ? members[order[i + 1]].offset : end.offset;
            if (member.offset >= end.offset)
                fail(member, "it lies outside of the archive");
            const std::uint64_t room = member.end - member.offset;
            if (room < kLocalSize + member.name.size() || room - kLocalSize - member.name.size() < member.compressedSize)
                fail(member, "it overlaps what follows");
            const std::uint64_t header = checkZipLocalHeader(fd_, archive_, member, room);
            if (room < header || room - header < member.compressedSize)
                fail(member, "it overlaps what follows");
        }
        return start;
    }

    int fd_;
    const std::string& archive_;
    bool isStrict_;
    std::uint64_t fileSize_ = 0;
    std::uint64_t shift_ = 0;
};

std::uint32_t narrow(std::uint64_t value) {
    return static_cast<std::uint32_t>(std::min<std::uint64_t>(value, kWide32));
}

void putMember(std::string& out, const ZipMember& member, std::uint64_t offset) {
    std::string wide;
    for (const std::uint64_t value : {member.size, member.compressedSize, offset})
        if (value >= kWide32)
            zip_record::put(wide, value, 8);
    const std::size_t extraSize = member.extra.size() + (wide.empty() ? 0 : 4 + wide.size());
    if (extraSize > 0xffff)
        throw HostError(HostText::makePrintable(member.name) + ": its additional field leaves no room for the 64-bit one");
    zip_record::put(out, kMemberSignature, 4);
    zip_record::put(out, member.madeBy, 2);
    zip_record::put(out, wide.empty() ? member.needed : std::max(member.needed, kNeedsWide), 2);
    zip_record::put(out, member.flags, 2);
    zip_record::put(out, member.method, 2);
    zip_record::put(out, member.time, 2);
    zip_record::put(out, member.date, 2);
    zip_record::put(out, member.crc32, 4);
    zip_record::put(out, narrow(member.compressedSize), 4);
    zip_record::put(out, narrow(member.size), 4);
    zip_record::put(out, member.name.size(), 2);
    zip_record::put(out, extraSize, 2);
    zip_record::put(out, member.comment.size(), 2);
    zip_record::put(out, 0, 2);
    zip_record::put(out, member.internalAttributes, 2);
    zip_record::put(out, member.externalAttributes, 4);
    zip_record::put(out, narrow(offset), 4);
    out += member.name;
    if (!wide.empty()) {
        zip_record::put(out, kWideField, 2);
        zip_record::put(out, wide.size(), 2);
        out += wide;
    }
    out += member.extra;
    out += member.comment;
}

} // namespace

ZipDirectory ZipDirectory::read(int fd, const std::string& archive) {
    return DirectoryReader(fd, archive, true).read();
}

ZipDirectory ZipDirectory::list(int fd, const std::string& archive) {
    return DirectoryReader(fd, archive, false).read();
}

std::string ZipDirectory::render(std::uint64_t offset) const {
    std::string out;
    offset -= shift;
    for (const ZipMember& member : members)
        putMember(out, member, member.offset - shift);
    const std::uint64_t size = out.size();
    if (members.size() >= kWide16 || offset >= kWide32 || size >= kWide32) {
        zip_record::put(out, kWideEndSignature, 4);
        zip_record::put(out, kWideEndSize - 12, 8);
        zip_record::put(out, kNeedsWide, 2);
        zip_record::put(out, kNeedsWide, 2);
        zip_record::put(out, 0, 8);
        zip_record::put(out, members.size(), 8);
        zip_record::put(out, members.size(), 8);
        zip_record::put(out, size, 8);
        zip_record::put(out, offset, 8);
        zip_record::put(out, kWideLocatorSignature, 4);
        zip_record::put(out, 0, 4);
        zip_record::put(out, offset + size, 8);
        zip_record::put(out, 1, 4);
    }
    const std::uint64_t count = std::min<std::uint64_t>(members.size(), kWide16);
    zip_record::put(out, kEndSignature, 4);
    zip_record::put(out, 0, 4);
    zip_record::put(out, count, 2);
    zip_record::put(out, count, 2);
    zip_record::put(out, narrow(size), 4);
    zip_record::put(out, narrow(offset), 4);
    zip_record::put(out, comment.size(), 2);
    return out + comment;
}

std::uint64_t checkZipLocalHeader(int fd, const std::string& archive, const ZipMember& member, std::uint64_t room) {
    const auto contradicts = [&](const char* what) {
        failMember(archive, member.name, std::string("its local header contradicts the directory in ") + what);
    };
    // Enough for the usual additional fields; the read never passes the member's own bytes.
    constexpr std::size_t usualExtra = 64;
    std::string bytes = readAt(fd, archive, member.offset,
                               static_cast<std::size_t>(std::min<std::uint64_t>(room, kLocalSize + member.name.size() + usualExtra)));
    Reader at(bytes);
    if (at.u32() != kLocalSignature)
        failMember(archive, member.name, "it has no local header");
    at.skip(2);
    const std::uint16_t flags = at.u16();
    const std::uint16_t method = at.u16();
    at.skip(4);
    const std::uint32_t crc = at.u32();
    std::uint64_t compressedSize = at.u32();
    std::uint64_t size = at.u32();
    const std::size_t nameSize = at.u16();
    const std::size_t extraSize = at.u16();
    const std::uint64_t header = kLocalSize + nameSize + extraSize;
    if (nameSize != member.name.size() || at.text(nameSize) != member.name)
        contradicts("its name");
    if (method != member.method)
        contradicts("its method");
    if ((flags ^ member.flags) & (kEncrypted | kSizesFollow))
        contradicts("its flags");
    if (room < header)
        failMember(archive, member.name, "it overlaps what follows");
    if (size == kWide32 || compressedSize == kWide32) {
        if (bytes.size() < header)
            bytes = readAt(fd, archive, member.offset, static_cast<std::size_t>(header));
        readWideSizes(Reader(std::string_view(bytes).substr(kLocalSize + nameSize, extraSize)), size, compressedSize);
    }
    // Sizes that only follow the data may be left open here.
    const auto agrees = [&](std::uint64_t here, std::uint64_t there) {
        return here == there || ((flags & kSizesFollow) && (here == 0 || here == kWide32));
    };
    if (!agrees(crc, member.crc32))
        contradicts("its checksum");
    if (!agrees(size, member.size) || !agrees(compressedSize, member.compressedSize))
        contradicts("its size");
    return header;
}

std::string renderZipLocalHeader(const ZipMember& member, bool wide) {
    std::string out;
    zip_record::put(out, kLocalSignature, 4);
    zip_record::put(out, wide ? kNeedsWide : member.needed, 2);
    zip_record::put(out, member.flags, 2);
    zip_record::put(out, member.method, 2);
    zip_record::put(out, member.time, 2);
    zip_record::put(out, member.date, 2);
    zip_record::put(out, member.crc32, 4);
    zip_record::put(out, wide ? kWide32 : member.compressedSize, 4);
    zip_record::put(out, wide ? kWide32 : member.size, 4);
    zip_record::put(out, member.name.size(), 2);
    zip_record::put(out, wide ? 20 : 0, 2);
    out += member.name;
    if (wide) {
        zip_record::put(out, kWideField, 2);
        zip_record::put(out, 16, 2);
        zip_record::put(out, member.size, 8);
        zip_record::put(out, member.compressedSize, 8);
    }
    return out;
}
