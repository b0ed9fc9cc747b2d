// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "SimpleFixedKARCreator.h"

#include "HPLPlatform.h"
#include "HostErrors.h"
#include "HostFile.h"
#include "StagedFiles.h"

SimpleFixedKARCreator::SimpleFixedKARCreator(const std::string& outputFile) : tmpDir_("fixed_kar"), outputFile_(outputFile) {
    if (!HostFile::isDir(outputFile_))
        HostFile(outputFile_).rm();
}

bool SimpleFixedKARCreator::writeKAR() {
    setPlatformAttributes();
    writeJSON();
    createArchive();
    return true;
}

void SimpleFixedKARCreator::setPlatformAttributes() {
    HZEPHardwarePlatform& seed = getSeed_();
    seed.setUnifiedPlatform(true);
    seed.setExpandable(false);
    seed.setGeneratedByLink(true);
    seed.setGeneratedBySwEmuLink(true);
}

void SimpleFixedKARCreator::writeJSON() {
    const auto* const platform = dynamic_cast<const HPLPlatform*>(&getSeed_());
    if (!platform)
        throw HostAlgException("SimpleFixedKARCreator::writeJSON() - Could not cast the seed platform to HPLPlatform");
    staged_files::writeDocument(*platform, tmpDir_.get() + "/kar.json");
}

void SimpleFixedKARCreator::createArchive() {
    staged_files::pack(tmpDir_.get(), outputFile_, false);
}

HZEPHardwarePlatform& SimpleFixedKARCreator::getSeed_() const {
    if (!seedPlatform_)
        throw HostAlgException("SimpleFixedKARCreator::writeKAR() - seed platform is not set");
    return *seedPlatform_;
}
