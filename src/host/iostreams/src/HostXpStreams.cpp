// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HostXpStreams.h"

#include "HostErrors.h"
#include "HostFileUtils.h"

#include <zlib.h>

#include <algorithm>
#include <array>
#include <string_view>

namespace hoststream::iostreams {

namespace {

// The packed form: this mark, the size of the text in eight bytes, lowest first, then the text as one zlib stream.
constexpr std::string_view kMark("HZXP\1\0\0\0", 8);
constexpr std::size_t kHeadSize = kMark.size() + 8;
constexpr std::size_t kStep = 16U << 10;

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

[[noreturn]] void fail(const std::string& cause) {
    throw HostError("the packed text " + cause);
}

void checkSize(std::uint64_t size) {
    if (size > xp::kMaxSize)
        throw HostError("a text of more than " + std::to_string(xp::kMaxSize) + " bytes is not read");
}

} // namespace

bool xp::is_xp_format(const std::string& path) {
    std::string start;
    try {
        start = HostFileUtils::readStart(path, 4096);
    } catch (const HostError&) {
        return false;
    }
    std::string_view head(start);
    if (head.starts_with(kMark))
        return true;
    if (head.starts_with(kByteOrderMark))
        head.remove_prefix(kByteOrderMark.size());
    const std::size_t first = head.find_first_not_of(" \t\r\n");
    return first != head.npos && (head[first] == '{' || head[first] == '[');
}

struct xp_autodetect::State {
    using Source = std::function<std::streamsize(char*, std::streamsize)>;

    ~State() { inflateEnd(&stream); }

    void readHead(const Source& source) {
        isHeadRead = true;
        while (head.size() < kHeadSize) {
            char part[kHeadSize];
            const std::streamsize got = source(part, static_cast<std::streamsize>(kHeadSize - head.size()));
            if (got <= 0)
                break;
            head.append(part, static_cast<std::size_t>(got));
        }
        if (!head.starts_with(kMark))
            return;
        if (head.size() < kHeadSize)
            fail("is cut off");
        for (std::size_t i = kHeadSize; i > kMark.size(); --i)
            announced = announced << 8 | static_cast<unsigned char>(head[i - 1]);
        checkSize(announced);
        if (inflateInit(&stream) != Z_OK)
            throw std::bad_alloc();
        head.clear();
        isPacked = true;
    }

    std::streamsize readPlain(char* buffer, std::streamsize size, const Source& source) {
        std::streamsize got = 0;
        if (head.empty()) {
            got = source(buffer, size);
        } else {
            got = static_cast<std::streamsize>(head.copy(buffer, static_cast<std::size_t>(size)));
            head.erase(0, static_cast<std::size_t>(got));
        }
        total += static_cast<std::uint64_t>(std::max<std::streamsize>(got, 0));
        checkSize(total);
        return got > 0 ? got : -1;
    }

    std::streamsize readPacked(char* buffer, std::streamsize size, const Source& source) {
        stream.next_out = reinterpret_cast<Bytef*>(buffer);
        stream.avail_out = static_cast<uInt>(std::min<std::streamsize>(size, kStep));
        const uInt wanted = stream.avail_out;
        while (stream.avail_out == wanted && !isAtEnd) {
            if (stream.avail_in == 0) {
                const std::streamsize got = source(input.data(), static_cast<std::streamsize>(input.size()));
                if (got <= 0)
                    fail("is cut off");
                stream.next_in = reinterpret_cast<Bytef*>(input.data());
                stream.avail_in = static_cast<uInt>(got);
            }
            const int result = inflate(&stream, Z_NO_FLUSH);
            if (result != Z_OK && result != Z_STREAM_END)
                fail("is damaged");
            isAtEnd = result == Z_STREAM_END;
        }
        total += wanted - stream.avail_out;
        char more = 0;
        if (total > announced || (isAtEnd && (total != announced || stream.avail_in > 0 || source(&more, 1) > 0)))
            fail("is not of the size that its head says");
        return wanted > stream.avail_out ? static_cast<std::streamsize>(wanted - stream.avail_out) : -1;
    }

    std::string head;
    bool isHeadRead = false;
    bool isPacked = false;
    bool isAtEnd = false;
    std::uint64_t announced = 0;
    std::uint64_t total = 0;
    z_stream stream{};
    std::array<char, kStep> input{};
};

xp_autodetect::xp_autodetect() : state_(std::make_shared<State>()) {}

std::streamsize xp_autodetect::read_(char* buffer, std::streamsize size,
                                     const std::function<std::streamsize(char*, std::streamsize)>& source) {
    if (size <= 0)
        return 0;
    if (!state_->isHeadRead)
        state_->readHead(source);
    return state_->isPacked ? state_->readPacked(buffer, size, source) : state_->readPlain(buffer, size, source);
}

} // namespace hoststream::iostreams
