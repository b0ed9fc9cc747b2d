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
#include "HostZip.h"
#include "HostZipSession.h"

#include <boost/filesystem/path.hpp>

#include <utility>

namespace zep_platform {

namespace {

constexpr const char* kBadHardware = "Failed to parse Hardware Platform metadata file";

[[noreturn]] void failOverMissing(const std::string& text, const std::string& file) {
    throw PlatformParseException(text, {file, "", 0, 0, "does not exist"});
}

std::string quoteEntry(const std::string& entry) {
    return '"' + entry + '"';
}

/// What keeps the archive from being read is said before what a reader missed in it.
HostFault findArchiveFault(const std::string& archive, const HostFault& ofReader) {
    std::string cause = HostZip::getFault(archive);
    return cause.empty() ? ofReader : HostFault{archive, "", 0, 0, std::move(cause)};
}

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
    HZEPPlatformXMLReader reader(filePath_, platform_.get());
    if (!reader.parseFile())
        throw PlatformParseException("failed to parse the ZPFM file", reader.getFault());
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
        failure_ = e;
        HostMsgMgr::getGlobal().send("platform", HostMsgMgr::CriticalWarning, "@74-60@%s", {e.what()}, e.getFault());
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
        failOverMissing("hardware platform file '" + file + "' does not exist", file);
    if (!HZEPHardwarePlatform::isValidPlatformExt(extensionOf(file))) {
        const std::string text = "incorrect file extension - only DSA and KAR files are supported";
        throw PlatformParseException(text, {file, "", 0, 0, text});
    }
    std::unique_ptr<HPLPlatform> hardware = readHardware_(file);
    if (platform_->isPartial())
        platform_->setPlatformFile(hardware->getPlatformFile());
    platform_->setHardwarePlatform(hardware.release());
}

void PlatformLoader::attachHardwareEmulationPlatform() {
    if (platform_->getHardwareEmulationPlatform())
        return;
    const std::string file = platform_->getHardwareEmuPlatformFile();
    HostFault unused;
    if (file.empty())
        attachMergedHardwareEmulationPlatform_();
    else
        platform_->setHardwareEmulationPlatform(readJsonHardware_(file, unused).release());
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
    HostFault fault;
    std::unique_ptr<HPLPlatform> read = readJsonHardware_(partition->getHardwarePlatformFile(), fault);
    if (!read)
        throw PlatformParseException(kBadHardware, fault);
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
    HostFault fault;
    std::unique_ptr<HPLPlatform> read = readJsonHardware_(file, fault);
    if (!read)
        // A platform without partitions goes on without its emulation file; one with partitions does not.
        throw PlatformParseException("Failed to parse Hardware Emulation Platform metadata file", fault);
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
        failOverMissing("the software platform file does not exist", file);
    auto software = std::make_unique<HZEPSoftwarePlatform>();
    HZEPSoftwarePlatformXMLReader reader(file, software.get());
    if (!reader.parseFile())
        // Without "the": the file is there but does not parse. Callers tell the two texts apart.
        throw PlatformParseException("software platform file does not exist", reader.getFault());
    platform_->addSoftwarePlatform(software.release());
}

/// Raises PlatformParseException when the archive's metadata can't be read; foreign exceptions pass.
std::unique_ptr<HPLPlatform> PlatformLoader::readHardware_(const std::string& file) const {
    const HostZipSession session(file);
    auto hardware = std::make_unique<HPLPlatform>();
    HZEPDsaJsonReader json(hardware.get());
    std::string entry;
    if (json.canParse(file, hwMetadataMode_, entry)) {
        if (json.parseDSA(file, hwMetadataMode_))
            return hardware;
        throw PlatformParseException(kBadHardware, json.getFault());
    }
    HZEPDsaXmlReader xml(file, hardware.get());
    if (xml.parseDSA())
        return hardware;
    HostFault fault = findArchiveFault(file, xml.getFault());
    if (const std::string member = hardware->getXmlFileName(); fault.member == member && !HostZip::containsFile(file, member))
        // XML is looked for last, and an archive without any metadata is not to blame for having none in XML.
        fault = {file, "", 0, 0,
                 "holds no metadata: there is no entry " +
                     (hwMetadataMode_ == XmlOnly ? "" : quoteEntry(hardware->getJsonFileName()) + " or ") + quoteEntry(member)};
    throw PlatformParseException(kBadHardware, std::move(fault));
}

/// Null, with the fault, when there is no JSON metadata that can be read.
std::unique_ptr<HPLPlatform> PlatformLoader::readJsonHardware_(const std::string& file, HostFault& fault) const {
    const HostZipSession session(file);
    auto hardware = std::make_unique<HPLPlatform>();
    HZEPDsaJsonReader json(hardware.get());
    if (json.parseDSA(file, hwMetadataMode_))
        return hardware;
    fault = HostFile::exists(file) ? findArchiveFault(file, json.getFault()) : json.getFault();
    return nullptr;
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
