// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "LintRules.h"

#include <algorithm>
#include <utility>

namespace {

using Lint = HZEPMetadataLint;

struct Row {
    lint::Rule number;
    Lint::Rule rule;
};

constexpr Row kRows[] = {
    {lint::Rule::Parse, {"parse", Lint::Error, "A document that does not parse is not read at all."}},
    {lint::Rule::Schema,
     {"schema", Lint::Error, "What is missing, out of place or of a wrong form makes the readers refuse the document."}},
    {lint::Rule::TooLarge, {"too-large", Lint::Warning, "A document of more text or values than the checker takes is left unchecked."}},
    {lint::Rule::NoMetadata, {"no-metadata", Lint::Error, "An archive without metadata can't be loaded."}},
    {lint::Rule::UnreadableMember, {"unreadable-member", Lint::Error, "A damaged, encrypted or oversized member can't be used."}},
    {lint::Rule::MissingMember,
     {"missing-member", Lint::Error, "A file that the metadata lists and the archive lacks is missed when it is asked for."}},
    {lint::Rule::MissingFile, {"missing-file", Lint::Error, "A platform file without its hardware or software does not load."}},
    {lint::Rule::UnknownKey, {"unknown-key", Lint::Warning, "The value of a key that no reader knows is lost."}},
    {lint::Rule::UnknownElement, {"unknown-element", Lint::Warning, "An element that no reader knows is skipped with all that is in it."}},
    {lint::Rule::UnknownAttribute, {"unknown-attribute", Lint::Warning, "The value of an attribute that no reader knows is lost."}},
    {lint::Rule::WrongShape,
     {"wrong-shape", Lint::Warning, "A text in place of a list or an object, or the other way round, reads as nothing."}},
    {lint::Rule::DuplicateKey, {"duplicate-key", Lint::Warning, "Of several members of one name in an object only the first is read."}},
    {lint::Rule::DuplicateName,
     {"duplicate-name", Lint::Warning, "Of several things of one name or id only one is found by it, and nothing tells so."}},
    {lint::Rule::DanglingDefault, {"dangling-default", Lint::Warning, "A default that names nothing leaves the choice to chance."}},
    {lint::Rule::PartForm, {"part-form", Lint::Error, "A part that can't be taken apart ends the reading."}},
    {lint::Rule::MemorySize,
     {"memory-size", Lint::Warning, "A memory whose size is not told in whole GB counts as none, or the question for it fails."}},
    {lint::Rule::NotANumber, {"not-a-number", Lint::Warning, "A text that is no number is read as 0, or as what its first digits say."}},
    {lint::Rule::HexInDecimal, {"hex-in-decimal", Lint::Warning, "A number in base 16 is read as 0 where base 10 is expected."}},
    {lint::Rule::TooWide, {"too-wide", Lint::Warning, "A number outside of what its field holds is cut and becomes another one."}},
    {lint::Rule::NoRoomInXml,
     {"no-room-in-xml", Lint::Warning, "A number that the JSON metadata hold and the XML ones don't is cut when those are written."}},
    {lint::Rule::NotAFlag, {"not-a-flag", Lint::Warning, "A text other than \"true\" and \"false\" is read as false."}},
    {lint::Rule::TclText,
     {"tcl-text", Lint::Warning, "A value goes into the emulation scripts as it is: what has a meaning in Tcl changes or breaks them."}},
    {lint::Rule::MoreFindings, {"more-findings", Lint::Warning, "A document with very many findings is not listed to its end."}},
};

const Lint::Rule* find(lint::Rule number) {
    const auto place = static_cast<std::size_t>(number);
    return &Lint::getRules().at(place);
}

} // namespace

const std::vector<HZEPMetadataLint::Rule>& HZEPMetadataLint::getRules() {
    static const std::vector<Rule> rules = [] {
        std::vector<Rule> table;
        for (const Row& row : kRows)
            table.push_back(row.rule);
        return table;
    }();
    static_assert(std::is_sorted(std::begin(kRows), std::end(kRows), [](const Row& a, const Row& b) { return a.number < b.number; }) &&
                  std::size(kRows) == static_cast<std::size_t>(lint::Rule::MoreFindings) + 1);
    return rules;
}

const char* HZEPMetadataLint::getSeverityName(Severity severity) {
    return severity == Error ? "error" : severity == Warning ? "warning" : "info";
}

namespace lint {

void Findings::add(Rule rule, std::size_t line, std::string text) {
    if (isFull())
        return;
    const bool isLast = found_.size() == HZEPMetadataLint::kMaxFindings;
    if (isLast) {
        rule = Rule::MoreFindings;
        text = "there are more findings than are listed";
    }
    found_.push_back({find(rule), member_, std::max<std::size_t>(line, 1), std::move(text)});
}

bool Findings::has(Rule rule) const {
    return std::any_of(found_.begin(), found_.end(), [&](const auto& finding) { return finding.rule == find(rule); });
}

std::vector<HZEPMetadataLint::Finding> Findings::take() {
    const auto last = found_.end() - (isFull() ? 1 : 0); // which tells that there are more
    std::stable_sort(found_.begin(), last, [](const auto& a, const auto& b) { return a.line < b.line; });
    return std::exchange(found_, {});
}

} // namespace lint
