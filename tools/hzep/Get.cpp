// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "KeyPath.h"
#include "Verbs.h"

#include "HZEPJSONText.h"

#include <boost/property_tree/ptree.hpp>
#include <memory>

using boost::property_tree::ptree;

namespace {

struct Options {
    std::string path;
    std::string key;
    bool isJson = false;
};

/// The whole document of the file is asked first, then the part of it that the file describes.
void get(Session& session, const Options& options) {
    const std::vector<std::string> paths = readPaths(options.key);
    ptree document;
    HZEPJSONText::read(session.getDocument(options.path, false), document);
    const ptree* const part = findPart(document, options.path);
    for (const std::string& path : paths) {
        std::vector<Place> places = findPlaces(document, path);
        if (places.empty() && part)
            places = findPlaces(*part, path);
        if (places.empty())
            throw Negative(describeMissingKey(options.path, document, path));
        printPlaces(session, places, path, options.isJson);
    }
}

} // namespace

void addGet(CLI::App& app, Session& session) {
    auto options = std::make_shared<Options>();
    CLI::App* verb = app.add_subcommand("get", "Print what a platform's document holds at a key path");
    verb->add_option("PLATFORM", options->path, "A platform file (.zpfm), an archive (.dsa, .kar) or a software file (.spfm)")->required();
    verb->add_option("KEYPATH", options->key,
                     "Names joined by '.', an element of a list as in 'files[0]', every element as in 'files[].name'; "
                     "'-' reads paths from standard input")
        ->required();
    verb->add_flag("--json", options->isJson, "A value too as JSON, in an object under its name");
    verb->footer(
        "A value is printed bare, an object as JSON, a list as JSON of an object that holds it, the values of every element in lines.\n"
        "A path below 'hardwarePlatform' finds the hardware platform wherever the document has it.\n"
        "Exit status: 1 when there is no such path.\n"
        "Example: hzep get card/card.zpfm hardwarePlatform.board.name");
    verb->callback([options, &session] { get(session, *options); });
}
