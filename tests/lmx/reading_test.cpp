// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include <gtest/gtest.h>

#include "Outcome.h"
#include "PlainLMX.h"
#include "ProbeLMX.h"
#include "TempDir.h"

#include <chrono>
#include <filesystem>
#include <map>

#include <sys/stat.h>

namespace {

using namespace lmx60;

const std::string head = "<?xml version='1.0'?>\n<t:tree xmlns:t='urn:probe' t:id='1'>\n";
const std::string start = head + "<t:title/>\n<t:leaf/>\n";

TEST(Reading, EachFaultHasItsCodeItemAndLine) {
    const struct {
        std::string text;
        int code;
        const char* item;
        int line;
        const char* says;
    } rows[] = {
        {"<tree xmlns='urn:other'/>", 16, "tree", 1, "element 'tree': the document element must be 'pr:tree'"},
        {"<tree/>", 16, "tree", 1, "must be"},
        {"\n<t:values xmlns:t='urn:probe'/>", 16, "values", 2, "element 't:values'"},
        {head + "<t:leaf/></t:tree>", 21, "title", 3, "element 'pr:title' is missing in 'tree'"},
        {head + "<t:title/>\n<t:many/></t:tree>", 21, "leaf", 4, "'pr:leaf' is missing"},
        {start + "</t:tree>", 21, "many", 5, "'pr:many' is missing"},
        {start + "<t:many/><t:key/>\n<t:val/><t:val/></t:tree>", 106, "val", 6, "unexpected element 't:val'"},
        {"<t:tree xmlns:t='urn:probe'\n  t:other='1'\n>\n<t:title/></t:tree>", 25, "tree", 1, "attribute 'pr:id' is missing"},
        {start + "<t:many/><t:config>\n</t:config></t:tree>", 31, "config", 6, "element 'config': none of the elements"},
        {start + "<t:many/><t:config>\n<t:leaf/></t:config></t:tree>", 31, "config", 6, "none of the elements"},
        {"<t:tree xmlns:t='urn:probe'\n\n t:x = '>\n'\n t:id\n=\n'abc'/>", 35, "id", 5, "attribute 't:id': not a whole number: 'abc'"},
        {"<t:tree xmlns:t='urn:probe' t:id='-1'/>", 37, "id", 1, "attribute 't:id': less than 0: '-1'"},
        {"<t:tree xmlns:t='urn:probe' t:id='4294967296'/>", 36, "id", 1, "more than 4294967295"},
        {start + "<t:many/>\n<t:many/>\n<t:leaf/></t:tree>", 106, "leaf", 7, "unexpected element 't:leaf'"},
        {start + "<t:many><t:leaf/></t:many></t:tree>", 106, "leaf", 5, "unexpected"},
        {head + "<t:title>a<t:leaf/>b</t:title></t:tree>", 106, "leaf", 3, "unexpected"},
        {head + "<t:title>\n</t:titel></t:tree>", 101, "tree", 4, "not well-formed XML: Opening and ending tag mismatch"},
        {head + "<t:title/>", 101, "tree", 3, "not well-formed"},
        {start + "<t:many/></t:tree>\n<more/>", 101, "tree", 6, "not well-formed"},
        {"", 101, "", 1, "not well-formed"},
        {"no XML", 101, "", 1, "not well-formed"},
        {head + "<t:title>&unknown;</t:title></t:tree>", 101, "tree", 3, "unknown"},
        {head + "<t:title>\xff</t:title></t:tree>", 101, "tree", 3, "not well-formed"},
        {head + "<t:title t:a='1' t:a='2'/></t:tree>", 101, "tree", 3, "not well-formed"},
        {head + "<x:title/></t:tree>", 102, "tree", 3, "wrong use of namespaces"},
        {"<!DOCTYPE t:tree>\n" + start, 103, "", 1, "a document type is not allowed"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        Probe::Tree tree;
        const Outcome outcome = readInto(tree, row.text);
        EXPECT_EQ(outcome.code, row.code) << outcome;
        EXPECT_EQ(outcome.item, row.item) << outcome;
        EXPECT_EQ(outcome.line, row.line) << outcome;
        EXPECT_NE(outcome.text.find(row.says), std::string::npos) << outcome;
    }
    Probe::Values values;
    const Outcome count = readInto(values, "<values xmlns='urn:probe'>\n<count>\nx</count></values>");
    EXPECT_EQ(count.code, 35);
    EXPECT_EQ(count.line, 2);
    EXPECT_NE(count.text.find("element 'count': not a whole number: 'x'"), std::string::npos) << count;
    EXPECT_EQ(readInto(values, "<values xmlns='urn:probe'><count/><note/></values>").code, 35) << "in file order";
    EXPECT_EQ(readInto(values, "<values xmlns='urn:probe'><count>1</count><note/></values>").code, 106) << "out of schema order";
}

TEST(Reading, WhatNoTableKnowsIsSkipped) {
    Probe::Tree tree;
    EXPECT_EQ(
        readInto(tree, head + "<!-- c --><?pi?>text<t:new><t:leaf t:id='x'/></t:new><o:title xmlns:o='urn:o'/><title/><t:title t:lang='x' "
                              "xml:lang='en' plain='1'>a<i/>b</t:title><t:leaf n='not qualified'><t:new/></t:leaf><t:many/><t:new/>"
                              "</t:tree><!-- after -->")
            .code,
        0);
    EXPECT_EQ(tree.GetTitle(), L"ab");
    EXPECT_FALSE(tree.GetLeaf().IssetN());
    EXPECT_EQ(tree.SizeMany(), 1u);

    Plain::Root root;
    EXPECT_EQ(readInto(root, "<Root VersionMajor='1' a:VersionMajor='x' xmlns:a='urn:a'><a:Core/><Core Name='c'/></Root>").code, 0);
    EXPECT_EQ(root.GetVersionMajor(), 1u);
}

TEST(Reading, SinglesAreReusedAndListsGrow) {
    Probe::Tree tree;
    tree.GetLeaf().SetN(L"before");
    const Probe::Leaf* const leaf = &tree.GetLeaf();
    const std::string text = start + "<t:many/><t:left t:n='1'/></t:tree>";
    EXPECT_EQ(readInto(tree, text).code, 0);
    EXPECT_EQ(readInto(tree, text).code, 0);
    EXPECT_EQ(&tree.GetLeaf(), leaf);
    EXPECT_EQ(leaf->GetN(), L"before");
    EXPECT_EQ(tree.SizeMany(), 2u);
}

TEST(Reading, FilesStringsAndConstructors) {
    TempDir dir;
    const std::string text = start + "<t:many/></t:tree>";
    const std::string file = dir.write("tree.xml", text);
    elmx_error error = error_none;
    const Probe::Tree fromFile(file.c_str(), &error);
    EXPECT_EQ(error, error_none);
    EXPECT_EQ(Probe::Tree(text), fromFile);
    EXPECT_EQ(Probe::Tree(text.data(), text.size()), fromFile);
    EXPECT_EQ(Probe::Tree(c_any_info(text)), fromFile);
    c_xml_reader_memory reader(text.data(), text.size());
    EXPECT_EQ(Probe::Tree(reader), fromFile);

    s_debug_error debug;
    ASSERT_EQ(mkfifo(dir.path("pipe.xml").c_str(), 0600), 0);
    for (const auto& [bad, cause] : {std::pair(dir.path("none.xml"), "No such file or directory"), std::pair(dir.path(), "Is a directory"),
                                     std::pair(dir.path("pipe.xml"), "not a regular file")}) {
        Probe::Tree tree = fromFile;
        EXPECT_EQ(tree.Unmarshal(bad.c_str(), &debug), error_no_file);
        EXPECT_EQ(debug.error, error_no_file);
        EXPECT_EQ(debug.source_file, bad);
        EXPECT_EQ(debug.text, cause);
        EXPECT_EQ(tree, fromFile);
        Probe::Tree made(bad.c_str(), &error);
        EXPECT_EQ(error, error_no_file);
    }
    const std::string broken = dir.write("broken.xml", "<x/>");
    EXPECT_THROW(Probe::Tree(broken.c_str(), &error, &debug), c_lmx_exception);
    EXPECT_EQ(error, error_not_read);
    EXPECT_EQ(debug.error, error_wrong_root);
    EXPECT_EQ(debug.source_file, broken);
    EXPECT_EQ(debug.line, 1);
    for (int code = -1; code < 200; ++code) {
        EXPECT_STRNE(get_error_description(code), "");
    }
}

TEST(Reading, OtherEncodingsAndLineEndings) {
    Probe::Values values;
    EXPECT_EQ(
        readInto(values, "<?xml version='1.0' encoding='ISO-8859-1'?><values xmlns='urn:probe'><note>\xe9\r\n\xfc</note></values>").code,
        0);
    EXPECT_EQ(values.GetNote(), L"\u00e9\n\u00fc");
    std::string wide("\xff\xfe", 2);
    for (const char c : std::string("<values xmlns='urn:probe'\r\n xmlns:p='urn:probe'\r\n p:byte='300'/>")) {
        wide.append(1, c).append(1, '\0');
    }
    EXPECT_EQ(readInto(values, wide).line, 3);
    wide.assign("\xff\xfe", 2);
    for (const char c : std::string("<values xmlns='urn:probe'/>\n")) {
        wide.append(1, c).append(1, '\0');
    }
    EXPECT_EQ(readInto(values, wide).code, 0);
    for (const std::string& half : {std::string("\n"), std::string("\0\xd8", 2)}) {
        EXPECT_NE(readInto(values, wide + half).text.find("the last character is cut off"), std::string::npos);
    }
    testing::internal::CaptureStderr();
    const Outcome latin =
        readInto(values, "<?xml version='1.0' encoding='WINDOWS-1252'?>\n<p:values xmlns:p='urn:probe' p:text='\x81\x8d'/>");
    EXPECT_EQ(latin.code, error_not_well_formed) << latin;
    EXPECT_NE(latin.text.find("input conversion failed"), std::string::npos) << latin;
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(readInto(values, "\xef\xbb\xbf<values xmlns='urn:probe'/>").code, 0);
}

/// Collects errors instead of throwing; lets those pass that it is told to.
class QuietReader : public c_xml_reader_memory {
public:
    QuietReader(const std::string& text, bool pass) : c_xml_reader_memory(text.data(), text.size()), pass_(pass) {}
    std::string seen;
    int after = 0;

protected:
    elmx_error error_hook(elmx_error code, const std::string& item, const std::string&, int line) override {
        seen += std::to_string(code) + " " + item + " " + std::to_string(line) + "; ";
        return pass_ ? c_xml_reader::error_hook(error_none, item, {}, line) : code;
    }
    elmx_error after_error_hook(elmx_error code) override {
        ++after;
        return code;
    }

private:
    bool pass_;
};

TEST(Reading, AHookTurnsFaultsIntoCodes) {
    const std::string text = start + "<t:many/><t:leaf/><t:left/></t:tree>";
    QuietReader reader(text, false);
    elmx_error error = error_none;
    const Probe::Tree tree(reader, &error);
    EXPECT_EQ(error, error_unexpected_element);
    EXPECT_EQ(reader.seen, "106 leaf 5; ");
    EXPECT_EQ(tree.SizeMany(), 1u);

    const std::string empty;
    QuietReader none(empty, true);
    const Probe::Tree nothing(none, &error);
    EXPECT_EQ(error, error_not_well_formed) << "a fault of the XML itself can't pass";
    EXPECT_EQ(none.seen, "101  1; ");
    EXPECT_NO_THROW(nothing.GetLeaf()) << "a reading constructor makes the mandatory children";
}

TEST(Reading, AHookLetsFaultsPass) {
    const std::string text = "<values xmlns='urn:probe' xmlns:p='urn:probe' p:byte='300' p:short='-99999999999999999999' p:uint='abc' "
                             "p:auto='yes'><values/><note>n</note><tree/></values>";
    QuietReader reader(text, true);
    elmx_error error = error_not_read;
    const Probe::Values values(reader, &error);
    EXPECT_EQ(error, error_none);
    EXPECT_EQ(reader.seen, "36 byte 1; 37 short 1; 35 uint 1; 35 auto 1; 106 values 1; 106 note 1; 106 tree 1; ");
    EXPECT_EQ(reader.after, 7);
    EXPECT_EQ(values.GetByte(), 255) << "the nearest value of the type";
    EXPECT_EQ(values.GetShort(), -32768);
    EXPECT_EQ(values.GetUint(), 0u);

    const std::string tree = "<o:tree xmlns:o='urn:probe'><o:config/><o:pick/></o:tree>";
    QuietReader lenient(tree, true);
    const Probe::Tree read(lenient, &error);
    EXPECT_EQ(error, error_none);
    EXPECT_EQ(lenient.seen, "25 tree 1; 21 title 1; 21 leaf 1; 21 many 1; 31 config 1; ");
    EXPECT_EQ(read.GetInner().GetConfig().GetChoice(), Probe::InnerConfig::Choice_None);
}

TEST(Hostile, NothingOutsideTheDocumentIsLookedAt) {
    TempDir dir;
    const std::string secret = dir.write("secret.txt", "secret");
    std::string bomb = "<!DOCTYPE b [<!ENTITY a0 'xxxxxxxxxx'>";
    for (int i = 1; i < 12; ++i) {
        bomb += "<!ENTITY a" + std::to_string(i) + " '";
        for (int j = 0; j < 10; ++j) {
            bomb += "&a" + std::to_string(i - 1) + ";";
        }
        bomb += "'>";
    }
    bomb += "]>\n<values xmlns='urn:probe'><note>&a11;</note></values>";
    const std::string texts[] = {
        bomb,
        "<!DOCTYPE v [<!ENTITY e SYSTEM '" + secret + "'>]><values xmlns='urn:probe'><note>&e;</note></values>",
        "<!DOCTYPE v SYSTEM '" + secret + "'><values xmlns='urn:probe'/>",
        "<!DOCTYPE v [<!ENTITY % p SYSTEM '" + secret + "'> %p;]><values xmlns='urn:probe'/>",
        "<!DOCTYPE v [<!ATTLIST v x CDATA 'd'>]><values xmlns='urn:probe'/>",
    };
    for (const std::string& text : texts) {
        Probe::Values values;
        EXPECT_EQ(readInto(values, text).code, error_document_type) << text.substr(0, 60);
        EXPECT_EQ(values, Probe::Values());
    }
    EXPECT_EQ(std::string(lmx60::debug_error.source_file), "");
}

TEST(Hostile, DepthIsBounded) {
    const auto nested = [](int depth) {
        std::string text = "<values xmlns='urn:probe'>\n";
        for (int i = 1; i < depth; ++i) {
            text += "<x>\n";
        }
        for (int i = 1; i < depth; ++i) {
            text += "</x>";
        }
        return text + "</values>";
    };
    Probe::Values values;
    EXPECT_EQ(readInto(values, nested(c_xml::max_depth)).code, 0);
    const Outcome deeper = readInto(values, nested(c_xml::max_depth + 1));
    EXPECT_EQ(deeper.code, error_too_deep) << deeper;
    EXPECT_EQ(deeper.line, c_xml::max_depth + 1);
    EXPECT_EQ(readInto(values, nested(100000)).code, error_too_deep);

    std::string trees;
    for (int i = 1; i < c_xml::max_depth; ++i) { // the leaf of the innermost is the deepest
        trees += std::string("<t:tree ") + (i == 1 ? "xmlns:t='urn:probe' " : "") + "t:id='1'><t:title/><t:leaf/><t:many/>";
    }
    for (int i = 1; i < c_xml::max_depth; ++i) {
        trees += "</t:tree>";
    }
    Probe::Tree tree;
    EXPECT_EQ(readInto(tree, trees).code, 0);
    EXPECT_EQ(Probe::Tree(tree), tree);
}

TEST(Hostile, LongNamesAndValuesCostNoMoreThanTheirLength) {
    const auto began = std::chrono::steady_clock::now();
    const std::string million(1000 * 1000, 'n');
    Probe::Values values;
    EXPECT_EQ(readInto(values, "<p:values xmlns:p='urn:probe' p:text='" + million + "' p:" + million + "='1' " + million + "='2'><" +
                                   million + "/></p:values>")
                  .code,
              0);
    EXPECT_EQ(values.GetText().size(), million.size());
    const Outcome wrong = readInto(values, "<p:values xmlns:p='urn:probe' p:long='" + million + "'/>");
    EXPECT_EQ(wrong.code, 35);
    EXPECT_LT(wrong.text.size(), 200u);
    EXPECT_EQ(readInto(values, "<" + million + "/>").code, error_wrong_root);
    EXPECT_EQ(readInto(values, "<" + million).code, error_not_well_formed);
    EXPECT_EQ(readInto(values, "<p:values xmlns:p='urn:probe' p:integer='" + std::string(1000 * 1000, '9') + "'/>").code, 0);
    const std::string many = "<p:values xmlns:p='urn:probe' p:text='" + std::string(10 * million.size(), ' ') + "\n' p:byte='x'/>";
    EXPECT_EQ(readInto(values, many).line, 2);
    EXPECT_LT(std::chrono::steady_clock::now() - began, std::chrono::seconds(20));
}

TEST(Hostile, AttributesAndNamespacesAreBounded) {
    const auto with = [](std::size_t count, const std::string& name, const std::string& value) {
        std::string text = "<values xmlns='urn:probe'><!-- \" --><?pi '?><![CDATA[ \"]]>\n<x";
        for (std::size_t i = 0; i < count; ++i) {
            text += " " + name + std::to_string(i) + "=" + value;
        }
        return text + "/></values>";
    };
    const auto code = [](const std::string& text) {
        Probe::Values values;
        return readInto(values, text).code;
    };
    EXPECT_EQ(code(with(c_xml::max_attributes, "a", "\"> = ''\"")), 0);
    EXPECT_EQ(code(with(c_xml::max_attributes + 1, "a", "\"> = ''\"")), error_too_large);
    EXPECT_EQ(code(with(c_xml::max_namespaces - 1, "xmlns:n", "'urn:x'")), 0);
    Probe::Values values;
    const Outcome more = readInto(values, with(c_xml::max_namespaces, "xmlns:n", "'urn:x'"));
    EXPECT_EQ(more.code, error_too_large) << more;
    EXPECT_EQ(more.line, 2);

    std::string wide("\xff\xfe", 2);
    for (const char c : with(c_xml::max_attributes + 1, "a", "\"> = ''\"")) {
        wide.append(1, c).append(1, '\0');
    }
    EXPECT_EQ(code(wide), error_too_large);
    EXPECT_EQ(code("<?xml version='1.0' encoding='UTF-7'?><values xmlns='urn:probe'/>"), error_not_well_formed);
}

TEST(Hostile, DifferentNamesAreBounded) {
    const auto read = [](std::size_t count, const std::string& before, const std::string& behind) {
        std::string text = "<values xmlns='urn:probe'>";
        for (std::size_t i = 0; i < count; ++i) {
            text += before + std::to_string(i) + behind;
        }
        Probe::Values values;
        return readInto(values, text + "</values>");
    };
    const std::pair<const char*, const char*> kinds[] = {{"<n", "/>"}, {"<?n", "?>"}, {"<a n", "=''/>"}, {"<a xmlns='n", "'/>"}};
    for (const auto& [before, behind] : kinds) {
        EXPECT_EQ(read(c_xml::max_names - 100, before, behind).code, 0) << before;
        EXPECT_EQ(read(c_xml::max_names, before, behind).code, error_too_large) << before;
        EXPECT_NE(read(300'000, before, behind).text.find("more than 10000 different names"), std::string::npos) << before;
    }
}

TEST(Hostile, SizeIsBounded) {
    const std::string start_tag = "<values xmlns='urn:probe'>";
    const std::string end_tag = "</values>";
    std::string text = start_tag + std::string(c_xml::max_document_size - start_tag.size() - end_tag.size(), ' ') + end_tag;
    ASSERT_EQ(text.size(), c_xml::max_document_size);
    Probe::Values values;
    EXPECT_EQ(readInto(values, text).code, 0);
    text += '\n';
    EXPECT_EQ(readInto(values, text).code, error_too_large);
    TempDir dir;
    s_debug_error debug;
    EXPECT_THROW(values.Unmarshal(dir.write("large.xml", text).c_str(), &debug), c_lmx_reader_exception);
    EXPECT_EQ(debug.error, error_too_large);
}

TEST(Hostile, ADocumentCutAnywhereIsOneCleanFault) {
    const std::string text = start + "<t:many/><t:config><t:word>w &amp; w</t:word></t:config><t:left t:n='&lt;'/></t:tree>";
    for (std::size_t length = 0; length < text.size(); ++length) {
        Probe::Tree tree;
        const Outcome outcome = readInto(tree, text.substr(0, length));
        EXPECT_TRUE(outcome.code == error_not_well_formed || outcome.code == error_bad_namespace) << length << ": " << outcome;
    }
}

} // namespace
