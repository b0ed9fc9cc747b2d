// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HZEPDsaXmlWriter.h"

#include "../foundations/CheckedDocument.h"
#include "../hardware/CutName.h"
#include "BasePlatformLMX.h"
#include "HPLPlatform.h"
#include "HostI18n.h"
#include "LmxFile.h"

#include <boost/algorithm/string/join.hpp>

#include <memory>

namespace {

constexpr const wchar_t* kSwitchName = L"xp";
constexpr const char* kDefaultBinaryFormat = "acclib2";

std::wstring wide(const std::string& text) {
    zep_platform::refuseUnlessUtf8("a value of the platform", text);
    return HostI18n::toWide(text);
}

const wchar_t* flag(bool value) {
    return value ? L"true" : L"false";
}

/// Sets an attribute that stays out of the document while its text is empty.
template <class Xml, class Set>
void setUnlessEmpty(Xml& xml, Set set, const std::string& text) {
    if (!text.empty())
        (xml.*set)(wide(text));
}

/// Hands over each element of an iterator that is the caller's.
template <class T, class Take>
void forEach(HostFwdIter<T*>* iterator, Take take) {
    const std::unique_ptr<HostFwdIter<T*>> owned(iterator);
    while (owned->hasNext())
        take(*owned->next());
}

template <class Xml>
void setNameAndValue(Xml& xml, const std::string& name, const std::string& value) {
    xml.SetName(wide(name));
    xml.SetValue(wide(value));
}

void writePort(const HPLPort& source, BasePlatform::Port& port) {
    using BasePlatform::Port;
    port.SetName(wide(source.getName()));
    port.SetType(wide(source.getType()));
    setUnlessEmpty(port, &Port::SetMode, source.getMode());
    setUnlessEmpty(port, &Port::SetProtocol, source.getProtocol());
    setUnlessEmpty(port, &Port::SetBase, source.getBase());
    setUnlessEmpty(port, &Port::SetRange, source.getRange());
    setUnlessEmpty(port, &Port::SetDataWidth, source.getDataWidth());
    setUnlessEmpty(port, &Port::SetIdWidth, source.getIdWidth());
    setUnlessEmpty(port, &Port::SetUserWidth, source.getUserWidth());
    setUnlessEmpty(port, &Port::SetAddressWidth, source.getAddrWidth());
    setUnlessEmpty(port, &Port::SetAddressOffset, source.getAddrOffset());
    setUnlessEmpty(port, &Port::SetAddressRange, source.getAddrRange());
    setUnlessEmpty(port, &Port::SetMaxBurstLength, source.getMaxBurstLength());
    setUnlessEmpty(port, &Port::SetFrequency, source.getFrequency());
    setUnlessEmpty(port, &Port::SetDirection, source.getDirection());
    setUnlessEmpty(port, &Port::SetPolarity, source.getPolarity());
    forEach(source.createAddressSegmentIter(), [&port](const HPLAddressSegment& from) {
        BasePlatform::AddressSegment& segment = port.GetAddressSegments().AppendAddressSegment();
        segment.SetName(wide(from.getName()));
        segment.SetBase(wide(from.getBase()));
        segment.SetRange(wide(from.getRange()));
        segment.SetSlave(wide(from.getSlaveName()));
    });
}

} // namespace

HZEPDsaXmlWriter::HZEPDsaXmlWriter(HPLPlatform* platform, std::string path) : platform_(platform), path_(std::move(path)) {}

void HZEPDsaXmlWriter::writeDSA() {
    BasePlatform::Root root;
    // A file carries the version of this build's schema, not the one that was read.
    const BasePlatform::Root current;
    root.SetVersionMajor(current.GetVersionMajor());
    root.SetVersionMinor(current.GetVersionMinor());
    writeGenAppInfo_(&root);
    writeDSA_(&root);
    writeLmxFile(root, path_);
}

void HZEPDsaXmlWriter::writeGenAppInfo_(BasePlatform::Root* root) const {
    BasePlatform::GenAppInfo& info = root->GetGenAppInfo();
    info.SetName(wide(platform_->getGeneratedName()));
    info.SetVersion(wide(platform_->getGeneratedVersion()));
    info.SetCL(platform_->getGeneratedChangeList());
    info.SetTimeStamp(wide(platform_->getGeneratedTimestamp()));
}

void HZEPDsaXmlWriter::writeDSA_(BasePlatform::Root* root) const {
    BasePlatform::DSA& dsa = root->GetDSA();
    dsa.SetVendor(wide(platform_->getVendor()));
    dsa.SetBoardId(wide(platform_->getBoardId()));
    dsa.SetName(wide(platform_->getName()));
    dsa.SetVersionMajor(platform_->getVersionMajor());
    dsa.SetVersionMinor(platform_->getVersionMinor());
    dsa.SetDescription(wide(platform_->getDescription()));
    dsa.SetFeatureRomTimestamp(platform_->getOldFeatureRomTime());
    dsa.SetDcpLogicFunctionStripped(flag(platform_->isDcpFuncStripped()));
    dsa.SetDcpEncrypt(flag(platform_->isDcpEncrypt()));
    dsa.SetUnified(flag(platform_->isUnifiedPlatform()));
    dsa.SetFixed(flag(!platform_->isExpandable()));
    dsa.SetDefaultOutputType(wide(platform_->getDefaultOutputType()));
    writeHostArchitecture_(&dsa);
    writeBuildFlow_(&dsa);
    writeBoard_(&dsa);
    writeDesignIPs_(&dsa);
    writeDevices_(&dsa);
    writeFiles_(&dsa);
    writeFeatureRom_(&dsa);
}

void HZEPDsaXmlWriter::writeHostArchitecture_(BasePlatform::DSA* dsa) const {
    if (!platform_->usesPR())
        return;
    dsa->GetHost().SetArchitecture(wide(platform_->getHostArch()));
    dsa->GetHost().SetInterface(wide(platform_->getHostInterface()));
}

void HZEPDsaXmlWriter::writeBuildFlow_(BasePlatform::DSA* dsa) const {
    BasePlatform::Build& build = dsa->GetBuild();
    setUnlessEmpty(build, &BasePlatform::Build::SetPlatformState, platform_->getPlatformState());
    build.SetUsesPR(flag(platform_->usesPR()));
    setUnlessEmpty(build, &BasePlatform::Build::SetTopModuleName, platform_->getTopModuleName());
    if (const std::string format = platform_->getAcceleratorBinaryFormat(); format != kDefaultBinaryFormat)
        build.SetAcceleratorBinaryFormat(wide(format));
    build.SetAcceleratorBinaryContent(wide(platform_->getAcceleratorBinaryContent()));
    setUnlessEmpty(build, &BasePlatform::Build::SetValidBinaryContentValues, platform_->getValidBinaryContentValuesAsStr());

    std::vector<std::string> switches;
    platform_->getBvlcCompileXpSwitches(switches);
    for (const std::string& text : switches) {
        BasePlatform::BvlcCompileSwitch& target = build.GetBvlcCompileSwitches().AppendBvlcCompileSwitch();
        target.SetName(kSwitchName);
        target.SetValue(wide(text));
    }
    switches.clear();
    platform_->getBvlcLinkXpSwitches(switches);
    for (const std::string& text : switches) {
        BasePlatform::BvlcLinkSwitch& target = build.GetBvlcLinkSwitches().AppendBvlcLinkSwitch();
        target.SetName(kSwitchName);
        target.SetValue(wide(text));
    }
}

void HZEPDsaXmlWriter::writeBoard_(BasePlatform::DSA* dsa) const {
    const HPLBoard& board = platform_->getReadOnlyBoard();
    BasePlatform::Board& target = dsa->GetBoard();
    target.SetName(wide(board.getName()));
    target.SetVendor(wide(board.getVendor()));
    target.SetPart(wide(board.getPart()));
    setUnlessEmpty(target, &BasePlatform::Board::SetBoardPart, board.getBoardPart());
    writeInterfaces_(&target);
    writeMemories_(&target);
    writeConnectors_(&target);
    writeImages_(&target, &board);
    writePCIeId_(&target, &board);
}

/// The schema has room for one; the last one stands.
void HZEPDsaXmlWriter::writeInterfaces_(BasePlatform::Board* target) const {
    forEach(platform_->createInterfaceIter(), [target](const HPLInterface& source) {
        BasePlatform::Interface& interface = target->GetInterfaces().GetInterface();
        interface.SetId(wide(source.getId()));
        interface.SetName(wide(source.getName()));
        interface.SetType(wide(source.getType()));
    });
}

void HZEPDsaXmlWriter::writeMemories_(BasePlatform::Board* target) const {
    if (platform_->getNumDDRs() == 0)
        return;
    forEach(platform_->createMemoryIter(), [target](const HPLMemory& source) {
        BasePlatform::Memory& memory = target->GetMemories().AppendMemory();
        memory.SetName(wide(source.getName()));
        memory.SetType(wide(source.getType()));
        memory.SetSize(wide(source.getSize()));
        memory.SetHighestAddress(static_cast<long long>(source.getHighestAddress()));
        memory.SetLowestAddress(static_cast<long long>(source.getLowestAddress()));
        for (const auto& [name, value] : source.getConfigParamMap())
            setNameAndValue(memory.GetConfig().AppendParam(), name, value);
    });
}

void HZEPDsaXmlWriter::writeConnectors_(BasePlatform::Board* target) const {
    std::vector<HPLBoard::DimmConnector*> connectors;
    platform_->getReadOnlyBoard().getConnectorsVec(connectors);
    for (const HPLBoard::DimmConnector* source : connectors) {
        BasePlatform::Connector& connector = target->GetConnectors().AppendConnector();
        connector.SetName(wide(source->getName()));
        connector.SetDisplayName(wide(source->getDisplayName()));
        connector.SetType(wide(source->getType()));
        connector.SetConnectedConnector(wide(source->getConnectedName()));
        connector.SetConnectedConnectorDisplayName(wide(source->getConnectedDisplayName()));
        if (source->isLocked())
            connector.SetIsLocked(flag(true));
    }
}

void HZEPDsaXmlWriter::writeImages_(BasePlatform::Board* target, const HPLBoard* board) const {
    const auto add = [target](const wchar_t* type, const std::string& file) {
        BasePlatform::Img& image = target->GetImages().AppendImg();
        image.SetType(type);
        image.SetFile(wide(file));
    };
    add(L"HDPI", board->getImgFileHdpi());
    add(L"MDPI", board->getImgFileMdpi());
    add(L"LDPI", board->getImgFileLdpi());
}

void HZEPDsaXmlWriter::writePCIeId_(BasePlatform::Board* target, const HPLBoard* board) const {
    if (!platform_->usesPR() && !platform_->isFlatShell())
        return;
    const HPLPCIeId& source = board->getPCIeId();
    BasePlatform::PCIeId& id = target->GetPCIeId();
    id.SetDevice(wide(source.getDevice()));
    id.SetVendor(wide(source.getVendor()));
    id.SetSubsystem(wide(source.getSubsystem()));
    setUnlessEmpty(id, &BasePlatform::PCIeId::SetFeatureId, source.getFeatureId());
}

void HZEPDsaXmlWriter::writeDesignIPs_(BasePlatform::DSA* dsa) const {
    for (const HZEPDesignIPInstance* source : platform_->getDesignIPInstances()) {
        BasePlatform::IP& ip = dsa->GetDesignIPs().AppendIP();
        ip.SetVLNV(wide(source->getVLNV()));
        ip.SetInstanceName(wide(source->getInstanceName()));
        std::map<std::string, std::string> parameters;
        source->getConfigParamMap(parameters);
        for (const auto& [name, value] : parameters)
            setNameAndValue(ip.GetConfiguration().AppendParameter(), name, value);
    }
}

void HZEPDsaXmlWriter::writeDevices_(BasePlatform::DSA* dsa) const {
    BasePlatform::Devices& devices = dsa->GetDevices();
    forEach(platform_->createDeviceIter(), [this, &devices](HPLDevice& source) {
        BasePlatform::Device& device = devices.AppendDevice();
        device.SetName(wide(source.getName()));
        device.SetType(wide(source.getType()));
        setUnlessEmpty(device, &BasePlatform::Device::SetFpgaDevice, source.getFpgaPart());
        for (const auto& [name, frequency] : source.getSystemClockMap()) {
            BasePlatform::SystemClock& clock = device.GetSystemClocks().AppendSystemClock();
            clock.SetName(wide(name));
            clock.SetFrequency(wide(frequency));
        }
        writeCore_(&source.getCore(), device.GetCore());
    });
}

void HZEPDsaXmlWriter::writeCore_(HPLCore* core, BasePlatform::Core& target) const {
    using BasePlatform::Core;
    target.SetName(wide(core->getName()));
    target.SetType(wide(core->getType()));
    target.SetComputeUnits(static_cast<unsigned char>(core->getNumComputeUnits()));
    setUnlessEmpty(target, &Core::SetClockFreq, core->getClockFreq());
    setUnlessEmpty(target, &Core::SetVLNV, core->getVlnv());
    setUnlessEmpty(target, &Core::SetInstancePath, core->getInstPath());
    setUnlessEmpty(target, &Core::SetParentRMInstancePath, core->getParentRMInstPath());
    setUnlessEmpty(target, &Core::SetDRBaseAddress, core->getDRBaseAddress());
    setUnlessEmpty(target, &Core::SetDRBDName, core->getDRBDName());

    BasePlatform::InnerCore& inner = target.GetInnerCore();
    writeAvailableResources_(*core, inner);
    for (const auto& [name, value] : core->getReadOnlyConfigParamMap())
        setNameAndValue(inner.GetConfig().AppendParam(), name, value);
    forEach(core->createPortIter(), [&inner](const HPLPort& port) { writePort(port, inner.AppendPort()); });
}

void HZEPDsaXmlWriter::writeAvailableResources_(const HPLCore& core, BasePlatform::InnerCore& inner) const {
    const std::string bram = core.getBRAMCount();
    const std::string dsp = core.getDSPCount();
    const std::string lut = core.getLUTCount();
    const std::string reg = core.getRegisterCount();
    const auto& blocks = core.getReadOnlyPBlockToResourceMap();
    if (bram.empty() && dsp.empty() && lut.empty() && reg.empty() && blocks.empty())
        return;
    BasePlatform::AvailableResources& target = inner.GetAvailableResources();
    target.SetBRAM(wide(bram));
    target.SetDSP(wide(dsp));
    target.SetLUT(wide(lut));
    target.SetREG(wide(reg));
    for (const auto& [name, resources] : blocks) {
        BasePlatform::PBlock& block = target.AppendPBlock();
        block.SetName(wide(name));
        for (const auto& [type, value] : resources) {
            BasePlatform::Resource& resource = block.AppendResource();
            resource.SetName(wide(type));
            resource.SetVal(wide(value));
        }
        std::set<std::string> slrs;
        core.getSLRNames(name, slrs);
        setUnlessEmpty(block, &BasePlatform::PBlock::SetValidSLRs, boost::algorithm::join(slrs, ","));
    }
}

void HZEPDsaXmlWriter::writeFiles_(BasePlatform::DSA* dsa) const {
    BasePlatform::Files& files = dsa->GetFiles();
    forEach(platform_->createFileVecIter(), [&files](const HPLFile& source) {
        BasePlatform::File& file = files.AppendFile();
        file.SetType(wide(source.getType()));
        file.SetName(wide(source.getName()));
        setUnlessEmpty(file, &BasePlatform::File::SetProcessingOrder, source.getProcessingOrder());
        setUnlessEmpty(file, &BasePlatform::File::SetUsedIn, source.getUsedIn());
    });
}

/// The schema has room for one; the last one stands.
void HZEPDsaXmlWriter::writeFeatureRom_(BasePlatform::DSA* dsa) const {
    forEach(platform_->createFeatureRomIter(), [dsa](const HZEPHardwareFeatureRom& source) {
        BasePlatform::FeatureRom& rom = dsa->GetFeatureRom();
        rom.SetMajorVersion(source.getMajorVersion());
        rom.SetMinorVersion(source.getMinorVersion());
        rom.SetDruvelBuildID(source.getDruvelBuildID());
        rom.SetIPBuildID(source.getIPBuildID());
        rom.SetTimeSinceEpoch(source.getTimeSinceEpoch());
        rom.SetFPGAPartName(wide(withoutCutCharacter(source.getFPGAPartName())));
        rom.SetVBNVName(wide(withoutCutCharacter(source.getVBNVName())));
        rom.SetDDRChannelCount(source.getDDRChannelCount());
        rom.SetDDRChannelSize(source.getDDRChannelSize());
        rom.SetDRBaseAddress(source.getDRBaseAddress());
        rom.SetFeatureBitMap(source.getFeatureBitMap());
        rom.SetUUID(wide(source.getUUIDAsString()));
        rom.SetCDMABaseAddress0(source.getCDMABaseAddress(0));
        rom.SetCDMABaseAddress1(source.getCDMABaseAddress(1));
        rom.SetCDMABaseAddress2(source.getCDMABaseAddress(2));
        rom.SetCDMABaseAddress3(source.getCDMABaseAddress(3));
        rom.SetMaxTempLimit(source.getMaxTempLimit());
        rom.SetMaxPowerLimit(source.getMaxPowerLimit());
    });
}
