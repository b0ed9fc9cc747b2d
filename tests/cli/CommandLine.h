// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#pragma once

#include <string>

/// What one command left behind.
struct CommandResult {
    int status;
    std::string out;
    std::string err;
};

/// Runs a shell command in a directory with hzep on the path; killed, with status 124, after 120 seconds.
CommandResult runCommand(const std::string& directory, const std::string& command);

/// A scratch directory of this process with the examples packed in it, made on first call and removed at exit.
const std::string& getExamples();

/// The text in single quotes for the shell.
std::string quote(const std::string& text);
