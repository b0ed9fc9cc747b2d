// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#pragma once

#include "HZEPMetadataLint.h"

#include <array>
#include <ostream>
#include <string>
#include <vector>

/// Prints findings in one of the forms of `hzep lint`.
class LintReport {
public:
    /// For people; for people at a terminal, with the line and a mark; one line each for editors; two documents for programs.
    enum Form { Text, Marked, Unix, Json, Sarif };

    LintReport(std::ostream& out, Form form) : out_(out), form_(form) {}

    void add(const HZEPMetadataLint::Finding& finding);
    /// Prints what stands at the end.
    void finish();

    std::size_t count(HZEPMetadataLint::Severity severity) const { return counts_.at(severity); }
    /// "2 errors, 1 warning", with the notes where there are some.
    std::string describe() const;

private:
    void addText(const HZEPMetadataLint::Finding& finding);
    void finishJson();
    void finishSarif();

    std::ostream& out_;
    Form form_;
    std::array<std::size_t, 3> counts_{};
    std::vector<HZEPMetadataLint::Finding> findings_; // kept for the documents only
};
