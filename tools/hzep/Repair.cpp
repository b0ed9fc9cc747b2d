// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "Verbs.h"

#include "HZEPHpfmUtl.h"
#include "HostFile.h"
#include "HostFileUtils.h"

#include <memory>

namespace {

void repair(Session& session, const std::string& path) {
    Session::checkReadable(path, "a hardware platform file (.hpfm)");
    bool isChanged = false;
    try {
        const std::string before = HostFileUtils::readFile(path);
        HZEPHpfmUtl::ChangeAndWriteHpfmIfNeeded(path);
        isChanged = HostFileUtils::readFile(path) != before;
    } catch (const std::exception& error) {
        throw Unusable(error);
    }
    for (const HostMsg& message : session.takeMessages()) {
        const HostFault& fault = message.fault;
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
    auto path = std::make_shared<std::string>();
    CLI::App* verb = app.add_subcommand("repair", "Make the HBM banks of a hardware platform file alike");
    verb->add_option("FILE.hpfm", *path, "A hardware platform file; it is replaced once the new one is whole")->required();
    verb->footer("Once some banks of the HBM subsystem are preferred, all that may be assigned get preferred.\n"
                 "Exit status: 1 for a file with two HBM subsystems, which stays as it is.\n"
                 "Example: hzep repair card.kar.d/hpfm/card.hpfm");
    verb->callback([path, &session] { repair(session, *path); });
}
