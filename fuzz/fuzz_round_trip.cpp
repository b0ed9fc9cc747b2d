// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "FuzzMetadata.h"

#include <exception>

/// JSON metadata that XML has room for goes there and back: the XML is read, and the JSON and XML of what it gave no longer change.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    silence();
    HPLPlatform source;
    try {
        if (!HZEPDsaJsonReader(&source).parseJsonString(std::string(reinterpret_cast<const char*>(data), size)))
            return 0;
    } catch (const std::exception&) {
        return 0;
    }
    const auto xml = writeXml(source);
    if (!xml)
        return 0;
    HPLPlatform first;
    if (!readXml(*xml, first))
        std::abort();
    const auto again = writeXml(first);
    if (!again)
        return 0;
    HPLPlatform second;
    if (!readXml(*again, second) || writeXml(second) != again || writeJson(second) != writeJson(first))
        std::abort();
    return 0;
}
