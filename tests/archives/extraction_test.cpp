// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HPLPlatform.h"
#include "HostEnv.h"
#include "HostFile.h"
#include "TempDir.h"
#include "ZipBuilder.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace {

using Extract = bool (HZEPHardwarePlatform::*)(const std::string&) const;

class Extraction : public testing::Test {
protected:
    Extraction() : before_(HostEnv::getHostTmpDir()) {
        std::filesystem::create_directory(tmp_);
        HostEnv::setHostTmpDir(tmp_);
    }
    ~Extraction() override { HostEnv::setHostTmpDir(before_); }

    static std::string project(const std::string& prefix = "") {
        return ZipBuilder()
            .add(prefix + "vcearchive/druvel/logical_arch_vce.larch", "larch")
            .add(prefix + "vcearchive/druvel/vce_interface.vceintfcst", "intfcst")
            .add(prefix + "vcearchive/druvel/vce_interface.vceintfsol", "intfsol")
            .add(prefix + "vcearchive/druvel/vce_constraints.vcecst", "vcecst")
            .add(
                prefix + "vcearchive/druvel/vceprj_meta_data.json",
                R"({"MetaData": [{"name": "VCE_PL_INTF_ID_STR", "value": "1st"}, {"name": "x"}, {"name": "VCE_PL_INTF_ID_STR", "value": "id-7"}]})")
            .bytes();
    }

    /// What the operation extracts; "-" when it answers false.
    std::string get(const HPLPlatform& platform, Extract extract) {
        const std::string file = dir_.path("out/x.txt");
        std::filesystem::remove(file);
        const bool done = (platform.*extract)(file);
        EXPECT_EQ(std::filesystem::exists(file), done);
        EXPECT_TRUE(std::filesystem::is_empty(tmp_)) << "the project is left";
        return done ? dir_.read("out/x.txt") : "-";
    }

    TempDir dir_;
    const std::string tmp_ = dir_.path("tmp");

private:
    std::string before_;
};

TEST_F(Extraction, ListedFilesAndTheProject) {
    HPLPlatform platform;
    platform.setPlatformFile(ZipBuilder(dir_.path("plat.kar"))
                                 .add("dr.bd", "bd")
                                 .add("hw_emu.xml", "xml")
                                 .add("hw_emu.json", "json")
                                 .add("n.nts", "nts")
                                 .add("n.ncr", "ncr")
                                 .add("sub/p.vceprj", project())
                                 .write());
    const std::pair<Extract, std::string> operations[] = {
        {&HZEPHardwarePlatform::extractDrBdFile, "bd"},         {&HZEPHardwarePlatform::extractEmuXmlFile, "xml"},
        {&HZEPHardwarePlatform::extractEmuJsonFile, "json"},    {&HZEPHardwarePlatform::extractNTSFile, "nts"},
        {&HZEPHardwarePlatform::extractNCRFile, "ncr"},         {&HZEPHardwarePlatform::extractVCEPRJFile, project()},
        {&HZEPHardwarePlatform::extractLARCHFile, "larch"},     {&HZEPHardwarePlatform::extractINTFCSTFile, "intfcst"},
        {&HZEPHardwarePlatform::extractINTFSOLFile, "intfsol"}, {&HZEPHardwarePlatform::extractVCECSTFile, "vcecst"},
    };
    for (const auto& [extract, content] : operations)
        EXPECT_EQ(get(platform, extract), "-") << content;
    EXPECT_EQ(platform.getVCEPlInterfaceIDAsString(), "");

    for (const auto& [type, name] :
         {std::pair{"DR_BD", "dr.bd"}, std::pair{"EMU_XML", "hw_emu.xml"}, std::pair{"EMU_JSON", "hw_emu.json"},
          std::pair{"NOC_TRAFFIC", "n.nts"}, std::pair{"NOC_SOLUTION", "n.ncr"}, std::pair{"VCEPRJ", "sub/p.vceprj"}})
        platform.addFile(type, name);
    for (const auto& [extract, content] : operations) {
        std::filesystem::remove_all(tmp_ + "/sub");
        const std::string file = dir_.path("out/y.txt");
        std::filesystem::remove(file);
        EXPECT_TRUE((platform.*extract)(file));
        EXPECT_EQ(dir_.read("out/y.txt"), content);
        EXPECT_FALSE(std::filesystem::exists(tmp_ + "/sub/p.vceprj"));
    }
    EXPECT_EQ(platform.getVCEPlInterfaceIDAsString(), "id-7");
    EXPECT_FALSE(std::filesystem::exists(tmp_ + "/vceprj_meta_data.json"));

    // A file that stands there is taken for the project.
    EXPECT_TRUE(platform.extractVCEPRJFile(dir_.write("mine.vceprj", "mine")));
    EXPECT_EQ(dir_.read("mine.vceprj"), "mine");
}

TEST_F(Extraction, OlderLayoutAndChildPlatforms) {
    HPLPlatform older;
    older.setPlatformFile(
        ZipBuilder(dir_.path("older.dsa")).add("me.zip", "archive").add("me.larch", "larch").add("me.cst", "cst").write());
    older.addFile("ME_ARCHIVE", "me.zip");
    older.addFile("ME_LOGICAL_ARCH", "me.larch");
    older.addFile("ME_CONSTRAINT", "me.cst");
    EXPECT_EQ(get(older, &HZEPHardwarePlatform::extractVCEPRJFile), "archive");
    EXPECT_EQ(get(older, &HZEPHardwarePlatform::extractLARCHFile), "larch");
    EXPECT_EQ(get(older, &HZEPHardwarePlatform::extractINTFCSTFile), "cst");
    EXPECT_EQ(get(older, &HZEPHardwarePlatform::extractINTFSOLFile), "-");
    EXPECT_EQ(get(older, &HZEPHardwarePlatform::extractVCECSTFile), "-");

    HPLPlatform child;
    child.setIsChildHardwareEmuPlatform(true);
    child.setPlatformFile(ZipBuilder(dir_.path("child.kar"))
                              .add("a.bd", "of the parent")
                              .add("hw_emu/a.bd", "of the child")
                              .add("hw_emu/p.vceprj", project("hw_emu/"))
                              .write());
    child.addFile("DR_BD", "a.bd");
    child.addFile("VCEPRJ", "p.vceprj");
    EXPECT_EQ(get(child, &HZEPHardwarePlatform::extractDrBdFile), "of the child");
    EXPECT_EQ(get(child, &HZEPHardwarePlatform::extractVCECSTFile), "vcecst");
    EXPECT_TRUE(child.extractFile("DR_BD", dir_.path("plain")));
    EXPECT_EQ(dir_.read("plain"), "of the parent");
}

TEST_F(Extraction, MetaDataOfBrokenFilesChangesNothing) {
    const std::map<std::string, std::string> before = {{"kept", "1"}, {"over", "2"}};
    std::map<std::string, std::string> map = before;
    HZEPHardwarePlatform::parseMetaData(dir_.path("none"), map);
    HZEPHardwarePlatform::parseMetaData(dir_.path(), map);
    HZEPHardwarePlatform::parseMetaData(dir_.write("bad", R"({"MetaData": [{"name": "x", "value": "y"})"), map);
    HZEPHardwarePlatform::parseMetaData(dir_.write("other", R"({"metadata": [{"name": "x", "value": "y"}]})"), map);
    EXPECT_EQ(map, before);
    HZEPHardwarePlatform::parseMetaData(dir_.write("good", R"({"MetaData": [{"name": "over", "value": "3"}, {"name": "n"}]})"), map);
    EXPECT_EQ(map, (std::map<std::string, std::string>{{"kept", "1"}, {"over", "3"}, {"n", ""}}));
}

} // namespace
