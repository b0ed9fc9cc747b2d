// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HPLPlatform.h"
#include "HZEPPlatform.h"
#include "HZEPSoftwarePlatform.h"
#include "HZEPSystemConfig.h"
#include "HostFileUtils.h"
#include "TempDir.h"
#include "ZipBuilder.h"

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

/// The kestrel example with the software of minnow; gives the platform file's path.
inline std::string writeKestrel(const TempDir& dir) {
    const std::filesystem::path examples = HZEP_EXAMPLES;
    for (const std::string archive : {"hw/kestrel.kar", "hw_emu/kestrel_emu.kar"}) {
        std::filesystem::create_directories(std::filesystem::path(dir.path(archive)).parent_path());
        const std::filesystem::path folder = examples / "kestrel" / (archive + ".d");
        ZipBuilder zip(dir.path(archive));
        for (const auto& entry : std::filesystem::recursive_directory_iterator(folder))
            if (entry.is_regular_file())
                zip.add(entry.path().lexically_relative(folder), HostFileUtils::readFile(entry.path()));
        zip.write();
    }
    dir.write("sw/kestrel.spfm", HostFileUtils::readFile(examples / "minnow/sw/minnow.spfm"));
    return dir.write("kestrel.zpfm", HostFileUtils::readFile(examples / "kestrel/kestrel.zpfm"));
}

/// A platform in memory with hardware, and with software when asked for.
struct Built {
    HZEPPlatform platform;
    HPLPlatform* hardware = new HPLPlatform;
    HZEPSoftwarePlatform* software = nullptr;

    explicit Built(bool withSoftware = false) {
        platform.setHardwarePlatform(hardware);
        if (withSoftware)
            platform.addSoftwarePlatform(software = new HZEPSoftwarePlatform);
    }
    HZEPSystemConfig* addConfig(const std::string& name, const std::vector<std::string>& runtimes) const {
        HZEPSystemConfig* config = software->addSystemConfig();
        config->setName(name);
        for (const std::string& runtime : runtimes)
            config->addRuntime(runtime);
        return config;
    }
};

using Texts = std::vector<std::string>;

/// What a list question appends.
inline Texts listOf(const std::function<void(Texts&)>& question) {
    Texts list;
    question(list);
    return list;
}
