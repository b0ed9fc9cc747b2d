// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "PackText.h"

#include <zlib.h>

#include <stdexcept>

std::string packText(const std::string& text) {
    std::string packed("HZXP\1\0\0\0", 8);
    for (int shift = 0; shift < 64; shift += 8)
        packed += static_cast<char>(text.size() >> shift & 0xFF);
    std::string bytes(compressBound(text.size()), '\0');
    uLongf size = bytes.size();
    if (compress(reinterpret_cast<Bytef*>(bytes.data()), &size, reinterpret_cast<const Bytef*>(text.data()), text.size()) != Z_OK)
        throw std::runtime_error("cannot compress");
    return packed + bytes.substr(0, size);
}
