// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "FuzzInput.h"
#include "HZEPSoftwarePlatform.h"
#include "HZEPSoftwarePlatformXMLReader.h"
#include "JSONObjectWriter.h"

#include <sstream>

/// A software file is read or refused; what was read can be written.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    silence();
    static const InputFile file(".spfm");
    HZEPSoftwarePlatform platform;
    HZEPSoftwarePlatformXMLReader reader(file.write(data, size), &platform);
    if (!reader.parseFile())
        return 0;
    zep_platform::JSONObjectWriter writer;
    platform.toJSON(writer);
    std::ostringstream out;
    writer.write(out);
    return 0;
}
