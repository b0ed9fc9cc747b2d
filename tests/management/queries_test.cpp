// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "HPLPlatform.h"
#include "HZEPPlatformMgr.h"
#include "HZEPPlatformUtils.h"
#include "HZEPSoftwarePlatformUtils.h"
#include "HostEnv.h"
#include "ManagementFixture.h"

#include <gmock/gmock.h>

#include <random>

using testing::ElementsAre;
using Utils = HZEPPlatformUtils;

namespace {

constexpr const char* kEmbedded = "embedded";
constexpr const char* kDataCenter = "dataCenter";

/// Metadata of a platform by what the queries look at.
std::string hardware(const std::string& vendor, const std::string& board, const std::string& name, const std::string& version,
                     const std::string& part, const std::string& intent, const std::string& more = "") {
    std::string intents;
    for (const std::string key : {kDataCenter, kEmbedded, "externalHost", "serverManaged"})
        intents +=
            (intents.empty() ? "\"" : ", \"") + key + R"(": {"explicit": "true", "value": ")" + (key == intent ? "true\"}" : "false\"}");
    const std::size_t point = version.find('.');
    return R"({"vendor": ")" + vendor + R"(", "boardId": ")" + board + R"(", "name": ")" + name + R"(", "versionMajor": ")" +
           version.substr(0, point) + R"(", "versionMinor": ")" + version.substr(point + 1) +
           R"(", "devices": [{"name": "fpga0", "fpgaPart": ")" + part + R"(", "core": {}}], "designIntent": {)" + intents + "}" + more +
           "}";
}

/// A platform that nobody scanned.
struct Lone {
    Lone(const std::string& name, const std::string& version) {
        struct Versioned : HPLPlatform {
            std::string getVersion() const override { return version; }
            std::string version;
        };
        auto made = std::make_unique<Versioned>();
        made->version = version;
        made->setName(name);
        platform.setHardwarePlatform(made.release());
    }
    HZEPPlatform platform;
};

class Queries : public testing::Test {
protected:
    Queries() {
        HostEnv::setHostAppRootList({dir.path("root")});
        manager().clearAllPlatforms();
        manager().clearParsingErrorMsgs();
    }
    ~Queries() override {
        manager().clearAllPlatforms();
        HostEnv::setHostAppRootList({});
    }
    static HZEPPlatformMgr& manager() { return *HZEPPlatformMgr::getGlobalNoInit(); }

    /// Stems of the platforms, in order.
    static std::string stems(const Platforms& platforms) {
        std::string all;
        for (const HZEPPlatform* platform : platforms)
            all += (all.empty() ? "" : " ") + platform->getPlatformBaseName();
        return all;
    }

    // In the manager's list: old, emb, new, copy, loner.
    void scanFive() {
        const std::string arty = "tlv9:tlv9p:fsg:-2:e", zynx = "tlz7:tlz7eg:sbva:-1:i";
        writePlatform(dir, "root/platforms/x", "loner", R"({"vendor": "orrin", "boardId": "b1", "name": "base"})");
        writePlatform(dir, "copy", "copy", hardware("Orrin", "b2", "base", "1.10", arty, kDataCenter));
        writePlatform(dir, "new", "new", hardware("orrin", "b1", "base", "1.10", arty, kDataCenter, R"(, "unifiedPlatform": "true")"));
        writePlatform(dir, "emb", "emb", hardware("orrin", "b3", "linux", "2.0", zynx, kEmbedded, R"(, "expandablePlatform": "false")"));
        writePlatform(dir, "old", "old", hardware("orrin", "b1", "base", "1.9", arty, "externalHost"));
        manager().addPlatformsFromDirs({dir.path("root/platforms"), dir.path("copy"), dir.path("new"), dir.path("emb"), dir.path("old")});
        Platforms all;
        manager().getPlatforms(all);
        ASSERT_EQ(stems(all), "old emb new copy loner");
    }

    QuietOutput quiet;
    MessageLog log;
    TempDir dir;
};

TEST_F(Queries, AnswerAboutOnePlatform) {
    scanFive();
    EXPECT_TRUE(Utils::isKPLPlatform("NEW") && Utils::isKPLPlatform("old") && !Utils::isKPLPlatform("emb"));
    EXPECT_TRUE(Utils::isWELPlatform("emb") && Utils::isProcessorGroupRelevant("emb") && !Utils::isLinuxRootFSPathRelevant("new"));
    EXPECT_TRUE(Utils::isUnifiedPlatform("new") && !Utils::isUnifiedPlatform("old"));
    EXPECT_TRUE(Utils::isExpandablePlatform("new") && !Utils::isFixedPlatform("new") && Utils::isFixedPlatform("emb"));
    EXPECT_EQ(Utils::getFpgaPart("new"), "tlv9p-fsg-2-e");
    EXPECT_EQ(Utils::getFpgaPartAsFields("new"), "tlv9:tlv9p:fsg:-2:e");
    EXPECT_EQ(Utils::getDevice("loner"), nullptr);
    EXPECT_EQ(Utils::getFpgaPart("loner"), "");

    EXPECT_TRUE(Utils::isFixedPlatform("unknown"));
    EXPECT_FALSE(Utils::isExpandablePlatform("unknown") || Utils::isKPLPlatform("unknown") || Utils::isUserPlatform("unknown"));
    EXPECT_EQ(Utils::getPlatform("unknown"), nullptr);
    EXPECT_EQ(Utils::getFpgaPartAsFields("unknown"), "");
    EXPECT_EQ(Utils::getNumRuntimes("unknown"), 0u);
}

TEST_F(Queries, LookPlatformsUp) {
    scanFive();
    HZEPPlatform* old = Utils::getPlatform("old");
    EXPECT_EQ(Utils::getPlatformByZpfmFileBaseName("OLD"), old);
    EXPECT_EQ(Utils::getPlatformByZpfmFileBaseName(dir.path("old/old.zpfm")), nullptr);
    for (const std::string& name : {dir.path("old/old.zpfm"), std::string("Old"), dir.path("new/../old/old.zpfm")})
        EXPECT_EQ(Utils::getPlatformByUniqueName(name), old) << name;
    EXPECT_EQ(Utils::getPlatformByFilePath(dir.path("old/OLD.zpfm")), nullptr);
    EXPECT_EQ(Utils::getPlatformByFilePath(""), nullptr);
    Platforms found;
    Utils::getPlatformsByUniqueName("OLD", found);
    Utils::getPlatformsByUniqueName(dir.path("emb/emb.zpfm"), found);
    EXPECT_EQ(stems(found), "old emb");

    EXPECT_EQ(quiet.text(), "");
    setenv("GET_PLATFORM_BY_PATH_DEBUG_VAR", "", 1);
    Utils::getPlatformByFilePath(dir.path("old/../emb/emb.zpfm"));
    unsetenv("GET_PLATFORM_BY_PATH_DEBUG_VAR");
    EXPECT_EQ(quiet.text(), "sZpfmFileCanonical is: " + dir.path("emb/emb.zpfm") + "\nsPlatFileCanonical is: " + dir.path("old/old.zpfm") +
                                "\nDoes not match\nsPlatFileCanonical is: " + dir.path("emb/emb.zpfm") + "\nFound a match\n");
}

TEST_F(Queries, NarrowByVbnvPartIntentAndBoard) {
    scanFive();
    const auto found = [](auto query, auto... args) {
        Platforms out;
        query(args..., out);
        return stems(out);
    };
    const auto vbnv = Utils::getPlatformsByVBNV;
    EXPECT_EQ(found(vbnv, "orrin", "b1", "base", "1.10"), "new");
    EXPECT_EQ(found(vbnv, "orrin", "", "base", "1.10"), "");
    EXPECT_EQ(found(Utils::getLatestPlatformsByVBNV, "orrin", "b1", "base", "1.9"), "old");
    EXPECT_EQ(found(Utils::getPlatformsByPart, "tlv9"), "old new copy");
    EXPECT_EQ(found(Utils::getPlatformsByPart, "TLV9"), "");

    const auto intent = Utils::getPlatformsByDesignIntent;
    EXPECT_EQ(found(intent, 0, "tlv9", "", "", false), "old new copy");
    EXPECT_EQ(found(intent, 0, "tlv9", "", "", true), "new copy");
    EXPECT_EQ(found(intent, 8, "tlv9", "orrin", "b1", false), "new");
    EXPECT_EQ(found(intent, 2, "tlv9", "", "", true), "old"); // the newer one is out before versions are compared
    EXPECT_EQ(found(intent, 1, "tlv9", "", "", false) + found(intent, 2 | 8, "tlv9", "", "", false), "");
    EXPECT_EQ(found(intent, 4, "tlz7", "", "b3", false), "emb");

    const auto narrow = Utils::getPlatformsByCategoryFamilyVendorAndBoard;
    EXPECT_EQ(found(narrow, "", "", "", ""), "old emb new copy loner");
    EXPECT_EQ(found(narrow, "ACCELERATION", "TLV9", "orrin", ""), "old new copy");
    EXPECT_EQ(found(narrow, "", "", "", "B2"), "copy");
    EXPECT_EQ(found(narrow, "other", "", "", ""), "");
    Platforms twice = {Utils::getPlatform("new")};
    narrow("", "tlv9", "", "", twice);
    EXPECT_EQ(stems(twice), "new old copy");
    Texts texts;
    Utils::getBoardsByCategoryFamilyAndVendor("", "", "ORRIN", texts);
    EXPECT_THAT(texts, ElementsAre("b1", "b3", "b2"));
    texts.clear();
    Utils::getBoardsByPartAndVendor("tlv9p-fsg-2-e", "", texts);
    EXPECT_THAT(texts, ElementsAre("b1", "b2"));
    texts.clear();
    Utils::getSupportedFpgaParts(texts);
    EXPECT_THAT(texts, ElementsAre("tlv9p-fsg-2-e", "tlz7eg-sbva-1-i"));
}

TEST_F(Queries, CompareTwoFieldsOfAVersionAsNumbers) {
    const struct {
        std::string version, other;
        bool isLatest;
    } cases[] = {
        {"1.10", "1.9", true},    {"1.9", "1.10", false}, {"2", "2.0", true}, {"2.0", "2", true},
        {"2.0.1", "2.0.2", true}, {"", "1.0", false},     {"", "", false},    {"1..3", "1.3", true},
        {"x", "0.0", true},       {"...", "0", false},    {"1.0", "", true},  {"1.9", "2.0", false},
    };
    for (const auto& each : cases) {
        Lone one("n", each.version), other("n", each.other), stranger("other", "9.9");
        HZEPPlatform bare;
        EXPECT_EQ(Utils::isLatestVersion(&one.platform, {&one.platform, &stranger.platform, nullptr, &bare, &other.platform}),
                  each.isLatest)
            << each.version << " against " << each.other;
        EXPECT_FALSE(Utils::isLatestVersion(&bare, {}) || Utils::isLatestVersion(nullptr, {}));
    }
    // The list as a whole, against each platform by itself.
    std::mt19937 random(5);
    std::vector<std::unique_ptr<Lone>> lones;
    Platforms all, expected;
    for (int i = 0; i < 60; ++i) {
        const auto digit = [&random] { return std::to_string(random() % 3); };
        lones.push_back(std::make_unique<Lone>("n" + digit(), digit() + "." + digit()));
        all.push_back(&lones.back()->platform);
    }
    for (HZEPPlatform* platform : all)
        if (Utils::isLatestVersion(platform, all))
            expected.push_back(platform);
    Utils::filterOutOldPlatforms(all);
    EXPECT_EQ(all, expected);
    EXPECT_LT(expected.size(), 60u);

    scanFive();
    EXPECT_TRUE(Utils::isLatestVersion(Utils::getPlatform("new")));
    EXPECT_FALSE(Utils::isLatestVersion(Utils::getPlatform("old")));
}

TEST_F(Queries, TellFactoryFromUserDirectories) {
    scanFive();
    writePlatform(dir, "new", "beside");
    manager().addPlatformsFromDirs({dir.path("new")});
    const auto dirs = [](auto query) {
        Texts out;
        query(out);
        return out;
    };
    EXPECT_THAT(dirs(Utils::getRootInstallPlatformDirs), ElementsAre(dir.path("root/platforms"), "/opt/tolvan/platforms"));
    EXPECT_TRUE(Utils::isInstallPlatformDir(dir.path("root/platformsAndMore")));
    EXPECT_FALSE(Utils::isInstallPlatformDir(dir.path("root")));
    EXPECT_TRUE(Utils::isUserPlatform("new") && !Utils::isUserPlatform("loner"));
    EXPECT_THAT(dirs(Utils::getAllFactoryPlatformDirs), ElementsAre(dir.path("root/platforms/x")));
    EXPECT_THAT(dirs(Utils::getAllUserPlatformDirs), ElementsAre(dir.path("new"), dir.path("old"), dir.path("emb"), dir.path("copy")));
    EXPECT_THAT(dirs(Utils::getUnifiedPlatformDirs), ElementsAre(dir.path("new")));

    dir.write("bad/bad.zpfm", platformFile(hardwareElement("none.kar")));
    EXPECT_THAT(Utils::setUserPlatformDirs({dir.path("bad")}),
                testing::MatchesRegex("Hardware platform file .*none.kar for platform "
                                      ".*bad.zpfm does not exist on disk. Unable to load platform.\n"));
    EXPECT_EQ(Utils::setUserPlatformDirs({}), "");
    EXPECT_THAT(filesOf(manager()), ElementsAre(dir.path("root/platforms/x/loner.zpfm")));
    manager().clearAllPlatforms();
    EXPECT_EQ(Utils::setUserPlatformDirs({}), "No Platforms Found.\n\n");
}

TEST_F(Queries, FindRuntimesAndPathsInTheSystemConfigurations) {
    std::string software = kSoftwareFile;
    software.replace(software.find("\"ocl\""), 5, "\"ocl,cpp,x\"");
    const auto at = software.find("<zep:os ");
    software.insert(at + 8, "zep:includePaths=\"/inc\" zep:libraryPaths=\"/lib\" ");
    writePlatform(dir, "a", "a");
    dir.write("a/sw/p.spfm", software);
    writeLoose(dir, "a/loose.kar", "loose");
    ZipBuilder(dir.path("a/loose.kar")).add("kar.json", hardware("o", "b", "n", "1.0", "a:b:c:d", kDataCenter)).write();
    manager().addPlatformsFromDirs({dir.path("a")});
    const auto runtimes = [](const std::string& name, const std::string& config) {
        Texts out;
        Utils::getRuntimes(name, config, out);
        Utils::getRuntimesByPrettyName(name, config, out);
        return out;
    };
    EXPECT_THAT(runtimes("a", ""), ElementsAre("ocl", "cpp", "x", "OpenCL", "C/C++"));
    EXPECT_THAT(runtimes("a", "Linux"), ElementsAre("ocl", "cpp", "x", "OpenCL", "C/C++", "x"));
    EXPECT_THAT(runtimes("a", "none"), ElementsAre());
    EXPECT_TRUE(Utils::supportsMultipleRuntimes("a") && !Utils::supportsMultipleRuntimes("a", "none"));
    manager().setProjectType(HZEPPlatformMgr::PlatformProject);
    EXPECT_THAT(runtimes("loose", "any"), ElementsAre("ocl", "OpenCL"));
    manager().setProjectType(HZEPPlatformMgr::ZepProject);

    EXPECT_EQ(HZEPSoftwarePlatformUtils::getIncludePaths("a", "linux", "a53", "linux"), "/inc");
    EXPECT_EQ(HZEPSoftwarePlatformUtils::getLibraryPaths(dir.path("a/a.zpfm"), "linux", "a53", "linux"), "/lib");
    for (const Texts& wrong : {Texts{"b", "linux", "a53", "linux"},
                               {"a", "Linux", "a53", "linux"},
                               {"a", "linux", "a72", "linux"},
                               {"a", "linux", "a53", "Linux"}})
        EXPECT_EQ(HZEPSoftwarePlatformUtils::getIncludePaths(wrong[0], wrong[1], wrong[2], wrong[3]), "");
}

} // namespace
