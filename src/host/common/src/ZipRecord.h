// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// The little-endian records that zip archives are made of.
namespace zip_record {

inline void put(std::string& out, std::uint64_t value, int bytes) {
    for (int i = 0; i < bytes; ++i)
        out += static_cast<char>(value >> (8 * i));
}

/// Reads numbers and texts one after another; past the end there are zeros and shorter texts, so callers check left().
class Reader {
public:
    explicit Reader(std::string_view bytes) : bytes_(bytes) {}

    std::size_t left() const { return bytes_.size(); }
    void skip(std::size_t size) { bytes_.remove_prefix(std::min(size, left())); }

    std::string_view text(std::size_t size) {
        const std::string_view text = bytes_.substr(0, size);
        skip(size);
        return text;
    }

    std::uint64_t number(std::size_t size) {
        std::uint64_t value = 0;
        const std::string_view bytes = text(size);
        for (std::size_t i = bytes.size(); i-- > 0;)
            value = value << 8 | static_cast<unsigned char>(bytes[i]);
        return value;
    }
    std::uint16_t u16() { return static_cast<std::uint16_t>(number(2)); }
    std::uint32_t u32() { return static_cast<std::uint32_t>(number(4)); }
    std::uint64_t u64() { return number(8); }

private:
    std::string_view bytes_;
};

} // namespace zip_record
