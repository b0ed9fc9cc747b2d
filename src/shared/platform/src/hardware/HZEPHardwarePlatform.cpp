// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HZEPHardwarePlatform.h"

#include "AsciiCase.h"
#include "HPLDevice.h"

#include <algorithm>
#include <memory>

namespace {

const std::string kStateNames[] = {"synth", "impl", "pre_synth"};

template <class T>
std::string answerFirstDevice(const HZEPHardwarePlatform& platform, T (HZEPDevice::*question)() const) {
    std::vector<HZEPDevice*> devices;
    platform.getDevices(devices);
    return devices.empty() ? "" : (devices.front()->*question)();
}

/// Walks to the end: of several elements the last one counts.
template <class List, class Matches>
auto findLast(const List& list, Matches matches) {
    const auto& items = list.items();
    const auto found = std::find_if(items.rbegin(), items.rend(), matches);
    return found == items.rend() ? nullptr : *found;
}

auto isNamed(const std::string& name) {
    return [&name](const HZEPSystemClock* clock) { return clock->getName() == name; };
}

auto hasId(int id) {
    return [id](const HZEPSystemClock* clock) { return clock->getId() == id; };
}

} // namespace

HZEPHardwarePlatform::HZEPHardwarePlatform() = default;
HZEPHardwarePlatform::~HZEPHardwarePlatform() = default;

const std::string& HZEPHardwarePlatform::getName() const {
    return name_;
}

const std::string& HZEPHardwarePlatform::getVendor() const {
    return vendor_;
}

const std::string& HZEPHardwarePlatform::getBoardId() const {
    return boardId_;
}

const std::string& HZEPHardwarePlatform::getDescription() const {
    return description_;
}

const std::string& HZEPHardwarePlatform::getDetailedDescription() const {
    return detailedDescription_;
}

std::string HZEPHardwarePlatform::getUniqueName() const {
    return name_;
}

std::string HZEPHardwarePlatform::getPrettyName() const {
    return boardId_;
}

std::string HZEPHardwarePlatform::getPartName() const {
    return answerFirstDevice(*this, &HZEPDevice::getPartName);
}

std::string HZEPHardwarePlatform::getFpgaPart() const {
    return answerFirstDevice(*this, &HZEPDevice::getFpgaPart);
}

std::string HZEPHardwarePlatform::getFpgaDevice() const {
    return answerFirstDevice(*this, &HZEPDevice::getPartDevice);
}

std::string HZEPHardwarePlatform::getPlatformFile() const {
    return platformFile_;
}

void HZEPHardwarePlatform::getSystemClockNames(std::vector<std::string>& out) const {
    for (const HZEPSystemClock* clock : systemClocks_)
        out.push_back(clock->getName());
}

void HZEPHardwarePlatform::getCpuClockNames(std::vector<std::string>& out) const {
    out.push_back("CPU");
}

std::string HZEPHardwarePlatform::getClockFrequency(const std::string& name) const {
    const HZEPSystemClock* clock = findLast(systemClocks_, isNamed(name));
    return clock ? clock->getFrequency() : "";
}

void HZEPHardwarePlatform::getAllClockFrequencies(std::vector<std::string>& names, std::vector<std::string>& frequencies) const {
    for (const HZEPSystemClock* clock : systemClocks_) {
        names.push_back(clock->getName());
        frequencies.push_back(clock->getFrequency());
    }
}

void HZEPHardwarePlatform::getAllResources(std::vector<std::string>& types, std::vector<std::string>& counts) const {
    const std::pair<const char*, int> resources[] = {
        {"BRAM", getBRAMCount()}, {"DSP", getDSPCount()}, {"LUT", getLUTCount()}, {"FF", getFFCount()}, {"REG", getRegisterCount()},
    };
    for (const auto& [type, count] : resources) {
        if (count > 0) {
            types.push_back(type);
            counts.push_back(std::to_string(count));
        }
    }
}

std::string HZEPHardwarePlatform::getClockId(const std::string& name) const {
    const HZEPSystemClock* clock = findLast(systemClocks_, isNamed(name));
    return clock ? std::to_string(clock->getId()) : "";
}

std::string HZEPHardwarePlatform::getPlatformFrequency(int id) const {
    const HZEPSystemClock* clock = findLast(systemClocks_, hasId(id));
    return clock ? clock->getFrequency() : "";
}

HZEPSystemClock* HZEPHardwarePlatform::getDefaultClock() const {
    return findLast(systemClocks_, hasId(defaultClkId_));
}

std::string HZEPHardwarePlatform::getDefaultClockFrequency() const {
    const HZEPSystemClock* clock = getDefaultClock();
    return clock ? clock->getFrequency() : "";
}

std::string HZEPHardwarePlatform::getDefaultClockId() const {
    return std::to_string(defaultClkId_);
}

std::string HZEPHardwarePlatform::getDefaultClockName() const {
    const HZEPSystemClock* clock = getDefaultClock();
    return clock ? clock->getName() : "";
}

int HZEPHardwarePlatform::getBRAMCount() const {
    return bramCount_;
}

int HZEPHardwarePlatform::getDSPCount() const {
    return dspCount_;
}

int HZEPHardwarePlatform::getLUTCount() const {
    return lutCount_;
}

int HZEPHardwarePlatform::getFFCount() const {
    return ffCount_;
}

int HZEPHardwarePlatform::getRegisterCount() const {
    return registerCount_;
}

HostFwdIter<HZEPSystemClock*>* HZEPHardwarePlatform::createSystemClockIter() const {
    return systemClocks_.createIter();
}

void HZEPHardwarePlatform::getSystemClocks(std::vector<HZEPSystemClock*>& out) const {
    systemClocks_.appendTo(out);
}

HZEPSystemClock* HZEPHardwarePlatform::addSystemClock() {
    return systemClocks_.add();
}

HostFwdIter<HZEPHardwareIPParam*>* HZEPHardwarePlatform::createIPParamIter() const {
    return ipParams_.createIter();
}

void HZEPHardwarePlatform::getHardwareIPParams(std::vector<HZEPHardwareIPParam*>& out) const {
    ipParams_.appendTo(out);
}

HZEPHardwareIPParam* HZEPHardwarePlatform::addHardwareIPParam() {
    return ipParams_.add();
}

HostFwdIter<HZEPHardwareNocConnectivity*>* HZEPHardwarePlatform::createNocConnectivityIter() const {
    return nocConnectivity_.createIter();
}

void HZEPHardwarePlatform::getNocConnectivity(std::vector<HZEPHardwareNocConnectivity*>& out) const {
    nocConnectivity_.appendTo(out);
}

HZEPHardwareNocConnectivity* HZEPHardwarePlatform::addNocConnectivity() {
    return nocConnectivity_.add();
}

HostFwdIter<HZEPHardwareBusInterface*>* HZEPHardwarePlatform::createBusInterfaceIter() const {
    return busInterfaces_.createIter();
}

void HZEPHardwarePlatform::getBusInterfaces(std::vector<HZEPHardwareBusInterface*>& out) const {
    busInterfaces_.appendTo(out);
}

HZEPHardwareBusInterface* HZEPHardwarePlatform::addBusInterface() {
    return busInterfaces_.add();
}

HostFwdIter<HZEPHardwareFeatureRom*>* HZEPHardwarePlatform::createFeatureRomIter() const {
    return featureRoms_.createIter();
}

void HZEPHardwarePlatform::getFeatureRoms(std::vector<HZEPHardwareFeatureRom*>& out) const {
    featureRoms_.appendTo(out);
}

HZEPHardwareFeatureRom* HZEPHardwarePlatform::addFeatureRom() {
    return featureRoms_.add();
}

HZEPHardwarePlatform::FeatureRomRange HZEPHardwarePlatform::getFeatureRomVecRange() const {
    return {featureRoms_.begin(), featureRoms_.end()};
}

HZEPHardwareBusInterface* HZEPHardwarePlatform::getBusInterfaceByName(const std::string& name) const {
    const std::unique_ptr<HostFwdIter<HZEPHardwareBusInterface*>> at(createBusInterfaceIter());
    while (at->hasNext()) {
        HZEPHardwareBusInterface* busInterface = at->next();
        if (busInterface->getName() == name)
            return busInterface;
    }
    return nullptr;
}

const std::string& HZEPHardwarePlatform::getHpfmString() const {
    return hpfmString_;
}

std::string HZEPHardwarePlatform::getGeneratedName() const {
    return generatedName_;
}

std::string HZEPHardwarePlatform::getGeneratedVersion() const {
    return generatedVersion_;
}

std::uint32_t HZEPHardwarePlatform::getGeneratedChangeList() const {
    return generatedChangeList_;
}

std::string HZEPHardwarePlatform::getGeneratedIpChangeList() const {
    return generatedIpChangeList_;
}

std::string HZEPHardwarePlatform::getGeneratedSharedDataChangeList() const {
    return generatedSharedDataChangeList_;
}

std::string HZEPHardwarePlatform::getGeneratedTimestamp() const {
    return generatedTimestamp_;
}

bool HZEPHardwarePlatform::isGeneratedByLink() const {
    return generatedByLink_;
}

std::string HZEPHardwarePlatform::getIdCode() const {
    return idCode_;
}

std::string HZEPHardwarePlatform::getExtendedIdCode() const {
    return extendedIdCode_;
}

bool HZEPHardwarePlatform::supportsHardware() const {
    return supportsHardware_;
}

bool HZEPHardwarePlatform::supportsSWEmulation() const {
    return supportsSWEmulation_;
}

bool HZEPHardwarePlatform::supportsHWEmulation() const {
    return supportsHWEmulation_;
}

bool HZEPHardwarePlatform::supportsTwoHwEmuBd() const {
    return supportsTwoHwEmuBd_;
}

void HZEPHardwarePlatform::setUsesNIFD(bool usesNIFD) {
    usesNIFD_ = usesNIFD;
}

bool HZEPHardwarePlatform::usesNIFD() const {
    return usesNIFD_;
}

void HZEPHardwarePlatform::setExpandable(bool expandable) {
    expandable_ = expandable;
}

void HZEPHardwarePlatform::setUnifiedPlatform(bool unifiedPlatform) {
    unifiedPlatform_ = unifiedPlatform;
}

void HZEPHardwarePlatform::setName(const std::string& name) {
    name_ = name;
}

void HZEPHardwarePlatform::setDescription(const std::string& description) {
    description_ = description;
}

void HZEPHardwarePlatform::setDetailedDescription(const std::string& detailedDescription) {
    detailedDescription_ = detailedDescription;
}

void HZEPHardwarePlatform::setVendor(const std::string& vendor) {
    vendor_ = vendor;
}

void HZEPHardwarePlatform::setBoardId(const std::string& boardId) {
    boardId_ = boardId;
}

void HZEPHardwarePlatform::setPlatformFile(const std::string& platformFile) {
    platformFile_ = platformFile;
}

const std::vector<std::string>& HZEPHardwarePlatform::getValidPlatformExts() {
    static const std::vector<std::string> exts = {".dsa", ".kar"};
    return exts;
}

bool HZEPHardwarePlatform::isValidPlatformExt(const std::string& ext) {
    const std::vector<std::string>& exts = getValidPlatformExts();
    return std::find(exts.begin(), exts.end(), ext) != exts.end();
}

void HZEPHardwarePlatform::setIsHWEmuPlatform(bool isHWEmuPlatform) {
    isHWEmuPlatform_ = isHWEmuPlatform;
    if (isHWEmuPlatform)
        setSupportsHWEmulation(true);
}

HZEPHardwarePlatform::PlatformState HZEPHardwarePlatform::getState() const {
    const auto found = std::find(std::begin(kStateNames), std::end(kStateNames), getPlatformState());
    return static_cast<PlatformState>(found - std::begin(kStateNames));
}

void HZEPHardwarePlatform::setState(PlatformState state) {
    setPlatformState(state >= synth && state <= pre_synth ? kStateNames[state] : "");
}

bool HZEPHardwarePlatform::isFlatShellIn_(PlatformState state) const {
    return getState() == state && isExpandable() && !usesPR() && designIntent_.getDataCenter();
}

bool HZEPHardwarePlatform::isPreSynthFlatShell() const {
    return isFlatShellIn_(pre_synth);
}

bool HZEPHardwarePlatform::isSynthFlatShell() const {
    return isFlatShellIn_(synth);
}

bool HZEPHardwarePlatform::isFlatShell() const {
    return isPreSynthFlatShell() || isSynthFlatShell();
}

std::string HZEPHardwarePlatform::getReconfigModuleName() const {
    const HPLDevice* device = getDevice("fpga0");
    return device ? device->getReadOnlyCore().getReconfigModuleName() : "";
}

bool HZEPHardwarePlatform::hasUserDefinedScalableClocks() const {
    const HPLDevice* device = getDevice("fpga0");
    return device && !device->getSystemClockMap().empty();
}

bool HZEPHardwarePlatform::hasScalableClocks() const {
    return std::any_of(systemClocks_.begin(), systemClocks_.end(), [](const HZEPSystemClock* clock) { return clock->isScalable(); }) ||
           hasUserDefinedScalableClocks();
}

bool HZEPHardwarePlatform::hasFixedClocks() const {
    return std::any_of(systemClocks_.begin(), systemClocks_.end(), [](const HZEPSystemClock* clock) { return clock->isFixed(); });
}

int HZEPHardwarePlatform::getBusInterfaceMaxDataWidth() const {
    int widest = 0;
    for (const HZEPHardwareBusInterface* busInterface : busInterfaces_)
        widest = std::max(widest, busInterface->getDataWidth());
    return widest;
}

unsigned HZEPHardwarePlatform::countBusInterfaces_(const char* type, const char* mode) const {
    return static_cast<unsigned>(
        std::count_if(busInterfaces_.begin(), busInterfaces_.end(), [&](const HZEPHardwareBusInterface* busInterface) {
            return ascii::equalsIgnoringCase(busInterface->getBusTypeRef(), type) &&
                   (!mode || ascii::equalsIgnoringCase(busInterface->getMode(), mode));
        }));
}

unsigned HZEPHardwarePlatform::getMaxAXIMMManagers() const {
    return countBusInterfaces_("aximm", "master");
}

unsigned HZEPHardwarePlatform::getMaxAXIMMSubordinates() const {
    return countBusInterfaces_("aximm", "slave");
}

unsigned HZEPHardwarePlatform::getMaxInterrupts() const {
    return countBusInterfaces_("interrupt", nullptr);
}

bool HZEPHardwarePlatform::hasSimContent() const {
    return !getFile("SIM_BINARY").empty();
}

HZEPReconfigPartition* HZEPHardwarePlatform::addReconfigPartition() {
    return reconfigPartitions_.add();
}

HZEPDesignIPInstance* HZEPHardwarePlatform::addDesignIPInstance() {
    return designIpInstances_.add();
}
