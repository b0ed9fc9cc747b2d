// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HZEPMetadataLint.h"

#include <cstddef>
#include <string>
#include <vector>

namespace lint {

/// Numbers of the rules: their places in the table.
enum class Rule {
    Parse,
    Schema,
    TooLarge,
    NoMetadata,
    UnreadableMember,
    MissingMember,
    MissingFile,
    UnknownKey,
    UnknownElement,
    UnknownAttribute,
    WrongShape,
    DuplicateKey,
    DuplicateName,
    DanglingDefault,
    PartForm,
    MemorySize,
    NotANumber,
    HexInDecimal,
    TooWide,
    NoRoomInXml,
    NotAFlag,
    TclText,
    MoreFindings
};

/// Gathers what is found in one document.
class Findings {
public:
    explicit Findings(std::string member = {}) : member_(std::move(member)) {}

    void add(Rule rule, std::size_t line, std::string text);
    /// No further finding is taken; what is dear to work out needs not be.
    bool isFull() const { return found_.size() > HZEPMetadataLint::kMaxFindings; }
    bool has(Rule rule) const;

    /// In the order of the lines, then of the finding.
    std::vector<HZEPMetadataLint::Finding> take();

private:
    std::string member_;
    std::vector<HZEPMetadataLint::Finding> found_;
};

} // namespace lint
