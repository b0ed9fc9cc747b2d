// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HDFToDSAConverter.h"

#include "HPLPlatform.h"
#include "HZEPDsaXmlWriter.h"
#include "HostErrors.h"
#include "HostFile.h"
#include "HostFileUtils.h"
#include "HostHwDefUtils.h"
#include "HostMsgMgr.h"
#include "StagedFiles.h"

#include <filesystem>

namespace {

constexpr const char* kStagingFault = "@74-46@";
constexpr const char* kMetadataFault = "@74-47@";
constexpr const char* kArchiveFault = "@36-276@";
// Readers find the metadata by the archive's extension.
constexpr const char* kExtension = ".dsa";
constexpr const char* kXmlName = "/dsa.xml";
constexpr const char* kJsonName = "/dsa.json";

/// False when the step raises, after a message with the cause.
template <class Step>
bool report(const char* key, const Step& step) {
    try {
        step();
        return true;
    } catch (const std::exception& error) {
        HostMsgMgr::getGlobal().send("platform", HostMsgMgr::CriticalWarning, key, {error.what()});
        return false;
    }
}

std::string makeAbsolute(std::string path) {
    HostFileUtils::makeAbsolutePath(path);
    return path;
}

void describe(const HostHwDef& definition, HPLPlatform& platform) {
    const std::string& top = definition.getHierTopModuleName();
    const std::size_t colon = top.find(':');
    if (colon != std::string::npos)
        platform.setVendor(top.substr(0, colon));
    platform.setName(top.substr(colon == std::string::npos ? 0 : colon + 1));
    platform.setUnifiedPlatform(true);
    platform.setExpandable(false);
    platform.setUsesPR(false);
    platform.setState(HZEPHardwarePlatform::impl);
    // XML metadata have no room for a platform without a device.
    HPLDevice& device = *platform.addDevice();
    device.setName("fpga0");
    device.setType("fpga");
    try {
        device.setFpgaPart(definition.getPart());
    } catch (const HostAlgException&) {
        throw HostAlgException(definition.getFile() + ": the part '" + definition.getPart() +
                               "' has not the form architecture:device:package:speed[:grade[[:power]:revision]]");
    }
    device.getCore().setName(platform.getName());
}

} // namespace

HDFToDSAConverter::HDFToDSAConverter(const std::string& hwPfmDir, const std::string& hwPfmFile, const std::string& stagingDir)
    : hwPfmDir_(hwPfmDir), hwPfmFileName_(hwPfmFile), stagingDir_(stagingDir) {
    if (!HostFile::isDir(hwPfmDir_))
        throw HostAlgException("Could not find specified dir: '" + hwPfmDir_ + "'on disk.");
    hwPfmFile_ = makeAbsolute((std::filesystem::path(hwPfmDir_) / hwPfmFileName_).string());
    if (hwPfmFileName_.empty() || !HostFile::exists(hwPfmFile_))
        throw HostAlgException("Could not find specified file: '" + hwPfmFile_ + "'on disk.");
    dsaFile_ =
        (std::filesystem::path(makeAbsolute(stagingDir_)).parent_path() / std::filesystem::path(hwPfmFile_).stem()).string() + kExtension;
    if (HostFile::getCanonicalName(dsaFile_) == HostFile::getCanonicalName(hwPfmFile_))
        throw HostAlgException("The archive '" + dsaFile_ + "' would be written over the hardware definition.");
    std::string fault;
    definition_ = HostHwDefUtils::getHDF(hwPfmFile_, fault);
    if (!definition_)
        throw HostAlgException(fault);
}

HDFToDSAConverter::~HDFToDSAConverter() = default;

bool HDFToDSAConverter::writeDSA() {
    return createStagingDir() && writeHDF() && writeDsaXml() && writeDsaArchive();
}

bool HDFToDSAConverter::createStagingDir() {
    return report(kStagingFault, [this] {
        HostFileUtils::uniquifyFilenameInDir(stagingDir_);
        HostFileUtils::makeAbsolutePath(stagingDir_);
        HostFile(stagingDir_).mkDirRecursive();
        HostFile::ensureWritableDirectory(stagingDir_);
    });
}

bool HDFToDSAConverter::writeHDF() {
    return report(kStagingFault, [this] { definition_->write(stagingDir_); });
}

bool HDFToDSAConverter::writeDsaXml() {
    return report(kMetadataFault, [this] {
        HPLPlatform platform;
        describe(*definition_, platform);
        HZEPDsaXmlWriter(&platform, stagingDir_ + kXmlName).writeDSA();
        staged_files::writeDocument(platform, stagingDir_ + kJsonName);
    });
}

bool HDFToDSAConverter::writeDsaArchive() {
    return report(kArchiveFault, [this] { staged_files::pack(stagingDir_, dsaFile_, true); });
}
