// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HostExport.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

class HostZipUpdate;

/// One entry of an archive's directory; sizes in bytes.
struct HostZipEntry {
    std::string name;
    std::uint64_t size;
    std::uint64_t compressedSize;
    std::uint32_t crc32;
    bool isDirectory;
    bool isEncrypted;
};

/// Zip archives. Names are UTF-8; one with a trailing "/" is a directory; of members with one name the first counts. The limits of
/// HostZipUpdate on members and directory hold in reading too. Errors are HostError with the text "<archive>: <member>: <cause>".
class HOST_EXPORT HostZip {
public:
    /// Largest member that is read into memory: 1 GiB.
    static constexpr std::uint64_t kMaxMemberSize = 1ULL << 30;
    /// Largest member that is unpacked or streamed piece by piece: 64 GiB.
    static constexpr std::uint64_t kMaxUnpackedSize = 64ULL << 30;
    /// Largest member with metadata: 64 MiB.
    static constexpr std::uint64_t kMaxMetadataSize = 64ULL << 20;
    /// Most content that one call unpacks, stamps or verifies: 256 GiB.
    static constexpr std::uint64_t kMaxTotalSize = 256ULL << 30;
    /// Most parts of the name of a member that is unpacked: deeper folders cost much to make, and nothing removes them again.
    static constexpr std::size_t kMaxNameParts = 100;

    explicit HostZip(std::string archive);
    /// What was compressed and not committed is dropped.
    ~HostZip();
    HostZip(const HostZip&) = delete;
    HostZip& operator=(const HostZip&) = delete;

    /// Modes of compress: the file is the first member of a new archive; the file is added to the archive as it is by now.
    static constexpr int kCompressAnew = 34;
    static constexpr int kCompressMore = 36;

    /// Puts a file into this archive, under its name without the directory. Files are gathered until commit(), which changes the archive
    /// as HostZipUpdate does. Raises HostError, and HostAlgException for another mode.
    void compress(const std::string& file, int mode);
    /// Has commit() stamp the digest of attachDigestEn.
    void attachDigest();
    /// Raises HostAlgException when nothing was compressed.
    void commit();

    /// The archive has an entry of exactly this name; false too for a file that is no archive.
    static bool containsFile(const std::string& archive, const std::string& entry);

    /// The whole member, its checksum verified. Raises HostError when it is missing, damaged, encrypted or above `maxSize` bytes.
    static std::string readMember(const std::string& archive, const std::string& entry, std::uint64_t maxSize = kMaxMemberSize);

    /// Writes the member into the file, piece by piece, at most kMaxUnpackedSize bytes. The file appears, or is replaced, whole or not at
    /// all. Raises HostError as readMember does, for a name that no file may bear (as HostZipUpdate::getNameFault says it), and for a file
    /// that can't be written.
    static void extractMember(const std::string& archive, const std::string& entry, const std::string& file);

    /// Why the file can't be opened as an archive, in a few words; "" when it can.
    static std::string getFault(const std::string& archive);

    /// All entries in directory order. Raises HostError for a file that is no archive.
    static std::vector<HostZipEntry> getEntries(const std::string& archive);

    /// Unpacks what lies below the directory `entry` ("": all) into `directory`, keeping the entry's path; true when there was
    /// something to unpack. A flag of 1 overwrites, else files that stand there stay. Raises HostError, before anything is written,
    /// for links, encrypted or too large members and names that would land outside. No link below `directory` is followed.
    static bool uncompressDir(const std::string& archive, const std::string& entry, const std::string& directory, int flags);

    /// Writes a new archive of all files below `directory`: entries sorted, times fixed, so that equal folders give equal
    /// bytes. Written as HostZipUpdate writes. Raises HostError; links and special files are refused.
    static void packDirectory(const std::string& directory, const std::string& archive);

    /// Stamps the archive with a digest of its members, in place of an earlier one. It is a SHA-256 over all members, folders too, in
    /// byte order of their names; of each one the length of the name (8 bytes, lowest first), the name, the size of the content
    /// (8 bytes, lowest first) and the SHA-256 of the content, uncompressed. So it stays true when a member is only compressed
    /// differently. It stands as "hzep-digest-2:sha256:" and 64 digits at the end of the archive's comment. Members that have not
    /// changed since the stamp before are not read again: damage in them is not found here, but by verifyDigest. Written as
    /// HostZipUpdate writes, which also tells what is refused; encrypted members are too. Raises HostError.
    static void attachDigestEn(const std::string& archive);

    /// The digits of the stamp, "" without one. Raises HostError for a file that is no sound archive.
    static std::string getDigest(const std::string& archive);

    enum DigestState { NoDigest, DigestDiffers, DigestMatches };

    /// Reads all members, and compares them with the stamp, of this revision or the first one, of the same file: who changes the archive
    /// meanwhile plays no part. Raises HostError for an archive or member that can't be read.
    static DigestState checkDigest(const std::string& archive);

    /// checkDigest gives DigestMatches.
    static bool verifyDigest(const std::string& archive);

private:
    std::string archive_;
    std::unique_ptr<HostZipUpdate> update_;
};
