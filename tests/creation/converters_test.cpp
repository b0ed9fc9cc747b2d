// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "FaultSweep.h"
#include "HDFToDSAConverter.h"
#include "HPLPlatform.h"
#include "HZEPPlatform.h"
#include "HostErrors.h"
#include "HostFile.h"
#include "HostHwDb.h"
#include "HostHwDefUtils.h"
#include "HostHwManager.h"
#include "HostZip.h"
#include "HostZipUpdate.h"
#include "MessageLog.h"
#include "PlatformLoader.h"
#include "SimpleFixedKARCreator.h"
#include "TempDir.h"
#include "ZipBuilder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <functional>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using zep_platform::PlatformLoader;

namespace {

const char kPart[] = "tlu9p:tlu9pz:flva2104:-2:e";

std::string makeDefinition(const std::string& top, const std::string& part) {
    return "<hardwareDefinition top=\"" + top + "\" part=\"" + part +
           "\"><instance name=\"mem\" module=\"ddr4\"><attribute name=\"W\" value=\"64\"/></instance></hardwareDefinition>";
}

/// The words of the HostError; "" when none is raised.
std::string errorOf(const std::function<void()>& work) {
    try {
        work();
        return "";
    } catch (const HostError& error) {
        return error.what();
    }
}

std::vector<std::string> getNames(const std::string& archive) {
    std::vector<std::string> names;
    for (const HostZipEntry& entry : HostZip::getEntries(archive))
        names.push_back(entry.name);
    return names;
}

class Converters : public testing::Test {
protected:
    std::string addDefinition(const std::string& text) { return ZipBuilder(dir_.path("in/wren.hdf")).add("hwdef.xml", text).write(); }

    TempDir dir_;
    const std::string in_ = (std::filesystem::create_directory(dir_.path("in")), dir_.path("in"));
    const std::string archive_ = dir_.path("wren.dsa");
    MessageLog log_;
};

} // namespace

TEST_F(Converters, a_definition_becomes_an_archive_that_loads_from_either_metadata) {
    struct {
        const char *top, *part, *vendor, *name, *partName;
    } const rows[] = {{"norvane:wren:x", kPart, "norvane", "wren:x", "tlu9pz-flva2104-2-e"}, {"wren", "", "", "wren", ""}};
    for (const auto& row : rows) {
        addDefinition(makeDefinition(row.top, row.part));
        HDFToDSAConverter converter(in_, "wren.hdf", dir_.path("staging/"));
        EXPECT_EQ(converter.getHwPfmDir() + "/" + converter.getHwPfmFileName(), converter.getHwPfmFile());
        ASSERT_TRUE(converter.writeDSA());
        EXPECT_EQ(converter.getDsaFile(), archive_);
        EXPECT_THAT(getNames(archive_), ElementsAre("dsa.json", "dsa.xml", "hwdef.xml"));
        EXPECT_TRUE(HostZip::verifyDigest(archive_));
        for (const bool fromXml : {false, true}) {
            if (fromXml) {
                HostZipUpdate update(archive_);
                update.remove("dsa.json");
                update.commit();
            }
            const auto platform = PlatformLoader(archive_, PlatformLoader::PreferAlternateJson).load();
            ASSERT_TRUE(platform) << row.top << fromXml;
            const auto& hardware = dynamic_cast<const HPLPlatform&>(*platform->getHardwarePlatform());
            EXPECT_EQ(hardware.getVendor(), row.vendor);
            EXPECT_EQ(hardware.getName(), row.name);
            EXPECT_TRUE(hardware.isUnifiedPlatform());
            EXPECT_FALSE(hardware.isExpandable() || hardware.usesPR());
            EXPECT_EQ(hardware.getState(), HZEPHardwarePlatform::impl);
            ASSERT_TRUE(hardware.getDevice("fpga0"));
            EXPECT_EQ(hardware.getDevice("fpga0")->getPartName(), row.partName);
            EXPECT_EQ(hardware.getDevice("fpga0")->getReadOnlyCore().getName(), row.name);
            HostHwDb* database = hardware.createHwDb();
            ASSERT_TRUE(database);
            EXPECT_EQ(database->findInstance("mem")->attributes.at("W"), "64");
            HostHwManager::closeHardwareDb(database->getName());
        }
    }
    EXPECT_THAT(log_.lines, IsEmpty());
    EXPECT_TRUE(HostFile::isRegularFile(dir_.path("staging/hwdef.xml")));
    EXPECT_TRUE(HostFile::isRegularFile(dir_.path("staging_1/hwdef.xml")));
}

TEST_F(Converters, a_definition_that_can_not_be_opened_is_refused_before_anything_is_written) {
    const std::string sound = addDefinition(makeDefinition("a", kPart));
    const std::string broken = ZipBuilder(dir_.path("in/b.hdf")).add("sysdef.xml", "<hardwareDefinition>\n").write();
    const std::string none = ZipBuilder(dir_.path("in/n.hdf")).add("x").write();
    dir_.write("in/t.hdf", "no archive");
    const auto errorFor = [this](const std::string& directory, const std::string& file) {
        return errorOf([&] { HDFToDSAConverter(directory, file, dir_.path("staging")); });
    };
    EXPECT_EQ(errorFor(dir_.path("no"), "no.hdf"), "Could not find specified dir: '" + dir_.path("no") + "'on disk.");
    EXPECT_EQ(errorFor(in_, "no.hdf"), "Could not find specified file: '" + in_ + "/no.hdf'on disk.");
    EXPECT_EQ(errorFor(in_, "b.hdf"), broken + ": sysdef.xml: line 1: the attribute 'top' is missing");
    EXPECT_THAT(errorFor(in_, "n.hdf"), HasSubstr(none + ": holds no hardware definition"));
    EXPECT_THAT(errorFor(in_, "t.hdf"), HasSubstr(in_ + "/t.hdf: "));
    EXPECT_EQ(errorFor(dir_.path(), sound), "");
    std::filesystem::copy_file(sound, archive_);
    std::filesystem::create_symlink(archive_, dir_.path("in/wren.dsa"));
    EXPECT_THAT(errorFor(in_, "wren.dsa"), HasSubstr("would be written over"));
    EXPECT_FALSE(HostFile::exists(dir_.path("staging")));
}

TEST_F(Converters, each_step_that_fails_has_its_message_and_leaves_the_archive_alone) {
    dir_.write("file", "");
    dir_.write("wren.dsa", "old");
    dir_.write("full/wren.dsa/x", "");
    struct {
        const char *part, *staging, *message;
    } const rows[] = {{kPart, "file/staging", "critical warning|@74-46@|cannot make the directory"},
                      {"tlu9p", "staging", "critical warning|@74-47@|"},
                      {kPart, "full/staging", "critical warning|@36-276@|cannot replace the file"}};
    for (const auto& row : rows) {
        addDefinition(makeDefinition("a", row.part));
        EXPECT_FALSE(HDFToDSAConverter(in_, "wren.hdf", dir_.path(row.staging)).writeDSA());
        EXPECT_THAT(log_.lines, ElementsAre(HasSubstr(row.message)));
        log_.lines.clear();
    }
    EXPECT_EQ(dir_.read("wren.dsa"), "old");
}

TEST_F(Converters, a_fixed_archive_is_made_of_a_seed_that_keeps_its_marks) {
    const std::string out = dir_.write("fixed.kar", "old");
    HPLPlatform seed;
    seed.setName("pebble");
    seed.setExpandable(true);
    seed.addDevice()->setName("fpga0");
    SimpleFixedKARCreator creator(out);
    EXPECT_FALSE(HostFile::exists(out));
    EXPECT_THAT(errorOf([&] { creator.writeKAR(); }), HasSubstr("seed platform is not set"));
    creator.setSeedPlatform(&seed);
    EXPECT_TRUE(creator.writeKAR());
    EXPECT_TRUE(seed.isUnifiedPlatform() && seed.isGeneratedByLink() && seed.isGeneratedBySwEmuLink() && !seed.isExpandable());
    EXPECT_THAT(getNames(out), ElementsAre("kar.json"));
    EXPECT_EQ(HostZip::getDigest(out), "");
    const auto platform = PlatformLoader(out, PlatformLoader::PreferAlternateJson).load();
    ASSERT_TRUE(platform);
    const HZEPHardwarePlatform& hardware = *platform->getHardwarePlatform();
    EXPECT_EQ(hardware.getName(), "pebble");
    EXPECT_TRUE(hardware.isUnifiedPlatform() && hardware.isGeneratedByLink() && hardware.isGeneratedBySwEmuLink() &&
                !hardware.isExpandable());

    SimpleFixedKARCreator nowhere(dir_.path("no/fixed.kar"));
    nowhere.setSeedPlatform(&seed);
    EXPECT_THAT(errorOf([&] { nowhere.writeKAR(); }), HasSubstr("no/fixed.kar"));
    SimpleFixedKARCreator onFolder(in_);
    EXPECT_TRUE(HostFile::isDir(in_));
}

TEST_F(Converters, files_are_gathered_into_an_archive_that_changes_whole) {
    dir_.write("in/b", std::string(100'000, 'b'));
    dir_.write("in/a", "a");
    dir_.write("in/deeper/c", "c");
    std::filesystem::create_symlink("a", dir_.path("in/link"));
    const std::unique_ptr<HostFwdIter<HostFile>> files(HostFile(in_).createFileIter());
    std::vector<std::string> paths;
    while (files->hasNext())
        paths.push_back(files->next().getPath());
    EXPECT_THAT(paths, ElementsAre(in_ + "/a", in_ + "/b"));
    EXPECT_NE(errorOf([this] { HostFile(dir_.path("no")).createFileIter(); }), "");

    std::filesystem::create_directory(dir_.path("out"));
    const std::string archive = dir_.path("out/x.kar");
    for (const FaultPlan::Action action : {FaultPlan::Fail, FaultPlan::KillNow}) {
        ZipBuilder(archive).add("old").write();
        const FaultSweep sweep(
            archive,
            [&] {
                HostZip zip(archive);
                zip.compress(paths[0], 34);
                zip.compress(paths[1], 36);
                zip.attachDigest();
                zip.commit();
            },
            [] {});
        EXPECT_GT(sweep.run(FaultPlan::All, action).old, 5u);
    }
    EXPECT_THAT(getNames(archive), ElementsAre("a", "b"));
    EXPECT_TRUE(HostZip::verifyDigest(archive));

    HostZip zip(archive);
    EXPECT_NE(errorOf([&] { zip.commit(); }), "");
    EXPECT_NE(errorOf([&] { zip.compress(paths[0], 35); }), "");
    zip.compress(dir_.write("c", "c"), 36);
    zip.commit();
    EXPECT_THAT(getNames(archive), ElementsAre("a", "b", "c"));
}

TEST(HardwareDefinitionText, tells_all_that_was_read_and_refuses_what_no_reader_takes) {
    const auto make = [](const std::string& top, const std::string& name, const std::string& value, std::size_t depth) {
        HostHwDef definition;
        definition.setHierTopModuleName(top);
        std::size_t parent = HostHwInstance::kNoParent;
        for (std::size_t i = 0; i < depth; ++i)
            parent = definition.addInstance({name, "m", parent, {{"n", value}}});
        return definition;
    };
    HostHwDef again;
    std::string fault;
    const HostHwDef odd = make("<&\"'>", "\xc3\xa9", " \t\r\n&#9;", 62);
    EXPECT_TRUE(HostHwDefUtils::parse(HostHwDefUtils::render(odd), again, fault)) << fault;
    EXPECT_EQ(again.getHierTopModuleName(), odd.getHierTopModuleName());
    EXPECT_TRUE(again.getInstances() == odd.getInstances());
    for (const HostHwDef& misfit : {make("", "i", "", 1), make("t", "", "", 1), make("t", "i", "\x01", 1), make("t", "i", "\xff", 1),
                                    make("t", "a/b", "", 1), make("t", "i", "", 64), make("t", "i", "", 100'000)})
        EXPECT_THAT(errorOf([&] { HostHwDefUtils::render(misfit); }), HasSubstr("hardware definition can't be told")) << misfit.getPart();
}
