// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "Output.h"
#include "Verbs.h"

#include "HZEPSemanticLabelReader.h"
#include "HostErrors.h"

#include <memory>

namespace {

struct Options {
    std::string file;
    bool isPartition = false;
    std::string extensionPath;
    Output output;
};

/// Counts the labels as they are read, so that a message about one can tell which it is.
class LabelCount {
public:
    LabelCount(const std::string& file, const HZEPSemanticLabelReader& reader) {
        before_ = HostMsgMgr::getGlobal().setSink([&, this](const HostMsg& message) {
            const std::size_t ordinal = 1 + unknown_ + reader.getUuids().size() + reader.getPcieBars().size() +
                                        reader.getPcieEndpoints().size() + reader.getCpuEndpoints().size() +
                                        reader.getDebugNetworks().size();
            const bool isUnknown = message.severityMask < HostMsgMgr::Error;
            const std::string text = file + ": label " + std::to_string(ordinal) + ": " + HostMsgMgr::getText(message);
            if (isUnknown) {
                ++unknown_;
                Session::say("warning", text);
            } else if (message.fault.cause.empty()) {
                ++faulty_;
                Session::say("error", text);
            } else {
                fileFault_ = message.fault;
            }
        });
    }
    ~LabelCount() { HostMsgMgr::getGlobal().setSink(before_); }
    LabelCount(const LabelCount&) = delete;
    LabelCount& operator=(const LabelCount&) = delete;

    std::size_t getFaulty() const { return faulty_; }
    const HostFault& getFileFault() const { return fileFault_; }

private:
    HostMsgMgr::Sink before_;
    std::size_t unknown_ = 0;
    std::size_t faulty_ = 0;
    HostFault fileFault_;
};

void read(const std::string& file, HZEPSemanticLabelReader& reader) {
    Session::checkReadable(file, "a label file");
    const LabelCount count(file, reader);
    if (!reader.parseFile(file)) {
        const HostFault& fault = count.getFileFault();
        throw Unusable(file + (fault.line > 0 ? "(" + std::to_string(fault.line) + ")" : "") + ": " + fault.cause, fault);
    }
    // What run-time software would make of a label half read can't be known.
    if (count.getFaulty() > 0)
        throw Unusable(file + ": " + std::to_string(count.getFaulty()) + " of the labels can't be used");
}

void generate(Session& session, const Options& options) {
    HZEPSemanticLabelReader reader;
    read(options.file, reader);
    const Output& output = options.output;
    const bool isToStdout = output.path.empty() || output.isStandardOutput();
    if (!isToStdout)
        ensureFree(output.path, output.isForced);
    try {
        if (options.isPartition && isToStdout)
            reader.generatePartitionMetadata(session.out());
        else if (options.isPartition)
            reader.generatePartitionMetadata(output.path);
        else if (isToStdout)
            reader.generateExtMetadata(options.extensionPath, session.out());
        else
            reader.generateExtMetadata(options.extensionPath, output.path);
    } catch (const HostDataException& error) {
        throw Unusable(options.file + ": " + error.what(), error.getFault());
    } catch (const HostError& error) {
        throw Unusable(error);
    }
}

} // namespace

void addLabels(CLI::App& app, Session& session) {
    auto options = std::make_shared<Options>();
    CLI::App* verb = app.add_subcommand("labels", "Make run-time metadata of the labels of a built shell");
    verb->add_option("FILE", options->file, "A label file (JSON)")->required();
    CLI::Option_group* document = verb->add_option_group("DOCUMENT", "Which document to make");
    document->add_flag("--partition", options->isPartition, "The partition metadata of the shell");
    document->add_option("--extension", options->extensionPath, "What an accelerator binary for the partition at PATH gets in addition")
        ->type_name("PATH");
    document->require_option(1);
    addOutput(verb, options->output, "The file to write, '-' for standard output, which is where it goes without this");
    verb->footer("A file with a faulty label is refused; labels of an unknown kind are passed over.\n"
                 "Example: hzep labels card/card.labels.json --extension /top/dynamic -o extension.json");
    verb->callback([options, &session] { generate(session, *options); });
}
