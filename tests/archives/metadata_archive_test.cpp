// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "FaultSweep.h"
#include "HMDAArchive.h"
#include "HZEPJSONText.h"
#include "HostErrors.h"
#include "HostZip.h"
#include "MessageLog.h"
#include "TempDir.h"
#include "ZipBuilder.h"

#include <boost/property_tree/json_parser/error.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <typeinfo>

namespace fs = std::filesystem;
using testing::ElementsAre;

namespace {

std::string indexOf(const std::string& type, const std::string& name) {
    return R"({"files": [{"type": ")" + type + R"(", "name": ")" + name + R"("}]})";
}

void expect(const std::type_info& type, const std::string& text, const std::function<void()>& work) {
    try {
        work();
        ADD_FAILURE() << "expected: " << text;
    } catch (const HostErrorBase& error) {
        EXPECT_EQ(error.what(), text);
        EXPECT_EQ(typeid(error), type);
    }
}

class MetadataArchive : public testing::Test {
protected:
    MetadataArchive() { mda_.setFile(file_); }

    HMDAArchive parsed(const std::string& index) {
        HMDAArchive archive;
        archive.setFile(
            ZipBuilder(file_).add("mda.json", index).add("a/f.txt", "content").add("a/g", "").add("bd/x/y.bd", "design").write());
        EXPECT_TRUE(archive.parse());
        return archive;
    }

    TempDir dir_;
    const std::string file_ = dir_.path("card.mda");
    const std::string source_ = dir_.write("source", "bytes");
    HMDAArchive mda_;
};

TEST(MetadataFiles, HoldOneNameOfEachType) {
    HMDAFiles files;
    files.add("", "n");
    files.add("T", "");
    EXPECT_TRUE(files.empty());
    files.add("T", "first");
    files.add("T", "second");
    files.add("A", "n");
    files.remove("none");
    EXPECT_EQ(files.size(), 2u);
    EXPECT_EQ(files.get("T"), "second");
    EXPECT_FALSE(files.contains("none"));
    std::vector<std::string> types = {"before"}, names;
    files.getTypes(types);
    files.getNames(names);
    EXPECT_THAT(types, ElementsAre("before", "A", "T"));
    EXPECT_THAT(names, ElementsAre("n", "second"));
    files.remove("T");
    std::map<std::string, std::string> all = {{"old", "x"}};
    files.getFiles(all);
    ASSERT_EQ(all.size(), 1u);
    EXPECT_EQ(files.toType(*all.begin()) + "=" + files.toName(*all.begin()), "A=n");
}

TEST_F(MetadataArchive, ComesBackAsItWasMade) {
    mda_.setInstPath("top/card");
    mda_.setDrBdInstName("dr_i");
    mda_.setPfmName("card");
    mda_.registerFile("ZZ", "later");
    mda_.create();
    EXPECT_TRUE(HostZip::verifyDigest(file_));
    mda_.archive("README", "doc/README", source_);
    EXPECT_TRUE(HostZip::verifyDigest(file_));
    dir_.write("bd/top/top.bd", "design");
    dir_.write("bd/top.tcl", "script");
    mda_.archiveDirectory("DR_BD", "bd/", dir_.path("bd"));
    EXPECT_TRUE(HostZip::verifyDigest(file_));
    EXPECT_EQ(HostZip::readMember(file_, "mda.json"), R"({
    "version": {
        "major": "1",
        "minor": "0"
    },
    "instPath": "top\/card",
    "drBdInstName": "dr_i",
    "pfmName": "card",
    "files": [
        {
            "name": "bd",
            "type": "DR_BD"
        },
        {
            "name": "doc\/README",
            "type": "README"
        },
        {
            "name": "later",
            "type": "ZZ"
        }
    ]
}
)");

    HMDAArchive again;
    again.setFile(file_);
    again.setHierName("stale");
    again.registerFile("KEPT", "x");
    again.registerFile("README", "stale");
    ASSERT_TRUE(again.parse());
    EXPECT_EQ(again.getInstPath() + again.getDrBdInstName() + again.getPfmName() + again.getHierName(), "top/carddr_icard");
    EXPECT_EQ(again.getFiles().size(), 4u);
    EXPECT_EQ(again.getFiles().get("KEPT"), "x");
    const std::string out = dir_.path("new/out");
    EXPECT_EQ(again.extract("README", out), out + "/doc/README");
    EXPECT_EQ(again.extract("DR_BD", out), out + "/bd");
    EXPECT_EQ(dir_.read("new/out/doc/README") + dir_.read("new/out/bd/top/top.bd") + dir_.read("new/out/bd/top.tcl"), "bytesdesignscript");

    again.setHierName("new");
    again.writeJSON();
    EXPECT_FALSE(HostZip::verifyDigest(file_));
    again.attachDigest();
    EXPECT_TRUE(HostZip::verifyDigest(file_));
    ASSERT_TRUE(mda_.parse());
    EXPECT_EQ(mda_.getHierName(), "new");
}

TEST_F(MetadataArchive, IsReadOrItIsToldWhyNot) {
    MessageLog log;
    mda_.registerFile("KEPT", "x");
    EXPECT_FALSE(mda_.parse());
    dir_.write("card.mda", "no archive");
    EXPECT_FALSE(mda_.parse());
    ZipBuilder(file_).add("other").write();
    EXPECT_FALSE(mda_.parse());
    const std::string missing = "critical warning|@74-67@%s%s|mda.json|" + file_;
    EXPECT_THAT(log.lines, ElementsAre("critical warning|@74-89@%s|" + file_, missing, missing));
    ZipBuilder(file_).add("mda.json", "").write();
    EXPECT_FALSE(mda_.parse());
    ZipBuilder(file_).add({.name = "mda.json", .content = "{}", .crc = 1}).write();
    EXPECT_THROW(mda_.parse(), HostError);
    ZipBuilder(file_).add("mda.json", "{\n\"files\" []}").write();
    try {
        mda_.parse();
        ADD_FAILURE();
    } catch (const boost::property_tree::json_parser::json_parser_error& error) {
        EXPECT_THAT(error.what(), testing::StartsWith(file_ + ": mda.json(2): "));
    }
    EXPECT_TRUE(mda_.getFiles().contains("KEPT"));

    const HMDAArchive odd = parsed(R"({"version": {"major": "99"}, "pfmName": {"x": "y"}, "files": [{"type": "A"}, {"name": "b"}, "c", {},
        {"type": "T", "name": "old"}, {"type": "T", "name": "n", "other": "z"}]})");
    std::map<std::string, std::string> files;
    odd.getFiles().getFiles(files);
    EXPECT_EQ(files, (std::map<std::string, std::string>{{"T", "n"}}));
}

TEST_F(MetadataArchive, SaysWhatItCannotWrite) {
    const std::string head = "HMDAArchive::archive() - ";
    HMDAArchive none;
    expect(typeid(HostAlgException), head + "mdaFile is not set", [&] { none.archive("T", "n", source_); });
    expect(typeid(HostAlgException), head + "mdaFile does not exist", [&] { mda_.archiveFile("T", "n", source_); });
    dir_.write("card.mda", "no archive");
    const std::string stream = "HMDAArchive::archiveFile() - Could not open file for streaming: ";
    expect(typeid(HostUserException), stream + "n", [&] { mda_.archive("T", "n", source_); });
    expect(typeid(HostUserException), "HMDAArchive::writeJSON() - Could not open file for streaming: " + file_, [&] { mda_.writeJSON(); });
    expect(typeid(HostUserException), "HMDAArchive::create() - mdaFile exists already: " + file_, [&] { mda_.create(); });

    fs::remove(file_);
    mda_.create();
    const std::string before = dir_.read("card.mda");
    for (const char* name : {"", "../n", "/n", "n/", "mda.json"})
        expect(typeid(HostUserException), stream + name, [&] { mda_.archive("T", name, source_); });
    for (const std::string& source : {dir_.path("none"), dir_.path(), std::string()})
        expect(typeid(HostUserException), "HMDAArchive::archiveFile() - Could not open file for reading: " + source,
               [&] { mda_.archive("T", "n", source); });
    const std::string folder = dir_.path("folder");
    fs::create_directory(folder);
    EXPECT_THROW(mda_.archiveDirectory("DR_BD", "bd", folder), HostUserException);
    fs::create_symlink(source_, folder + "/link");
    EXPECT_THROW(mda_.archiveDirectory("DR_BD", "bd", folder), HostUserException);
    EXPECT_THROW(mda_.archiveDirectory("DR_BD", "bd", source_), HostUserException);
    EXPECT_EQ(dir_.read("card.mda"), before);
    EXPECT_TRUE(mda_.getFiles().empty());
}

TEST_F(MetadataArchive, UnpacksOnlyBelowTheTarget) {
    const std::string out = dir_.path("out");
    const auto extract = [&](const std::string& type, const std::string& name) { return parsed(indexOf(type, name)).extract(type, out); };
    expect(typeid(HostUserException), "HMDAArchive::extract() - destDir argument must not be empty",
           [&] { parsed("{}").extract("T", ""); });
    EXPECT_EQ(parsed("{}").extract("DR_BD", out), "");
    EXPECT_TRUE(fs::is_directory(out));

    EXPECT_EQ(extract("DR_BD", "whatever"), out + "/bd");
    EXPECT_EQ(extract("IP_REPO_PATH", "a"), out + "/a");
    EXPECT_EQ(dir_.read("out/a/f.txt"), "content");
    EXPECT_EQ(extract("T", "none"), out + "/none");
    EXPECT_FALSE(fs::exists(out + "/none"));

    for (const char* name : {"..", "/", "none", "../out", "a/f.txt"})
        expect(typeid(HostUserException),
               "HMDAArchive::_extractDir() - dir was not extracted to the expected location: " + out + "/" + name,
               [&] { extract("BOARD_REPO_PATH", name); });
    for (const std::string& name : {std::string("../source"), std::string("/etc/x"), std::string("a//../../x"), std::string(300, '/')}) {
        EXPECT_THROW(extract("T", name), HostUserException) << name;
    }

    // Links that stand in the target lead nowhere.
    fs::remove_all(out);
    fs::create_directory(out);
    const std::string outside = dir_.write("outside/f.txt", "untouched");
    fs::create_symlink(dir_.path("outside"), out + "/a");
    EXPECT_THROW(extract("T", "a/f.txt"), HostUserException);
    EXPECT_THROW(extract("IP_REPO_PATH", "a"), HostError);
    fs::remove(out + "/a");
    fs::create_directory(out + "/a");
    fs::create_symlink(outside, out + "/a/f.txt");
    EXPECT_EQ(extract("T", "a/f.txt"), out + "/a/f.txt");
    EXPECT_EQ(dir_.read("out/a/f.txt") + dir_.read("outside/f.txt"), "contentuntouched");

    mda_.registerFile("T", "n");
    dir_.write("card.mda", "no archive");
    EXPECT_THROW(mda_.extract("T", out), HostUserException);
    ZipBuilder(file_).add({.name = "n", .content = "damaged", .crc = 1}).write();
    dir_.write("out/n", "before");
    EXPECT_THROW(mda_.extract("T", out), HostError);
    EXPECT_EQ(dir_.read("out/n"), "before");
}

TEST_F(MetadataArchive, EveryFaultLeavesTheOldOrTheNewArchive) {
    mda_.create();
    const std::string before = dir_.read("card.mda");
    const FaultSweep sweep(
        file_,
        [&] {
            HMDAArchive archive;
            archive.setFile(file_);
            archive.parse();
            archive.archive("T", "n", source_);
        },
        [&] { EXPECT_TRUE(HostZip::verifyDigest(file_)); });
    for (const auto action : {FaultPlan::Fail, FaultPlan::KillNow}) {
        dir_.write("card.mda", before);
        const FaultSweep::Count count = sweep.run(FaultPlan::Write | FaultPlan::Sync | FaultPlan::Rename | FaultPlan::Close, action);
        EXPECT_GT(count.struck, count.old);
        EXPECT_GT(count.old, 0u);
    }
}

} // namespace
