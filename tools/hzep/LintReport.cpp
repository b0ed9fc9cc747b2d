// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "LintReport.h"

#include "JSONListWriter.h"
#include "JSONObjectWriter.h"

#include <map>

namespace {

using Lint = HZEPMetadataLint;
using zep_platform::JSONListWriter;
using zep_platform::JSONObjectWriter;

std::string describePlace(const Lint::Place& place) {
    return place.file + (place.member.empty() ? "" : "(" + place.member + ")");
}

/// JSON whose numbers are numbers, which the writers of the library don't make.
class Writer {
public:
    explicit Writer(std::ostream& out) : out_(out) {}

    void open(char bracket, const char* name = nullptr) {
        begin(name);
        out_ << bracket;
        isFirst_ = true;
        indent_ += 2;
    }
    void close(char bracket) {
        indent_ -= 2;
        if (!isFirst_)
            out_ << '\n' << std::string(indent_, ' ');
        out_ << bracket;
        isFirst_ = false;
    }
    void text(const char* name, const std::string& value) {
        begin(name);
        quote(value);
    }
    void number(const char* name, std::size_t value) {
        begin(name);
        out_ << value;
    }

private:
    void begin(const char* name) {
        if (indent_ > 0)
            out_ << (isFirst_ ? "\n" : ",\n") << std::string(indent_, ' ');
        isFirst_ = false;
        if (name)
            out_ << '"' << name << "\": ";
    }
    /// The texts are printable.
    void quote(const std::string& value) {
        out_ << '"';
        for (const char c : value)
            out_ << (c == '"' || c == '\\' ? "\\" : "") << c;
        out_ << '"';
    }

    std::ostream& out_;
    std::size_t indent_ = 0;
    bool isFirst_ = true;
};

/// Of a path, which a URI has no blanks and other signs in.
std::string toUri(const std::string& path) {
    constexpr char kDigits[] = "0123456789ABCDEF";
    std::string uri = path.starts_with('/') ? "file://" : "";
    for (const char c : path)
        if ((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || std::string("-._~/").find(c) != std::string::npos)
            uri += c;
        else
            uri += {'%', kDigits[static_cast<unsigned char>(c) >> 4], kDigits[static_cast<unsigned char>(c) & 15]};
    return uri;
}

void writeLocation(Writer& writer, const Lint::Place& place) {
    writer.open('{');
    writer.open('{', "physicalLocation");
    writer.open('{', "artifactLocation");
    writer.text("uri", toUri(place.file));
    writer.close('}');
    // A line of a member is none of its archive.
    if (place.member.empty()) {
        writer.open('{', "region");
        writer.number("startLine", std::max<std::size_t>(place.line, 1));
        if (place.column > 0)
            writer.number("startColumn", place.column);
        writer.close('}');
    }
    writer.close('}');
    if (!place.member.empty()) {
        writer.open('[', "logicalLocations");
        writer.open('{');
        writer.text("fullyQualifiedName", place.member + ":" + std::to_string(place.line));
        writer.text("kind", "resource");
        writer.close('}');
        writer.close(']');
    }
    writer.close('}');
}

} // namespace

void LintReport::add(const Lint::Finding& finding) {
    ++counts_.at(finding.rule->severity);
    if (form_ == Json || form_ == Sarif)
        findings_.push_back(finding);
    else
        addText(finding);
}

void LintReport::addText(const Lint::Finding& finding) {
    const bool isUnix = form_ == Unix;
    out_ << describePlace(finding.place) << ':' << finding.place.line;
    if (isUnix || form_ == Marked)
        out_ << ':' << std::max<std::size_t>(finding.place.column, isUnix ? 1 : 0);
    out_ << ": " << Lint::getSeverityName(finding.rule->severity) << ": " << finding.text;
    if (!isUnix && !finding.expected.empty() && finding.text.find("expected") == std::string::npos)
        out_ << "; expected " << finding.expected;
    out_ << " [" << finding.rule->id << "]\n";
    if (form_ != Marked)
        return;
    if (!finding.source.empty())
        out_ << "    " << finding.source << "\n    " << std::string(finding.place.column - 1, ' ') << "^\n";
    if (!finding.fix.empty())
        out_ << "    write \"" << finding.fix << "\"\n";
    if (finding.other.line > 0)
        out_ << "    see " << describePlace(finding.other) << ':' << finding.other.line << '\n';
}

void LintReport::finish() {
    if (form_ == Json)
        finishJson();
    else if (form_ == Sarif)
        finishSarif();
}

void LintReport::finishJson() {
    JSONListWriter items;
    for (const Lint::Finding& finding : findings_) {
        JSONObjectWriter item;
        item.addKey("file", finding.place.file);
        item.addKey("member", finding.place.member);
        item.addKey("line", std::to_string(finding.place.line));
        item.addKey("column", finding.place.column == 0 ? "" : std::to_string(finding.place.column));
        item.addKey("severity", Lint::getSeverityName(finding.rule->severity));
        item.addKey("rule", finding.rule->id);
        item.addKey("message", finding.text);
        item.addKey("expected", finding.expected);
        item.addKey("fix", finding.fix);
        items.addItem(std::move(item));
    }
    JSONObjectWriter document;
    document.addKey("findings", std::move(items));
    for (const Lint::Severity severity : {Lint::Error, Lint::Warning, Lint::Note})
        document.addKey(std::string(Lint::getSeverityName(severity)) + "s", std::to_string(count(severity)));
    document.write(out_);
}

void LintReport::finishSarif() {
    std::map<const Lint::Rule*, std::size_t> indices;
    Writer writer(out_);
    writer.open('{');
    writer.text("$schema", "https://json.schemastore.org/sarif-2.1.0.json");
    writer.text("version", "2.1.0");
    writer.open('[', "runs");
    writer.open('{');
    writer.open('{', "tool");
    writer.open('{', "driver");
    writer.text("name", "hzep lint");
    writer.text("version", HZEP_VERSION);
    writer.open('[', "rules");
    for (const Lint::Rule& rule : Lint::getRules()) {
        indices.emplace(&rule, indices.size());
        writer.open('{');
        writer.text("id", rule.id);
        writer.open('{', "shortDescription");
        writer.text("text", rule.why);
        writer.close('}');
        writer.open('{', "help");
        writer.text("text", rule.remedy);
        writer.close('}');
        writer.open('{', "defaultConfiguration");
        writer.text("level", Lint::getSeverityName(rule.severity));
        writer.close('}');
        writer.close('}');
    }
    writer.close(']');
    writer.close('}');
    writer.close('}');
    writer.open('[', "results");
    for (const Lint::Finding& finding : findings_) {
        writer.open('{');
        writer.text("ruleId", finding.rule->id);
        writer.number("ruleIndex", indices.at(finding.rule));
        writer.text("level", Lint::getSeverityName(finding.rule->severity));
        writer.open('{', "message");
        writer.text("text", finding.text + (finding.expected.empty() ? "" : "; expected " + finding.expected));
        writer.close('}');
        writer.open('[', "locations");
        writeLocation(writer, finding.place);
        writer.close(']');
        if (finding.other.line > 0) {
            writer.open('[', "relatedLocations");
            writeLocation(writer, finding.other);
            writer.close(']');
        }
        writer.close('}');
    }
    writer.close(']');
    writer.close('}');
    writer.close(']');
    writer.close('}');
    out_ << '\n';
}

std::string LintReport::describe() const {
    const auto word = [this](Lint::Severity severity) {
        return std::to_string(count(severity)) + " " + Lint::getSeverityName(severity) + (count(severity) == 1 ? "" : "s");
    };
    return word(Lint::Error) + ", " + word(Lint::Warning) + (count(Lint::Note) > 0 ? ", " + word(Lint::Note) : "");
}
