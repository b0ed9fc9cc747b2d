// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "HostFileUtils.h"
#include "HostMsgMgr.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <set>

namespace {

/// Every text literal of a source that has the form of a key: "@74-60@%s".
void collectKeys(const std::string& source, std::set<std::string>& keys) {
    for (std::size_t at = source.find("\"@"); at != std::string::npos; at = source.find("\"@", at + 1)) {
        const std::string literal = source.substr(at + 1, source.find('"', at + 1) - at - 1);
        if (literal.find('-') != std::string::npos && literal.find('@', 1) != std::string::npos)
            keys.insert(literal);
    }
}

TEST(Catalog, HoldsTheKeysThatTheCodeSendsAndNoOthers) {
    std::set<std::string> sent;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(HZEP_SOURCE_DIR "/src")) {
        if (entry.path().extension() == ".cpp")
            collectKeys(HostFileUtils::readFile(entry.path()), sent);
    }
    EXPECT_THAT(HostMsgMgr::getCatalogKeys(), testing::ElementsAreArray(sent));
}

} // namespace
