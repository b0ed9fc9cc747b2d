// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "HZEPVceHardware.h"

#include "JSONObjectWriter.h"

#include <utility>

void HZEPVceHardware::toJSON(zep_platform::JSONObjectWriter& writer) const {
    writer.addKey("arch", getArchAsString());
    if (npiBaseAddress_ != 0)
        writer.addKey("npiBaseAddress", std::to_string(npiBaseAddress_));
    const auto addRows = [&writer](const char* key, int start, int num) {
        if (num == 0)
            return;
        zep_platform::JSONObjectWriter rows;
        rows.addKey("start", std::to_string(start));
        rows.addKey("num", std::to_string(num));
        writer.addKey(key, std::move(rows));
    };
    addRows("shimRows", startShimRow_, numShimRows_);
    addRows("coreRows", startCoreRow_, numCoreRows_);
    addRows("memRows", startMemRow_, numMemRows_);
}

const std::map<HZEPVceHardware::Arch, std::string>& HZEPVceHardware::getArchMap() {
    static const std::map<Arch, std::string> map = {
        {NO_VCE, "NO_VCE"}, {VCE1, "VCE1"}, {VCEML, "VCEML"}, {VCE2P, "VCE2P"}, {VCE2PS, "VCE2PS"}, {VCE2PK, "VCE2PK"},
    };
    return map;
}

std::string HZEPVceHardware::archToString(Arch arch) {
    const auto found = getArchMap().find(arch);
    return found == getArchMap().end() ? "NO_VCE" : found->second;
}

HZEPVceHardware::Arch HZEPVceHardware::stringToArch(const std::string& text) {
    for (const auto& [arch, name] : getArchMap())
        if (name == text)
            return arch;
    return NO_VCE;
}
