// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "DsaXmlDocument.h"
#include "HZEPDsaXmlReader.h"
#include "TempDir.h"
#include "XmlMetadataSupport.h"
#include "ZipBuilder.h"

#include <utility>

using Members = std::vector<std::pair<std::string, std::string>>;

/// An archive "a.dsa" with this XML metadata, and further members.
inline std::string makeDsa(const TempDir& dir, const std::string& xml, const Members& members = {}) {
    ZipBuilder zip(dir.path("a.dsa"));
    zip.add("dsa.xml", xml);
    for (const auto& [name, text] : members)
        zip.add(name, text);
    return zip.write();
}

inline bool readDsa(HPLPlatform& platform, const std::string& xml, const Members& members = {}) {
    TempDir dir;
    return HZEPDsaXmlReader(makeDsa(dir, xml, members), &platform).parseDSA();
}
