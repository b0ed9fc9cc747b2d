// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

// Both directions are held against Boost's own functions: the same tree or the same exception, the same bytes.

#include "HZEPJSONText.h"
#include "JSONListWriter.h"
#include "JSONObjectWriter.h"
#include "TempDir.h"

#define BOOST_BIND_GLOBAL_PLACEHOLDERS
#include <boost/property_tree/json_parser.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <random>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

using boost::property_tree::json_parser_error;
using boost::property_tree::ptree;
using testing::HasSubstr;
using namespace std::string_literals;

namespace {

struct Outcome {
    ptree tree;
    std::string error;
};

Outcome readByBoost(const std::string& text) {
    Outcome outcome;
    std::istringstream stream(text);
    try {
        boost::property_tree::read_json(stream, outcome.tree);
    } catch (const json_parser_error& error) {
        outcome.error = error.what();
    }
    return outcome;
}

Outcome readByUs(const std::string& text) {
    Outcome outcome;
    outcome.tree.put("before", "stays after a failure");
    const ptree before = outcome.tree;
    try {
        HZEPJSONText::read(text, outcome.tree);
    } catch (const json_parser_error& error) {
        outcome.error = error.what();
        EXPECT_EQ(outcome.tree, before) << text;
        outcome.tree.clear();
    }
    return outcome;
}

std::string errorOf(const std::string& text) {
    return readByUs(text).error;
}

void expectAsBoost(const std::string& text) {
    const Outcome expected = readByBoost(text);
    const Outcome actual = readByUs(text);
    EXPECT_EQ(actual.error, expected.error) << text;
    EXPECT_TRUE(actual.tree == expected.tree) << text;
}

// The model's form of a tree, made through the writers: names that are paths and empty parts can't be made that way.
void addAll(const ptree& tree, zep_platform::JSONObjectWriter& writer);

zep_platform::JSONListWriter listOf(const ptree& tree) {
    zep_platform::JSONListWriter list;
    for (const auto& [key, child] : tree) {
        if (child.empty())
            list.addItem(child.data());
        else if (child.count("") == child.size())
            list.addItem(listOf(child));
        else {
            zep_platform::JSONObjectWriter item;
            addAll(child, item);
            list.addItem(std::move(item));
        }
    }
    return list;
}

void addAll(const ptree& tree, zep_platform::JSONObjectWriter& writer) {
    for (const auto& [key, child] : tree) {
        if (child.empty())
            writer.addKey(key, child.data());
        else if (child.count("") == child.size())
            writer.addKey(key, listOf(child));
        else {
            zep_platform::JSONObjectWriter member;
            addAll(child, member);
            writer.addKey(key, std::move(member));
        }
    }
}

std::string writtenByBoost(const ptree& tree) {
    std::ostringstream stream;
    boost::property_tree::write_json(stream, tree);
    return stream.str();
}

std::string writtenByUs(const ptree& tree) {
    std::ostringstream stream;
    HZEPJSONText::write(stream, tree);
    return stream.str();
}

std::string writtenBy(const zep_platform::JSONWriter& writer) {
    std::ostringstream stream;
    writer.write(stream);
    return stream.str();
}

// Random documents of every shape that JSON has, with odd spaces, escapes, numbers and bytes beyond ASCII.
class Documents {
public:
    explicit Documents(unsigned seed) : random_(seed) {}

    std::string next() {
        std::string text = space() + value(5) + space();
        return text;
    }

    std::string mutated() {
        static constexpr std::string_view kBytes = "{}[]\",:\\/ut0d8-.eE1 \n\t\x01\x7F\xC3\xA9\xED\xA0\x80\xEF\xBB\xBF\xF0\xFF";
        std::string text = next();
        for (unsigned edits = 1 + pick(3); edits > 0 && !text.empty(); --edits) {
            const std::size_t at = pick(static_cast<unsigned>(text.size()));
            switch (pick(4)) {
            case 0:
                text.erase(at, 1 + pick(3));
                break;
            case 1:
                text.insert(at, 1, kBytes[pick(kBytes.size())]);
                break;
            case 2:
                text[at] = kBytes[pick(kBytes.size())];
                break;
            default:
                text.resize(at);
            }
        }
        return text;
    }

private:
    unsigned pick(std::size_t count) { return static_cast<unsigned>(random_() % count); }

    std::string one(const std::vector<std::string>& choices) { return choices[pick(choices.size())]; }

    std::string space() { return one({"", "", "", " ", "\n", "\r\n\t", "  \n "}); }

    std::string text() {
        std::string text = "\"";
        for (unsigned parts = pick(5); parts > 0; --parts)
            text += one({"name", "a b", "interface_of_more_than_sixteen_bytes", "/", "\\/", "\\\"", "\\\\", "\\b\\f\\n\\r\\t", "\\u0041",
                         "\\u00e9", "\\u0000", "\\uD83D\\uDE00", "\\uFFFF", "\xC3\xA9", "\xED\x9F\xBF", "\xF0\x9F\x98\x80", "\x7F", ".",
                         "0x1000"});
        return text + "\"";
    }

    std::string number() {
        return one({"0", "-0", "1", "-17", "4294967296", "18446744073709551616", "123456789012345678901234567890", "0.5", "-1.25e-3",
                    "1E+5", "1e5", "0.1000000000000000000000001", "1e-999", "2.50"});
    }

    std::string value(unsigned depth) {
        const unsigned kind = pick(depth > 0 ? 9 : 5);
        if (kind >= 5) {
            const bool object = kind >= 7;
            std::string text(1, object ? '{' : '[');
            for (unsigned left = pick(6); left > 0; --left) {
                text += space();
                if (object)
                    text += this->text() + space() + ":" + space();
                text += value(depth - 1) + space() + (left > 1 ? "," : "");
            }
            return text + (object ? '}' : ']');
        }
        return kind == 0 ? number() : kind == 1 ? one({"true", "false", "null"}) : text();
    }

    std::mt19937 random_;
};

std::string nested(std::size_t depth, const std::string& core = "1") {
    std::string text;
    for (std::size_t i = 0; i < depth; ++i)
        text += i % 2 ? "[" : "{\"a\":";
    text += core;
    for (std::size_t i = depth; i-- > 0;)
        text += i % 2 ? "]" : "}";
    return text;
}

} // namespace

TEST(JSONText, ReadsRandomDocumentsAsBoostDoes) {
    Documents documents(1);
    for (int i = 0; i < 3000; ++i)
        expectAsBoost(documents.next());
}

TEST(JSONText, JudgesDamagedDocumentsAsBoostDoes) {
    Documents documents(2);
    int refused = 0;
    for (int i = 0; i < 6000; ++i) {
        const std::string text = documents.mutated();
        const std::string ours = errorOf(text);
        refused += !ours.empty();
        if (ours.find("no UTF-8") == ours.npos)
            expectAsBoost(text);
        else
            EXPECT_EQ(readByBoost(text).error, "") << text;
    }
    EXPECT_GT(refused, 2000);
}

TEST(JSONText, ReadsCornersAsBoostDoes) {
    for (const std::string& text : {
             // accepted
             "7"s,
             "\"text\""s,
             "null"s,
             "[]"s,
             "{}"s,
             "[[],{},\"\"]"s,
             "{\"a\":1,\"a\":2,\"\":3}"s,
             "{\"a.b\":{\"c\":[1,[2,[3]]]}}"s,
             "\xEF\xBB\xBF{\"a\":1}"s,
             "\xEF\xBB\xBF"s,
             "\xEF\xBB"s,
             "\xEF\xBB\xBF\xEF\xBB\xBF{}"s,
             "[1e999]"s,
             "[-1e999,1E400,0.0e-400]"s,
             "[1"s + std::string(400, '0') + "]",
             "[0." + std::string(400, '3') + "]",
             "\"\\u0000a\\u0000\""s,
             "\"\\uD83D\\uDE00\""s,
             "\"\xED\x9F\xBF\\u0041\""s,
             "\"\xEE\x80\x80\""s,
             // refused
             ""s,
             " \n "s,
             "nul"s,
             "nullx"s,
             "truE"s,
             "01"s,
             "-"s,
             "-a"s,
             "1."s,
             ".5"s,
             "1e"s,
             "1e+"s,
             "+1"s,
             "0x10"s,
             "NaN"s,
             "[1,]"s,
             "[,1]"s,
             "{\"a\":1,}"s,
             "{\"a\"}"s,
             "{\"a\" 1}"s,
             "{a:1}"s,
             "{'a':1}"s,
             "{\"a\":}"s,
             "[1 2]"s,
             "[1}"s,
             "{\"a\":1]"s,
             "[1"s,
             "{\"a\":1"s,
             "{} {}"s,
             "1 2"s,
             "[]\n\n]"s,
             "// no\n[]"s,
             "\"open"s,
             "\"\\"s,
             "\"\\x\""s,
             "\"\\u12\""s,
             "\"\\u12G4\""s,
             "\"\\uDC00\""s,
             "{\"\\uDC00\":1}"s,
             "\"\\uD800\""s,
             "\"\\uD800x\""s,
             "\"\\uD800\\n\""s,
             "\"\\uD800\\u0041\""s,
             "\"\\uD800\\uD800\""s,
             "\"a\tb\""s,
             "\"a\nb\""s,
             "\"\xFF\""s,
             "\"\x80\""s,
             "\"\xC3\""s,
             "\"\xE2\x82\""s,
             "\xFF"s,
             "[\"\xF8\x88\x80\x80\x80\"]"s,
             "{}\0"s,
             "\0{}"s,
             "[\0]"s,
             "\"a\0b\""s,
             "[1,\0 2]"s,
             "{}\0{}"s,
         })
        expectAsBoost(text);
}

TEST(JSONText, RefusesWhatIsNoUtf8WithItsLine) {
    for (const std::string bytes : {"\xC0\x80", "\xE0\x80\x80", "\xED\xA0\x80", "\xED\xBF\xBF", "\xF0\x80\x80\x80", "\xF4\x90\x80\x80"}) {
        const std::string text = "{\n\"a\": 1,\n\"b\": \"" + bytes + "\"}\n";
        EXPECT_EQ(readByBoost(text).error, "") << "not one of those that need a check of our own";
        EXPECT_EQ(errorOf(text), "<unspecified file>(3): bytes that are no UTF-8");
    }
}

TEST(JSONText, ReadsToTheDepthLimitAndNotOneDeeper) {
    expectAsBoost(nested(HZEPJSONText::kMaxDepth));
    EXPECT_EQ(errorOf(nested(HZEPJSONText::kMaxDepth + 1)), "<unspecified file>(1): nested deeper than 1000 levels");
    EXPECT_EQ(errorOf("\xEF\xBB\xBF\n\n" + nested(HZEPJSONText::kMaxDepth + 1)), "<unspecified file>(3): nested deeper than 1000 levels");

    // Brackets in texts and brackets that are closed again don't count.
    expectAsBoost("[\"" + std::string(5000, '[') + "\\\"" + std::string(5000, '{') + "\"]");
    expectAsBoost("[" + [] {
        std::string text;
        for (int i = 0; i < 3000; ++i)
            text += "[],";
        return text;
    }() + "1]");
}

TEST(JSONText, RefusesHostileDepthAtOnceWhateverComesFirst) {
    const std::string deep(100'000, '[');
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_THAT(errorOf(deep), HasSubstr("(1): nested deeper"));
    // A number that only Boost's parser reads must not lead it down there.
    EXPECT_THAT(errorOf("[1e999,\n" + deep), HasSubstr("(2): nested deeper"));
    // A fault before the depth is the fault that is told.
    EXPECT_EQ(errorOf("[1 2,\n" + deep), readByBoost("[1 2").error);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(1));
}

TEST(JSONText, NamesTheFile) {
    const TempDir dir;
    ptree tree;
    HZEPJSONText::readFile(dir.write("good.json", "{\"a\": {\"b\": 1}}"), tree);
    EXPECT_EQ(tree.get<std::string>("a.b"), "1");

    const std::string bad = dir.write("bad.json", "{\n\"a\": }");
    for (const auto& [path, line] : {std::pair(bad, 2UL), std::pair(dir.path("missing.json"), 0UL), std::pair(dir.path(), 0UL)}) {
        try {
            HZEPJSONText::readFile(path, tree);
            ADD_FAILURE() << path;
        } catch (const json_parser_error& error) {
            EXPECT_EQ(error.filename(), path);
            EXPECT_EQ(error.line(), line) << error.what();
        }
    }
    EXPECT_EQ(tree.get<std::string>("a.b"), "1");
}

TEST(JSONText, WritesWhatBoostWritesInEveryForm) {
    Documents documents(3);
    int compared = 0;
    for (int i = 0; i < 2000; ++i) {
        const Outcome outcome = readByBoost(documents.next());
        if (!outcome.tree.data().empty())
            continue;
        const std::string expected = writtenByBoost(outcome.tree);
        ASSERT_EQ(writtenByUs(outcome.tree), expected);

        zep_platform::JSONObjectWriter writer;
        writer.addKey("document", outcome.tree);
        const ptree& tree = outcome.tree;
        ptree wrapped;
        if (!tree.empty())
            wrapped.add_child("document", tree);
        ASSERT_EQ(writtenBy(writer), writtenByBoost(wrapped));
        ASSERT_EQ(writer.getTree(), wrapped);
        ASSERT_EQ(writtenBy(writer), writtenByBoost(wrapped));
        ++compared;
    }
    EXPECT_GT(compared, 500);
}

TEST(JSONText, WritesAllBytesAndLongTextsAsBoostDoes) {
    ptree tree;
    std::string bytes;
    for (int c = 0; c < 256; ++c)
        bytes += static_cast<char>(c);
    tree.put(bytes.substr(0, '.'), bytes);
    // Texts that end before, on and after the end of the buffer.
    for (std::size_t size : {65'000UL, 65'535UL, 65'536UL, 65'537UL, 200'000UL})
        tree.put("size" + std::to_string(size), std::string(size, 'x') + "/" + std::string(size, '"'));
    ptree* deep = &tree.put_child("deep", ptree());
    for (int i = 0; i < 900; ++i)
        deep = &deep->push_back({i % 3 ? "" : "level", ptree()})->second;
    EXPECT_EQ(writtenByUs(tree), writtenByBoost(tree));
    EXPECT_EQ(writtenByUs(ptree()), writtenByBoost(ptree()));

    ptree items;
    items.push_back({"", ptree("1")});
    items.push_back({"", ptree("2")});
    EXPECT_EQ(writtenByUs(items), writtenByBoost(items)) << "the root is never an array";
}

TEST(JSONText, RefusesToWriteWhatBoostRefuses) {
    ptree beside;
    beside.put("a", "value");
    beside.put("a.b", "child");
    for (const ptree& tree : {beside, ptree("value at the root")}) {
        std::string expected;
        try {
            writtenByBoost(tree);
        } catch (const json_parser_error& error) {
            expected = error.what();
        }
        std::ostringstream stream;
        try {
            HZEPJSONText::write(stream, tree);
            ADD_FAILURE();
        } catch (const json_parser_error& error) {
            EXPECT_EQ(error.what(), expected);
        }
        EXPECT_EQ(stream.str(), "");
    }
    std::ostringstream broken;
    broken.setstate(std::ios::badbit);
    EXPECT_THROW(HZEPJSONText::write(broken, ptree()), json_parser_error);
}

TEST(JSONText, WritersRebuildADocumentFromItsParts) {
    ptree tree;
    HZEPJSONText::read(
        R"({"name": "card", "clocks": ["a", "b"], "banks": [{"tag": "HBM", "range": {"from": "0", "to": "9"}}, {"tag": "DDR"}],
                           "grid": [["1"], ["2", "3"]], "twice": {"x": "1"}, "twice": {"y": "/"}})",
        tree);
    zep_platform::JSONObjectWriter writer;
    addAll(tree, writer);
    EXPECT_EQ(writtenBy(writer), writtenByBoost(tree));
    EXPECT_EQ(writer.getTree(), tree);
}

namespace {

// A tree put together again out of what was read beside it.
ptree withLists(ptree tree, const HZEPJSONText::Lists& lists) {
    for (const auto& [name, text] : lists) {
        ptree list;
        HZEPJSONText::readItems(text, [&list](ptree& item) { list.push_back({"", ptree()})->second.swap(item); });
        tree.push_back({name, list});
    }
    return tree;
}

} // namespace

TEST(JSONText, LeavesListsAsText) {
    const std::string text =
        R"({"a": "1", "list": [{"b": [1, {"list": []}]}, "]\"", [[]], -2.5e1, null, {}], "after": {"list": [1]}, "other": []})";
    ptree tree;
    HZEPJSONText::Lists lists{{"stale", ""}};
    HZEPJSONText::read(text, tree, {"list", "other", "a", "missing"}, lists);
    ptree expected = readByBoost(R"({"a": "1", "after": {"list": [1]}})").tree;
    EXPECT_EQ(tree, expected);
    ASSERT_EQ(lists.size(), 2u);
    EXPECT_EQ(lists.at("list"), R"([{"b": [1, {"list": []}]}, "]\"", [[]], -2.5e1, null, {}])");
    EXPECT_EQ(lists.at("other"), "[]");
    for (const char* name : {"list", "other"})
        expected.push_back({name, readByBoost(text).tree.get_child(name)});
    EXPECT_EQ(withLists(tree, lists), expected);
}

TEST(JSONText, LeavesOnlyTheFirstMemberOfAName) {
    ptree tree;
    HZEPJSONText::Lists lists;
    const std::string object = R"({"x": [1], "x": [2], "y": {"z": "0"}, "y": [3]})";
    HZEPJSONText::read(object, tree, {"x", "y"}, lists);
    ASSERT_EQ(lists.size(), 1u);
    EXPECT_EQ(lists.at("x"), "[1]");
    EXPECT_EQ(tree.get<std::string>("y.z"), "0");

    const std::string array = R"([{"x": [1]}, [2]])";
    HZEPJSONText::read(array, tree, {"x", ""}, lists);
    EXPECT_TRUE(lists.empty());
    EXPECT_EQ(tree.size(), 2u);
}

TEST(JSONText, JudgesTextsOfListsLikeTheRest) {
    const std::set<std::string, std::less<>> names{"list"};
    for (const std::string& text :
         {"{\"list\": [1,]}"s, "{\"list\": [\n\"\\uDC00\"]}"s, "{\"list\": [{\"\\uDC00\": 1}]}"s, "{\"list\": [\"\xED\xA0\x80\"]}"s,
          "{\"list\": [1], \"a\"}"s, "{\"list\": " + std::string(HZEPJSONText::kMaxDepth, '[') + "}"s}) {
        ptree tree("before");
        HZEPJSONText::Lists lists{{"before", ""}};
        try {
            HZEPJSONText::read(text, tree, names, lists);
            ADD_FAILURE() << text;
        } catch (const json_parser_error& error) {
            EXPECT_EQ(error.what(), errorOf(text));
        }
        EXPECT_EQ(tree, ptree("before"));
        EXPECT_EQ(lists.count("before"), 1u);
    }
    // Deep, but not too deep; and a number that only Boost's parser reads, which gives the whole tree.
    const std::string deep =
        "{\"list\": " + std::string(HZEPJSONText::kMaxDepth - 1, '[') + std::string(HZEPJSONText::kMaxDepth - 1, ']') + "}";
    for (const std::string& text : {deep, "{\"list\": [1e999]}"s}) {
        ptree tree;
        HZEPJSONText::Lists lists;
        HZEPJSONText::read(text, tree, names, lists);
        EXPECT_EQ(withLists(tree, lists), readByBoost(text).tree);
    }
}
