// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "Output.h"
#include "Verbs.h"

#include "HZEPEmulationUtils.h"
#include "HostFile.h"

#include <memory>

namespace {

struct Options {
    std::string archive;
    std::string name = "hw_emu_prop";
    Output output;
};

/// What a run leaves beside the archive.
void ensureFree(const Options& options) {
    const std::string folder = options.output.path.empty() ? "" : HostFile(options.output.path).getPath() + "/";
    for (const std::string& path : {folder + options.name, folder + "overlay", std::string("emu_update_dsa.tcl")})
        if (!options.output.isForced && HostFile::exists(path))
            throw Unusable(path + ": is there already; --force replaces what is in it", {path, "", 0, 0, "is there already"});
}

void generate(Session& session, const Options& options) {
    Session::checkReadable(options.archive, "an archive with XML metadata (.dsa, .kar)");
    if (options.output.isStandardOutput())
        throw Unusable("an emulation platform is a folder, which can't be written to standard output");
    ensureFree(options);
    bool isDone = false;
    try {
        isDone = HZEPEmulationUtils::generateDsaEmu(options.archive, options.output.path, options.name);
    } catch (const std::exception& error) {
        throw Unusable(error);
    }
    std::string cause;
    HostFault fault;
    bool isBuildFault = false;
    for (const HostMsg& message : session.takeMessages()) {
        const std::string text = HostMsgMgr::getText(message);
        const bool isFault = !message.fault.cause.empty();
        if (isFault && message.severityMask < HostMsgMgr::Warning) {
            Session::say("warning", message.fault.file + ": " + Session::describe(message.fault) + "; this property file plays no part");
        } else if (isFault && message.severityMask >= HostMsgMgr::CriticalWarning && !isDone) {
            cause = text;
            fault = message.fault;
            isBuildFault = fault.file != options.archive;
        } else {
            Session::say(HostMsgMgr::getSeverityName(message.severityMask), text);
        }
    }
    session.finish();
    if (isBuildFault)
        throw Negative(options.archive + ": " + cause, fault);
    const std::string conclusion = "no emulation platform can be made of it";
    if (!isDone)
        throw Unusable(options.archive + ": " + (cause.empty() ? conclusion : cause + " (" + conclusion + ")"), fault);
    if (options.output.path.empty())
        session.out() << options.archive << ": holds the emulation platform\n";
    else
        session.out() << (HostFile(options.output.path).getPath() + "/overlay: holds the emulation platform\n");
}

} // namespace

void addEmu(CLI::App& app, Session& session) {
    auto options = std::make_shared<Options>();
    CLI::App* verb = app.add_subcommand("emu", "Make a hardware emulation platform of an archive and put it into the archive");
    verb->add_option("ARCHIVE", options->archive, "An archive with XML metadata (.dsa, .kar); it is replaced once the new one is whole")
        ->required();
    CLI::Option* directory = addOutput(verb, options->output, "The folder to put the platform in; the archive then stays as it is");
    verb->add_option("--name", options->name, "The folder of the property script below it; \"hw_emu_prop\" unless given")->needs(directory);
    verb->footer("Writes Tcl scripts, and files of the build, into the working directory: hw_emu_prop/, overlay/ and emu_update_dsa.tcl;\n"
                 "those of an earlier run are replaced with --force.\n"
                 "The last one is run and calls the build scripts below $TOLVAN_DRUVEL; $HOST_APP_ROOT holds the default properties.\n"
                 "What the archive and its property files say goes into the scripts as it is and is run with your rights; 'hzep lint'\n"
                 "tells where that is more than plain text. Exit status: 1 when the build made no block design.\n"
                 "Example: hzep emu card.dsa -o build --name props");
    verb->callback([options, &session] { generate(session, *options); });
}
