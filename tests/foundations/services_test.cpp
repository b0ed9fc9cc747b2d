// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "HZEPEnv.h"
#include "HZEPPfmFileTypes.h"
#include "HZEPTmpDirObject.h"
#include "HostEnv.h"
#include "HostErrors.h"
#include "HostFile.h"
#include "HostMsgMgr.h"
#include "TempDir.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

// Points the host's temporary directory into the test's own.
class TmpDirObject : public testing::Test {
protected:
    TmpDirObject() : before_(HostEnv::getHostTmpDir()) { HostEnv::setHostTmpDir(dir_.path()); }
    ~TmpDirObject() override { HostEnv::setHostTmpDir(before_); }

    TempDir dir_;

private:
    std::string before_;
};

// The answers are kept for the life of a process, so each question is asked in a process of its own.
struct Product {
    const char* root;
    bool unitTest;
    const char* name;
};

[[noreturn]] void exitWithProduct(const Product& product) {
    HostEnv::setHostAppRootList({product.root});
    ::unsetenv("GRADLE_UNIT_TEST");
    if (product.unitTest)
        ::setenv("GRADLE_UNIT_TEST", "", 1);
    std::string answer = HZEPEnv::getProductName();
    HostEnv::setHostAppRootList({"/opt/Ferro"});
    ::unsetenv("GRADLE_UNIT_TEST");
    if (HZEPEnv::getProductName() != answer || HZEPEnv::isRunningAsGradleUnitTest() != product.unitTest)
        answer += " at first";
    std::fprintf(stderr, "product: %s.\n", answer.c_str());
    std::_Exit(0);
}

} // namespace

TEST(EnvDeathTest, TheProductWordThatStandsLastInTheInstallRootWins) {
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    for (const Product& product : {
             Product{"/opt/Plome/Druvel", false, "druvel"},
             Product{"/opt/Druvel/Plome", false, "plome"},
             Product{"/opt/zep/2021.1/ZEP/x", false, "zep"},
             Product{"/opt/Ferro/zep", true, "ferro"},
             Product{"/opt/zep", true, "plome"},
             Product{"/opt/other", false, "unknown"},
             Product{"plome", false, "plome"},
         })
        EXPECT_EXIT(exitWithProduct(product), testing::ExitedWithCode(0), std::string("product: ") + product.name + "\\.\n")
            << product.root;
}

TEST_F(TmpDirObject, LivesAsLongAsItsDirectory) {
    std::string first;
    {
        HZEPTmpDirObject object;
        EXPECT_TRUE(object.empty());
        EXPECT_FALSE(object.exists());
        object.create("work");
        first = object.get();
        EXPECT_TRUE(object.exists());
        EXPECT_TRUE(std::filesystem::is_directory(first));
        std::ofstream(first + "/file") << "content";

        const HZEPTmpDirObject second("work");
        EXPECT_NE(second.get(), first) << "the name was taken";
        EXPECT_TRUE(second.exists());

        object.create("again");
        EXPECT_FALSE(std::filesystem::exists(first));
        first = object.get();
    }
    EXPECT_TRUE(std::filesystem::is_empty(dir_.path()));
}

TEST_F(TmpDirObject, ForgetsADirectoryThatIsGone) {
    HZEPTmpDirObject object("a/b");
    std::filesystem::remove_all(object.get());
    EXPECT_FALSE(object.exists());
    EXPECT_FALSE(object.empty());
    object.deleteTmpDir();
    EXPECT_TRUE(object.empty());

    const std::string file = dir_.write("file", "");
    EXPECT_THROW(object.create("file/below"), HostError);
    EXPECT_TRUE(object.empty());
}

TEST(Files, TellWhatTheyAre) {
    const TempDir dir;
    std::string told;
    for (const std::string& path : {dir.path(), dir.write("file", ""), dir.path("none")}) {
        const HostFile file(path);
        told += std::to_string(file.exists()) + std::to_string(file.isDir()) + std::to_string(file.isRegularFile()) + " ";
        EXPECT_EQ(file.getCanonicalName(), path);
    }
    EXPECT_EQ(told, "110 101 000 ");
}

TEST(PfmFileTypes, TheScriptHooksAreTheLastFileTypes) {
    const auto types = HZEPPfmFileTypes::getFileTypeMap();
    const auto hooks = HZEPPfmFileTypes::getTclFileTypeMap();
    ASSERT_EQ(types.size(), 71u);
    ASSERT_EQ(hooks.size(), 28u);
    for (const auto& [hook, name] : hooks) {
        EXPECT_EQ(types.at(static_cast<HZEPPfmFileTypes::FileType>(hook + 43)), name);
        EXPECT_EQ(HZEPPfmFileTypes::toTclFileType(name), hook);
    }
    for (const auto& [type, name] : types) {
        EXPECT_EQ(HZEPPfmFileTypes::toFileType(name), type);
        EXPECT_EQ(HZEPPfmFileTypes::toString(type), name);
    }
    EXPECT_EQ(HZEPPfmFileTypes::toFileType("DCP"), 0);
    EXPECT_EQ(HZEPPfmFileTypes::toFileType("HPFM"), 17);
    EXPECT_EQ(HZEPPfmFileTypes::toFileType("META_JSON"), 25);
    EXPECT_EQ(HZEPPfmFileTypes::toFileType("LINK_RUNTIME"), 42);
    EXPECT_EQ(HZEPPfmFileTypes::toFileType("IMPL_CONSTRS"), 70);
    EXPECT_EQ(HZEPPfmFileTypes::toFileType("dcp"), 71);
    EXPECT_EQ(HZEPPfmFileTypes::toTclFileType("DCP"), 28);
    EXPECT_EQ(HZEPPfmFileTypes::toString(HZEPPfmFileTypes::UNKNOWN_FILE_TYPE), "");
    EXPECT_EQ(HZEPPfmFileTypes::toString(HZEPPfmFileTypes::TclFileType::POST_OPT_TCL), "POST_OPT_TCL");
}
