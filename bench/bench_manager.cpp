// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

// The platform manager over 500, 1,000 and 2,000 platforms, beside the obvious way of each step: a list that is searched from its
// front for every file, a look at the canonical form of every file, and a comparison of every platform with every other.

#include "HZEPHardwarePlatform.h"
#include "HZEPHardwarePlatformMgr.h"
#include "HZEPPlatform.h"
#include "HZEPPlatformMgr.h"
#include "HZEPPlatformUtils.h"
#include "HZEPPlatformXMLReader.h"
#include "HZEPSoftwarePlatform.h"
#include "HZEPSoftwarePlatformXMLReader.h"
#include "HostFile.h"
#include "HostFileUtils.h"
#include "HostZip.h"
#include "Measure.h"

#include <boost/algorithm/string/predicate.hpp>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>
#include <stdexcept>
#include <string>
#include <unistd.h>
#include <vector>

namespace fs = std::filesystem;

namespace {

void check(bool isRight, const char* what) {
    if (!isRight)
        throw std::runtime_error(std::string("failed: ") + what);
}

/// Every platform in a directory of its own, all like one example.
void makePlatforms(const fs::path& root, int count) {
    const fs::path example = fs::path(HZEP_BENCH_EXAMPLES) / "pebble";
    const fs::path archive = root / "pebble.kar.part";
    HostZip::packDirectory((example / "hw" / "pebble.kar.d").string(), archive.string());
    std::string file = HostFileUtils::readFile((example / "pebble.zpfm").string());
    for (int i = 0; i < count; ++i) {
        const std::string name = "platform" + std::to_string(i);
        const fs::path dir = root / name;
        fs::create_directories(dir / "hw");
        fs::copy_file(archive, dir / "hw" / (name + ".kar"));
        fs::copy(example / "sw", dir / "sw");
        std::string text = file;
        const std::size_t at = text.find("pebble.kar");
        check(at != std::string::npos, "example");
        text.replace(at, 10, name + ".kar");
        std::ofstream(dir / (name + ".zpfm")) << text;
    }
}

/// The obvious manager.
class NaiveList {
public:
    NaiveList() = default;
    ~NaiveList() {
        for (const HZEPPlatform* platform : platforms_)
            delete platform;
    }
    NaiveList(const NaiveList&) = delete;
    NaiveList& operator=(const NaiveList&) = delete;

    void scan(const std::string& dir) {
        for (const auto& entry : fs::recursive_directory_iterator(dir)) {
            if (entry.path().extension() != ".zpfm" || isKnown(entry.path().string()))
                continue;
            auto platform = std::make_unique<HZEPPlatform>();
            check(HZEPPlatformXMLReader(entry.path().string(), platform.get()).parseFile(), "platform file");
            platform->setHardwarePlatform(HZEPHardwarePlatformMgr::addPlatform(platform->getHardwarePlatformFile()));
            auto* software = new HZEPSoftwarePlatform;
            platform->addSoftwarePlatform(software);
            check(HZEPSoftwarePlatformXMLReader(platform->getSoftwarePlatformFile(), software).parseFile(), "software file");
            platforms_.insert(platforms_.begin(), platform.release());
        }
        std::vector<HZEPHardwarePlatform*> loose;
        HZEPHardwarePlatformMgr::addPlatformsFromDirs({dir}, loose, false);
        check(loose.empty(), "loose archives");
    }

    const HZEPPlatform* get(const std::string& query) const {
        for (const HZEPPlatform* platform : platforms_)
            if (platform->getUniqueName() == query || boost::iequals(platform->getPlatformBaseName(), query) ||
                boost::iequals(HostFile::getCanonicalName(platform->getPlatformFile()), HostFile::getCanonicalName(query)))
                return platform;
        return nullptr;
    }

    std::size_t countLatest() const {
        std::size_t count = 0;
        for (const HZEPPlatform* platform : platforms_)
            count += HZEPPlatformUtils::isLatestVersion(platform, platforms_);
        return count;
    }

private:
    bool isKnown(const std::string& file) const {
        for (const HZEPPlatform* platform : platforms_)
            if (platform->getPlatformFile() == file)
                return true;
        return false;
    }
    std::vector<HZEPPlatform*> platforms_;
};

void row(const char* what, int count, double ours, double naive) {
    std::printf("%-28s %9d %10.2f %12.4f %10.2f\n", what, count, ours, ours / count, naive);
}

void measure(int count) {
    const fs::path root = fs::temp_directory_path() / ("hzep-bench-" + std::to_string(getpid()));
    fs::create_directories(root);
    makePlatforms(root, count);
    const std::string dir = root.string();
    {
        HZEPPlatformMgr manager;
        NaiveList naive;
        HZEPPlatformMgr().addPlatformsFromDirs({dir}); // the disk's own memory
        row("scan", count, bench::milliseconds([&] { manager.addPlatformsFromDirs({dir}); }),
            bench::milliseconds([&] { naive.scan(dir); }));
        check(manager.getNumPlatforms() == static_cast<std::size_t>(count), "scan");
        row("scan, all known", count, bench::milliseconds([&] { manager.addPlatformsFromDirs({dir}); }),
            bench::milliseconds([&] { naive.scan(dir); }));
        check(manager.getNumPlatforms() == static_cast<std::size_t>(count), "second scan");
        row("a name that none has", count, bench::milliseconds([&] { check(!manager.getPlatform("unknown"), "unknown"); }),
            bench::milliseconds([&] { check(!naive.get("unknown"), "unknown"); }));
        std::vector<HZEPPlatform*> platforms;
        manager.getPlatforms(platforms);
        row("the latest of all", count, bench::milliseconds([&] { HZEPPlatformUtils::filterOutOldPlatforms(platforms); }),
            bench::milliseconds([&] { check(naive.countLatest() == platforms.size(), "latest"); }));
        row("remove all", count, bench::milliseconds([&] { manager.clearAllPlatforms(); }), 0);
    }
    fs::remove_all(root);
}

} // namespace

int main() {
    std::printf("%-28s %9s %10s %12s %10s\n", "", "platforms", "ms", "ms/platform", "obvious ms");
    for (const int count : {500, 1'000, 2'000})
        measure(count);
}
