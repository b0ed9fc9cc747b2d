// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "FuzzInput.h"
#include "HPLPlatform.h"
#include "HZEPHpfmReader.h"
#include "HZEPHpfmUtl.h"
#include "HostFileUtils.h"
#include "JSONObjectWriter.h"

#include <sstream>

/// A hardware platform file is read or refused, as a text and as a file alike, and what was read can be written. One that was repaired
/// needs no second repair.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    silence();
    static const InputFile file(".hpfm");
    const std::string path = file.write(data, size);
    const std::string text(reinterpret_cast<const char*>(data), size);
    HPLPlatform platform;
    const bool isRead = HZEPHpfmReader(text, &platform).parseStream();
    HPLPlatform other;
    HZEPHpfmReader fromFile("a file", &other);
    fromFile.setPlatformFile(path);
    if (size > 0 && fromFile.parseFile() != isRead)
        std::abort();
    zep_platform::JSONObjectWriter writer;
    platform.toJSON(writer);
    std::ostringstream out;
    writer.write(out);

    HZEPHpfmUtl::ChangeAndWriteHpfmIfNeeded(path);
    const std::string repaired = HostFileUtils::readFile(path);
    HZEPHpfmUtl::ChangeAndWriteHpfmIfNeeded(path);
    if (HostFileUtils::readFile(path) != repaired || (!isRead && repaired != text))
        std::abort();
    return 0;
}
