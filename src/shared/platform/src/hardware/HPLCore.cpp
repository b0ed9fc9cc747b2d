// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HPLCore.h"

#include "AsciiCase.h"
#include "ModelJson.h"

#include <algorithm>
#include <cstdlib>

using zep_platform::JSONListWriter;
using zep_platform::JSONObjectWriter;

namespace {

unsigned toWidth(const std::string& text) {
    return static_cast<unsigned>(std::strtol(text.c_str(), nullptr, 10));
}

int toCount(const std::string& text) {
    return static_cast<int>(std::strtol(text.c_str(), nullptr, 10));
}

} // namespace

void HPLCore::toJSON(JSONObjectWriter& writer) const {
    writer.addKey("name", name_);
    writer.addKey("type", type_);
    writer.addKey("instPath", instPath_);
    writer.addKey("sourceViewInstPath", sourceViewInstPath_);
    writer.addKey("parentRMInstPath", parentRMInstPath_);
    writer.addKey("reconfigModuleName", reconfigModuleName_);
    writer.addKey("drBDName", drBDName_);
    writer.addKey("vlnv", vlnv_);
    writer.addKey("clockFreq", getClockFreq());
    writer.addKey("numComputeUnits", std::to_string(numComputeUnits_));

    std::set<std::string> names;
    for (const auto& [name, resources] : pBlockToResourceMap_)
        names.insert(name);
    for (const auto& [name, slrs] : pBlockToSLRMap_)
        names.insert(name);
    JSONListWriter pblocks;
    for (const std::string& name : names) {
        JSONObjectWriter pblock;
        pblock.addKey("name", name);
        if (const auto slrs = pBlockToSLRMap_.find(name); slrs != pBlockToSLRMap_.end())
            model_json::addTexts(pblock, "validSlrs", slrs->second);
        if (const auto resources = pBlockToResourceMap_.find(name); resources != pBlockToResourceMap_.end())
            model_json::addPairs(pblock, "resources", resources->second, "name", "value");
        pblocks.addItem(std::move(pblock));
    }
    JSONObjectWriter available;
    available.addKey("bramCount", getBRAMCount());
    available.addKey("dspCount", getDSPCount());
    available.addKey("lutCount", getLUTCount());
    available.addKey("registerCount", getRegisterCount());
    available.addKey("pBlocks", std::move(pblocks));
    writer.addKey("availableResources", std::move(available));

    model_json::addPairs(writer, "configParams", configParamMap_, "name", "value");
    model_json::addObjects(writer, "ports", ports_);
}

std::string HPLCore::getClockFreq() const {
    if (!clockFreq_.empty())
        return clockFreq_;
    for (const HPLPort* port : ports_) {
        const auto isNamed = [port](const char* name) { return ascii::equalsIgnoringCase(port->getName(), name); };
        if (ascii::equalsIgnoringCase(port->getType(), "clk") && (isNamed("ACLK") || isNamed("KERNEL_CLK") || isNamed("DATA_CLK")))
            return port->getFrequency();
    }
    return "";
}

HPLPort* HPLCore::addPort() {
    return ports_.add();
}

void HPLCore::removePort(HPLPort* port) {
    ports_.remove(port);
}

HostFwdIter<HPLPort*>* HPLCore::createPortIter() const {
    return ports_.createIter();
}

unsigned HPLCore::getMaxAddrWidth() const {
    unsigned widest = 0;
    for (const HPLPort* port : ports_)
        widest = std::max(widest, toWidth(port->getAddrWidth()));
    return widest;
}

unsigned HPLCore::getMaxDataWidth() const {
    unsigned widest = 0;
    for (const HPLPort* port : ports_)
        widest = std::max(widest, toWidth(port->getDataWidth()));
    return widest;
}

std::string HPLCore::getDynamicPblockName_() const {
    return pBlockToResourceMap_.size() == 1 ? pBlockToResourceMap_.begin()->first : "pblock_dynamic_region";
}

std::string HPLCore::getCount_(const std::string& count, const char* type) const {
    if (!count.empty())
        return count;
    const int derived = getResCount(type, "");
    return derived == 0 ? "" : std::to_string(derived);
}

std::string HPLCore::getBRAMCount() const {
    return getCount_(bramCount_, "BRAM");
}

std::string HPLCore::getDSPCount() const {
    return getCount_(dspCount_, "DSP");
}

std::string HPLCore::getLUTCount() const {
    return getCount_(lutCount_, "LUT");
}

std::string HPLCore::getRegisterCount() const {
    return getCount_(registerCount_, "REG");
}

int HPLCore::getResCount(const std::string& pblock, const std::string& type, const std::string& suffix) const {
    const bool isDsp = ascii::equalsIgnoringCase(type, "DSP");
    const std::string key = suffix.empty() ? type : type + (isDsp ? "s_" : "_") + suffix;
    const auto block = std::find_if(pBlockToResourceMap_.begin(), pBlockToResourceMap_.end(),
                                    [&pblock](const auto& entry) { return ascii::equalsIgnoringCase(entry.first, pblock); });
    if (block == pBlockToResourceMap_.end())
        return 0;
    const ResourceMap& resources = block->second;
    auto resource = resources.find(key);
    if (resource == resources.end() && isDsp)
        resource = resources.find(key + "s");
    return resource == resources.end() ? 0 : toCount(resource->second);
}

int HPLCore::getResCount(const std::string& type, const std::string& suffix) const {
    return getResCount(getDynamicPblockName_(), type, suffix);
}

void HPLCore::addResourceInfo(const std::string& pblock, const std::string& name, const std::string& value) {
    getResourceMap(pblock)[name] = value;
}

bool HPLCore::hasResourceInfo() const {
    return !bramCount_.empty() || !lutCount_.empty() || !dspCount_.empty() || !registerCount_.empty() || !pBlockToResourceMap_.empty();
}

void HPLCore::addSLRInfo(const std::string& pblock, const std::set<std::string>& names) {
    pBlockToSLRMap_[pblock].insert(names.begin(), names.end());
}

void HPLCore::addSLRInfo(const std::string& pblock, const std::vector<std::string>& names) {
    if (!names.empty())
        pBlockToSLRMap_[pblock].insert(names.begin(), names.end());
}

void HPLCore::addSLRInfo(const std::string& pblock, const std::string& name) {
    pBlockToSLRMap_[pblock].insert(name);
}

void HPLCore::getSLRNames(const std::string& pblock, std::set<std::string>& names) const {
    const auto slrs = pBlockToSLRMap_.find(pblock);
    if (slrs != pBlockToSLRMap_.end())
        names.insert(slrs->second.begin(), slrs->second.end());
}

void HPLCore::getValidSLRNames(std::vector<std::string>& out) const {
    std::set<std::string> known(out.begin(), out.end());
    for (const auto& [pblock, names] : pBlockToSLRMap_) {
        for (const std::string& name : names) {
            if (known.insert(name).second)
                out.push_back(name);
        }
    }
}
