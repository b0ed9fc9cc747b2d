// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "CommandLine.h"
#include "TempDir.h"
#include "ZipBuilder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <sys/stat.h>

namespace {

/// One broken input: makes it in the directory and gives the path to show; each of `said` must be in the error.
struct BadInput {
    std::string name;
    std::function<std::string(const TempDir&)> make;
    std::vector<std::string> said;
};

void PrintTo(const BadInput& input, std::ostream* out) {
    *out << input.name;
}

std::string repeat(const std::string& text, std::size_t times) {
    std::string all;
    for (std::size_t i = 0; i < times; ++i)
        all += text;
    return all;
}

std::string device(const std::string& part, const std::string& core = R"(, "core": {})") {
    return "{\"devices\": [{\"name\": \"fpga0\", \"fpgaPart\": \"" + part + "\"" + core + "}]}";
}

const std::string kGoodMetadata = device("a:b:c:-1");

std::function<std::string(const TempDir&)> archive(const std::string& metadata) {
    return [=](const TempDir& dir) { return ZipBuilder(dir.path("p.kar")).add("kar.json", metadata).write(); };
}

std::function<std::string(const TempDir&)> member(const std::function<void(ZipBuilder::Member&)>& damage) {
    return [=](const TempDir& dir) {
        ZipBuilder::Member entry;
        entry.name = "kar.json";
        entry.content = kGoodMetadata;
        damage(entry);
        return ZipBuilder(dir.path("p.kar")).add(entry).write();
    };
}

std::function<std::string(const TempDir&)> xmlArchive(const std::string& metadata) {
    return [=](const TempDir& dir) { return ZipBuilder(dir.path("p.dsa")).add("dsa.xml", metadata).write(); };
}

const std::string kRoot = R"(<Root VersionMajor="1" VersionMinor="12">)";

std::function<std::string(const TempDir&)> cutAt(double share) {
    return [=](const TempDir& dir) {
        const std::string bytes = ZipBuilder().add("kar.json", kGoodMetadata).bytes();
        return dir.write("p.kar", bytes.substr(0, static_cast<std::size_t>(share * static_cast<double>(bytes.size() - 1))));
    };
}

std::string platformFile(const std::string& attributes, const std::string& children) {
    return "<?xml version=\"1.0\"?>\n<zep:platform xmlns:zep=\"urn:tolvan:zep\"\n  " + attributes + ">\n" + children + "</zep:platform>\n";
}

const std::string kIdentity = R"(zep:vendor="v" zep:library="l" zep:name="n" zep:version="1.0")";
const std::string kChildren = R"(<zep:description/>
<zep:hardwarePlatforms><zep:hardwarePlatform zep:path="." zep:name="p.kar"/></zep:hardwarePlatforms>
<zep:softwarePlatforms><zep:softwarePlatform zep:path="." zep:name="p.spfm"/></zep:softwarePlatforms>
)";

std::function<std::string(const TempDir&)> platform(const std::string& text) {
    return [=](const TempDir& dir) { return dir.write("p.zpfm", text); };
}

std::function<std::string(const TempDir&)> withSoftware(const std::string& text) {
    return [=](const TempDir& dir) {
        ZipBuilder(dir.path("p.kar")).add("kar.json", kGoodMetadata).write();
        dir.write("p.spfm", text);
        return dir.write("p.zpfm", platformFile(kIdentity, kChildren));
    };
}

std::vector<BadInput> getBadInputs() {
    const std::string secret = "file:///etc/hostname";
    return {
        {"MissingFile", [](const TempDir& dir) { return dir.path("nowhere.zpfm"); }, {"nowhere.zpfm: no such file"}},
        {"EmptyPath", [](const TempDir&) { return ""; }, {"the path is empty"}},
        {"Directory", [](const TempDir& dir) { return dir.path(); }, {"is a directory"}},
        {"LinkToNothing",
         [](const TempDir& dir) {
             std::filesystem::create_symlink("gone", dir.path("l.zpfm"));
             return dir.path("l.zpfm");
         },
         {"leads nowhere"}},
        {"Pipe",
         [](const TempDir& dir) {
             mkfifo(dir.path("p.zpfm").c_str(), 0600);
             return dir.path("p.zpfm");
         },
         {"is no regular file"}},

        {"NoZip", [](const TempDir& dir) { return dir.write("p.kar", "not an archive"); }, {"p.kar", "not a zip archive"}},
        {"EmptyArchiveFile", [](const TempDir& dir) { return dir.write("p.kar", ""); }, {"p.kar"}},
        {"CutEarly", cutAt(0.1), {"p.kar"}},
        {"CutInTheMiddle", cutAt(0.5), {"p.kar"}},
        {"CutAtTheEnd", cutAt(1.0), {"p.kar"}},
        {"BadChecksum", member([](auto& m) { m.crc = 1; }), {"p.kar", "kar.json"}},
        {"Encrypted", member([](auto& m) { m.flags = 1; }), {"p.kar", "kar.json", "encrypted"}},
        {"AnnouncesOneTerabyte", member([](auto& m) { m.size = 1ULL << 40; }), {"p.kar", "kar.json"}},
        {"RatioBomb", member([](auto& m) { m.content = std::string(4 << 20, ' '); }), {"p.kar", "kar.json"}},
        {"NoMetadata",
         [](const TempDir& dir) { return ZipBuilder(dir.path("p.kar")).add("readme", "x").write(); },
         {"p.kar", "no metadata"}},
        {"EmptyMetadata", archive(""), {"p.kar", "kar.json", "empty"}},

        {"JsonSyntax", archive("{\n\"vendor\": \"v\",\n\"name\" \"n\"\n}"), {"p.kar", "kar.json", "(3)"}},
        {"JsonTooDeep", archive("{\"a\":" + repeat("[", 40000)), {"p.kar", "kar.json", "1000"}},
        {"JsonBomb", archive("{\"a\":[" + repeat("1,", 250000) + "1]}"), {"p.kar", "kar.json", "more than 225000 values in 500009 bytes"}},
        {"ExtensionsNoJson",
         [](const TempDir& dir) {
             return ZipBuilder(dir.path("p.kar"))
                 .add("kar.json", R"({"files": [{"type": "META_JSON", "name": "ext.json"}]})")
                 .add("ext.json", "{\n\"a\" 1}")
                 .write();
         },
         {"p.kar: ext.json(2): expected ':'"}},
        {"JsonNoUtf8", archive("{\n\"vendor\": \"\xff\xfe\"}"), {"p.kar", "kar.json", "(2)", "invalid code sequence"}},
        {"DeviceWithoutCore", archive(device("a:b:c:-1", "")), {"p.kar", "kar.json", "core"}},
        {"PartOfThreeTokens", archive(device("a:b:c")), {"p.kar", "kar.json", "'a:b:c'"}},
        {"PartOfEightTokens", archive(device("a:b:c:d:e:f:g:h")), {"p.kar", "kar.json", "'a:b:c:d:e:f:g:h'"}},

        {"XmlMetadataEmpty", xmlArchive(""), {"p.dsa", "dsa.xml"}},
        {"XmlMetadataNotWellFormed", xmlArchive(kRoot + "\n<unknown>\n</Root>"), {"p.dsa", "dsa.xml", "line 3"}},
        {"XmlMetadataWrongRoot", xmlArchive("\n<Roots/>"), {"p.dsa", "dsa.xml", "line 2"}},
        {"XmlMetadataMissingAttribute", xmlArchive(kRoot + "\n<DSA Vendor=\"v\"/></Root>"), {"p.dsa", "dsa.xml", "line 2"}},
        {"XmlMetadataTwice",
         xmlArchive(kRoot + repeat("\n<GenAppInfo Name=\"a\" Version=\"1\" CL=\"1\" TimeStamp=\"t\"/>", 2) + "</Root>"),
         {"p.dsa", "dsa.xml", "line 3"}},
        {"XmlMetadataWrongNumber", xmlArchive(R"(<Root VersionMajor="one" VersionMinor="0"/>)"), {"p.dsa", "dsa.xml", "line 1"}},
        {"XmlMetadataDocumentType", xmlArchive("<!DOCTYPE Root SYSTEM \"" + secret + "\">\n" + kRoot + "</Root>"), {"dsa.xml", "line 1"}},
        {"XmlMetadataTooDeep", xmlArchive(kRoot + repeat("<a>", 100000)), {"p.dsa", "dsa.xml"}},
        {"XmlMetadataBadChecksum",
         [](const TempDir& dir) {
             ZipBuilder::Member entry{.name = "dsa.xml", .content = kRoot + "</Root>"};
             entry.crc = 1;
             return ZipBuilder(dir.path("p.dsa")).add(entry).write();
         },
         {"p.dsa", "dsa.xml"}},

        {"WrongRoot", platform("<?xml version=\"1.0\"?>\n<zep:plattform xmlns:zep=\"urn:tolvan:zep\"/>"), {"p.zpfm:2", "platform"}},
        {"WrongNamespace", platform("<zep:platform xmlns:zep=\"urn:other\"/>"), {"p.zpfm:1"}},
        {"MissingAttribute", platform(platformFile(R"(zep:vendor="v" zep:library="l" zep:version="1")", kChildren)), {"p.zpfm:", "name"}},
        {"WrongDecimal",
         platform(platformFile(R"(zep:vendor="v" zep:library="l" zep:name="n"
  zep:version="abc")",
                               kChildren)),
         {"p.zpfm:4: ", "abc"}},
        {"WrongInteger",
         platform(platformFile(kIdentity, "<zep:description/>\n<zep:hardwarePlatforms zep:defaultRP=\"x\"/>\n")),
         {"p.zpfm:5"}},
        {"MissingElement", platform(platformFile(kIdentity, "<zep:description/>")), {"p.zpfm:", "hardwarePlatforms"}},
        {"SecondSoftware",
         platform(platformFile(kIdentity, R"(<zep:description/><zep:hardwarePlatforms/>
<zep:softwarePlatforms>
<zep:softwarePlatform zep:path="." zep:name="a"/>
<zep:softwarePlatform zep:path="." zep:name="b"/></zep:softwarePlatforms>)")),
         {"p.zpfm:7", "softwarePlatform"}},
        {"NotWellFormed", platform(platformFile(kIdentity, "<zep:description>\n</b>")), {"p.zpfm:5"}},
        {"EmptyPlatformFile", platform(""), {"p.zpfm"}},
        {"DocumentType", platform("<!DOCTYPE x SYSTEM \"" + secret + "\">\n<x/>"), {"p.zpfm:1"}},
        {"EntityBomb",
         platform("<!DOCTYPE x [<!ENTITY a \"" + repeat("b", 1000) + "\"><!ENTITY c \"" + repeat("&a;", 1000) + "\"><!ENTITY d \"" +
                  repeat("&c;", 1000) + "\">]>\n<x>&d;</x>"),
         {"p.zpfm:1"}},
        {"ExternalEntity", platform("<!DOCTYPE x [<!ENTITY e SYSTEM \"" + secret + "\">]>\n<x>&e;</x>"), {"p.zpfm:1"}},
        {"XmlTooDeep", platform(platformFile(kIdentity, repeat("<a>", 100000))), {"p.zpfm:"}},
        {"NameOfOneMegabyte", platform("<" + std::string(1 << 20, 'n') + "/>"), {"p.zpfm"}},

        {"HardwareFileMissing", platform(platformFile(kIdentity, kChildren)), {"p.zpfm", "p.kar' does not exist"}},
        {"SoftwareFileMissing",
         [](const TempDir& dir) {
             ZipBuilder(dir.path("p.kar")).add("kar.json", kGoodMetadata).write();
             return dir.write("p.zpfm", platformFile(kIdentity, kChildren));
         },
         {"p.zpfm", "the software platform file does not exist"}},
        {"BrokenSoftwareFile", withSoftware("<zep:platform xmlns:zep=\"urn:tolvan:zep\"/>"), {"p.zpfm", "p.spfm", "line 1"}},
    };
}

class ShowBadInput : public testing::TestWithParam<BadInput> {};

TEST_P(ShowBadInput, GetsOneClearError) {
    const TempDir dir;
    const std::string path = GetParam().make(dir);
    const CommandResult result = runCommand(dir.path(), "hzep show " + quote(path));
    EXPECT_EQ(result.status, 2) << result.err;
    EXPECT_EQ(result.out, "");
    for (const std::string& part : GetParam().said)
        EXPECT_THAT(result.err, testing::HasSubstr(part));
    EXPECT_THAT(result.err, testing::StartsWith("hzep: error: "));
    EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1) << result.err;
    EXPECT_LT(result.err.size(), 3000u) << "an error is for a person to read";
}

/// Archives whose metadata reads well and which must not be changed all the same.
TEST(AddToBadArchive, IsRefusedWithOneSentence) {
    ZipBuilder::Member link{.name = "l", .content = "/etc", .unixMode = 0120777};
    ZipBuilder::Member masked{.name = "a", .content = "x", .localName = "z"};
    ZipBuilder::Member greedy{.name = "a", .content = "x", .method = ZipBuilder::Stored};
    greedy.size = greedy.compressedSize = 40;
    const auto base = [] { return ZipBuilder().add("kar.json", kGoodMetadata); };
    const std::vector<std::pair<std::string, std::string>> cases = {
        {base().add("a", "1").add("a", "2").bytes(), "two of this name"},
        {base().add(greedy).add("b", "2").bytes(), "overlaps"},
        {base().add(masked).bytes(), "contradicts the directory in its name"},
        {base().add("../a", "1").bytes(), "leads out"},
        {base().add("/a", "1").bytes(), "absolute"},
        {base().add("a\\b", "1").bytes(), "back-slash"},
        {base().add(link).bytes(), "is a link"},
    };
    for (const auto& [bytes, said] : cases) {
        SCOPED_TRACE(said);
        const TempDir dir;
        dir.write("p.kar", bytes);
        dir.write("new", "text");
        const CommandResult result = runCommand(dir.path(), "hzep add p.kar DCP new new");
        EXPECT_EQ(result.status, 2);
        EXPECT_THAT(result.err,
                    testing::AllOf(testing::StartsWith("hzep: error: "), testing::HasSubstr("p.kar: "), testing::HasSubstr(said)));
        EXPECT_EQ(dir.read("p.kar"), bytes);
    }
}

INSTANTIATE_TEST_SUITE_P(All, ShowBadInput, testing::ValuesIn(getBadInputs()), [](const auto& test) { return test.param.name; });

} // namespace
