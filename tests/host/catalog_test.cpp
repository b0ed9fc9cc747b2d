// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "HostFileUtils.h"
#include "HostMsgMgr.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <string>

namespace {

/// Adds the literals that begin as a key does, "@74-60@".
void collectKeys(const std::string& text, std::set<std::string>& keys) {
    for (std::size_t at = text.find("\"@"); at != std::string::npos; at = text.find("\"@", at + 1)) {
        const std::string literal = text.substr(at + 1, text.find('"', at + 1) - at - 1);
        const std::size_t numbers = literal.find_first_not_of("0123456789-", 1);
        if (numbers != std::string::npos && numbers > 1 && literal[numbers] == '@')
            keys.insert(literal);
    }
}

TEST(Catalog, HoldsTheKeysThatTheCodeSendsAndNoOthers) {
    std::set<std::string> sent;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(HZEP_SOURCE_DIR "/src")) {
        if (entry.path().extension() != ".cpp")
            continue;
        collectKeys(HostFileUtils::readFile(entry.path()), sent);
    }
    EXPECT_THAT(HostMsgMgr::getCatalogKeys(), testing::ElementsAreArray(sent));
}

} // namespace
