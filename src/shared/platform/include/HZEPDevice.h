// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HZEPExport.h"

#include <cstdint>
#include <string>
#include <utility>

/// A device of a platform by name, with its part string and the components of that.
class HZEP_EXPORT HZEPDevice {
public:
    HZEPDevice() = default;
    HZEPDevice(const HZEPDevice&) = delete;
    HZEPDevice& operator=(const HZEPDevice&) = delete;

    const std::string& getName() const { return name_; }
    void setName(std::string name) { name_ = std::move(name); }

    const std::string& getFpgaPart() const { return fpgaPart_; }
    /// Stores "architecture:device:package:speed[:temperature grade[:[static power:]revision]]" and splits it up. An empty text
    /// changes no component. Raises HostAlgException for less than 4 or more than 7 parts, the text being stored already.
    void setFpgaPart(const std::string& part);

    /// The composed name, for example "tlv9pz-fsgd2104-2-e".
    std::string getPartName() const { return partName_; }
    std::string getPartArch() const { return partArch_; }
    std::string getPartDevice() const { return partDevice_; }
    std::string getPartPackage() const { return partPackage_; }
    std::string getPartSpeed() const { return partSpeed_; }
    std::string getPartTempGrade() const { return partTempGrade_; }
    std::string getPartStaPower() const { return partStaPower_; }
    std::string getPartRevision() const { return partRevision_; }

    std::uint32_t getNumSLRs() const { return numSLRs_; }
    void setNumSLRs(std::uint32_t numSLRs) { numSLRs_ = numSLRs; }

private:
    std::string convertFpgaDeviceToPartData_(const std::string& part);

    std::string name_;
    std::string fpgaPart_;
    std::string partName_;
    std::string partArch_;
    std::string partDevice_;
    std::string partPackage_;
    std::string partSpeed_;
    std::string partTempGrade_;
    std::string partStaPower_;
    std::string partRevision_;
    std::uint32_t numSLRs_ = 0;
};
