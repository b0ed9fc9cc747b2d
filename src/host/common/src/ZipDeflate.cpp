// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "ZipDeflate.h"

#include "HostErrors.h"

#include <algorithm>
#include <new>

#include <libdeflate.h>

namespace {

constexpr int kLevel = 6;
constexpr int kMemoryLevel = 8;
constexpr std::size_t kStep = 64 << 10;

} // namespace

ZipDeflate::ZipDeflate() {
    if (deflateInit2(&stream_, kLevel, Z_DEFLATED, -MAX_WBITS, kMemoryLevel, Z_DEFAULT_STRATEGY) != Z_OK)
        throw std::bad_alloc();
}

ZipDeflate::~ZipDeflate() {
    deflateEnd(&stream_);
}

void ZipDeflate::start() {
    deflateReset(&stream_);
    crc_ = 0;
}

void ZipDeflate::add(const char* data, std::size_t size, std::string& out) {
    while (size > 0) {
        const std::size_t step = std::min(size, kStep);
        stream_.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(data));
        stream_.avail_in = static_cast<uInt>(step);
        crc_ = libdeflate_crc32(crc_, data, step);
        run(Z_NO_FLUSH, out);
        data += step;
        size -= step;
    }
}

void ZipDeflate::finish(std::string& out) {
    run(Z_FINISH, out);
}

void ZipDeflate::run(int flush, std::string& out) {
    char buffer[32 << 10];
    do {
        stream_.next_out = reinterpret_cast<Bytef*>(buffer);
        stream_.avail_out = sizeof buffer;
        if (deflate(&stream_, flush) == Z_STREAM_ERROR)
            throw HostError("the compression failed");
        out.append(buffer, sizeof buffer - stream_.avail_out);
    } while (stream_.avail_out == 0);
}
