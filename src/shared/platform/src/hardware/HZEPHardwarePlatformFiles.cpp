// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HZEPHardwarePlatform.h"

#include "HZEPVcePartitionsJsonReader.h"
#include "HostFile.h"
#include "HostZipStreams.h"
#include "PlatformFileExtractor.h"
#include "PlatformVceprjFileExtractor.h"
#include "TemporaryFile.h"

#include <algorithm>

std::string HZEPHardwarePlatform::getPlatformExt() const {
    return HostFile(getPlatformFile()).getExt();
}

std::string HZEPHardwarePlatform::makeEntryName_(const std::string& prefix, const std::string& extension) const {
    const std::string ext = getPlatformExt();
    return ext.empty() ? "" : prefix + ext + extension;
}

std::string HZEPHardwarePlatform::getJsonFileName() const {
    return makeEntryName_("", ".json");
}

std::string HZEPHardwarePlatform::getAltJsonFileName() const {
    return "alt_" + getJsonFileName();
}

std::string HZEPHardwarePlatform::getXmlFileName() const {
    return isChildHardwareEmuPlatform() ? getHwEmuXmlFileName() : makeEntryName_("", ".xml");
}

const std::string& HZEPHardwarePlatform::getHwEmuDir() {
    static const std::string directory = "hw_emu";
    return directory;
}

std::string HZEPHardwarePlatform::getHwEmuJsonFileName() const {
    return makeEntryName_(getHwEmuDir() + "/", ".json");
}

std::string HZEPHardwarePlatform::getAltHwEmuJsonFileName() const {
    return makeEntryName_(getHwEmuDir() + "/alt_", ".json");
}

std::string HZEPHardwarePlatform::getHwEmuXmlFileName() const {
    return makeEntryName_(getHwEmuDir() + "/", ".xml");
}

bool HZEPHardwarePlatform::containsChildHardwareEmuPlatform() const {
    const std::string archive = getPlatformFile();
    return !isChildHardwareEmuPlatform() && !archive.empty() && hoststream::iostreams::zip::is_file(archive, getHwEmuJsonFileName());
}

bool HZEPHardwarePlatform::extract(const std::string& entry, const std::string& zipFile, const std::string& outFile) const {
    return PlatformFileExtractor::copy(entry, zipFile, outFile);
}

bool HZEPHardwarePlatform::extractFile(const std::string& fileKey, const std::string& outFile) const {
    const std::string entry = getFile(fileKey);
    return !entry.empty() && extract(entry, getPlatformFile(), outFile);
}

bool HZEPHardwarePlatform::extractFileFromPlatform(const std::string& entry, const std::string& outFile) const {
    return !entry.empty() && !outFile.empty() && PlatformFileExtractor(*this).extract(entry, outFile);
}

bool HZEPHardwarePlatform::extractHPFMFile(const std::string& outFile) const {
    const std::string entry = getFile("HPFM");
    return !entry.empty() && PlatformFileExtractor(*this, getNormalizeMemoryBanks()).extract(entry, outFile);
}

HZEPVcePartition* HZEPHardwarePlatform::addVcePartition() {
    return &vcePartitions_.emplace_back();
}

HZEPVcePartition* HZEPHardwarePlatform::addVcePartition(int startColumn, int numColumns) {
    return &vcePartitions_.emplace_back(startColumn, numColumns);
}

void HZEPHardwarePlatform::parseVCEPartitions(const std::string& file) {
    HZEPVcePartitionsJsonReader(*this).parse(file);
}

void HZEPHardwarePlatform::initVcePartitions() const {
    if (isExpandable() || vcePartitionsLoaded_)
        return;
    vcePartitionsLoaded_ = true;

    const TemporaryFile file("vce_partitions.json");
    PlatformVceprjFileExtractor(*this).extractFromProject("vcearchive/arch/vce_partition.json", file.getPath());
    if (file.isRegularFile())
        const_cast<HZEPHardwarePlatform*>(this)->parseVCEPartitions(file.getPath()); // fills the list kept on first use
}

bool HZEPHardwarePlatform::hasVcePartitions() const {
    return !getVcePartitions().empty();
}

std::vector<HZEPVcePartition>& HZEPHardwarePlatform::getVcePartitions() {
    initVcePartitions();
    return vcePartitions_;
}

const std::vector<HZEPVcePartition>& HZEPHardwarePlatform::getVcePartitions() const {
    initVcePartitions();
    return vcePartitions_;
}

bool HZEPHardwarePlatform::hasVcePartition(const std::string& plInterfaceId) const {
    const std::vector<HZEPVcePartition>& partitions = getVcePartitions();
    return std::any_of(partitions.begin(), partitions.end(),
                       [&](const HZEPVcePartition& partition) { return partition.hasPartition(plInterfaceId); });
}

const HZEPVcePartition& HZEPHardwarePlatform::findVcePartition(const std::string& vceInst) const {
    static const HZEPVcePartition none;
    const auto found = std::find_if(vcePartitions_.begin(), vcePartitions_.end(),
                                    [&](const HZEPVcePartition& partition) { return partition.vceInst() == vceInst; });
    return found == vcePartitions_.end() ? none : *found;
}
