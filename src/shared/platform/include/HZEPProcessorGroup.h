// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HZEPExport.h"
#include "JSONSerializable.h"

#include <string>

/// A processor with its operating system, and the paths and options to build for it. Lists of paths are kept as they stand in the file.
class HZEP_EXPORT HZEPProcessorGroup : public zep_platform::JSONSerializable {
public:
    HZEPProcessorGroup();
    void toJSON(zep_platform::JSONObjectWriter& writer) const override;
    ~HZEPProcessorGroup() override;
    HZEPProcessorGroup(const HZEPProcessorGroup&) = delete;
    HZEPProcessorGroup& operator=(const HZEPProcessorGroup&) = delete;

    virtual std::string getName() const;
    /// The name when no pretty name was set.
    virtual std::string getPrettyName() const;
    virtual std::string getCpuType() const;
    virtual std::string getArch() const;
    virtual std::string getCpuInstance() const;
    virtual std::string getOSName() const;
    virtual bool IsHypervisorGuest() const;
    virtual std::string getOSPrettyName() const;
    virtual std::string getIncludePaths() const;
    virtual std::string getLibraryPaths() const;
    virtual std::string getBSPIncludePaths() const;
    virtual std::string getBSPLibraryPaths() const;
    virtual std::string getCompilerOptions() const;
    virtual std::string getLinkerOptions() const;
    virtual std::string getSysRoot() const;

    virtual void setName(std::string name);
    virtual void setPrettyName(std::string prettyName);
    virtual void setCpuInstance(std::string cpuInstance);
    virtual void setCpuType(std::string cpuType);
    virtual void setArch(std::string arch);
    virtual void setOSName(std::string osName);
    virtual void setOSPrettyName(std::string osPrettyName);
    virtual void setIncludePaths(std::string includePaths);
    virtual void setLibraryPaths(std::string libraryPaths);
    virtual void setBSPIncludePaths(std::string bspIncludePaths);
    virtual void setBSPLibraryPaths(std::string bspLibraryPaths);
    virtual void setCompilerOptions(std::string compilerOptions);
    virtual void setLinkerOptions(std::string linkerOptions);
    virtual void setSysRoot(std::string sysRoot);
    virtual void setHypervisorGuest(bool guest);

private:
    std::string name_;
    std::string prettyName_;
    std::string cpuType_;
    std::string arch_;
    std::string cpuInstance_;
    std::string osName_;
    std::string osPrettyName_;
    std::string includePaths_;
    std::string libraryPaths_;
    std::string bspIncludePaths_;
    std::string bspLibraryPaths_;
    std::string compilerOptions_;
    std::string linkerOptions_;
    std::string sysRoot_;
    bool hypervisorGuest_ = false;
};
