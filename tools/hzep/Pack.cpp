// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "Output.h"
#include "Verbs.h"

#include "HostZip.h"

#include <memory>

void addPack(CLI::App& app, Session&) {
    struct Options {
        std::string directory;
        std::string archive;
        bool isForced = false;
    };
    auto options = std::make_shared<Options>();
    CLI::App* verb = app.add_subcommand("pack", "Make an archive of all files below a folder; equal folders give equal bytes");
    verb->add_option("DIR", options->directory, "The folder; its files' relative paths become the entries' names")->required();
    verb->add_option("ARCHIVE", options->archive, "The archive to write")->required();
    addForce(verb, options->isForced);
    verb->footer("Example: hzep pack card.kar.d card.kar");
    verb->callback([options] {
        ensureFree(options->archive, options->isForced);
        try {
            HostZip::packDirectory(options->directory, options->archive);
        } catch (const std::exception& error) {
            throw Unusable(error);
        }
    });
}
