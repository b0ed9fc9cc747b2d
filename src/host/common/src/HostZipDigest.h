// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include <cstddef>
#include <string>

/// The digest of an archive and its place at the end of the archive's comment.
namespace zip_digest {

/// First revision: SHA-256 over all members, see HostZip::attachDigestEn.
inline constexpr char kLabel[] = "hzep-digest-1:sha256:";
inline constexpr std::size_t kHexSize = 64;

struct Comment {
    std::string text;   // whoever wrote it
    std::string digest; // kHexSize lower-case digits, or ""
};

Comment split(const std::string& comment);
/// The text with a digest behind it. Raises HostError when the archive format has no room for it.
std::string join(const std::string& text, const std::string& digest);

/// Reads all members. Raises HostError.
std::string compute(const std::string& archive);

} // namespace zip_digest
