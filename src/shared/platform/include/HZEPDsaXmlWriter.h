// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HZEPExport.h"

#include <string>

class HPLBoard;
class HPLCore;
class HPLPlatform;

namespace BasePlatform {
class Board;
class Core;
class DSA;
class InnerCore;
class Root;
} // namespace BasePlatform

/// Writes a hardware platform as the XML metadata that HZEPDsaXmlReader reads.
///
/// Lost on the way are: what only JSON metadata holds (clocks of the platform, bus interfaces and NoC, IP parameters, partitions, flash,
/// ids, vector engines, explicit design intent, what is supported); all feature ROMs and interfaces but the last; the host, and the PCIe
/// id of what is no flat shell, unless partial reconfiguration is in use; the core's DR base address, which is written and not read. The
/// SLRs of a pblock come back as one name.
class HZEP_EXPORT HZEPDsaXmlWriter {
public:
    /// The platform stays the caller's.
    HZEPDsaXmlWriter(HPLPlatform* platform, std::string path);

    /// The file appears whole or not at all. Raises HostXMLException when it can't be written, and lmx60::lmx_exception for a platform
    /// that the schema has no room for: one without a device, or with a pblock without resources.
    void writeDSA();

private:
    void writeGenAppInfo_(BasePlatform::Root* root) const;
    void writeDSA_(BasePlatform::Root* root) const;
    void writeHostArchitecture_(BasePlatform::DSA* dsa) const;
    void writeBuildFlow_(BasePlatform::DSA* dsa) const;
    void writeBoard_(BasePlatform::DSA* dsa) const;
    void writeInterfaces_(BasePlatform::Board* target) const;
    void writeMemories_(BasePlatform::Board* target) const;
    void writeConnectors_(BasePlatform::Board* target) const;
    void writeImages_(BasePlatform::Board* target, const HPLBoard* board) const;
    void writePCIeId_(BasePlatform::Board* target, const HPLBoard* board) const;
    void writeDesignIPs_(BasePlatform::DSA* dsa) const;
    void writeDevices_(BasePlatform::DSA* dsa) const;
    void writeCore_(HPLCore* core, BasePlatform::Core& target) const;
    void writeAvailableResources_(const HPLCore& core, BasePlatform::InnerCore& inner) const;
    void writeFiles_(BasePlatform::DSA* dsa) const;
    void writeFeatureRom_(BasePlatform::DSA* dsa) const;

    HPLPlatform* platform_;
    std::string path_;
};
