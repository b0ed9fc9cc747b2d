// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HostExport.h"

#include <cstddef>
#include <string>

/// Conversions between bytes and hexadecimal text.
class HOST_EXPORT HostConvert {
public:
    /// Two lower-case digits a byte, the last byte first: the number that the bytes are in little-endian order.
    static std::string dataToHexLittleEndian(const void* data, std::size_t size);

    /// The reverse: reads hexadecimal text, "0x" in front allowed, into `size` bytes, filled up with zeros. False, and zeroed
    /// bytes, for a text that is no hexadecimal number or does not fit.
    static bool hexToDataLittleEndian(const std::string& text, void* data, std::size_t size);

    /// The text without its leading `character`s; a text of nothing else keeps the last one.
    static std::string trimLeading(const std::string& text, char character);
};
