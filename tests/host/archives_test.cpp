// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HostErrors.h"
#include "HostFile.h"
#include "HostFileUtils.h"
#include "HostText.h"
#include "HostXpStreams.h"
#include "HostZip.h"
#include "HostZipSession.h"
#include "HostZipStreams.h"
#include "HostZipUpdate.h"
#include "TempDir.h"
#include "ZipBuilder.h"

#include <boost/iostreams/stream.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <iterator>
#include <optional>
#include <sstream>
#include <thread>

#include <sys/stat.h>
#include <unistd.h>

using hoststream::iostreams::zip_istream;
using hoststream::iostreams::device::file_source;
using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::StartsWith;

namespace {

std::string raised(const std::function<void()>& step) {
    try {
        step();
    } catch (const HostError& error) {
        return error.what();
    }
    return "nothing raised";
}

std::string readStream(std::istream& in) {
    return {std::istreambuf_iterator<char>(in), {}};
}

/// Text that deflate cannot make much of, so that damage to its bytes matters.
std::string noise(std::size_t size) {
    std::string text;
    unsigned state = 1;
    for (std::size_t i = 0; i < size; ++i)
        text += static_cast<char>((state = state * 1103515245 + 12345) >> 16);
    return text;
}

class TimeZone {
public:
    explicit TimeZone(const char* zone) {
        if (const char* now = std::getenv("TZ"))
            before_ = now;
        setenv("TZ", zone, 1);
        tzset();
    }
    ~TimeZone() {
        before_ ? setenv("TZ", before_->c_str(), 1) : unsetenv("TZ");
        tzset();
    }

private:
    std::optional<std::string> before_;
};

} // namespace

TEST(Archive, gives_members_whole_by_text_stream_and_source) {
    const TempDir dir;
    const std::string large = noise(9 << 20), zeros(4 << 20, '\0');
    const std::string archive = ZipBuilder(dir.path("a.kar"))
                                    .add("kar.json", "{}")
                                    .addStored("big", large)
                                    .add("big.z", large)
                                    .add("empty")
                                    .add("folder/")
                                    .add("zeros", zeros)
                                    .add(ZipBuilder::Member{.name = "nothing", .raw = true})
                                    .add("", "none")
                                    .write();

    for (const auto& [name, content] : {std::pair<std::string, std::string>{"kar.json", "{}"},
                                        {"big", large},
                                        {"big.z", large},
                                        {"empty", ""},
                                        {"zeros", zeros},
                                        {"nothing", ""},
                                        {"", "none"}}) {
        EXPECT_TRUE(HostZip::readMember(archive, name) == content) << name;
        zip_istream in(name, archive);
        EXPECT_TRUE(in.is_open());
        EXPECT_TRUE(readStream(in) == content) << name;
        EXPECT_FALSE(in.bad());
        boost::iostreams::stream<file_source> source(file_source(archive, name, std::ios::in | std::ios::binary));
        EXPECT_TRUE(readStream(source) == content) << name;
    }

    EXPECT_TRUE(HostZip::containsFile(archive, "folder/"));
    EXPECT_FALSE(hoststream::iostreams::zip::is_file(archive, "folder/"));
    EXPECT_TRUE(hoststream::iostreams::zip::is_file(archive, "kar.json"));
    EXPECT_FALSE(HostZip::containsFile(archive, "KAR.JSON"));
    EXPECT_FALSE(HostZip::containsFile(archive, std::string("kar.json\0x", 10)));

    const auto entries = HostZip::getEntries(archive);
    ASSERT_EQ(entries.size(), 8u);
    EXPECT_EQ(entries[0].name, "kar.json");
    EXPECT_EQ(entries[1].size, large.size());
    EXPECT_EQ(entries[1].compressedSize, large.size());
    EXPECT_TRUE(entries[4].isDirectory);
}

TEST(Archive, of_members_with_one_name_the_first_counts) {
    const TempDir dir;
    const std::string archive = ZipBuilder(dir.path("a.zip")).add("x/a", "first").add("x/a", "second").write();
    EXPECT_EQ(HostZip::readMember(archive, "x/a"), "first");
    EXPECT_TRUE(HostZip::uncompressDir(archive, "x", dir.path("out"), 1));
    EXPECT_EQ(dir.read("out/x/a"), "first");
}

TEST(Archive, file_that_is_none_says_why) {
    const TempDir dir;
    mkfifo(dir.path("pipe").c_str(), 0600);
    const std::pair<std::string, const char*> cases[] = {
        {dir.path("missing"), "No such file"},       {dir.path(), "is a directory"},
        {dir.write("empty", ""), "is empty"},        {dir.write("text", "no archive at all"), "not a zip archive"},
        {dir.path("pipe"), "is not a regular file"}, {"", "not a file name"},
    };
    for (const auto& [path, cause] : cases) {
        EXPECT_THAT(HostZip::getFault(path), HasSubstr(cause)) << path;
        EXPECT_THAT(raised([&] { HostZip::getEntries(path); }), AllOf(StartsWith(path + ": "), HasSubstr(cause)));
        EXPECT_FALSE(HostZip::containsFile(path, "a"));
        zip_istream in("a", path);
        EXPECT_FALSE(in.is_open());
        EXPECT_TRUE(in.fail());
        EXPECT_THROW(file_source(path, "a", std::ios::in), HostError);
    }
    EXPECT_EQ(HostZip::getFault(ZipBuilder(dir.path("none.zip")).write()), "");
}

TEST(Archive, plain_file_is_a_source_too) {
    const TempDir dir;
    boost::iostreams::stream<file_source> in(file_source(dir.write("plain", "text\n"), std::ios::in | std::ios::binary));
    EXPECT_EQ(readStream(in), "text\n");
    EXPECT_THAT(raised([&] { file_source(dir.path("missing"), std::ios::in); }), HasSubstr("missing"));
    mkfifo(dir.path("pipe").c_str(), 0600);
    EXPECT_THAT(raised([&] { file_source(dir.path("pipe"), std::ios::in); }), HasSubstr("pipe': not a regular file"));
    EXPECT_FALSE(hoststream::iostreams::xp::is_xp_format(dir.path("pipe")));
}

TEST(ArchiveDamage, cut_anywhere_is_an_error_and_no_crash) {
    const TempDir dir;
    const std::string whole = ZipBuilder().add("kar.json", "{\"a\": 1}").addStored("x/logo", noise(40)).bytes();
    for (std::size_t size = 0; size < whole.size(); ++size) {
        const std::string archive = dir.write("cut.kar", whole.substr(0, size));
        EXPECT_NE(HostZip::getFault(archive), "") << size;
        EXPECT_THROW(HostZip::readMember(archive, "kar.json"), HostError) << size;
    }
}

TEST(ArchiveDamage, any_changed_byte_gives_the_content_or_an_error) {
    const TempDir dir;
    const std::string text = noise(60);
    const std::string whole = ZipBuilder().add("a", text).addStored("b", text).bytes();
    for (std::size_t at = 0; at < whole.size(); ++at)
        for (const int mask : {0x01, 0x80, 0xff}) {
            std::string bytes = whole;
            bytes[at] = static_cast<char>(bytes[at] ^ mask);
            const std::string archive = dir.write("flip.kar", bytes);
            for (const char* name : {"a", "b"}) {
                try {
                    EXPECT_EQ(HostZip::readMember(archive, name), text) << at;
                } catch (const HostError&) {
                }
            }
            try {
                HostZip::uncompressDir(archive, "", dir.path("out"), 1);
            } catch (const HostError&) {
            }
        }
}

TEST(ArchiveDamage, each_defect_is_told_with_archive_member_and_cause) {
    using Member = ZipBuilder::Member;
    struct Case {
        const char* defect;
        std::function<void(Member&)> make;
        const char* cause;
    };
    const std::string content = "the content of the member";
    const Case cases[] = {
        {"checksum", [](Member& m) { m.crc = 1; }, "CRC error"},
        {"encrypted", [](Member& m) { m.flags = 1; }, "is encrypted"},
        {"1 TB", [](Member& m) { m.size = 1ULL << 40; }, "more than the limit"},
        {"one byte above the limit", [](Member& m) { m.size = HostZip::kMaxMemberSize + 1; }, "more than the limit"},
        {"largest number", [](Member& m) { m.size = ~0ULL; }, ""},
        {"1 TB compressed", [](Member& m) { m.compressedSize = 1ULL << 40; }, "more compressed bytes than the archive holds"},
        {"longer than announced", [](Member& m) { m.size = 5; }, "damaged"},
        {"shorter than announced", [](Member& m) { m.size = 500; }, "damaged"},
        {"unknown method", [](Member& m) { m.announcedMethod = 77; }, "not supported"},
        {"no deflate stream", [](Member& m) { m.raw = true; }, "damaged"},
        {"another name in the local header", [](Member& m) { m.localName = "evil"; }, "local header contradicts the directory in its name"},
        {"directory", [](Member& m) { m.name = "m/"; }, "is a directory"},
        {"missing", [](Member& m) { m.name = "other"; }, "no such member"},
    };
    for (const Case& c : cases) {
        const TempDir dir;
        Member member;
        member.name = "m";
        member.content = content;
        c.make(member);
        const std::string archive = ZipBuilder(dir.path("a.kar")).add("sound", "s").add(member).write();
        const std::string name = member.name == "other" ? "m" : member.name;

        EXPECT_THAT(raised([&] { HostZip::readMember(archive, name); }), AllOf(StartsWith(archive + ": "), HasSubstr(c.cause))) << c.defect;
        zip_istream in(name, archive);
        readStream(in);
        EXPECT_TRUE(!in.is_open() || in.bad()) << c.defect;
        EXPECT_THROW(
            {
                file_source source(archive, name, std::ios::in);
                char buffer[100];
                while (source.read(buffer, sizeof buffer) > 0) {
                }
            },
            HostError)
            << c.defect;
    }
}

TEST(ArchiveDamage, end_record_of_a_billion_members_takes_no_memory) {
    const TempDir dir;
    std::string bytes = ZipBuilder().add("a", "text").bytes();
    const auto put = [&bytes](std::uint64_t value, int size) {
        for (int i = 0; i < size; ++i)
            bytes += static_cast<char>(value >> (8 * i));
    };
    bytes.resize(bytes.size() - 22);
    const std::size_t record = bytes.size();
    put(0x06064b50, 4), put(44, 8), put(45, 2), put(45, 2), put(0, 4), put(0, 4);
    put(1000000000, 8), put(1000000000, 8), put(50, 8), put(record - 50, 8);
    put(0x07064b50, 4), put(0, 4), put(record, 8), put(1, 4);
    put(0x06054b50, 4), put(0, 4), put(0xffff, 2), put(0xffff, 2), put(0xffffffff, 4), put(0xffffffff, 4), put(0, 2);
    EXPECT_THAT(HostZip::getFault(dir.write("a", bytes)), HasSubstr("more than 100000 members"));
}

TEST(ArchiveDamage, names_made_to_collide_cost_no_more_than_others) {
    const TempDir dir;
    // In a hash that takes 33 times what came before plus the next letter, the two pairs give one value.
    ZipBuilder colliding(dir.path("a.kar"));
    constexpr int pairs = 16, members = 40'000;
    std::string last;
    for (unsigned i = 0; i < members; ++i) {
        last.clear();
        for (int bit = 0; bit < pairs; ++bit)
            last += i >> bit & 1 ? "FY" : "Ez";
        colliding.addStored(last, "x");
    }
    const std::string archive = colliding.write();
    // The hostile one inside of another, where a search for an end record would find it.
    const std::string outer = ZipBuilder(dir.path("b.kar")).addStored("inner.kar", dir.read("a.kar")).write();

    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(HostZip::getEntries(archive).size(), static_cast<std::size_t>(members));
    EXPECT_EQ(HostZip::readMember(archive, last), "x");
    EXPECT_TRUE(HostZip::readMember(outer, "inner.kar") == dir.read("a.kar"));
    {
        HostZipUpdate update(archive);
        update.put(last, "y");
        update.commit();
    }
    EXPECT_EQ(HostZip::readMember(archive, last), "y");
    // With all names in one chain the listing alone took half a minute.
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(15));
}

TEST(Archive, names_come_in_utf8_whatever_they_are_kept_in) {
    const TempDir dir;
    const std::string archive = ZipBuilder(dir.path("a.kar"))
                                    .add("st\x81"
                                         "ck",
                                         "code page")
                                    .add("stück2", "utf-8")
                                    .write();
    EXPECT_EQ(HostZip::readMember(archive, "stück"), "code page");
    EXPECT_EQ(HostZip::readMember(archive, "stück2"), "utf-8");
    HostZipUpdate update(archive);
    update.put("stück", "replaced");
    update.commit();
    EXPECT_EQ(HostZip::getEntries(archive).size(), 2u);
    EXPECT_EQ(HostZip::readMember(archive, "stück"), "replaced");
    // What is behind an archive keeps nobody from reading it, but from changing it.
    dir.write("a.kar", dir.read("a.kar") + "behind");
    EXPECT_EQ(HostZip::readMember(archive, "stück2"), "utf-8");
}

TEST(Unpack, writes_below_the_target_what_lies_below_the_entry) {
    const TempDir dir;
    ZipBuilder::Member script;
    script.name = "boards/run.sh";
    script.content = "#!";
    script.unixMode = 0100755;
    const std::string archive = ZipBuilder(dir.path("a.kar"))
                                    .add("boards/")
                                    .add("boards/x/1.0/board.xml", "new")
                                    .add("boardsx/no", "n")
                                    .add("other", "n")
                                    .add(script)
                                    .write();

    EXPECT_TRUE(HostZip::uncompressDir(archive, "boards/", dir.path("new/out"), 1));
    EXPECT_EQ(dir.read("new/out/boards/x/1.0/board.xml"), "new");
    EXPECT_EQ(access(dir.path("new/out/boards/run.sh").c_str(), X_OK), 0);
    EXPECT_FALSE(HostFile::exists(dir.path("new/out/boardsx")));
    EXPECT_FALSE(HostFile::exists(dir.path("new/out/other")));

    dir.write("new/out/boards/x/1.0/board.xml", "old");
    EXPECT_TRUE(HostZip::uncompressDir(archive, "boards", dir.path("new/out"), 0));
    EXPECT_EQ(dir.read("new/out/boards/x/1.0/board.xml"), "old");
    EXPECT_TRUE(HostZip::uncompressDir(archive, "boards", dir.path("new/out"), 1));
    EXPECT_EQ(dir.read("new/out/boards/x/1.0/board.xml"), "new");

    EXPECT_FALSE(HostZip::uncompressDir(archive, "nothing", dir.path("none"), 1));
    EXPECT_FALSE(HostFile::exists(dir.path("none")));
}

TEST(Unpack, name_that_could_land_elsewhere_is_refused_before_anything_is_written) {
    std::string deep = "d";
    for (std::size_t i = 0; i < HostZip::kMaxNameParts; ++i)
        deep += "/d";
    const std::string names[] = {"d/../../evil", "d/..", "d/./x",        "d//x",         "d/a\\b", "d/..\\x", "d/line\nbreak",
                                 "d/del\x7f",    "/d/x", "//server/d/x", "C:/windows/x", "C:x",    deep};
    for (const std::string& name : names) {
        const TempDir dir;
        const std::string archive = ZipBuilder(dir.path("a.kar")).add("d/good", "g").add(name, "evil").write();
        EXPECT_THAT(raised([&] { HostZip::uncompressDir(archive, "", dir.path("out"), 1); }),
                    StartsWith(archive + ": " + HostText::makePrintable(name) + ": "))
            << name;
        EXPECT_THAT(raised([&] { HostZip::extractMember(archive, name, dir.path("out")); }), HasSubstr(": its name ")) << name;
        EXPECT_FALSE(HostFile::exists(dir.path("out"))) << name;
        EXPECT_FALSE(HostFile::exists(dir.path("evil"))) << name;
    }
    const TempDir dir;
    ZipBuilder(dir.path("a.kar")).add(std::string("d/a\0b", 5), "x").write();
    EXPECT_THROW(HostZip::uncompressDir(dir.path("a.kar"), "", dir.path("out"), 1), HostError);
}

TEST(Unpack, links_are_neither_made_nor_followed) {
    const TempDir dir;
    ZipBuilder::Member link;
    link.name = "d/link";
    link.content = "/etc";
    link.unixMode = 0120777;
    const std::string withLink = ZipBuilder(dir.path("a.kar")).add(link).write();
    EXPECT_THAT(raised([&] { HostZip::uncompressDir(withLink, "d", dir.path("out"), 1); }), HasSubstr("is a link"));

    // Links that stood below the target before: a directory's is refused, a file's is replaced.
    const std::string archive = ZipBuilder(dir.path("b.kar")).add("d/f", "new").write();
    dir.write("victim/f", "old");
    std::filesystem::create_directories(dir.path("o1"));
    std::filesystem::create_symlink(dir.path("victim"), dir.path("o1/d"));
    EXPECT_THAT(raised([&] { HostZip::uncompressDir(archive, "d", dir.path("o1"), 1); }), HasSubstr("cannot be unpacked"));
    std::filesystem::create_directories(dir.path("o2/d"));
    std::filesystem::create_symlink(dir.path("victim/f"), dir.path("o2/d/f"));
    EXPECT_TRUE(HostZip::uncompressDir(archive, "d", dir.path("o2"), 1));
    EXPECT_EQ(dir.read("victim/f"), "old");
    EXPECT_EQ(dir.read("o2/d/f"), "new");
}

TEST(Unpack, damaged_or_overlapping_members_leave_no_file) {
    const TempDir dir;
    ZipBuilder::Member bad;
    bad.name = "d/bad";
    bad.content = noise(1000);
    bad.crc = 7;
    const std::string damaged = ZipBuilder(dir.path("a.kar")).add(bad).write();
    EXPECT_THAT(raised([&] { HostZip::uncompressDir(damaged, "d", dir.path("out"), 1); }), HasSubstr("d/bad: damaged"));
    EXPECT_FALSE(HostFile::exists(dir.path("out/d/bad")));

    ZipBuilder many(dir.path("b.kar"));
    for (int i = 0; i < 20; ++i) {
        ZipBuilder::Member member;
        member.name = "d/" + std::to_string(i);
        member.content = "x";
        member.compressedSize = 500;
        member.size = 500;
        many.add(member);
    }
    EXPECT_THAT(raised([&] { HostZip::uncompressDir(many.write(), "d", dir.path("out2"), 1); }), HasSubstr("more compressed bytes"));
    EXPECT_FALSE(HostFile::exists(dir.path("out2")));
}

TEST(Pack, equal_folders_give_equal_bytes) {
    const TempDir dir;
    const std::pair<const char*, std::string> files[] = {{"z", "1"}, {"a/b", noise(5000)}, {"a.b", ""}, {"a-/c", "3"}, {"kar.json", "{}"}};
    for (const auto& [name, text] : files)
        dir.write(std::string("one/") + name, text);
    for (auto file = std::rbegin(files); file != std::rend(files); ++file) {
        const std::filesystem::path path = dir.write(std::string("two/") + file->first, file->second);
        std::filesystem::last_write_time(path, std::filesystem::file_time_type::clock::now() - std::chrono::hours(24 * 200));
        std::filesystem::permissions(path, std::filesystem::perms::owner_all);
    }
    std::filesystem::create_directories(dir.path("two/hollow"));

    {
        const TimeZone zone("America/New_York");
        HostZip::packDirectory(dir.path("one"), dir.path("one.kar"));
    }
    const std::string expected = dir.read("one.kar");
    for (const char* zone : {"UTC", "Asia/Kathmandu", "Pacific/Apia", "Africa/Monrovia", "XXX-14"}) {
        const TimeZone set(zone);
        HostZip::packDirectory(dir.path("two"), dir.path("two.kar"));
        EXPECT_TRUE(dir.read("two.kar") == expected) << zone;
    }

    std::vector<std::string> names;
    for (const HostZipEntry& entry : HostZip::getEntries(dir.path("one.kar")))
        names.push_back(entry.name);
    EXPECT_THAT(names, ElementsAre("a-/c", "a.b", "a/b", "kar.json", "z"));
    for (const auto& [name, text] : files)
        EXPECT_EQ(HostZip::readMember(dir.path("one.kar"), name), text);
}

TEST(Pack, archive_in_its_own_folder_stays_out_of_itself) {
    const TempDir dir;
    dir.write("f/kar.json", "{}");
    HostZip::packDirectory(dir.path("f"), dir.path("f/out.kar"));
    const std::string first = dir.read("f/out.kar");
    HostZip::packDirectory(dir.path("f") + "/", dir.path("f/../f/out.kar"));
    EXPECT_TRUE(dir.read("f/out.kar") == first);
    EXPECT_EQ(HostZip::getEntries(dir.path("f/out.kar")).size(), 1u);
}

TEST(Pack, failure_leaves_the_old_archive_and_no_rest) {
    const TempDir dir;
    dir.write("f/a", "a");
    dir.write("out/o.kar", "old");
    std::filesystem::create_symlink("/etc/passwd", dir.path("f/link"));
    EXPECT_THAT(raised([&] { HostZip::packDirectory(dir.path("f"), dir.path("out/o.kar")); }), HasSubstr("is a link"));
    std::filesystem::remove(dir.path("f/link"));
    EXPECT_EQ(dir.read("out/o.kar"), "old");
    EXPECT_THAT(raised([&] { HostZip::packDirectory(dir.path("missing"), dir.path("out/o.kar")); }), HasSubstr("not a directory"));
    EXPECT_THAT(raised([&] { HostZip::packDirectory(dir.path("f"), dir.path("out")); }), HasSubstr("directory"));
    EXPECT_THAT(raised([&] { HostZip::packDirectory(dir.path("f"), dir.path("no/o.kar")); }), HasSubstr("No such file"));
    if (geteuid() != 0) {
        chmod(dir.path("f/a").c_str(), 0);
        EXPECT_THROW(HostZip::packDirectory(dir.path("f"), dir.path("out/o.kar")), HostError);
        chmod(dir.path("f/a").c_str(), 0600);
    }
    EXPECT_EQ(dir.read("out/o.kar"), "old");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(dir.path("out")), {}), 1);

    HostZip::packDirectory(dir.path("f"), dir.path("out/o.kar"));
    EXPECT_EQ(HostZip::readMember(dir.path("out/o.kar"), "a"), "a");
    std::filesystem::create_directories(dir.path("hollow"));
    HostZip::packDirectory(dir.path("hollow"), dir.path("out/none.kar"));
    EXPECT_TRUE(HostZip::getEntries(dir.path("out/none.kar")).empty());
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(dir.path("out")), {}), 2);
}

TEST(Session, shares_one_open_archive_and_sees_a_new_one) {
    const TempDir dir;
    const std::string archive = ZipBuilder(dir.path("a.kar")).addStored("m", "first").write();
    const auto descriptors = [] { return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {}); };
    const auto before = descriptors();
    {
        const HostZipSession session(archive);
        zip_istream one("m", archive);
        zip_istream two("m", archive);
        std::filesystem::create_symlink(archive, dir.path("link.kar"));
        EXPECT_EQ(HostZip::readMember(dir.path("link.kar"), "m"), "first");
        {
            const HostZipSession nested(archive);
            EXPECT_TRUE(HostZip::containsFile(archive, "m"));
        }
        EXPECT_EQ(descriptors(), before + 1);
        EXPECT_EQ(readStream(two), "first");

        // Replaced: new reads see the new file, a stream begun before ends with the old one.
        ZipBuilder(dir.path("b.kar")).addStored("m", "other").write();
        std::filesystem::rename(dir.path("b.kar"), archive);
        EXPECT_EQ(HostZip::readMember(archive, "m"), "other");
        EXPECT_EQ(readStream(one), "first");

        // Overwritten in place, and gone.
        ZipBuilder(archive).addStored("m", "a longer third").write();
        EXPECT_EQ(HostZip::readMember(archive, "m"), "a longer third");
        std::thread([&] { EXPECT_EQ(HostZip::readMember(archive, "m"), "a longer third"); }).join();
        std::filesystem::remove(archive);
        EXPECT_NE(HostZip::getFault(archive), "");
    }
    EXPECT_EQ(descriptors(), before);
}
