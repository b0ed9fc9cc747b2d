// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "Table.h"
#include "Verbs.h"

#include "NativeKeyService.h"

#include <memory>

using zep::platform::NativeKeyService;

namespace {

struct Options {
    std::string path;
    bool isJson = false;
};

void listKeys(Session& session, const Options& options) {
    const NativeKeyService service;
    auto loader = session.open(options.path);
    if (options.isJson) {
        session.out() << service.getAsJsonStr(&loader);
        return;
    }
    Table table({"KEY"});
    for (const std::string& key : service.get(&loader))
        table.add({key});
    table.print(session.out(), Session::isTerminal());
}

} // namespace

void addKeys(CLI::App& app, Session& session) {
    auto options = std::make_shared<Options>();
    CLI::App* verb = app.add_subcommand("keys", "List the key paths that a platform's document has");
    verb->add_option("PLATFORM", options->path, "A platform file (.zpfm), an archive (.dsa, .kar) or a software file (.spfm)")->required();
    verb->add_flag("--json", options->isJson, "One JSON document in place of lines");
    verb->footer("'[]' stands for every element of a list; 'hzep get' wants one of them, as in 'files[0].name'.\n"
                 "Example: hzep keys card/card.zpfm");
    verb->callback([options, &session] { listKeys(session, *options); });
}
