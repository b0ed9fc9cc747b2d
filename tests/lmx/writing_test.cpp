// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include <gtest/gtest.h>

#include "Outcome.h"
#include "PlainLMX.h"
#include "ProbeLMX.h"
#include "TempDir.h"

#include <filesystem>
#include <sstream>

namespace {

using namespace lmx60;

/// Every kind of member, as the writer lays it out.
const char* const fullTree = R"(<?xml version="1.0" encoding="UTF-8"?>
<pr:tree xmlns:pr="urn:probe" pr:id="3">
  <pr:title>T &lt;1&gt;</pr:title>
  <pr:leaf pr:n="a &quot;b&quot;"/>
  <pr:spare/>
  <pr:id/>
  <pr:id pr:n=""/>
  <pr:many pr:n="m"/>
  <pr:config>
    <pr:off/>
    <pr:off pr:n="2"/>
  </pr:config>
  <pr:port/>
  <pr:right pr:n="r"/>
  <pr:key pr:n="1"/>
  <pr:val/>
  <pr:key pr:n="2"/>
  <pr:key pr:n="3"/>
  <pr:val/>
  <pr:tree pr:id="4">
    <pr:title/>
    <pr:leaf/>
    <pr:many/>
    <pr:config>
      <pr:word>w</pr:word>
    </pr:config>
  </pr:tree>
</pr:tree>
)";

TEST(Writing, EveryKindOfMemberRoundTripsToTheByte) {
    Probe::Tree tree;
    ASSERT_EQ(readInto(tree, fullTree).code, 0);
    EXPECT_EQ(tree.SizeId(), 2u);
    EXPECT_EQ(tree.GetInner().GetConfig().GetChoice(), Probe::InnerConfig::Choice_Off);
    EXPECT_EQ(tree.GetPick().GetChoice(), Probe::Pick::Choice_Right);
    EXPECT_EQ(tree.SizePair(), 3u);
    EXPECT_FALSE(tree.GetPair(1).IssetVal());
    EXPECT_EQ(tree.GetBelow().GetInner().GetConfig().GetWord(), L"w");
    EXPECT_EQ(written(tree), fullTree);

    Probe::Any any;
    ASSERT_EQ(readInto(any, fullTree).code, 0);
    EXPECT_EQ(any.GetChoice(), Probe::Any::Choice_Tree);
    EXPECT_EQ(any.GetTree(), tree);
    EXPECT_EQ(written(any), fullTree);
}

TEST(Writing, GroupsThatMayBeEmptyStayUnset) {
    const char* const text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Root VersionMajor=\"2\">\n  <Core Name=\"c\"/>\n</Root>\n";
    Plain::Root root;
    EXPECT_EQ(root.GetVersionMajor(), 1u);
    ASSERT_EQ(readInto(root, text).code, 0);
    EXPECT_FALSE(root.GetCore().IssetInside());
    EXPECT_EQ(written(root), text);
    ASSERT_EQ(readInto(root, "<Root VersionMajor='2'><Core Name='c'><Last Value='l'/></Core></Root>").code, 0);
    EXPECT_TRUE(root.GetCore().GetInside().IssetLast());
}

TEST(Writing, EveryCharacterSurvives) {
    std::wstring all = L" \t\n\r\"'&<>]]> \x7f\x85\xa0\x2028\ud7ff\ue000\ufffd";
    all += static_cast<wchar_t>(0x10000);
    all += static_cast<wchar_t>(0x10ffff);
    all += L" ";
    Probe::Values values;
    values.SetText(all);
    values.SetNote(all);
    values.SetDecimal(c_decimal("1.500"));
    values.SetAuto(false);
    Probe::Values again;
    const std::string text = written(values);
    ASSERT_EQ(readInto(again, text).code, 0);
    EXPECT_EQ(again, values);
    EXPECT_EQ(written(again), text);
    EXPECT_EQ(again.GetDecimal().get_as_string(), "1.500");

    for (const wchar_t wrong :
         {L'\0', L'\x1', L'\x1f', static_cast<wchar_t>(0xd800), static_cast<wchar_t>(0xfffe), static_cast<wchar_t>(0x110000)}) {
        std::string out = "before";
        values.SetNote(std::wstring(1, wrong));
        s_debug_error debug;
        EXPECT_EQ(values.Marshal(&out, &debug), error_bad_character);
        EXPECT_EQ(debug.item, "pr:note");
        EXPECT_EQ(out, "before");
    }
}

TEST(Writing, TheLayoutCanBeChosen) {
    Probe::Tree tree;
    tree.SetId(1);
    tree.SetTitle(L"t");
    tree.GetLeaf().SetN(L"n");
    tree.AppendMany();
    std::ostringstream out;
    c_xml_writer writer(out, 0, "\t", "\r\n", "..", "\n");
    EXPECT_EQ(tree.marshal(writer, "pr:tree"), error_none);
    EXPECT_EQ(out.str(),
              "<pr:tree\n..xmlns:pr=\"urn:probe\"\n..pr:id=\"1\">\r\n\t<pr:title>t</pr:title>\r\n\t<pr:leaf\n....pr:n=\"n\"/>\r\n"
              "\t<pr:many/>\r\n</pr:tree>\r\n");
    c_xml_writer::set_default_tab("");
    c_xml_writer::set_default_nl("");
    std::string text = written(tree);
    c_xml_writer::set_default_tab("  ");
    c_xml_writer::set_default_nl("\n");
    c_xml_writer::set_default_attribute_nl(" ");
    c_xml_writer::set_default_attribute_tab("");
    EXPECT_EQ(text, "<?xml version=\"1.0\" encoding=\"UTF-8\"?><pr:tree xmlns:pr=\"urn:probe\" pr:id=\"1\"><pr:title>t</pr:title><pr:leaf "
                    "pr:n=\"n\"/><pr:many/></pr:tree>");
}

TEST(Writing, WhatIsIncompleteIsNotWritten) {
    TempDir dir;
    const std::string file = dir.write("kept.xml", "old");
    Probe::Tree tree;
    EXPECT_THROW(tree.Marshal(file.c_str()), lmx_exception);
    tree.SetId(1);
    tree.SetTitle(L"t");
    tree.GetLeaf();
    tree.AppendMany();
    tree.GetBelow(); // complete itself, but not below
    EXPECT_THROW(tree.Marshal(file.c_str()), lmx_exception);
    EXPECT_EQ(dir.read("kept.xml"), "old");

    s_debug_error debug;
    EXPECT_EQ(Probe::Any().Marshal(dir.path("none.xml").c_str(), &debug), error_nothing_selected);
    EXPECT_EQ(debug.error, error_nothing_selected);
    EXPECT_EQ(debug.item, "{anonymous compositor}");
    EXPECT_FALSE(std::filesystem::exists(dir.path("none.xml")));

    tree.UnsetBelow();
    EXPECT_EQ(tree.Marshal(dir.path("no/such/dir.xml").c_str(), &debug), error_no_file);
    EXPECT_EQ(tree.Marshal(file.c_str(), &debug), error_none);
    EXPECT_EQ(Probe::Tree(file.c_str()), tree);
    std::ostringstream broken;
    broken.setstate(std::ios::badbit);
    EXPECT_EQ(tree.Marshal(broken, &debug), error_write_failed);
}

} // namespace
