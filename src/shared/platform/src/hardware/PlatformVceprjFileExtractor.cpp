// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "PlatformVceprjFileExtractor.h"

#include "EntryName.h"
#include "HZEPHardwarePlatform.h"
#include "HostEnv.h"
#include "HostFile.h"
#include "PlatformFileExtractor.h"

bool PlatformVceprjFileExtractor::extractFromProject(const std::string& entry, const std::string& outFile) {
    const std::string project = unpackProject_();
    if (project.empty())
        return false;
    const bool extracted = extractFrom_(entry, project, outFile);
    HostFile(project).rm();
    return extracted;
}

bool PlatformVceprjFileExtractor::extractListed(const std::string& fileKey, const std::string& outFile) const {
    const std::string entry = platform_.getFile(fileKey);
    return !entry.empty() && extractFrom_(entry, platform_.getPlatformFile(), outFile);
}

std::string PlatformVceprjFileExtractor::unpackProject_() const {
    const std::string name = platform_.getFile("VCEPRJ");
    if (name.empty() || !staysBelowDirectory(name))
        return "";
    const std::string project = HostEnv::getHostTmpDir() + "/" + name;
    if (HostFile::isRegularFile(project) || extractFrom_(name, platform_.getPlatformFile(), project))
        return project;
    if (HostFile::isRegularFile(project))
        HostFile(project).rm();
    return "";
}

bool PlatformVceprjFileExtractor::extractFrom_(const std::string& entry, const std::string& archive, const std::string& outFile) const {
    // A child's entries lie below "hw_emu/" in the project too.
    return HostFile::isRegularFile(archive) &&
           PlatformFileExtractor::copy(PlatformFileExtractor::getEntryFor(platform_, entry), archive, outFile);
}
