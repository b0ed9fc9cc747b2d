// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HostBoardDataManager.h"

#include "BoardFile.h"
#include "HostErrors.h"
#include "HostFile.h"
#include "HostMsgMgr.h"

#include <algorithm>
#include <filesystem>
#include <unordered_set>

namespace fs = std::filesystem;

namespace {

void tell(const std::string& key, std::vector<std::string> args) {
    HostMsgMgr::getGlobal().send("platform", HostMsgMgr::Warning, key, std::move(args));
}

/// The board files below some directories; each directory is entered once, whatever links lead to it.
class Search {
public:
    const std::vector<std::string>& files() const { return files_; }

    void enter(const fs::path& directory, std::size_t depth) {
        if (full_ || !entered_.insert(HostFile::getCanonicalName(directory.string())).second)
            return;
        std::error_code error;
        std::vector<fs::directory_entry> entries;
        for (fs::directory_iterator at(directory, error), end; !error && at != end; at.increment(error))
            entries.push_back(*at);
        if (error)
            tell("@75-2@%s%s", {directory.string(), error.message()});
        std::sort(entries.begin(), entries.end());
        for (const fs::directory_entry& entry : entries) {
            std::error_code ignored;
            if (entry.is_directory(ignored)) {
                if (depth < HostBoardDataManager::kMaxDepth)
                    enter(entry.path(), depth + 1);
            } else if (entry.path().string().ends_with(".board.json") && entry.is_regular_file(ignored)) {
                take(entry.path().string());
            }
        }
    }

private:
    void take(std::string file) {
        if (files_.size() < HostBoardDataManager::kMaxFiles) {
            files_.push_back(std::move(file));
        } else if (!full_) {
            full_ = true;
            tell("@75-4@%s%s", {file, std::to_string(HostBoardDataManager::kMaxFiles)});
        }
    }

    std::vector<std::string> files_;
    std::unordered_set<std::string> entered_;
    bool full_ = false;
};

} // namespace

struct HostBoardDataManager::Catalog {
    std::vector<std::unique_ptr<const HostBoard>> boards;
    std::unordered_map<std::string, const HostBoard*> byId;
    HostBoard::Forms forms;

    void add(HostBoard::Data data) {
        const auto [known, isNew] = byId.try_emplace(data.id, nullptr);
        if (!isNew) {
            tell("@75-3@%s%s%s", {data.file, data.id, known->second->getFile()});
            return;
        }
        boards.push_back(std::make_unique<HostBoard>(std::move(data), forms));
        known->second = boards.back().get();
        for (const HostBoardComponent* connector : known->second->getConnectorsList())
            if (!connector->getForm().empty())
                forms[connector->getForm()].push_back(connector);
    }
};

HostBoardDataManager::HostBoardDataManager() = default;
HostBoardDataManager::~HostBoardDataManager() = default;

void HostBoardDataManager::setBoardPartRepoPaths(const std::vector<std::string>& paths) {
    paths_ = paths;
    read_.reset();
}

const HostBoard* HostBoardDataManager::getBoard(const std::string& id) const {
    const auto found = catalog_().byId.find(id);
    return found == catalog_().byId.end() ? nullptr : found->second;
}

std::vector<const HostBoard*> HostBoardDataManager::getBoards() const {
    std::vector<const HostBoard*> boards;
    for (const auto& board : catalog_().boards)
        boards.push_back(board.get());
    return boards;
}

const HostBoardDataManager::Catalog& HostBoardDataManager::catalog_() const {
    if (read_)
        return *read_;
    Search search;
    for (const std::string& path : paths_)
        search.enter(path, 0);
    auto catalog = std::make_unique<Catalog>();
    for (const std::string& file : search.files()) {
        try {
            HostBoard::Data data = board_file::read(file);
            data.file = file;
            catalog->add(std::move(data));
        } catch (const HostErrorBase& fault) {
            tell("@75-1@%s%s", {file, fault.what()});
        }
    }
    read_ = std::move(catalog);
    return *read_;
}
