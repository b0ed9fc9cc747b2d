// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "PlatformLoader.h"

#include "HPLPlatform.h"
#include "HZEPDsaJsonReader.h"
#include "HZEPDsaXmlReader.h"
#include "HZEPPlatform.h"
#include "HZEPPlatformXMLReader.h"
#include "HZEPReconfigurablePartition.h"
#include "HZEPSoftwarePlatform.h"
#include "HZEPSoftwarePlatformXMLReader.h"
#include "HostFile.h"
#include "HostMsgMgr.h"
#include "HostZipSession.h"

#include <boost/filesystem/path.hpp>

namespace zep_platform {

namespace {

constexpr const char* kBadHardware = "Failed to parse Hardware Platform metadata file";

std::string extensionOf(const std::string& path) {
    return boost::filesystem::path(path).extension().string();
}

} // namespace

PlatformLoader::PlatformLoader(const std::string& path, HwMetadataMode mode)
    : platform_(std::make_shared<HZEPPlatform>()), filePath_(path), hwMetadataMode_(mode) {
    if (filePath_.empty())
        return;
    const std::string extension = extensionOf(filePath_);
    const bool isArchive = HZEPHardwarePlatform::isValidPlatformExt(extension);
    if (isArchive || extension == ".spfm") {
        fileKind_ = isArchive ? HardwareFile : SoftwareFile;
        platform_->setZpfm(false);
        platform_->setPartial(true);
        return;
    }
    platform_->setZpfm(true);
    if (!HZEPPlatformXMLReader(filePath_, platform_.get()).parseFile())
        throw PlatformParseException("failed to parse the ZPFM file");
}

std::shared_ptr<HZEPPlatform> PlatformLoader::load() {
    if (loaded_ || !platform_)
        return platform_;
    try {
        if (platform_->hasReconfigurablePartitions()) {
            loadReconfigurablePartitions_();
        } else {
            // Hardware and merged emulation metadata stand in one archive.
            const HostZipSession session(hardwareFile_());
            attachHardwarePlatform();
            attachHardwareEmulationPlatform();
        }
        attachSoftwarePlatform();
        loaded_ = true;
    } catch (const PlatformParseException& e) {
        HostMsgMgr::getGlobal().send("platform", HostMsgMgr::CriticalWarning, "@74-60@%s", {e.what()});
        platform_.reset();
    }
    return platform_;
}

std::string PlatformLoader::hardwareFile_() const {
    if (platform_->isPartial())
        return fileKind_ == HardwareFile ? filePath_ : std::string();
    return platform_->getHardwarePlatformFile();
}

std::string PlatformLoader::softwareFile_() const {
    if (platform_->isPartial())
        return fileKind_ == SoftwareFile ? filePath_ : std::string();
    return platform_->getSoftwarePlatformFile();
}

void PlatformLoader::attachHardwarePlatform() {
    if (platform_->getHardwarePlatform() || (platform_->isPartial() && fileKind_ == SoftwareFile))
        return;
    const std::string file = hardwareFile_();
    if (!HostFile::exists(file))
        throw PlatformParseException("hardware platform file '" + file + "' does not exist");
    if (!HZEPHardwarePlatform::isValidPlatformExt(extensionOf(file)))
        throw PlatformParseException("incorrect file extension - only DSA and KAR files are supported");
    std::unique_ptr<HPLPlatform> hardware = readHardware_(file);
    if (!hardware)
        throw PlatformParseException(kBadHardware);
    if (platform_->isPartial())
        platform_->setPlatformFile(hardware->getPlatformFile());
    platform_->setHardwarePlatform(hardware.release());
}

void PlatformLoader::attachHardwareEmulationPlatform() {
    if (platform_->getHardwareEmulationPlatform())
        return;
    const std::string file = platform_->getHardwareEmuPlatformFile();
    if (file.empty())
        attachMergedHardwareEmulationPlatform_();
    else
        platform_->setHardwareEmulationPlatform(readJsonHardware_(file).release());
}

void PlatformLoader::attachMergedHardwareEmulationPlatform_() {
    const HZEPHardwarePlatform* hardware = platform_->getHardwarePlatform();
    if (!hardware)
        return;
    const std::string file = hardware->getPlatformFile();
    if (file.empty())
        return;
    const HostZipSession session(file);
    auto emulation = std::make_unique<HPLPlatform>();
    if (!HZEPDsaJsonReader(emulation.get()).parseHwEmuKAR(file, hwMetadataMode_))
        return;
    emulation->setIsChildHardwareEmuPlatform(true);
    platform_->setHardwareEmulationPlatform(emulation.release());
}

void PlatformLoader::loadReconfigurablePartitions_() {
    std::vector<HZEPReconfigurablePartition*> partitions;
    platform_->getReconfigurablePartitions(partitions);
    for (HZEPReconfigurablePartition* partition : partitions) {
        attachHardwarePlatform_(partition);
        attachHardwareEmulationPlatform_(partition);
    }
}

void PlatformLoader::attachHardwarePlatform_(HZEPReconfigurablePartition* partition) {
    if (partition->getHardwarePlatform())
        return;
    std::unique_ptr<HPLPlatform> read = readJsonHardware_(partition->getHardwarePlatformFile());
    if (!read)
        throw PlatformParseException(kBadHardware);
    HZEPHardwarePlatform* hardware = platform_->keepPartitionHardware(std::move(read));
    partition->setHardwarePlatform(hardware);
    if (platform_->getDefaultRPId() == partition->getID())
        platform_->setDefaultRPHardwarePlatform(hardware);
}

void PlatformLoader::attachHardwareEmulationPlatform_(HZEPReconfigurablePartition* partition) {
    if (partition->getHardwareEmulationPlatform())
        return;
    const std::string file = partition->getHardwareEmulationPlatformFile();
    if (file.empty())
        return;
    std::unique_ptr<HPLPlatform> read = readJsonHardware_(file);
    if (!read)
        // A platform without partitions goes on without its emulation file; one with partitions does not.
        throw PlatformParseException("Failed to parse Hardware Emulation Platform metadata file");
    HZEPHardwarePlatform* emulation = platform_->keepPartitionHardware(std::move(read));
    partition->setHardwareEmulationPlatform(emulation);
    if (platform_->getDefaultRPId() == partition->getID())
        platform_->setDefaultRPHardwareEmulationPlatform(emulation);
}

void PlatformLoader::attachSoftwarePlatform() {
    if (platform_->getSoftwarePlatform())
        return;
    const std::string file = softwareFile_();
    if (file.empty())
        return;
    if (!HostFile::exists(file))
        throw PlatformParseException("the software platform file does not exist");
    auto software = std::make_unique<HZEPSoftwarePlatform>();
    if (!HZEPSoftwarePlatformXMLReader(file, software.get()).parseFile())
        // Without "the": the file is there but does not parse. Callers tell the two texts apart.
        throw PlatformParseException("software platform file does not exist");
    platform_->addSoftwarePlatform(software.release());
}

/// Null when the archive's metadata can't be read; foreign exceptions pass.
std::unique_ptr<HPLPlatform> PlatformLoader::readHardware_(const std::string& file) const {
    const HostZipSession session(file);
    auto hardware = std::make_unique<HPLPlatform>();
    HZEPDsaJsonReader json(hardware.get());
    std::string entry;
    const bool isRead = json.canParse(file, hwMetadataMode_, entry) ? json.parseDSA(file, hwMetadataMode_)
                                                                    : HZEPDsaXmlReader(file, hardware.get()).parseDSA();
    return isRead ? std::move(hardware) : nullptr;
}

std::unique_ptr<HPLPlatform> PlatformLoader::readJsonHardware_(const std::string& file) const {
    const HostZipSession session(file);
    auto hardware = std::make_unique<HPLPlatform>();
    return HZEPDsaJsonReader(hardware.get()).parseDSA(file, hwMetadataMode_) ? std::move(hardware) : nullptr;
}

/// What the getters ask when a step failed.
static const HZEPPlatform& known(const std::shared_ptr<HZEPPlatform>& platform) {
    static const HZEPPlatform none;
    return platform ? *platform : none;
}

std::string PlatformLoader::getVersion() const {
    return known(platform_).getVersion();
}

std::string PlatformLoader::getFilePath() const {
    return platform_ ? platform_->getPlatformFile() : filePath_;
}

std::string PlatformLoader::getBaseName() const {
    return known(platform_).getPlatformBaseName();
}

std::string PlatformLoader::getName() const {
    return known(platform_).getName();
}

std::string PlatformLoader::getVendor() const {
    return known(platform_).getVendor();
}

std::string PlatformLoader::getDescription() const {
    return known(platform_).getDescription();
}

std::string PlatformLoader::getHardwarePlatformFile() const {
    return known(platform_).getHardwarePlatformFile();
}

std::string PlatformLoader::getHardwareEmuPlatformFile() const {
    return known(platform_).getHardwareEmuPlatformFile();
}

std::string PlatformLoader::getSoftwarePlatformFile() const {
    return known(platform_).getSoftwarePlatformFile();
}

} // namespace zep_platform
