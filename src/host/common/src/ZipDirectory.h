// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// One member as the directory of an archive tells of it, with all that a rewrite has to keep.
struct ZipMember {
    /// The methods that are read and written; others are only copied.
    enum Method : std::uint16_t { kStored = 0, kDeflated = 8 };

    std::string name;
    std::string extra; // without the 64-bit field, which is made anew
    std::string comment;
    std::uint16_t madeBy = 0;
    std::uint16_t needed = 0;
    std::uint16_t flags = 0;
    std::uint16_t method = 0;
    std::uint16_t time = 0;
    std::uint16_t date = 0;
    std::uint16_t internalAttributes = 0;
    std::uint32_t externalAttributes = 0;
    std::uint32_t crc32 = 0;
    std::uint64_t compressedSize = 0;
    std::uint64_t size = 0;
    std::uint64_t offset = 0; // of the local header in the file
    std::uint64_t end = 0;    // where the next member or the directory starts

    bool operator==(const ZipMember&) const = default;
    bool isEncrypted() const { return (flags & 1) != 0; }
};

/// The directory of an archive, byte-true. Contents are read a member at a time: see ZipMemberReader.h.
struct ZipDirectory {
    std::vector<ZipMember> members; // in directory order
    std::string comment;
    /// What an archive may have in front of it, such as the program that unpacks it: bytes before the first member, and how many of them
    /// the offsets in the directory don't count.
    std::uint64_t start = 0;
    std::uint64_t shift = 0;

    /// Reads the directory and checks it against the file: no name twice, no overlap, local headers that agree, safe names, files
    /// and folders only, all limits kept. `start` is known then. Raises HostError naming the archive, the member and the cause.
    static ZipDirectory read(int fd, const std::string& archive);

    /// The same for reading single members: names and extents are not looked at, and may come twice and overlap. The limits hold.
    static ZipDirectory list(int fd, const std::string& archive);

    /// Directory and end records for a directory that starts at `offset`.
    std::string render(std::uint64_t offset) const;
};

/// The size of the local header, which lies with the content in `room` bytes of the file. Raises HostError for one that contradicts the
/// directory.
std::uint64_t checkZipLocalHeader(int fd, const std::string& archive, const ZipMember& member, std::uint64_t room);

/// The local header of a member whose sizes and checksum are known. With `wide` the sizes stand in the 64-bit field.
std::string renderZipLocalHeader(const ZipMember& member, bool wide);
