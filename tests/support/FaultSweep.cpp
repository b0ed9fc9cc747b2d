// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "FaultSweep.h"

#include "HostFileUtils.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <set>

namespace fs = std::filesystem;

namespace {

std::string read(const std::string& file) {
    return HostFileUtils::readFile(file, UINT64_MAX);
}

std::set<fs::path> listFolderOf(const std::string& file) {
    std::set<fs::path> paths;
    for (const auto& entry : fs::directory_iterator(fs::path(file).parent_path()))
        paths.insert(entry.path());
    return paths;
}

} // namespace

FaultSweep::FaultSweep(std::string file, std::function<void()> work, std::function<void()> check)
    : file_(std::move(file)), work_(std::move(work)), check_(std::move(check)) {}

FaultSweep::Count FaultSweep::run(unsigned kinds, FaultPlan::Action action) const {
    const std::set<fs::path> folder = listFolderOf(file_);
    const std::string before = read(file_);
    work_();
    const std::string after = read(file_);
    EXPECT_TRUE(before != after) << "nothing to do";

    Count count{0, 0};
    for (;;) {
        SCOPED_TRACE("call " + std::to_string(count.struck + 1));
        std::ofstream(file_, std::ios::binary | std::ios::trunc) << before;
        const FaultPlan::Outcome outcome = FaultPlan::run(kinds, count.struck + 1, action, work_);
        const std::string now = read(file_);
        EXPECT_TRUE(now == before || now == after);
        EXPECT_TRUE(!outcome.succeeded || now == after);
        check_();
        if (action == FaultPlan::Fail || !outcome.reached) {
            EXPECT_EQ(listFolderOf(file_), folder) << "something is left";
        }
        if (!outcome.reached) {
            EXPECT_TRUE(outcome.succeeded);
            return count;
        }
        ++count.struck;
        count.old += now == before;
    }
}
