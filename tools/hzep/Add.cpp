// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "Verbs.h"

#include "HZEPHardwarePlatform.h"
#include "HZEPNearNames.h"
#include "HZEPPfmFileTypes.h"
#include "HostFile.h"
#include "HostZip.h"
#include "HostZipUpdate.h"

#include <memory>

using zep_platform::PlatformLoader;

namespace {

struct Options {
    std::string archive;
    std::string type;
    std::string entry;
    std::string source;
};

void warnOfUnknownType(const std::string& type) {
    if (HZEPPfmFileTypes::toFileType(type) != HZEPPfmFileTypes::UNKNOWN_FILE_TYPE)
        return;
    std::vector<std::string> known;
    for (const auto& [value, name] : HZEPPfmFileTypes::getFileTypeMap())
        known.push_back(name);
    Session::say("warning", "\"" + type + "\" is no known file type" + HZEPNearNames::suggest(type, known));
}

void add(Session& session, const Options& options) {
    PlatformLoader::HwMetadataMode mode = PlatformLoader::PreferAlternateJson;
    const std::string primary = HostFile(options.archive).getExt() + ".json";
    const std::string alternate = "alt_" + primary;
    if (options.entry == primary || options.entry == alternate)
        throw Unusable("\"" + options.entry + "\" is the archive's metadata, not a file of a type");
    // The file gets listed in the primary JSON metadata, so that is what has to be read.
    if (HostZip::containsFile(options.archive, primary))
        mode = PlatformLoader::PrimaryJsonOnly;
    const auto platform = session.load(options.archive, mode);
    HZEPHardwarePlatform* hardware = platform->getHardwarePlatform();
    if (!hardware)
        throw Unusable(options.archive + ": is no archive (.dsa, .kar)");
    if (!HostFile::isRegularFile(options.source))
        throw Unusable(options.source + (HostFile::exists(options.source) ? ": is no regular file" : ": no such file"));
    warnOfUnknownType(options.type);
    try {
        // Tells what is wrong with the archive or the name, which the next step would only refuse.
        HostZipUpdate(options.archive).begin(options.entry);
        hardware->archiveFile(options.type, options.entry, options.source);
    } catch (const std::exception& error) {
        throw Unusable(error.what());
    }
    if (HostZip::containsFile(options.archive, alternate))
        Session::say("warning",
                     options.archive + ": \"" + alternate + "\" is read before the metadata that lists the file, and stays as it is");
}

} // namespace

void addAdd(CLI::App& app, Session& session) {
    auto options = std::make_shared<Options>();
    CLI::App* verb = app.add_subcommand("add", "Put a file into an archive and list it there");
    verb->add_option("ARCHIVE", options->archive, "An archive (.dsa, .kar); it is replaced once the new one is whole")->required();
    verb->add_option("TYPE", options->type, "The file's type, such as HPFM; it takes the place of all of that type")->required();
    verb->add_option("ENTRY", options->entry, "The name of the entry; one that is there gets the new content")->required();
    verb->add_option("SOURCE", options->source, "The file to add")->required();
    verb->footer("The archive's JSON metadata is written anew and its digest stamped. An archive with XML metadata gets JSON metadata.\n"
                 "Example: hzep add card/hw/card.kar EXT_META_JSON meta/extension.json new.json");
    verb->callback([options, &session] { add(session, *options); });
}
