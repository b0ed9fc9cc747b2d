// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HZEPMetadataLint.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

/// "(MEMBER):LINE: severity: text [rule]" for each finding.
inline std::vector<std::string> render(const std::string& path) {
    std::vector<std::string> lines;
    for (const HZEPMetadataLint::Finding& finding : HZEPMetadataLint::check(path)) {
        lines.push_back((finding.member.empty() ? "" : "(" + finding.member + ")") + ":" + std::to_string(finding.line) + ": " +
                        HZEPMetadataLint::getSeverityName(finding.rule->severity) + ": " + finding.text + " [" + finding.rule->id + "]");
    }
    return lines;
}
