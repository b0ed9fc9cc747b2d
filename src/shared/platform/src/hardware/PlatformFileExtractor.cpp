// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "PlatformFileExtractor.h"

#include "HZEPHardwarePlatform.h"
#include "HZEPHpfmUtl.h"
#include "HostErrors.h"
#include "HostFile.h"
#include "HostZipStreams.h"

#include <fstream>
#include <vector>

bool PlatformFileExtractor::extract(const std::string& entry, const std::string& outFile) const {
    if (!copy(getEntryFor(platform_, entry), platform_.getPlatformFile(), outFile))
        return false;
    if (normalizeHpfm_ && HostFile(outFile).getExt() == "hpfm")
        HZEPHpfmUtl::ChangeAndWriteHpfmIfNeeded(outFile);
    return true;
}

bool PlatformFileExtractor::copy(const std::string& entry, const std::string& archive, const std::string& outFile) {
    hoststream::iostreams::zip_istream in(entry, archive, std::ios_base::in | std::ios_base::binary, 3);
    if (!in.is_open())
        return false;
    const std::string directory = HostFile(outFile).getParent();
    try {
        if (!directory.empty())
            HostFile(directory).mkDirRecursive();
    } catch (const HostErrorBase&) {
        return false;
    }
    std::ofstream out(outFile, std::ios_base::binary | std::ios_base::trunc);
    std::vector<char> buffer(64 * 1024);
    while (in && out) {
        in.read(buffer.data(), static_cast<std::streamsize>(buffer.size()));
        out.write(buffer.data(), in.gcount());
    }
    out.close();
    return out && !in.bad();
}

std::string PlatformFileExtractor::getEntryFor(const HZEPHardwarePlatform& platform, const std::string& entry) {
    return platform.isChildHardwareEmuPlatform() ? HZEPHardwarePlatform::getHwEmuDir() + "/" + entry : entry;
}
