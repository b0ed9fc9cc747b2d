// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "FuzzInput.h"
#include "HPLPlatform.h"
#include "HZEPDsaJsonReader.h"
#include "HZEPDsaXmlReader.h"
#include "HZEPDsaXmlWriter.h"
#include "HostErrors.h"
#include "HostFileUtils.h"
#include "JSONObjectWriter.h"
#include "ZipBuilder.h"
#include "lmx60.h"

#include <optional>
#include <sstream>

/// Fills the platform from a text of XML metadata, in an archive of this process; false when it is refused.
inline bool readXml(const std::string& text, HPLPlatform& platform) {
    static const InputFile archive(".dsa");
    const std::string bytes = ZipBuilder().addStored("dsa.xml", text).bytes();
    return HZEPDsaXmlReader(archive.write(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()), &platform).parseDSA();
}

/// The platform as XML metadata; nothing when XML has no room for it.
inline std::optional<std::string> writeXml(HPLPlatform& platform) {
    static const InputFile file(".xml");
    const std::string path = file.write(nullptr, 0);
    try {
        HZEPDsaXmlWriter(&platform, path).writeDSA();
    } catch (const lmx60::lmx_exception&) {
        return {};
    } catch (const HostXMLException&) {
        return {};
    }
    return HostFileUtils::readFile(path);
}

/// The same with the XML of the platform that reading it again gives.
inline std::optional<std::string> rewriteXml(const std::string& text) {
    HPLPlatform platform;
    if (!readXml(text, platform))
        std::abort();
    return writeXml(platform);
}

inline std::string writeJson(const HPLPlatform& platform) {
    zep_platform::JSONObjectWriter writer;
    platform.toJSON(writer);
    std::ostringstream out;
    writer.write(out);
    return out.str();
}
