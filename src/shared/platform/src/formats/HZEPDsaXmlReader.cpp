// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HZEPDsaXmlReader.h"

#include "BasePlatformLMX.h"
#include "HPLPlatform.h"
#include "HZEPEmulationXMLReader.h"
#include "HZEPEmulations.h"
#include "HZEPHpfmReader.h"
#include "HostEnv.h"
#include "HostErrors.h"
#include "HostFile.h"
#include "HostI18n.h"
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

namespace {

std::string toUtf8(const std::wstring& text) {
    return HostI18n::toUtf8(text);
}

bool isWord(const std::wstring& text, const char* word) {
    return boost::algorithm::iequals(toUtf8(text), word);
}

bool isTrue(const std::wstring& text) {
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
            HostMsgMgr::getGlobal().send("platform", HostMsgMgr::Error, "@74-52@%s", {message});
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
bool HZEPDsaXmlReader::readRoot_(const std::string& member, const Use& use) const {
    HostMsgMgr& messages = HostMsgMgr::getGlobal();
    try {
        bool answer = false;
        const auto failure = catchLmxFailure([&] {
            BasePlatform::Root root;
            lmx60::elmx_error code;
            {
                const std::string text = HostZip::readMember(path_, member);
                code = root.Unmarshal(text.data(), text.size(), nullptr);
            }
            if (code == lmx60::error_none)
                answer = use(root);
            return code;
        });
        if (!failure)
            return answer;
        messages.send("platform", HostMsgMgr::CriticalWarning, "@74-62@%s%s%d",
                      {path_ + HostFile::getDirSeparator() + member, failure->text, std::to_string(failure->line)});
    } catch (const std::exception& e) {
        messages.send("platform", HostMsgMgr::CriticalWarning, "@74-65@%s%s%s", {member, path_, e.what()});
    }
    return false;
}

/// The minor version plays no part, and a platform before synthesis opens whatever its version.
bool HZEPDsaXmlReader::canDsaBeOpened_(const BasePlatform::Root& root, std::string& message) const {
    const BasePlatform::Build& build = root.GetDSA().GetBuild();
    if (build.IssetPlatformState() && isWord(build.GetPlatformState(), "pre_synth"))
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
    platform_->setGeneratedName(toUtf8(info.GetName()));
    platform_->setGeneratedVersion(toUtf8(info.GetVersion()));
    platform_->setGeneratedChangeList(static_cast<std::uint32_t>(info.GetCL()));
    if (info.IssetTimeStamp())
        platform_->setGeneratedTimestamp(toUtf8(info.GetTimeStamp()));
}

void HZEPDsaXmlReader::parseDSA_(const BasePlatform::DSA& dsa) {
    platform_->setVendor(toUtf8(dsa.GetVendor()));
    platform_->setBoardId(toUtf8(dsa.GetBoardId()));
    platform_->setName(toUtf8(dsa.GetName()));
    platform_->setVersionMajor(dsa.GetVersionMajor());
    platform_->setVersionMinor(dsa.GetVersionMinor());
    platform_->setDescription(toUtf8(dsa.GetDescription()));
    platform_->setOldFeatureRomTime(dsa.GetFeatureRomTimestamp());
    if (dsa.IssetDcpLogicFunctionStripped())
        platform_->setDcpFuncStripped(isTrue(dsa.GetDcpLogicFunctionStripped()));
    if (dsa.IssetDcpEncrypt())
        platform_->setDcpEncrypt(isTrue(dsa.GetDcpEncrypt()));
    if (dsa.IssetUnified())
        platform_->setUnifiedPlatform(isTrue(dsa.GetUnified()));
    // The oldest files don't say; what they were packed with tells.
    platform_->setExpandable(dsa.IssetFixed() ? !isTrue(dsa.GetFixed())
                                              : !HostZip::containsFile(path_, "hwdef.xml") && !HostZip::containsFile(path_, "sysdef.xml"));
    if (dsa.IssetDefaultOutputType())
        platform_->setDefaultOutputType(toUtf8(dsa.GetDefaultOutputType()));
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
    platform_->setHostArch(toUtf8(host.GetArchitecture()));
    if (host.IssetInterface())
        platform_->setHostInterface(toUtf8(host.GetInterface()));
}

void HZEPDsaXmlReader::parseBuild_(const BasePlatform::Build& build) {
    using Intent = HZEPDesignIntentStorage;
    if (build.IssetPlatformState())
        platform_->setPlatformState(toUtf8(build.GetPlatformState()));
    const bool usesPr = build.IssetUsesPR() && isTrue(build.GetUsesPR());
    if (build.IssetUsesPR())
        platform_->setUsesPR(usesPr);
    platform_->setComputedDesignIntent(Intent::DataCenter, usesPr);
    platform_->setComputedDesignIntent(Intent::Embedded, !usesPr);
    platform_->setComputedDesignIntent(Intent::ExternalHost, usesPr);
    platform_->setComputedDesignIntent(Intent::ServerManaged, usesPr);
    if (build.IssetTopModuleName())
        platform_->setTopModuleName(toUtf8(build.GetTopModuleName()));
    if (build.IssetStaticSynthCheckpoint())
        platform_->setPlatformState("synth");
    if (build.IssetAcceleratorBinaryFormat())
        platform_->setAcceleratorBinaryFormat(toUtf8(build.GetAcceleratorBinaryFormat()));
    if (build.IssetAcceleratorBinaryContent())
        platform_->setAcceleratorBinaryContent(toUtf8(build.GetAcceleratorBinaryContent()));
    if (!build.IssetValidBinaryContentValues()) {
        platform_->addValidBinaryContentValue("dcp");
        platform_->addValidBinaryContentValue("bitstream");
    } else if (const std::string values = toUtf8(build.GetValidBinaryContentValues()); !values.empty()) {
        std::vector<std::string> pieces;
        boost::algorithm::split(pieces, values, [](char c) { return c == ','; });
        for (const std::string& piece : pieces)
            platform_->addValidBinaryContentValue(piece);
    }
    if (build.IssetBvlcCompileSwitches()) {
        const BasePlatform::BvlcCompileSwitches& switches = build.GetBvlcCompileSwitches();
        for (std::size_t i = 0; i < switches.SizeBvlcCompileSwitch(); ++i)
            platform_->addBvlcCompileXpSwitch(toUtf8(switches.GetBvlcCompileSwitch(i).GetValue()));
    }
    if (build.IssetBvlcLinkSwitches()) {
        const BasePlatform::BvlcLinkSwitches& switches = build.GetBvlcLinkSwitches();
        for (std::size_t i = 0; i < switches.SizeBvlcLinkSwitch(); ++i)
            platform_->addBvlcLinkXpSwitch(toUtf8(switches.GetBvlcLinkSwitch(i).GetValue()));
    }
}

void HZEPDsaXmlReader::parseBoard_(const BasePlatform::Board& source, HPLBoard& board) {
    board.setName(toUtf8(source.GetName()));
    board.setVendor(toUtf8(source.GetVendor()));
    board.setPart(toUtf8(source.GetPart()));
    if (source.IssetBoardPart())
        board.setBoardPart(toUtf8(source.GetBoardPart()));
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
        pcieId.setDevice(toUtf8(id.GetDevice()));
        pcieId.setVendor(toUtf8(id.GetVendor()));
        pcieId.setSubsystem(toUtf8(id.GetSubsystem()));
        if (id.IssetFeatureId())
            pcieId.setFeatureId(toUtf8(id.GetFeatureId()));
    }
}

void HZEPDsaXmlReader::parseInterfaces_(const BasePlatform::Interfaces& interfaces) {
    const BasePlatform::Interface& source = interfaces.GetInterface();
    HPLInterface& interface = *platform_->addInterface();
    interface.setId(toUtf8(source.GetId()));
    interface.setType(toUtf8(source.GetType()));
    interface.setName(toUtf8(source.GetName()));
}

void HZEPDsaXmlReader::parseMemories_(const BasePlatform::Memories& memories) {
    for (std::size_t i = 0; i < memories.SizeMemory(); ++i) {
        const BasePlatform::Memory& source = memories.GetMemory(i);
        HPLMemory& memory = *platform_->addMemory();
        memory.setName(toUtf8(source.GetName()));
        memory.setType(toUtf8(source.GetType()));
        memory.setSize(toUtf8(source.GetSize()));
        memory.setHighestAddress(static_cast<std::uint64_t>(source.GetHighestAddress()));
        memory.setLowestAddress(static_cast<std::uint64_t>(source.GetLowestAddress()));
        if (!source.IssetConfig())
            continue;
        const BasePlatform::Config& config = source.GetConfig();
        for (std::size_t p = 0; p < config.SizeParam(); ++p)
            memory.addConfigParam(toUtf8(config.GetParam(p).GetName()), toUtf8(config.GetParam(p).GetValue()));
    }
}

void HZEPDsaXmlReader::parseConnectors_(const BasePlatform::Connectors& connectors, HPLBoard& board) {
    for (std::size_t i = 0; i < connectors.SizeConnector(); ++i) {
        const BasePlatform::Connector& source = connectors.GetConnector(i);
        const std::string connectedName = toUtf8(source.GetConnectedConnector());
        board.addDimmConnector(toUtf8(source.GetName()), toUtf8(source.GetDisplayName()), toUtf8(source.GetType()), connectedName,
                               toUtf8(source.GetConnectedConnectorDisplayName()), !connectedName.empty(), isTrue(source.GetIsLocked()));
    }
}

void HZEPDsaXmlReader::parseImages_(const BasePlatform::Images& images, HPLBoard& board) {
    for (std::size_t i = 0; i < images.SizeImg(); ++i) {
        const BasePlatform::Img& image = images.GetImg(i);
        const std::wstring& type = image.GetType();
        if (type == L"HDPI")
            board.setImgFileHdpi(toUtf8(image.GetFile()));
        else if (type == L"MDPI")
            board.setImgFileMdpi(toUtf8(image.GetFile()));
        else if (type == L"LDPI")
            board.setImgFileLdpi(toUtf8(image.GetFile()));
    }
}

void HZEPDsaXmlReader::parseDevices_(const BasePlatform::Devices& devices) {
    for (std::size_t i = 0; i < devices.SizeDevice(); ++i)
        parseDevice_(devices.GetDevice(i), *platform_->addDevice());
}

void HZEPDsaXmlReader::parseDevice_(const BasePlatform::Device& source, HPLDevice& device) {
    device.setName(toUtf8(source.GetName()));
    device.setType(toUtf8(source.GetType()));
    if (source.IssetFpgaDevice())
        device.setFpgaPart(toUtf8(source.GetFpgaDevice()));
    if (source.IssetSystemClocks()) {
        const BasePlatform::SystemClocks& clocks = source.GetSystemClocks();
        for (std::size_t i = 0; i < clocks.SizeSystemClock(); ++i)
            device.addSystemClock(toUtf8(clocks.GetSystemClock(i).GetName()), toUtf8(clocks.GetSystemClock(i).GetFrequency()));
    }
    parseCore_(source.GetCore(), device.getCore());
}

void HZEPDsaXmlReader::parseCore_(const BasePlatform::Core& source, HPLCore& core) {
    core.setName(toUtf8(source.GetName()));
    core.setType(toUtf8(source.GetType()));
    core.setNumComputeUnits(source.GetComputeUnits());
    if (source.IssetClockFreq())
        core.setClockFreq(toUtf8(source.GetClockFreq()));
    if (source.IssetInstancePath())
        core.setInstPath(toUtf8(source.GetInstancePath()));
    if (source.IssetParentRMInstancePath())
        core.setParentRMInstPath(toUtf8(source.GetParentRMInstancePath()));
    if (source.IssetVLNV())
        core.setVLNV(toUtf8(source.GetVLNV()));
    if (source.IssetDRBDName())
        core.setDRBDName(toUtf8(source.GetDRBDName()));
    // DRBaseAddress is written and not read.
    if (!source.IssetInnerCore())
        return;
    const BasePlatform::InnerCore& inner = source.GetInnerCore();
    if (inner.IssetConfig()) {
        const BasePlatform::InnerCoreConfig& config = inner.GetConfig();
        for (std::size_t i = 0; i < config.SizeParam(); ++i)
            core.addConfigParam(toUtf8(config.GetParam(i).GetName()), toUtf8(config.GetParam(i).GetValue()));
    }
    for (std::size_t i = 0; i < inner.SizePort(); ++i)
        parsePort_(inner.GetPort(i), *core.addPort());
    if (inner.IssetAvailableResources())
        parseAvailableResources_(inner.GetAvailableResources(), core);
}

void HZEPDsaXmlReader::parseAvailableResources_(const BasePlatform::AvailableResources& source, HPLCore& core) {
    const auto take = [this, &core](const std::wstring& count, void (HPLCore::*setText)(std::string),
                                    void (HZEPHardwarePlatform::*setNumber)(int)) {
        const std::string text = toUtf8(count);
        (core.*setText)(text);
        if (!text.empty())
            (platform_->*setNumber)(static_cast<int>(std::strtol(text.c_str(), nullptr, 10)));
    };
    take(source.GetBRAM(), &HPLCore::setBRAMCount, &HZEPHardwarePlatform::setBRAMCount);
    take(source.GetDSP(), &HPLCore::setDSPCount, &HZEPHardwarePlatform::setDSPCount);
    take(source.GetLUT(), &HPLCore::setLUTCount, &HZEPHardwarePlatform::setLUTCount);
    core.setRegisterCount(toUtf8(source.GetREG()));
    for (std::size_t i = 0; i < source.SizePBlock(); ++i) {
        const BasePlatform::PBlock& block = source.GetPBlock(i);
        const std::string name = toUtf8(block.GetName());
        // The list is kept as one name, commas and all.
        if (block.IssetValidSLRs())
            core.addSLRInfo(name, toUtf8(block.GetValidSLRs()));
        for (std::size_t r = 0; r < block.SizeResource(); ++r)
            core.addResourceInfo(name, toUtf8(block.GetResource(r).GetName()), toUtf8(block.GetResource(r).GetVal()));
    }
}

void HZEPDsaXmlReader::parsePort_(const BasePlatform::Port& source, HPLPort& port) {
    port.setName(toUtf8(source.GetName()));
    port.setType(toUtf8(source.GetType()));
    if (source.IssetMode())
        port.setMode(toUtf8(source.GetMode()));
    if (source.IssetProtocol())
        port.setProtocol(toUtf8(source.GetProtocol()));
    if (source.IssetBase())
        port.setBase(toUtf8(source.GetBase()));
    if (source.IssetRange())
        port.setRange(toUtf8(source.GetRange()));
    if (source.IssetDataWidth())
        port.setDataWidth(toUtf8(source.GetDataWidth()));
    if (source.IssetIdWidth())
        port.setIdWidth(toUtf8(source.GetIdWidth()));
    if (source.IssetUserWidth())
        port.setUserWidth(toUtf8(source.GetUserWidth()));
    if (source.IssetAddressWidth())
        port.setAddrWidth(toUtf8(source.GetAddressWidth()));
    if (source.IssetAddressOffset())
        port.setAddrOffset(toUtf8(source.GetAddressOffset()));
    if (source.IssetAddressRange())
        port.setAddrRange(toUtf8(source.GetAddressRange()));
    if (source.IssetMaxBurstLength())
        port.setMaxBurstLength(toUtf8(source.GetMaxBurstLength()));
    if (source.IssetFrequency())
        port.setFrequency(toUtf8(source.GetFrequency()));
    if (source.IssetDirection())
        port.setDirection(toUtf8(source.GetDirection()));
    if (source.IssetPolarity())
        port.setPolarity(toUtf8(source.GetPolarity()));
    if (!source.IssetAddressSegments())
        return;
    const BasePlatform::AddressSegments& segments = source.GetAddressSegments();
    for (std::size_t i = 0; i < segments.SizeAddressSegment(); ++i) {
        const BasePlatform::AddressSegment& from = segments.GetAddressSegment(i);
        auto segment = std::make_unique<HPLAddressSegment>();
        segment->setBase(toUtf8(from.GetBase()));
        segment->setName(toUtf8(from.GetName()));
        segment->setRange(toUtf8(from.GetRange()));
        segment->setSlaveName(toUtf8(from.GetSlave()));
        port.addAddressSegment(segment.release());
    }
}

void HZEPDsaXmlReader::parseFiles_(const BasePlatform::Files& files) {
    for (std::size_t i = 0; i < files.SizeFile(); ++i)
        parseFile_(files.GetFile(i));
}

void HZEPDsaXmlReader::parseFile_(const BasePlatform::File& source) {
    const std::string name = toUtf8(source.GetName());
    HPLFile& file = *platform_->addFile(toUtf8(source.GetType()), name);
    if (source.IssetProcessingOrder())
        file.setProcessingOrder(toUtf8(source.GetProcessingOrder()));
    if (source.IssetUsedIn())
        file.setUsedIn(toUtf8(source.GetUsedIn()));
    if (isWord(source.GetType(), "HPFM")) {
        takeListed_(name);
        parseHpfm_(name);
    }
    if (isWord(source.GetType(), "EMU_XML")) {
        takeListed_(name);
        scanEmulations_(name);
    }
}

/// A small archive could list one large member any number of times, or many that share their bytes.
void HZEPDsaXmlReader::takeListed_(const std::string& member) {
    std::uint64_t size = 0;
    try {
        size = HostZipMember(path_, member, HostZip::kMaxMemberSize).getSize();
    } catch (const HostError&) {
        return; // whoever reads it says so
    }
    if (size > listedSizeLeft_)
        throw HostError("the files listed are read up to " + std::to_string(kMaxListedSize) + " bytes in all, which '" + member +
                        "' exceeds");
    listedSizeLeft_ -= size;
}

void HZEPDsaXmlReader::scanEmulations_(const std::string& member) {
    HZEPEmulations emulations;
    HZEPEmulationXMLReader::parseFromDsa(path_, member, &emulations);
    for (const HZEPEmulation* emulation : emulations.getEmulations())
        for (const HZEPEmulationFile* file : emulation->getFiles())
            if (file->getType() == "EMU_HPFM")
                platform_->setSupportsHWEmulation(true);
}

/// A bad file does not stop the read; what it has to say goes over what the metadata said before.
void HZEPDsaXmlReader::parseHpfm_(const std::string& member) {
    std::string text;
    try {
        text = HostZip::readMember(path_, member);
    } catch (const HostError& e) {
        std::cout << e.what() << std::endl;
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
    setRomName<&HZEPHardwareFeatureRom::setFPGAPartName>(rom, toUtf8(source.GetFPGAPartName()));
    setRomName<&HZEPHardwareFeatureRom::setVBNVName>(rom, toUtf8(source.GetVBNVName()));
    rom.setDDRChannelCount(source.GetDDRChannelCount());
    rom.setDDRChannelSize(source.GetDDRChannelSize());
    rom.setDRBaseAddress(source.GetDRBaseAddress());
    rom.setFeatureBitMap(source.GetFeatureBitMap());
    rom.setUUID(toUtf8(source.GetUUID()));
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
    instance.setVLNV(toUtf8(source.GetVLNV()));
    instance.setInstanceName(toUtf8(source.GetInstanceName()));
    if (source.IssetConfiguration())
        parseConfiguration_(source.GetConfiguration(), instance);
}

void HZEPDsaXmlReader::parseConfiguration_(const BasePlatform::Configuration& configuration, HZEPDesignIPInstance& instance) {
    for (std::size_t i = 0; i < configuration.SizeParameter(); ++i) {
        const BasePlatform::Parameter& parameter = configuration.GetParameter(i);
        instance.addConfigParam(toUtf8(parameter.GetName()), toUtf8(parameter.GetValue()));
    }
}
