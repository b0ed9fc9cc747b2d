// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HZEPExport.h"
#include "HostFault.h"

#include <cstdint>
#include <string>

class HPLBoard;
class HPLCore;
class HPLDevice;
class HPLPlatform;
class HPLPort;
class HZEPDesignIPInstance;

namespace BasePlatform {
class AvailableResources;
class Board;
class Build;
class Configuration;
class Connectors;
class Core;
class DSA;
class DesignIPs;
class Device;
class Devices;
class FeatureRom;
class File;
class Files;
class GenAppInfo;
class Host;
class IP;
class Images;
class Interfaces;
class Memories;
class Port;
class Root;
} // namespace BasePlatform

/// Fills a hardware platform from the XML metadata of an archive, with the hardware platform file that the archive lists.
class HZEP_EXPORT HZEPDsaXmlReader {
public:
    /// Most bytes that one read takes out of the members listed as "HPFM" and "EMU_XML", each counted as often as it is listed: 256 MiB.
    /// One that goes beyond counts as one that can't be read.
    static constexpr std::uint64_t kMaxListedSize = 256ULL << 20;

    /// The platform stays the caller's and must outlive the reader. Raises HostFileNotFoundException for an empty path and for a missing
    /// archive.
    HZEPDsaXmlReader(std::string path, HPLPlatform* platform);

    /// Reads the whole metadata. False for a file of a newer major version, told as "@74-52@%s" (text), for a document that isn't valid,
    /// "@74-62@%s%s%d" (archive and member, cause, line), and for all other faults, "@74-65@%s%s%s" (member, archive, cause). The
    /// platform may then be partly filled; after "@74-52@%s" only its file name is set.
    bool parseDSA();

    /// The version of the document's schema; the platform is left as it is. Fails as parseDSA does.
    bool getRootVersion(int& major, int& minor);

    /// The archive, member, line and cause of the last failure; nothing without one.
    const HostFault& getFault() const { return fault_; }

private:
    template <class Use>
    bool readRoot_(const std::string& member, const Use& use);
    bool canDsaBeOpened_(const BasePlatform::Root& root, std::string& message) const;
    void parseRoot_(const BasePlatform::Root& root);
    void parseGenAppData_(const BasePlatform::GenAppInfo& info);
    void parseDSA_(const BasePlatform::DSA& dsa);
    void parseHost_(const BasePlatform::Host& host);
    void parseBuild_(const BasePlatform::Build& build);
    void parseBoard_(const BasePlatform::Board& source, HPLBoard& board);
    void parseInterfaces_(const BasePlatform::Interfaces& interfaces);
    void parseMemories_(const BasePlatform::Memories& memories);
    void parseConnectors_(const BasePlatform::Connectors& connectors, HPLBoard& board);
    void parseImages_(const BasePlatform::Images& images, HPLBoard& board);
    void parseDevices_(const BasePlatform::Devices& devices);
    void parseDevice_(const BasePlatform::Device& source, HPLDevice& device);
    void parseCore_(const BasePlatform::Core& source, HPLCore& core);
    void parseAvailableResources_(const BasePlatform::AvailableResources& source, HPLCore& core);
    void parsePort_(const BasePlatform::Port& source, HPLPort& port);
    void parseFiles_(const BasePlatform::Files& files);
    void parseFile_(const BasePlatform::File& source);
    bool takeListed_(const std::string& member);
    void parseHpfm_(const std::string& member);
    void scanEmulations_(const std::string& member);
    void parseFeatureRom_(const BasePlatform::FeatureRom& source);
    void parseDesignIPs_(const BasePlatform::DesignIPs& ips);
    void parseIP_(const BasePlatform::IP& source, HZEPDesignIPInstance& instance);
    void parseConfiguration_(const BasePlatform::Configuration& configuration, HZEPDesignIPInstance& instance);

    HPLPlatform* platform_;
    std::string path_;
    std::uint64_t listedSizeLeft_ = 0;
    HostFault fault_;
};
