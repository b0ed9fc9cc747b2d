// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "Output.h"
#include "Table.h"
#include "Verbs.h"

#include "HMDAArchive.h"
#include "HZEPArchiveEdit.h"
#include "HostFile.h"
#include "HostZip.h"
#include "HostZipUpdate.h"
#include "JSONObjectWriter.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <memory>
#include <utility>
#include <vector>

namespace {

struct Options {
    HMDAArchive archive;
    std::string file;
    std::string type;
    std::string entry;
    std::string source;
    Output output;
    bool asJson = false;
};

/// All that the library raises is a refusal here, which names the archive.
template <class Work>
auto refusing(const std::string& file, Work work) {
    try {
        return work();
    } catch (const std::exception& error) {
        const std::string what = error.what();
        throw Unusable(what.find(file) == what.npos ? file + ": " + what : what, getFaultOf(error));
    }
}

HMDAArchive open(const std::string& file) {
    Session::checkReadable(file, "a metadata archive");
    if (const std::string fault = HostZip::getFault(file); !fault.empty())
        throw Unusable(file + ": " + fault);
    HMDAArchive archive;
    archive.setFile(file);
    const std::string index = archive.getJsonFileName();
    if (!HostZip::containsFile(file, index))
        throw Unusable(file + ": is no metadata archive: there is no entry \"" + index + "\"");
    if (!refusing(file, [&] { return archive.parse(); }))
        throw Unusable(file + ": " + index + ": is empty or can't be opened");
    return archive;
}

void add(const Options& options) {
    const HMDAArchive archive = open(options.file);
    const bool isFolder = HostFile::isDir(options.source);
    if (!isFolder && !HostFile::isRegularFile(options.source))
        throw Unusable(options.source + (HostFile::exists(options.source) ? ": is no regular file" : ": no such file"));
    if (options.type.empty())
        throw Unusable("the type is empty");
    if (isFolder && !HMDAArchive::isDirectoryType(options.type))
        throw Unusable(options.source + ": is a folder, and a \"" + options.type + "\" is a file");
    const bool isBlockDesign = options.type == "DR_BD";
    if (!isFolder && !isBlockDesign && HMDAArchive::isDirectoryType(options.type))
        throw Unusable(options.source + ": is a file, and a \"" + options.type + "\" is a folder");
    if (isBlockDesign && options.entry != "bd" && !options.entry.starts_with("bd/"))
        throw Unusable("a block design stands in the folder \"bd\", not in \"" + options.entry + "\"");
    if (options.entry == archive.getJsonFileName())
        throw Unusable("\"" + options.entry + "\" is the archive's index, not a file of a type");
    refusing(options.file, [&] { HZEPArchiveEdit::addToIndex(options.file, options.type, options.entry, options.source); });
}

/// What the members of an archive measure, in bytes.
class Sizes {
public:
    explicit Sizes(std::vector<HostZipEntry> entries) : entries_(std::move(entries)) {
        std::sort(entries_.begin(), entries_.end(), [](const auto& a, const auto& b) { return a.name < b.name; });
        for (const HostZipEntry& entry : entries_)
            before_.push_back(before_.back() + entry.size);
    }

    /// Of a member, or of all below a folder; "missing" when there is neither.
    std::string describe(const std::string& name) const {
        const std::size_t member = find(name);
        if (member < entries_.size() && entries_[member].name == name && !name.ends_with('/'))
            return std::to_string(entries_[member].size);
        const std::string folder = name.ends_with('/') ? name.substr(0, name.size() - 1) : name;
        // '0' is the character behind '/'.
        const std::size_t begin = find(folder + "/"), end = find(folder + "0");
        return begin == end ? "missing" : std::to_string(before_[end] - before_[begin]);
    }

private:
    std::size_t find(const std::string& name) const {
        const auto at = std::lower_bound(entries_.begin(), entries_.end(), name,
                                         [](const HostZipEntry& entry, const std::string& sought) { return entry.name < sought; });
        return static_cast<std::size_t>(at - entries_.begin());
    }

    std::vector<HostZipEntry> entries_;
    std::vector<std::uint64_t> before_ = {0}; // the sizes of all in front of the entry
};

void list(Session& session, const Options& options) {
    const HMDAArchive archive = open(options.file);
    if (options.asJson) {
        zep_platform::JSONObjectWriter writer;
        writer.writeObject(archive);
        writer.write(session.out());
        return;
    }
    const Sizes sizes(refusing(options.file, [&] { return HostZip::getEntries(options.file); }));
    std::map<std::string, std::string> files;
    archive.getFiles().getFiles(files);
    Table table({"TYPE", "ENTRY", "SIZE"});
    for (const auto& [type, name] : files)
        table.add({type, name, sizes.describe(name)});
    table.print(session.out(), Session::isTerminal());
}

void extract(Session& session, const Options& options) {
    const HMDAArchive archive = open(options.file);
    const std::string name = archive.getFiles().get(options.type);
    if (name.empty())
        throw Negative(options.file + ": no file of type \"" + options.type + "\"; 'hzep mda list' lists them");
    if (!HMDAArchive::isDirectoryType(options.type) && !HostZip::containsFile(options.file, name))
        throw Negative(options.file + ": the file of type \"" + options.type + "\", \"" + name + "\", is not in the archive");
    const Output& output = options.output;
    const bool isFolder = HMDAArchive::isDirectoryType(options.type);
    if (isFolder && output.isStandardOutput())
        throw Unusable("a \"" + options.type + "\" is a folder, which can't be written to standard output");
    if (!isFolder && output.isStandardOutput()) {
        refusing(options.file, [&] { session.out() << HostZip::readMember(options.file, name); });
        return;
    }
    if (!isFolder && !output.path.empty() && !output.isFolder()) {
        ensureFree(output.path, output.isForced);
        refusing(options.file, [&] { HostZip::extractMember(options.file, name, output.path); });
        session.out() << output.path << '\n';
        return;
    }
    const std::string folder = output.path.empty() ? "." : output.path.substr(0, output.path.find_last_not_of('/') + 1);
    const std::string target = (folder.empty() ? "/" : folder + "/") + (options.type == "DR_BD" ? "bd" : name);
    // A name that leads out is refused by the library, in its words.
    if (!output.isForced && HostZipUpdate::getNameFault(name).empty() && HostFile::exists(target))
        throw Unusable(target + ": is there already; --force replaces what is in it", {target, "", 0, 0, "is there already"});
    session.out() << refusing(options.file, [&] { return archive.extract(options.type, folder.empty() ? "/" : folder); }) << '\n';
}

template <class Setter>
void addText(CLI::App* verb, const std::shared_ptr<Options>& options, const char* name, Setter set, const char* what) {
    verb->add_option_function<std::string>(
            name, [options, set](const std::string& text) { (options->archive.*set)(text); }, what)
        ->type_name("TEXT");
}

CLI::App* addVerb(CLI::App* mda, const char* name, const char* what, const std::shared_ptr<Options>& options) {
    CLI::App* verb = mda->add_subcommand(name, what);
    verb->add_option("ARCHIVE", options->file, "A metadata archive")->required();
    return verb;
}

} // namespace

void addMda(CLI::App& app, Session& session) {
    auto options = std::make_shared<Options>();
    CLI::App* mda = app.add_subcommand("mda", "Make, fill, list and unpack metadata archives");
    mda->require_subcommand(1);
    mda->footer("'hzep mda create --help' and so on tell more and give an example.\nExample: hzep mda list card/card.mda");

    CLI::App* create = addVerb(mda, "create", "Make a metadata archive without files; nothing is replaced", options);
    addText(create, options, "--inst-path", &HMDAArchive::setInstPath, "Where the platform's instance stands in the design");
    addText(create, options, "--dr-bd-inst-name", &HMDAArchive::setDrBdInstName, "The instance of the dynamic region's block design");
    addText(create, options, "--pfm-name", &HMDAArchive::setPfmName, "The platform");
    addText(create, options, "--hier-name", &HMDAArchive::setHierName, "The hierarchy that the platform is");
    create->footer("Example: hzep mda create card.mda --pfm-name card --inst-path top/card_i");
    create->callback([options] {
        if (HostFile::exists(options->file))
            throw Unusable(options->file + ": is there already; 'hzep mda add' puts files into it");
        refusing(options->file, [&] {
            options->archive.setFile(options->file);
            options->archive.create();
        });
    });

    CLI::App* add = addVerb(mda, "add", "Put a file or a folder into a metadata archive and list it there", options);
    add->add_option("TYPE", options->type, "The file's type; it takes the place of the one of that type in the list")->required();
    add->add_option("ENTRY", options->entry, "The name of the entry; one that is there gets the new content")->required();
    add->add_option("SOURCE", options->source, "The file; for DR_BD, BOARD_REPO_PATH and IP_REPO_PATH a folder")->required();
    add->footer(
        "The index gets the file in its list, and every other byte of it stays; the digest is stamped. A block design stands in \"bd\".\n"
        "Example: hzep mda add card.mda IP_REPO_PATH ip_repo build/ip_repo");
    add->callback([options] { ::add(*options); });

    CLI::App* list = addVerb(mda, "list", "List the files of a metadata archive with their types and sizes in bytes", options);
    list->add_flag("--json", options->asJson, "The whole index as JSON");
    list->footer("Example: hzep mda list card.mda");
    list->callback([options, &session] { ::list(session, *options); });

    CLI::App* extract =
        addVerb(mda, "extract", "Take the file or folder of a type out of a metadata archive and print where it is", options);
    extract->add_option("TYPE", options->type, "A type that 'hzep mda list' shows")->required();
    addOutput(
        extract, options->output,
        "The file to write, '-' for standard output, or a folder (FOLDER/) to put it in, where it keeps its path; else here. A folder "
        "is always put into one");
    extract->footer("Example: hzep mda extract card.mda DR_BD -o unpacked");
    extract->callback([options, &session] { ::extract(session, *options); });
}
