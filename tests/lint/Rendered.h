// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HZEPMetadataLint.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

/// Rules that findings of this run had.
inline std::set<std::string>& seenRules() {
    static std::set<std::string> rules;
    return rules;
}

/// "(MEMBER):LINE: severity: text [rule]" for each finding.
inline std::vector<std::string> render(const std::string& path) {
    std::vector<std::string> lines;
    for (const HZEPMetadataLint::Finding& finding : HZEPMetadataLint::check(path)) {
        seenRules().insert(finding.rule->id);
        lines.push_back((finding.member.empty() ? "" : "(" + finding.member + ")") + ":" + std::to_string(finding.line) + ": " +
                        HZEPMetadataLint::getSeverityName(finding.rule->severity) + ": " + finding.text + " [" + finding.rule->id + "]");
    }
    return lines;
}
