// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HostI18n.h"

namespace {

constexpr char32_t kReplacement = 0xfffd;

bool isCodePoint(char32_t c) {
    return c <= 0x10ffff && (c < 0xd800 || c > 0xdfff);
}

} // namespace

std::string HostI18n::toUtf8(const std::wstring& text) {
    std::string out;
    out.reserve(text.size());
    for (const wchar_t wide : text) {
        char32_t c = static_cast<char32_t>(wide);
        if (!isCodePoint(c))
            c = kReplacement;
        if (c < 0x80) {
            out += static_cast<char>(c);
            continue;
        }
        const int more = c < 0x800 ? 1 : c < 0x10000 ? 2 : 3;
        static constexpr unsigned lead[] = {0, 0xc0, 0xe0, 0xf0};
        out += static_cast<char>(lead[more] | c >> (6 * more));
        for (int shift = 6 * (more - 1); shift >= 0; shift -= 6)
            out += static_cast<char>(0x80 | (c >> shift & 0x3f));
    }
    return out;
}

std::wstring HostI18n::toWide(const std::string& text) {
    std::wstring out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size();) {
        const auto byte = [&text](std::size_t at) { return at < text.size() ? static_cast<unsigned char>(text[at]) : 0U; };
        const unsigned first = byte(i);
        if (first < 0x80) {
            out += static_cast<wchar_t>(first);
            ++i;
            continue;
        }
        const std::size_t more = first >= 0xf0 ? 3 : first >= 0xe0 ? 2 : 1;
        static constexpr char32_t smallest[] = {0, 0x80, 0x800, 0x10000};
        char32_t c = first & (0x3fU >> more);
        bool valid = first >= 0xc0 && first < 0xf8;
        for (std::size_t k = 1; valid && k <= more; ++k) {
            valid = (byte(i + k) & 0xc0) == 0x80;
            c = c << 6 | (byte(i + k) & 0x3f);
        }
        valid = valid && c >= smallest[more] && isCodePoint(c);
        out += static_cast<wchar_t>(valid ? c : kReplacement);
        i += valid ? more + 1 : 1;
    }
    return out;
}
