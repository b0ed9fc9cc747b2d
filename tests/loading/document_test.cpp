// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include <gtest/gtest.h>

#include "LoadingFixture.h"
#include "c_api_test.h"

#include "HZEPHardwarePlatform.h"
#include "HZEPJSONText.h"
#include "HZEPPlatform.h"
#include "HostErrors.h"
#include "PlatformLoader.h"
#include "hzep_c_api.h"

#include <boost/algorithm/string/replace.hpp>

#include <map>
#include <memory>

namespace {

using Text = std::unique_ptr<char, decltype(&hzep_free_json_string)>;

Text getDocument(const std::string& path) {
    return Text(hzep_get_platform_json(path.c_str()), hzep_free_json_string);
}

Text getShortDocument(const std::string& path) {
    return Text(hzep_get_short_platform_json(path.c_str()), hzep_free_json_string);
}

/// A path as JSON text has it.
std::string escaped(const std::string& path) {
    return boost::algorithm::replace_all_copy(path, "/", "\\/");
}

std::string filled(std::string text, const std::map<std::string, std::string>& values) {
    for (const auto& [mark, value] : values)
        boost::algorithm::replace_all(text, mark, value);
    return text;
}

/// The object's document as it stands two levels deep.
std::string nested(const zep_platform::JSONSerializable& object) {
    const std::string text = boost::algorithm::replace_all_copy(renderJson(object), "\n", "\n        ");
    return text.substr(0, text.find_last_of('}') + 1);
}

TEST(Document, OfAPlatformWithEverything) {
    TempDir dir;
    writeArchive(dir, "hw/a.kar", "hardware");
    writeArchive(dir, "hw/e.kar", "emulation");
    dir.write("sw/p.spfm", kSoftwareFile);
    const std::string path = dir.write("p.zpfm", platformFile(hardwareElement("a.kar") + emulationElement("e.kar")));
    const Text text = getDocument(path);
    ASSERT_TRUE(text);

    const auto platform = zep_platform::PlatformLoader(path).load();
    const std::string expected = filled(R"({
    "vendor": "orrin",
    "name": "heron",
    "description": "A heron",
    "uniqueName": "@DIR@\/p.zpfm",
    "version": "1.50",
    "type": "Dorik",
    "unified": "false",
    "zpfm": "true",
    "hardware": "true",
    "softwareEmulation": "true",
    "hardwareEmulation": "true",
    "hardwareEmuPlatform": "false",
    "hidden": "false",
    "file": "@DIR@\/p.zpfm",
    "hwFile": "@DIR@\/hw\/a.kar",
    "hwEmuFile": "@DIR@\/hw\/e.kar",
    "swFile": "@DIR@\/sw\/p.spfm",
    "directory": "@DIR@",
    "targetCategories": [
        "Acceleration"
    ],
    "hardwarePlatforms": {
        "hardwarePlatform": @HARDWARE@,
        "hwEmuPlatform": @EMULATION@
    },
    "softwarePlatform": {
        "defaultConfig": "linux",
        "systemConfigurations": [
            {
                "name": "linux",
                "prettyName": "Linux",
                "description": "A system",
                "defaultProcessorGroup": "a53",
                "qemu": "false",
                "processorGroups": [
                    {
                        "name": "a53",
                        "prettyName": "A53",
                        "cpuType": "cortex-a53",
                        "osPrettyName": "Linux",
                        "osName": "linux",
                        "osHypervisorGuest": "false"
                    }
                ],
                "runtimes": [
                    "ocl"
                ]
            }
        ]
    }
}
)",
                                        {{"@DIR@", escaped(dir.path())},
                                         {"@HARDWARE@", nested(*platform->getHardwarePlatform())},
                                         {"@EMULATION@", nested(*platform->getHardwareEmulationPlatform())}});
    EXPECT_EQ(text.get(), expected);
    char reason[8] = {};
    EXPECT_EQ(getDocumentLengthFromC(path.c_str(), reason, sizeof reason), expected.size());
    EXPECT_STREQ(reason, "");
    EXPECT_EQ(Text(hzep_try_get_short_platform_json(path.c_str(), nullptr), hzep_free_json_string).get(),
              std::string(getShortDocument(path).get()));

    const Text brief = getShortDocument(path);
    ASSERT_TRUE(brief);
    EXPECT_EQ(brief.get(), filled(R"({
    "uniqueName": "@DIR@\/p.zpfm",
    "file": "@DIR@\/p.zpfm",
    "description": "A heron"
}
)",
                                  {{"@DIR@", escaped(dir.path())}}));
}

TEST(Document, OfPartitionsHasTheirDefaultOutside) {
    TempDir dir;
    writeArchive(dir, "hw/a.kar", "left");
    writeArchive(dir, "hw/b.kar", "right");
    writeArchive(dir, "hw/e.kar", "right emulation");
    dir.write("sw/p.spfm", kSoftwareFile);
    const Text text =
        getDocument(dir.write("p.zpfm", platformFile(partitionElement("0", hardwareElement("a.kar")) +
                                                         partitionElement("1", hardwareElement("b.kar") + emulationElement("e.kar")),
                                                     " zep:defaultRP=\"1\"")));
    ASSERT_TRUE(text);
    boost::property_tree::ptree tree;
    HZEPJSONText::read(text.get(), tree);
    std::vector<std::string> keys;
    for (const auto& [key, value] : tree)
        keys.push_back(key);
    EXPECT_EQ(keys, (std::vector<std::string>{"vendor",
                                              "name",
                                              "description",
                                              "uniqueName",
                                              "version",
                                              "type",
                                              "unified",
                                              "zpfm",
                                              "hardware",
                                              "softwareEmulation",
                                              "hardwareEmulation",
                                              "hardwareEmuPlatform",
                                              "hidden",
                                              "file",
                                              "swFile",
                                              "directory",
                                              "targetCategories",
                                              "defaultRPId",
                                              "hardwarePlatforms",
                                              "softwarePlatform"}));
    EXPECT_EQ(tree.get<std::string>("defaultRPId"), "1");
    std::string partitions;
    for (const auto& [key, partition] : tree.get_child("hardwarePlatforms.reconfigurablePartitions"))
        partitions += partition.get<std::string>("id") + ":" + partition.get<std::string>("hardwarePlatform.name") + ":" +
                      partition.get<std::string>("hwEmuPlatform.name", "none") + " ";
    EXPECT_EQ(partitions, "0:left:none 1:right:right emulation ");
}

TEST(Document, ShortFormOfASoftwareFileIsEmpty) {
    TempDir dir;
    const Text text = getShortDocument(dir.write("p.spfm", kSoftwareFile));
    ASSERT_TRUE(text);
    EXPECT_STREQ(text.get(), "{\n}\n");
}

TEST(Document, LongTextsArriveWhole) {
    TempDir dir;
    std::string json = R"({"name": "n", "files": [)";
    for (int i = 0; i < 6000; ++i)
        json += (i ? ", " : "") +
                ("{\"name\": \"" + std::string(100, static_cast<char>('a' + i % 26)) + "\", \"type\": \"F" + std::to_string(i) + "\"}");
    const std::string path = ZipBuilder(dir.path("a.kar")).add("kar.json", json + "]}").write();
    const Text text = getDocument(path);
    ASSERT_TRUE(text);
    EXPECT_GT(std::string(text.get()).size(), 600000U);
    EXPECT_EQ(text.get(), renderJson(*zep_platform::PlatformLoader(path).load()));
}

TEST(Document, FailuresOfTheCFunctions) {
    MessageLog log;
    TempDir dir;
    EXPECT_FALSE(getDocument(""));
    EXPECT_FALSE(getShortDocument(dir.path("none.kar")));
    EXPECT_EQ(log.lines.size(), 2U);
    hzep_free_json_string(nullptr);

    EXPECT_THROW(getDocument(dir.path("none.zpfm")), HostFileNotFoundException);
    try {
        hzep_get_short_platform_json(nullptr);
        FAIL();
    } catch (const std::logic_error& e) {
        EXPECT_STREQ(e.what(), "basic_string::_M_construct null not valid");
    }
    testing::internal::CaptureStdout();
    EXPECT_THROW(getDocument(dir.write("bad.zpfm", "<")), zep_platform::PlatformParseException);
    testing::internal::GetCapturedStdout();
}

TEST(Document, FailuresAreTextsForCallersInC) {
    TempDir dir;
    dir.write("no.kar", "no zip");
    ZipBuilder(dir.path("half.kar")).add("kar.json", "{\n\"name\": }").write();
    ZipBuilder(dir.path("odd.kar")).add("kar.json", hardwareJson("odd")).add("hw_emu/kar.json", "{").write();
    dir.write("bad.zpfm", platformFile(std::string(400, '\n') + "<zep:odd"));
    dir.write("gone\xC2\x9B.zpfm", platformFile(hardwareElement("gone.kar")));
    const std::map<std::string, std::vector<std::string>> cases = {
        {"none.zpfm", {"none.zpfm: no such file"}},  {"none.kar", {"none.kar", "does not exist"}},
        {"no.kar", {"no.kar", "not a zip archive"}}, {"half.kar", {"half.kar", "kar.json"}},
        {"bad.zpfm", {"bad.zpfm", "404"}},           {"gone\xC2\x9B.zpfm", {"gone\\xc2\\x9b.zpfm: ", "hw/gone.kar", "does not exist"}},
    };
    MessageLog log;
    std::map<std::string, std::string> reasons;
    testing::internal::CaptureStdout();
    for (const auto& [file, words] : cases) {
        char reason[1000] = {};
        if (getDocumentLengthFromC(dir.path(file).c_str(), reason, sizeof reason) == 0)
            reasons[file] = reason;
    }
    testing::internal::GetCapturedStdout();
    for (const auto& [file, words] : cases)
        for (const std::string& word : words)
            EXPECT_NE(reasons[file].find(word), std::string::npos) << word << ": " << reasons[file];
    char reason[100] = {};
    EXPECT_EQ(getDocumentLengthFromC(nullptr, reason, sizeof reason), 0U);
    EXPECT_STREQ(reason, "the path is null");
    EXPECT_EQ(log.lines, std::vector<std::string>{}) << "told in the text alone";

    // The sink is back, and what isn't about a failure reaches it; what it raises stays within.
    EXPECT_NE(getDocumentLengthFromC(dir.path("odd.kar").c_str(), reason, sizeof reason), 0U);
    EXPECT_EQ(log.lines.size(), 1U);
    const auto before = HostMsgMgr::getGlobal().setSink([](const HostMsg&) { throw 42; });
    EXPECT_EQ(getDocumentLengthFromC(dir.path("odd.kar").c_str(), reason, sizeof reason), 0U);
    EXPECT_STREQ(reason, "the message service raised an exception");
    HostMsgMgr::getGlobal().setSink(before);
}

} // namespace
