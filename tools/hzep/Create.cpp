// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "Output.h"
#include "Verbs.h"

#include "HDFToDSAConverter.h"
#include "HZEPHardwarePlatform.h"
#include "HostFile.h"
#include "SimpleFixedKARCreator.h"

#include <memory>

namespace {

struct ConverterOptions {
    std::string directory;
    std::string file;
    std::string staging;
    bool isForced = false;
};

struct CreatorOptions {
    std::string seed;
    std::string out;
    bool isForced = false;
};

void makeDsa(Session& session, const ConverterOptions& options) {
    std::unique_ptr<HDFToDSAConverter> converter;
    try {
        converter = std::make_unique<HDFToDSAConverter>(options.directory, options.file, options.staging);
    } catch (const std::exception& error) {
        throw Unusable(error);
    }
    ensureFree(converter->getDsaFile(), options.isForced);
    if (!converter->writeDSA()) {
        session.finish();
        throw Unusable(converter->getHwPfmFile() + ": no archive was made of it");
    }
    session.out() << converter->getDsaFile() << '\n';
}

void makeKar(Session& session, const CreatorOptions& options) {
    if (HostFile(options.out).getExt() != "kar")
        throw Unusable(options.out + ": the archive to write must end in .kar");
    const auto platform = session.load(options.seed);
    HZEPHardwarePlatform* const seed = platform->getHardwarePlatform();
    if (!seed)
        throw Unusable(options.seed + ": has no hardware platform");
    ensureFree(options.out, options.isForced);
    // The document is made of the seed's archive after the output was removed.
    if (HostFile::getCanonicalName(options.out) == HostFile::getCanonicalName(seed->getPlatformFile()))
        throw Unusable(options.out + ": is the archive of the seed");
    try {
        SimpleFixedKARCreator creator(options.out);
        creator.setSeedPlatform(seed);
        creator.writeKAR();
    } catch (const std::exception& error) {
        throw Unusable(error);
    }
}

} // namespace

void addHdf2dsa(CLI::App& app, Session& session) {
    auto options = std::make_shared<ConverterOptions>();
    CLI::App* verb = app.add_subcommand("hdf2dsa", "Make an archive with metadata of a hardware definition; its path is printed");
    verb->add_option("DIR", options->directory, "The folder of the definition")->required();
    verb->add_option("FILE", options->file, "The definition: an archive with hwdef.xml or sysdef.xml")->required();
    verb->add_option("STAGING", options->staging, "The folder to make for the files to pack; with a number behind it when it is there")
        ->required();
    addForce(verb, options->isForced);
    verb->footer("The archive is written beside STAGING, which stays: FILE with the extension .dsa.\n"
                 "Example: hzep hdf2dsa card card.hdf build/staging");
    verb->callback([options, &session] { makeDsa(session, *options); });
}

void addFixedKar(CLI::App& app, Session& session) {
    auto options = std::make_shared<CreatorOptions>();
    CLI::App* verb = app.add_subcommand("fixed-kar", "Make a fixed platform of another one's metadata");
    verb->add_option("SEED", options->seed, "A platform file (.zpfm) or an archive (.dsa, .kar)")->required();
    verb->add_option("OUT", options->out, "The archive to write (.kar)")->required();
    addForce(verb, options->isForced);
    verb->footer("The archive holds metadata alone: none of the files that they list.\n"
                 "Example: hzep fixed-kar card/card.zpfm fixed.kar");
    verb->callback([options, &session] { makeKar(session, *options); });
}
