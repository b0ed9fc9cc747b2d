// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "FuzzInput.h"
#include "HZEPEmulationExtMetaJsonReader.h"
#include "HZEPEmulationJsonReader.h"
#include "HZEPEmulationJsonWriter.h"
#include "HZEPEmulationXMLReader.h"
#include "HZEPEmulationXMLWriter.h"
#include "HZEPEmulations.h"
#include "HostErrors.h"
#include "HostFileUtils.h"

#include <exception>
#include <optional>

namespace {

const std::uint8_t* bytesOf(const std::string& text) {
    return reinterpret_cast<const std::uint8_t*>(text.data());
}

std::string rewriteXml(const std::string& text, HZEPEmulations& emulations) {
    static const InputFile file(".xml");
    const std::string path = file.write(bytesOf(text), text.size());
    HZEPEmulationXMLReader(path, &emulations).parseXml();
    HZEPEmulationXMLWriter(&emulations, path).writeXml();
    return HostFileUtils::readFile(path);
}

/// Nothing when the text is refused.
std::optional<std::string> rewriteJson(const std::string& text, HZEPEmulations& emulations) {
    static const InputFile file(".json");
    const std::string path = file.write(bytesOf(text), text.size());
    try {
        HZEPEmulationJsonReader(path, &emulations).parseJson();
    } catch (const std::exception&) {
        return {};
    }
    HZEPEmulationJsonWriter(&emulations, path).writeJson();
    return HostFileUtils::readFile(path);
}

void readExtension(const std::string& text) {
    static const InputFile file(".json");
    HZEPEmulations emulations;
    try {
        HZEPEmulationExtMetaJsonReader(file.write(bytesOf(text), text.size()), &emulations).parseJson();
    } catch (const std::exception&) {
    }
}

} // namespace

/// Emulation metadata is read or refused; what was read can be written, and from then on comes back the same.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    silence();
    const std::string text(reinterpret_cast<const char*>(data), size);
    HZEPEmulations first, second;
    if (text.find_first_not_of(" \t\r\n\xef\xbb\xbf") == text.find('<')) {
        const std::string written = rewriteXml(text, first);
        if (rewriteXml(written, second) != written)
            std::abort();
        return 0;
    }
    readExtension(text);
    const auto written = rewriteJson(text, first);
    if (written && rewriteJson(*written, second) != written)
        std::abort();
    return 0;
}
