// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "FuzzMetadata.h"

/// XML metadata is read or refused, and no exception leaves the reader. What was read can be written as JSON, and as XML unless it lacks
/// what XML demands; what was written is read again and comes back the same.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    silence();
    HPLPlatform platform;
    if (!readXml(std::string(reinterpret_cast<const char*>(data), size), platform))
        return 0;
    writeJson(platform);
    const auto written = writeXml(platform);
    const auto settled = written ? rewriteXml(*written) : written;
    if (settled && rewriteXml(*settled) != settled)
        std::abort();
    return 0;
}
