// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "CommandLine.h"
#include "TempDir.h"
#include "ZipBuilder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

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

        {"NoZip", [](const TempDir& dir) { return dir.write("p.kar", "not an archive"); }, {"p.kar", "Not a zip archive"}},
        {"EmptyArchiveFile", [](const TempDir& dir) { return dir.write("p.kar", ""); }, {"p.kar"}},
        {"CutEarly", cutAt(0.1), {"p.kar"}},
        {"CutInTheMiddle", cutAt(0.5), {"p.kar"}},
        {"CutAtTheEnd", cutAt(1.0), {"p.kar"}},
        {"BadChecksum", member([](auto& m) { m.crc = 1; }), {"p.kar", "kar.json"}},
        {"Encrypted", member([](auto& m) { m.flags = 1; }), {"p.kar", "kar.json", "encrypted"}},
        {"AnnouncesOneTerabyte", member([](auto& m) { m.size = 1ULL << 40; }), {"p.kar", "kar.json"}},
        {"NoMetadata",
         [](const TempDir& dir) { return ZipBuilder(dir.path("p.kar")).add("readme", "x").write(); },
         {"p.kar", "no metadata"}},
        {"EmptyMetadata", archive(""), {"p.kar", "kar.json", "empty"}},

        {"JsonSyntax", archive("{\n\"vendor\": \"v\",\n\"name\" \"n\"\n}"), {"p.kar", "kar.json", "(3)"}},
        {"JsonTooDeep", archive("{\"a\":" + repeat("[", 100000)), {"p.kar", "kar.json", "1000"}},
        {"JsonNoUtf8", archive("{\n\"vendor\": \"\xff\xfe\"}"), {"p.kar", "kar.json", "(2)", "invalid code sequence"}},
        {"DeviceWithoutCore", archive(device("a:b:c:-1", "")), {"p.kar", "kar.json", "core"}},
        {"PartOfThreeTokens", archive(device("a:b:c")), {"p.kar", "kar.json", "'a:b:c'"}},
        {"PartOfEightTokens", archive(device("a:b:c:d:e:f:g:h")), {"p.kar", "kar.json", "'a:b:c:d:e:f:g:h'"}},

        {"WrongRoot", platform("<?xml version=\"1.0\"?>\n<zep:plattform xmlns:zep=\"urn:tolvan:zep\"/>"), {"p.zpfm:2", "platform"}},
        {"WrongNamespace", platform("<zep:platform xmlns:zep=\"urn:other\"/>"), {"p.zpfm:1"}},
        {"MissingAttribute", platform(platformFile(R"(zep:vendor="v" zep:library="l" zep:version="1")", kChildren)), {"p.zpfm:", "name"}},
        {"WrongDecimal",
         platform(platformFile(R"(zep:vendor="v" zep:library="l" zep:name="n"
  zep:version="abc")",
                               kChildren)),
         {"p.zpfm:4", "abc"}},
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
    std::size_t errors = 0;
    for (std::size_t at = result.err.find("hzep: error: "); at != std::string::npos; at = result.err.find("hzep: error: ", at + 1))
        ++errors;
    EXPECT_EQ(errors, 1u) << result.err;
    EXPECT_LT(result.err.size(), 3000u) << "an error is for a person to read";
}

INSTANTIATE_TEST_SUITE_P(All, ShowBadInput, testing::ValuesIn(getBadInputs()), [](const auto& test) { return test.param.name; });

} // namespace
