// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HostBoard.h"
#include "HostExport.h"

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

/// The boards that are described by files "*.board.json" below some directories, the repository paths. The first question reads them
/// all; later ones are answered from what was read until paths are set again, which is also how files are read afresh.
///
/// Nothing raises for a bad file or directory: each is told in one message and left out, the others are found. Of two boards of one id
/// the first counts: in the order of the paths, then in byte order of the names within a directory. One object belongs to one thread.
class HOST_EXPORT HostBoardDataManager {
public:
    /// Largest board file that is read, in bytes; levels of directories below a path; files that are read altogether.
    static constexpr std::size_t kMaxFileSize = 1 << 20;
    static constexpr std::size_t kMaxDepth = 6;
    static constexpr std::size_t kMaxFiles = 4000;

    HostBoardDataManager();
    ~HostBoardDataManager();
    HostBoardDataManager(const HostBoardDataManager&) = delete;
    HostBoardDataManager& operator=(const HostBoardDataManager&) = delete;

    /// Ends the life of all boards handed out.
    void setBoardPartRepoPaths(const std::vector<std::string>& paths);
    const std::vector<std::string>& getBoardPartRepoPaths() const { return paths_; }

    /// The board of exactly this id, null when no file describes it. It lives until paths are set.
    const HostBoard* getBoard(const std::string& id) const;

    /// All boards, in the order told above.
    std::vector<const HostBoard*> getBoards() const;

private:
    struct Catalog;
    const Catalog& catalog_() const;

    std::vector<std::string> paths_;
    mutable std::unique_ptr<Catalog> read_;
};
