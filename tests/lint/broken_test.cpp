// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

// Each file in broken/ has one defect and is named for it; expected.txt holds every finding in each, as the program prints them.

#include "../formats/HpfmDocument.h"
#include "AllocationFault.h"
#include "HostText.h"
#include "Rendered.h"
#include "TempDir.h"
#include "ZipBuilder.h"

#include "HZEPJSONText.h"
#include "HostErrors.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <set>

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using Lines = std::vector<std::string>;

const std::string kRoom = HZEP_SOURCE_DIR "/tests/lint/";

std::map<std::string, Lines> readExpected() {
    std::map<std::string, Lines> expected;
    std::ifstream in(kRoom + "expected.txt");
    for (std::string line; std::getline(in, line);)
        if (!line.empty() && line[0] != '#')
            expected[line.substr(0, line.find(':'))].push_back(line.substr(line.find(':')));
    return expected;
}

TEST(BrokenFiles, HaveTheExpectedFindings) {
    std::map<std::string, Lines> expected = readExpected();
    for (const auto& entry : std::filesystem::directory_iterator(kRoom + "broken")) {
        const std::string name = entry.path().filename().string();
        if (name == "some.file")
            continue;
        std::string here;
        for (std::string line : render(entry.path().string())) {
            // Names of files hold the place of the source tree.
            const std::string folder = kRoom + "broken/";
            if (const std::size_t at = line.find(folder); at != std::string::npos)
                line.erase(at, folder.size());
            here += "\n" + name + line;
            const auto found = std::find(expected[name].begin(), expected[name].end(), line);
            if (found == expected[name].end())
                ADD_FAILURE() << "not expected:\n" << name << line;
            else
                expected[name].erase(found);
        }
        EXPECT_FALSE(here.empty()) << name;
        for (const std::string& line : expected[name])
            ADD_FAILURE() << "missing:\n" << name << line;
        expected.erase(name);
    }
    EXPECT_THAT(expected, IsEmpty()) << "there are no such files";
}

std::string listOf(std::size_t items) {
    std::string text = "{\"bvlcLinkXPSwitches\": [1";
    for (std::size_t i = 1; i < items; ++i)
        text += ",1";
    return text + "]}";
}

std::string unknownKeys(std::size_t count) {
    std::string text = "{\"name\": \"n\"";
    for (std::size_t i = 0; i < count; ++i)
        text += ",\n\"key" + std::to_string(i) + "\": \"x\"";
    return text + "}";
}

class ArchiveLint : public testing::Test {
protected:
    Lines lint(const std::function<void(ZipBuilder&)>& fill) {
        ZipBuilder archive(dir_.path("a.kar"));
        fill(archive);
        return render(archive.write());
    }
    Lines lintMetadata(const std::string& json) {
        return lint([&](ZipBuilder& archive) { archive.addStored("kar.json", json); });
    }

    TempDir dir_;
};

TEST_F(ArchiveLint, LooksForListedMembers) {
    const std::string json = R"({"board": {"name": "b", "imageFileHdpi": "a.png"}, "files": [
      {"name": "top.dcp", "type": "DCP"},
      {"name": "ip/", "type": "IP_REPO_PATH"}, {"name": "ip/core", "type": "IP_CACHE_DIR"}, {"name": "./top.dcp", "type": "MCS"},
      {"name": "gone.dcp", "type": "PDI"}]})";
    EXPECT_THAT(lint([&](ZipBuilder& archive) { archive.add("kar.json", json).add("top.dcp", "x").add("ip/core/x.txt", "x"); }),
                ElementsAre("(kar.json):1: error: the archive has no member \"a.png\" [missing-member]",
                            "(kar.json):4: error: the archive has no member \"gone.dcp\" [missing-member]"));
}

TEST_F(ArchiveLint, ChecksTheDocumentsInTheArchive) {
    const std::string json = R"({"files": [{"name": "e.json", "type": "EMU_JSON"}, {"name": "x.json", "type": "EXT_META_JSON"},
      {"name": "p.hpfm", "type": "hpfm"}]})";
    const std::string xml = "<Root VersionMajor='1' VersionMinor='0'><Emulations/></Root>";
    EXPECT_THAT(lint([&](ZipBuilder& archive) {
                    archive.add("kar.json", json).add("kar.xml", "<Root/>").add("hw_emu/kar.json", "{\"nmae\": \"x\"}");
                    archive.add("e.json", R"({"emulations": [{"name": "a", "files": [{"type": "EMU_XML", "name": "gone"}]}]})");
                    archive.add("x.json", "{\"anything\": \"goes\",\n}").add("p.hpfm", "<a/>");
                }),
                ElementsAre("(kar.xml):1: error: element 'Root': attribute 'VersionMajor' is missing [schema]",
                            "(kar.xml):1: error: element 'Root': attribute 'VersionMinor' is missing [schema]",
                            "(kar.xml):1: error: element 'DSA' is missing in 'Root' [schema]",
                            "(hw_emu/kar.json):1: warning: key \"nmae\" is not known here; did you mean \"name\"? [unknown-key]",
                            "(e.json):1: error: the archive has no member \"gone\" [missing-member]",
                            "(x.json):2: error: expected key string [parse]",
                            "(p.hpfm):1: error: element 'a': the document element must be 'qd:repository' of the namespace "
                            "'urn:tolvan:qd' [parse]"));
}

TEST_F(ArchiveLint, FollowsWhatTheEmulationGeneratorReads) {
    std::string hpfm = kHpfm;
    hpfm.insert(hpfm.find("<qd:nocConn"), R"(<qd:busInterface qd:name="M1" qd:memport="S_AXI_GP" qd:sptag="GP[0]"/>)");
    const std::string json = R"({"files": [{"name": "p.hpfm", "type": "HPFM"}]})";
    const std::string emulations = R"(<Root VersionMajor='1' VersionMinor='0'><Emulations><Emulation Name='a'><Files>
<File Type='USER_PROP_JSON' Name='u.json'/></Files></Emulation></Emulations></Root>)";
    const auto fill = [&](ZipBuilder& archive) {
        archive.add("kar.json", json).add("p.hpfm", hpfm).add("emu/emu.xml", emulations).add("u.json", "{\"a\": \"$b\"}");
    };
    EXPECT_THAT(lint(fill), IsEmpty());
    const Lines lines = lint([&](ZipBuilder& archive) {
        fill(archive);
        archive.add("kar.xml", "<Root VersionMajor='1' VersionMinor='0'/>");
    });
    Lines found;
    std::copy_if(lines.begin(), lines.end(), std::back_inserter(found), [](const auto& line) { return line.ends_with("[tcl-text]"); });
    EXPECT_THAT(found,
                ElementsAre("(p.hpfm):15: warning: \"sptag\": \"HBM[0]\" goes into Tcl as it is, where \"[\" has a meaning [tcl-text]",
                            "(u.json):1: warning: \"a\": \"$b\" goes into Tcl as it is, where \"$\" has a meaning [tcl-text]"));
}

TEST_F(ArchiveLint, TellsWhatIsWrongWithTheArchive) {
    EXPECT_THAT(lint([](ZipBuilder& archive) { archive.add("readme.txt", "x"); }),
                ElementsAre(":1: error: no member \"kar.json\" or \"kar.xml\" [no-metadata]"));
    EXPECT_THAT(lint([](ZipBuilder& archive) { archive.add("kar.json", "{}").add("a", "1").add("a", "2"); }),
                ElementsAre(":1: warning: member \"a\" comes again; only the first is found [duplicate-name]"));
    EXPECT_THAT(lint([](ZipBuilder& archive) { archive.add({.name = "kar.json", .content = "{}", .crc = 1}); }),
                ElementsAre(testing::AllOf(testing::StartsWith("(kar.json):1: error: "), testing::EndsWith(" [unreadable-member]"))));
}

TEST_F(ArchiveLint, KeepsItsLimits) {
    // Two bytes an item leave room for a tenth more than are free; the document and the list are values too.
    EXPECT_THAT(lintMetadata(listOf(HostJson::kFreeValues / 9 * 10)), IsEmpty());
    EXPECT_THAT(lintMetadata(listOf(HostJson::kFreeValues / 9 * 10 + 2)),
                ElementsAre("(kar.json):1: warning: more than 222223 values in 444469 bytes; not checked [too-large]"));
    EXPECT_EQ(lintMetadata(unknownKeys(HZEPMetadataLint::kMaxFindings)).size(), HZEPMetadataLint::kMaxFindings);
    const Lines lines = lintMetadata(unknownKeys(HZEPMetadataLint::kMaxFindings + 1));
    ASSERT_EQ(lines.size(), HZEPMetadataLint::kMaxFindings + 1);
    EXPECT_THAT(lines.back(), testing::EndsWith("there are more findings than are listed [more-findings]"));
    // So many documents that a bound for the archive is needed too.
    const Lines many = lint([](ZipBuilder& archive) {
        std::string listed = "{\"files\": [";
        for (int i = 0; i < 14; ++i) {
            const std::string name = "e" + std::to_string(i);
            listed += (i ? ",{\"type\": \"EMU_JSON\", \"name\": \"" : "{\"type\": \"EMU_JSON\", \"name\": \"") + name + "\"}";
            archive.addStored(name, unknownKeys(HZEPMetadataLint::kMaxFindings));
        }
        archive.add("kar.json", listed + "]}");
    });
    EXPECT_EQ(many.back(), ":1: warning: not all members are checked: there are very many findings [more-findings]");
    // Nesting as deep as it is read, and one deeper.
    const auto nest = [](std::size_t depth) {
        return "{\"extensions\": " + std::string(depth - 1, '[') + std::string(depth - 1, ']') + "}";
    };
    EXPECT_THAT(lintMetadata(nest(1000)), IsEmpty());
    EXPECT_THAT(lintMetadata(nest(1001)), ElementsAre("(kar.json):1: error: nested deeper than 1000 levels [parse]"));
}

TEST_F(ArchiveLint, JudgesJsonAsTheReadersDo) {
    EXPECT_THAT(lintMetadata("{\"a\": 1e9999, \"b\": -1E400}"), testing::Each(testing::HasSubstr("is not known here")));
    EXPECT_THAT(lintMetadata("{\n\"name\": \"\\uDC00\"}"),
                ElementsAre("(kar.json):2: error: invalid codepoint, stray low surrogate [parse]"));
}

TEST_F(ArchiveLint, AndTheReaderLastWithoutMemory) {
    const std::string text = unknownKeys(3);
    const std::string json = dir_.write("kar.json", text);
    const std::string xml = dir_.write("a.zpfm", "<q:platform xmlns:q='urn:tolvan:zep' q:name='n'><x a='1'>t</x></q:platform>");
    const auto read = [&] {
        boost::property_tree::ptree tree;
        HZEPJSONText::read(text, tree);
    };
    EXPECT_GT(failEachAllocation(read), 10u);
    for (const std::string& file : {json, xml})
        EXPECT_GT(failEachAllocation([&] { HZEPMetadataLint::check(file); }), 50u);
}

TEST_F(ArchiveLint, CantReadEverything) {
    EXPECT_THROW(render(dir_.path("absent.zpfm")), HostError);
    EXPECT_THROW(render(dir_.write("no.kar", "no archive")), HostError);
    EXPECT_THROW(render(dir_.write("a.txt", "neither JSON nor XML")), HostError);
    EXPECT_THROW(render(dir_.write("b.json", "{\"nothing\": \"known\"}")), HostError);
    EXPECT_THROW(render(dir_.write("c.xml", "<html/>")), HostError);
    EXPECT_THROW(render(dir_.write("empty", "")), HostError);
    EXPECT_THROW(render(dir_.path()), HostError);
}

TEST_F(ArchiveLint, TellsKindsByTheirContent) {
    EXPECT_THAT(render(dir_.write("a", "\xEF\xBB\xBF {\"emulations\": [], \"x\": 1}")),
                ElementsAre(":1: warning: key \"x\" is not known here [unknown-key]"));
    EXPECT_THAT(render(dir_.write("b", "<q:platform xmlns:q='urn:tolvan:zep'><q:systemConfigurations/></q:platform>")),
                Contains(":1: error: element 'platform': attribute 'zep:vendor' is missing [schema]"));
    const std::string archive = dir_.path("archive.zip");
    ZipBuilder(archive).add("dsa.json", "{\"usesPR\": \"1\"}").write();
    EXPECT_THAT(render(archive), ElementsAre("(dsa.json):1: warning: \"usesPR\": \"1\" is read as false [not-a-flag]"));
}

TEST_F(ArchiveLint, HasABrokenExampleForEachRule) {
    std::set<std::string> seen;
    const auto see = [&seen](const Lines& lines) {
        for (const std::string& line : lines)
            seen.insert(line.substr(line.rfind('[') + 1, line.size() - line.rfind('[') - 2));
    };
    for (const auto& [name, lines] : readExpected())
        see(lines);
    see(lint([](ZipBuilder& archive) { archive.add("readme.txt", "x"); }));
    see(lint([](ZipBuilder& archive) { archive.add({.name = "kar.json", .content = "{}", .crc = 1}); }));
    see(lintMetadata("{\"files\": [{\"name\": \"gone\", \"type\": \"DCP\"}]}"));
    see(lintMetadata(listOf(2 * HostJson::kFreeValues)));
    see(lintMetadata(unknownKeys(HZEPMetadataLint::kMaxFindings + 1)));
    std::set<std::string> ids;
    for (const HZEPMetadataLint::Rule& rule : HZEPMetadataLint::getRules()) {
        EXPECT_TRUE(ids.insert(rule.id).second) << rule.id;
        EXPECT_TRUE(std::string(rule.why).ends_with('.')) << rule.id;
    }
    EXPECT_EQ(seen, ids);
}

TEST(PrintableText, CantSteerATerminal) {
    const auto printable = &HostText::makePrintable;
    EXPECT_EQ(printable("plain, ü, 漢, 😀"), "plain, ü, 漢, 😀");
    EXPECT_EQ(printable("a\nb\x1b[2J\x7f"), "a\\x0ab\\x1b[2J\\x7f");
    EXPECT_EQ(printable("\xc2\x9b"
                        "2J \xe2\x80\xae \xe2\x80\xa8"),
              "\\xc2\\x9b2J \\xe2\\x80\\xae \\xe2\\x80\\xa8");
    EXPECT_EQ(printable("\xff \xc3 \xed\xa0\x80 \xc0\x80"), "\\xff \\xc3 \\xed\\xa0\\x80 \\xc0\\x80");
}

} // namespace
