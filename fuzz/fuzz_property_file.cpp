// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "FuzzInput.h"
#include "HPLPlatform.h"
#include "HZEPEmulationUtils.h"
#include "HostFileUtils.h"

namespace {

struct Properties {
    HZEPEmulationUtils::Banks banks;
    HZEPEmulationUtils::Properties properties, clocks;
    HZEPEmulationUtils::Instances instances;

    void read(const std::string& path) { HZEPEmulationUtils::populateDdrPropMap(path, banks, properties, clocks, instances); }
    bool operator==(const Properties&) const = default;
};

std::string writeScript(const std::string& prop, const std::string& userProp) {
    static const InputFile file(".tcl");
    static HPLPlatform platform;
    const std::string path = file.write(nullptr, 0);
    std::ofstream out(path, std::ios::binary);
    std::string customScript;
    HZEPEmulationUtils::writeEmuPropertiesDict(&platform, prop, userProp, "", out, "fuzz", false, customScript);
    out.close();
    return HostFileUtils::readFile(path);
}

} // namespace

/// A property file is read or refused; reading it twice is reading it once, and so the script is the same.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    silence();
    static const InputFile file(".json");
    const std::string path = file.write(data, size);
    Properties once;
    once.read(path);
    Properties twice = once;
    twice.read(path);
    if (twice != once || writeScript(path, path) != writeScript(path, ""))
        std::abort();
    return 0;
}
