// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "ZipMemberReader.h"

#include "ZipDirectory.h"
#include "ZipFault.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <new>
#include <utility>

#include <libdeflate.h>
#include <unistd.h>
#include <zlib.h>

namespace {

// No deflated byte gives more.
constexpr std::uint64_t kMostPerByte = 1032;
// Members up to these sizes, inflated and packed, are inflated in one call.
constexpr std::uint64_t kWholeSize = 64ULL << 20;
constexpr std::uint64_t kWholePackedSize = 8ULL << 20;
constexpr std::size_t kInputSize = 64 << 10;

std::string describeMethod(std::uint16_t method) {
    static constexpr std::pair<int, const char*> kNames[] = {
        {1, "shrunk"}, {2, "reduced"}, {3, "reduced"}, {4, "reduced"},  {5, "reduced"}, {6, "imploded"},  {9, "deflate64"},
        {12, "bzip2"}, {14, "lzma"},   {16, "cmpsc"},  {18, "terse"},   {19, "lz77"},   {20, "old zstd"}, {93, "zstd"},
        {94, "mp3"},   {95, "xz"},     {96, "jpeg"},   {97, "wavpack"}, {98, "ppmd"},   {99, "aes"},
    };
    for (const auto& [number, name] : kNames)
        if (number == method)
            return std::to_string(method) + " (" + name + ")";
    return std::to_string(method);
}

} // namespace

struct ZipMemberReader::State {
    Source source;
    std::string name;
    std::uint64_t size = 0;
    std::uint32_t expectedCrc = 0;
    bool isDeflated = false;
    std::uint64_t at = 0;   // the next packed byte in the file
    std::uint64_t left = 0; // packed bytes from there
    std::uint64_t done = 0;
    std::uint32_t crc = 0;
    bool ended = false;
    bool hasStream = false;
    bool streamEnded = false;
    z_stream stream = {};
    std::string input = {};

    ~State() {
        if (hasStream)
            inflateEnd(&stream);
    }

    [[noreturn]] void fail(const std::string& cause) const { failMember(source.archive, name, cause); }

    /// Packed bytes; 0 when there are no more.
    std::size_t take(char* buffer, std::size_t count) {
        count = static_cast<std::size_t>(std::min<std::uint64_t>(count, left));
        ssize_t got;
        do
            got = count > 0 ? pread(source.fd, buffer, count, static_cast<off_t>(at)) : 0;
        while (got < 0 && errno == EINTR);
        if (got < 0)
            fail(std::string("cannot be read: ") + std::strerror(errno));
        if (got == 0 && count > 0)
            fail("damaged: the archive ends before it does");
        at += static_cast<std::uint64_t>(got);
        left -= static_cast<std::uint64_t>(got);
        return static_cast<std::size_t>(got);
    }

    std::size_t inflateSome(char* buffer, std::size_t count) {
        if (!hasStream) {
            if (inflateInit2(&stream, -MAX_WBITS) != Z_OK)
                throw std::bad_alloc();
            hasStream = true;
            input.resize(kInputSize);
        }
        stream.next_out = reinterpret_cast<Bytef*>(buffer);
        stream.avail_out = static_cast<uInt>(count);
        const uInt wanted = stream.avail_out;
        while (stream.avail_out == wanted && !streamEnded) {
            if (stream.avail_in == 0) {
                stream.avail_in = static_cast<uInt>(take(input.data(), input.size()));
                stream.next_in = reinterpret_cast<Bytef*>(input.data());
            }
            const bool isLast = stream.avail_in == 0;
            const int result = inflate(&stream, Z_NO_FLUSH);
            if (result == Z_MEM_ERROR)
                throw std::bad_alloc();
            streamEnded = result == Z_STREAM_END;
            if (result == Z_BUF_ERROR && isLast)
                fail("damaged: its compressed bytes are cut off");
            if (result != Z_OK && result != Z_STREAM_END && result != Z_BUF_ERROR)
                fail(std::string("damaged: ") + (stream.msg ? stream.msg : "no deflate stream"));
        }
        return wanted - stream.avail_out;
    }

    /// In pieces that are still at hand when their checksum is made.
    std::size_t readSome(char* buffer, std::size_t count) {
        count = std::min<std::size_t>(count, kPieceSize);
        return isDeflated ? inflateSome(buffer, count) : take(buffer, count);
    }

    void checkCrc() const {
        if (crc != expectedCrc)
            fail("damaged: CRC error");
    }

    std::string inflateWhole() {
        if (size > left * kMostPerByte)
            fail("damaged: shorter than announced");
        std::string packed(static_cast<std::size_t>(left), '\0');
        for (std::size_t have = 0; have < packed.size();)
            have += take(packed.data() + have, packed.size() - have);
        std::string text(static_cast<std::size_t>(size), '\0');
        struct Free {
            void operator()(libdeflate_decompressor* decompressor) const { libdeflate_free_decompressor(decompressor); }
        };
        const std::unique_ptr<libdeflate_decompressor, Free> decompressor(libdeflate_alloc_decompressor());
        if (!decompressor)
            throw std::bad_alloc();
        std::size_t used = 0, made = 0;
        switch (
            libdeflate_deflate_decompress_ex(decompressor.get(), packed.data(), packed.size(), text.data(), text.size(), &used, &made)) {
        case LIBDEFLATE_SUCCESS:
            break;
        case LIBDEFLATE_INSUFFICIENT_SPACE:
            fail("damaged: longer than announced");
        default:
            fail("damaged: no deflate stream");
        }
        if (made < text.size())
            fail("damaged: shorter than announced");
        crc = libdeflate_crc32(0, text.data(), text.size());
        checkCrc();
        done = size;
        ended = true;
        return text;
    }
};

std::string ZipMemberReader::getRefusal(const Source& source, const ZipMember& member, const std::string& name, std::uint64_t maxSize) {
    if (name.ends_with('/'))
        return "is a directory";
    if (member.isEncrypted())
        return "is encrypted; encrypted members are not supported";
    if (member.size > maxSize)
        return "announces " + std::to_string(member.size) + " bytes, more than the limit of " + std::to_string(maxSize);
    if (member.compressedSize > source.size)
        return "announces more compressed bytes than the archive holds";
    if (member.method != ZipMember::kStored && member.method != ZipMember::kDeflated)
        return "is compressed by method " + describeMethod(member.method) + ", which is not supported";
    return "";
}

ZipMemberReader::ZipMemberReader(Source source, const ZipMember& member, const std::string& name, std::uint64_t maxSize)
    : state_(new State{std::move(source), name, member.size, member.crc32, member.method == ZipMember::kDeflated}) {
    State& s = *state_;
    if (const std::string refusal = getRefusal(s.source, member, name, maxSize); !refusal.empty())
        s.fail(refusal);
    const std::uint64_t room = s.source.size - std::min(member.offset, s.source.size);
    const std::uint64_t header = checkZipLocalHeader(s.source.fd, s.source.archive, member, room);
    if (room - header < member.compressedSize)
        s.fail("damaged: the archive ends before it does");
    s.at = member.offset + header;
    s.left = member.compressedSize;
    // Some writers make nothing of nothing.
    s.isDeflated = s.isDeflated && (s.left > 0 || s.size > 0);
}

ZipMemberReader::~ZipMemberReader() = default;
ZipMemberReader::ZipMemberReader(ZipMemberReader&&) noexcept = default;
ZipMemberReader& ZipMemberReader::operator=(ZipMemberReader&&) noexcept = default;

std::uint64_t ZipMemberReader::getSize() const {
    return state_->size;
}

std::size_t ZipMemberReader::read(char* buffer, std::size_t size) {
    State& s = *state_;
    if (size == 0 || s.ended)
        return 0;
    const auto wanted = static_cast<std::size_t>(std::min<std::uint64_t>(size, s.size - s.done));
    const std::size_t got = wanted > 0 ? s.readSome(buffer, wanted) : 0;
    s.crc = libdeflate_crc32(s.crc, buffer, got);
    s.done += got;
    if (got > 0)
        return got;
    if (s.done < s.size)
        s.fail("damaged: shorter than announced");
    char beyond;
    if (s.readSome(&beyond, 1) > 0)
        s.fail("damaged: longer than announced");
    s.checkCrc();
    s.ended = true;
    return 0;
}

std::string ZipMemberReader::readAll() {
    if (state_->isDeflated && state_->size <= kWholeSize && state_->left <= kWholePackedSize)
        return state_->inflateWhole();
    // Memory follows the bytes that are there or really come, so that an announced size alone takes little.
    const std::uint64_t firstStep = std::max<std::uint64_t>(state_->left, 8ULL << 20);
    std::string text;
    std::size_t done = 0;
    do {
        if (done == text.size())
            text.resize(static_cast<std::size_t>(std::min(getSize(), std::max<std::uint64_t>(2ULL * done, firstStep))));
        const std::size_t got = read(text.data() + done, text.size() - done);
        if (got == 0)
            break;
        done += got;
    } while (done < getSize());
    char end;
    read(&end, 1);
    return text;
}
