// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "Documents.h"
#include "HZEPJSONUtils.h"
#include "JSONListWriter.h"
#include "JSONObjectWriter.h"

#include <boost/property_tree/json_parser/error.hpp>
#include <gtest/gtest.h>

#include <chrono>
#include <sstream>
#include <string>
#include <type_traits>

using boost::property_tree::ptree;
using zep_platform::JSONListWriter;
using zep_platform::JSONObjectWriter;
using zep_platform::JSONSerializable;
using zep_platform::JSONWriter;

namespace {

std::string textOf(const JSONWriter& writer) {
    std::ostringstream stream;
    writer.write(stream);
    return stream.str();
}

struct Silent : JSONSerializable {
    void toJSON(JSONObjectWriter&) const override {}
};

struct Clock : JSONSerializable {
    void toJSON(JSONObjectWriter& writer) const override {
        writer.addKey("name", "clk");
        writer.addKey("default", true);
    }
};

template <class Writer, class Value>
concept TakesKey = requires(Writer writer, Value value) {
    writer.addKey("key", value);
};

// A number must not become a boolean unseen, nor a pointer to something that doesn't write itself.
static_assert(!TakesKey<JSONObjectWriter, int> && !TakesKey<JSONObjectWriter, void*> && !TakesKey<JSONObjectWriter, int*>);
static_assert(TakesKey<JSONObjectWriter, bool> && TakesKey<JSONObjectWriter, const char*> && TakesKey<JSONObjectWriter, Clock*>);
static_assert(std::is_nothrow_move_constructible_v<zep_platform::JSONNode>, "else growing lists would copy");

} // namespace

// Every scenario runs on a writer that is only written, and on one whose tree was asked for first.
class JSONWriterForms : public testing::TestWithParam<bool> {
protected:
    template <class Writer>
    Writer make() {
        Writer writer;
        if (GetParam())
            writer.getTree();
        return writer;
    }
};

INSTANTIATE_TEST_SUITE_P(CompactAndTree, JSONWriterForms, testing::Bool());

TEST_P(JSONWriterForms, EmptiesVanish) {
    auto writer = make<JSONObjectWriter>();
    writer.addKey("text", "");
    writer.addKey("text", std::string());
    writer.addKey("writer", JSONObjectWriter());
    writer.addKey("list", make<JSONListWriter>());
    writer.addKey("tree", ptree("a value alone"));
    writer.addKey("object", static_cast<const JSONSerializable*>(nullptr));
    const Silent silent;
    writer.addKey("silent", &silent);
    writer.writeObject(nullptr);
    EXPECT_TRUE(writer.empty());
    EXPECT_EQ(textOf(writer), "{\n}\n");

    auto list = make<JSONListWriter>();
    list.addItem("");
    list.addItem(JSONObjectWriter());
    list.addItem(&silent);
    EXPECT_TRUE(list.empty());
    list.addItem("a");
    list.addItem("");
    list.addItem(std::string("b"));
    writer.addKey("items", list);
    EXPECT_EQ(textOf(writer), "{\n    \"items\": [\n        \"a\",\n        \"b\"\n    ]\n}\n");
    EXPECT_FALSE(list.empty());
}

TEST_P(JSONWriterForms, ValuesReplaceInPlaceAndTreesAddASecondMember) {
    auto writer = make<JSONObjectWriter>();
    writer.addKey("first", "1");
    writer.addKey("flag", false);
    writer.addKey("last", "text");
    writer.addKey("first", "2");
    writer.addKey("flag", true);
    const Clock clock;
    writer.addKey("clock", &clock);
    JSONObjectWriter other;
    other.addKey("x", "y");
    writer.addKey("clock", other);
    writer.addKey("clock", other.getTree());
    EXPECT_EQ(textOf(writer), laidOut(R"({"first": "2", "flag": "true", "last": "text", "clock": {"name": "clk", "default": "true"},
        "clock": {"x": "y"}, "clock": {"x": "y"}})"));
    EXPECT_FALSE(other.empty()) << "a writer that is not moved in stays as it is";
}

TEST_P(JSONWriterForms, KeysArePaths) {
    auto writer = make<JSONObjectWriter>();
    writer.addKey("a.b", "1");
    writer.addKey("a.c.d", true);
    writer.addKey("a.b", "2");
    JSONListWriter list;
    list.addItem("x");
    writer.addKey("a.c.list", std::move(list));
    ptree expected;
    expected.put("a.b", "2");
    expected.put("a.c.d", "true");
    expected.put_child("a.c.list", ptree()).push_back({"", ptree("x")});
    EXPECT_EQ(writer.getTree(), expected);

    writer.addKey("a", "beside children");
    EXPECT_THROW(textOf(writer), boost::property_tree::json_parser::json_parser_error);
}

TEST_P(JSONWriterForms, AskedForTreeIsTheState) {
    auto writer = make<JSONObjectWriter>();
    writer.addKey("before", "1");
    ptree& tree = writer.getTree();
    writer.addKey("after", "2");
    JSONObjectWriter sub;
    sub.addKey("inner.value", "3");
    writer.addKey("sub", std::move(sub));
    EXPECT_EQ(tree.get<std::string>("after"), "2");
    EXPECT_EQ(tree.get<std::string>("sub.inner.value"), "3");
    tree.put("before", "changed");
    EXPECT_EQ(&std::as_const(writer).getTree(), &tree);
    EXPECT_EQ(&JSONWriter().getOtherTree(writer), &tree);

    const JSONObjectWriter copy = writer;
    tree.clear();
    EXPECT_TRUE(writer.empty());
    EXPECT_EQ(copy.getTree().get<std::string>("before"), "changed");
    EXPECT_EQ(copy.getTree().size(), 3u);

    JSONObjectWriter moved = std::move(writer);
    EXPECT_EQ(&moved.getTree(), &tree);
    EXPECT_TRUE(writer.empty()); // NOLINT(bugprone-use-after-move): a writer that was moved in can be used anew
}

TEST_P(JSONWriterForms, TreesAndWritersOfEitherFormGoInside) {
    auto outer = make<JSONListWriter>();
    for (bool asTree : {false, true}) {
        JSONObjectWriter item;
        item.addKey("k.l", asTree);
        if (asTree)
            item.getTree();
        outer.addItem(item);
        outer.addItem(std::move(item));
    }
    auto writer = make<JSONObjectWriter>();
    ptree tree;
    tree.put("m.n", "o");
    writer.addKey("tree", tree);
    writer.addKey("tree", std::move(tree));
    writer.addKey("list", std::move(outer));
    const ptree& result = writer.getTree();
    EXPECT_EQ(result.count("tree"), 2u);
    EXPECT_EQ(result.back().second.size(), 4u);
    EXPECT_EQ(result.back().second.front().second.get<std::string>("k.l"), "false");
    EXPECT_EQ(result.back().second.back().second.get<std::string>("k.l"), "true");
    for (const auto& [key, child] : result)
        EXPECT_TRUE(key != "tree" || child.get<std::string>("m.n") == "o");
}

TEST_P(JSONWriterForms, ManyKeysStayInOrderAndFast) {
    const int count = 50'000;
    const auto begin = std::chrono::steady_clock::now();
    auto writer = make<JSONObjectWriter>();
    for (int round = 0; round < 2; ++round)
        for (int i = 0; i < count; ++i)
            writer.addKey("group.key" + std::to_string(i), std::to_string(i + round));
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(10));
    const ptree& group = writer.getTree().front().second;
    ASSERT_EQ(group.size(), static_cast<std::size_t>(count));
    int i = 0;
    for (const auto& [key, child] : group) {
        ASSERT_EQ(key, "key" + std::to_string(i++));
        ASSERT_EQ(child.data(), std::to_string(i));
    }
}

TEST(JSONUtils, LooksUpValuesInAllTheirForms) {
    ptree tree;
    tree.put("a.b", "12abc");
    tree.put("letters", "abc");
    tree.put("empty", "");
    tree.put("minus", "-1");
    tree.put("hex", "0x20");
    tree.put("wide", "4294967297");
    tree.put("huge", "99999999999999999999");
    tree.put("yes", "TrUe");
    tree.put("blank", "true ");
    tree.put("one", "1");

    const boost::optional<ptree&> present(tree);
    const boost::optional<ptree&> none;
    for (const HZEPJSONTreeRef ref : {HZEPJSONTreeRef(tree), HZEPJSONTreeRef(present)}) {
        EXPECT_TRUE(HZEPJSONUtils::hasKey(ref, "a.b"));
        EXPECT_TRUE(HZEPJSONUtils::findKey(ref, "empty"));
        EXPECT_FALSE(HZEPJSONUtils::findKey(ref, "a.c"));
        EXPECT_FALSE(HZEPJSONUtils::hasKey(ref, "a.b.c"));
        EXPECT_EQ(HZEPJSONUtils::getStringValue(ref, "a.b"), "12abc");
        EXPECT_EQ(HZEPJSONUtils::getValue(ref, "missing"), "");
        EXPECT_EQ(HZEPJSONUtils::getIntValue(ref, "a.b", 7), 12);
        EXPECT_EQ(HZEPJSONUtils::getIntValue(ref, "letters", 7), 0);
        EXPECT_EQ(HZEPJSONUtils::getIntValue(ref, "hex", 7), 0);
        EXPECT_EQ(HZEPJSONUtils::getIntValue(ref, "empty", 7), 7);
        EXPECT_EQ(HZEPJSONUtils::getIntValue(ref, "missing", 7), 7);
        EXPECT_EQ(HZEPJSONUtils::getIntValue(ref, "wide", 7), 1);
        EXPECT_EQ(HZEPJSONUtils::getUnsignedIntValue(ref, "minus", 7), 0xFFFFFFFFu);
        EXPECT_EQ(HZEPJSONUtils::getUnsignedLongValue(ref, "minus", 7), ~0UL);
        EXPECT_EQ(HZEPJSONUtils::getLongValue(ref, "wide", 7), 4294967297L);
        EXPECT_EQ(HZEPJSONUtils::getLongValue(ref, "huge", 7), 0x7FFFFFFFFFFFFFFFL);
        EXPECT_TRUE(HZEPJSONUtils::getBoolValue(ref, "yes"));
        EXPECT_FALSE(HZEPJSONUtils::getBoolValue(ref, "blank"));
        EXPECT_FALSE(HZEPJSONUtils::getBoolValue(ref, "one"));
    }
    EXPECT_FALSE(HZEPJSONUtils::findKey(none, "a"));
    EXPECT_EQ(HZEPJSONUtils::getValue(none, "a"), "");
    EXPECT_EQ(HZEPJSONUtils::getUnsignedLongValue(none, "a", 9), 9u);
    EXPECT_FALSE(HZEPJSONUtils::getBoolValue(none, "a"));
    EXPECT_EQ(HZEPJSONUtils::getIntValue(tree.get_child_optional("nothing"), "a", 3), 3);
    EXPECT_EQ(HZEPJSONUtils::getValue(std::as_const(tree).get_child_optional("a"), "b"), "12abc");

    // The corners of a path are the tree's own.
    tree.put_child("odd", ptree()).push_back({"", ptree("unnamed")});
    for (const std::string key : {"", "a", "a.", "a.b.", ".", "..", "odd..", "odd.", ".a", "a..b"})
        EXPECT_EQ(HZEPJSONUtils::findKey(tree, key), tree.get_child_optional(key).has_value()) << key;
}
