// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

// broken.txt holds documents of one defect each with every finding in them; the rules' own examples are edits of examples/.

#include "../formats/HpfmDocument.h"
#include "AllocationFault.h"
#include "HostText.h"
#include "Rendered.h"
#include "TempDir.h"
#include "ZipBuilder.h"

#include "HZEPJSONText.h"
#include "HostErrors.h"
#include "HostZip.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <set>

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using Lines = std::vector<std::string>;

const std::string kSource = HZEP_SOURCE_DIR;

std::string readText(const std::string& path) {
    std::ifstream in(path);
    return {std::istreambuf_iterator<char>(in), {}};
}

std::string unescape(const std::string& text) {
    std::string plain;
    for (std::size_t i = 0; i < text.size(); ++i)
        plain += text[i] != '\\' ? text[i] : text[++i] == 'n' ? '\n' : text[i];
    return plain;
}

void replaceFirst(std::string& text, const std::string& old, const std::string& now) {
    const std::size_t at = text.find(old);
    ASSERT_NE(at, std::string::npos) << old;
    text.replace(at, old.size(), now);
}

/// The lines without the place of the test's folder.
Lines renderIn(const std::string& folder, const std::string& path) {
    Lines lines = render(path);
    for (std::string& line : lines)
        for (std::size_t at; (at = line.find(folder + "/")) != std::string::npos;)
            line.erase(at, folder.size() + 1);
    return lines;
}

/// A platform file is judged with what it names.
void writeNamed(const TempDir& folder, const std::string& text) {
    for (const char* name : {"a.kar", "b.kar"})
        if (text.find(name) != std::string::npos)
            ZipBuilder(folder.path(name))
                .add("kar.json", R"({"vendor": "v.example", "boardId": "n", "name": "n", "versionMajor": "1", "versionMinor": "0"})")
                .write();
    folder.write("a.spfm",
                 R"(<p:platform xmlns:p="urn:tolvan:zep" p:vendor="v.example" p:library="l" p:name="n" p:version="1.0"><p:description/>
<p:systemConfigurations><p:configuration p:name="c" p:displayName="c"><p:description/><p:processorGroup p:name="g" p:displayName="g"
p:cpuType="t"><p:os p:name="linux" p:displayName="l"/></p:processorGroup></p:configuration></p:systemConfigurations></p:platform>)");
}

TEST(BrokenFiles, HaveTheExpectedFindings) {
    std::ifstream in(kSource + "/tests/lint/broken.txt");
    std::string base;
    std::string line;
    std::getline(in, line);
    while (in) {
        if (line.starts_with("= ")) {
            for (base.clear(); std::getline(in, line) && !line.empty();)
                base += line + "\n";
        } else if (line.starts_with("> ")) {
            const std::string name = line.substr(2);
            SCOPED_TRACE(name);
            std::string old, now;
            std::getline(in, old);
            std::getline(in, now);
            std::string text = base;
            replaceFirst(text, unescape(old), unescape(now));
            Lines expected;
            while (std::getline(in, line) && line.find("error: ") + line.find("warning: ") + line.find("note: ") != 3 * line.npos &&
                   !line.starts_with("> "))
                expected.push_back(line);
            const TempDir folder;
            if (name.ends_with(".zpfm"))
                writeNamed(folder, text);
            EXPECT_THAT(renderIn(folder.path(), folder.write(name, text)), testing::ElementsAreArray(expected));
            continue;
        }
        std::getline(in, line);
    }
}

/// The file of an example, in the folder that the example's archive is packed from.
std::string toUnpacked(std::string file) {
    if (const std::size_t bracket = file.find('('); bracket != std::string::npos)
        file = file.substr(0, bracket) + ".d/" + file.substr(bracket + 1, file.size() - bracket - 2);
    return file;
}

TEST(Rules, SpeakForTheirBrokenExamplesAlone) {
    namespace fs = std::filesystem;
    std::set<std::string> ids;
    for (const HZEPMetadataLint::Rule& rule : HZEPMetadataLint::getRules()) {
        SCOPED_TRACE(rule.id);
        EXPECT_TRUE(ids.insert(rule.id).second);
        EXPECT_TRUE(std::string(rule.why).ends_with('.') && std::string(rule.remedy).ends_with('.'));
        const std::string file = toUnpacked(rule.example.file);
        if (file.empty())
            continue; // ArchiveLint shows those
        const std::string platform = file.substr(0, file.find('/'));
        const TempDir folder;
        fs::copy(kSource + "/examples/" + platform, folder.path(platform), fs::copy_options::recursive);
        std::string text = rule.example.broken;
        if (rule.example.mended) {
            text = readText(folder.path(file));
            replaceFirst(text, rule.example.mended, rule.example.broken);
        }
        folder.write(file, text);
        std::vector<fs::path> unpacked;
        for (const auto& entry : fs::recursive_directory_iterator(folder.path(platform)))
            if (entry.path().extension() == ".d")
                unpacked.push_back(entry.path());
        for (const fs::path& archive : unpacked) {
            HostZip::packDirectory(archive.string(), fs::path(archive).replace_extension("").string());
            fs::remove_all(archive);
        }
        std::set<std::string> found;
        for (const std::string& unit : HZEPMetadataLint::list(folder.path(platform)))
            for (const auto& finding : HZEPMetadataLint::check(unit))
                found.insert(finding.rule->id);
        EXPECT_THAT(found, ElementsAre(rule.id));
    }
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
    /// What the small documents here leave out is another test's.
    Lines lint(const std::function<void(ZipBuilder&)>& fill) {
        ZipBuilder archive(dir_.path("a.kar"));
        fill(archive);
        Lines lines = render(archive.write());
        std::erase_if(lines,
                      [](const std::string& line) { return line.ends_with("[identity-missing]") || line.ends_with("[unlisted-member]"); });
        return lines;
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
      {"name": "p.hpfm", "type": "HPFM"}]})";
    const std::string xml = "<Root VersionMajor='1' VersionMinor='0'><Emulations/></Root>";
    EXPECT_THAT(lint([&](ZipBuilder& archive) {
                    archive.add("kar.json", json).add("kar.xml", "<Root/>").add("hw_emu/kar.json", "{\"nmae\": \"x\"}");
                    archive.add("e.json", R"({"emulations": [{"name": "a", "files": [{"type": "EMU_XML", "name": "gone"}]}]})");
                    archive.add("x.json", "{\"anything\": \"goes\",\n}").add("p.hpfm", "<a/>");
                }),
                ElementsAre("(kar.xml):1: error: element 'Root': attribute 'VersionMajor' is missing [schema]",
                            "(kar.xml):1: error: element 'Root': attribute 'VersionMinor' is missing [schema]",
                            "(kar.xml):1: error: element 'DSA' is missing in 'Root' [schema]",
                            "(kar.xml):1: error: the document has no \"GenAppInfo\" [schema]",
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
    EXPECT_THAT(lint(fill), testing::Not(Contains(testing::EndsWith("[tcl-text]"))));
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
    EXPECT_EQ(lintMetadata(unknownKeys(HZEPMetadataLint::kMaxPerRule)).size(), HZEPMetadataLint::kMaxPerRule);
    const Lines lines = lintMetadata(unknownKeys(HZEPMetadataLint::kMaxPerRule + 1));
    ASSERT_EQ(lines.size(), HZEPMetadataLint::kMaxPerRule + 1);
    EXPECT_EQ(lines.back(), "(kar.json):1: warning: 101 findings of unknown-key, of which 100 are listed [more-findings]");
    EXPECT_EQ(lintMetadata(unknownKeys(HZEPMetadataLint::kMaxCounted + 1)).back(),
              "(kar.json):1: warning: at least 10000 findings of unknown-key, of which 100 are listed [more-findings]");
    // So many documents that a bound for the archive is needed too.
    const Lines many = lint([](ZipBuilder& archive) {
        std::string listed = "{\"files\": [";
        for (int i = 0; i < 14; ++i) {
            const std::string name = "e" + std::to_string(i);
            listed += (i ? ",{\"type\": \"EMU_JSON\", \"name\": \"" : "{\"type\": \"EMU_JSON\", \"name\": \"") + name + "\"}";
            archive.addStored(name, unknownKeys(1000));
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
    EXPECT_THAT(render(archive), Contains("(dsa.json):1: error: \"usesPR\": \"1\" is read as false [not-a-flag]"));
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
