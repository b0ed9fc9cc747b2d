// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "KeyPath.h"
#include "Table.h"
#include "Verbs.h"

#include "HZEPJSONText.h"
#include "NativeDictService.h"
#include "NativeDocService.h"
#include "NativeObjectService.h"

#include <boost/algorithm/string/replace.hpp>
#include <boost/property_tree/ptree.hpp>
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
std::string toFirstElements(const std::string& key) {
    std::string first;
    std::size_t begin = 0;
    for (std::size_t open, close; (open = key.find('[', begin)) != key.npos && (close = key.find(']', open)) != key.npos; begin = close + 1)
        first += key.substr(begin, open - begin) + "[0]";
    return first + key.substr(begin);
}

void printDoc(Session& session, const Options& options) {
    const NativeDocService service;
    const NativeObjectService objects;
    ptree file;
    const std::string path = service.getFromFile(file);
    if (path.empty())
        throw Unusable("no documentation is installed; $HOST_APP_ROOT tells where the application is");
    if (file.count(kBranch) == 0)
        throw Unusable(path + ": the member \"" + kBranch + "\" is missing");
    ptree doc = service.getDocKeyBranch(file, kBranch);

    const std::string key = objects.getPathWithActualHwPlatformRoot(doc, options.key);
    if (!service.isValidDocKey(doc, key))
        throw Negative(describeMissingKey(path, doc, toFirstElements(key)));
    const bool isWhole = key == kAll || key == kListKeys;
    const std::string first = isWhole ? "" : toFirstElements(key);
    bool ok = true;
    const std::string way = std::string(kBranch) + (isWhole ? "" : "." + first);
    const ptree branch = service.getBranch(file, way, ok);
    if (options.isJson || branch.empty()) {
        printAt(session, service.getAsJsonStr(file), way, options.isJson);
        return;
    }
    const bool isList = options.key == kListKeys;
    Table table(isList ? std::vector<std::string>{"KEY"} : std::vector<std::string>{"KEY", "MEANING"});
    for (const auto& [name, text] : NativeDictService().getAsDict(branch, first)) {
        std::vector<std::string> row{boost::replace_all_copy(name, "[0]", "[]")};
        if (!isList)
            row.push_back(text);
        table.add(std::move(row));
    }
    table.print(session.out(), Session::isTerminal());
}

} // namespace

void addDoc(CLI::App& app, Session& session) {
    auto options = std::make_shared<Options>();
    CLI::App* verb = app.add_subcommand("doc", "Tell what the keys of a platform's document mean");
    verb->add_option("KEY", options->key,
                     "A key path, as 'hzep keys' lists them, with any index or none in '[]'; 'list_keys' for names only");
    verb->add_flag("--json", options->isJson, "The branch as a JSON document");
    verb->footer("The texts are read from platforms/platform_keys_doc.json below the application root ($HOST_APP_ROOT).\n"
                 "Exit status: 1 when there is no such key, 2 when there is no documentation.\n"
                 "Example: hzep doc hardwarePlatform.board");
    verb->callback([options, &session] { printDoc(session, *options); });
}
