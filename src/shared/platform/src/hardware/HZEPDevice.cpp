// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HZEPDevice.h"

#include "HostErrors.h"

#include <vector>

namespace {

std::vector<std::string> splitAtColons(const std::string& text) {
    std::vector<std::string> parts;
    std::size_t begin = 0;
    for (std::size_t colon = text.find(':'); colon != std::string::npos; begin = colon + 1, colon = text.find(':', begin))
        parts.push_back(text.substr(begin, colon - begin));
    parts.push_back(text.substr(begin));
    return parts;
}

} // namespace

void HZEPDevice::setFpgaPart(const std::string& part) {
    fpgaPart_ = part;
    convertFpgaDeviceToPartData_(part);
}

std::string HZEPDevice::convertFpgaDeviceToPartData_(const std::string& part) {
    if (part.empty())
        return "";
    const std::vector<std::string> parts = splitAtColons(part);
    // The operation's name in the text is an old one, which callers look for.
    if (parts.size() < 4 || parts.size() > 7)
        throw HostAlgException("HZEPDevice::convertFpgaDeviceToPart_ - FPGA Device (string) format not as expected: '" + part + "'");

    partArch_ = parts[0];
    partDevice_ = parts[1];
    partPackage_ = parts[2];
    partSpeed_ = parts[3];
    partName_ = partDevice_ + partPackage_ + partSpeed_;
    if (parts.size() >= 5) {
        partTempGrade_ = parts[4];
        partName_ = partDevice_ + "-" + partPackage_ + partSpeed_ + "-" + partTempGrade_;
    }
    if (parts.size() == 6) {
        partRevision_ = parts[5];
        partName_ += "-" + partRevision_;
    } else if (parts.size() == 7) {
        partStaPower_ = parts[5];
        partRevision_ = parts[6];
        partName_ += "-" + partStaPower_ + "-" + partRevision_;
    }
    return partName_;
}
