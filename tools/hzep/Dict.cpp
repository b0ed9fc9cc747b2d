// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "KeyPath.h"
#include "Table.h"
#include "Verbs.h"

#include "HZEPJSONText.h"
#include "HostText.h"
#include "NativeDictService.h"

#include <boost/property_tree/ptree.hpp>
#include <map>
#include <memory>

using boost::property_tree::ptree;
using zep::platform::NativeDictService;

namespace {

constexpr const char* kKept = "identities of partitions and the vector engine, files and id codes";

struct Options {
    std::string path;
    std::string key;
    bool isFiltered = false;
    bool isJson = false;
};

using Dict = std::map<std::string, std::string>;

/// Filters a dictionary that is there already.
class FilterService : public NativeDictService {
public:
    explicit FilterService(const Dict& dict) : dict_(dict) {}
    using NativeDictService::getAsDict;
    Dict getAsDict(const std::string&, const std::string&, bool&) const override { return dict_; }

private:
    const Dict& dict_;
};

Dict getDict(Session& session, const Options& options) {
    ptree document;
    HZEPJSONText::read(session.getDocument(options.path, false), document);
    const ptree* const part = findPart(document, options.path);
    const ptree& root = part ? *part : document;
    const NativeDictService service;
    if (options.key.empty())
        return service.getAsDict(root, "");
    Dict dict;
    for (const std::string& path : readPaths(options.key)) {
        std::vector<Place> places = findPlaces(root, path);
        if (places.empty() && part)
            places = findPlaces(document, path);
        if (places.empty())
            throw Negative(describeMissingKey(options.path, root, path));
        for (const Place& place : places)
            if (place.node->empty())
                dict.emplace(place.path, place.node->data());
            else
                dict.merge(service.getAsDict(*place.node, place.path));
    }
    return dict;
}

void printDict(Session& session, const Options& options) {
    Dict dict = getDict(session, options);
    if (options.isFiltered) {
        dict = FilterService(dict).getFilteredDict(options.path, options.key);
        if (dict.empty())
            Session::say("warning", HostText::makePrintable(options.path) + ": nothing here is what --filter keeps: " + kKept);
    }
    if (options.isJson) {
        ptree document;
        for (const auto& [key, value] : dict)
            document.push_back({key, ptree(value)});
        HZEPJSONText::write(session.out(), document);
    } else if (Session::isTerminal()) {
        Table table({"KEY", "VALUE"});
        for (const auto& [key, value] : dict)
            table.add({key, value});
        table.print(session.out(), true);
    } else {
        for (const auto& [key, value] : dict)
            session.out() << HostText::makePrintable(key) << " = " << HostText::makePrintable(value) << '\n';
    }
}

} // namespace

void addDict(CLI::App& app, Session& session) {
    auto options = std::make_shared<Options>();
    CLI::App* verb = app.add_subcommand("dict", "Print a platform's document, or a branch of it, as flat lines 'key = value'");
    verb->add_option("PLATFORM", options->path, "A platform file (.zpfm), an archive (.dsa, .kar) or a software file (.spfm)")->required();
    verb->add_option("KEYPATH", options->key, "A branch, its path stands in front of every key; '-' reads paths from standard input");
    verb->add_flag("--filter", options->isFiltered, "Only " + std::string(kKept));
    verb->add_flag("--json", options->isJson, "One JSON object in place of lines");
    verb->footer(
        "The keys of an archive or a software file begin at the part that it describes; KEYPATH begins there or, as 'hzep keys' lists\n"
        "them, at the root of the document.\n"
        "Exit status: 1 when there is no such path.\n"
        "Example: hzep dict card/hw/card.kar --filter");
    verb->callback([options, &session] { printDict(session, *options); });
}
