// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "LintRules.h"

#include "HostText.h"

#include <algorithm>
#include <utility>

namespace {

const HZEPMetadataLint::Rule* find(lint::Rule number) {
    return &HZEPMetadataLint::getRules().at(static_cast<std::size_t>(number));
}

/// Hands out the starts of a text's lines, in rising order.
class Lines {
public:
    explicit Lines(std::string_view text) : text_(text) {}

    std::string_view get(std::size_t line) {
        for (; line_ < line; ++line_) {
            const std::size_t end = text_.find('\n', start_);
            if (end == std::string_view::npos)
                return {};
            start_ = end + 1;
        }
        const std::string_view rest = text_.substr(start_, HZEPMetadataLint::kMaxSource);
        return rest.substr(0, std::min(rest.find_first_of("\r\n"), rest.size()));
    }

private:
    std::string_view text_;
    std::size_t start_ = 0;
    std::size_t line_ = 1;
};

/// Printable and short; the place in it stays the place told. A line whose place would shift is not shown.
std::string show(std::string_view line, std::size_t column) {
    while (!line.empty() && (static_cast<unsigned char>(line.back()) & 0xC0) == 0x80)
        line.remove_suffix(1);
    if (column == 0 || column > line.size())
        return {};
    std::string shown(line);
    std::replace(shown.begin(), shown.end(), '\t', ' ');
    return HostText::makePrintable(shown) == shown ? shown : std::string();
}

} // namespace

const HZEPMetadataLint::Rule* HZEPMetadataLint::findRule(const std::string& id) {
    const auto found = std::find_if(getRules().begin(), getRules().end(), [&id](const Rule& rule) { return id == rule.id; });
    return found == getRules().end() ? nullptr : &*found;
}

const char* HZEPMetadataLint::getSeverityName(Severity severity) {
    return severity == Error ? "error" : severity == Warning ? "warning" : "note";
}

namespace lint {

Findings::Findings(std::string_view file, std::string_view member)
    : file_(HostText::makePrintable(file)), member_(HostText::makePrintable(member)) {}

bool Findings::isFull(Rule rule) const {
    const auto count = counts_.find(rule);
    return isFull() || (count != counts_.end() && count->second >= HZEPMetadataLint::kMaxPerRule);
}

void Findings::add(Rule rule, Spot spot, std::string text, Details details) {
    if (isFull())
        return;
    ++counted_;
    if (++counts_[rule] > HZEPMetadataLint::kMaxPerRule)
        return;
    spot.line = std::max<std::size_t>(spot.line, 1);
    found_.push_back(
        {find(rule), at(spot), std::move(text), std::move(details.expected), std::move(details.fix), std::move(details.other), {}});
}

std::vector<HZEPMetadataLint::Finding> Findings::take(std::string_view text) {
    std::stable_sort(found_.begin(), found_.end(), [](const auto& a, const auto& b) { return a.place.line < b.place.line; });
    Lines lines(text);
    for (auto& finding : found_)
        if (finding.place.column != 0 && !text.empty())
            finding.source = show(lines.get(finding.place.line), finding.place.column);
    const bool wasFull = isFull();
    for (const auto& [rule, count] : counts_)
        if (count > HZEPMetadataLint::kMaxPerRule)
            found_.push_back({find(Rule::MoreFindings),
                              at({}),
                              (wasFull ? "at least " : "") + std::to_string(count) + " findings of " + find(rule)->id + ", of which " +
                                  std::to_string(HZEPMetadataLint::kMaxPerRule) + " are listed",
                              {},
                              {},
                              {},
                              {}});
    counts_.clear();
    counted_ = 0;
    return std::exchange(found_, {});
}

} // namespace lint
