// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HZEPExport.h"
#include "HZEPOwnedList.h"
#include "HostVector.h"
#include "JSONSerializable.h"

#include <string>
#include <vector>

class HZEPBootImg;
class HZEPProcessorGroup;

/// One system configuration of a software platform: processor groups, boot images, runtimes. It owns its groups and images.
class HZEP_EXPORT HZEPSystemConfig : public zep_platform::JSONSerializable {
public:
    HZEPSystemConfig();
    void toJSON(zep_platform::JSONObjectWriter& writer) const override;
    ~HZEPSystemConfig() override;
    HZEPSystemConfig(const HZEPSystemConfig&) = delete;
    HZEPSystemConfig& operator=(const HZEPSystemConfig&) = delete;

    virtual std::string getName() const;
    virtual std::string getDesc() const;
    /// The name when no pretty name was set.
    virtual std::string getPrettyName() const;
    /// The name of the first processor group when none was set; "" without groups.
    virtual std::string getDefaultProcGrpName() const;
    virtual std::string getPrebuiltData() const;
    /// All lists are appended to.
    virtual void getProcessorGroups(HostVector<HZEPProcessorGroup*>& out) const;
    /// The names that addProcessorGroup(name) recorded.
    virtual void getProcessorGroups(HostVector<std::string>& out) const;
    virtual void getRuntimes(HostVector<std::string>& out) const;
    /// "ocl" becomes "OpenCL" and "cpp" becomes "C/C++", ignoring case; others stay.
    virtual void getRuntimesByPrettyName(HostVector<std::string>& out) const;
    /// The first group of exactly that name, null if none.
    virtual HZEPProcessorGroup* getProcGrpByName(std::string name) const;
    /// The name of the first boot image when none was set; "" without images.
    virtual std::string getDefaultBootImgName() const;
    virtual void getBootImgs(HostVector<HZEPBootImg*>& out) const;
    /// The first image of exactly that name, null if none.
    virtual HZEPBootImg* getBootImgByName(std::string name) const;
    virtual void setName(std::string name);
    virtual void setDesc(std::string desc);
    virtual void setPrettyName(std::string name);
    virtual void setDefaultProcGrpName(std::string name);
    virtual void setDefaultBootImgName(std::string name);
    /// A new, empty image at the end of the list.
    virtual HZEPBootImg* addBootImg();
    /// Records the name only.
    virtual void addProcessorGroup(std::string name);
    /// A new, empty group at the end of the list.
    virtual HZEPProcessorGroup* addProcessorGroup();
    virtual void setSupportsQemu(bool supports);
    virtual void addRuntime(std::string runtime);

    void setPrebuiltData(std::string data) { prebuiltData_ = std::move(data); }
    bool isQemuSupported() const { return supportsQemu_; }

private:
    std::string name_;
    std::string prettyName_;
    std::string desc_;
    std::string prebuiltData_;
    std::string defaultProcGrpName_;
    std::string defaultBootImgName_;
    bool supportsQemu_ = false;
    std::vector<std::string> runtimes_;
    std::vector<std::string> processorGroupNames_;
    HZEPOwnedList<HZEPProcessorGroup> processorGroups_;
    HZEPOwnedList<HZEPBootImg> bootImgs_;
};
