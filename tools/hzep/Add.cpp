// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "Losses.h"
#include "Verbs.h"

#include "HZEPArchiveEdit.h"
#include "HZEPHardwarePlatform.h"
#include "HZEPNearNames.h"
#include "HZEPPfmFileTypes.h"
#include "HostFile.h"
#include "HostZip.h"

#include <memory>
#include <set>

using zep_platform::PlatformLoader;

namespace {

struct Options {
    std::string archive;
    std::string type;
    std::string entry;
    std::string source;
    bool isRendered = false;
    bool isStrict = false;
};

void warnOfUnknownType(const std::string& type) {
    if (HZEPPfmFileTypes::toFileType(type) != HZEPPfmFileTypes::UNKNOWN_FILE_TYPE)
        return;
    std::vector<std::string> known;
    for (const auto& [value, name] : HZEPPfmFileTypes::getFileTypeMap())
        known.push_back(name);
    Session::say("warning", "\"" + type + "\" is no known file type" + HZEPNearNames::suggest(type, known));
}

/// That the items of the type go out of the list of files is what was asked for.
Losses::IsWished listsType(const std::string& text, const std::string& type) {
    const bool isXml = Losses::isXml(text);
    const HZEPTextEdit edit(text, isXml ? HZEPTextEdit::Xml : HZEPTextEdit::Json);
    const std::string list = isXml ? "DSA.Files.File" : "files";
    std::set<std::string> items;
    for (std::size_t i = 0, count = edit.getCount(list); i < count; ++i)
        if (const std::string item = list + "[" + std::to_string(i) + "]"; edit.getText(item + (isXml ? ".Type" : ".type")) == type)
            items.insert(item);
    return [items](const HZEPTextDifference::Change& change) { return items.contains(change.path.substr(0, change.path.find(']') + 1)); };
}

void addAnew(const Options& options) {
    HZEPArchiveEdit::addFileAnew(options.archive, options.type, options.entry, options.source,
                                 [&options](const std::string& before, HPLPlatform& platform, const std::string&) {
                                     Losses losses;
                                     losses.addReading(before, platform, listsType(before, options.type));
                                     losses.tell(options.archive, options.isStrict);
                                 });
}

void add(Session& session, const Options& options) {
    // An archive that can't be loaded is refused with the loader's words.
    PlatformLoader::HwMetadataMode mode = PlatformLoader::PreferAlternateJson;
    const std::string primary = HostFile(HostFile::getCanonicalName(options.archive)).getExt() + ".json";
    const std::string alternate = "alt_" + primary;
    if (options.entry == primary || options.entry == alternate)
        throw Unusable("\"" + options.entry + "\" is the archive's metadata, not a file of a type");
    const bool hasPrimary = HostZip::containsFile(options.archive, primary);
    if (hasPrimary)
        mode = PlatformLoader::PrimaryJsonOnly;
    if (!session.load(options.archive, mode)->getHardwarePlatform())
        throw Unusable(options.archive + ": is no archive (.dsa, .kar)");
    try {
        if (options.isRendered)
            addAnew(options);
        else
            HZEPArchiveEdit::addFile(options.archive, options.type, options.entry, options.source);
    } catch (const Negative&) {
        throw;
    } catch (const std::exception& error) {
        throw Unusable(error.what());
    }
    warnOfUnknownType(options.type);
    if ((hasPrimary || options.isRendered) && HostZip::containsFile(options.archive, alternate))
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
    CLI::Option* render =
        verb->add_flag("--render", options->isRendered, "Write the JSON metadata anew, as the library's archiveFile does");
    Losses::addOption(verb, options->isStrict);
    verb->get_option("--strict")->needs(render);
    verb->footer("The archive's metadata, JSON or XML, gets the file in its list; every other byte of them stays. The digest is stamped.\n"
                 "With --render the metadata are written anew as JSON: what no reader knows is lost, and named.\n"
                 "Example: hzep add card/hw/card.kar EXT_META_JSON meta/extension.json new.json");
    verb->callback([options, &session] { add(session, *options); });
}
