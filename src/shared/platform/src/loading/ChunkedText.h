// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include <cstddef>
#include <deque>
#include <memory>
#include <streambuf>

/// Stream buffer that gathers text without ever moving what it has: growing takes one more chunk.
class ChunkedText : public std::streambuf {
public:
    /// The text so far as one NUL-terminated `new char[]`, and none left here.
    char* release();

private:
    static constexpr std::size_t kChunkSize = 256U << 10;

    int_type overflow(int_type character) override;
    std::streamsize xsputn(const char* text, std::streamsize size) override;
    void grow();

    std::deque<std::unique_ptr<char[]>> chunks_;
};
