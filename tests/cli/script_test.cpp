// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

// Every *.txt beside this file is a list of commands and what they must say:
//   $ COMMAND        run by sh in a folder of its own among the packed examples, hzep on the path, $SOURCE the source tree
//   TEXT             a line of standard output
//   ! TEXT           a line of standard error
//   ...              any lines of standard output; "! ..." the same for standard error
//   ? N              the exit status, 0 where it is not told
// A blank line or one that begins with "## " is a comment.

#include "CommandLine.h"
#include "TempDir.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <vector>

namespace {

struct Step {
    int line;
    std::string command;
    std::vector<std::string> out;
    std::vector<std::string> err;
    int status = 0;
};

std::vector<Step> readScript(const std::string& path) {
    std::ifstream in(path);
    std::vector<Step> steps;
    std::string line;
    for (int number = 1; std::getline(in, line); ++number) {
        if (line.starts_with("$ "))
            steps.push_back({number, line.substr(2), {}, {}});
        else if (line.empty() || line.starts_with("## "))
            continue;
        else if (line.starts_with("! "))
            steps.back().err.push_back(line.substr(2));
        else if (line.starts_with("? "))
            steps.back().status = std::stoi(line.substr(2));
        else
            steps.back().out.push_back(line);
    }
    return steps;
}

std::vector<std::string> splitLines(const std::string& text) {
    std::vector<std::string> lines;
    std::size_t at = 0;
    while (at < text.size()) {
        const std::size_t end = std::min(text.find('\n', at), text.size());
        lines.push_back(text.substr(at, end - at));
        at = end + 1;
    }
    return lines;
}

bool matches(const std::vector<std::string>& expected, std::size_t e, const std::vector<std::string>& actual, std::size_t a) {
    for (; e < expected.size(); ++e, ++a) {
        if (expected[e] == "...") {
            for (std::size_t next = a; next <= actual.size(); ++next)
                if (matches(expected, e + 1, actual, next))
                    return true;
            return false;
        }
        if (a >= actual.size() || expected[e] != actual[a])
            return false;
    }
    return a == actual.size();
}

std::vector<std::string> getScripts() {
    std::vector<std::string> scripts;
    for (const auto& entry : std::filesystem::directory_iterator(HZEP_SOURCE_DIR "/tests/cli"))
        if (entry.path().extension() == ".txt")
            scripts.push_back(entry.path().stem());
    return scripts;
}

class Script : public testing::TestWithParam<std::string> {};

TEST_P(Script, SaysWhatItMust) {
    const std::string path = HZEP_SOURCE_DIR "/tests/cli/" + GetParam() + ".txt";
    const std::vector<Step> steps = readScript(path);
    ASSERT_FALSE(steps.empty());
    // What a script leaves behind is no other one's.
    const TempDir directory;
    std::filesystem::copy(getExamples(), directory.path(), std::filesystem::copy_options::recursive);
    for (const Step& step : steps) {
        const CommandResult result = runCommand(directory.path(), step.command);
        const std::string place = path + ":" + std::to_string(step.line) + ": " + step.command + "\n";
        EXPECT_EQ(result.status, step.status) << place << result.err;
        EXPECT_TRUE(matches(step.out, 0, splitLines(result.out), 0)) << place << "standard output:\n" << result.out;
        EXPECT_TRUE(matches(step.err, 0, splitLines(result.err), 0)) << place << "standard error:\n" << result.err;
    }
}

INSTANTIATE_TEST_SUITE_P(All, Script, testing::ValuesIn(getScripts()), [](const auto& test) { return test.param; });

} // namespace
