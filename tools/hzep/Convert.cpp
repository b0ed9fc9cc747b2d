// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "Losses.h"
#include "Output.h"
#include "Verbs.h"

#include "HPLPlatform.h"
#include "HZEPDsaJsonReader.h"
#include "HZEPDsaXmlWriter.h"
#include "HZEPJSONText.h"
#include "HostFile.h"
#include "HostFileUtils.h"
#include "HostZip.h"
#include "lmx60.h"

#include <boost/property_tree/ptree.hpp>

#include <memory>

namespace {

struct Options {
    std::string input;
    Output output;
    bool isStrict = false;
};

/// Extension metadata of many levels lie one level deeper in the document.
void refuseUnreadable(const HPLPlatform& platform, const std::string& input) {
    boost::property_tree::ptree tree;
    try {
        HZEPJSONText::read(renderDocument(platform), tree);
    } catch (const std::exception& error) {
        throw Unusable(input + ": its document could not be read again: " + error.what());
    }
}

/// Before anything is written.
void tellLosses(const std::string& text, HPLPlatform& platform, const Options& options, bool asXml) {
    if (!asXml)
        refuseUnreadable(platform, options.input);
    Losses losses;
    const bool isJson = !Losses::isXml(text);
    if (const auto xml = asXml && isJson ? renderXml(platform) : std::nullopt)
        losses.addWriting(text, *xml);
    else if (!asXml || !isJson)
        losses.addReading(text, platform);
    losses.tell(options.input, options.isStrict);
}

/// The metadata that loading the archive reads.
std::string readMetadata(const std::string& archive) {
    const std::string ext = HostFile(HostFile::getCanonicalName(archive)).getExt();
    for (const std::string& name : {"alt_" + ext + ".json", ext + ".json"})
        if (HostZip::containsFile(archive, name))
            return HostZip::readMember(archive, name);
    return HostZip::readMember(archive, ext + ".xml");
}

void write(Session& session, HPLPlatform& platform, const Options& options, bool asXml) {
    try {
        if (options.output.isStandardOutput())
            session.out() << renderDocument(platform) << '\n';
        else if (asXml)
            HZEPDsaXmlWriter(&platform, options.output.path).writeDSA();
        else
            HostFileUtils::writeFileAtomically(options.output.path, renderDocument(platform) + '\n');
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
        std::string text;
        try {
            text = HostFileUtils::readFile(options.input);
            if (!HZEPDsaJsonReader(&platform).parseJsonString(text))
                throw Unusable(options.input + ": is empty");
        } catch (const Unusable&) {
            throw;
        } catch (const std::exception& error) {
            const std::string what = error.what();
            throw Unusable(what.find(options.input) == std::string::npos ? options.input + ": " + what : what, getFaultOf(error));
        }
        tellLosses(text, platform, options, outExtension == "xml");
        write(session, platform, options, outExtension == "xml");
        return;
    }
    if (!HZEPHardwarePlatform::isValidPlatformExt("." + extension))
        throw Unusable(options.input + ": an archive (.dsa, .kar) or its metadata (.json) was expected");
    const auto platform = session.load(options.input);
    auto* hardware = dynamic_cast<HPLPlatform*>(platform->getHardwarePlatform());
    if (!hardware)
        throw Unusable(options.input + ": has no hardware platform");
    tellLosses(readMetadata(options.input), *hardware, options, outExtension == "xml");
    write(session, *hardware, options, outExtension == "xml");
}

} // namespace

void addConvert(CLI::App& app, Session& session) {
    auto options = std::make_shared<Options>();
    CLI::App* verb = app.add_subcommand("convert", "Write the metadata of an archive as JSON or as XML");
    verb->add_option("ARCHIVE", options->input, "An archive (.dsa, .kar), or JSON metadata taken out of one (.json)")->required();
    addOutput(verb, options->output, "The file to write, whose extension, .xml or .json, tells the form; '-' for JSON to standard output")
        ->required();
    Losses::addOption(verb, options->isStrict);
    verb->footer("XML has room for less than JSON; docs/xml-metadata.md tells what gets lost; the keys are named.\n"
                 "Exit status: 1 for metadata that can't be told in XML; then nothing is written.\n"
                 "Example: hzep convert card/hw/card.dsa -o kar.json");
    verb->callback([options, &session] {
        options->input = Session::findArchive(options->input);
        convert(session, *options);
    });
}
