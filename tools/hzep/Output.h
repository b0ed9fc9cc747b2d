// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#pragma once

#include <CLI/CLI.hpp>

#include <string>

/// Where a verb puts what it makes.
struct Output {
    std::string path;
    bool isForced = false;

    bool isStandardOutput() const { return path == "-"; }
    /// A folder is named: by a separator at its end, or because it is there.
    bool isFolder() const;
    /// The path of the file, which is one named `name` in a folder. Makes the folder; raises Unusable when something stands at the path
    /// that may not be replaced.
    std::string claimFile(const std::string& name) const;
};

/// Adds -o/--output and --force to the verb. `what` says what goes where.
CLI::Option* addOutput(CLI::App* verb, Output& output, const std::string& what);
void addForce(CLI::App* verb, bool& isForced);

/// Raises Unusable when something stands at the path, unless it is a file that may be replaced.
void ensureFree(const std::string& path, bool isForced);
