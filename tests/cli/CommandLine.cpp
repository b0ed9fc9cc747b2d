// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "CommandLine.h"
#include "TempDir.h"

#include "HostFileUtils.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <sys/wait.h>

std::string quote(const std::string& text) {
    std::string quoted = "'";
    for (char c : text)
        quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return quoted + "'";
}

CommandResult runCommand(const std::string& directory, const std::string& command) {
    const TempDir said;
    const std::string program = std::filesystem::path(HZEP_PROGRAM).parent_path();
    const std::string script = "cd " + quote(directory) + " && PATH=" + quote(program) + ":\"$PATH\" SOURCE=" + quote(HZEP_SOURCE_DIR) +
                               " timeout 120 sh -c " + quote(command) + " >" + quote(said.path() + "/out") + " 2>" +
                               quote(said.path() + "/err") + " </dev/null";
    const int status = std::system(script.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status), HostFileUtils::readFile(said.path() + "/out"),
            HostFileUtils::readFile(said.path() + "/err")};
}

const std::string& getExamples() {
    static const TempDir directory;
    static const std::string path = [] {
        const CommandResult packed = runCommand(directory.path(), quote(HZEP_SOURCE_DIR "/tools/pack-examples") + " " +
                                                                      quote(HZEP_PROGRAM) + " " + quote(directory.path()));
        EXPECT_EQ(packed.status, 0) << packed.out << packed.err;
        return directory.path();
    }();
    return path;
}
