// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HZEPDsaXmlReader.h"

#include "../loading/ReaderFault.h"
#include "BasePlatformLMX.h"
#include "HPLPlatform.h"
#include "HZEPEmulationXMLReader.h"
#include "HZEPEmulations.h"
#include "HZEPHpfmReader.h"
#include "HostEnv.h"
#include "HostErrors.h"
#include "HostFile.h"
#include "HostMsgMgr.h"
#include "HostPathUtils.h"
#include "HostZip.h"
#include "HostZipMember.h"
#include "HostZipSession.h"
#include "LmxFile.h"
#include "RomName.h"

#include <boost/algorithm/string/predicate.hpp>
#include <boost/algorithm/string/split.hpp>

#include <cstdlib>
#include <iostream>
#include <memory>
#include <new>

namespace {

bool isWord(std::string_view text, std::string_view word) {
    return text.size() == word.size() && boost::algorithm::iequals(text, word);
}

bool isTrue(std::string_view text) {
    return isWord(text, "true");
}

} // namespace

HZEPDsaXmlReader::HZEPDsaXmlReader(std::string path, HPLPlatform* platform) : platform_(platform), path_(std::move(path)) {
    if (path_.empty() || !HostPathUtils::exists(path_))
        throw HostFileNotFoundException(path_);
}

bool HZEPDsaXmlReader::parseDSA() {
    listedSizeLeft_ = kMaxListedSize;
    platform_->setPlatformFile(HostFile::getCanonicalName(path_));
    const HostZipSession session(path_);
    return readRoot_(platform_->getXmlFileName(), [this](const BasePlatform::Root& root) {
        std::string message;
        if (!canDsaBeOpened_(root, message)) {
            fault_ = {path_, platform_->getXmlFileName(), 0, 0, message};
            HostMsgMgr::getGlobal().send("platform", HostMsgMgr::Error, "@74-52@%s", {message}, fault_);
            return false;
        }
        parseRoot_(root);
        return true;
    });
}

bool HZEPDsaXmlReader::getRootVersion(int& major, int& minor) {
    // A platform of its own for the member's name, so that the caller's keeps the name of its file.
    HPLPlatform named;
    named.setPlatformFile(HostFile::getCanonicalName(path_));
    named.setIsChildHardwareEmuPlatform(platform_->isChildHardwareEmuPlatform());
    return readRoot_(named.getXmlFileName(), [&](const BasePlatform::Root& root) {
        major = static_cast<int>(root.GetVersionMajor());
        minor = static_cast<int>(root.GetVersionMinor());
        return true;
    });
}

/// Hands the member's document to `use`; answers with its answer, or reports what went wrong and answers false.
template <class Use>
bool HZEPDsaXmlReader::readRoot_(const std::string& member, const Use& use) {
    HostMsgMgr& messages = HostMsgMgr::getGlobal();
    try {
        bool answer = false;
        const auto failure = catchLmxFailure([&] {
            BasePlatform::Root root;
            lmx60::elmx_error code;
            {
                const std::string text = HostZip::readMember(path_, member, HostZip::kMaxMetadataSize);
                code = root.Unmarshal(text.data(), text.size(), nullptr);
            }
            if (code == lmx60::error_none)
                answer = use(root);
            return code;
        });
        if (!failure)
            return answer;
        fault_ = failure->toFault(path_, member);
        messages.send("platform", HostMsgMgr::CriticalWarning, "@74-62@%s%s%d",
                      {path_ + HostFile::getDirSeparator() + member, failure->text, std::to_string(failure->line)}, fault_);
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception& e) {
        fault_ = toReaderFault(e, path_, member);
        messages.send("platform", HostMsgMgr::CriticalWarning, "@74-65@%s%s%s", {member, path_, e.what()}, fault_);
    }
    return false;
}

/// The minor version plays no part, and a platform before synthesis opens whatever its version.
bool HZEPDsaXmlReader::canDsaBeOpened_(const BasePlatform::Root& root, std::string& message) const {
    const BasePlatform::Build& build = root.GetDSA().GetBuild();
    if (build.IssetPlatformState() && isWord(build.GetPlatformStateUtf8(), "pre_synth"))
        return true;
    const int major = static_cast<int>(root.GetVersionMajor());
    const int current = static_cast<int>(BasePlatform::Root().GetVersionMajor());
    if (major <= current)
        return true;
    message = "Hardware Platform '" + path_ + "' (version " + std::to_string(major) + ") is newer than the current version " +
              std::to_string(current) + " (" + HostEnv::getMajor() + "." + HostEnv::getMinor() + ")";
    return false;
}

void HZEPDsaXmlReader::parseRoot_(const BasePlatform::Root& root) {
    parseGenAppData_(root.GetGenAppInfo());
    parseDSA_(root.GetDSA());
}

void HZEPDsaXmlReader::parseGenAppData_(const BasePlatform::GenAppInfo& info) {
    platform_->setGeneratedName(info.GetNameUtf8());
    platform_->setGeneratedVersion(info.GetVersionUtf8());
    platform_->setGeneratedChangeList(static_cast<std::uint32_t>(info.GetCL()));
    if (info.IssetTimeStamp())
        platform_->setGeneratedTimestamp(info.GetTimeStampUtf8());
}

void HZEPDsaXmlReader::parseDSA_(const BasePlatform::DSA& dsa) {
    platform_->setVendor(dsa.GetVendorUtf8());
    platform_->setBoardId(dsa.GetBoardIdUtf8());
    platform_->setName(dsa.GetNameUtf8());
    platform_->setVersionMajor(dsa.GetVersionMajor());
    platform_->setVersionMinor(dsa.GetVersionMinor());
    platform_->setDescription(dsa.GetDescriptionUtf8());
    platform_->setOldFeatureRomTime(dsa.GetFeatureRomTimestamp());
    if (dsa.IssetDcpLogicFunctionStripped())
        platform_->setDcpFuncStripped(isTrue(dsa.GetDcpLogicFunctionStrippedUtf8()));
    if (dsa.IssetDcpEncrypt())
        platform_->setDcpEncrypt(isTrue(dsa.GetDcpEncryptUtf8()));
    if (dsa.IssetUnified())
        platform_->setUnifiedPlatform(isTrue(dsa.GetUnifiedUtf8()));
    // The oldest files don't say; what they were packed with tells.
    platform_->setExpandable(dsa.IssetFixed() ? !isTrue(dsa.GetFixedUtf8())
                                              : !HostZip::containsFile(path_, "hwdef.xml") && !HostZip::containsFile(path_, "sysdef.xml"));
    if (dsa.IssetDefaultOutputType())
        platform_->setDefaultOutputType(dsa.GetDefaultOutputTypeUtf8());
    if (dsa.IssetHost())
        parseHost_(dsa.GetHost());
    parseBuild_(dsa.GetBuild());
    parseBoard_(dsa.GetBoard(), platform_->getBoard());
    parseDevices_(dsa.GetDevices());
    parseFiles_(dsa.GetFiles());
    if (dsa.IssetFeatureRom())
        parseFeatureRom_(dsa.GetFeatureRom());
    if (dsa.IssetDesignIPs())
        parseDesignIPs_(dsa.GetDesignIPs());
}

void HZEPDsaXmlReader::parseHost_(const BasePlatform::Host& host) {
    platform_->setHostArch(host.GetArchitectureUtf8());
    if (host.IssetInterface())
        platform_->setHostInterface(host.GetInterfaceUtf8());
}

void HZEPDsaXmlReader::parseBuild_(const BasePlatform::Build& build) {
    using Intent = HZEPDesignIntentStorage;
    if (build.IssetPlatformState())
        platform_->setPlatformState(build.GetPlatformStateUtf8());
    const bool usesPr = build.IssetUsesPR() && isTrue(build.GetUsesPRUtf8());
    if (build.IssetUsesPR())
        platform_->setUsesPR(usesPr);
    platform_->setComputedDesignIntent(Intent::DataCenter, usesPr);
    platform_->setComputedDesignIntent(Intent::Embedded, !usesPr);
    platform_->setComputedDesignIntent(Intent::ExternalHost, usesPr);
    platform_->setComputedDesignIntent(Intent::ServerManaged, usesPr);
    if (build.IssetTopModuleName())
        platform_->setTopModuleName(build.GetTopModuleNameUtf8());
    if (build.IssetStaticSynthCheckpoint())
        platform_->setPlatformState("synth");
    if (build.IssetAcceleratorBinaryFormat())
        platform_->setAcceleratorBinaryFormat(build.GetAcceleratorBinaryFormatUtf8());
    if (build.IssetAcceleratorBinaryContent())
        platform_->setAcceleratorBinaryContent(build.GetAcceleratorBinaryContentUtf8());
    if (!build.IssetValidBinaryContentValues()) {
        platform_->addValidBinaryContentValue("dcp");
        platform_->addValidBinaryContentValue("bitstream");
    } else if (const std::string values = build.GetValidBinaryContentValuesUtf8(); !values.empty()) {
        std::vector<std::string> pieces;
        boost::algorithm::split(pieces, values, [](char c) { return c == ','; });
        for (const std::string& piece : pieces)
            platform_->addValidBinaryContentValue(piece);
    }
    if (build.IssetBvlcCompileSwitches()) {
        const BasePlatform::BvlcCompileSwitches& switches = build.GetBvlcCompileSwitches();
        for (std::size_t i = 0; i < switches.SizeBvlcCompileSwitch(); ++i)
            platform_->addBvlcCompileXpSwitch(switches.GetBvlcCompileSwitch(i).GetValueUtf8());
    }
    if (build.IssetBvlcLinkSwitches()) {
        const BasePlatform::BvlcLinkSwitches& switches = build.GetBvlcLinkSwitches();
        for (std::size_t i = 0; i < switches.SizeBvlcLinkSwitch(); ++i)
            platform_->addBvlcLinkXpSwitch(switches.GetBvlcLinkSwitch(i).GetValueUtf8());
    }
}

void HZEPDsaXmlReader::parseBoard_(const BasePlatform::Board& source, HPLBoard& board) {
    board.setName(source.GetNameUtf8());
    board.setVendor(source.GetVendorUtf8());
    board.setPart(source.GetPartUtf8());
    if (source.IssetBoardPart())
        board.setBoardPart(source.GetBoardPartUtf8());
    if (source.IssetInterfaces())
        parseInterfaces_(source.GetInterfaces());
    if (source.IssetMemories())
        parseMemories_(source.GetMemories());
    if (source.IssetConnectors())
        parseConnectors_(source.GetConnectors(), board);
    parseImages_(source.GetImages(), board);
    if (source.IssetPCIeId()) {
        const BasePlatform::PCIeId& id = source.GetPCIeId();
        HPLPCIeId& pcieId = board.getWriteablePCIeId();
        pcieId.setDevice(id.GetDeviceUtf8());
        pcieId.setVendor(id.GetVendorUtf8());
        pcieId.setSubsystem(id.GetSubsystemUtf8());
        if (id.IssetFeatureId())
            pcieId.setFeatureId(id.GetFeatureIdUtf8());
    }
}

void HZEPDsaXmlReader::parseInterfaces_(const BasePlatform::Interfaces& interfaces) {
    const BasePlatform::Interface& source = interfaces.GetInterface();
    HPLInterface& interface = *platform_->addInterface();
    interface.setId(source.GetIdUtf8());
    interface.setType(source.GetTypeUtf8());
    interface.setName(source.GetNameUtf8());
}

void HZEPDsaXmlReader::parseMemories_(const BasePlatform::Memories& memories) {
    for (std::size_t i = 0; i < memories.SizeMemory(); ++i) {
        const BasePlatform::Memory& source = memories.GetMemory(i);
        HPLMemory& memory = *platform_->addMemory();
        memory.setName(source.GetNameUtf8());
        memory.setType(source.GetTypeUtf8());
        memory.setSize(source.GetSizeUtf8());
        memory.setHighestAddress(static_cast<std::uint64_t>(source.GetHighestAddress()));
        memory.setLowestAddress(static_cast<std::uint64_t>(source.GetLowestAddress()));
        if (!source.IssetConfig())
            continue;
        const BasePlatform::Config& config = source.GetConfig();
        for (std::size_t p = 0; p < config.SizeParam(); ++p)
            memory.addConfigParam(config.GetParam(p).GetNameUtf8(), config.GetParam(p).GetValueUtf8());
    }
}

void HZEPDsaXmlReader::parseConnectors_(const BasePlatform::Connectors& connectors, HPLBoard& board) {
    for (std::size_t i = 0; i < connectors.SizeConnector(); ++i) {
        const BasePlatform::Connector& source = connectors.GetConnector(i);
        const std::string connectedName = source.GetConnectedConnectorUtf8();
        board.addDimmConnector(source.GetNameUtf8(), source.GetDisplayNameUtf8(), source.GetTypeUtf8(), connectedName,
                               source.GetConnectedConnectorDisplayNameUtf8(), !connectedName.empty(), isTrue(source.GetIsLockedUtf8()));
    }
}

void HZEPDsaXmlReader::parseImages_(const BasePlatform::Images& images, HPLBoard& board) {
    for (std::size_t i = 0; i < images.SizeImg(); ++i) {
        const BasePlatform::Img& image = images.GetImg(i);
        const std::string type = image.GetTypeUtf8();
        if (type == "HDPI")
            board.setImgFileHdpi(image.GetFileUtf8());
        else if (type == "MDPI")
            board.setImgFileMdpi(image.GetFileUtf8());
        else if (type == "LDPI")
            board.setImgFileLdpi(image.GetFileUtf8());
    }
}

void HZEPDsaXmlReader::parseDevices_(const BasePlatform::Devices& devices) {
    for (std::size_t i = 0; i < devices.SizeDevice(); ++i)
        parseDevice_(devices.GetDevice(i), *platform_->addDevice());
}

void HZEPDsaXmlReader::parseDevice_(const BasePlatform::Device& source, HPLDevice& device) {
    device.setName(source.GetNameUtf8());
    device.setType(source.GetTypeUtf8());
    if (source.IssetFpgaDevice())
        device.setFpgaPart(source.GetFpgaDeviceUtf8());
    if (source.IssetSystemClocks()) {
        const BasePlatform::SystemClocks& clocks = source.GetSystemClocks();
        for (std::size_t i = 0; i < clocks.SizeSystemClock(); ++i)
            device.addSystemClock(clocks.GetSystemClock(i).GetNameUtf8(), clocks.GetSystemClock(i).GetFrequencyUtf8());
    }
    parseCore_(source.GetCore(), device.getCore());
}

void HZEPDsaXmlReader::parseCore_(const BasePlatform::Core& source, HPLCore& core) {
    core.setName(source.GetNameUtf8());
    core.setType(source.GetTypeUtf8());
    core.setNumComputeUnits(source.GetComputeUnits());
    if (source.IssetClockFreq())
        core.setClockFreq(source.GetClockFreqUtf8());
    if (source.IssetInstancePath())
        core.setInstPath(source.GetInstancePathUtf8());
    if (source.IssetParentRMInstancePath())
        core.setParentRMInstPath(source.GetParentRMInstancePathUtf8());
    if (source.IssetVLNV())
        core.setVlnv(source.GetVLNVUtf8());
    if (source.IssetDRBDName())
        core.setDRBDName(source.GetDRBDNameUtf8());
    // DRBaseAddress is written and not read.
    if (!source.IssetInnerCore())
        return;
    const BasePlatform::InnerCore& inner = source.GetInnerCore();
    if (inner.IssetConfig()) {
        const BasePlatform::InnerCoreConfig& config = inner.GetConfig();
        for (std::size_t i = 0; i < config.SizeParam(); ++i)
            core.addConfigParam(config.GetParam(i).GetNameUtf8(), config.GetParam(i).GetValueUtf8());
    }
    for (std::size_t i = 0; i < inner.SizePort(); ++i)
        parsePort_(inner.GetPort(i), *core.addPort());
    if (inner.IssetAvailableResources())
        parseAvailableResources_(inner.GetAvailableResources(), core);
}

void HZEPDsaXmlReader::parseAvailableResources_(const BasePlatform::AvailableResources& source, HPLCore& core) {
    const auto take = [this, &core](const std::string& text, void (HPLCore::*setText)(std::string),
                                    void (HZEPHardwarePlatform::*setNumber)(int)) {
        (core.*setText)(text);
        if (!text.empty())
            (platform_->*setNumber)(static_cast<int>(std::strtol(text.c_str(), nullptr, 10)));
    };
    take(source.GetBRAMUtf8(), &HPLCore::setBRAMCount, &HZEPHardwarePlatform::setBRAMCount);
    take(source.GetDSPUtf8(), &HPLCore::setDSPCount, &HZEPHardwarePlatform::setDSPCount);
    take(source.GetLUTUtf8(), &HPLCore::setLUTCount, &HZEPHardwarePlatform::setLUTCount);
    core.setRegisterCount(source.GetREGUtf8());
    for (std::size_t i = 0; i < source.SizePBlock(); ++i) {
        const BasePlatform::PBlock& block = source.GetPBlock(i);
        const std::string name = block.GetNameUtf8();
        // The list is kept as one name, commas and all.
        if (block.IssetValidSLRs())
            core.addSLRInfo(name, block.GetValidSLRsUtf8());
        for (std::size_t r = 0; r < block.SizeResource(); ++r)
            core.addResourceInfo(name, block.GetResource(r).GetNameUtf8(), block.GetResource(r).GetValUtf8());
    }
}

void HZEPDsaXmlReader::parsePort_(const BasePlatform::Port& source, HPLPort& port) {
    port.setName(source.GetNameUtf8());
    port.setType(source.GetTypeUtf8());
    if (source.IssetMode())
        port.setMode(source.GetModeUtf8());
    if (source.IssetProtocol())
        port.setProtocol(source.GetProtocolUtf8());
    if (source.IssetBase())
        port.setBase(source.GetBaseUtf8());
    if (source.IssetRange())
        port.setRange(source.GetRangeUtf8());
    if (source.IssetDataWidth())
        port.setDataWidth(source.GetDataWidthUtf8());
    if (source.IssetIdWidth())
        port.setIdWidth(source.GetIdWidthUtf8());
    if (source.IssetUserWidth())
        port.setUserWidth(source.GetUserWidthUtf8());
    if (source.IssetAddressWidth())
        port.setAddrWidth(source.GetAddressWidthUtf8());
    if (source.IssetAddressOffset())
        port.setAddrOffset(source.GetAddressOffsetUtf8());
    if (source.IssetAddressRange())
        port.setAddrRange(source.GetAddressRangeUtf8());
    if (source.IssetMaxBurstLength())
        port.setMaxBurstLength(source.GetMaxBurstLengthUtf8());
    if (source.IssetFrequency())
        port.setFrequency(source.GetFrequencyUtf8());
    if (source.IssetDirection())
        port.setDirection(source.GetDirectionUtf8());
    if (source.IssetPolarity())
        port.setPolarity(source.GetPolarityUtf8());
    if (!source.IssetAddressSegments())
        return;
    const BasePlatform::AddressSegments& segments = source.GetAddressSegments();
    for (std::size_t i = 0; i < segments.SizeAddressSegment(); ++i) {
        const BasePlatform::AddressSegment& from = segments.GetAddressSegment(i);
        auto segment = std::make_unique<HPLAddressSegment>();
        segment->setBase(from.GetBaseUtf8());
        segment->setName(from.GetNameUtf8());
        segment->setRange(from.GetRangeUtf8());
        segment->setSlaveName(from.GetSlaveUtf8());
        port.addAddressSegment(segment.release());
    }
}

void HZEPDsaXmlReader::parseFiles_(const BasePlatform::Files& files) {
    for (std::size_t i = 0; i < files.SizeFile(); ++i)
        parseFile_(files.GetFile(i));
}

void HZEPDsaXmlReader::parseFile_(const BasePlatform::File& source) {
    const std::string name = source.GetNameUtf8();
    HPLFile& file = *platform_->addFile(source.GetTypeUtf8(), name);
    if (source.IssetProcessingOrder())
        file.setProcessingOrder(source.GetProcessingOrderUtf8());
    if (source.IssetUsedIn())
        file.setUsedIn(source.GetUsedInUtf8());
    if (isWord(source.GetTypeUtf8(), "HPFM"))
        parseHpfm_(name);
    if (isWord(source.GetTypeUtf8(), "EMU_XML"))
        scanEmulations_(name);
}

/// A small archive could list one large member any number of times, or many that share their bytes. False for one member too many, which
/// is not read.
bool HZEPDsaXmlReader::takeListed_(const std::string& member) {
    try {
        const std::uint64_t size = HostZipMember(path_, member, HostZip::kMaxMetadataSize).getSize();
        if (size > listedSizeLeft_)
            return false;
        listedSizeLeft_ -= size;
    } catch (const HostError&) {
        // Whoever reads it says so.
    }
    return true;
}

void HZEPDsaXmlReader::scanEmulations_(const std::string& member) {
    if (!takeListed_(member)) {
        const std::string cause = "the files listed are read up to " + std::to_string(kMaxListedSize) + " bytes in all";
        HostMsgMgr::getGlobal().send("platform", HostMsgMgr::Error, "@74-24@%s%d", {member, "0"}, {path_, member, 0, 0, cause});
        return;
    }
    HZEPEmulations emulations;
    HZEPEmulationXMLReader::parseFromDsa(path_, member, &emulations);
    for (const HZEPEmulation* emulation : emulations.getEmulations())
        for (const HZEPEmulationFile* file : emulation->getFiles())
            if (file->getType() == "EMU_HPFM")
                platform_->setSupportsHWEmulation(true);
}

/// A bad file does not stop the read, and one that can't be read is an empty one; what it has to say goes over what the metadata said
/// before.
void HZEPDsaXmlReader::parseHpfm_(const std::string& member) {
    std::string text;
    try {
        if (takeListed_(member))
            text = HostZip::readMember(path_, member, HostZip::kMaxMetadataSize);
    } catch (const HostError&) {
        // The reader below complains.
    }
    platform_->setHpfmString(text);
    if (HZEPHpfmReader(text, platform_).parseStream()) {
        platform_->setUnifiedPlatform(true);
        platform_->setExpandable(true);
    } else {
        std::cout << "Failed to parse hpfm stream from '" << member << "' in " << path_ << std::endl;
    }
}

void HZEPDsaXmlReader::parseFeatureRom_(const BasePlatform::FeatureRom& source) {
    HZEPHardwareFeatureRom& rom = *platform_->addFeatureRom();
    rom.setMajorVersion(source.GetMajorVersion());
    rom.setMinorVersion(source.GetMinorVersion());
    rom.setDruvelBuildID(source.GetDruvelBuildID());
    rom.setIPBuildID(source.GetIPBuildID());
    rom.setTimeSinceEpoch(source.GetTimeSinceEpoch());
    setRomName<&HZEPHardwareFeatureRom::setFPGAPartName>(rom, source.GetFPGAPartNameUtf8());
    setRomName<&HZEPHardwareFeatureRom::setVBNVName>(rom, source.GetVBNVNameUtf8());
    rom.setDDRChannelCount(source.GetDDRChannelCount());
    rom.setDDRChannelSize(source.GetDDRChannelSize());
    rom.setDRBaseAddress(source.GetDRBaseAddress());
    rom.setFeatureBitMap(source.GetFeatureBitMap());
    rom.setUUID(source.GetUUIDUtf8());
    rom.setCDMABaseAddress(0, source.GetCDMABaseAddress0());
    rom.setCDMABaseAddress(1, source.GetCDMABaseAddress1());
    rom.setCDMABaseAddress(2, source.GetCDMABaseAddress2());
    rom.setCDMABaseAddress(3, source.GetCDMABaseAddress3());
    if (source.IssetMaxTempLimit())
        rom.setMaxTempLimit(static_cast<std::uint8_t>(source.GetMaxTempLimit()));
    if (source.IssetMaxPowerLimit())
        rom.setMaxPowerLimit(static_cast<std::uint8_t>(source.GetMaxPowerLimit()));
}

void HZEPDsaXmlReader::parseDesignIPs_(const BasePlatform::DesignIPs& ips) {
    for (std::size_t i = 0; i < ips.SizeIP(); ++i)
        parseIP_(ips.GetIP(i), *platform_->addDesignIPInstance());
}

void HZEPDsaXmlReader::parseIP_(const BasePlatform::IP& source, HZEPDesignIPInstance& instance) {
    instance.setVLNV(source.GetVLNVUtf8());
    instance.setInstanceName(source.GetInstanceNameUtf8());
    if (source.IssetConfiguration())
        parseConfiguration_(source.GetConfiguration(), instance);
}

void HZEPDsaXmlReader::parseConfiguration_(const BasePlatform::Configuration& configuration, HZEPDesignIPInstance& instance) {
    for (std::size_t i = 0; i < configuration.SizeParameter(); ++i) {
        const BasePlatform::Parameter& parameter = configuration.GetParameter(i);
        instance.addConfigParam(parameter.GetNameUtf8(), parameter.GetValueUtf8());
    }
}
