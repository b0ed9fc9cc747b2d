// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "JSONRenderer.h"

#include <array>

namespace zep_platform {

namespace {

constexpr std::array<bool, 256> plainBytes() {
    std::array<bool, 256> plain{};
    for (unsigned c = 0x20; c < 256; ++c)
        plain[c] = c != '"' && c != '\\' && c != '/';
    return plain;
}

constexpr std::array<bool, 256> kPlain = plainBytes();

} // namespace

void JSONRenderer::text(const std::string& text) {
    put('"');
    const char* at = text.data();
    const char* const end = at + text.size();
    while (at != end) {
        const char* run = at;
        while (run != end && kPlain[static_cast<unsigned char>(*run)])
            ++run;
        copy(at, static_cast<std::size_t>(run - at));
        if (run == end)
            break;
        escape(static_cast<unsigned char>(*run));
        at = run + 1;
    }
    put('"');
}

void JSONRenderer::escape(unsigned char byte) {
    put('\\');
    switch (byte) {
    case '\b':
        return put('b');
    case '\f':
        return put('f');
    case '\n':
        return put('n');
    case '\r':
        return put('r');
    case '\t':
        return put('t');
    case '/':
    case '"':
    case '\\':
        return put(static_cast<char>(byte));
    default:
        copy("u00", 3);
        put("0123456789ABCDEF"[byte >> 4]);
        put("0123456789ABCDEF"[byte & 15]);
    }
}

} // namespace zep_platform
