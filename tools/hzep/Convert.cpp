// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "Output.h"
#include "Verbs.h"

#include "HPLPlatform.h"
#include "HZEPDsaJsonReader.h"
#include "HZEPDsaXmlWriter.h"
#include "HostFile.h"
#include "HostFileUtils.h"
#include "JSONObjectWriter.h"
#include "lmx60.h"

#include <memory>
#include <sstream>

namespace {

struct Options {
    std::string input;
    Output output;
};

std::string renderJson(const HPLPlatform& platform) {
    zep_platform::JSONObjectWriter writer;
    platform.toJSON(writer);
    std::ostringstream text;
    writer.write(text);
    text << '\n';
    return std::move(text).str();
}

void write(Session& session, HPLPlatform& platform, const Options& options, bool asXml) {
    try {
        if (options.output.isStandardOutput())
            session.out() << renderJson(platform);
        else if (asXml)
            HZEPDsaXmlWriter(&platform, options.output.path).writeDSA();
        else
            HostFileUtils::writeFileAtomically(options.output.path, renderJson(platform));
    } catch (const lmx60::lmx_exception& error) {
        throw Negative(options.input + ": can't be told in XML: " + error.what());
    } catch (const std::exception& error) {
        throw Unusable(error);
    }
}

void convert(Session& session, const Options& options) {
    const std::string& out = options.output.path;
    const std::string outExtension = options.output.isStandardOutput() ? "json" : HostFile(out).getExt();
    if (outExtension != "xml" && outExtension != "json")
        throw Unusable(out + ": the output must end in .xml or .json");
    if (!options.output.isStandardOutput())
        ensureFree(out, options.output.isForced);
    const std::string extension = HostFile(options.input).getExt();
    if (extension == "json") {
        HPLPlatform platform;
        try {
            if (!HZEPDsaJsonReader(&platform).parseJsonString(HostFileUtils::readFile(options.input)))
                throw Unusable(options.input + ": is empty");
        } catch (const Unusable&) {
            throw;
        } catch (const std::exception& error) {
            const std::string what = error.what();
            throw Unusable(what.find(options.input) == std::string::npos ? options.input + ": " + what : what, getFaultOf(error));
        }
        write(session, platform, options, outExtension == "xml");
        return;
    }
    if (!HZEPHardwarePlatform::isValidPlatformExt("." + extension))
        throw Unusable(options.input + ": an archive (.dsa, .kar) or its metadata (.json) was expected");
    const auto platform = session.load(options.input);
    auto* hardware = dynamic_cast<HPLPlatform*>(platform->getHardwarePlatform());
    if (!hardware)
        throw Unusable(options.input + ": has no hardware platform");
    write(session, *hardware, options, outExtension == "xml");
}

} // namespace

void addConvert(CLI::App& app, Session& session) {
    auto options = std::make_shared<Options>();
    CLI::App* verb = app.add_subcommand("convert", "Write the metadata of an archive as JSON or as XML");
    verb->add_option("ARCHIVE", options->input, "An archive (.dsa, .kar), or JSON metadata taken out of one (.json)")->required();
    addOutput(verb, options->output, "The file to write, whose extension, .xml or .json, tells the form; '-' for JSON to standard output")
        ->required();
    verb->footer("XML has room for less than JSON; docs/xml-metadata.md tells what gets lost.\n"
                 "Exit status: 1 for metadata that can't be told in XML; then nothing is written.\n"
                 "Example: hzep convert card/hw/card.dsa -o kar.json");
    verb->callback([options, &session] {
        options->input = Session::findArchive(options->input);
        convert(session, *options);
    });
}
