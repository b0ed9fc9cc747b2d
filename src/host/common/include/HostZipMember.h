// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HostExport.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

/// One member of an archive, read in pieces; keeps the archive open for its life. Errors are HostError with archive, member and
/// cause in the text.
class HOST_EXPORT HostZipMember {
public:
    /// Refuses a member that is missing, a directory, encrypted or larger than `maxSize` bytes, and one whose local header contradicts the
    /// directory.
    HostZipMember(const std::string& archive, const std::string& entry, std::uint64_t maxSize);
    ~HostZipMember();
    HostZipMember(HostZipMember&&) noexcept;
    HostZipMember& operator=(HostZipMember&&) noexcept;

    /// Announced bytes of the content; reading never gives more.
    std::uint64_t getSize() const;

    /// The next bytes, at most `size`; 0 at the end, when also length and checksum have proved right.
    std::size_t read(char* buffer, std::size_t size);

    /// The member as one text. Only to be called first and once.
    std::string readAll();

private:
    struct State;
    std::unique_ptr<State> state_;
};
