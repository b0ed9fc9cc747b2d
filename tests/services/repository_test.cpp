// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HostEnv.h"
#include "NativePlatformRepoService.h"
#include "TempDir.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::ElementsAre;
using testing::UnorderedElementsAre;
using Paths = std::vector<std::string>;

class Repository : public testing::Test {
protected:
    ~Repository() override { HostEnv::setHostAppRootList({}); }

    Paths find(const std::string& name, const std::string& repoPath) const {
        Paths files;
        service_.getZpfmFiles(name, repoPath, files);
        return files;
    }
    std::string at(const std::string& name) const { return dir_.path(name); }

    const TempDir dir_;
    const zep::platform::NativePlatformRepoService service_;
};

TEST_F(Repository, FindsPlatformFilesTwoLevelsDown) {
    for (const char* file : {"r/a.zpfm", "r/1/B.zpfm", "r/1/2/c.zpfm", "r/1/2/3/deep.zpfm", "r/upper.ZPFM", "r/x.kar", "s/a.zpfm"})
        dir_.write(file, "");
    std::filesystem::create_symlink("nowhere", at("r/dangling"));
    std::filesystem::create_symlink("itself", at("r/itself"));
    std::filesystem::create_directory_symlink(at("s"), at("r/linked"));
    const std::string both = at("r") + "::" + at("nowhere") + ":" + at("s");

    EXPECT_THAT(find("", both),
                UnorderedElementsAre(at("r/a.zpfm"), at("r/1/B.zpfm"), at("r/1/2/c.zpfm"), at("r/linked/a.zpfm"), at("s/a.zpfm")));
    EXPECT_THAT(find("b", both), ElementsAre(at("r/1/B.zpfm")));
    EXPECT_THAT(find("B.zpfm", both), ElementsAre());
    EXPECT_THAT(find(at("r/upper.ZPFM"), ""), ElementsAre(at("r/upper.ZPFM")));
    EXPECT_THAT(find(at("s/../r/a.zpfm"), both), ElementsAre(at("r/a.zpfm")));
}

TEST_F(Repository, LoopsOfLinksEnd) {
    dir_.write("r/a.zpfm", "");
    std::filesystem::create_directory_symlink("..", at("r/up"));
    std::filesystem::create_directory_symlink(".", at("r/here"));
    const Paths files = find("a", at("r"));
    EXPECT_LE(files.size(), 10U);
    EXPECT_THAT(files, testing::Contains(at("r/a.zpfm")));
}

TEST_F(Repository, JoinsEachDirectoryOnce) {
    for (const char* file : {"a/f", "b/f", "root1/platforms/p.zpfm", "root2/platforms/f"})
        dir_.write(file, "");
    HostEnv::setHostAppRootList({at("root1"), at("bare"), at("root2")});
    EXPECT_EQ(service_.getPlatformRepoPath({at("a"), at("b"), at("b/../a"), at("a/f"), at("no"), ""}, false), at("a") + ":" + at("b"));

    Paths defaults{"kept"};
    service_.getDefaultPlatformLookupDirs(defaults);
    std::erase(defaults, "/opt/tolvan/platforms");
    EXPECT_THAT(defaults, ElementsAre("kept", at("root1/platforms"), at("root2/platforms")));
    EXPECT_THAT(service_.getPlatformRepoPath({at("root2/platforms")}, true),
                testing::AllOf(testing::StartsWith(at("root2/platforms") + ":"), testing::EndsWith(at("root1/platforms"))));

    Paths parts, files;
    service_.splitToFullDirs_(":" + at("a") + "/::" + at("no") + ":", parts);
    EXPECT_THAT(parts, ElementsAre(at("a"), at("no")));
    service_.getZpfmFiles("P", Paths{}, true, files);
    EXPECT_THAT(files, ElementsAre(at("root1/platforms/p.zpfm")));
}

} // namespace
