// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "HostFileUtils.h"
#include "HostMsgMgr.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <regex>
#include <set>

namespace {

TEST(Catalog, HoldsTheKeysThatTheCodeSendsAndNoOthers) {
    const std::regex key("\"(@[0-9]+-[0-9]+@[^\"]*)\"");
    std::set<std::string> sent;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(HZEP_SOURCE_DIR "/src")) {
        if (entry.path().extension() != ".cpp")
            continue;
        const std::string text = HostFileUtils::readFile(entry.path());
        for (std::sregex_iterator at(text.begin(), text.end(), key), end; at != end; ++at)
            sent.insert((*at)[1]);
    }
    EXPECT_THAT(HostMsgMgr::getCatalogKeys(), testing::ElementsAreArray(sent));
}

} // namespace
