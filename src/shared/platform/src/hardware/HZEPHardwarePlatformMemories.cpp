// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HZEPHardwarePlatform.h"

#include "AsciiCase.h"
#include "HostMsgMgr.h"

#include <algorithm>
#include <ostream>
#include <set>

namespace {

enum MemoryResourceIndexState { NotIndexed = 0, Indexed = 1, NotYetKnown = 2 };

/// What one bus interface says about the platform's memories.
enum class MemoryRole { None, Indexed, NonIndexed };

MemoryRole getMemoryRole(const HZEPHardwareBusInterface& busInterface) {
    const std::string& port = busInterface.getMemPort();
    if (ascii::equalsIgnoringCase(port, "memss"))
        return MemoryRole::Indexed;
    const bool isNoMemory = port.empty() || ascii::equalsIgnoringCase(port, "m_axi_gp") || ascii::equalsIgnoringCase(port, "s_axi_gp") ||
                            ascii::equalsIgnoringCase(busInterface.getSPTag(), "default");
    return isNoMemory ? MemoryRole::None : MemoryRole::NonIndexed;
}

std::size_t appendInRole(MemoryRole role, const HZEPHardwarePlatform::BusInterfaces& all, HZEPHardwarePlatform::BusInterfaces& out) {
    std::copy_if(all.begin(), all.end(), std::back_inserter(out),
                 [role](const HZEPHardwareBusInterface* busInterface) { return getMemoryRole(*busInterface) == role; });
    return out.size();
}

bool isOfType(const HZEPHardwareBusInterface& busInterface, const std::string& type) {
    return ascii::equalsIgnoringCase(busInterface.getSPTag(), type);
}

} // namespace

std::size_t HZEPHardwarePlatform::getMemoryResourceBusInterfacesIndexed_(BusInterfaces& out) const {
    return appendInRole(MemoryRole::Indexed, busInterfaces_.items(), out);
}

std::size_t HZEPHardwarePlatform::getMemoryResourceBusInterfacesNonIndexed_(BusInterfaces& out) const {
    return appendInRole(MemoryRole::NonIndexed, busInterfaces_.items(), out);
}

void HZEPHardwarePlatform::getMemoryBusInterfaces(BusInterfaces& out) const {
    getMemoryResourceBusInterfacesIndexed_(out);
    getMemoryResourceBusInterfacesNonIndexed_(out);
}

bool HZEPHardwarePlatform::isMemoryResourceIndexed() const {
    if (memoryResourceIndexState_ != NotYetKnown)
        return memoryResourceIndexState_ == Indexed;
    for (const HZEPHardwareBusInterface* busInterface : busInterfaces_) {
        const MemoryRole role = getMemoryRole(*busInterface);
        if (role != MemoryRole::None) {
            memoryResourceIndexState_ = role == MemoryRole::Indexed ? Indexed : NotIndexed;
            return memoryResourceIndexState_ == Indexed;
        }
    }
    return false;
}

bool HZEPHardwarePlatform::supportsMemoryResourceIndex() const {
    return memoryResourceIndexState_ == Indexed;
}

HZEPHardwarePlatform::BusInterfaces HZEPHardwarePlatform::getMemoryInterfaces_() const {
    BusInterfaces interfaces;
    if (isMemoryResourceIndexed())
        getMemoryResourceBusInterfacesIndexed_(interfaces);
    else
        getMemoryResourceBusInterfacesNonIndexed_(interfaces);
    return interfaces;
}

unsigned HZEPHardwarePlatform::getUniqueMemoryTypeCount() const {
    std::vector<std::string> unused;
    return getUniqueMemoryTypeStrings(unused);
}

unsigned HZEPHardwarePlatform::getUniqueMemoryTypeStrings(std::vector<std::string>& out) const {
    const bool indexed = isMemoryResourceIndexed();
    std::set<std::string> types;
    for (const HZEPHardwareBusInterface* busInterface : getMemoryInterfaces_())
        types.insert(indexed ? ascii::toUpper(busInterface->getSPTag()) : busInterface->getSPTag());
    out.insert(out.end(), types.begin(), types.end());
    return static_cast<unsigned>(types.size());
}

bool HZEPHardwarePlatform::isUniqueMemoryType_(const std::string& type) const {
    std::vector<std::string> types;
    getUniqueMemoryTypeStrings(types);
    return std::find(types.begin(), types.end(), type) != types.end();
}

unsigned HZEPHardwarePlatform::getMemoryTypeCount(const std::string& type) const {
    if (!isUniqueMemoryType_(type))
        return 0;
    if (!isMemoryResourceIndexed())
        return 1;
    for (const HZEPHardwareBusInterface* busInterface : getMemoryInterfaces_()) {
        if (isOfType(*busInterface, type))
            return static_cast<unsigned>(busInterface->getNumAddressSegments());
    }
    return 0;
}

const HZEPHardwareBusInterface* HZEPHardwarePlatform::findMemoryBank_(const std::string& type, unsigned index) const {
    if (!isUniqueMemoryType_(type))
        return nullptr;
    const bool indexed = isMemoryResourceIndexed();
    const HZEPHardwareBusInterface* last = nullptr;
    for (const HZEPHardwareBusInterface* busInterface : getMemoryInterfaces_()) {
        if (isOfType(*busInterface, type) && (!indexed || busInterface->getNumAddressSegments() > index))
            last = busInterface;
    }
    return last;
}

unsigned HZEPHardwarePlatform::getMemoryIndex(const std::string& type, unsigned index) const {
    const HZEPHardwareBusInterface* bank = isMemoryResourceIndexed() ? findMemoryBank_(type, index) : nullptr;
    return bank ? bank->getMemoryIndex(index) : 0;
}

std::string HZEPHardwarePlatform::getMemorySize(const std::string& type, unsigned index) const {
    const HZEPHardwareBusInterface* bank = findMemoryBank_(type, index);
    if (!bank)
        return "";
    // Of no data: callers count on this figure for every indexed bank.
    return isMemoryResourceIndexed() ? "16GB" : bank->getSize();
}

std::string HZEPHardwarePlatform::getMemorySLR(const std::string& type, unsigned index) const {
    const HZEPHardwareBusInterface* bank = findMemoryBank_(type, index);
    if (!bank)
        return "";
    return isMemoryResourceIndexed() ? bank->getMemorySLR(index) : bank->getSLR();
}

void HZEPHardwarePlatform::updateHBMBankInfo(const std::string& instanceName, bool isDefault) {
    if (hbmInstanceName_.empty())
        hbmInstanceName_ = instanceName;
    if (hbmInstanceName_ != instanceName) {
        HostMsgMgr::getGlobal().send("platform", HostMsgMgr::Error, "@74-261@");
        return;
    }
    ++hbmBankCount_;
    if (isDefault)
        ++hbmDefaultBankCount_;
}

void HZEPHardwarePlatform::issueNormalizeMemoryBanksMessage(std::ostream& out) const {
    if (!hbmPresent_ || hbmDefaultBankCount_ == 0 || hbmDefaultBankCount_ == hbmBankCount_)
        return;
    out << "\n\nThe HBM instance '" << hbmInstanceName_
        << "' has only a subset of its auto-assignable memory banks tagged as 'default'. "
           "To attain better HBM bandwidth, use tz++ parameter '--advanced.param compiler.normalizeDefaultMemoryBanks=true' to change "
           "all HBM memory banks to 'default'."
        << std::endl
        << std::endl;
}
