// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "FreshProcess.h"
#include "PlatformOnDisk.h"

#include "HZEPJSONText.h"
#include "HZEPPlatform.h"
#include "HZEPReconfigurablePartition.h"
#include "HostEnv.h"
#include "NativeCatalogService.h"
#include "PlatformLoader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using boost::property_tree::ptree;
using testing::ElementsAre;
using zep::platform::NativeCatalogService;
using zep_platform::PlatformLoader;

void addLines(const ptree& node, const std::string& prefix, std::vector<std::string>& lines) {
    for (const auto& [key, child] : node) {
        lines.push_back(prefix + key + "=" + child.data());
        addLines(child, prefix + key + ".", lines);
    }
}

/// One line for each node of a document.
std::vector<std::string> linesOf(const std::string& text) {
    ptree tree;
    HZEPJSONText::read(text, tree);
    std::vector<std::string> lines;
    addLines(tree, "", lines);
    return lines;
}

class Catalog : public testing::Test {
protected:
    Catalog() { HostEnv::setHostAppRootList({dir_.path("root")}); }
    ~Catalog() override { HostEnv::setHostAppRootList({}); }

    const TempDir dir_;
    const NativeCatalogService catalog_;
    const MessageLog log_;
    const Heard heard_;
};

TEST_F(Catalog, TellsAPlatformInTheOrderOfItsKeys) {
    const std::string file =
        PlatformOnDisk{.intents = "dataCenter embedded", .isUnified = false, .extensions = "{\"a\": \"b\"}"}.write(dir_);
    const std::vector<std::string> brief = {"baseName=p",    "version=1.50",        "type=acceleration",   "dataCenter=true",
                                            "embedded=true", "externalHost=false",  "serverManaged=false", "platformState=impl",
                                            "usesPR=false",  "platformFile=" + file};
    EXPECT_EQ(linesOf(catalog_.getAsJsonStr(file, false, false)), brief);

    const std::string text = catalog_.getAsJsonStr(file, true, false);
    EXPECT_EQ(text, catalog_.getAsJsonStr(file, true, true));
    std::vector<std::string> lines = linesOf(text);
    ASSERT_GT(lines.size(), brief.size());
    EXPECT_TRUE(std::equal(brief.begin(), brief.end(), lines.begin()));
    lines.erase(lines.begin(), lines.begin() + static_cast<std::ptrdiff_t>(brief.size()));
    EXPECT_THAT(lines,
                ElementsAre("platformHwFile=" + dir_.path("hw-p.kar"), "platformHwEmuFile=", "platformSwFile=" + dir_.path() + "/sw/p.spfm",
                            "hpfmFile=<DSA>/p.hpfm", "systemClockCount=0", "partArchitecture=a:b:c:-1", "warranty=false",
                            "warrantyReason=Platform 'p.zpfm' is not a unified platform. By policy, non-unified platforms are not "
                            "supported by the current tool version",
                            "hardware=true", "hardwareEmulation=false", "twoHwEmuBd=false", "softwareEmulation=true"));
}

TEST_F(Catalog, TellsThePartitions) {
    dir_.write("sw/p.spfm", kSoftwareFile);
    std::filesystem::create_directories(dir_.path("hw"));
    ZipBuilder(dir_.path("hw/a.kar"))
        .add("kar.json", hardwareJson("a", R"(, "files": [{"type": "HPFM", "name": "a.hpfm"}],
            "systemClocks": [{"name": "c", "id": "0"}, {"name": "d", "id": "1"}])"))
        .write();
    writeArchive(dir_, "hw/emu.kar", "emu");
    const std::string file =
        dir_.write("p.zpfm", platformFile(partitionElement("0", hardwareElement("a.kar") + emulationElement("emu.kar"))));
    PlatformLoader loader(file);
    loader.load()->addReconfigurablePartition(new HZEPReconfigurablePartition(1));
    ptree document;
    HZEPJSONText::read(catalog_.getAsJsonStr(&loader, true, false), document);
    std::vector<std::string> lines;
    addLines(document.get_child("reconfigurablePartitions"), "", lines);
    EXPECT_THAT(lines, ElementsAre("=", ".platformHwFile=" + dir_.path("hw/a.kar"), ".hpfmFile=<DSA>/a.hpfm", ".systemClockCount=2",
                                   ".platformHwEmuFile=" + dir_.path("hw/emu.kar"), ".hwEmuSystemClockCount=0", "=",
                                   ".platformHwFile=", ".platformHwEmuFile="));
    EXPECT_EQ(catalog_.getValue(&loader, "reconfigurablePartitions"), "");
    EXPECT_EQ(heard_.text(), "");
}

TEST_F(Catalog, AnswersOneValue) {
    const std::string file = PlatformOnDisk{.intents = "embedded", .more = R"(, "usesPR": "true")"}.write(dir_);
    EXPECT_EQ(catalog_.getValue(file, "usesPR"), "true");
    EXPECT_EQ(catalog_.getValue(file, "warranty"), "true");
    EXPECT_EQ(catalog_.getValue(file, ""), "");
    EXPECT_EQ(catalog_.getValue(static_cast<PlatformLoader*>(nullptr), "usesPR"), "");
    EXPECT_EQ(heard_.text(), "");
    EXPECT_EQ(catalog_.getValue(file, "warrantyReason"), "");
    EXPECT_EQ(heard_.text(), "error: key path 'warrantyReason' doens't exist\n");
}

TEST_F(Catalog, ListsWhatLoads) {
    const std::string software = dir_.write("only.spfm", kSoftwareFile);
    EXPECT_THAT(linesOf(catalog_.getAsJsonStr(software, true, false)),
                testing::IsSupersetOf({"type=", "dataCenter=false", "usesPR=false", "platformState=", "systemClockCount=0"}));

    EXPECT_EQ(catalog_.getAllAsJsonStr(dir_.path("nothing"), true, false), "{\n    \"platforms\": \"\"\n}\n");
    PlatformOnDisk().write(dir_, "good");
    dir_.write("2/no_hardware.zpfm", platformFile(hardwareElement("missing.kar")));
    dir_.write("2/no_xml.zpfm", "{");
    PlatformOnDisk{.version = "soon"}.write(dir_, "odd_version");
    const auto names = [&](bool all) {
        std::vector<std::string> lines;
        for (const std::string& line : linesOf(catalog_.getAllAsJsonStr(dir_.path(), all, false)))
            if (line.starts_with("platforms..baseName="))
                lines.push_back(line.substr(20));
        return lines;
    };
    EXPECT_THAT(names(false), testing::UnorderedElementsAre("good", "odd_version"));
    const std::string said = heard_.text();
    const auto count = [](const std::string& text) {
        std::size_t times = 0;
        for (std::size_t at = 0; (at = text.find("Error: failed to load platform\n", at)) != text.npos; ++at)
            ++times;
        return times;
    };
    EXPECT_EQ(count(said), 2U) << said;
    EXPECT_EQ(inFreshProcess([&]() -> std::string {
                  try {
                      return testing::PrintToString(names(true));
                  } catch (const std::invalid_argument& error) {
                      return error.what();
                  }
              }),
              "the version 'soon' is not of the form MAJOR.MINOR");
    EXPECT_EQ(catalog_.getAsJsonStr(dir_.path("2/no_hardware.zpfm"), false, false), "");
    EXPECT_ANY_THROW(catalog_.getAsJsonStr(dir_.path("2/no_xml.zpfm"), false, false));
}

TEST_F(Catalog, HidesWhatIsHidden) {
    PlatformLoader loader(PlatformOnDisk().write(dir_));
    loader.load()->setPlatformFile("tolvan:tb700:linux-uart:1.0");
    EXPECT_EQ(catalog_.getAsJsonStr(&loader, false, false), "");
    EXPECT_EQ(catalog_.getAsJsonStr(static_cast<PlatformLoader*>(nullptr), false, false), "");
    EXPECT_EQ(heard_.text(), "");
}

} // namespace
