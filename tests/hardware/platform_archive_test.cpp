// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "Documents.h"
#include "HPLPlatform.h"
#include "HZEPJSONText.h"
#include "HostEnv.h"
#include "HostErrors.h"
#include "TempDir.h"
#include "ZipBuilder.h"

#include <boost/property_tree/json_parser/error.hpp>
#include <gtest/gtest.h>

#include <filesystem>

namespace {

namespace fs = std::filesystem;

/// A directory for archives and what comes out of them, beside a host temporary directory below it.
class PlatformArchive : public ::testing::Test {
protected:
    PlatformArchive() : tmpBefore_(HostEnv::getHostTmpDir()) {
        fs::create_directory(dir_.path("tmp"));
        HostEnv::setHostTmpDir(dir_.path("tmp"));
    }
    ~PlatformArchive() override { HostEnv::setHostTmpDir(tmpBefore_); }

    /// Writes the archive and points the platform at it.
    void pack(HPLPlatform& platform, const std::vector<std::pair<std::string, std::string>>& members) {
        ZipBuilder zip(dir_.path("plat.kar"));
        for (const auto& [name, text] : members)
            zip.add(name, text);
        platform.setPlatformFile(zip.write());
    }

    bool isTmpEmpty() const { return fs::is_empty(dir_.path("tmp")); }

    const std::string tmpBefore_;
    const TempDir dir_;
};

std::string zipOf(const std::vector<std::pair<std::string, std::string>>& members) {
    ZipBuilder zip;
    for (const auto& [name, text] : members)
        zip.add(name, text);
    return zip.bytes();
}

TEST_F(PlatformArchive, NamesMetadataEntriesByItsExtension) {
    const struct {
        const char* file;
        const char *ext, *json, *alt, *xml, *emuJson, *altEmuJson, *emuXml;
    } rows[] = {
        {"/a/b/plat.kar", "kar", "kar.json", "alt_kar.json", "kar.xml", "hw_emu/kar.json", "hw_emu/alt_kar.json", "hw_emu/kar.xml"},
        {"x.y.dsa", "dsa", "dsa.json", "alt_dsa.json", "dsa.xml", "hw_emu/dsa.json", "hw_emu/alt_dsa.json", "hw_emu/dsa.xml"},
        {"/a.b/plat", "", "", "alt_", "", "", "", ""},
        {"", "", "", "alt_", "", "", "", ""},
    };
    for (const auto& row : rows) {
        HPLPlatform platform;
        platform.setPlatformFile(row.file);
        EXPECT_EQ(platform.getPlatformExt(), row.ext) << row.file;
        EXPECT_EQ(platform.getJsonFileName(), row.json);
        EXPECT_EQ(platform.getAltJsonFileName(), row.alt);
        EXPECT_EQ(platform.getXmlFileName(), row.xml);
        EXPECT_EQ(platform.getHwEmuJsonFileName(), row.emuJson);
        EXPECT_EQ(platform.getAltHwEmuJsonFileName(), row.altEmuJson);
        EXPECT_EQ(platform.getHwEmuXmlFileName(), row.emuXml);
        platform.setIsChildHardwareEmuPlatform(true);
        EXPECT_EQ(platform.getJsonFileName(), row.json) << "children are reached by the names below hw_emu only";
        EXPECT_EQ(platform.getXmlFileName(), row.emuXml);
    }
    EXPECT_EQ(HZEPHardwarePlatform::getHwEmuDir(), "hw_emu");
    EXPECT_TRUE(HZEPHardwarePlatform::isValidPlatformExt(".kar"));
    for (const char* ext : {"kar", ".KAR", ".zpfm", ""})
        EXPECT_FALSE(HZEPHardwarePlatform::isValidPlatformExt(ext)) << ext;
}

TEST_F(PlatformArchive, KnowsItsChildByTheJsonEntry) {
    HPLPlatform platform;
    EXPECT_FALSE(platform.containsChildHardwareEmuPlatform());
    pack(platform, {{"kar.json", "{}"}, {"hw_emu/kar.xml", "<x/>"}});
    EXPECT_FALSE(platform.containsChildHardwareEmuPlatform());
    pack(platform, {{"hw_emu/kar.json", "{}"}});
    EXPECT_TRUE(platform.containsChildHardwareEmuPlatform());
    platform.setIsChildHardwareEmuPlatform(true);
    EXPECT_FALSE(platform.containsChildHardwareEmuPlatform());
    platform.setIsChildHardwareEmuPlatform(false);
    platform.setPlatformFile(dir_.write("no.kar", "text"));
    EXPECT_FALSE(platform.containsChildHardwareEmuPlatform());
}

TEST_F(PlatformArchive, ExtractsEntries) {
    HPLPlatform platform;
    const std::string large(200000, 'x');
    pack(platform, {{"a.hpfm", "own"}, {"hw_emu/a.hpfm", "child"}, {"large", large}, {"empty", ""}});
    platform.addFile("HPFM", "a.hpfm");

    EXPECT_TRUE(platform.extractFile("hpfm", dir_.path("out/deep/a")));
    EXPECT_EQ(dir_.read("out/deep/a"), "own");
    EXPECT_TRUE(platform.extractFileFromPlatform("large", dir_.path("out/deep/a")));
    EXPECT_EQ(dir_.read("out/deep/a"), large) << "an older file is replaced";
    EXPECT_TRUE(platform.extractFileFromPlatform("empty", dir_.path("e")));
    EXPECT_EQ(dir_.read("e"), "");

    platform.setIsChildHardwareEmuPlatform(true);
    EXPECT_TRUE(platform.extractFileFromPlatform("a.hpfm", dir_.path("b")));
    EXPECT_EQ(dir_.read("b"), "child");
    EXPECT_TRUE(platform.extractFile("HPFM", dir_.path("b")));
    EXPECT_EQ(dir_.read("b"), "own") << "by type no prefix is put in front";
    EXPECT_TRUE(platform.extract("a.hpfm", platform.getPlatformFile(), dir_.path("b")));
    EXPECT_EQ(dir_.read("b"), "own");
}

TEST_F(PlatformArchive, CreatesNothingWhenThereIsNothingToExtract) {
    HPLPlatform platform;
    const std::string out = dir_.path("none/out");
    EXPECT_FALSE(platform.extractFileFromPlatform("a", out)) << "no archive";
    pack(platform, {{"a", "text"}});
    platform.addFile("DCP", "not/there");
    EXPECT_FALSE(platform.extractFile("HPFM", out));
    EXPECT_FALSE(platform.extractFile("DCP", out));
    EXPECT_FALSE(platform.extractFileFromPlatform("b", out));
    EXPECT_FALSE(platform.extractFileFromPlatform("", out));
    EXPECT_FALSE(platform.extractFileFromPlatform("a", ""));
    EXPECT_FALSE(platform.extract("a", dir_.path("no.kar"), out));
    EXPECT_FALSE(platform.extract("a", dir_.write("text.kar", "text"), out));
    EXPECT_FALSE(fs::exists(dir_.path("none")));
    EXPECT_FALSE(platform.extractFileFromPlatform("a", platform.getPlatformFile() + "/below/a/file"));
    EXPECT_FALSE(platform.extractFileFromPlatform("a", dir_.path())) << "a directory";
}

TEST_F(PlatformArchive, TellsWhenTheEntryIsDamaged) {
    HPLPlatform platform;
    ZipBuilder::Member damaged;
    damaged.name = "a";
    damaged.content = "text";
    damaged.crc = 1;
    platform.setPlatformFile(ZipBuilder(dir_.path("plat.kar")).add(damaged).write());
    EXPECT_FALSE(platform.extractFileFromPlatform("a", dir_.path("a")));
}

TEST_F(PlatformArchive, WritesExtensionMetadata) {
    HPLPlatform platform;
    platform.addFile("EXT_META_JSON", "ext.json");
    pack(platform, {{"ext.json", R"({"limits": {"slots": 3}})"}, {"meta.json", "[1]"}, {"broken.json", "{\"a\": "}, {"scalar.json", "3"}});
    EXPECT_EQ(platform.getExtMetaJsonAsString(), R"({"limits": {"slots": 3}})");
    boost::property_tree::ptree tree;
    platform.getExtMetaJsonAsPtree(tree);
    EXPECT_EQ(tree.get<std::string>("limits.slots"), "3");
    EXPECT_NE(documentOf(platform).find(laidOut(R"({"extensions": {"limits": {"slots": "3"}}})").substr(2, 60)), std::string::npos);

    platform.addFile("META_JSON", "meta.json");
    EXPECT_EQ(platform.getExtMetaJsonAsString(), "[1]") << "this one goes first";
    platform.addFile("META_JSON", "scalar.json");
    EXPECT_EQ(documentOf(platform).find("extensions"), std::string::npos);
    platform.addFile("META_JSON", "broken.json");
    try {
        documentOf(platform);
        ADD_FAILURE();
    } catch (const HZEPJSONTextError& error) {
        EXPECT_EQ(error.getFault().file, platform.getPlatformFile());
        EXPECT_EQ(error.getFault().member, "broken.json");
        EXPECT_EQ(error.what(), platform.getPlatformFile() + ": broken.json(1): expected value");
    }
    platform.addFile("META_JSON", "missing.json");
    EXPECT_EQ(platform.getExtMetaJsonAsString(), "");
    EXPECT_EQ(documentOf(platform).find("extensions"), std::string::npos);
}

TEST_F(PlatformArchive, UnpacksItsBoardRepository) {
    HPLPlatform platform;
    EXPECT_EQ(platform.getBoardRepo(), "");
    pack(platform, {{"boards/rb200/board.xml", "<board/>"}, {"other", "x"}});
    EXPECT_EQ(platform.getBoardRepo(), "");
    platform.addFile("BOARD_REPO_PATH", "boards");
    EXPECT_EQ(platform.getBoardRepo(), dir_.path("tmp/boards"));
    EXPECT_EQ(dir_.read("tmp/boards/rb200/board.xml"), "<board/>");
    EXPECT_FALSE(fs::exists(dir_.path("tmp/other")));
    platform.addFile("BOARD_REPO_PATH", "..");
    EXPECT_EQ(platform.getBoardRepo(), "");
}

class VectorEngineProject : public PlatformArchive {
protected:
    static constexpr const char* kPartitions = R"({"VCE": {
        "vce_0": {"startColumn": "0", "numColumns": "10", "partitions": {"p": {"numColumns": "1", "vce_pl_intf_id": "id0"}}},
        "vce_1": {"startColumn": "10", "numColumns": "4"}}})";
    static constexpr const char* kEntry = "vcearchive/arch/vce_partition.json";
};

TEST_F(VectorEngineProject, GivesThePartitionsOfAFixedPlatform) {
    HPLPlatform platform;
    platform.setExpandable(false);
    platform.addFile("VCEPRJ", "vce/project.zip");
    pack(platform, {{"vce/project.zip", zipOf({{kEntry, kPartitions}})}});
    EXPECT_FALSE(platform.findVcePartition("vce_0").isPartition()) << "looks at what was read so far";
    EXPECT_TRUE(platform.hasVcePartitions());
    ASSERT_EQ(platform.getVcePartitions().size(), 2u) << "read once";
    EXPECT_EQ(platform.findVcePartition("vce_1").startColumn(), 10);
    EXPECT_TRUE(platform.hasVcePartition("id0"));
    EXPECT_FALSE(fs::exists(dir_.path("tmp/vce/project.zip")));
    EXPECT_FALSE(fs::exists(dir_.path("tmp/vce_partitions.json")));
    EXPECT_EQ(documentOf(platform).find("vcePartitions"), std::string::npos) << "written for expandable platforms only";
}

TEST_F(VectorEngineProject, IsNotReadForAnExpandablePlatform) {
    HPLPlatform platform;
    platform.addFile("VCEPRJ", "project.zip");
    pack(platform, {{"project.zip", zipOf({{kEntry, kPartitions}})}});
    EXPECT_FALSE(platform.hasVcePartitions());
}

TEST_F(VectorEngineProject, WithoutPartitionsLeavesTheListEmpty) {
    const struct {
        const char* name;
        std::string project;
    } rows[] = {{"", ""}, {"missing.zip", ""}, {"project.zip", "text"}, {"project.zip", zipOf({{"vcearchive/other", kPartitions}})}};
    dir_.write("tmp/vce_partitions.json", kPartitions); // another platform's
    for (const auto& row : rows) {
        HPLPlatform platform;
        platform.setExpandable(false);
        platform.addFile("VCEPRJ", row.name);
        pack(platform, {{"project.zip", row.project}});
        EXPECT_FALSE(platform.hasVcePartitions()) << row.name;
        EXPECT_TRUE(isTmpEmpty()) << row.name;
    }
}

TEST_F(VectorEngineProject, RaisesOverMalformedPartitions) {
    HPLPlatform platform;
    platform.setExpandable(false);
    platform.addFile("VCEPRJ", "project.zip");
    pack(platform, {{"project.zip", zipOf({{kEntry, "{"}})}});
    EXPECT_THROW(platform.hasVcePartitions(), HostAlgException);
    EXPECT_TRUE(isTmpEmpty());
    EXPECT_FALSE(platform.hasVcePartitions()) << "read once, whatever came of it";
}

TEST_F(VectorEngineProject, NeverLeavesTheTemporaryDirectory) {
    for (const std::string name : {"../evil.zip", "a/../../evil.zip", ".."}) {
        HPLPlatform platform;
        platform.setExpandable(false);
        platform.addFile("VCEPRJ", name);
        pack(platform, {{name, zipOf({{kEntry, kPartitions}})}});
        EXPECT_FALSE(platform.hasVcePartitions()) << name;
        EXPECT_FALSE(fs::exists(dir_.path("evil.zip")));
        EXPECT_TRUE(isTmpEmpty());
    }
}

TEST_F(VectorEngineProject, OfAChildLiesBelowHwEmu) {
    HPLPlatform platform;
    platform.setExpandable(false);
    platform.setIsChildHardwareEmuPlatform(true);
    platform.addFile("VCEPRJ", "project.zip");
    pack(platform, {{"hw_emu/project.zip", zipOf({{std::string("hw_emu/") + kEntry, kPartitions}})}});
    EXPECT_TRUE(platform.hasVcePartitions());
}

} // namespace
