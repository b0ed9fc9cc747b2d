// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "PlatformOnDisk.h"

#include "HZEPJSONText.h"
#include "HZEPPlatform.h"
#include "HZEPReconfigurablePartition.h"
#include "HostEnv.h"
#include "NativeCatalogService.h"
#include "PlatformLoader.h"

#include <boost/algorithm/string.hpp>
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
    std::vector<std::string> names;
    for (const std::string& line : linesOf(catalog_.getAllAsJsonStr(dir_.path(), false, false)))
        if (line.starts_with("platforms..baseName="))
            names.push_back(line.substr(20));
    EXPECT_THAT(names, testing::UnorderedElementsAre("good", "odd_version"));
    boost::split(names, heard_.text(), boost::is_any_of("\n"));
    EXPECT_EQ(std::count(names.begin(), names.end(), "Error: failed to load platform"), 2) << heard_.text();
    const TempDir odd;
    PlatformOnDisk{.version = "soon"}.write(odd);
    EXPECT_THROW(catalog_.getAllAsJsonStr(odd.path(), true, false), std::invalid_argument);
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
