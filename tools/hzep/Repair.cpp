// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "Verbs.h"

#include "HZEPHpfmUtl.h"
#include "HostFile.h"
#include "HostFileUtils.h"

#include <memory>

namespace {

constexpr const char* kNotParsed = "@74-260@%s%s%s";
constexpr const char* kTwoSubsystems = "@74-261@";

void repair(Session& session, const std::string& path) {
    if (!HostFile::exists(path))
        throw Unusable(path + ": no such file");
    if (HostFile::isDir(path))
        throw Unusable(path + ": is a directory; a hardware platform file (.hpfm) was expected");
    bool isChanged = false;
    try {
        const std::string before = HostFileUtils::readFile(path);
        HZEPHpfmUtl::ChangeAndWriteHpfmIfNeeded(path);
        isChanged = HostFileUtils::readFile(path) != before;
    } catch (const std::exception& error) {
        throw Unusable(error.what());
    }
    for (const HostMsg& message : session.takeErrors()) {
        if (message.key == kTwoSubsystems)
            throw Negative(path + ": " + HostMsgMgr::getText(message) + " The file stays as it is.");
        throw Unusable(message.key == kNotParsed ? path + ":" + message.args[1] + ": " + message.args[2]
                                                 : path + ": " + HostMsgMgr::getText(message));
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
