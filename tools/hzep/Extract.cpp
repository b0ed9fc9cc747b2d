// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "Output.h"
#include "Verbs.h"

#include "HZEPHardwarePlatform.h"
#include "HostZip.h"
#include "HostZipMember.h"

#include <filesystem>
#include <memory>
#include <vector>

namespace {

struct Options {
    std::string archive;
    std::string what;
    Output output;
};

/// The entry that a file type or an entry name stands for; a type wins.
std::string findEntry(Session& session, const Options& options) {
    try {
        const auto platform = session.load(options.archive);
        if (const auto* hardware = platform->getHardwarePlatform())
            if (std::string entry = hardware->getFile(options.what); !entry.empty()) {
                if (!HostZip::containsFile(options.archive, entry))
                    throw Negative(options.archive + ": the file of type \"" + options.what + "\", \"" + entry +
                                   "\", is not in the archive");
                return entry;
            }
    } catch (const Unusable& error) {
        if (!HostZip::containsFile(options.archive, options.what))
            throw;
        Session::say("warning", std::string(error.what()) + "; taken as the name of an entry");
    }
    if (!HostZip::containsFile(options.archive, options.what))
        throw Negative(options.archive + ": no file type and no entry \"" + options.what + "\"; 'hzep files' lists them");
    return options.what;
}

void print(Session& session, const std::string& archive, const std::string& entry) {
    HostZipMember member(archive, entry, HostZip::kMaxUnpackedSize);
    std::vector<char> buffer(256 << 10);
    while (const std::size_t got = session.out() ? member.read(buffer.data(), buffer.size()) : 0)
        session.out().write(buffer.data(), static_cast<std::streamsize>(got));
}

void extract(Session& session, const Options& options) {
    const std::string entry = findEntry(session, options);
    const Output& output = options.output;
    if (entry.ends_with('/'))
        throw Negative(options.archive + ": \"" + entry + "\" is a directory");
    try {
        if (output.isStandardOutput())
            print(session, options.archive, entry);
        else
            HostZip::extractMember(options.archive, entry, output.claimFile(std::filesystem::path(entry).filename().string()));
    } catch (const std::exception& error) {
        throw Unusable(error);
    }
}

} // namespace

void addExtract(CLI::App& app, Session& session) {
    auto options = std::make_shared<Options>();
    CLI::App* verb = app.add_subcommand("extract", "Take one file out of an archive");
    verb->add_option("ARCHIVE", options->archive, "An archive (.dsa, .kar), or a platform's name")->required();
    verb->add_option("TYPE|ENTRY", options->what, "A file type such as HPFM, in any case, or the name of an entry")->required();
    addOutput(verb, options->output,
              "The file to write, '-' for standard output, or a folder (FOLDER/) to put it in; else here, by its name");
    verb->footer("Example: hzep extract card/hw/card.kar META_JSON -o card.json");
    verb->callback([options, &session] {
        options->archive = Session::findArchive(options->archive);
        extract(session, *options);
    });
}
