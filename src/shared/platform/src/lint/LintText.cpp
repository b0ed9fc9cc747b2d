// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "LintText.h"

#include "../hardware/AsciiCase.h"
#include "HZEPMetadataLint.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <numeric>

namespace {

/// Longest text that is shown, in bytes, and longest name that is compared.
constexpr std::size_t kMaxShown = 120;
constexpr std::size_t kMaxCompared = 48;

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

/// Insertions, deletions, changes and swaps of neighbours between the two, whatever the letter case.
std::size_t getDistance(std::string_view a, std::string_view b) {
    using Row = std::array<std::size_t, kMaxCompared + 1>;
    Row before{}, last{}, row{};
    std::iota(last.begin(), last.end(), 0U);
    for (std::size_t i = 1; i <= a.size(); ++i) {
        row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const auto same = [&](std::size_t x, std::size_t y) { return ascii::lower(a[x - 1]) == ascii::lower(b[y - 1]); };
            row[j] = std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + (same(i, j) ? 0 : 1)});
            if (i > 1 && j > 1 && same(i, j - 1) && same(i - 1, j))
                row[j] = std::min(row[j], before[j - 2] + 1);
        }
        before = last;
        last = row;
    }
    return last[b.size()];
}

} // namespace

std::string HZEPMetadataLint::makePrintable(const std::string& text) {
    static constexpr char kDigits[] = "0123456789abcdef";
    std::string shown;
    for (std::size_t at = 0, size = 0; at < text.size(); at += size) {
        std::uint32_t character = 0;
        size = readCharacter(std::string_view(text).substr(at), character);
        if (size > 0 && isPrintable(character)) {
            shown.append(text, at, size);
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

namespace lint {

std::string quote(std::string_view text) {
    std::size_t end = std::min(text.size(), kMaxShown);
    while (end < text.size() && end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80)
        --end;
    return '"' + HZEPMetadataLint::makePrintable(std::string(text.substr(0, end))) + (end < text.size() ? "...\"" : "\"");
}

std::string suggest(std::string_view name, const std::vector<std::string>& known) {
    if (name.size() > kMaxCompared)
        return "";
    std::size_t nearest = 1 + (name.size() < 4 ? 1 : name.size() < 9 ? 2 : 3);
    const std::string* found = nullptr;
    for (const std::string& candidate : known) {
        const std::size_t gap = candidate.size() > name.size() ? candidate.size() - name.size() : name.size() - candidate.size();
        if (candidate.size() > kMaxCompared || gap >= nearest)
            continue;
        if (const std::size_t distance = getDistance(name, candidate); distance < nearest && distance < candidate.size()) {
            nearest = distance;
            found = &candidate;
        }
    }
    return found ? "; did you mean \"" + *found + "\"?" : "";
}

} // namespace lint
