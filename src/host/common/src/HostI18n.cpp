// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HostI18n.h"

#include <type_traits>

namespace {

constexpr char32_t kReplacement = 0xfffd;

/// How much of the text has one byte a character, as nearly all metadata has.
template <class Text>
std::size_t countPlain(const Text& text) {
    std::size_t count = 0;
    while (count < text.size() && static_cast<std::make_unsigned_t<typename Text::value_type>>(text[count]) < 0x80)
        ++count;
    return count;
}

bool isCodePoint(char32_t c) {
    return c <= 0x10ffff && (c < 0xd800 || c > 0xdfff);
}

} // namespace

std::string HostI18n::toUtf8(const std::wstring& text) {
    const std::size_t plain = countPlain(text);
    std::string out(plain, '\0');
    for (std::size_t i = 0; i < plain; ++i)
        out[i] = static_cast<char>(text[i]);
    for (std::size_t i = plain; i < text.size(); ++i) {
        char32_t c = static_cast<char32_t>(text[i]);
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
    const std::size_t plain = countPlain(text);
    std::wstring out(plain, L'\0');
    for (std::size_t i = 0; i < plain; ++i)
        out[i] = static_cast<wchar_t>(text[i]);
    for (std::size_t i = plain; i < text.size();) {
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
