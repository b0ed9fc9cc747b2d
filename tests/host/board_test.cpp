// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "MessageLog.h"
#include "TempDir.h"

#include "HostBoardDataManager.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::string boardText(const std::string& id, const std::string& connectors = "") {
    return R"({"boardFile": 1, "id": ")" + id + R"(", "connectors": [)" + connectors + "]}";
}

std::vector<std::string> idsOf(const HostBoardDataManager& manager) {
    std::vector<std::string> ids;
    for (const HostBoard* board : manager.getBoards())
        ids.push_back(board->getId());
    return ids;
}

std::vector<std::string> namesOf(const std::vector<const HostBoardComponent*>& connectors) {
    std::vector<std::string> names;
    for (const HostBoardComponent* connector : connectors)
        names.push_back(connector->getName());
    return names;
}

TEST(Board, IsReadWithItsConnectorsAndWhatFitsIntoThem) {
    MessageLog log;
    HostBoardDataManager manager;
    EXPECT_EQ(manager.getBoard("kestrel"), nullptr);
    manager.setBoardPartRepoPaths({HZEP_SOURCE_DIR "/examples/boards"});
    const HostBoard* board = manager.getBoard("kestrel");
    ASSERT_TRUE(board);
    EXPECT_EQ(board->getName(), "kestrel");
    EXPECT_EQ(board->getDisplayName(), "Kestrel K200 data-centre card");
    EXPECT_EQ(board->getVendor() + " " + board->getVersion(), "norvane.example 2.1");
    const auto connectors = board->getConnectorsList();
    ASSERT_THAT(namesOf(connectors), ElementsAre("ddr4_dimm0", "ddr4_dimm1", "ddr4_dimm2", "ddr4_dimm3", "qsfp0"));
    EXPECT_TRUE(connectors[0]->isDIMMConnector() && connectors[0]->isConnected() && connectors[0]->isLocked());
    EXPECT_EQ(connectors[0]->getConnectedDisplayName(), "16 GB registered DIMM");
    EXPECT_TRUE(connectors[1]->isConnected() && !connectors[1]->isLocked());
    EXPECT_FALSE(connectors[4]->isDIMMConnector() || connectors[4]->isConnected());
    EXPECT_THAT(namesOf(board->getCompatibleConnectorsList(*connectors[0])), ElementsAre("rdimm_16g", "rdimm_32g", "slot_probe"));
    EXPECT_THAT(namesOf(board->getCompatibleConnectorsList(*connectors[1])),
                ElementsAre("rdimm_16g", "rdimm_32g", "slot_probe", "nvdimm_16g"));
    EXPECT_THAT(board->getCompatibleConnectorsList(*connectors[4]), IsEmpty());
    EXPECT_EQ(manager.getBoard("Kestrel"), nullptr);
    EXPECT_THAT(log.lines, IsEmpty());
}

TEST(Board, FilesAreReadOnceUntilPathsAreSet) {
    TempDir dir;
    dir.write("a.board.json", boardText("a"));
    HostBoardDataManager manager;
    manager.setBoardPartRepoPaths({dir.path()});
    EXPECT_THAT(idsOf(manager), ElementsAre("a"));
    dir.write("a.board.json", boardText("b"));
    EXPECT_THAT(idsOf(manager), ElementsAre("a"));
    manager.setBoardPartRepoPaths({dir.path()});
    EXPECT_THAT(idsOf(manager), ElementsAre("b"));
    EXPECT_THAT(manager.getBoardPartRepoPaths(), ElementsAre(dir.path()));
}

TEST(Board, OneBadFileIsToldWithItsFaultAndTheOthersAreFound) {
    const std::string connector = R"({"name": "c", "type": "DIMM"})";
    const std::pair<std::string, std::string> faults[] = {
        {"{\n\"boardFile\": 1,\n}", "line 3: Missing a name for object member."},
        {"\"\xff\"", "line 1: Invalid encoding in string."},
        {"[1]", "the document must be an object"},
        {R"({"id": "x"})", "\"boardFile\" must be a whole number"},
        {R"({"boardFile": 2})", "\"boardFile\" must be 1"},
        {R"({"boardFile": 1})", "\"id\" must be a text"},
        {boardText("a b"), "\"id\" must be a text without blanks, and not empty"},
        {R"({"boardFile": 1, "id": "x", "vendor": "\u001b[2J"})", "\"vendor\" must be a text without control characters"},
        {R"({"boardFile": 1, "id": "x", "connectors": {}})", "\"connectors\" must be a list"},
        {boardText("x", "1"), "\"connectors[0]\" must be an object"},
        {boardText("x", connector + R"(, {"name": "d"})"), "\"connectors[1].type\" must be a text"},
        {boardText("x", connector + "," + connector), "\"connectors[1].name\" must be unlike the names of the other connectors"},
        {boardText("x", R"({"name": "c", "type": "", "accepts": ["a", 1]})"), "\"connectors[0].accepts[1]\" must be a text"},
        {boardText("x", R"({"name": "c", "type": "", "locked": "true"})"), "\"connectors[0].locked\" must be true or false"},
        {boardText("x", R"({"name": "c", "type": "", "connectedName": ""})"),
         "\"connectors[0].connectedName\" must be a text without blanks, and not empty"},
        {std::string(900000, '['), "line 1: Invalid value."},
    };
    for (const auto& [text, fault] : faults) {
        TempDir dir;
        const std::string bad = dir.write("b.board.json", text);
        dir.write("a/a.board.json", boardText("a"));
        dir.write("c.board.json", boardText("c"));
        MessageLog log;
        HostBoardDataManager manager;
        manager.setBoardPartRepoPaths({dir.path()});
        EXPECT_THAT(idsOf(manager), ElementsAre("a", "c"));
        EXPECT_THAT(log.lines, ElementsAre("warning|@75-1@%s%s|" + bad + "|" + fault));
    }
}

TEST(Board, SizesAndDepthsHaveLimits) {
    TempDir dir;
    std::string text = boardText("limit");
    text.resize(HostBoardDataManager::kMaxFileSize, ' ');
    dir.write("limit.board.json", text);
    const std::string large = dir.write("past.board.json", boardText("past") + std::string(HostBoardDataManager::kMaxFileSize, ' '));
    dir.write("1/2/3/4/5/6/deep.board.json", boardText("deep"));
    dir.write("1/2/3/4/5/6/7/deeper.board.json", boardText("deeper"));
    dir.write("other.json", "none of ours");
    std::filesystem::create_directory(dir.path("a_directory.board.json"));
    std::filesystem::create_symlink("nowhere", dir.path("dangling.board.json"));
    std::filesystem::create_directory_symlink("..", dir.path("1/up"));
    MessageLog log;
    HostBoardDataManager manager;
    manager.setBoardPartRepoPaths({dir.path(), dir.path("1/2")});
    EXPECT_THAT(idsOf(manager), ElementsAre("deep", "limit"));
    EXPECT_THAT(log.lines, ElementsAre("warning|@75-1@%s%s|" + large + "|cannot read the file '" + large +
                                       "': larger than the limit of 1048576 bytes"));
}

TEST(Board, NoMoreFilesAreReadThanTheLimit) {
    TempDir dir;
    for (std::size_t i = 0; i < HostBoardDataManager::kMaxFiles; ++i)
        dir.write("b" + std::to_string(i) + ".board.json", boardText("b" + std::to_string(i)));
    const std::string past = dir.write("past.board.json", boardText("past"));
    dir.write("z/past_too.board.json", boardText("past_too"));
    MessageLog log;
    HostBoardDataManager manager;
    manager.setBoardPartRepoPaths({dir.path()});
    EXPECT_EQ(manager.getBoards().size(), HostBoardDataManager::kMaxFiles);
    EXPECT_THAT(log.lines, ElementsAre("warning|@75-4@%s%s|" + past + "|4000"));
}

TEST(Board, OfTwoBoardsOfAnIdTheFirstCounts) {
    TempDir dir;
    const std::string first = dir.write("one/x.board.json", boardText("x"));
    const std::string second = dir.write("two/x.board.json", boardText("x"));
    MessageLog log;
    HostBoardDataManager manager;
    manager.setBoardPartRepoPaths({dir.path("none"), dir.path("two"), dir.path("one")});
    EXPECT_EQ(manager.getBoard("x")->getFile(), second);
    EXPECT_THAT(log.lines, ElementsAre("warning|@75-2@%s%s|" + dir.path("none") + "|No such file or directory",
                                       "warning|@75-3@%s%s%s|" + first + "|x|" + second));
}

} // namespace
