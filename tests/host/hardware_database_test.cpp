// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HostErrors.h"
#include "HostHwDefUtils.h"
#include "HostHwManager.h"
#include "TempDir.h"
#include "ZipBuilder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

namespace {

const char kShell[] = R"(<hardwareDefinition top="shell" part="p-1">
  <instance name="mem" module="ddr4">
    <attribute name="WIDTH" value="64"/>
    <note xmlns="urn:else"><instance name="no" module="no"/></note>
    <instance name="phy" module="ddr4_phy"/>
  </instance>
  <instance name="mem/x" module="m"/>
</hardwareDefinition>)";

const char kSound[] = R"(<hardwareDefinition top="shell"><instance name="mem" module="ddr4"><attribute name="WIDTH" value="64"/>
  <x:other xmlns:x="urn:else"><instance name="no" module="no"/></x:other><instance name="phy" module="ddr4_phy"/></instance>
  <instance name="region" module="box"/></hardwareDefinition>)";
const char kModule[] = R"(<hardwareDefinition top="rm"><instance name="core" module="alu"/></hardwareDefinition>)";

class HardwareDatabase : public ::testing::Test {
protected:
    ~HardwareDatabase() override {
        for (const std::string& name : HostHwManager::getHardwareDbNames())
            HostHwManager::closeHardwareDb(name);
    }
    HostHwDb* create(const std::string& archive, const std::string& name) {
        return HostHwManager::createHardwareDb(HostHwManager::openDefFile(archive, false, false, ""), archive, true, true, name, 1, false,
                                               "", false);
    }
    TempDir dir_;
    const std::string archive_ = ZipBuilder(dir_.path("s.kar")).add("sysdef.xml", kModule).add("hwdef.xml", kSound).write();
    const std::string module_ = ZipBuilder(dir_.path("m.kar")).add("sysdef.xml", kModule).write();
};

} // namespace

TEST_F(HardwareDatabase, is_made_of_a_definition_and_found_by_name) {
    HostHwDb* first = create(archive_, "");
    ASSERT_TRUE(first);
    EXPECT_EQ(first->getName(), "shell");
    EXPECT_EQ(first->getPlatformFile(), archive_);
    EXPECT_EQ(first->getInstanceCount(), 3u);
    EXPECT_EQ(first->findInstance("mem")->attributes.at("WIDTH"), "64");
    EXPECT_EQ(first->findInstance("mem/phy")->module, "ddr4_phy");
    EXPECT_EQ(first->getDefinition().getPath(1), "mem/phy");
    for (const char* path : {"", "mem/", "mem/no", "phy", "mem/phy/x", "me", "/mem"})
        EXPECT_FALSE(first->findInstance(path)) << path;

    HostHwDb* second = create(archive_, "");
    EXPECT_EQ(second->getName(), "shell_1");
    EXPECT_EQ(HostHwManager::createHardwareDbFromHDF(HostHwDefUtils::getHDF(module_, false, ""), 1, false, "", "mine", false, false, false,
                                                     "", false)
                  ->getPlatformFile(),
              module_);
    EXPECT_FALSE(create(archive_, "mine"));
    EXPECT_THAT(HostHwManager::getHardwareDbNames(), ElementsAre("mine", "shell", "shell_1"));
    EXPECT_EQ(HostHwManager::getHardwareDb("shell", false), first);
    EXPECT_TRUE(HostHwManager::closeHardwareDb("shell"));
    EXPECT_FALSE(HostHwManager::closeHardwareDb("shell"));
    EXPECT_FALSE(HostHwManager::getHardwareDb("shell", false));
}

TEST_F(HardwareDatabase, of_a_static_platform_holds_its_modules_beneath_their_paths) {
    HostHwDb* database =
        HostHwManager::createHardwareDb(archive_, {{"region", module_}, {"mem/phy", module_}}, nullptr, false, true, "st", false);
    ASSERT_TRUE(database);
    EXPECT_EQ(database->getInstanceCount(), 5u);
    EXPECT_EQ(database->findInstance("region")->module, "box");
    EXPECT_EQ(database->findInstance("region/core")->module, "alu");
    EXPECT_EQ(database->findInstance("mem/phy/core")->module, "alu");
    EXPECT_FALSE(database->findInstance("mem/core"));
    EXPECT_EQ(database->getModules().at("region").file, module_);
    EXPECT_FALSE(HostHwManager::createHardwareDb(archive_, {{"region", dir_.path("none")}}, nullptr, false, true, "x", false));
}

TEST_F(HardwareDatabase, failures_answer_null) {
    const std::string empty = ZipBuilder(dir_.path("e.kar")).add("kar.json", "{}").write();
    const std::string broken = ZipBuilder(dir_.path("b.kar")).add("hwdef.xml", "<hardwareDefinition top='a'>").write();
    for (const std::string& file : {dir_.path("none"), dir_.path(), empty, broken}) {
        EXPECT_FALSE(HostHwManager::openDefFile(file, false, false, "")) << file;
        EXPECT_FALSE(HostHwDefUtils::getHDF(file, false, "")) << file;
        EXPECT_FALSE(create(file, "")) << file;
        EXPECT_FALSE(HostHwManager::createHardwareDb(file, {}, nullptr, false, true, "n", false)) << file;
    }
    HostHwDef* opened = HostHwManager::openDefFile(archive_, false, false, "");
    EXPECT_TRUE(HostHwManager::closeDefFile(opened));
    EXPECT_FALSE(HostHwManager::closeDefFile(opened));
    EXPECT_FALSE(HostHwManager::createHardwareDb(opened, archive_, true, true, "", 1, false, "", false));
    EXPECT_FALSE(HostHwManager::createHardwareDbFromHDF(nullptr, 1, false, "", "n", false, false, false, "", false));
    EXPECT_THAT(HostHwManager::getHardwareDbNames(), IsEmpty());
}

TEST(HardwareDefinition, text_that_is_none_says_why_and_where) {
    const auto nested = [](std::size_t depth) {
        std::string text = "<hardwareDefinition top='t'>";
        for (std::size_t i = 1; i < depth; ++i)
            text += "<instance name='i' module='m'>";
        for (std::size_t i = 1; i < depth; ++i)
            text += "</instance>";
        return text + "</hardwareDefinition>";
    };
    const std::pair<std::string, const char*> cases[] = {
        {"", "line"},
        {"no xml", "line 1"},
        {"<other/>", "expected the root element"},
        {"<hardwareDefinition xmlns='urn:x' top='t'/>", "expected the root element"},
        {"<hardwareDefinition/>", "'top' is missing"},
        {"<hardwareDefinition top='t'>\n<instance name='a'/></hardwareDefinition>", "line 2: the attribute 'module'"},
        {kShell, "holds a '/'"},
        {"<hardwareDefinition top='t'></hardwareDefinition><x/>", "line 1"},
        {nested(HostHwDefUtils::kMaxDepth + 1), "nested deeper"},
        {nested(100000), "nested deeper"},
        {"<!DOCTYPE a [<!ENTITY e SYSTEM 'file:///etc/passwd'>]><hardwareDefinition top='&e;'/>", "document type"},
    };
    for (const auto& [text, cause] : cases) {
        HostHwDef definition;
        std::string fault;
        EXPECT_FALSE(HostHwDefUtils::parse(text, definition, fault)) << cause;
        EXPECT_THAT(fault, HasSubstr(cause));
        EXPECT_EQ(definition.getHierTopModuleName(), "");
    }
    HostHwDef definition;
    std::string fault;
    EXPECT_TRUE(HostHwDefUtils::parse(nested(HostHwDefUtils::kMaxDepth), definition, fault)) << fault;
    EXPECT_EQ(definition.getInstances().size(), HostHwDefUtils::kMaxDepth - 1);
    EXPECT_TRUE(HostHwDefUtils::parse("<hardwareDefinition top='a&amp;&#98;'/>", definition, fault)) << fault;
    EXPECT_EQ(definition.getHierTopModuleName(), "a&b");
    EXPECT_THROW(definition.addInstance({"a", "b", 5, {}}), HostAlgException);
}
