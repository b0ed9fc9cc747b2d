// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "Table.h"
#include "Verbs.h"

#include "HZEPMetadataLint.h"
#include "HostText.h"
#include "JSONListWriter.h"
#include "JSONObjectWriter.h"

#include <array>
#include <exception>
#include <memory>

namespace {

using Lint = HZEPMetadataLint;
using zep_platform::JSONListWriter;
using zep_platform::JSONObjectWriter;

struct Options {
    std::vector<std::string> files;
    bool isJson = false;
    bool listsRules = false;
};

void listRules(Session& session) {
    Table table({"RULE", "SEVERITY", "WHY"});
    for (const Lint::Rule& rule : Lint::getRules())
        table.add({rule.id, Lint::getSeverityName(rule.severity), rule.why});
    table.print(session.out(), Session::isTerminal());
}

/// What all files together come to, in the form asked for.
class Report {
public:
    Report(Session& session, bool isJson) : session_(session), isJson_(isJson) {}

    void add(const std::string& file, const Lint::Finding& finding) {
        ++counts_.at(finding.rule->severity);
        const std::string severity = Lint::getSeverityName(finding.rule->severity);
        if (isJson_) {
            JSONObjectWriter item;
            item.addKey("file", HostText::makePrintable(file));
            item.addKey("member", finding.member);
            item.addKey("line", std::to_string(finding.line));
            item.addKey("severity", severity);
            item.addKey("rule", finding.rule->id);
            item.addKey("text", finding.text);
            items_.addItem(std::move(item));
        } else {
            session_.out() << HostText::makePrintable(file) << (finding.member.empty() ? "" : "(" + finding.member + ")") << ":"
                           << finding.line << ": " << severity << ": " << finding.text << " [" << finding.rule->id << "]\n";
        }
    }

    void finish() {
        if (isJson_) {
            JSONObjectWriter document;
            for (const Lint::Severity severity : {Lint::Error, Lint::Warning, Lint::Info})
                document.addKey(std::string(Lint::getSeverityName(severity)) + "s", std::to_string(counts_.at(severity)));
            document.addKey("findings", std::move(items_));
            document.write(session_.out());
        }
        session_.finish();
    }

    bool isClean() const { return counts_.at(Lint::Warning) + counts_.at(Lint::Error) == 0; }
    std::string describe() const { return count(Lint::Error, "error") + ", " + count(Lint::Warning, "warning"); }

private:
    std::string count(Lint::Severity severity, const std::string& word) const {
        return std::to_string(counts_.at(severity)) + " " + word + (counts_.at(severity) == 1 ? "" : "s");
    }

    Session& session_;
    bool isJson_;
    std::array<std::size_t, 3> counts_{};
    JSONListWriter items_;
};

void lintFiles(Session& session, const Options& options) {
    Report report(session, options.isJson);
    std::vector<std::string> faults;
    for (const std::string& file : options.files)
        try {
            for (const Lint::Finding& finding : Lint::check(file))
                report.add(file, finding);
        } catch (const std::bad_alloc&) {
            throw;
        } catch (const std::exception& error) {
            faults.push_back(HostText::makePrintable(error.what()));
        }
    report.finish();
    if (!faults.empty()) {
        for (std::size_t i = 0; i + 1 < faults.size(); ++i)
            Session::say("error", faults[i]);
        throw Unusable(faults.back());
    }
    if (!report.isClean())
        throw Findings(report.describe());
}

} // namespace

void addLint(CLI::App& app, Session& session) {
    auto options = std::make_shared<Options>();
    CLI::App* verb =
        app.add_subcommand("lint", "Tell what is wrong in platform, software and hardware files, archives and emulation files");
    verb->add_option("FILE", options->files, "Files of any kind: .zpfm, .spfm, .hpfm, .dsa, .kar, hw_emu.json, hw_emu.xml, prop.json");
    verb->add_flag("--json", options->isJson, "One JSON document in place of lines");
    verb->add_flag("--rules", options->listsRules, "List the rules: id, severity, and why it matters");
    verb->footer("A finding is a line 'FILE:LINE: severity: text [rule]', for a member of an archive 'FILE(MEMBER):LINE: ...'.\n"
                 "Exit status: 0 no finding at warning or above, 1 such findings, 2 a file that can't be read at all.\n"
                 "Example: hzep lint card/card.zpfm card/hw/card.kar");
    verb->callback([options, &session] {
        if (options->listsRules)
            listRules(session);
        else if (options->files.empty())
            throw Unusable("lint needs a FILE, or --rules");
        else
            lintFiles(session, *options);
    });
}
