// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "ListManager.h"
#include "PolicyMessages.h"
#include "Progress.h"
#include "Table.h"
#include "Verbs.h"

#include "HZEPJSONText.h"
#include "HostFile.h"
#include "HostPathUtils.h"
#include "NativeCatalogService.h"
#include "NativePlatformRepoService.h"

#include <algorithm>
#include <memory>
#include <utility>

using boost::property_tree::ptree;

namespace {

struct Options {
    std::vector<std::string> dirs;
    bool noDefaults = false;
    bool all = false;
    bool isJson = false;
    bool byManager = false;
};

std::vector<std::string> findFiles(const Options& options) {
    for (const std::string& dir : options.dirs)
        if (dir.find(':') != dir.npos)
            throw Unusable(dir + ": a directory with \":\" in its name can't be searched");
    const zep::platform::NativePlatformRepoService repository;
    std::vector<std::string> files;
    const std::string path = repository.getPlatformRepoPath(options.dirs, !options.noDefaults);
    repository.getZpfmFiles("", path, files);
    if (files.empty())
        Session::say("warning", path.empty() ? "no directory to search" : "no platform files in " + path);
    return files;
}

/// The catalog's list document, with a word for each platform that has to be left out; `isBroken` tells that there are such.
ptree readPlatforms(Session& session, const Options& options, bool& isBroken) {
    const std::vector<std::string> files = findFiles(options);
    const zep::platform::NativeCatalogService catalog;
    const PolicyMessages policy;
    ptree root;
    ptree& platforms = root.add_child("platforms", ptree());
    Progress progress(files.size(), "platforms");
    for (const std::string& file : files) {
        std::string fault;
        try {
            if (!HostFile::isRegularFile(file))
                throw Unusable(file + ": is " + HostPathUtils::describe(file) + ", not a platform file");
            auto loader = session.open(file);
            if (const std::string text = catalog.getAsJsonStr(&loader, options.all, false); !text.empty())
                HZEPJSONText::read(text, platforms.push_back({"", ptree()})->second);
        } catch (const Unusable& error) {
            fault = error.what();
        } catch (const std::exception& error) {
            fault = file + ": " + error.what();
        }
        progress.advance();
        if (fault.empty())
            continue;
        isBroken = true;
        progress.clear();
        Session::say("error", fault);
    }
    return root;
}

void printTable(Session& session, const ptree& platforms, bool all) {
    std::vector<std::pair<std::string, std::string>> columns = {
        {"NAME", "baseName"}, {"VERSION", "version"}, {"TYPE", "type"}, {"STATE", "platformState"}};
    if (all)
        columns.insert(columns.end(), {{"PART", "partArchitecture"}, {"WARRANTY", "warranty"}});
    columns.emplace_back("FILE", "platformFile");

    std::vector<std::string> heading;
    for (const auto& [title, key] : columns)
        heading.push_back(title);
    std::vector<std::vector<std::string>> rows;
    for (const auto& [unused, platform] : platforms) {
        std::vector<std::string>& row = rows.emplace_back();
        for (const auto& [title, key] : columns) {
            const std::string value = platform.get(key, "");
            row.push_back(value.empty() ? "-" : value);
        }
    }
    std::sort(rows.begin(), rows.end());
    Table table(heading);
    for (std::vector<std::string>& row : rows)
        table.add(std::move(row));
    table.print(session.out(), Session::isTerminal());
}

void list(Session& session, const Options& options) {
    for (const std::string& dir : options.dirs)
        if (!HostFile::isDir(dir))
            throw Unusable(dir + ": is no directory");
    if (options.byManager)
        return listByManager(session, options.dirs, !options.noDefaults, options.isJson);
    bool isBroken = false;
    const ptree root = readPlatforms(session, options, isBroken);
    if (options.isJson)
        HZEPJSONText::write(session.out(), root);
    else
        printTable(session, root.get_child("platforms"), options.all);
    session.finish();
    if (isBroken && root.get_child("platforms").empty())
        throw Answered();
}

} // namespace

void addList(CLI::App& app, Session& session) {
    auto options = std::make_shared<Options>();
    CLI::App* verb = app.add_subcommand("list", "List the platforms in directories and in the default directories");
    verb->add_option("DIR", options->dirs, "Directories to search, two levels deep");
    verb->add_flag("--no-defaults", options->noDefaults, "Leave out /opt/tolvan/platforms and the platforms of the install roots");
    verb->add_flag("--all", options->all, "Part and warranty as well; with --json the long documents");
    verb->add_flag("--json", options->isJson, "The catalog document in place of a table");
    verb->add_flag("--manager", options->byManager, "What the platform manager finds: three levels deep, loose archives too, newest first")
        ->excludes("--all");
    verb->footer(
        "Columns are aligned on a terminal, else separated by one tab. A platform that can't be read is told on stderr and left out.\n"
        "Exit status: 1 when there are platforms and none of them can be read.\n"
        "Example: hzep list cards --no-defaults");
    verb->callback([options, &session] { list(session, *options); });
}
