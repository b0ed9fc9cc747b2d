// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "KeyPath.h"
#include "Verbs.h"

#include "HZEPJSONText.h"
#include "HZEPMetadataLint.h"
#include "NativeObjectService.h"

#include <boost/property_tree/ptree.hpp>
#include <memory>

using boost::property_tree::ptree;
using zep::platform::NativeObjectService;

namespace {

struct Options {
    std::string path;
    std::string key;
    bool isJson = false;
};

/// What the whole document of the file holds at the path, else what its own part of the document holds there.
std::string find(Session& session, const Options& options) {
    const NativeObjectService objects;
    const std::string document = session.getDocument(options.path, false);
    bool ok = false;
    std::string text = objects.getObjectsByPath_(document, options.key, ok);
    if (ok)
        return text;
    const bool isPart = !options.path.ends_with(".zpfm");
    if (isPart) {
        const std::string part = objects.getAsJsonStr(options.path);
        text = objects.getObjectsByPath_(part, options.key, ok);
        if (ok)
            return text;
    }
    ptree tree;
    HZEPJSONText::read(document, tree);
    throw Negative(describeMissingKey(options.path, tree, options.key));
}

void get(Session& session, const Options& options) {
    if (options.key.empty())
        throw Unusable("the key path is empty");
    const std::string text = find(session, options);
    const bool isValue = !text.ends_with('\n');
    if (isValue && options.isJson) {
        ptree holder;
        holder.push_back({options.key.substr(options.key.rfind('.') + 1), ptree(text)});
        HZEPJSONText::write(session.out(), holder);
    } else if (isValue) {
        session.out() << (Session::isTerminal() ? HZEPMetadataLint::makePrintable(text) : text) << '\n';
    } else {
        session.out() << text;
    }
}

} // namespace

void addGet(CLI::App& app, Session& session) {
    auto options = std::make_shared<Options>();
    CLI::App* verb = app.add_subcommand("get", "Print what a platform's document holds at a key path");
    verb->add_option("PLATFORM", options->path, "A platform file (.zpfm), an archive (.dsa, .kar) or a software file (.spfm)")->required();
    verb->add_option("KEYPATH", options->key, "Names joined by '.', an element of a list as in 'files[0]'")->required();
    verb->add_flag("--json", options->isJson, "A value too as JSON, in an object under its name");
    verb->footer("A value is printed bare, an object as JSON, a list as JSON of an object that holds it.\n"
                 "A path below 'hardwarePlatform' finds the hardware platform wherever the document has it.\n"
                 "Exit status: 1 when there is no such path.\n"
                 "Example: hzep get card/card.zpfm hardwarePlatform.board.name");
    verb->callback([options, &session] { get(session, *options); });
}
