// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "FuzzInput.h"
#include "HPLPlatform.h"
#include "HZEPDsaJsonReader.h"
#include "JSONObjectWriter.h"

#include <exception>
#include <sstream>

namespace {

std::string rewrite(const std::string& document) {
    HPLPlatform platform;
    HZEPDsaJsonReader(&platform).parseJsonString(document);
    zep_platform::JSONObjectWriter writer;
    platform.toJSON(writer);
    std::ostringstream out;
    writer.write(out);
    return out.str();
}

} // namespace

/// A document is read or refused with an exception. One that was read can be written, and what was written once is settled: it is
/// read again without complaint, and from then on comes back the same.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    silence();
    HPLPlatform platform;
    try {
        if (!HZEPDsaJsonReader(&platform).parseJsonString(std::string(reinterpret_cast<const char*>(data), size)))
            return 0;
    } catch (const std::exception&) {
        return 0;
    }
    zep_platform::JSONObjectWriter writer;
    platform.toJSON(writer);
    std::ostringstream out;
    writer.write(out);
    const std::string settled = rewrite(out.str());
    if (rewrite(settled) != settled)
        std::abort();
    return 0;
}
