// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "ChunkedText.h"

#include <algorithm>
#include <cstring>

void ChunkedText::grow() {
    chunks_.emplace_back(new char[kChunkSize]);
    setp(chunks_.back().get(), chunks_.back().get() + kChunkSize);
}

ChunkedText::int_type ChunkedText::overflow(int_type character) {
    if (traits_type::eq_int_type(character, traits_type::eof()))
        return traits_type::not_eof(character);
    grow();
    return sputc(traits_type::to_char_type(character));
}

std::streamsize ChunkedText::xsputn(const char* text, std::streamsize size) {
    for (std::streamsize left = size; left > 0;) {
        if (pptr() == epptr())
            grow();
        const std::streamsize step = std::min<std::streamsize>(left, epptr() - pptr());
        std::memcpy(pptr(), text, static_cast<std::size_t>(step));
        pbump(static_cast<int>(step));
        text += step;
        left -= step;
    }
    return size;
}

char* ChunkedText::release() {
    const std::size_t last = chunks_.empty() ? 0 : static_cast<std::size_t>(pptr() - pbase());
    const std::size_t total = chunks_.empty() ? 0 : (chunks_.size() - 1) * kChunkSize + last;
    std::unique_ptr<char[]> text(new char[total + 1]);
    for (std::size_t at = 0; !chunks_.empty(); chunks_.pop_front()) {
        const std::size_t size = chunks_.size() == 1 ? last : kChunkSize;
        std::memcpy(text.get() + at, chunks_.front().get(), size);
        at += size;
    }
    text[total] = '\0';
    setp(nullptr, nullptr);
    return text.release();
}
