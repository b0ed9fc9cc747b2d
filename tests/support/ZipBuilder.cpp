// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "ZipBuilder.h"

#include <filesystem>
#include <fstream>
#include <stdexcept>

#include <zlib.h>

namespace {

void put(std::string& out, std::uint64_t value, int bytes) {
    for (int i = 0; i < bytes; ++i)
        out += static_cast<char>(value >> (8 * i));
}

std::string deflateRaw(const std::string& text) {
    z_stream stream{};
    if (deflateInit2(&stream, Z_DEFAULT_COMPRESSION, Z_DEFLATED, -MAX_WBITS, 8, Z_DEFAULT_STRATEGY) != Z_OK)
        throw std::runtime_error("deflateInit2");
    std::string out(deflateBound(&stream, text.size()), '\0');
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(text.data()));
    stream.avail_in = static_cast<uInt>(text.size());
    stream.next_out = reinterpret_cast<Bytef*>(out.data());
    stream.avail_out = static_cast<uInt>(out.size());
    const int result = deflate(&stream, Z_FINISH);
    out.resize(stream.total_out);
    deflateEnd(&stream);
    if (result != Z_STREAM_END)
        throw std::runtime_error("deflate");
    return out;
}

constexpr std::uint64_t kWide = 0xffffffff;
constexpr std::uint16_t kDate = (1 << 5) | 1; // 1980-01-01

struct Written {
    std::uint64_t size;
    std::uint64_t compressedSize;
    std::uint32_t crc;
    std::uint16_t method;
    std::uint64_t offset;
};

void putCommon(std::string& out, const ZipBuilder::Member& member, const Written& written, const std::string& name, std::string& extra) {
    if (written.size >= kWide || written.compressedSize >= kWide) {
        put(extra, 1, 2);
        put(extra, 16, 2);
        put(extra, written.size, 8);
        put(extra, written.compressedSize, 8);
    }
    const bool wide = !extra.empty();
    put(out, wide ? 45 : 20, 2);
    put(out, member.flags, 2);
    put(out, written.method, 2);
    put(out, 0, 2);
    put(out, kDate, 2);
    put(out, written.crc, 4);
    put(out, wide ? kWide : written.compressedSize, 4);
    put(out, wide ? kWide : written.size, 4);
    put(out, name.size(), 2);
    put(out, extra.size(), 2);
}

} // namespace

ZipBuilder& ZipBuilder::add(const std::string& name, const std::string& content) {
    Member member;
    member.name = name;
    member.content = content;
    if (content.empty())
        member.method = Stored;
    return add(std::move(member));
}

ZipBuilder& ZipBuilder::addStored(const std::string& name, const std::string& content) {
    Member member;
    member.name = name;
    member.content = content;
    member.method = Stored;
    return add(std::move(member));
}

ZipBuilder& ZipBuilder::add(Member member) {
    members_.push_back(std::move(member));
    return *this;
}

ZipBuilder& ZipBuilder::setComment(const std::string& comment) {
    comment_ = comment;
    return *this;
}

std::string ZipBuilder::bytes() const {
    std::string out;
    std::string directory;
    for (const Member& member : members_) {
        const std::string data = member.method == Deflated && !member.raw ? deflateRaw(member.content) : member.content;
        const auto realCrc = static_cast<std::uint32_t>(
            crc32(0, reinterpret_cast<const Bytef*>(member.content.data()), static_cast<uInt>(member.content.size())));
        const Written written{member.size.value_or(member.content.size()), member.compressedSize.value_or(data.size()),
                              member.crc.value_or(realCrc), member.announcedMethod.value_or(member.method), out.size()};
        const std::string localName = member.localName.value_or(member.name);
        std::string extra;
        put(out, 0x04034b50, 4);
        putCommon(out, member, written, localName, extra);
        out += localName + extra + data;

        extra.clear();
        put(directory, 0x02014b50, 4);
        put(directory, 3 << 8 | 20, 2);
        putCommon(directory, member, written, member.name, extra);
        put(directory, 0, 2);
        put(directory, 0, 2);
        put(directory, 0, 2);
        put(directory, static_cast<std::uint64_t>(member.unixMode) << 16, 4);
        put(directory, written.offset, 4);
        directory += member.name + extra;
    }
    const std::uint64_t start = out.size();
    out += directory;
    put(out, 0x06054b50, 4);
    put(out, 0, 4);
    put(out, members_.size(), 2);
    put(out, members_.size(), 2);
    put(out, directory.size(), 4);
    put(out, start, 4);
    put(out, comment_.size(), 2);
    return out + comment_;
}

std::string ZipBuilder::write() const {
    const std::filesystem::path path = path_;
    if (path.has_parent_path())
        std::filesystem::create_directories(path.parent_path());
    const std::string all = bytes();
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file.write(all.data(), static_cast<std::streamsize>(all.size()));
    file.close();
    if (!file)
        throw std::runtime_error("cannot write " + path_);
    return path_;
}
