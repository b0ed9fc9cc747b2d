// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "../loading/LoadingFixture.h"
#include "HZEPPlatform.h"

#include <filesystem>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

using Texts = std::vector<std::string>;
using Platforms = std::vector<HZEPPlatform*>;

/// Drops what is printed to the standard output while it lives.
class QuietOutput {
public:
    QuietOutput() : before_(std::cout.rdbuf(dropped_.rdbuf())) {}
    ~QuietOutput() { std::cout.rdbuf(before_); }
    QuietOutput(const QuietOutput&) = delete;
    QuietOutput& operator=(const QuietOutput&) = delete;
    std::string text() const { return dropped_.str(); }

private:
    std::ostringstream dropped_;
    std::streambuf* before_;
};

/// A platform directory: STEM.zpfm with hardware of that name in hw/STEM.kar and sw/p.spfm. Gives the path of the platform file.
inline std::string writePlatform(const TempDir& dir, const std::string& where, const std::string& stem, const std::string& hardware = "") {
    std::filesystem::create_directories(dir.path(where + "/hw"));
    ZipBuilder(dir.path(where + "/hw/" + stem + ".kar")).add("kar.json", hardware.empty() ? hardwareJson(stem) : hardware).write();
    dir.write(where + "/sw/p.spfm", kSoftwareFile);
    return dir.write(where + "/" + stem + ".zpfm", platformFile(hardwareElement(stem + ".kar")));
}

inline std::string writeLoose(const TempDir& dir, const std::string& file, const std::string& name) {
    std::filesystem::create_directories(std::filesystem::path(dir.path(file)).parent_path());
    return writeArchive(dir, file, name);
}

inline Texts filesOf(const Platforms& platforms) {
    Texts files;
    for (const HZEPPlatform* platform : platforms)
        files.push_back(platform->getPlatformFile());
    return files;
}

template <class Manager>
Texts filesOf(const Manager& manager) {
    Platforms platforms;
    manager.getPlatforms(platforms);
    return filesOf(platforms);
}
