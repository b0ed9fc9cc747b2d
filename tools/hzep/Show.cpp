// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "Verbs.h"

#include <memory>

void addShow(CLI::App& app, Session& session) {
    struct Options {
        std::string path;
        bool isShort = false;
    };
    auto options = std::make_shared<Options>();
    CLI::App* verb = app.add_subcommand("show", "Print the JSON document of a platform");
    verb->add_option("PLATFORM", options->path, "A platform file (.zpfm), an archive (.dsa, .kar) or a software file (.spfm)")->required();
    verb->add_flag("--short", options->isShort, "Only its unique name, file and description");
    verb->footer("Example: hzep show card/card.zpfm");
    verb->callback([options, &session] { session.out() << session.getDocument(options->path, options->isShort); });
}
