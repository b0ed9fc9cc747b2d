// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "LintReport.h"
#include "Table.h"
#include "Verbs.h"

#include "HZEPMetadataLint.h"
#include "HZEPNearNames.h"
#include "HostText.h"
#include "JSONListWriter.h"
#include "JSONObjectWriter.h"

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <exception>
#include <filesystem>
#include <memory>
#include <mutex>
#include <set>
#include <thread>

namespace {

using Lint = HZEPMetadataLint;
using zep_platform::JSONListWriter;
using zep_platform::JSONObjectWriter;

struct Options {
    std::vector<std::string> files;
    std::vector<std::string> only;
    std::vector<std::string> ignored;
    std::string explained;
    std::string format = "text";
    std::string severity = "note";
    bool isJson = false;
    bool isSarif = false;
    bool isStrict = false;
    bool listsRules = false;
    bool isPage = false;
};

const Lint::Rule& findRule(const std::string& id) {
    if (const Lint::Rule* rule = Lint::findRule(id))
        return *rule;
    std::vector<std::string> ids;
    for (const Lint::Rule& rule : Lint::getRules())
        ids.emplace_back(rule.id);
    throw Unusable("there is no rule '" + HostText::makePrintable(id) + "'" + HZEPNearNames::suggest(id, ids));
}

void listRules(Session& session, bool isJson) {
    if (!isJson) {
        Table table({"RULE", "SEVERITY", "KIND", "WHY"});
        for (const Lint::Rule& rule : Lint::getRules())
            table.add({rule.id, Lint::getSeverityName(rule.severity), rule.kind, rule.why});
        return table.print(session.out(), Session::isTerminal());
    }
    JSONListWriter rules;
    for (const Lint::Rule& rule : Lint::getRules()) {
        JSONObjectWriter item;
        item.addKey("id", rule.id);
        item.addKey("kind", rule.kind);
        item.addKey("severity", Lint::getSeverityName(rule.severity));
        item.addKey("why", rule.why);
        item.addKey("remedy", rule.remedy);
        item.addKey("file", rule.example.file);
        item.addKey("broken", rule.example.broken);
        item.addKey("mended", rule.example.mended ? rule.example.mended : "");
        rules.addItem(std::move(item));
    }
    JSONObjectWriter document;
    document.addKey("rules", std::move(rules));
    document.write(session.out());
}

std::string indent(const std::string& text) {
    std::string lines = "    ";
    for (const char c : text.substr(0, text.find_last_not_of('\n') + 1))
        lines += c == '\n'                                            ? "\n    "
                 : c == '\t' || static_cast<unsigned char>(c) >= 0x20 ? std::string(1, c)
                                                                      : HostText::makePrintable({&c, 1});
    return lines + "\n";
}

/// docs/lint-rules.md
void printPage(Session& session) {
    session.out() << "# The rules of `hzep lint`\n\nMade by `hzep lint --rules --page`. The examples are pieces of files in `examples/`: "
                     "with the broken "
                     "one in place of the\nmended one, just this rule speaks.\n";
    std::string kind;
    for (const Lint::Rule& rule : Lint::getRules()) {
        if (kind != rule.kind)
            session.out() << "\n## " << (kind = rule.kind) << '\n';
        const Lint::Example& example = rule.example;
        session.out() << "\n### " << rule.id << "\n\n"
                      << Lint::getSeverityName(rule.severity) << ": " << rule.why << ' ' << rule.remedy << "\n\n";
        if (*example.file)
            session.out() << "`" << example.file << "`" << (example.mended ? ", broken:" : ", which should not be there:") << "\n\n";
        session.out() << (*example.broken ? indent(example.broken) : "    (nothing)\n");
        if (example.mended)
            session.out() << "\nmended:\n\n" << indent(example.mended);
    }
}

void explain(Session& session, const std::string& id) {
    const Lint::Rule& rule = findRule(id);
    const Lint::Example& example = rule.example;
    session.out() << rule.id << ": " << Lint::getSeverityName(rule.severity) << " (" << rule.kind << ")\n\n"
                  << rule.why << '\n'
                  << rule.remedy << '\n';
    if (*example.file)
        session.out() << "\nIn " << example.file << (example.mended ? ", broken:\n" : ", which should not be there:\n");
    else
        session.out() << "\nBroken:\n";
    session.out() << (*example.broken ? indent(example.broken) : "    (nothing)\n");
    if (example.mended)
        session.out() << "mended:\n" << indent(example.mended);
}

/// Checks the units on all cores and hands the findings over in the order of the units.
class Work {
public:
    explicit Work(std::vector<std::string> units) : units_(std::move(units)), results_(units_.size()) {}
    Work(const Work&) = delete;
    Work& operator=(const Work&) = delete;
    ~Work() {
        isOver_ = true;
        isTaken_.notify_all();
        for (std::thread& thread : threads_)
            thread.join();
    }

    template <class Take>
    void run(const Take& take) {
        const std::size_t cores = std::max(1U, std::thread::hardware_concurrency());
        if (units_.size() > 1 && cores > 1)
            for (std::size_t i = 0; i < std::min(cores, units_.size()); ++i)
                threads_.emplace_back([this] { work(); });
        for (std::size_t i = 0; i < units_.size(); ++i) {
            if (threads_.empty()) {
                check(i);
            } else {
                std::unique_lock lock(mutex_);
                isMade_.wait(lock, [&] { return results_[i].isMade; });
            }
            take(units_[i], results_[i].findings, results_[i].fault);
            const std::scoped_lock lock(mutex_);
            results_[i] = {};
            taken_ = i + 1;
            isTaken_.notify_all();
        }
    }

private:
    struct Result {
        std::vector<Lint::Finding> findings;
        std::exception_ptr fault;
        bool isMade = false;
    };

    void work() {
        for (std::size_t i; (i = next_++) < units_.size();) {
            {
                std::unique_lock lock(mutex_);
                isTaken_.wait(lock, [&] { return isOver_ || i < taken_ + kMaxAhead; });
            }
            if (isOver_)
                return;
            check(i);
        }
    }

    void check(std::size_t i) {
        Result result;
        try {
            result.findings = Lint::check(units_[i]);
        } catch (...) {
            result.fault = std::current_exception();
        }
        result.isMade = true;
        const std::scoped_lock lock(mutex_);
        results_[i] = std::move(result);
        isMade_.notify_all();
    }

    /// Units whose findings may wait to be printed.
    static constexpr std::size_t kMaxAhead = 64;

    std::vector<std::string> units_;
    std::vector<Result> results_;
    std::vector<std::thread> threads_;
    std::mutex mutex_;
    std::condition_variable isMade_, isTaken_;
    std::atomic<std::size_t> next_ = 0;
    std::size_t taken_ = 0;
    std::atomic<bool> isOver_ = false;
};

class Filter {
public:
    explicit Filter(const Options& options) {
        for (const std::string& id : options.only)
            only_.insert(&findRule(id));
        for (const std::string& id : options.ignored)
            ignored_.insert(&findRule(id));
        lowest_ = options.severity == "error" ? Lint::Error : options.severity == "warning" ? Lint::Warning : Lint::Note;
    }

    bool takes(const Lint::Finding& finding) const {
        return finding.rule->severity >= lowest_ && !ignored_.contains(finding.rule) && (only_.empty() || only_.contains(finding.rule));
    }

private:
    std::set<const Lint::Rule*> only_, ignored_;
    Lint::Severity lowest_;
};

LintReport::Form getForm(const Options& options) {
    if (options.isJson)
        return LintReport::Json;
    if (options.isSarif)
        return LintReport::Sarif;
    return options.format == "unix" ? LintReport::Unix : Session::isTerminal() ? LintReport::Marked : LintReport::Text;
}

void lintFiles(Session& session, const Options& options) {
    const Filter filter(options);
    std::vector<std::string> units;
    std::vector<std::string> faults;
    for (const std::string& file : options.files)
        if (std::error_code code; std::filesystem::is_directory(file, code))
            try {
                const std::vector<std::string> below = Lint::list(file);
                if (below.empty())
                    faults.push_back(HostText::makePrintable(file) + ": there is nothing to check in this directory");
                units.insert(units.end(), below.begin(), below.end());
            } catch (const std::exception& error) {
                faults.push_back(HostText::makePrintable(error.what()));
            }
        else
            units.push_back(file);
    LintReport report(session.out(), getForm(options));
    Work(std::move(units)).run([&](const std::string& unit, const std::vector<Lint::Finding>& findings, const std::exception_ptr& fault) {
        for (const Lint::Finding& finding : findings)
            if (filter.takes(finding))
                report.add(finding);
        if (!fault)
            return;
        try {
            std::rethrow_exception(fault);
        } catch (const std::bad_alloc&) {
            throw;
        } catch (const std::exception& error) {
            faults.push_back(HostText::makePrintable(*error.what() ? error.what() : unit));
        }
    });
    report.finish();
    session.finish();
    if (!faults.empty()) {
        for (std::size_t i = 0; i + 1 < faults.size(); ++i)
            Session::say("error", faults[i]);
        throw Unusable(faults.back());
    }
    if (report.count(Lint::Error) + report.count(Lint::Warning) + (options.isStrict ? report.count(Lint::Note) : 0) > 0)
        throw Findings(report.describe());
}

} // namespace

void addLint(CLI::App& app, Session& session) {
    auto options = std::make_shared<Options>();
    CLI::App* verb = app.add_subcommand("lint", "Tell what is wrong in a platform, or in one of its files");
    verb->add_option(
        "PLATFORM", options->files,
        "Platform files, each judged with all that it names; directories; other files: .spfm, .hpfm, .dsa, .kar, .mda, metadata, "
        "emulation, property, label and board files");
    CLI::Option* json = verb->add_flag("--json", options->isJson, "One JSON document in place of lines");
    verb->add_flag("--sarif", options->isSarif, "One SARIF document (2.1.0)")->excludes(json);
    verb->add_option("--format", options->format, "text, or unix: FILE:LINE:COLUMN: severity: text, for editors")
        ->check(CLI::IsMember({"text", "unix"}));
    verb->add_option("--severity", options->severity, "Tell only what is a note (all), a warning or an error, or worse")
        ->check(CLI::IsMember({"note", "warning", "error"}));
    verb->add_option("--only", options->only, "Tell only what this rule finds; can be given again")->allow_extra_args(false);
    verb->add_option("--ignore", options->ignored, "Don't tell what this rule finds; can be given again")->allow_extra_args(false);
    verb->add_flag("--strict", options->isStrict, "Exit with 1 for notes too");
    verb->add_flag("--rules", options->listsRules, "List the rules: id, severity, kind, and why it matters");
    verb->add_flag("--page", options->isPage, "With --rules: as a page of text with the examples");
    verb->add_option("--explain", options->explained, "Tell about one rule, with an example");
    verb->footer("A finding is a line 'FILE:LINE: severity: text [rule]', for a member of an archive 'FILE(MEMBER):LINE: ...'.\n"
                 "A file .hzeplint beside a platform allows rules, one 'RULE REASON' a line.\n"
                 "Exit status: 0 no finding at warning or above, 1 such findings, 2 a file that can't be read at all.\n"
                 "Example: hzep lint card/card.zpfm");
    verb->callback([options, &session] {
        if (!options->explained.empty())
            explain(session, options->explained);
        else if (options->listsRules)
            options->isPage ? printPage(session) : listRules(session, options->isJson);
        else if (options->files.empty())
            throw Unusable("lint needs a PLATFORM or FILE, or --rules, or --explain RULE");
        else
            lintFiles(session, *options);
    });
}
