// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HZEPHpfmReader.h"

#include "HZEPHardwarePlatform.h"
#include "HostMsgMgr.h"
#include "HostPathUtils.h"
#include "LmxFile.h"
#include "WELHardwarePlatformLMX.h"

#include <iostream>

using namespace WELHardwarePlatform;

namespace {

constexpr const char* kHbmSubsystem = "hbm_memory_subsystem";

Repository readRepository(const std::string& text) {
    Repository repository;
    repository.Unmarshal(text.data(), text.size(), nullptr);
    return repository;
}

void complain(const char* key, const std::string& text, HostFault fault) {
    HostMsgMgr::getGlobal().send("platform", HostMsgMgr::Error, key, {text}, std::move(fault));
}

} // namespace

HZEPHpfmReader::HZEPHpfmReader(std::string hpfmText, HZEPHardwarePlatform* platform) : platform_(platform), hpfmText_(std::move(hpfmText)) {
    if (hpfmText_.empty())
        std::cout << "CRITICAL WARNING: Empty hpfm string passed in" << std::endl;
}

bool HZEPHpfmReader::parseFile() {
    if (!HostPathUtils::exists(file_)) {
        errorMsg_ += "Specified hardware platform file doens't exists\n";
        return false;
    }
    const auto failure = readLmxFile<Repository>(file_, [this](const Repository& repository) { parseRepository(repository); });
    if (!failure)
        return true;
    errorMsg_ = "Error parsing hardware platform file: " + file_;
    std::cout << errorMsg_ << std::endl;
    errorMsg_ += "\n" + describeLmxFailure(*failure);
    complain("@74-12@", errorMsg_, failure->toFault(file_));
    return false;
}

bool HZEPHpfmReader::parseStream() {
    const auto failure = catchLmxFailure([this] {
        Repository repository;
        const lmx60::elmx_error code = repository.Unmarshal(hpfmText_.data(), hpfmText_.size(), nullptr);
        if (code == lmx60::error_none)
            parseRepository(repository);
        return code;
    });
    if (!failure)
        return true;
    errorMsg_ = "Error parsing hardware platform stream from DSA\n" + describeLmxFailure(*failure);
    std::cout << errorMsg_ << std::endl;
    complain("@74-31@", errorMsg_, failure->toFault(""));
    return false;
}

bool HZEPHpfmReader::parseBusInterfaces() {
    const Repository repository = readRepository(hpfmText_);
    parseBusInterfaces_(repository.GetComponent());
    return true;
}

bool HZEPHpfmReader::parseNocConnectivity() {
    const Repository repository = readRepository(hpfmText_);
    parseNocConnectivities_(repository.GetComponent());
    return true;
}

void HZEPHpfmReader::parseRepository(const Repository& repository) {
    parseComponent_(repository.GetComponent());
}

void HZEPHpfmReader::parseComponent_(const Component& component) {
    const PlatformInfo& info = component.GetPlatformInfo();
    const std::string name = component.GetNameUtf8();
    if (platform_->getVendor().empty())
        platform_->setVendor(component.GetVendorUtf8());
    if (platform_->getBoardId().empty())
        platform_->setBoardId(name);
    if (platform_->getName().empty())
        platform_->setName(name);
    platform_->setDescription(info.GetDescriptionUtf8());

    // The counts of the estimates are not the platform's.
    platform_->setBRAMCount(static_cast<int>(component.GetBRAM()));
    platform_->setDSPCount(static_cast<int>(component.GetDSP()));
    platform_->setLUTCount(static_cast<int>(component.GetLUT()));
    platform_->setFFCount(static_cast<int>(component.GetFF()));

    parseSystemClocks_(info.GetSystemClocks());
    for (std::size_t i = 0; i < component.SizeParameter(); ++i)
        parseParam_(component.GetParameter(i));
    parseBusInterfaces_(component);
    parseNocConnectivities_(component);
}

void HZEPHpfmReader::parseSystemClocks_(const SystemClocks& clocks) {
    platform_->setDefaultClkId(clocks.GetDefaultClock());
    for (std::size_t i = 0; i < clocks.SizeClock(); ++i) {
        const Clock& source = clocks.GetClock(i);
        HZEPSystemClock& clock = *platform_->addSystemClock();
        clock.setName(source.GetNameUtf8());
        clock.setOrigName(clock.getName());
        clock.setCompRef(source.GetComponentRefUtf8());
        clock.setInstRef(source.GetInstanceRefUtf8());
        clock.setStatus(source.GetStatusUtf8());
        clock.setFrequency(source.GetFrequency().get_as_string());
        clock.setPeriod(source.GetPeriod().get_as_string());
        if (source.IssetId()) {
            clock.setId(source.GetId());
            clock.setName("PL " + std::to_string(source.GetId()));
        }
        if (source.IssetNormalizedPeriod())
            clock.setNormalizedPeriod(source.GetNormalizedPeriod().get_as_string());
    }
}

void HZEPHpfmReader::parseParam_(const Parameter& source) {
    HZEPHardwareIPParam& parameter = *platform_->addHardwareIPParam();
    parameter.setName(source.GetNameUtf8());
    parameter.setValue(source.GetValueUtf8());
    parameter.setIsValid(source.GetIsValidUtf8());
    parameter.setCompRef(source.GetComponentRefUtf8());
    parameter.setInstRef(source.GetInstanceRefUtf8());
}

void HZEPHpfmReader::parseBusInterfaces_(const Component& component) {
    for (std::size_t i = 0; i < component.SizeBusInterface(); ++i)
        parseBusInterface_(component.GetBusInterface(i), *platform_->addBusInterface());
}

void HZEPHpfmReader::parseNocConnectivities_(const Component& component) {
    for (std::size_t i = 0; i < component.SizeNocConnectivity(); ++i)
        parseNocConnectivity_(component.GetNocConnectivity(i), *platform_->addNocConnectivity());
}

void HZEPHpfmReader::parseNocConnectivity_(const NocConnectivity& source, HZEPHardwareNocConnectivity& connectivity) {
    connectivity.setInstanceRef(source.GetInstanceRefUtf8());
    for (std::size_t i = 0; i < source.SizeBusInterface(); ++i)
        parseBusInterface_(source.GetBusInterface(i), *connectivity.addBusInterface());
}

void HZEPHpfmReader::parseBusInterface_(const BusInterface& source, HZEPHardwareBusInterface& bus) {
    bus.setName(source.GetNameUtf8());
    if (source.IssetBusTypeRef())
        bus.setBusTypeRef(source.GetBusTypeRefUtf8());
    if (source.IssetInstanceRef())
        bus.setInstRef(source.GetInstanceRefUtf8());
    if (source.IssetComponentRef())
        bus.setCompRef(source.GetComponentRefUtf8());
    if (source.IssetBusInterfaceRef())
        bus.setBusInterfaceRef(source.GetBusInterfaceRefUtf8());
    if (source.IssetClockRef())
        bus.setClockRef(source.GetClockRefUtf8());
    if (source.IssetDataWidth())
        bus.setDataWidth(source.GetDataWidth());
    if (source.IssetDirection())
        bus.setDirection(source.GetDirectionUtf8());
    if (source.IssetMemport())
        bus.setMemPort(source.GetMemportUtf8());
    if (source.IssetSptag())
        bus.setSPTag(source.GetSptagUtf8());
    if (source.IssetMode())
        bus.setMode(source.GetModeUtf8());
    if (source.IssetAddressSegment())
        bus.setAddressSegment(source.GetAddressSegmentUtf8());
    if (source.IssetMemoryInstance())
        bus.setMemoryInstance(source.GetMemoryInstanceUtf8());
    if (source.IssetSlr())
        bus.setSLR(source.GetSlrUtf8());
    if (source.IssetSize())
        bus.setSize(source.GetSizeUtf8());
    if (source.IssetPeakMemoryBandwidth())
        bus.setPeakMemoryBandwidth(source.GetPeakMemoryBandwidthUtf8());
    if (source.IssetMaxMasters())
        bus.setMaxMasters(source.GetMaxMasters());
    if (source.IssetIdBits())
        bus.setNumIdBits(static_cast<int>(source.GetIdBits()));
    if (source.IssetIsrId())
        bus.setISRId(source.GetIsrId());
    if (source.IssetCategory())
        bus.setCategory(source.GetCategoryUtf8());
    for (std::size_t i = 0; i < source.SizeAddressSegment(); ++i)
        parseAddressSegment_(source.GetAddressSegment(i), bus);
}

void HZEPHpfmReader::parseAddressSegment_(const BusInterfaceAddressSegment& source, HZEPHardwareBusInterface& bus) {
    HZEPHardwareAddressSegment& segment = *bus.addAddressSegment();
    if (source.IssetBaseName())
        segment.setBaseName(source.GetBaseNameUtf8());
    if (source.IssetName())
        segment.setName(source.GetNameUtf8());
    if (source.IssetIndex())
        segment.setIndex(source.GetIndex());
    if (source.IssetMemoryInstance())
        segment.setMemoryInstance(source.GetMemoryInstanceUtf8());
    if (source.IssetAuto()) {
        const std::string assignment = source.GetAutoUtf8();
        segment.setAuto(assignment);
        if (bus.getCompRef() == kHbmSubsystem) {
            platform_->setHBMPresent();
            if (assignment != "false")
                platform_->updateHBMBankInfo(bus.getInstRef(), assignment == "preferred");
        }
    }
    if (source.IssetSptag())
        segment.setSpTag(source.GetSptagUtf8());
    if (source.IssetSlr())
        segment.setSlr(source.GetSlrUtf8());
    if (source.IssetMaxMasters())
        segment.setMaxMasters(source.GetMaxMasters());
    if (source.IssetInstanceRef())
        segment.setInstanceRef(source.GetInstanceRefUtf8());
    if (source.IssetRegion())
        segment.setRegion(source.GetRegionUtf8());
    if (source.IssetReadBwUsed())
        segment.setReadBwUsed(static_cast<int>(source.GetReadBwUsed().get()));
    if (source.IssetWriteBwUsed())
        segment.setWriteBwUsed(static_cast<int>(source.GetWriteBwUsed().get()));
    if (source.IssetInterleave())
        segment.setInterleave(source.GetInterleave());
}
