// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "Usage.h"

#include "HZEPNearNames.h"

#include <sstream>
#include <vector>

namespace {

constexpr std::size_t kColumns = 80;

/// A line that is too long goes on below the text that it began with, which in a line of two columns is the second one.
std::string wrap(std::string line, std::size_t secondColumn) {
    std::size_t indent = std::min(line.find_first_not_of(' '), line.size());
    if (indent == 2)
        indent = secondColumn;
    std::string wrapped;
    while (line.size() > kColumns) {
        std::size_t blank = line.rfind(' ', kColumns);
        if (blank == line.npos || line.find_first_not_of(' ') > blank || blank < indent)
            blank = line.find(' ', kColumns);
        if (blank == line.npos)
            break;
        wrapped += line.substr(0, blank) + "\n";
        line = std::string(indent, ' ') + line.substr(blank + 1);
    }
    return wrapped + line;
}

/// The innermost verb that was recognised.
const CLI::App& findVerb(const CLI::App& app) {
    const auto verbs = app.get_subcommands();
    return verbs.empty() ? app : findVerb(*verbs.back());
}

std::vector<std::string> getOptions(const CLI::App& app) {
    std::vector<std::string> names;
    for (const CLI::Option* option : app.get_options())
        for (const std::string& name : option->get_lnames())
            names.push_back("--" + name);
    return names;
}

} // namespace

std::string WrappingFormatter::make_help(const CLI::App* app, std::string name, CLI::AppFormatMode mode) const {
    std::istringstream lines(Formatter::make_help(app, std::move(name), mode));
    std::string help;
    for (std::string line; std::getline(lines, line);)
        help += wrap(std::move(line), get_column_width()) + "\n";
    return help;
}

std::string describeUsage(const CLI::App& app, const CLI::ParseError& error) {
    const CLI::App& verb = findVerb(app);
    const std::vector<std::string> left = app.remaining(true);
    if (left.empty())
        return error.what();
    const std::string& first = left.front();
    if (first.starts_with("-") && first.size() > 1) {
        std::vector<std::string> known = getOptions(verb);
        for (const std::string& common : getOptions(app))
            known.push_back(common);
        const std::string name = first.substr(0, first.find('='));
        return "there is no option \"" + name + '"' + HZEPNearNames::suggest(name, known, 1);
    }
    std::vector<std::string> known;
    for (const CLI::App* each : verb.get_subcommands({}))
        known.push_back(each->get_name());
    if (known.empty())
        return error.what();
    return "there is no verb \"" + first + '"' + HZEPNearNames::suggest(first, known, 1);
}

bool asksForJson(const CLI::App& app) {
    const CLI::Option* json = findVerb(app).get_option_no_throw("--json");
    return json && json->count() > 0;
}
