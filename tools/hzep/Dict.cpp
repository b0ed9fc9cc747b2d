// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "KeyPath.h"
#include "Table.h"
#include "Verbs.h"

#include "HZEPJSONText.h"
#include "HZEPMetadataLint.h"
#include "HostText.h"
#include "NativeDictService.h"
#include "NativeObjectService.h"

#include <boost/property_tree/ptree.hpp>
#include <map>
#include <memory>

using boost::property_tree::ptree;
using zep::platform::NativeDictService;
using zep::platform::NativeObjectService;

namespace {

struct Options {
    std::string path;
    std::string key;
    bool isFiltered = false;
    bool isJson = false;
};

std::map<std::string, std::string> getDict(Session& session, const Options& options) {
    const NativeDictService service;
    std::map<std::string, std::string> dict;
    bool ok = true;
    session.ask(options.path, [&] {
        if (options.isFiltered)
            dict = service.getFilteredDict(options.path, options.key);
        if (dict.empty()) {
            ok = false;
            auto all = service.getAsDict(options.path, options.key, ok);
            if (!options.isFiltered)
                dict = std::move(all);
        }
        return true;
    });
    if (!ok)
        throw Negative(describeMissingKey(options.path, NativeObjectService().getAsPropertyTree(options.path), options.key));
    return dict;
}

void printDict(Session& session, const Options& options) {
    const auto dict = getDict(session, options);
    if (options.isJson) {
        ptree document;
        for (const auto& [key, value] : dict)
            document.push_back({key, ptree(value)});
        HZEPJSONText::write(session.out(), document);
    } else if (Session::isTerminal()) {
        Table table({"KEY", "VALUE"});
        for (const auto& [key, value] : dict)
            table.add({key, value});
        table.print(session.out(), true);
    } else {
        for (const auto& [key, value] : dict)
            session.out() << HostText::makePrintable(key) << " = " << HostText::makePrintable(value) << '\n';
    }
}

} // namespace

void addDict(CLI::App& app, Session& session) {
    auto options = std::make_shared<Options>();
    CLI::App* verb = app.add_subcommand("dict", "Print a platform's document, or a branch of it, as flat lines 'key = value'");
    verb->add_option("PLATFORM", options->path, "A platform file (.zpfm), an archive (.dsa, .kar) or a software file (.spfm)")->required();
    verb->add_option("KEYPATH", options->key, "A branch; its path stands in front of every key");
    verb->add_flag("--filter", options->isFiltered, "Only identities of partitions and the vector engine, files and id codes");
    verb->add_flag("--json", options->isJson, "One JSON object in place of lines");
    verb->footer("The keys of an archive or a software file begin at the part that it describes, and so does KEYPATH.\n"
                 "Exit status: 1 when there is no such path.\n"
                 "Example: hzep dict card/hw/card.kar --filter");
    verb->callback([options, &session] { printDict(session, *options); });
}
