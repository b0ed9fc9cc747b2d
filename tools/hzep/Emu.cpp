// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "Verbs.h"

#include "HZEPEmulationUtils.h"
#include "HostFile.h"

#include <memory>

namespace {

constexpr const char* kNotBuilt = "@74-33@";

struct Options {
    std::string archive;
    std::string directory;
    std::string name = "hw_emu_prop";
};

void generate(Session& session, const Options& options) {
    if (!HostFile::exists(options.archive))
        throw Unusable(options.archive + ": no such file");
    if (!HostFile::isRegularFile(options.archive))
        throw Unusable(options.archive + ": is no regular file; an archive with XML metadata (.dsa, .kar) was expected");
    bool isDone = false;
    try {
        isDone = HZEPEmulationUtils::generateDsaEmu(options.archive, options.directory, options.name);
    } catch (const std::exception& error) {
        throw Unusable(error.what());
    }
    std::string conclusion = isDone ? "" : "no emulation platform can be made of it";
    bool isBuildFault = false;
    for (const HostMsg& message : session.takeErrors()) {
        const std::string text = HostMsgMgr::getText(message);
        if (message.key == kNotBuilt) {
            isBuildFault = true;
            conclusion = text;
        } else {
            Session::say("error", text);
        }
    }
    session.finish();
    if (isBuildFault)
        throw Negative(options.archive + ": " + conclusion);
    if (!isDone)
        throw Unusable(options.archive + ": " + conclusion);
    if (options.directory.empty())
        session.out() << options.archive << ": holds the emulation platform\n";
    else
        session.out() << (HostFile(options.directory).getPath() + "/overlay: holds the emulation platform\n");
}

} // namespace

void addEmu(CLI::App& app, Session& session) {
    auto options = std::make_shared<Options>();
    CLI::App* verb = app.add_subcommand("emu", "Make a hardware emulation platform of an archive and put it into the archive");
    verb->add_option("ARCHIVE", options->archive, "An archive with XML metadata (.dsa, .kar); it is replaced once the new one is whole")
        ->required();
    CLI::Option* directory =
        verb->add_option("-o,--output", options->directory, "Leave the platform in this folder, and the archive as it is");
    verb->add_option("--name", options->name, "The folder of the property script below it; \"hw_emu_prop\" unless given")->needs(directory);
    verb->footer("Writes Tcl scripts, and files of the build, into the working directory: hw_emu_prop/, overlay/ and emu_update_dsa.tcl.\n"
                 "The last one is run and calls the build scripts below $TOLVAN_DRUVEL; $HOST_APP_ROOT holds the default properties.\n"
                 "What the archive and its property files say goes into the scripts as it is and is run with your rights; 'hzep lint'\n"
                 "tells where that is more than plain text. Exit status: 1 when the build made no block design.\n"
                 "Example: hzep emu card.dsa -o build --name props");
    verb->callback([options, &session] { generate(session, *options); });
}
