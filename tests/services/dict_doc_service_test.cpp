// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HZEPJSONText.h"
#include "HostEnv.h"
#include "NativeDictService.h"
#include "NativeDocService.h"
#include "NativeTransformService.h"

#include "../loading/LoadingFixture.h"

#include <boost/property_tree/json_parser/error.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/stat.h>

using boost::property_tree::ptree;
using testing::ElementsAre;
using testing::Pair;
using zep::platform::NativeDictService;
using zep::platform::NativeDocService;
using zep::platform::NativeTransformService;

namespace {

ptree parse(const std::string& text) {
    ptree tree;
    HZEPJSONText::read(text, tree);
    return tree;
}

TEST(DictService, FlattensATree) {
    const NativeDictService service;
    const auto flatten = [&](const std::string& text, const std::string& prefix = "") { return service.getAsDict(parse(text), prefix); };
    EXPECT_THAT(flatten(R"({"files": [{"name": "x", "type": "y"}, {"name": "z"}]})"),
                ElementsAre(Pair("files[0].name", "x"), Pair("files[0].type", "y"), Pair("files[1].name", "z")));
    // The first of an array of plain values has no subscript.
    EXPECT_THAT(flatten(R"({"a": ["p", "q", "r"]})"), ElementsAre(Pair("a", "p"), Pair("a[0]", "q"), Pair("a[1]", "r")));
    EXPECT_THAT(flatten(R"({"a": ["p", {"b": "1"}, "r"]})"), ElementsAre(Pair("a", "p"), Pair("a[1]", "r"), Pair("a[1].b", "1")));
    EXPECT_THAT(flatten(R"({"a": [["p", "q"], ["r"]]})"), ElementsAre(Pair("a[0]", "p"), Pair("a[0][0]", "q"), Pair("a[1]", "r")));
    EXPECT_THAT(flatten(R"({"o": {"k": "1", "e": {}}, "k": "first", "k": "second"})", "x.y"),
                ElementsAre(Pair("x.y.k", "first"), Pair("x.y.o.e", ""), Pair("x.y.o.k", "1")));
    EXPECT_THAT(flatten(R"(["p"])", "a"), ElementsAre(Pair("a", "p")));
    EXPECT_THAT(flatten("{}"), ElementsAre());
}

TEST(DictService, AnswersForAFile) {
    const TempDir dir;
    const std::string kar =
        ZipBuilder(dir.path("h.kar"))
            .add("kar.json", hardwareJson("heron", R"(, "idCode": "0x1", "rm": "true", "files": [{"name": "a", "type": "DCP"},
                                     {"name": "b", "type": "MCS"}], "busInterfaces": [{"name": "bus", "addressSegments": [{"name": "s"}]}])"))
            .write();
    const NativeDictService service;
    bool ok = false;
    const auto all = service.getAsDict(kar, "", ok);
    EXPECT_TRUE(ok);
    EXPECT_EQ(all.at("name"), "heron");
    EXPECT_THAT(service.getAsDict(kar, "files[1]", ok), ElementsAre(Pair("files[1].name", "b"), Pair("files[1].type", "MCS")));
    EXPECT_THAT(service.getAsDict(kar, "name", ok), ElementsAre());
    EXPECT_TRUE(ok);
    EXPECT_THAT(service.getAsDict(kar, "none", ok), ElementsAre());
    EXPECT_FALSE(ok);
    EXPECT_THAT(service.getAsDict(dir.path("no.txt"), "", ok), ElementsAre());
    EXPECT_TRUE(ok);
    EXPECT_THAT(service.getAsDict(dir.path("no.txt"), "name", ok), ElementsAre());
    EXPECT_TRUE(ok) << "stays";

    const auto filtered = service.getFilteredDict(kar, "");
    EXPECT_THAT(filtered, testing::IsSupersetOf(
                              {Pair("files[0].name", "a"), Pair("files[1].type", "MCS"), Pair("idCode", "0x1"), Pair("rm", "true")}));
    EXPECT_EQ(filtered.count("name"), 0U);
    EXPECT_THAT(service.getFilteredDict(kar, "files"), testing::SizeIs(4));
    EXPECT_THAT(service.getFilteredDict(kar, "none"), ElementsAre());
    // All between the first and the last bracket is one subscript.
    std::set<std::string> filter{"busInterfaces[*].name", "busInterfaces[*].addressSegments[*].name"};
    EXPECT_THAT(service.getFilteredDict(kar, "", filter),
                ElementsAre(Pair("busInterfaces[0].addressSegments[0].name", "s"), Pair("busInterfaces[0].name", "bus")));
}

TEST(TransformService, CountsWhatIsToBeDone) {
    const TempDir dir;
    const NativeTransformService service;
    const std::string text = R"({"operation": "trim", "spec": {"a": "1", "b": {"c": "2"}, "d": []}})";
    const std::string spec = dir.write("spec.json", text);
    EXPECT_EQ(service.getTransformSpecAsJsonStr(spec), text);
    EXPECT_EQ(service.getObjectsBySpec(nullptr, spec), text);
    EXPECT_EQ(service.getObjectsBySpec("missing.zpfm", spec), 3U);
    std::filesystem::create_directory(dir.path("folder.json"));
    ASSERT_EQ(::mkfifo(dir.path("pipe.json").c_str(), 0600), 0);
    for (const std::string& nothing : {std::string(), dir.path("none.json"), dir.write("empty.json", ""), dir.write("s.JSON", text),
                                       dir.path("folder.json"), dir.path("pipe.json")}) {
        EXPECT_EQ(service.getTransformSpecAsJsonStr(nothing), "");
        EXPECT_EQ(service.getObjectsBySpec("missing.zpfm", nothing), 0U);
    }
    EXPECT_THROW(service.getObjectsBySpec("x", dir.write("bare.json", "{}")), boost::property_tree::ptree_bad_path);
    EXPECT_THROW(service.getObjectsBySpec("x", dir.write("bad.json", "{")), boost::property_tree::json_parser::json_parser_error);
    EXPECT_NE(service.getAsJsonStr(writeArchive(dir, "h.kar", "heron")).find("heron"), std::string::npos);
}

TEST(DocService, FindsDocumentation) {
    const NativeDocService service;
    ptree doc = parse(R"({"documentation_keys": {"board": {"name": "N"}, "hw": {"x": [{"y": "Y"}]}}, "other": "o"})");
    EXPECT_EQ(service.getDocKeyBranch(doc, "documentation_keys.board.name").data(), "N");
    EXPECT_EQ(service.getDocKeyBranch(doc, "documentation_keys.nothing.here"), doc.get_child("documentation_keys"));
    EXPECT_EQ(service.getDocKeyBranch(doc, "gone.documentation_keys.board"), doc.get_child("documentation_keys.board"));
    EXPECT_TRUE(service.getDocKeyBranch(doc, "board").empty());

    bool ok = false;
    EXPECT_EQ(service.getBranch(doc, "documentation_keys.hw.x[0].y", ok).data(), "Y");
    EXPECT_TRUE(ok);
    service.getBranch(doc, "documentation_keys.hw.y", ok);
    EXPECT_FALSE(ok);
    EXPECT_EQ(service.getAsJsonStr(doc.get_child("documentation_keys.board")), "{\n    \"name\": \"N\"\n}\n");
}

TEST(DocService, KnowsValidKeys) {
    const NativeDocService service;
    ptree doc = parse(R"({"hw": {"x": [{"y": "Y"}], "odd[1": "o"}})");
    ptree empty;
    testing::internal::CaptureStderr();
    for (const char* key : {"all", "list_keys", "hw", "hw.x", "hw.x[]", "hw.x[7].y", "hw.x[a[b].y", "hw.odd[1"})
        EXPECT_EQ(service.isValidDocKey(doc, key), std::string(key) != "hw.x[a[b].y") << key;
    EXPECT_TRUE(service.isValidDocKey(empty, "all"));
    EXPECT_FALSE(service.isValidDocKey(doc, "hw.y"));
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "Could not find the specified key: <hw.x[a[b].y>.\nCould not find the specified key: <hw.y>.\n");
}

TEST(DocService, ReadsTheInstalledFile) {
    const TempDir dir;
    HostEnv::setHostAppRootList({dir.path()});
    const NativeDocService service;
    ptree doc = parse(R"({"kept": "k"})");
    const ptree before = doc;
    testing::internal::CaptureStderr();
    EXPECT_EQ(service.getFromFile(doc), "");
    const std::string file = dir.path("platforms/platform_keys_doc.json");
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "\nCould not find the <" + file + " >. Check the install area.\n  Can not continue with this task.\n");
    HostEnv::setHostAppRootList({"/nowhere"}); // the root was asked for once
    dir.write("platforms/platform_keys_doc.json", "{\n\"a\": }");
    try {
        service.getFromFile(doc);
        ADD_FAILURE();
    } catch (const boost::property_tree::json_parser::json_parser_error& error) {
        EXPECT_THAT(error.what(), testing::StartsWith(file + "(2)"));
    }
    EXPECT_EQ(doc, before);
    dir.write("platforms/platform_keys_doc.json", R"({"a": "b"})");
    EXPECT_EQ(service.getFromFile(doc), file);
    EXPECT_EQ(doc, parse(R"({"a": "b"})"));
    HostEnv::setHostAppRootList({});
}

} // namespace
