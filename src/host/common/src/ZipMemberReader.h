// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

struct ZipMember;

/// The content of one member, read once from begin to end. Errors are HostError with archive, member and cause.
class ZipMemberReader {
public:
    /// An open archive, which must outlive its readers.
    struct Source {
        int fd;
        std::uint64_t size;  // of the file
        std::string archive; // as errors name it
    };

    /// Why the member must not be read, in a few words; "" for a sound one.
    static std::string getRefusal(const Source& source, const ZipMember& member, const std::string& name, std::uint64_t maxSize);

    /// Raises for a member that getRefusal refuses, and for one whose local header contradicts the directory.
    ZipMemberReader(Source source, const ZipMember& member, const std::string& name, std::uint64_t maxSize);
    ~ZipMemberReader();
    ZipMemberReader(ZipMemberReader&&) noexcept;
    ZipMemberReader& operator=(ZipMemberReader&&) noexcept;

    /// Announced bytes of the content; reading never gives more.
    std::uint64_t getSize() const;

    /// The next bytes, at most `size`; 0 at the end, when also length and checksum have proved right.
    std::size_t read(char* buffer, std::size_t size);

    /// All of it. Only to be called first and once.
    std::string readAll();

    /// Hands all of it on, piece by piece.
    template <class Take>
    void forEachPiece(const Take& take) {
        std::string buffer(static_cast<std::size_t>(getSize() < kPieceSize ? getSize() + 1 : kPieceSize), '\0');
        while (const std::size_t got = read(buffer.data(), buffer.size()))
            take(buffer.data(), got);
    }

private:
    static constexpr std::uint64_t kPieceSize = 256 << 10;
    struct State;
    std::unique_ptr<State> state_;
};
