// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "../../fuzz/WrittenIsRead.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>

namespace {

/// What stands in front of the change, what it replaces, what stands in its place and what follows.
struct Layout {
    const char* what;
    const char* member;
    std::string head;
    std::string old;
    std::string changed;
    std::string tail;
};

std::string widen(const std::string& text) {
    std::string wide;
    for (const char c : text)
        wide += {c, '\0'};
    return wide;
}

const std::string kXmlHead = "<?xml version='1.0'?>\r\n<!-- ours --><Root VersionMajor='1' VersionMinor='15' mine='&#233;'>\r\n"
                             "<GenAppInfo Name='' Version='' CL='1' TimeStamp=''/><DSA Vendor='a' BoardId='b' Name='c' VersionMajor='1' "
                             "VersionMinor='0' Description='' FeatureRomTimestamp='0'><Build/><Board Name='' Vendor='' Part=''><Images>"
                             "<Img Type='' File=''/></Images></Board>\r\n<Devices><Device Name='fpga0' Type=''><Core Name='' Type='' "
                             "ComputeUnits='1'/></Device></Devices>\r\n  ";
const std::string kXmlTail = "\r\n</DSA></Root>\r\n<!-- end -->";

const Layout kLayouts[] = {
    {"CRLF and tabs", "kar.json", "{\r\n\t\"mine\": 1e5,\r\n\t\"files\": [\r\n\t\t{ \"name\" : \"o\", \"type\" : \"X\" }", "",
     ",\r\n\t\t{ \"name\" : \"d/n\", \"type\" : \"DCP\" }", "\r\n\t],\r\n\t\"isrId\": \"3\"\r\n}\r\n"},
    {"one line, escapes", "kar.json", R"({"\u0066iles":[{"type":"X","name":"a\/b"})", "", R"(,{"name":"d\/n","type":"DCP"})",
     R"(],"é":"\u00e9"})"},
    {"byte order mark, list missing", "kar.json", "\xEF\xBB\xBF{\n  \"zz\": -0.0,\n  \"memories\": []", "",
     ",\n  \"files\": [\n    {\n      \"name\": \"d/n\",\n      \"type\": \"DCP\"\n    }\n  ]", ",\n  \"name\": \"x\"\n}"},
    {"list empty, in an inner line", "kar.json", "{\n \"files\": ", "[ ]", "[\n  {\n   \"name\": \"d/n\",\n   \"type\": \"DCP\"\n  }\n ]",
     "  ,\n \"files\": [ 1 ]\n}"},
    {"a text for a list", "kar.json", "{\"files\" : ", "\"\"", R"([{"name" : "d/n", "type" : "DCP"}])", ", \"a\" : {\"b\":[]}}"},
    {"last key, comma first", "kar.json", "{ \"x\": true\n, \"files\":\n  [ {\"name\": \"o\"}",
     "\n  , {\"type\": \"DCP\", \"name\": \"old\"}", "\n  , {\"name\": \"d/n\", \"type\": \"DCP\"}", "\n  ]\n}"},
    {"all of the type go", "kar.json", "{\"files\": [", "{\"type\":\"DCP\"}, {\"type\": \"\\u0044CP\",\"name\":\"b\"}, ", "",
     "{\"type\": \"dcp\"}, {\"name\": \"d/n\", \"type\": \"DCP\"}], \"n\": 1E+2}"},
    {"alternate alone", "alt_kar.json", "{", "", R"("files": [{"name": "d/n", "type": "DCP"}])", "}\n"},
    {"XML, CRLF, comments", "kar.xml", kXmlHead + "<Files><!-- f -->\r\n    <File\tType='X'  Name='o' />", "",
     "\r\n    <File\tType='DCP'  Name='d/n' />", "<!-- g -->\r\n  </Files>" + kXmlTail},
    {"XML, empty list", "kar.xml", kXmlHead + "<Files", " />", ">\r\n    <File Type=\"DCP\" Name=\"d/n\"/>\r\n  </Files>", kXmlTail},
    {"XML, of two bytes", "kar.xml", widen(kXmlHead + "<Files>"), widen("<File Type=\"DCP\" Name=\"o\" mine='x'/>"),
     widen("<File Type=\"DCP\" Name=\"d/n\"/>"), widen("</Files>" + kXmlTail)},
    {"index", "mda.json", "{\"mine\":1e5,\"files\":[{\"type\":\"A\",\"name\":\"a\"}", "", ",{\"name\":\"d/n\",\"type\":\"DCP\"}",
     ",{\"name\":\"z\",\"type\":\"Z\"}]}"},
    {"index, the type's name changes", "mda.json", "{\"files\":[\n{\"type\":\"DCP\",\"name\":", "\"o\"", "\"d/n\"", "}]\n}"},
};

} // namespace

TEST(ArchiveEdit, LeavesEveryOtherByte) {
    const TempDir dir;
    const std::string source = dir.write("source", "payload");
    for (const Layout& layout : kLayouts) {
        SCOPED_TRACE(layout.what);
        const std::string archive = dir.path("a.kar");
        const bool isIndex = std::string(layout.member) == "mda.json";
        const std::string child = "{\"files\" : []}";
        ZipBuilder(archive).add(layout.member, layout.head + layout.old + layout.tail).add("hw_emu/kar.json", child).write();
        isIndex ? HZEPArchiveEdit::addToIndex(archive, "DCP", "d/n", source) : HZEPArchiveEdit::addFile(archive, "DCP", "d/n", source);
        EXPECT_EQ(HostZip::readMember(archive, layout.member), layout.head + layout.changed + layout.tail);
        EXPECT_EQ(HostZip::readMember(archive, "hw_emu/kar.json"), child);
        EXPECT_EQ(HostZip::readMember(archive, "d/n"), "payload");
        EXPECT_TRUE(HostZip::verifyDigest(archive));
    }
}

TEST(ArchiveEdit, RefusesBeforeAnythingIsWritten) {
    const TempDir dir;
    const std::string deep = std::string(1000, '[') + "1" + std::string(1000, ']');
    struct Refusal {
        const char* metadata;
        std::string type, entry, content;
        const char* words;
    };
    const Refusal kRefusals[] = {
        {"{}", "", "n", "", "the type is empty"},
        {"{}", "T\xE9", "n", "", "the type: is no UTF-8: \"T\\xe9\""},
        {"{}", "T", "n\xE9", "", "n\\xe9: its name is no UTF-8"},
        {"{}", "T", "../n", "", "its name leads out of the archive"},
        {"{}", "T", std::string(65536, 'n'), "", "its name is too long"},
        {"{}", "T", "kar.json", "", "is the archive's metadata"},
        {"{\"files\": \"x\"}", "T", "n", "", "kar.json: \"files\": is no list"},
        {"{\n]", "T", "n", "", "kar.json: line 2: "},
        {"{}", "META_JSON", "n", deep, "nested deeper than"},
        {"{}", "EXT_META_JSON", "n", deep.substr(1, deep.size() - 2) + " ", ""},
        {"{}", "HPFM", "n", "<x", ":1: not well-formed XML"},
    };
    for (const Refusal& refusal : kRefusals) {
        SCOPED_TRACE(refusal.words);
        const std::string archive = ZipBuilder(dir.path("a.kar")).add("kar.json", refusal.metadata).write();
        const std::string before = dir.read("a.kar"), source = dir.write("source", refusal.content);
        std::string words;
        try {
            HZEPArchiveEdit::addFile(archive, refusal.type, refusal.entry, source);
        } catch (const HostError& error) {
            words = error.what();
        }
        EXPECT_THAT(words, testing::HasSubstr(refusal.words));
        EXPECT_EQ(words.empty(), dir.read("a.kar") != before);
    }
}

TEST(ArchiveEdit, ChangesAtManyPlacesAtOnce) {
    using Value = HZEPTextEdit::Value;
    HZEPTextEdit json("{\n  \"clocks\": [ {\"id\": 1, \"f\": 3e8}, {\"id\": 2}, {\"id\": 3} ],\n  \"a.b\": {\"x\": null}\n}",
                      HZEPTextEdit::Json);
    json.replace("clocks[0].f", "250");
    json.remove("clocks[1]");
    json.insert("clocks[2]", Value(Value::Object, {Value::plain("9").named("id")}));
    json.insert("clocks[0].on", Value::plain("true"));
    json.remove("[\"a.b\"].x");
    json.insert("top", "t", {"top", "clocks"});
    EXPECT_EQ(
        json.apply(),
        "{\n  \"top\": \"t\",\n  \"clocks\": [ {\"id\": 1, \"f\": \"250\", \"on\": true}, {\"id\": 9}, {\"id\": 3} ],\n  \"a.b\": {}\n}");

    HZEPTextEdit xml("<r>\n  <!-- / -->\n  <i n='1' o='/'>/</i>\n  <i n='2'/>\n</r>", HZEPTextEdit::Xml);
    xml.replace("i[0].n", "a'<");
    xml.remove("i[0].o");
    xml.remove("i[1]");
    xml.insert("i[1]", Value(Value::Object, {Value("3").named("n")}));
    xml.insert("v", "4");
    xml.insert("z", Value(Value::Object, {}));
    EXPECT_EQ(xml.apply(), "<r v=\"4\">\n  <!-- / -->\n  <i n='a&apos;&lt;'>/</i>\n  <i n='3'></i>\n  <z/>\n</r>");

    for (const char* path : {"none", "clocks[3]", "clocks[", "clocks[-1]", "a..b", ".a", "a.", "[\"a"})
        EXPECT_THROW(json.replace(path, "x"), HostDataException) << path;
    EXPECT_THROW(json.insert("clocks[0].id", "x"), HostDataException);
    EXPECT_THROW(HZEPTextEdit("{\"a\": \"\\udc00\"}", HZEPTextEdit::Json), HostDataException);
}

TEST(ArchiveEdit, WhatIsWrittenIsRead) {
    const HostMsgMgr::Sink sink = HostMsgMgr::getGlobal().setSink([](const HostMsg&) {});
    std::streambuf* const out = std::cout.rdbuf(nullptr);
    WrittenIsRead rounds;
    std::mt19937 random(20);
    std::string faults;
    std::size_t written = 0, refused = 0;
    constexpr int kRounds = 300;
    for (int i = 0; i < kRounds && faults.empty(); ++i) {
        std::string bytes(200, '\0');
        for (char& byte : bytes)
            byte = static_cast<char>(random());
        faults = rounds.run(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
        written += rounds.getWritten();
        refused += rounds.getRefused();
    }
    std::cout.rdbuf(out);
    std::cout.clear();
    HostMsgMgr::getGlobal().setSink(sink);
    std::cout << kRounds << " rounds: " << written << " texts written and read, " << refused << " refused\n";
    EXPECT_EQ(faults, "");
    EXPECT_GT(written, refused / 4);
    EXPECT_GT(refused, 100u);
}
