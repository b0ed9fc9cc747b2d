// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "PolicyMessages.h"
#include "Repository.h"
#include "Verbs.h"

#include "HZEPMetadataLint.h"
#include "HostText.h"
#include "JSONObjectWriter.h"
#include "NativeCatalogService.h"

#include <algorithm>
#include <memory>

namespace {

struct Options {
    std::string platform;
    std::string toolVersion;
    std::string product;
    bool isDsa = false;
    bool isPreSynth = false;
    bool isJson = false;
};

/// What is wrong with the text, as the command line parser wants it; "" for numbers joined by points.
std::string checkVersion(const std::string& text) {
    bool isDigitBefore = false;
    for (const char c : text) {
        const bool isDigit = c >= '0' && c <= '9';
        if (!isDigit && (c != '.' || !isDigitBefore))
            return "expected a version of the form MAJOR.MINOR";
        isDigitBefore = isDigit;
    }
    return isDigitBefore && text.find('.') != text.npos ? "" : "expected a version of the form MAJOR.MINOR";
}

void check(Session& session, const Options& options) {
    const std::string path = findPlatform(options.platform);
    auto loader = session.open(path);
    if (path.ends_with(".spfm"))
        throw Unusable(path + ": a software file alone can't be judged; a platform file or an archive was expected");
    const PolicyMessages policy;
    zep::platform::NativeCatalogService catalog;
    catalog.setTestCompilerVersion_(options.toolVersion);
    std::string reason;
    bool isSupported = false;
    try {
        isSupported = options.isDsa        ? catalog.canDsaBeOpened(&loader, reason)
                      : options.isPreSynth ? catalog.isPreSynthPlatformSupported(&loader, reason)
                                           : catalog.isUnderWarranty(&loader, reason, options.product);
    } catch (const std::exception& error) {
        throw Unusable(path + ": " + error.what());
    }
    if (options.isJson) {
        zep_platform::JSONObjectWriter document;
        document.addKey("platformFile", loader.getFilePath());
        document.addKey("toolVersion", catalog.getCompilerVersion_());
        document.addKey("supported", isSupported);
        document.addKey("reason", reason);
        document.write(session.out());
    } else {
        // A reason may quote a file; on a terminal it must not steer it.
        session.out() << (isSupported ? "supported\n" : "not supported\n")
                      << (Session::isTerminal() ? HostText::makePrintable(reason) : reason) << (reason.empty() ? "" : "\n");
    }
    session.finish();
    if (!isSupported)
        throw Answered();
}

} // namespace

void addCheck(CLI::App& app, Session& session) {
    auto options = std::make_shared<Options>();
    CLI::App* verb = app.add_subcommand("check", "Tell whether a platform is supported by a tool version, and why or why not");
    verb->add_option("PLATFORM", options->platform,
                     "A platform file (.zpfm) or an archive (.dsa, .kar), or the name of a platform in the default directories")
        ->required();
    verb->add_option("--tool-version", options->toolVersion, "In place of the running tool's version")->check(checkVersion);
    CLI::Option* product = verb->add_option("--product", options->product,
                                            "Ask in the name of this product; the list of decisions still goes by the product installed");
    CLI::Option* dsa = verb->add_flag("--dsa", options->isDsa, "Only whether the hardware platform may be opened");
    CLI::Option* preSynth =
        verb->add_flag("--pre-synth", options->isPreSynth, "Whether the pre-synthesis platform is of the tool's release");
    dsa->excludes(preSynth)->excludes(product);
    preSynth->excludes(product);
    verb->add_flag("--json", options->isJson, "A JSON document in place of lines");
    verb->footer("Prints the verdict, and the reason below it if there is one.\n"
                 "Exit status: 0 supported, 1 not supported, 2 unreadable.\n"
                 "Example: hzep check card/card.zpfm --tool-version 2021.1");
    verb->callback([options, &session] { check(session, *options); });
}
