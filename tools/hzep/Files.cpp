// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "Table.h"
#include "Verbs.h"

#include "HPLFile.h"
#include "HPLPlatform.h"
#include "HostFwdIter.h"
#include "HostZip.h"

#include <map>
#include <memory>

namespace {

/// Entry name to the types that the metadata gives it, in the metadata's order.
std::map<std::string, std::string> getTypes(Session& session, const std::string& archive) {
    std::map<std::string, std::string> types;
    try {
        const auto platform = session.load(archive);
        if (const auto* hardware = dynamic_cast<const HPLPlatform*>(platform->getHardwarePlatform())) {
            const std::unique_ptr<HostFwdIter<HPLFile*>> files(hardware->createFileVecIter());
            while (files->hasNext()) {
                const HPLFile* file = files->next();
                std::string& list = types[file->getName()];
                list += (list.empty() ? "" : ",") + file->getType();
            }
        }
    } catch (const Unusable& error) {
        Session::say("warning", std::string(error.what()) + "; entries are listed without their types");
    }
    return types;
}

void listFiles(Session& session, const std::string& archive) {
    std::vector<HostZipEntry> entries;
    try {
        entries = HostZip::getEntries(archive);
    } catch (const std::exception& error) {
        throw Unusable(error);
    }
    auto types = getTypes(session, archive);
    Table table({"TYPE", "ENTRY", "SIZE"});
    for (const HostZipEntry& entry : entries) {
        if (entry.isDirectory)
            continue;
        const auto found = types.find(entry.name);
        table.add({found == types.end() || found->second.empty() ? "-" : found->second, entry.name, std::to_string(entry.size)});
    }
    for (const HostZipEntry& entry : entries)
        types.erase(entry.name);
    for (const auto& [name, type] : types)
        table.add({type.empty() ? "-" : type, name, "missing"});
    table.print(session.out(), Session::isTerminal());
}

} // namespace

void addFiles(CLI::App& app, Session& session) {
    auto archive = std::make_shared<std::string>();
    CLI::App* verb = app.add_subcommand("files", "List the entries of an archive with their types and sizes in bytes");
    verb->add_option("ARCHIVE", *archive, "An archive (.dsa, .kar), or a platform's name")->required();
    verb->footer(
        "Columns are aligned on a terminal, else separated by one tab. What the metadata names and the archive lacks is 'missing'.\n"
        "Example: hzep files card/hw/card.kar");
    verb->callback([archive, &session] { listFiles(session, Session::findArchive(*archive)); });
}
