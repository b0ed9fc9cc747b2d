// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "PolicyMessages.h"
#include "Repository.h"
#include "Table.h"
#include "Verbs.h"

#include "HZEPJSONText.h"
#include "NativeCatalogService.h"

#include <memory>

using boost::property_tree::ptree;

namespace {

struct Options {
    std::string platform;
    bool all = false;
    bool isJson = false;
};

void addRows(Table& table, const ptree& node, const std::string& prefix) {
    std::size_t index = 0;
    for (const auto& [key, child] : node) {
        const std::string path = key.empty() ? prefix + "[" + std::to_string(index++) + "]" : prefix.empty() ? key : prefix + "." + key;
        if (child.empty())
            table.add({path, child.data().empty() ? "-" : child.data()});
        else
            addRows(table, child, path);
    }
}

void inform(Session& session, const Options& options) {
    const std::string path = findPlatform(options.platform);
    auto loader = session.open(path);
    const PolicyMessages policy;
    std::string text;
    try {
        text = zep::platform::NativeCatalogService().getAsJsonStr(&loader, options.all, false);
    } catch (const std::exception& error) {
        throw Unusable(path + ": " + error.what());
    }
    if (text.empty())
        throw Negative(path + ": is hidden");
    if (options.isJson) {
        session.out() << text;
        return;
    }
    ptree document;
    HZEPJSONText::read(text, document);
    Table table({"KEY", "VALUE"});
    addRows(table, document, "");
    table.print(session.out(), Session::isTerminal());
}

} // namespace

void addInfo(CLI::App& app, Session& session) {
    auto options = std::make_shared<Options>();
    CLI::App* verb = app.add_subcommand("info", "Tell what a platform is, in a few lines");
    verb->add_option(
            "PLATFORM", options->platform,
            "A platform file (.zpfm), an archive (.dsa, .kar) or a software file (.spfm), or the name of a platform in the default "
            "directories")
        ->required();
    verb->add_flag("--all", options->all, "Files, part, clocks, partitions, emulation and warranty as well");
    verb->add_flag("--json", options->isJson, "The catalog document in place of lines");
    verb->footer("Columns are aligned on a terminal, else separated by one tab.\n"
                 "Example: hzep info card/card.zpfm --all");
    verb->callback([options, &session] { inform(session, *options); });
}
