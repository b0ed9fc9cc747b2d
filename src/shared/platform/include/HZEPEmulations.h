// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HZEPEmuFeatureRom.h"
#include "HZEPEmulation.h"
#include "HZEPExport.h"
#include "HZEPOwnedList.h"

#include <string>
#include <utility>
#include <vector>

/// The emulation metadata of a platform: its emulations and feature ROMs, which it owns, in the order in which they were created.
class HZEP_EXPORT HZEPEmulations {
public:
    HZEPEmulations() = default;
    HZEPEmulations(const HZEPEmulations&) = delete;
    HZEPEmulations& operator=(const HZEPEmulations&) = delete;

    HZEPEmulation* createEmulation() { return emulations_.add(); }
    const std::vector<HZEPEmulation*>& getEmulations() const { return emulations_.items(); }
    HZEPEmuFeatureRom* createFeatureRom() { return featureRoms_.add(); }
    const std::vector<HZEPEmuFeatureRom*>& getFeatureRoms() const { return featureRoms_.items(); }

    const std::string& getPfmMetadataVersion() const { return pfmMetadataVersion_; }
    void setPfmMetadataVersion(std::string version) { pfmMetadataVersion_ = std::move(version); }
    unsigned int getVersionMajor() const { return versionMajor_; }
    void setVersionMajor(unsigned int version) { versionMajor_ = version; }
    unsigned int getVersionMinor() const { return versionMinor_; }
    void setVersionMinor(unsigned int version) { versionMinor_ = version; }

    /// "hw_emu.xml", "hw_emu.json", "hw_emu" and "prop.json".
    static const std::string& getEmulationXmlFilename();
    static const std::string& getEmulationJsonFilename();
    static const std::string& getEmuDirName();
    static const std::string& getEmulationPropJsonFilename();

private:
    HZEPOwnedList<HZEPEmulation> emulations_;
    HZEPOwnedList<HZEPEmuFeatureRom> featureRoms_;
    std::string pfmMetadataVersion_;
    unsigned int versionMajor_ = 0;
    unsigned int versionMinor_ = 0;
};
