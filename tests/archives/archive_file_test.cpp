// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "FaultSweep.h"
#include "HPLPlatform.h"
#include "HZEPDsaJsonReader.h"
#include "HZEPHardwareFeatureRom.h"
#include "HostErrors.h"
#include "HostZip.h"
#include "JSONObjectWriter.h"
#include "TempDir.h"
#include "ZipBuilder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <random>
#include <sstream>
#include <typeinfo>

using testing::HasSubstr;
using zep_platform::PlatformLoader;

namespace {

constexpr char kMetadata[] = R"({"vendor": "acme", "boardId": "b1", "name": "plat", "usesPR": "true", "expandablePlatform": "true",
    "devices": [{"name": "fpga0", "core": {"name": "OCL_REGION"}}],
    "files": [{"name": "old.dcp", "type": "DCP"}, {"name": "older.dcp", "type": "DCP"}, {"name": "ext.json", "type": "EXT_META_JSON"}]})";

std::string noise(std::size_t size) {
    std::mt19937 random(1);
    std::string text(size, '\0');
    for (char& c : text)
        c = static_cast<char>(random());
    return text;
}

std::string documentOf(const HPLPlatform& platform) {
    zep_platform::JSONObjectWriter writer;
    platform.toJSON(writer);
    std::ostringstream text;
    writer.write(text);
    return text.str() + "\n";
}

std::vector<std::string> filesOf(const HPLPlatform& platform) {
    std::vector<std::string> files;
    for (auto [at, end] = platform.getFileVecRange(); at != end; ++at)
        files.push_back((*at)->getType() + "=" + (*at)->getName());
    return files;
}

class ArchiveFile : public testing::Test {
protected:
    void SetUp() override {
        ZipBuilder(archive_).add("kar.json", kMetadata).add("old.dcp", noise(300'000)).add("ext.json", R"({"of": "before"})").write();
        ASSERT_TRUE(load(platform_));
    }

    bool load(HPLPlatform& platform) { return HZEPDsaJsonReader(&platform).parseDSA(archive_, PlatformLoader::PreferAlternateJson); }

    TempDir dir_;
    const std::string archive_ = dir_.path("plat.kar");
    const std::string source_ = dir_.write("source.bin", noise(500'000));
    HPLPlatform platform_;
};

TEST_F(ArchiveFile, KeepsFilesMetadataAndDigestInStep) {
    unsigned char cutName[64] = {};
    std::fill_n(cutName, 62, 'v');
    cutName[62] = 0xC3; // the first byte of a character that the field cuts
    platform_.addFeatureRom()->setVBNVName(cutName);
    platform_.archiveFile("DCP", "new/a.dcp", source_);
    platform_.archiveFile("BIF", "b.bif", dir_.write("b.bif", "bif"));
    EXPECT_TRUE(HostZip::verifyDigest(archive_));
    EXPECT_EQ(HostZip::readMember(archive_, "new/a.dcp"), dir_.read("source.bin"));
    EXPECT_EQ(HostZip::readMember(archive_, "old.dcp"), noise(300'000));
    EXPECT_EQ(HostZip::readMember(archive_, "kar.json"), documentOf(platform_));

    HPLPlatform again;
    ASSERT_TRUE(load(again));
    EXPECT_THAT(filesOf(again), testing::ElementsAre("EXT_META_JSON=ext.json", "DCP=new/a.dcp", "BIF=b.bif"));
    EXPECT_EQ(documentOf(again), documentOf(platform_));

    // What the document tells of another member is what will stand there, not what stood there.
    EXPECT_THAT(documentOf(platform_), HasSubstr(R"("of": "before")"));
    platform_.archiveFile("EXT_META_JSON", "ext.json", dir_.write("ext.json", R"({"of": "after"})"));
    EXPECT_THAT(HostZip::readMember(archive_, "kar.json"), HasSubstr(R"("of": "after")"));
    EXPECT_EQ(HostZip::readMember(archive_, "kar.json"), documentOf(platform_));

    platform_.setDescription("changed");
    platform_.writeToJSON();
    EXPECT_EQ(HostZip::readMember(archive_, "kar.json"), documentOf(platform_));
    EXPECT_FALSE(HostZip::verifyDigest(archive_));
    platform_.attachDigest();
    EXPECT_TRUE(HostZip::verifyDigest(archive_));
}

TEST_F(ArchiveFile, SaysWhatItCannotDo) {
    const std::string before = dir_.read("plat.kar");
    const auto expect = [](const std::type_info& type, const std::string& text, const std::function<void()>& work) {
        try {
            work();
            ADD_FAILURE() << "expected: " << text;
        } catch (const HostErrorBase& error) {
            EXPECT_EQ(error.what(), text);
            EXPECT_EQ(typeid(error), type);
        }
    };
    const std::string head = "HZEPHardwarePlatform::archiveFile() - ";
    HPLPlatform empty;
    expect(typeid(HostAlgException), head + "karFile is not set", [&] { empty.archiveFile("DCP", "a", source_); });
    EXPECT_NO_THROW(empty.writeToJSON());
    empty.setPlatformFile(dir_.write("noext", "x"));
    expect(typeid(HostAlgException), head + "jsonFile is not set", [&] { empty.archiveFile("DCP", "a", source_); });
    empty.setPlatformFile(dir_.path("none.kar"));
    expect(typeid(HostAlgException), head + "karFile does not exist", [&] { empty.archiveFile("DCP", "a", source_); });
    EXPECT_EQ(empty.getNumFiles(), 0u);
    empty.setPlatformFile(dir_.write("no.kar", "no archive"));
    expect(typeid(HostUserException), head + "Could not open file for streaming: " + dir_.path("no.kar"),
           [&] { empty.archiveFile("DCP", "a", source_); });
    expect(typeid(HostUserException), "HZEPHardwarePlatform::writeToJSON() - Could not open file for streaming: kar.json",
           [&] { empty.writeToJSON(); });

    for (const std::string& source : {dir_.path("none.bin"), dir_.path(), std::string()})
        expect(typeid(HostUserException), head + "Could not open file for reading: " + source,
               [&] { platform_.archiveFile("BIF", "b.bif", source); });
    EXPECT_EQ(platform_.getFile("BIF"), "b.bif"); // already listed
    for (const char* entry : {"", "../b.bif", "folder/"})
        expect(typeid(HostUserException), head + "Could not open file for streaming: " + archive_,
               [&] { platform_.archiveFile("BIF", entry, source_); });
    EXPECT_THROW(platform_.archiveFile("EXT_META_JSON", "ext.json", dir_.write("broken", "{")), std::exception);
    EXPECT_EQ(dir_.read("plat.kar"), before);
}

TEST_F(ArchiveFile, EveryFaultLeavesTheOldOrTheNewArchive) {
    HostZip::attachDigestEn(archive_);
    const std::string before = dir_.read("plat.kar");
    const FaultSweep sweep(
        archive_,
        [&] {
            HPLPlatform platform;
            if (!load(platform))
                throw std::runtime_error("not loaded");
            platform.archiveFile("DCP", "new.dcp", source_);
        },
        [&] { EXPECT_TRUE(HostZip::verifyDigest(archive_)); });
    constexpr unsigned kinds = FaultPlan::Write | FaultPlan::Sync | FaultPlan::Rename | FaultPlan::Close;
    for (const auto action : {FaultPlan::Fail, FaultPlan::KillNow}) {
        dir_.write("plat.kar", before);
        const FaultSweep::Count count = sweep.run(kinds, action);
        RecordProperty(action == FaultPlan::Fail ? "failed_calls" : "killed_at_calls", static_cast<int>(count.struck));
        EXPECT_GE(count.old, 8u);
        EXPECT_GT(count.struck, count.old);
    }
}

} // namespace
