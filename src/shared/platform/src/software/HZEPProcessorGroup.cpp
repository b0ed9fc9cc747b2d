// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HZEPProcessorGroup.h"

#include "JSONObjectWriter.h"

HZEPProcessorGroup::HZEPProcessorGroup() = default;

HZEPProcessorGroup::~HZEPProcessorGroup() = default;

std::string HZEPProcessorGroup::getName() const {
    return name_;
}

std::string HZEPProcessorGroup::getPrettyName() const {
    return prettyName_.empty() ? name_ : prettyName_;
}

std::string HZEPProcessorGroup::getCpuType() const {
    return cpuType_;
}

std::string HZEPProcessorGroup::getArch() const {
    return arch_;
}

std::string HZEPProcessorGroup::getCpuInstance() const {
    return cpuInstance_;
}

std::string HZEPProcessorGroup::getOSName() const {
    return osName_;
}

bool HZEPProcessorGroup::IsHypervisorGuest() const {
    return hypervisorGuest_;
}

std::string HZEPProcessorGroup::getOSPrettyName() const {
    return osPrettyName_;
}

std::string HZEPProcessorGroup::getIncludePaths() const {
    return includePaths_;
}

std::string HZEPProcessorGroup::getLibraryPaths() const {
    return libraryPaths_;
}

std::string HZEPProcessorGroup::getBSPIncludePaths() const {
    return bspIncludePaths_;
}

std::string HZEPProcessorGroup::getBSPLibraryPaths() const {
    return bspLibraryPaths_;
}

std::string HZEPProcessorGroup::getCompilerOptions() const {
    return compilerOptions_;
}

std::string HZEPProcessorGroup::getLinkerOptions() const {
    return linkerOptions_;
}

std::string HZEPProcessorGroup::getSysRoot() const {
    return sysRoot_;
}

void HZEPProcessorGroup::setName(std::string name) {
    name_ = std::move(name);
}

void HZEPProcessorGroup::setPrettyName(std::string prettyName) {
    prettyName_ = std::move(prettyName);
}

void HZEPProcessorGroup::setCpuInstance(std::string cpuInstance) {
    cpuInstance_ = std::move(cpuInstance);
}

void HZEPProcessorGroup::setCpuType(std::string cpuType) {
    cpuType_ = std::move(cpuType);
}

void HZEPProcessorGroup::setArch(std::string arch) {
    arch_ = std::move(arch);
}

void HZEPProcessorGroup::setOSName(std::string osName) {
    osName_ = std::move(osName);
}

void HZEPProcessorGroup::setOSPrettyName(std::string osPrettyName) {
    osPrettyName_ = std::move(osPrettyName);
}

void HZEPProcessorGroup::setIncludePaths(std::string includePaths) {
    includePaths_ = std::move(includePaths);
}

void HZEPProcessorGroup::setLibraryPaths(std::string libraryPaths) {
    libraryPaths_ = std::move(libraryPaths);
}

void HZEPProcessorGroup::setBSPIncludePaths(std::string bspIncludePaths) {
    bspIncludePaths_ = std::move(bspIncludePaths);
}

void HZEPProcessorGroup::setBSPLibraryPaths(std::string bspLibraryPaths) {
    bspLibraryPaths_ = std::move(bspLibraryPaths);
}

void HZEPProcessorGroup::setCompilerOptions(std::string compilerOptions) {
    compilerOptions_ = std::move(compilerOptions);
}

void HZEPProcessorGroup::setLinkerOptions(std::string linkerOptions) {
    linkerOptions_ = std::move(linkerOptions);
}

void HZEPProcessorGroup::setSysRoot(std::string sysRoot) {
    sysRoot_ = std::move(sysRoot);
}

void HZEPProcessorGroup::setHypervisorGuest(bool guest) {
    hypervisorGuest_ = guest;
}

void HZEPProcessorGroup::toJSON(zep_platform::JSONObjectWriter& writer) const {
    writer.addKey("name", getName());
    writer.addKey("prettyName", getPrettyName());
    writer.addKey("cpuType", getCpuType());
    writer.addKey("cpuInstance", getCpuInstance());
    writer.addKey("osPrettyName", getOSPrettyName());
    writer.addKey("osName", getOSName());
    writer.addKey("osIncludePaths", getIncludePaths());
    writer.addKey("osLibraryPaths", getLibraryPaths());
    writer.addKey("osCompilerOptions", getCompilerOptions());
    writer.addKey("osLinkerOptions", getLinkerOptions());
    writer.addKey("osHypervisorGuest", IsHypervisorGuest());
    writer.addKey("osBSPIncludePaths", getBSPIncludePaths());
    writer.addKey("osBSPLibraryPaths", getBSPLibraryPaths());
    writer.addKey("osSysRoot", getSysRoot());
}
