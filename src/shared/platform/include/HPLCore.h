// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HPLPort.h"
#include "HZEPOwnedList.h"
#include "JSONSerializable.h"

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

/// The programmable region of a device: instance paths, ports, pblocks and resources. Values are kept as the text that the
/// metadata gave; counts are read base 10, and what is no number counts as 0.
class HZEP_EXPORT HPLCore : public zep_platform::JSONSerializable {
public:
    using ResourceMap = std::map<std::string, std::string>;

    HPLCore() = default;
    HPLCore(const HPLCore&) = delete;
    HPLCore& operator=(const HPLCore&) = delete;

    void toJSON(zep_platform::JSONObjectWriter& writer) const override;

    const std::string& getName() const { return name_; }
    void setName(std::string name) { name_ = std::move(name); }
    const std::string& getType() const { return type_; }
    void setType(std::string type) { type_ = std::move(type); }
    const std::string& getVlnv() const { return vlnv_; }
    void setVlnv(std::string vlnv) { vlnv_ = std::move(vlnv); }
    const std::string& getSourceViewInstPath() const { return sourceViewInstPath_; }
    void setSourceViewInstPath(std::string sourceViewInstPath) { sourceViewInstPath_ = std::move(sourceViewInstPath); }
    const std::string& getInstPath() const { return instPath_; }
    void setInstPath(std::string instPath) { instPath_ = std::move(instPath); }
    const std::string& getParentRMInstPath() const { return parentRMInstPath_; }
    void setParentRMInstPath(std::string parentRMInstPath) { parentRMInstPath_ = std::move(parentRMInstPath); }
    const std::string& getReconfigModuleName() const { return reconfigModuleName_; }
    void setReconfigModuleName(std::string reconfigModuleName) { reconfigModuleName_ = std::move(reconfigModuleName); }
    const std::string& getDRBaseAddress() const { return drBaseAddress_; }
    void setDRBaseAddress(std::string drBaseAddress) { drBaseAddress_ = std::move(drBaseAddress); }
    const std::string& getDRBDName() const { return drBDName_; }
    void setDRBDName(std::string drBDName) { drBDName_ = std::move(drBDName); }

    /// The frequency set, else that of the first port of type "clk" named "ACLK", "KERNEL_CLK" or "DATA_CLK", ignoring case.
    std::string getClockFreq() const;
    void setClockFreq(std::string clockFreq) { clockFreq_ = std::move(clockFreq); }

    std::uint16_t getNumComputeUnits() const { return numComputeUnits_; }
    void setNumComputeUnits(std::uint16_t numComputeUnits) { numComputeUnits_ = numComputeUnits; }

    HPLPort* addPort();
    /// Deletes the port; one that is not in the list is left alone.
    void removePort(HPLPort* port);
    HostFwdIter<HPLPort*>* createPortIter() const;

    /// Largest width of a port, 0 without ports.
    unsigned getMaxAddrWidth() const;
    unsigned getMaxDataWidth() const;

    std::map<std::string, std::string>& getConfigParamMap() { return configParamMap_; }
    const std::map<std::string, std::string>& getReadOnlyConfigParamMap() const { return configParamMap_; }
    void addConfigParam(const std::string& name, const std::string& value) { configParamMap_[name] = value; }

    /// The count set, else that of the dynamic pblock's resources, "" when it has none.
    std::string getBRAMCount() const;
    std::string getDSPCount() const;
    std::string getLUTCount() const;
    std::string getRegisterCount() const;
    void setBRAMCount(std::string count) { bramCount_ = std::move(count); }
    void setDSPCount(std::string count) { dspCount_ = std::move(count); }
    void setLUTCount(std::string count) { lutCount_ = std::move(count); }
    void setRegisterCount(std::string count) { registerCount_ = std::move(count); }

    /// The value under `type` or `type`_`suffix` (for "DSP": DSPs_`suffix`, and "DSPs" beside "DSP") in the first pblock of that
    /// name, ignoring case; 0 when there is none. The second form asks the dynamic pblock: the only one, or else
    /// "pblock_dynamic_region".
    int getResCount(const std::string& pblock, const std::string& type, const std::string& suffix) const;
    int getResCount(const std::string& type, const std::string& suffix) const;

    std::map<std::string, ResourceMap>& getPBlockToResourceMap() { return pBlockToResourceMap_; }
    const std::map<std::string, ResourceMap>& getReadOnlyPBlockToResourceMap() const { return pBlockToResourceMap_; }
    /// An unknown pblock gets an empty entry.
    ResourceMap& getResourceMap(const std::string& pblock) { return pBlockToResourceMap_[pblock]; }
    void addResourceInfo(const std::string& pblock, const std::string& name, const std::string& value);
    bool hasResourceInfo() const;

    void addSLRInfo(const std::string& pblock, const std::set<std::string>& names);
    void addSLRInfo(const std::string& pblock, const std::vector<std::string>& names);
    void addSLRInfo(const std::string& pblock, const std::string& name);
    void getSLRNames(const std::string& pblock, std::set<std::string>& names) const;

    /// Appends the SLR names of all pblocks that `out` does not hold yet.
    void getValidSLRNames(std::vector<std::string>& out) const;

private:
    std::string getDynamicPblockName_() const;
    std::string getCount_(const std::string& count, const char* type) const;

    std::string name_;
    std::string type_;
    std::string vlnv_;
    std::string sourceViewInstPath_;
    std::string instPath_;
    std::string parentRMInstPath_;
    std::string reconfigModuleName_;
    std::string drBaseAddress_;
    std::string drBDName_;
    std::string clockFreq_;
    std::uint16_t numComputeUnits_ = 0;
    HZEPOwnedList<HPLPort> ports_;
    std::map<std::string, std::string> configParamMap_;
    std::string bramCount_;
    std::string lutCount_;
    std::string dspCount_;
    std::string registerCount_;
    std::map<std::string, ResourceMap> pBlockToResourceMap_;
    std::map<std::string, std::set<std::string>> pBlockToSLRMap_;
};
