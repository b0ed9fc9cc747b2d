// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "Verbs.h"

#include <exception>
#include <iostream>
#include <new>

int main(int argc, char** argv) {
    CLI::App app("Reads, questions and changes the metadata of hardware platforms.", "hzep");
    app.set_version_flag("--version", "hzep " HZEP_VERSION);
    app.require_subcommand(1);
    app.footer("Exit status: 0 done or yes, 1 the answer is no, 2 wrong usage or unreadable input.\n"
               "'hzep VERB --help' tells more and gives an example.");

    Session session;
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

    try {
        app.parse(argc, argv);
        session.finish();
        return 0;
    } catch (const CLI::ParseError& error) {
        return app.exit(error, session.out(), std::cerr) == 0 ? 0 : 2;
    } catch (const Findings& findings) {
        Session::say("lint", findings.what());
        return 1;
    } catch (const Answered&) {
        return 1;
    } catch (const Negative& error) {
        Session::say("error", error.what());
        return 1;
    } catch (const std::bad_alloc&) {
        Session::say("error", "out of memory");
        return 2;
    } catch (const std::exception& error) {
        Session::say("error", error.what());
        return 2;
    }
}
