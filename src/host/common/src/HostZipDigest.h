// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "ZipDirectory.h"
#include "ZipMemberReader.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include <nettle/sha2.h>

class HostZipArchive;

/// The digest of an archive, its place at the end of the archive's comment, and the table behind it; see docs/archive.md.
namespace zip_digest {

/// First revision: over names, sizes and contents. Still verified.
inline constexpr char kLabel1[] = "hzep-digest-1:sha256:";
/// Second revision: over names, sizes and the hashes of the contents. Each hash also stands beside its member in the directory.
inline constexpr char kLabel2[] = "hzep-digest-2:sha256:";
inline constexpr std::size_t kHexSize = 64;
/// The additional field of a member that holds the hash of its content: its number, and the form of what is in it.
inline constexpr std::uint16_t kFieldId = 0x7a68;
inline constexpr std::uint8_t kFieldRevision = 1;

using Hash = std::array<unsigned char, 32>;

/// SHA-256. Nothing fails: no memory is taken.
class Sha256 {
public:
    Sha256() { nettle_sha256_init(&context_); }
    void add(const char* data, std::size_t size) { nettle_sha256_update(&context_, size, reinterpret_cast<const std::uint8_t*>(data)); }
    void add(const std::string& bytes) { add(bytes.data(), bytes.size()); }
    /// Only once, and last.
    Hash finish() {
        Hash hash;
        nettle_sha256_digest(&context_, hash.size(), hash.data());
        return hash;
    }

private:
    sha256_ctx context_;
};

struct Comment {
    std::string text;        // whoever wrote it
    int revision = 0;        // 0: no digest
    std::string digest = {}; // kHexSize lower-case digits, or ""
};

Comment split(const std::string& comment);
/// The text with a digest of the second revision behind it. Raises HostError when the archive format has no room for it.
std::string join(const std::string& text, const std::string& digest);

/// The hash in the member's field, when it was made for content of the member's size and checksum.
std::optional<Hash> getHash(const ZipMember& member);
/// Where the directory has no room for it, there is none.
void setHash(ZipMember& member, const Hash& hash);
void dropHash(ZipMember& member);

/// What the second revision is made of: the table of all members.
struct Entry {
    std::string name; // in UTF-8
    std::uint64_t size;
    Hash hash;
};
/// The digest of the table of an archive, in any order. Raises HostError for two of one name, a folder with content and more than
/// HostZip::kMaxTotalSize bytes.
std::string compute(const std::string& archive, std::vector<Entry> table);

/// Of the member as it is read from the archive; that of nothing for a folder.
Hash hashMember(const ZipMemberReader::Source& archive, const ZipMember& member, const std::string& name);

/// Reads all members. Raises HostError.
std::string compute(const HostZipArchive& archive, int revision);

} // namespace zip_digest
