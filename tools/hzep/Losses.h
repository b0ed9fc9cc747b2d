// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#pragma once

#include "HPLPlatform.h"
#include "HZEPTextDifference.h"

#include <CLI/CLI.hpp>

#include <functional>
#include <optional>
#include <string>
#include <vector>

/// What a document that is carried over loses on its way: named as warnings, or, with --strict, the reason to write nothing.
class Losses {
public:
    /// Most keys that are named; the count tells of the others.
    static constexpr std::size_t kMaxNamed = 20;

    /// What is wished for is no loss.
    using IsWished = std::function<bool(const HZEPTextDifference::Change&)>;

    static bool isXml(const std::string& text);

    /// Adds the verb's --strict.
    static void addOption(CLI::App* verb, bool& isStrict);

    /// Metadata as text, and the platform that was read from it: what the reading dropped or changed.
    void addReading(const std::string& text, HPLPlatform& platform, const IsWished& isWished = {});
    /// JSON metadata as text, and the XML metadata that the platform became: what a reader of these misses.
    void addWriting(const std::string& text, const std::string& xml);
    /// Two texts of one form.
    void add(const std::string& before, const std::string& after, HZEPTextEdit::Form form, const IsWished& isWished = {});

    /// Says what was lost on the way from `source`. With --strict and a loss it raises Negative.
    void tell(const std::string& source, bool isStrict) const;

private:
    std::vector<HZEPTextDifference::Change> changes_;
};

/// A platform's document, and its XML metadata; none when XML has no room for it.
std::string renderDocument(const HPLPlatform& platform);
std::optional<std::string> renderXml(HPLPlatform& platform);
