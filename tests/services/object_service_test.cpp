// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HZEPJSONText.h"
#include "HZEPPlatform.h"
#include "HostErrors.h"
#include "NativeKeyService.h"
#include "NativeObjectService.h"
#include "PlatformParseException.h"

#include "../loading/LoadingFixture.h"

#include <boost/property_tree/json_parser/error.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <tuple>

using boost::property_tree::ptree;
using testing::ElementsAre;
using zep::platform::NativeKeyService;
using zep::platform::NativeObjectService;
using zep::platform::PlatformLoader;

namespace {

const NativeObjectService service;

ptree parse(const std::string& text) {
    ptree tree;
    HZEPJSONText::read(text, tree);
    return tree;
}

/// What each of the three ways to ask finds: a value, "-" for nothing, "{}" for a node with children.
std::string show(bool ok, const ptree& node) {
    return !ok ? "-" : node.empty() ? node.data() : "{}";
}

struct Answers {
    std::string byText;
    std::string byTree;
    bool isInText;
    bool isInTree;

    friend void PrintTo(const Answers& a, std::ostream* out) {
        *out << a.byText << " " << a.byTree << " " << a.isInText << " " << a.isInTree;
    }
    bool operator==(const Answers&) const = default;
};

Answers ask(const std::string& document, const std::string& path) {
    const ptree tree = parse(document);
    bool ok = false;
    const ptree node = service.getNodeByPath_(document, path, ok);
    const auto child = service.getChildOptional(tree, path);
    EXPECT_EQ(service.getChild(tree, path), child ? *child : ptree());
    return {show(ok, node), show(child.has_value(), child ? *child : ptree()), service.hasNodeAtPath(document, path),
            service.hasNodeAtPath(tree, path)};
}

TEST(ObjectService, FollowsPaths) {
    const std::string document =
        R"({"a": [{"b": "b0", "c": ["x", "y"]}, {"b": "b1"}, {"b": "b2"}], "o": {"p": "1", "q": "2"}, "a[0": "open", "a]": "close", "v": "text"})";
    const std::tuple<const char*, Answers> cases[] = {
        {"a[0].b", {"b0", "b0", true, true}},
        {"a[2].b", {"b2", "b2", true, true}},
        {"a[0].c[1]", {"y", "y", true, true}},
        {"o[1]", {"2", "2", true, true}}, // an object has positions too
        {"a[].b", {"-", "-", false, false}},
        {"a[*].b", {"-", "-", false, false}},
        {"o[].p", {"1", "1", true, true}},
        {"a[1234567]", {"{}", "{}", true, true}},
        {"a[123456]", {"-", "-", false, false}},
        {"a[3]", {"-", "-", false, false}},
        {"a[x].b", {"b0", "b0", true, true}},
        {"a[1]].b", {"b1", "b1", true, true}},
        {"a[ +2].b", {"b2", "b2", true, true}},
        {"a[-1]", {"-", "-", false, false}},
        {"v[0]", {"-", "-", false, false}},
        {"o.[0]", {"1", "1", true, true}}, // an index alone is the node's own
        {"a[0", {"open", "open", true, true}},
        {"a]", {"close", "close", true, true}},
        {"o.p.", {"1", "1", true, true}},
        {"none", {"-", "-", false, false}},
        {"[[]]", {"{}", "{}", true, true}}, // cleaned once only, which leaves an index
        {"[*]", {"{}", "-", false, false}},
        // The text form takes ".." for one node, the tree form for the first element of an array.
        {"o..p", {"1", "-", true, false}},
        {"a..b", {"-", "b0", false, true}},
        {"a..c..", {"-", "x", false, true}},
    };
    for (const auto& [path, expected] : cases)
        EXPECT_EQ(ask(document, path), expected) << path;
}

TEST(ObjectService, FindsTheHardwarePlatformWhereverItStands) {
    const std::string board = R"({"board": {"name": "N"}})";
    const std::string legacy =
        R"({"hardwarePlatform": {"board": {"name": "old"}}, "hardwarePlatforms": {"hardwarePlatform": )" + board + "}}";
    const std::string plain = R"({"hardwarePlatforms": {"hardwarePlatform": )" + board + R"(}, "hardwarePlatformX": {"y": "z"}})";
    const std::string partitions =
        R"({"hardwarePlatforms": {"reconfigurablePartitions": [{"id": "0", "hardwarePlatform": {"board": {"name": "P"}, "d": ["1st"]}}, {}]}})";
    const std::string none = R"({"softwarePlatform": {}})";

    for (const auto& [document, root] :
         {std::pair(legacy, "hardwarePlatform"), std::pair(plain, "hardwarePlatforms.hardwarePlatform"),
          std::pair(partitions, "hardwarePlatforms.reconfigurablePartitions[0].hardwarePlatform"), std::pair(none, "")}) {
        EXPECT_EQ(service.getHwPlatformRootPath(document), root);
        EXPECT_EQ(service.getHwPlatformRootPath(parse(document)), root);
        const std::string asked = "hardwarePlatform.board.name";
        const std::string expected = *root ? root + std::string(".board.name") : asked;
        EXPECT_EQ(service.getPathWithActualHwPlatformRoot(document, asked), expected);
        EXPECT_EQ(service.getPathWithActualHwPlatformRoot(parse(document), asked), expected);
    }
    const Answers nothing{"-", "-", false, false};
    EXPECT_EQ(ask(legacy, "hardwarePlatform.board.name"), (Answers{"old", "old", true, true}));
    EXPECT_EQ(ask(plain, "hardwarePlatform.board.name"), (Answers{"N", "N", false, false}));
    EXPECT_EQ(ask(plain, "hardwarePlatform[].board.name"), (Answers{"N", "N", false, false}));
    EXPECT_EQ(ask(plain, "hardwarePlatformX.y"), (Answers{"z", "z", true, true}));
    EXPECT_EQ(ask(plain, "hardwarePlatform[0].name"), nothing);
    EXPECT_EQ(ask(none, "hardwarePlatform"), nothing);
    EXPECT_EQ(ask(partitions, "hardwarePlatform.board.name"), (Answers{"P", "P", false, false}));
    EXPECT_EQ(ask(partitions, "hardwarePlatform.d."), (Answers{"{}", "{}", false, false}));
    EXPECT_EQ(ask(partitions, "hardwarePlatform.d.."), (Answers{"{}", "1st", false, false}));
}

TEST(ObjectService, PrintsWhatItFinds) {
    const std::string document =
        R"({"hardwarePlatforms": {"hardwarePlatform": {"v": "", "o": {"k": "1"}, "l": ["1", "2"]}}, "top": [["x"]]})";
    const auto print = [&](const std::string& path) {
        bool ok = false;
        const std::string text = service.getObjectsByPath_(document, path, ok);
        return ok ? text : "-";
    };
    EXPECT_EQ(print("hardwarePlatform.v"), "");
    EXPECT_EQ(print("hardwarePlatform.o"), "{\n    \"k\": \"1\"\n}\n");
    EXPECT_EQ(print("hardwarePlatform.l[1]"), "2");
    EXPECT_EQ(print("hardwarePlatform.none"), "-");
    EXPECT_EQ(print("[]"), "");
    // An array is held by an object; of a path without a point it has no name there.
    EXPECT_EQ(print("hardwarePlatform.l[]"), "{\n    \"l\": [\n        \"1\",\n        \"2\"\n    ]\n}\n");
    EXPECT_EQ(print("top"), "{\n    \"\": [\n        [\n            \"x\"\n        ]\n    ]\n}\n");
    EXPECT_EQ(print("top.[0]"), "{\n    \"[0]\": [\n        \"x\"\n    ]\n}\n");

    bool ok = true;
    for (bool untouched : {false, true}) {
        ok = untouched;
        service.getNodeByPath("", "top", ok);
        service.getNodeByPath(document, "", ok);
        service.getObjectsByPath("", "top", ok);
        service.getObjectsByPath("x.zpfm", "", ok);
        service.getObjectsByPath(nullptr, "top", ok);
        EXPECT_EQ(ok, untouched);
    }
    using boost::property_tree::json_parser::json_parser_error;
    EXPECT_THROW(service.getNodeByPath("{", "top", ok), json_parser_error);
    for (const std::string text : {"", "["}) {
        EXPECT_THROW(service.getNodeByPath_(text, "top", ok), json_parser_error);
        EXPECT_THROW(service.getObjectsByPath_(text, "top", ok), json_parser_error);
        EXPECT_THROW(service.getHwPlatformRootPath(text), json_parser_error);
        EXPECT_THROW(service.getPathWithActualHwPlatformRoot(text, "hardwarePlatform"), json_parser_error);
    }
}

TEST(ObjectService, ReadsBooleans) {
    const ptree tree = parse(R"({"t": "true", "f": "false", "one": "1", "zero": "0", "blank": "true ", "word": "yes", "o": {"k": "1"}})");
    const auto ask = [&](const std::string& path) -> std::string {
        EXPECT_EQ(service.getBoolValue(tree, path, true), service.getBoolValue(tree, path, false) || path == "word" || path == "none");
        try {
            return service.getBoolValue(tree, path) ? "yes" : "no";
        } catch (const boost::property_tree::ptree_bad_data&) {
            return "bad";
        }
    };
    for (const char* path : {"t", "one", "blank", "o.k"})
        EXPECT_EQ(ask(path), "yes") << path;
    for (const char* path : {"f", "zero", "none"})
        EXPECT_EQ(ask(path), "no") << path;
    EXPECT_EQ(ask("word"), "bad");
    EXPECT_EQ(service.getStringValue(tree, "word") + service.getStringValue(tree, "none"), "yes");
}

TEST(ObjectService, GivesTheDocumentOfAFile) {
    const TempDir dir;
    const std::string zpfm = dir.write("p.zpfm", platformFile(hardwareElement("h.kar")));
    const std::string kar = (std::filesystem::create_directory(dir.path("hw")), writeArchive(dir, "hw/h.kar", "heron"));
    const std::string spfm = dir.write("sw/p.spfm", kSoftwareFile);
    PlatformLoader loader(zpfm);
    bool ok = false;
    EXPECT_EQ(service.getAsJsonStr(zpfm), renderJson(*loader.load()));
    EXPECT_EQ(service.getObjectsByPath(zpfm, "hardwarePlatform.name"), "heron");
    EXPECT_EQ(service.getObjectsByPath(&loader, "hardwarePlatform.name", ok), "heron");
    EXPECT_TRUE(ok);
    EXPECT_EQ(service.getObjectsByPath(kar, "name"), "heron");
    EXPECT_EQ(service.getStringValue(service.getAsPropertyTree(spfm), "systemConfigurations[0].name"), "linux");
    EXPECT_EQ(service.getAsPropertyTree(&loader), parse(service.getAsJsonStr(zpfm)));

    for (const std::string& nothing : {std::string(), dir.path("p.ZPFM"), dir.path("hw"), dir.path("none.xml")})
        EXPECT_EQ(service.getAsJsonStr(nothing), "");
    EXPECT_EQ(service.getAsJsonStr(nullptr), "");
    EXPECT_TRUE(service.getAsPropertyTree(dir.path("none.zpfm")).empty());
    EXPECT_THROW(service.getAsJsonStr(dir.path("none.zpfm")), HostFileNotFoundException);

    const MessageLog log;
    const std::string broken = dir.write("broken.kar", "no zip");
    PlatformLoader brokenLoader(broken);
    EXPECT_EQ(service.getAsJsonStr(&brokenLoader), "");
    const auto namesFile = testing::ThrowsMessage<boost::property_tree::ptree_error>(testing::StartsWith(broken + "(1)"));
    EXPECT_THAT([&] { service.getAsPropertyTree(broken); }, namesFile);
    EXPECT_THAT([&] { service.getObjectsByPath(&brokenLoader, "name", ok); }, namesFile);
    EXPECT_TRUE(NativeKeyService().get(broken).empty());

    // The mode reaches the loader.
    ZipBuilder(dir.path("two.kar")).add("kar.json", hardwareJson("first")).add("alt_kar.json", hardwareJson("second")).write();
    EXPECT_EQ(service.getObjectsByPath(dir.path("two.kar"), "name"), "second");
    EXPECT_EQ(NativeObjectService(PlatformLoader::PrimaryJsonOnly).getObjectsByPath(dir.path("two.kar"), "name"), "first");
    EXPECT_TRUE(NativeKeyService(PlatformLoader::XmlOnly).get(dir.path("two.kar")).empty());
}

TEST(KeyService, ListsEveryPath) {
    const NativeKeyService keys;
    EXPECT_THAT(keys.get(parse(R"({"a": [{"b": "1"}, {"b": "2", "d": {}}], "c": "2"})")), ElementsAre("a", "a[]", "a[].b", "a[].d", "c"));
    EXPECT_THAT(keys.get(parse(R"({"m": [["1"]], "o": {"p": {"q": "r"}}})")), ElementsAre("m", "m[]", "m[][]", "o", "o.p", "o.p.q"));
    EXPECT_TRUE(keys.get(ptree()).empty());
    EXPECT_EQ(keys.getAsJsonStr(nullptr), "{\n    \"keys\": \"\"\n}\n");

    const TempDir dir;
    const std::string kar = writeArchive(dir, "h.kar", "heron");
    PlatformLoader loader(kar);
    const auto found = keys.get(kar);
    EXPECT_EQ(found, keys.get(&loader));
    EXPECT_TRUE(found.contains("hardwarePlatforms.hardwarePlatform.name"));
    const ptree list = parse(keys.getAsJsonStr(kar)).get_child("keys");
    EXPECT_EQ(list.size(), found.size());
    EXPECT_EQ(list.front().second.data(), *found.begin());
}

} // namespace
