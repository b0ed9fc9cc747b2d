// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "FaultSweep.h"
#include "HostErrors.h"
#include "HostFileUtils.h"
#include "HostZip.h"
#include "HostZipSession.h"
#include "HostZipStreams.h"
#include "HostZipUpdate.h"
#include "TempDir.h"
#include "ZipBuilder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <random>
#include <set>
#include <thread>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <zip.h>
#include <zlib.h>

using testing::HasSubstr;

namespace {

using Members = std::vector<std::pair<std::string, std::string>>;

Members readAll(const std::string& archive) {
    const HostZipSession session(archive);
    Members members;
    for (const HostZipEntry& entry : HostZip::getEntries(archive))
        members.emplace_back(entry.name, entry.isDirectory ? "" : HostZip::readMember(archive, entry.name));
    return members;
}

std::string noise(std::size_t size, unsigned seed) {
    std::mt19937 random(seed);
    std::string text(size, '\0');
    for (char& c : text)
        c = static_cast<char>(random());
    return text;
}

std::size_t countFiles(const std::string& directory) {
    return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(directory), std::filesystem::directory_iterator()));
}

/// The words of the HostError; "" when none is raised.
std::string errorOf(const std::function<void()>& work) {
    try {
        work();
        return "";
    } catch (const HostError& error) {
        return error.what();
    }
}

void putNumber(std::string& bytes, std::size_t at, std::uint64_t value, int size) {
    for (int i = 0; i < size; ++i)
        bytes[at + static_cast<std::size_t>(i)] = static_cast<char>(value >> (8 * i));
}

class ZipUpdate : public testing::Test {
protected:
    TempDir dir_;
    const std::string archive_ = dir_.path("plat.kar");
};

TEST_F(ZipUpdate, GathersChangesIntoOneArchive) {
    ZipBuilder(archive_)
        .add("kar.json", "{}")
        .add("bin/")
        .addStored("bin/a.dcp", noise(5000, 1))
        .add("bin/b.dcp", noise(70'000, 2))
        .write();
    chmod(archive_.c_str(), 0640);
    const std::string before = dir_.read("plat.kar");
    const std::vector<HostZipEntry> oldEntries = HostZip::getEntries(archive_);
    Members expected = readAll(archive_);
    const std::string source = dir_.write("source.bin", noise(1'000'000, 3));
    {
        HostZipUpdate forgotten(archive_);
        forgotten.put("kar.json", "never committed");
    }
    EXPECT_EQ(dir_.read("plat.kar"), before);

    // What stands under a name that lies elsewhere in the folder, in the middle and nowhere.
    const auto change = [&](const std::string& archive) {
        const HostZipSession session(archive);
        EXPECT_TRUE(HostZip::containsFile(archive, "bin/a.dcp"));
        HostZipUpdate update(archive);
        update.put("kar.json", "first try");
        update.put("kar.json", "{\"name\": \"x\"}");
        EXPECT_TRUE(update.remove("bin/a.dcp"));
        EXPECT_FALSE(update.remove("bin/a.dcp"));
        update.putFile("bin/c.dcp", source);
        update.begin("stück.txt");
        for (int i = 0; i < 40'000; ++i)
            update.write("piece ", 6);
        update.end();
        update.put("gone again", "x");
        EXPECT_TRUE(update.remove("gone again"));
        update.put("empty", "");
        // What reads see under the lock is what is to come.
        EXPECT_EQ(update.read("kar.json"), "{\"name\": \"x\"}");
        EXPECT_EQ(update.read("bin/b.dcp"), HostZip::readMember(archive, "bin/b.dcp"));
        EXPECT_THAT(errorOf([&] { update.read("bin/a.dcp"); }), HasSubstr("bin/a.dcp: no such member"));
        EXPECT_THAT(errorOf([&] { update.read("bin/b.dcp", 69'999); }), HasSubstr("more than the limit of 69999"));
        EXPECT_TRUE(update.contains("empty") && !update.contains("gone again"));
        EXPECT_THAT(update.getEntryNames(), testing::ElementsAre("kar.json", "bin/", "bin/b.dcp", "bin/c.dcp", "stück.txt", "empty"));
        EXPECT_EQ(dir_.read("plat.kar"), before);
        update.commit();
        EXPECT_FALSE(HostZip::containsFile(archive, "bin/a.dcp"));
    };
    std::filesystem::copy_file(archive_, dir_.path("twin.kar"));
    change(archive_);

    expected[0].second = "{\"name\": \"x\"}";
    expected.erase(expected.begin() + 2);
    expected.emplace_back("bin/c.dcp", dir_.read("source.bin"));
    std::string pieces;
    for (int i = 0; i < 40'000; ++i)
        pieces += "piece ";
    expected.emplace_back("stück.txt", pieces);
    expected.emplace_back("empty", "");
    EXPECT_EQ(readAll(archive_), expected);
    EXPECT_EQ(HostZip::getEntries(archive_)[2].compressedSize, oldEntries[3].compressedSize);
    EXPECT_NE(dir_.read("plat.kar").find(before.substr(before.find("bin/b.dcp"), 9 + oldEntries[3].compressedSize)), std::string::npos);
    EXPECT_EQ(dir_.read("plat.kar").find("first try"), std::string::npos);
    EXPECT_EQ(countFiles(dir_.path()), 3u);
    struct stat info {};
    ASSERT_EQ(stat(archive_.c_str(), &info), 0);
    EXPECT_EQ(info.st_mode & 07777, 0640u);

    std::filesystem::copy_file(dir_.path("twin.kar"), archive_, std::filesystem::copy_options::overwrite_existing);
    const std::string first = dir_.read("plat.kar");
    change(archive_);
    const std::string once = dir_.read("plat.kar");
    dir_.write("plat.kar", first);
    change(archive_);
    EXPECT_EQ(dir_.read("plat.kar"), once);
}

TEST_F(ZipUpdate, WritesWhatReadersTake) {
    ZipBuilder(archive_).write();
    Members contents = {{"one byte", "x"},
                        {"noise", noise(300'000, 4)},
                        {"just kept", std::string(64 << 10, 'k')},
                        {"one past", std::string((64 << 10) + 1, 'k')},
                        {"zeros", std::string(20 << 20, '\0')}};
    {
        HostZipUpdate update(archive_);
        for (const auto& [name, content] : contents)
            update.put(name, content);
        update.commit();
    }
    EXPECT_EQ(readAll(archive_), contents);
    EXPECT_EQ(HostZip::getEntries(archive_)[0].compressedSize, 1u);
    EXPECT_LE(HostZip::getEntries(archive_)[1].compressedSize, 301'000u);
}

TEST_F(ZipUpdate, KeepsMembersOfOtherForms) {
    // Sizes behind the data, in a record of their own; a method that nobody here knows; an encrypted member.
    const std::string hello = "hello";
    std::string described = hello + "PK\x07\x08";
    const auto crc = static_cast<std::uint32_t>(crc32(0, reinterpret_cast<const Bytef*>(hello.data()), 5));
    described.resize(described.size() + 12);
    putNumber(described, 9, crc, 4);
    putNumber(described, 13, 5, 4);
    putNumber(described, 17, 5, 4);
    ZipBuilder::Member described1{.name = "described", .content = described, .method = ZipBuilder::Stored, .flags = 8};
    described1.crc = crc;
    described1.size = described1.compressedSize = 5;
    ZipBuilder::Member unknown{.name = "unknown", .content = "???", .method = ZipBuilder::Stored};
    unknown.announcedMethod = 97;
    std::string bytes = ZipBuilder(archive_)
                            .add(described1)
                            .add(unknown)
                            .add({.name = "secret", .content = "0123456789abc", .method = ZipBuilder::Stored, .flags = 1})
                            .add("last", "last")
                            .setComment("from the lab")
                            .bytes();
    for (const std::size_t at : {14, 18, 22})
        putNumber(bytes, at, 0, 4); // left open in the local header
    dir_.write("plat.kar", bytes);

    HostZipUpdate update(archive_);
    update.put("new", "new");
    update.commit();
    EXPECT_EQ(HostZip::readMember(archive_, "described"), hello);
    EXPECT_EQ(HostZip::readMember(archive_, "last"), "last");
    EXPECT_EQ(HostZip::readMember(archive_, "new"), "new");
    EXPECT_NE(dir_.read("plat.kar").find("0123456789abc"), std::string::npos);
    EXPECT_TRUE(dir_.read("plat.kar").ends_with("from the lab"));
    EXPECT_EQ(HostZip::getEntries(archive_).size(), 5u);
}

TEST_F(ZipUpdate, ManyMembersUpToTheLimit) {
    ZipBuilder(archive_).write();
    {
        HostZipUpdate update(archive_);
        for (std::uint64_t i = 0; i < HostZipUpdate::kMaxMembers; ++i)
            update.put(std::to_string(i), "x");
        update.commit();
    }
    EXPECT_EQ(HostZip::getEntries(archive_).size(), HostZipUpdate::kMaxMembers);
    EXPECT_EQ(HostZip::readMember(archive_, "99999"), "x");
    {
        HostZipUpdate update(archive_);
        update.put("70000", "changed");
        update.commit();
    }
    EXPECT_EQ(HostZip::readMember(archive_, "70000"), "changed");
    {
        HostZipUpdate update(archive_);
        update.put("one more", "x");
        EXPECT_THAT(errorOf([&] { update.commit(); }), HasSubstr("more than 100000 members"));
    }
    zip_t* zip = zip_open(archive_.c_str(), 0, nullptr);
    ASSERT_GE(zip_file_add(zip, "one more", zip_source_buffer(zip, "x", 1, 0), 0), 0);
    ASSERT_EQ(zip_close(zip), 0);
    EXPECT_THAT(errorOf([&] { HostZipUpdate update(archive_); }), HasSubstr("more than 100000 members"));
}

TEST_F(ZipUpdate, MembersBeyondFourGigabytes) {
    // Mostly a hole: a stored member of 5 GiB between two small ones, the second of them beyond what 32 bits can tell.
    constexpr std::uint64_t huge = 5ULL << 30;
    const std::string small = ZipBuilder().addStored("small", "first").bytes();
    const std::size_t smallSize = 30 + 5 + 5;
    ZipBuilder::Member big{.name = "big", .method = ZipBuilder::Stored};
    big.size = big.compressedSize = huge;
    const std::string bigBytes = ZipBuilder().add(big).bytes();
    const std::size_t bigHeader = 30 + 3 + 20;
    const std::string last = ZipBuilder().addStored("last", "third").bytes();
    const std::size_t lastSize = 30 + 4 + 5;

    const auto recordOf = [](const std::string& bytes, std::size_t at) { return bytes.substr(at, bytes.size() - 22 - at); };
    std::string directory = recordOf(small, smallSize);
    std::string bigRecord = recordOf(bigBytes, bigHeader);
    putNumber(bigRecord, 42, smallSize, 4);
    std::string lastRecord = recordOf(last, lastSize);
    const std::uint64_t lastOffset = smallSize + bigHeader + huge;
    putNumber(lastRecord, 30, 12, 2);
    putNumber(lastRecord, 42, 0xffffffff, 4);
    std::string field("\x01\0\x08\0", 4);
    field.resize(12);
    putNumber(field, 4, lastOffset, 8);
    directory += bigRecord + lastRecord + field;
    std::string end(56 + 20 + 22, '\0');
    end.replace(0, 4, "PK\x06\x06");
    putNumber(end, 4, 44, 8);
    putNumber(end, 24, 3, 8);
    putNumber(end, 32, 3, 8);
    putNumber(end, 40, directory.size(), 8);
    putNumber(end, 48, lastOffset + lastSize, 8);
    end.replace(56, 4, "PK\x06\x07");
    putNumber(end, 64, lastOffset + lastSize + directory.size(), 8);
    putNumber(end, 72, 1, 4);
    end.replace(76, 4, "PK\x05\x06");
    putNumber(end, 84, 0xffff, 2);
    putNumber(end, 86, 0xffff, 2);
    putNumber(end, 88, 0xffffffff, 4);
    putNumber(end, 92, 0xffffffff, 4);

    dir_.write("plat.kar", small.substr(0, smallSize) + bigBytes.substr(0, bigHeader));
    std::filesystem::resize_file(archive_, lastOffset);
    std::ofstream(archive_, std::ios::binary | std::ios::app) << last.substr(0, lastSize) << directory << end;

    HostZipUpdate update(archive_);
    EXPECT_TRUE(update.remove("big"));
    update.put("new", "new");
    update.commit();
    EXPECT_EQ(readAll(archive_), (Members{{"small", "first"}, {"last", "third"}, {"new", "new"}}));
    EXPECT_LT(std::filesystem::file_size(archive_), 1000u);
}

TEST_F(ZipUpdate, RefusesArchivesThatLie) {
    const auto plain = [] { return ZipBuilder().addStored("a", "alpha").addStored("b", "beta").bytes(); };
    const auto patched = [&](std::size_t at, std::uint64_t value, int size) {
        std::string bytes = plain();
        putNumber(bytes, at, value, size);
        return bytes;
    };
    const auto named = [](const std::string& name) { return ZipBuilder().add(name, "text").bytes(); };
    const auto ofMode = [](std::uint32_t mode) { return ZipBuilder().add({.name = "a", .content = "b", .unixMode = mode}).bytes(); };
    const std::size_t directory = 31 + 5 + 31 + 4;
    const std::size_t second = directory + 47;
    const std::size_t end = second + 47;
    ZipBuilder::Member greedy{.name = "a", .content = "alpha", .method = ZipBuilder::Stored};
    greedy.size = greedy.compressedSize = 60;
    const ZipBuilder::Member masked{.name = "a", .content = "alpha", .localName = std::string("z")};

    const std::vector<std::pair<std::string, std::string>> cases = {
        {ZipBuilder().add("a", "1").add("a", "2").bytes(), "a: there are two of this name"},
        {patched(second + 42, 0, 4), "overlaps"},
        {ZipBuilder().add(greedy).addStored("b", "beta").bytes(), "a: it overlaps what follows"},
        {patched(directory + 42, 0xfffffff0, 4), "first member"},
        {patched(second + 42, 0xfffffff0, 4), "b: it lies outside of the archive"},
        {patched(0, 0, 4), "a: it has no local header"},
        {ZipBuilder().add(masked).bytes(), "a: its local header contradicts the directory in its name"},
        {patched(8, 8, 2), "contradicts the directory in its method"},
        {patched(6, 1, 2), "contradicts the directory in its flags"},
        {patched(14, 1, 4), "contradicts the directory in its checksum"},
        {patched(22, 4, 4), "contradicts the directory in its size"},
        {patched(18, 4, 4), "contradicts the directory in its size"},
        {patched(28, 60000, 2), "a: it overlaps what follows"},
        {named("../a"), "../a: its name leads out"},
        {named("a/../../b"), "leads out"},
        {named("/etc/a"), "is absolute"},
        {named("a\\b"), "a back-slash"},
        {named(std::string("a\0b", 3)), "a\\x00b: its name holds a zero byte"},
        {named(""), "no name"},
        {ofMode(0120777), "a: it is a link"},
        {ofMode(0010644), "a: it is a special file"},
        {plain().substr(0, 36) + plain(), "first member"},
        {plain() + plain().substr(directory), "two directories"},
        {plain() + "behind", "not a zip archive"},
        {"", "not a zip archive"},
        {ZipBuilder().add("a", "1").setComment(ZipBuilder().bytes()).bytes(), "two directories"},
        {patched(end + 4, 1, 2), "one of several parts"},
        {patched(end + 8, 1, 2), "one of several parts"},
        {patched(end + 12, 10, 4), "not where it is announced"},
        {patched(directory + 30, 9, 2), "is damaged"},
        {patched(directory + 34, 1, 2), "one of several parts"},
        {patched(end + 8, 0x10001, 4), "directory is damaged"},
    };
    for (const auto& [bytes, cause] : cases) {
        SCOPED_TRACE(cause);
        dir_.write("plat.kar", bytes);
        const std::string error = errorOf([&] { HostZipUpdate update(archive_); });
        EXPECT_THAT(error, HasSubstr(cause));
        EXPECT_TRUE(error.starts_with(archive_ + ": ")) << error;
        EXPECT_EQ(dir_.read("plat.kar"), bytes);
        EXPECT_EQ(countFiles(dir_.path()), 1u);
    }
    EXPECT_THAT(errorOf([&] { HostZipUpdate update(dir_.path("none")); }), HasSubstr("No such file"));
    EXPECT_THAT(errorOf([&] { HostZipUpdate update(dir_.path()); }), HasSubstr("is a directory"));
}

TEST_F(ZipUpdate, DamagedBytesAreRefusedOrHarmless) {
    const std::string bytes = ZipBuilder().add("a", "alpha").add("folder/b", noise(500, 5)).setComment("c").bytes();
    for (std::size_t size = 0; size < bytes.size(); ++size) {
        dir_.write("plat.kar", bytes.substr(0, size));
        EXPECT_NE(errorOf([&] { HostZipUpdate update(archive_); }), "") << size;
    }
    std::mt19937 random(6);
    for (int round = 0; round < 3000; ++round) {
        std::string damaged = bytes;
        for (int i = 0; i < 3; ++i)
            damaged[random() % damaged.size()] = static_cast<char>(random());
        dir_.write("plat.kar", damaged);
        const bool commits = round % 15 == 0; // each one is synced to the disk
        const std::string error = errorOf([&] {
            HostZipUpdate update(archive_);
            update.put("new", "new");
            if (commits)
                update.commit();
        });
        EXPECT_EQ(dir_.read("plat.kar") == damaged, !commits || !error.empty());
    }
    EXPECT_EQ(countFiles(dir_.path()), 1u);
}

TEST_F(ZipUpdate, StaysAsPrivateAsItIs) {
    namespace fs = std::filesystem;
    ZipBuilder(archive_).add("a", "alpha").write();
    fs::permissions(archive_, fs::perms::owner_read | fs::perms::owner_write);
    HostZipUpdate update(archive_);
    const auto expectPrivate = [&](int files) {
        for (const auto& file : fs::directory_iterator(dir_.path())) {
            EXPECT_EQ(file.status().permissions(), fs::perms::owner_read | fs::perms::owner_write) << file.path();
            --files;
        }
        EXPECT_EQ(files, 0);
    };
    expectPrivate(2);
    update.put("b", "beta");
    update.commit();
    expectPrivate(1);
}

TEST_F(ZipUpdate, TakesAwayWhatTheKilledHaveLeftAndNothingElse) {
    ZipBuilder(archive_).add("a", "alpha").write();
    const pid_t child = fork();
    if (child == 0)
        _exit(0);
    ASSERT_EQ(waitpid(child, nullptr, 0), child);
    const std::string gone = std::to_string(child);
    const int held = open(dir_.write("plat.kar.new-" + gone + "-9", "written elsewhere").c_str(), O_RDWR | O_CLOEXEC);
    ASSERT_EQ(flock(held, LOCK_EX), 0);
    dir_.write("plat.kar.new-" + gone + "-0", "left");
    dir_.write("plat.kar.new-" + gone + "-77", "left");
    std::set<std::string> expected = {"plat.kar", "plat.kar.new-" + gone + "-9"};
    for (const char* name :
         {"plat.kar.new-1-0", "plat.kar.new-0-0", "plat.kar.new-4294967295-0", "other.kar.new-GONE-0", "plat.kar.new-GONE-",
          "plat.kar.new-0GONE-0", "plat.kar.new-GONE-0x", "plat.kar.new-GONE", "plat.kar.new-GONE-01", "plat.kar.new-"}) {
        std::string full = name;
        if (const std::size_t at = full.find("GONE"); at != std::string::npos)
            full.replace(at, 4, gone);
        dir_.write(full, "somebody's");
        expected.insert(full);
    }
    std::filesystem::create_symlink(archive_, dir_.path("plat.kar.new-" + gone + "-5"));
    expected.insert("plat.kar.new-" + gone + "-5");

    // When the folder can't be synced, the new archive is in place, and the error says so.
    const auto outcome = FaultPlan::run(FaultPlan::Sync, 2, FaultPlan::Fail, [&] {
        HostZipUpdate update(archive_);
        update.put("b", "beta");
        if (errorOf([&] { update.commit(); }).find("; the new content is in place, but may not survive a power cut") == std::string::npos)
            throw std::runtime_error("not told");
    });
    EXPECT_TRUE(outcome.reached && outcome.succeeded);
    EXPECT_EQ(readAll(archive_), (Members{{"a", "alpha"}, {"b", "beta"}}));
    std::set<std::string> found;
    for (const auto& file : std::filesystem::directory_iterator(dir_.path()))
        found.insert(file.path().filename());
    EXPECT_EQ(found, expected);
    close(held);
}

TEST_F(ZipUpdate, RefusesChangesAndThenEverything) {
    ZipBuilder(archive_).add("a", "alpha").write();
    const std::string before = dir_.read("plat.kar");
    const std::vector<std::pair<std::function<void(HostZipUpdate&)>, std::string>> cases = {
        {[](HostZipUpdate& u) { u.put("", "x"); }, "no name"},
        {[](HostZipUpdate& u) { u.put("folder/", "x"); }, "name of a folder"},
        {[](HostZipUpdate& u) { u.put("a/../b", "x"); }, "leads out"},
        {[](HostZipUpdate& u) { u.put(std::string(70'000, 'a'), "x"); }, "too long"},
        {[&](HostZipUpdate& u) { u.putFile("x", dir_.path("none")); }, "none: cannot be opened"},
        {[&](HostZipUpdate& u) { u.putFile("x", dir_.path()); }, "is a directory"},
        {[](HostZipUpdate& u) { u.write("x", 1); }, "no member was begun"},
        {[](HostZipUpdate& u) { (u.begin("x"), u.begin("y")); }, "begun before"},
        {[](HostZipUpdate& u) { (u.begin("x"), u.commit()); }, "not ended"},
    };
    for (const auto& [change, cause] : cases) {
        SCOPED_TRACE(cause);
        HostZipUpdate update(archive_);
        EXPECT_THAT(errorOf([&] { change(update); }), HasSubstr(cause));
        EXPECT_THAT(errorOf([&] { update.put("fine", "x"); }), HasSubstr("an earlier change"));
        EXPECT_THAT(errorOf([&] { update.commit(); }), HasSubstr("an earlier change"));
    }
    EXPECT_EQ(dir_.read("plat.kar"), before);
}

TEST_F(ZipUpdate, HoldsItsArchive) {
    ZipBuilder(archive_).add("a", "alpha").write();
    HostZipUpdate mine(archive_);
    mine.put("mine", "x");
    EXPECT_THAT(errorOf([&] { HostZipUpdate second(archive_); }), HasSubstr("this thread is changing it already"));
    HostFileUtils::setLockTimeLimit(std::chrono::milliseconds(20));
    std::thread([&] {
        EXPECT_THAT(errorOf([&] { HostFileUtils::writeFileAtomically(archive_, "x"); }), HasSubstr("has not ended that in 20 ms"));
    }).join();
    HostFileUtils::setLockTimeLimit(HostFileUtils::kLockTimeLimit);
    // Who knows of no lock.
    ZipBuilder(dir_.path("theirs")).add("theirs", "x").write();
    std::filesystem::rename(dir_.path("theirs"), archive_);
    EXPECT_THAT(errorOf([&] { mine.commit(); }), HasSubstr("changed by somebody else"));
    EXPECT_EQ(readAll(archive_), (Members{{"theirs", "x"}}));
    EXPECT_EQ(countFiles(dir_.path()), 1u);
}

TEST_F(ZipUpdate, WritersAtOnceLoseNothingAndReadersSeeWholeArchives) {
    constexpr int writers = 4, rounds = 10;
    ZipBuilder(archive_).write();
    HostZip::attachDigestEn(archive_);
    std::vector<pid_t> children;
    for (int writer = 0; writer < writers; ++writer) {
        children.push_back(fork());
        for (int round = 0; children.back() == 0; ++round) {
            const std::string error = errorOf([&] {
                HostZipUpdate update(archive_);
                update.put(std::to_string(writer) + "/" + std::to_string(round), "x");
                update.attachDigest();
                update.commit();
            });
            if (round + 1 == rounds || !error.empty())
                _exit(error.empty() ? 0 : 1);
        }
    }
    for (const pid_t child : children) {
        int status = -1;
        while (waitpid(child, &status, WNOHANG) == 0)
            EXPECT_TRUE(HostZip::verifyDigest(archive_));
        EXPECT_EQ(status, 0);
    }
    EXPECT_EQ(HostZip::getEntries(archive_).size(), static_cast<std::size_t>(writers * rounds));
    EXPECT_EQ(countFiles(dir_.path()), 1u);
}

TEST_F(ZipUpdate, WhatStandsInFrontStays) {
    const std::string stub = "#!/bin/sh\nexec something\n";
    const auto readNumber = [](const std::string& bytes, std::size_t at) { return static_cast<unsigned char>(bytes[at]); };
    for (const std::size_t counted : {std::size_t{0}, stub.size()}) {
        std::string bytes = stub + ZipBuilder().addStored("a", "alpha").addStored("b", "beta").bytes();
        const std::size_t directory = stub.size() + 71, end = directory + 94;
        for (const auto& [at, offset] : {std::pair<std::size_t, std::size_t>{directory + 42, 0}, {directory + 89, 36}, {end + 16, 71}})
            putNumber(bytes, at, offset + counted, 4);
        dir_.write("plat.kar", bytes);
        EXPECT_EQ(readAll(archive_), (Members{{"a", "alpha"}, {"b", "beta"}}));
        HostZipUpdate update(archive_);
        update.remove("a");
        update.put("c", "gamma");
        update.attachDigest();
        update.commit();
        EXPECT_EQ(readAll(archive_), (Members{{"b", "beta"}, {"c", "gamma"}}));
        EXPECT_TRUE(HostZip::verifyDigest(archive_));
        const std::string now = dir_.read("plat.kar");
        EXPECT_TRUE(now.starts_with(stub));
        // Offsets count what they counted before; the new member's content comes first.
        EXPECT_EQ(readNumber(now, now.find("PK\x01\x02") + 42), 36 + counted);
    }
}

TEST_F(ZipUpdate, StreamReplacesItsMemberOnClosing) {
    using hoststream::iostreams::zip_ostream;
    ZipBuilder(archive_).add("a", "old").write();
    const std::string text = noise(200'000, 7);
    {
        zip_ostream out("a", archive_, 0);
        ASSERT_TRUE(out.is_open());
        out << text;
        EXPECT_EQ(HostZip::readMember(archive_, "a"), "old");
        out.close();
        EXPECT_EQ(HostZip::readMember(archive_, "a"), text);
        out << "lost";
        EXPECT_FALSE(out.good());
    }
    { zip_ostream("b", archive_, 0) << "by its end"; }
    try {
        zip_ostream out("a", archive_, 0);
        out << "half";
        throw std::runtime_error("on the way");
    } catch (const std::runtime_error&) {
    }
    EXPECT_EQ(readAll(archive_), (Members{{"a", text}, {"b", "by its end"}}));

    for (const auto& [entry, archive] : {std::pair{"../a", archive_}, std::pair{"a", dir_.path("none")}, std::pair{"a", dir_.path()}}) {
        zip_ostream closed(entry, archive, 0);
        EXPECT_FALSE(closed.is_open());
        EXPECT_TRUE(closed.fail());
    }
    EXPECT_EQ(countFiles(dir_.path()), 1u);
}

TEST_F(ZipUpdate, EveryFaultLeavesTheOldOrTheNewArchive) {
    ZipBuilder(archive_).add("a", noise(9000, 8)).add("b", noise(400'000, 9)).add("c", "gamma").write();
    const std::string source = dir_.write("source", noise(600'000, 10));
    const std::string before = dir_.read("plat.kar");
    const FaultSweep sweep(
        archive_,
        [&] {
            HostZipUpdate update(archive_);
            update.put("a", "changed");
            update.remove("c");
            update.putFile("d", source);
            update.attachDigest();
            update.commit();
        },
        [&] { EXPECT_EQ(HostZip::verifyDigest(archive_), dir_.read("plat.kar") != before); });
    for (const auto action : {FaultPlan::Fail, FaultPlan::KillNow}) {
        dir_.write("plat.kar", before);
        EXPECT_GE(sweep.run(FaultPlan::All, action).struck, 12u);
    }
}

} // namespace
