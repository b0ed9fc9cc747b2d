// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "Usage.h"
#include "Verbs.h"

#include <cstdlib>
#include <exception>
#include <iostream>
#include <new>
#include <string_view>
#include <unistd.h>

namespace {

/// Of a program that has no memory left to say it with.
constexpr std::string_view kNoMemory = "hzep: error: out of memory\n";
constexpr int kUnusable = 2;

void sayNoMemory() noexcept {
    [[maybe_unused]] const auto written = write(STDERR_FILENO, kNoMemory.data(), kNoMemory.size());
}

/// Memory may be short where no exception passes, before and after main, and even for the exception.
[[noreturn]] void terminate() noexcept {
    try {
        if (std::current_exception())
            throw;
        sayNoMemory();
        _exit(kUnusable);
    } catch (const std::bad_alloc&) {
        sayNoMemory();
        _exit(kUnusable);
    } catch (...) {
    }
    std::abort();
}

// Runs before the initialisers of the libraries.
[[gnu::used, gnu::section(".preinit_array")]] void (*const setUpTermination)() = [] { std::set_terminate(terminate); };

void addVerbs(CLI::App& app, Session& session) {
    addShow(app, session);
    addInfo(app, session);
    addList(app, session);
    addCheck(app, session);
    addGet(app, session);
    addKeys(app, session);
    addDict(app, session);
    addDoc(app, session);
    addLint(app, session);
    addFiles(app, session);
    addExtract(app, session);
    addAdd(app, session);
    addPack(app, session);
    addVerify(app, session);
    addConvert(app, session);
    addRepair(app, session);
    addEmu(app, session);
    addLabels(app, session);
    addMda(app, session);
    addHdf2dsa(app, session);
    addFixedKar(app, session);
}

int run(int argc, char** argv) {
    Session session;
    CLI::App app("Reads, questions and changes the metadata of hardware platforms.", "hzep");
    app.formatter(std::make_shared<WrappingFormatter>());
    app.set_version_flag("--version", "hzep " HZEP_VERSION);
    // What follows a verb is tried on the program, so these may stand anywhere.
    app.fallthrough();
    bool isVerbose = false;
    bool isQuiet = false;
    app.add_flag("--verbose", isVerbose, "Messages for information as well")->excludes(app.add_flag("--quiet", isQuiet, "No warnings"));
    app.require_subcommand(1);
    app.footer("A PLATFORM is a path, or the name of a platform in the default directories where no such file is here. A file that stands\n"
               "at the path of a result is replaced with --force only. --verbose and --quiet may stand behind the verb too.\n"
               "Exit status: 0 done or yes, 1 the answer is no, 2 wrong usage, or input that isn't there or can't be read.\n"
               "'hzep VERB --help' tells more and gives an example.");
    addVerbs(app, session);
    app.parse_complete_callback([&] {
        Session::setVerbosity(isVerbose ? Session::Verbosity::Verbose : isQuiet ? Session::Verbosity::Quiet : Session::Verbosity::Usual);
        Session::setJsonErrors(asksForJson(app));
    });

    try {
        try {
            app.parse(argc, argv);
        } catch (const CLI::Success& answer) {
            app.exit(answer, session.out(), std::cerr);
        }
        session.finish();
        return 0;
    } catch (const CLI::ParseError& error) {
        Session::setJsonErrors(asksForJson(app));
        Session::sayUsage(describeUsage(app, error));
    } catch (const Findings& findings) {
        Session::say("lint", findings.what());
        return 1;
    } catch (const Answered&) {
        return 1;
    } catch (const Negative& error) {
        Session::report(error);
        return 1;
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception& error) {
        Session::report(error);
    }
    return kUnusable;
}

} // namespace

int main(int argc, char** argv) {
    try {
        return run(argc, argv);
    } catch (...) {
        sayNoMemory();
        return kUnusable;
    }
}
