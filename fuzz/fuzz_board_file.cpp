// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "FuzzInput.h"
#include "HostBoardDataManager.h"
#include "TempDir.h"

/// A board file is read or left out; the names of what was read can stand in lists.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    silence();
    static const TempDir directory;
    directory.write("x.board.json", std::string(reinterpret_cast<const char*>(data), size));
    HostBoardDataManager manager;
    manager.setBoardPartRepoPaths({directory.path()});
    for (const HostBoard* board : manager.getBoards()) {
        if (manager.getBoard(board->getId()) != board)
            std::abort();
        for (const HostBoardComponent* connector : board->getConnectorsList()) {
            if (connector->getName().empty() || connector->getName().find(' ') != std::string::npos)
                std::abort();
            board->getCompatibleConnectorsList(*connector);
        }
    }
    return 0;
}
