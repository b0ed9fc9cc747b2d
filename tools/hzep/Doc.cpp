// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "KeyPath.h"
#include "Table.h"
#include "Verbs.h"

#include "HZEPNearNames.h"
#include "HostText.h"
#include "NativeDictService.h"
#include "NativeDocService.h"
#include "NativeObjectService.h"

#include <algorithm>
#include <boost/algorithm/string/replace.hpp>
#include <boost/property_tree/ptree.hpp>
#include <map>
#include <memory>

using boost::property_tree::ptree;
using zep::platform::NativeDictService;
using zep::platform::NativeDocService;
using zep::platform::NativeObjectService;

namespace {

constexpr const char* kBranch = "documentation_keys";
constexpr const char* kAll = "all";
constexpr const char* kListKeys = "list_keys";

struct Options {
    std::string key = kAll;
    bool isJson = false;
};

/// The documentation tells of a list's elements once, in its first element.
std::string toDocumentedElements(const std::string& key) {
    std::string first;
    std::size_t begin = 0;
    for (std::size_t open, close; (open = key.find('[', begin)) != key.npos && (close = key.find(']', open)) != key.npos; begin = close + 1)
        first += key.substr(begin, open - begin) + "[0]";
    return toFirstElements(first + key.substr(begin));
}

/// The documentation tells of a hardware platform once; it stands in further places of a document.
std::string toDocumentedPlatform(const ptree& doc, const std::string& key) {
    for (const char* place : {"hardwarePlatforms.hardwarePlatform.", "hardwarePlatforms.hwEmuPlatform.",
                              "hardwarePlatforms.reconfigurablePartitions[0].hardwarePlatform.",
                              "hardwarePlatforms.reconfigurablePartitions[0].hwEmuPlatform."})
        if (const std::string prefix = place; key.starts_with(prefix))
            return NativeObjectService().getHwPlatformRootPath(doc) + key.substr(prefix.size() - 1);
    return key;
}

/// The key itself or the nearest one above it that the documentation has; "" for none.
std::string findDocumented(const ptree& doc, const std::string& key) {
    const NativeObjectService objects;
    std::string found;
    for (std::size_t end = 0; end < key.size() && !key.starts_with('[');) {
        end = std::min(key.find_first_of(".[", end + 1), key.size());
        if (!objects.hasNodeAtPath(doc, key.substr(0, end)))
            break;
        found = key.substr(0, end);
    }
    return found;
}

/// Names of the branch that are near to the first one of the path.
std::string suggest(const ptree& branch, const std::string& path) {
    std::vector<std::string> names;
    for (const auto& [known, child] : branch)
        names.push_back(known);
    return HZEPNearNames::suggest(path.substr(0, path.find_first_of(".[")), names);
}

void printMeanings(Session& session, const ptree& branch, const std::string& key, bool areNames) {
    Table table(areNames ? std::vector<std::string>{"KEY"} : std::vector<std::string>{"KEY", "MEANING"});
    for (const auto& [name, text] :
         branch.empty() ? std::map<std::string, std::string>{{key, branch.data()}} : NativeDictService().getAsDict(branch, key)) {
        std::vector<std::string> row{boost::replace_all_copy(name, "[0]", "[]")};
        if (!areNames)
            row.push_back(text);
        table.add(std::move(row));
    }
    table.print(session.out(), Session::isTerminal());
}

void printKey(Session& session, const std::string& file, const ptree& doc, const std::string& path, bool isJson) {
    const NativeObjectService objects;
    const std::string key = objects.getPathWithActualHwPlatformRoot(doc, toDocumentedElements(path));
    const std::string asked = objects.hasNodeAtPath(doc, key) ? key : toDocumentedPlatform(doc, key);
    const std::string found = findDocumented(doc, asked);
    const auto branch = objects.getChildOptional(doc, found);
    if (found.empty())
        throw Negative(describeMissingKey(file, doc, asked));
    const bool isNear = found != asked;
    if (isNear)
        Session::say("warning", HostText::makePrintable("the documentation has no sentence for \"" + path + "\"; this is about \"" +
                                                        boost::replace_all_copy(found, "[0]", "[]") + "\"" +
                                                        suggest(*branch, asked.substr(found.size() + 1))));
    if (isJson || (branch->empty() && !isNear))
        printPlaces(session, {{found, &*branch}}, '.' + found, isJson);
    else
        printMeanings(session, *branch, isNear ? found : key, false);
}

void printDoc(Session& session, const Options& options) {
    const NativeDocService service;
    ptree file;
    const std::string path = service.getFromFile(file);
    if (path.empty())
        throw Unusable("no documentation is installed; $HOST_APP_ROOT tells where the application is");
    if (file.count(kBranch) == 0)
        throw Unusable(path + ": the member \"" + kBranch + "\" is missing");
    const ptree doc = service.getDocKeyBranch(file, kBranch);
    const bool areNames = options.key == kListKeys;
    if (!areNames && options.key != kAll)
        for (const std::string& key : readPaths(options.key))
            printKey(session, path, doc, key, options.isJson);
    else if (options.isJson)
        printPlaces(session, {{kBranch, &doc}}, kBranch, true);
    else
        printMeanings(session, doc, "", areNames);
}

} // namespace

void addDoc(CLI::App& app, Session& session) {
    auto options = std::make_shared<Options>();
    CLI::App* verb = app.add_subcommand("doc", "Tell what the keys of a platform's document mean");
    verb->add_option("KEY", options->key,
                     "A key path, as 'hzep keys' lists them, with any index or none in '[]'; 'list_keys' for names only, "
                     "'-' reads keys from standard input");
    verb->add_flag("--json", options->isJson, "The branch as a JSON document");
    verb->footer("For a key without a sentence the nearest documented one above it is told, with a warning.\n"
                 "The texts are read from platforms/platform_keys_doc.json below the application root ($HOST_APP_ROOT).\n"
                 "Exit status: 1 when there is no such key, 2 when there is no documentation.\n"
                 "Example: hzep doc hardwarePlatform.board");
    verb->callback([options, &session] { printDoc(session, *options); });
}
