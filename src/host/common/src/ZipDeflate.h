// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include <zlib.h>

/// Compresses one member after another. The bytes gather in `out`, from which the caller may take them away as he likes.
class ZipDeflate {
public:
    ZipDeflate();
    ~ZipDeflate();
    ZipDeflate(const ZipDeflate&) = delete;
    ZipDeflate& operator=(const ZipDeflate&) = delete;

    void start();
    void add(const char* data, std::size_t size, std::string& out);
    void finish(std::string& out);

    std::uint64_t getSize() const { return stream_.total_in; }
    std::uint64_t getCompressedSize() const { return stream_.total_out; }
    std::uint32_t getCrc32() const { return crc_; }

private:
    void run(int flush, std::string& out);

    z_stream stream_{};
    std::uint32_t crc_ = 0;
};
