// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

// expected/ holds the scripts as they must be, data/ the property files that they are made of, with the test's directory as WORK.

#include "../formats/DsaXmlSupport.h"
#include "../formats/HpfmDocument.h"
#include "HZEPEmulationUtils.h"
#include "HostEnv.h"
#include "HostErrors.h"
#include "HostFile.h"
#include "HostFileUtils.h"
#include "HostZip.h"

#include <boost/algorithm/string/replace.hpp>
#include <gmock/gmock.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using Utils = HZEPEmulationUtils;

namespace {

constexpr const char* kInterfaces = R"(<qd:busInterface qd:name="M0" qd:memport="MIG" qd:sptag="ddr">
<qd:addressSegment qd:index="0" qd:auto="true" qd:sptag="bank0" qd:slr="SLR0" qd:maxMasters="15"/>
<qd:addressSegment qd:index="1"/>
</qd:busInterface>
<qd:busInterface qd:name="M1" qd:memport="MIG" qd:sptag="HBM"/>)";

constexpr const char* kEmulations = R"(<Root VersionMajor="1" VersionMinor="0"><Emulations><Emulation Name="a"><Files>
<File Type="PROP_JSON" Name="emu/prop.json"/><File Type="USER_PROP_JSON" Name="emu/user_prop.json"/>
</Files></Emulation></Emulations></Root>)";

/// What the generator writes into the overlay beside what the build left there.
constexpr const char* kOverlayXml = R"(<?xml version="1.0" encoding="UTF-8"?>
<Root VersionMajor="1" VersionMinor="0">
  <Emulations>
    <Emulation Name="hw_emu">
      <Files>
        <File Type="EMU_DR_BD" Name="emu.bd"/>
        <File Type="EMU_HPFM" Name="card_emu.hpfm"/>
        <File Type="POST_SYS_LINK_TCL" Name="dynamic_post_sys_link.tcl"/>
        <File Type="PRE_SYS_LINK_TCL" Name="dynamic_pre_sys_link.tcl"/>
      </Files>
    </Emulation>
  </Emulations>
</Root>
)";

std::vector<std::string> listFiles(const std::string& directory) {
    std::vector<std::string> names;
    Utils::getAllRelativeInDir(directory, names);
    return names;
}

/// Works in a directory of its own, with an install root whose build scripts are the stubs.
class EmulationUtils : public testing::Test {
protected:
    EmulationUtils() {
        const std::string stubs = HostFileUtils::readFile(HZEP_ROOM "stubs.tcl");
        for (const char* build : {"", "emu_platform_build/"})
            for (const char* kind : {"memss", "streaming"})
                dir_.write("root/data/emulation/hw_em/scripts/" + (std::string(build) + kind) + "/run.tcl", stubs);
        // Made such that the script can be run: every bank and instance has a key in it.
        dir_.write(kConfig + "card.json", edited(edited(readData("card.json"), "AS_LATENCY", "LATENCY"), "NUM_CLKS", "CLKS"));
        dir_.write(kConfig + "default_prop.json", "{\"UseStreaming\": \"true\"}");
        dir_.write("user_ip/core.xml", "<core/>");
        fs::create_directory(dir_.path("tmp"));
        HostEnv::setHostAppRootList({dir_.path("root")});
        HostEnv::setHostTmpDir(dir_.path("tmp"));
        ::setenv("TOLVAN_DRUVEL", dir_.path("root").c_str(), 1);
        fs::current_path(dir_.path());
        before_ = std::cout.rdbuf(printed_.rdbuf());
    }
    ~EmulationUtils() override {
        std::cout.rdbuf(before_);
        fs::current_path("/");
        HostEnv::setHostTmpDir("");
    }

    std::string readData(const std::string& name) const {
        return boost::replace_all_copy(HostFileUtils::readFile(HZEP_ROOM "data/" + name), "WORK", dir_.path());
    }
    std::string readExpected(const std::string& name) const {
        return boost::replace_all_copy(HostFileUtils::readFile(HZEP_ROOM "expected/" + name), "WORK", dir_.path());
    }

    /// An archive with all that the generator looks at; `files` are listed beside the rest.
    std::string makeCard(const std::string& files = "") const {
        std::string xml = edited(kDsaXml, "<File Type=\"DCP\" Name=\"dr.dcp\"/>",
                                 "<File Type=\"HPFM\" Name=\"card.hpfm\"/><File Type=\"BOARD_REPO_PATH\" Name=\"boards\"/>" + files);
        xml = edited(edited(xml, "Address0=\"1\"", "Address0=\"0\""), "Address2=\"3\"", "Address2=\"4276092928\"");
        return ZipBuilder(dir_.path("card.dsa"))
            .add("dsa.xml", xml)
            .add("card.hpfm", edited(kHpfm, between(kHpfm, "<qd:busInterface qd:busTypeRef", "<qd:nocConn"), kInterfaces))
            .add("boards/egret.xml", "<board/>")
            .add("emu/emu.xml", kEmulations)
            .add("emu/emu.bd", "an older one")
            .add("emu/prop.json", readData("prop.json"))
            .add("emu/user_prop.json", readData("user_prop.json"))
            .write();
    }

    /// An archive whose script and build take the least.
    std::string makePlain() const {
        std::string xml = edited(kDsaXml, between(kDsaXml, "<FeatureRom ", "</DSA>"), "");
        xml =
            edited(xml, "<Board Name=\"egret\" Vendor=\"norvane.example\" Part=\"nv-e100\" BoardPart=\"norvane.example:egret:part0:1.0\">",
                   "<Board Name=\"\" Vendor=\"\" Part=\"\">");
        return ZipBuilder(dir_.path("plain.dsa")).add("dsa.xml", xml).write();
    }

    static const inline std::string kConfig = "root/data/emulation/hw_em/platform_config/";
    TempDir dir_;
    MessageLog log_;
    std::ostringstream printed_;

private:
    std::streambuf* before_;
};

TEST_F(EmulationUtils, WriteThePropertyScript) {
    dir_.write(kConfig + "card.json", readData("card.json"));
    ASSERT_TRUE(Utils::generateEmuPropDict(makeCard("<File Type=\"TOP_BD\" Name=\"top.bd\"/>"), "", false, "made"));
    EXPECT_EQ(dir_.read("made/hw_emu_prop.tcl"), readExpected("full.tcl"));
    EXPECT_EQ(fs::status("made/hw_emu_prop.tcl").permissions() & fs::perms::owner_exec, fs::perms::owner_exec);
    EXPECT_THAT(listFiles("tmp"), ElementsAre("boards/egret.xml"));

    ASSERT_TRUE(Utils::generateEmuPropDict(makePlain(), "out", false, "made"));
    EXPECT_EQ(dir_.read("out/made/hw_emu_prop.tcl"), readExpected("plain.tcl"));
    EXPECT_THAT(log_.lines, IsEmpty());
}

TEST_F(EmulationUtils, RunUpdatesTheArchive) {
    const std::string archive = makeCard();
    ASSERT_TRUE(Utils::generateDsaEmu(archive, "", "plays no part")) << printed_.str();
    EXPECT_EQ(dir_.read("emu_update_dsa.tcl"), readExpected("update_static.tcl"));
    EXPECT_EQ(printed_.str(), "closed\n");
    EXPECT_TRUE(HostZip::verifyDigest(archive));
    std::vector<std::string> names;
    for (const HostZipEntry& entry : HostZip::getEntries(archive))
        names.push_back(entry.name);
    EXPECT_THAT(names, ElementsAre("dsa.xml", "card.hpfm", "boards/egret.xml", "emu/emu.xml", "emu/emu.bd", "emu/prop.json",
                                   "emu/user_prop.json", "emu.xml", "emu/card_emu.hpfm", "emu/dynamic_post_sys_link.tcl",
                                   "emu/dynamic_pre_sys_link.tcl", "emu/user_ip_repo/core.xml"));
    EXPECT_EQ(HostZip::readMember(archive, "emu.xml"), kOverlayXml);
    // The build got the values as Tcl understands them.
    const std::string design = HostZip::readMember(archive, "emu/emu.bd");
    for (const char* part : {"before {project_name project_unified_card", "memory_tags {ddr {{index 0 auto true sptag bank0", "HBM {}}",
                             "board_memories {{CPU kept ControllerType DDR4_SDRAM", "} {LATENCY 290} {SLOT 2}}", " Flow user ",
                             "clk_a 310 clk_b 500", "Cdma_Base_Address2 0xfee00000"})
        EXPECT_THAT(design, HasSubstr(part));

    // A plain shell makes the same of the scripts.
    fs::create_directory("shell");
    fs::copy("hw_emu_prop", "shell/hw_emu_prop");
    ASSERT_EQ(std::system(("cd shell && " HZEP_TCLSH " ../emu_update_dsa.tcl > said")), 0);
    EXPECT_EQ(dir_.read("shell/said"), "closed\n");
    fs::remove("overlay/emu.xml");
    ASSERT_EQ(listFiles("shell/overlay"), listFiles("overlay"));
    for (const std::string& name : listFiles("overlay"))
        EXPECT_EQ(dir_.read("shell/overlay/" + name), dir_.read("overlay/" + name)) << name;
}

TEST_F(EmulationUtils, RunInAFolderLeavesTheArchive) {
    const std::string archive = makeCard("<File Type=\"DR_BD\" Name=\"top.bd\"/>");
    const std::string before = dir_.read("card.dsa");
    ASSERT_TRUE(Utils::generateDsaEmu(archive, "out", "props")) << printed_.str();
    EXPECT_THAT(listFiles("out"), ElementsAre("overlay/emu.xml", "overlay/emu/card_emu.hpfm", "overlay/emu/dynamic_post_sys_link.tcl",
                                              "overlay/emu/dynamic_pre_sys_link.tcl", "overlay/emu/emu.bd",
                                              "overlay/emu/user_ip_repo/core.xml", "props/hw_emu_prop.tcl"));
    ASSERT_TRUE(Utils::generateEmuDir("card", "out/props/hw_emu_prop.tcl", "out")) << printed_.str();
    std::string dynamic = readExpected("update_static.tcl");
    const std::string copy = "  file copy -force  $projName/$projName.srcs/sources_1/bd/$bdName $overlay_dir";
    const std::string inBuild = "/hw_em/scripts/emu_platform_build/";
    for (const auto& [from, to] :
         {std::pair<std::string, std::string>{"source hw_emu_prop/", "source out/props/"},
          {"/hw_em/scripts/streaming", inBuild + "streaming"},
          {"/hw_em/scripts/memss", inBuild + "memss"},
          {"set overlay_dir overlay", "set overlay_dir out/overlay"},
          {"  set dsaPath ", "  set drBdName            [dict get $config::config_info dr_bd_name]\n  set dsaPath "},
          {copy, "  file mkdir $overlay_dir/$bdName/\n" + copy + "/$bdName/\n" + edited(copy, "$bdName", "$drBdName") + "/$bdName/"}})
        dynamic = edited(dynamic, from, to);
    EXPECT_EQ(dir_.read("emu_update_dsa.tcl"), dynamic);
    EXPECT_EQ(dir_.read("out/overlay/emu/pfm_dynamic/pfm_dynamic.bd"), "dynamic\n");
    EXPECT_THAT(dir_.read("out/overlay/emu.xml"), HasSubstr("<File Type=\"TOP_BD\" Name=\"pfm_dynamic/pfm_dynamic.bd\"/>\n"
                                                            "        <File Type=\"EMU_DR_BD\" Name=\"emu/emu.bd\"/>"));
    EXPECT_EQ(dir_.read("card.dsa"), before);
    EXPECT_FALSE(Utils::generateEmuDir("card", "out/props/hw_emu_prop.tcl", ""));
    EXPECT_THAT(log_.lines, ElementsAre("critical warning|@74-57@"));
}

TEST_F(EmulationUtils, WhatFailsIsToldAndLeavesTheArchive) {
    const std::string archive = makeCard();
    const std::string before = dir_.read("card.dsa");
    const std::string build = "root/data/emulation/hw_em/scripts/memss/run.tcl";
    const std::pair<std::string, std::string> builds[] = {
        {"error {no licence}", "Updating DSA with emulation files was unsuccessful, message: 'no licence'\n"},
        {"catch {exit 3}", ""},
        {"proc pre_sys_link_gen {file} {", "Updating DSA with emulation files was unsuccessful, message: 'missing close-brace'\n"},
        {HostFileUtils::readFile(HZEP_ROOM "stubs.tcl") + "proc emu_hpfm_gen {file} {file delete -force project_unified_card}",
         "Updating DSA with emulation files was unsuccessful, message: 'error copying"},
    };
    for (const auto& [script, said] : builds) {
        dir_.write(build, script);
        dir_.write("overlay/emu.bd", "of an earlier run");
        dir_.write("overlay/emu/emu.bd", "of an earlier run");
        printed_.str("");
        EXPECT_FALSE(Utils::generateDsaEmu(archive, "", "")) << script;
        EXPECT_THAT(printed_.str(), said.empty() ? testing::Matcher<std::string>(IsEmpty()) : testing::StartsWith(said)) << script;
        EXPECT_THAT(log_.lines, ElementsAre("error|@74-33@")) << script;
        log_.lines.clear();
    }

    // Values are written as they are, also those that Tcl runs.
    dir_.write(kConfig + "card.json", R"({"Odd": "[exit 5]; $x {}"})");
    EXPECT_FALSE(Utils::generateDsaEmu(archive, "", ""));
    EXPECT_THAT(dir_.read("hw_emu_prop/hw_emu_prop.tcl"), HasSubstr("\n dict set config_info Odd [exit 5]; $x {}\n"));
    EXPECT_THAT(log_.lines, ElementsAre("error|@74-33@"));
    log_.lines.clear();

    EXPECT_FALSE(Utils::generateDsaEmu("absent.dsa", "", ""));
    EXPECT_FALSE(Utils::generateDsaEmu("root", "", ""));
    EXPECT_FALSE(Utils::generateDsaEmu(dir_.write("no.dsa", "no archive"), "", ""));
    EXPECT_THAT(log_.lines, ElementsAre("critical warning|@74-32@%s|absent.dsa", "critical warning|@74-36@%s|root",
                                        testing::StartsWith("critical warning|@74-65@%s%s%s|dsa.xml|")));
    log_.lines.clear();

    dir_.write("overlay/new", "x");
    fs::create_symlink("new", "overlay/link");
    EXPECT_THROW(Utils::updateDsa(HostFile(archive), HostFile("overlay")), HostError);
    EXPECT_THROW(Utils::updateDsa(HostFile(archive), HostFile("nowhere")), HostError);
    EXPECT_EQ(dir_.read("card.dsa"), before);

    fs::remove_all("root");
    ::unsetenv("TOLVAN_DRUVEL");
    EXPECT_FALSE(Utils::generateDsaEmu(archive, "", ""));
    EXPECT_THAT(log_.lines, ElementsAre("critical warning|@74-56@%s|" + dir_.path(kConfig + "default_prop.json"),
                                        "critical warning|@74-35@", "error|@74-33@"));
    fs::create_directory("taken");
    fs::create_directory("taken/hw_emu_prop.tcl");
    EXPECT_THROW(Utils::generateEmuPropDict(archive, "", false, "taken"), HostUserException);
    EXPECT_THROW(Utils::generateEmuPropDict("absent.dsa", "", false, "x"), HostFileNotFoundException);
}

TEST_F(EmulationUtils, TellWhatIsToBeBuilt) {
    HPLPlatform plain, withDdr;
    HZEPHardwareBusInterface* interface = withDdr.addBusInterface();
    interface->setMemPort("MIG");
    interface->setSPTag("Ddr");
    const auto build = [&](HPLPlatform& platform, const std::string& properties) {
        std::ofstream out("script.tcl");
        std::string custom;
        const unsigned kind = Utils::writeEmuPropertiesDict(&platform, "", dir_.write("p.json", properties), "", out, "a", false, custom);
        return std::to_string(kind) + custom;
    };
    EXPECT_EQ(build(plain, "{}"), "0");
    EXPECT_EQ(build(withDdr, "{}"), "1");
    EXPECT_EQ(build(withDdr, R"({"UseStreaming": "true"})"), "2");
    EXPECT_EQ(build(plain, R"({"UseStreaming": "TRUE"})"), "0");
    EXPECT_EQ(build(plain, R"({"UseStreaming": "true", "UseZepMemss": "true"})"), "1");
    EXPECT_EQ(build(plain, R"({"UseZepMemss": "true", "CustomScriptPath": "/a.tcl"})"), "3/a.tcl");
}

TEST_F(EmulationUtils, PropertyFilesAreTakenWholeOrNotAtAll) {
    Utils::Banks banks;
    Utils::Properties properties, clocks;
    Utils::Instances instances;
    const auto populate = [&](const std::string& path) { Utils::populateDdrPropMap(path, banks, properties, clocks, instances); };
    populate(dir_.write("good.json", R"({"DdrBanks": [{"a": "1", "b": {"c": "2"}}], "SystemClocks": {"k": "1", "k": "2"}, "p": "1",
        "DesignIpInstances": [{"VLNV": "v", "Configuration": {"x": "1"}}]})"));
    const auto isAsRead = [&] {
        return banks == Utils::Banks{{0, {{"a", "1"}, {"SP_TAG", "bank0"}}}} && properties == Utils::Properties{{"p", "1"}} &&
               clocks == Utils::Properties{{"k", "1"}} && instances == Utils::Instances{{"v", {{"x", "1"}}}};
    };
    EXPECT_TRUE(isAsRead());
    populate("");
    populate("absent.json");
    EXPECT_THAT(log_.lines, IsEmpty());
    for (const char* text : {"{\"p\": \"2\",", R"({"p": "2", "DesignIpInstances": [{"VLNV": "v"}]})",
                             R"({"p": "2", "DesignIpInstances": [{"Configuration": {}}]})"}) {
        populate(dir_.write("bad.json", text));
        EXPECT_TRUE(isAsRead()) << text;
        EXPECT_THAT(log_.lines, ElementsAre("info|@74-37@%s|" + dir_.path("bad.json"))) << text;
        log_.lines.clear();
    }
}

TEST_F(EmulationUtils, FindTheToolsFolders) {
    EXPECT_EQ(Utils::getTolvanIPPath(), dir_.path("root"));
    ::unsetenv("TOLVAN_PLOME");
    ::unsetenv("TOLVAN_ZEP");
    EXPECT_EQ(Utils::getPlomeIPPath(), "");
    ::setenv("TOLVAN_ZEP", "/zep", 1);
    EXPECT_EQ(Utils::getPlomeIPPath(), "/zep/platforms");
    ::setenv("TOLVAN_PLOME", "/plome", 1);
    EXPECT_EQ(Utils::getPlomeIPPath(), "/plome/platforms");
}

} // namespace
