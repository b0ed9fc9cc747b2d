// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HostText.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace {

/// Bytes of the character that begins here; 0 for what is no UTF-8.
std::size_t readCharacter(std::string_view text, std::uint32_t& character) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const std::size_t size = byte(0) < 0x80 ? 1 : byte(0) < 0xC2 ? 0 : byte(0) < 0xE0 ? 2 : byte(0) < 0xF0 ? 3 : byte(0) < 0xF5 ? 4 : 0;
    if (size == 0 || size > text.size())
        return 0;
    character = size == 1 ? byte(0) : byte(0) & (0x7FU >> size);
    for (std::size_t i = 1; i < size; ++i) {
        if ((byte(i) & 0xC0) != 0x80)
            return 0;
        character = character << 6 | (byte(i) & 0x3FU);
    }
    constexpr std::array<std::uint32_t, 5> kLeast = {0, 0, 0x80, 0x800, 0x10000};
    return character < kLeast[size] || character > 0x10FFFF || (character >= 0xD800 && character < 0xE000) ? 0 : size;
}

bool isPrintable(std::uint32_t c) {
    const bool isControl = c < 0x20 || (c >= 0x7F && c < 0xA0);
    const bool turnsLines = c == 0x2028 || c == 0x2029;
    const bool turnsDirection = c == 0x61C || (c >= 0x200B && c <= 0x200F) || (c >= 0x202A && c <= 0x202E) || (c >= 0x2060 && c <= 0x2069);
    const bool isTag = c == 0xFEFF || (c >= 0xE0000 && c < 0xE0080);
    return !isControl && !turnsLines && !turnsDirection && !isTag;
}

} // namespace

std::string HostText::makePrintable(std::string_view text) {
    static constexpr char kDigits[] = "0123456789abcdef";
    std::string shown;
    for (std::size_t at = 0, size = 0; at < text.size(); at += size) {
        std::uint32_t character = 0;
        size = readCharacter(text.substr(at), character);
        if (size > 0 && isPrintable(character)) {
            shown.append(text.substr(at, size));
            continue;
        }
        size = std::max<std::size_t>(size, 1);
        for (std::size_t i = 0; i < size; ++i) {
            const auto byte = static_cast<unsigned char>(text[at + i]);
            shown += {'\\', 'x', kDigits[byte >> 4], kDigits[byte & 15]};
        }
    }
    return shown;
}

std::size_t HostText::findNoUtf8(std::string_view text) {
    std::uint32_t character = 0;
    for (std::size_t at = 0, size = 0; at < text.size(); at += size)
        if ((size = readCharacter(text.substr(at), character)) == 0)
            return at;
    return text.npos;
}

std::string HostText::toUtf8(std::string_view text) {
    std::string clean;
    std::uint32_t character = 0;
    for (std::size_t at = 0, size = 0; at < text.size(); at += std::max<std::size_t>(size, 1)) {
        size = readCharacter(text.substr(at), character);
        clean.append(size > 0 ? text.substr(at, size) : "\xEF\xBF\xBD");
    }
    return clean;
}
