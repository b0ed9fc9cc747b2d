// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HostConvert.h"

#include <cstring>

namespace {

int digitValue(char c) {
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    return -1;
}

} // namespace

std::string HostConvert::dataToHexLittleEndian(const void* data, std::size_t size) {
    static const char digits[] = "0123456789abcdef";
    const auto* bytes = static_cast<const unsigned char*>(data);
    std::string text;
    text.reserve(2 * size);
    for (std::size_t i = size; i > 0; --i) {
        text += digits[bytes[i - 1] >> 4];
        text += digits[bytes[i - 1] & 15];
    }
    return text;
}

bool HostConvert::hexToDataLittleEndian(const std::string& text, void* data, std::size_t size) {
    auto* bytes = static_cast<unsigned char*>(data);
    std::memset(bytes, 0, size);
    const bool prefixed = text.size() > 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X');
    const std::size_t first = prefixed ? 2 : 0;
    bool fits = text.size() > first;
    for (std::size_t i = text.size(), digit = 0; fits && i > first; --i, ++digit) {
        const int value = digitValue(text[i - 1]);
        if (value < 0 || (value > 0 && digit / 2 >= size))
            fits = false;
        else if (digit / 2 < size)
            bytes[digit / 2] = static_cast<unsigned char>(bytes[digit / 2] | value << (digit % 2 * 4));
    }
    if (!fits)
        std::memset(bytes, 0, size);
    return fits;
}

std::string HostConvert::trimLeading(const std::string& text, char character) {
    const auto first = text.find_first_not_of(character);
    if (first != std::string::npos)
        return text.substr(first);
    return text.empty() ? text : text.substr(text.size() - 1);
}
