// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "FuzzMetadata.h"

#include <exception>

/// JSON metadata that XML has room for goes there and back. The XML is read; what is lost is lost after one round, then nothing changes
/// any more. The JSON of what was read is read in its turn.
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
    const auto settled = xml ? rewriteXml(*xml) : xml;
    if (!settled)
        return 0;
    HPLPlatform back;
    if (rewriteXml(*settled) != settled || !readXml(*settled, back))
        std::abort();
    HPLPlatform again;
    if (!HZEPDsaJsonReader(&again).parseJsonString(writeJson(back)))
        std::abort();
    return 0;
}
