// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#pragma once

#include <CLI/CLI.hpp>

#include <string>

/// Help whose lines break at words.
class WrappingFormatter : public CLI::Formatter {
public:
    std::string make_help(const CLI::App* app, std::string name, CLI::AppFormatMode mode) const override;
};

/// What is wrong with a command line that the parser refused; a verb or option that there isn't is told with what may have been meant.
std::string describeUsage(const CLI::App& app, const CLI::ParseError& error);

/// The command line asks for JSON.
bool asksForJson(const CLI::App& app);
