// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HZEPMetadataLint.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

/// "FILE(MEMBER):LINE: severity: text [rule]" for each finding, without the file where it is the one that is checked.
inline std::vector<std::string> render(const std::string& path) {
    std::vector<std::string> lines;
    for (const HZEPMetadataLint::Finding& finding : HZEPMetadataLint::check(path)) {
        const auto& place = finding.place;
        lines.push_back((place.file == path ? "" : place.file) + (place.member.empty() ? "" : "(" + place.member + ")") + ":" +
                        std::to_string(place.line) + ": " + HZEPMetadataLint::getSeverityName(finding.rule->severity) + ": " +
                        finding.text + " [" + finding.rule->id + "]");
    }
    return lines;
}
