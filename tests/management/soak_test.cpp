// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "../formats/DsaXmlDocument.h"
#include "HZEPPlatformMgr.h"
#include "HZEPPlatformUtils.h"
#include "HZEPSoftwarePlatformUtils.h"
#include "HostEnv.h"
#include "ManagementFixture.h"

#include <malloc.h>
#include <unistd.h>

#ifdef __SANITIZE_ADDRESS__
// The compiler's own headers lack this one.
extern "C" std::size_t __sanitizer_get_current_allocated_bytes();
#endif

namespace {

constexpr int kRounds = 200;
constexpr int kWarmUp = 20;
/// Bytes in use that the rounds after the warm-up may add: far less than one byte a round and platform. The plain allocator also counts
/// what its caches of freed pieces hold, which differs from round to round.
#ifdef __SANITIZE_ADDRESS__
constexpr long kMaxGrowth = 1024;
#else
constexpr long kMaxGrowth = 64 << 10;
#endif
/// Of the process as a whole, which the allocator's own bookkeeping moves; under the sanitizers freed memory is held back.
constexpr long kMaxResidentGrowth = 1 << 20;

long bytesInUse() {
#ifdef __SANITIZE_ADDRESS__
    return static_cast<long>(__sanitizer_get_current_allocated_bytes());
#else
    const struct mallinfo2 info = mallinfo2();
    return static_cast<long>(info.uordblks + info.hblkhd);
#endif
}

long bytesResident() {
    long size = 0;
    long resident = 0;
    std::ifstream("/proc/self/statm") >> size >> resident;
    return resident * sysconf(_SC_PAGESIZE);
}

/// Platforms of every kind, good and bad, and archives of every kind.
void fill(const TempDir& dir) {
    for (int i = 0; i < 6; ++i)
        writePlatform(dir, "user/p" + std::to_string(i), "p" + std::to_string(i));
    writePlatform(dir, "root/platforms/f", "f");
    writePlatform(dir, "user/split", "split");
    dir.write("user/split/split.zpfm", platformFile(partitionElement("1", hardwareElement("split.kar"))));
    writePlatform(dir, "user/halfSplit", "half");
    dir.write("user/halfSplit/half.zpfm",
              platformFile(partitionElement("1", hardwareElement("half.kar")) + partitionElement("2", hardwareElement("none.kar"))));
    dir.write("user/noXml.zpfm", "<zep:platform");
    dir.write("user/noHardware.zpfm", platformFile(hardwareElement("none.kar")));
    writePlatform(dir, "user/badSoftware", "s");
    dir.write("user/badSoftware/sw/p.spfm", "<");
    ZipBuilder(dir.path("user/loose.dsa")).add("dsa.json", "{").add("dsa.xml", kDsaXml).write();
    writeLoose(dir, "user/loose.kar", "loose");
    writeLoose(dir, "user/again.kar", "loose");
    dir.write("user/broken.kar", "no archive");
    std::filesystem::create_symlink("loose.kar", dir.path("user/link.kar"));
    std::filesystem::create_directory_symlink("..", dir.path("user/p0/loop"));
}

void ask(const HZEPPlatformMgr& manager) {
    using Utils = HZEPPlatformUtils;
    Platforms platforms, found;
    manager.getPlatforms(platforms);
    ASSERT_GT(platforms.size(), 8u);
    for (const HZEPPlatform* platform : platforms) {
        const std::string name = platform->getPlatformBaseName();
        EXPECT_NE(Utils::getPlatform(platform->getPlatformFile()), nullptr);
        EXPECT_GT(Utils::getNumRuntimes(name), 0u);
        Utils::isLatestVersion(platform);
        Utils::getPlatformsByUniqueName(name, found);
        HZEPSoftwarePlatformUtils::getIncludePaths(name, "linux", "a53", "linux");
        renderJson(*platform);
    }
    Utils::getPlatformByUniqueName("unknown");
    Utils::getLatestPlatformsByVBNV("orrin", "b1", "p1", "1.2", found);
    Utils::getPlatformsByDesignIntent(8, "", "", "", true, found);
    Texts texts;
    Utils::getBoardsByCategoryFamilyAndVendor("", "", "", texts);
    Utils::getSupportedFpgaParts(texts);
    Utils::getUnifiedPlatformDirs(texts);
}

TEST(Soak, TwoHundredRoundsLeaveNothingBehind) {
    std::streambuf* const output = std::cout.rdbuf(nullptr); // nothing may gather here
    const TempDir dir;
    fill(dir);
    const HostMsgMgr::Sink before = HostMsgMgr::getGlobal().setSink([](const HostMsg&) {});
    HostEnv::setHostAppRootList({dir.path("root")});
    HZEPPlatformMgr& manager = *HZEPPlatformMgr::getGlobalNoInit();
    const Texts all = {dir.path("user"), dir.path("root/platforms"), dir.path("user/p1")};
    long inUse = 0;
    long resident = 0;
    for (int round = 0; round < kRounds; ++round) {
        if (round == kWarmUp) {
            inUse = bytesInUse();
            resident = bytesResident();
        }
        manager.addPlatformsFromDirs("P3", all);
        manager.addPlatformsFromDirs(all);
        manager.addPlatformsFromDirs(all);
        manager.setBoardRepoPaths({dir.path()});
        ask(manager);
        HZEPPlatformUtils::setUserPlatformDirs({dir.path("user/p2")});
        manager.removePlatformsFromDirs({dir.path("user/p2")});
        manager.setProjectType(HZEPPlatformMgr::PlatformProject);
        HZEPPlatformUtils::getPlatform("loose");
        manager.setProjectType(HZEPPlatformMgr::ZepProject);
        manager.clearAllPlatforms();
        manager.clearParsingErrorMsgs();
    }
    const long inUseAfter = bytesInUse() - inUse;
    const long residentAfter = bytesResident() - resident;
    std::cerr << "After " << kWarmUp << " rounds " << inUse << " bytes in use, " << resident << " resident; after " << kRounds << " "
              << std::showpos << inUseAfter << ", " << residentAfter << std::noshowpos << std::endl;
    EXPECT_LE(inUseAfter, kMaxGrowth);
#ifndef __SANITIZE_ADDRESS__
    EXPECT_LE(residentAfter, kMaxResidentGrowth);
#endif
    HostEnv::setHostAppRootList({});
    HostMsgMgr::getGlobal().setSink(before);
    std::cout.clear();
    std::cout.rdbuf(output);
}

} // namespace
