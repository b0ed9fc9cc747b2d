// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "FuzzInput.h"
#include "HZEPPlatform.h"
#include "HZEPPlatformXMLReader.h"

/// A platform file is read or refused; no exception leaves the reader.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    silence();
    static const InputFile file(".zpfm");
    HZEPPlatform platform;
    HZEPPlatformXMLReader reader(file.write(data, size), &platform);
    if (reader.parseFile() != reader.getErrorMsg().empty())
        std::abort();
    return 0;
}
