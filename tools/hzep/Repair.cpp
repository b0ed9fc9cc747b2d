// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "Losses.h"
#include "Verbs.h"

#include "HZEPHpfmUtl.h"
#include "HostEnv.h"
#include "HostFile.h"
#include "HostFileUtils.h"

#include <filesystem>
#include <memory>

namespace {

struct Options {
    std::string path;
    bool isStrict = false;
};

/// The file as it is when it is repaired; it is not touched here.
std::string repairCopy(const std::string& text, const std::string& path) {
    const std::filesystem::path copy = HostEnv::getHostTmpDir() + "/" + std::filesystem::path(path).filename().string();
    HostFileUtils::writeFileAtomically(copy.string(), text);
    HZEPHpfmUtl::ChangeAndWriteHpfmIfNeeded(copy.string());
    std::string repaired = HostFileUtils::readFile(copy.string());
    std::error_code ignored;
    std::filesystem::remove(copy, ignored);
    return repaired;
}

/// A preferred bank is what was wished for.
void tellLosses(const std::string& path, const std::string& before, const std::string& after, bool isStrict) {
    Losses losses;
    losses.add(before, after, HZEPTextEdit::Xml,
               [](const HZEPTextDifference::Change& change) { return change.path.ends_with(".auto") && change.after == "preferred"; });
    losses.tell(path, isStrict);
}

void repair(Session& session, const std::string& path, bool isStrict) {
    Session::checkReadable(path, "a hardware platform file (.hpfm)");
    bool isChanged = false;
    try {
        const std::string before = HostFileUtils::readFile(path);
        const std::string after = repairCopy(before, path);
        isChanged = after != before;
        if (isChanged) {
            tellLosses(path, before, after, isStrict);
            HostFileUtils::writeFileAtomically(path, after);
        }
    } catch (const Negative&) {
        throw;
    } catch (const std::exception& error) {
        throw Unusable(error);
    }
    for (const HostMsg& message : session.takeMessages()) {
        HostFault fault = message.fault;
        fault.file = path; // not the copy
        // What is said without a fault is an answer: the file could be read.
        if (fault.cause.empty() && message.severityMask >= HostMsgMgr::Error)
            throw Negative(path + ": " + HostMsgMgr::getText(message) + " The file stays as it is.");
        if (message.severityMask >= HostMsgMgr::Error)
            throw Unusable(path + (fault.line > 0 ? ":" + std::to_string(fault.line) : "") + ": " + fault.cause, fault);
        Session::say(HostMsgMgr::getSeverityName(message.severityMask), HostMsgMgr::getText(message));
    }
    session.out() << path
                  << (isChanged ? ": all HBM banks that may be assigned are preferred now, as some of them were\n"
                                : ": nothing to repair\n");
}

} // namespace

void addRepair(CLI::App& app, Session& session) {
    auto options = std::make_shared<Options>();
    CLI::App* verb = app.add_subcommand("repair", "Make the HBM banks of a hardware platform file alike");
    verb->add_option("FILE.hpfm", options->path, "A hardware platform file; it is replaced once the new one is whole")->required();
    Losses::addOption(verb, options->isStrict);
    verb->footer("Once some banks of the HBM subsystem are preferred, all that may be assigned get preferred.\n"
                 "The file is written anew then: what the readers don't know is dropped, and named.\n"
                 "Exit status: 1 for a file with two HBM subsystems, which stays as it is.\n"
                 "Example: hzep repair card.kar.d/hpfm/card.hpfm");
    verb->callback([options, &session] { repair(session, options->path, options->isStrict); });
}
