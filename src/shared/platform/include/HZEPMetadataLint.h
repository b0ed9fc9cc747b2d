// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HZEPExport.h"

#include <cstddef>
#include <string>
#include <vector>

/// Looks for what is wrong in the files of a platform: platform files (.zpfm), software files (.spfm), hardware platform files (.hpfm),
/// archives (.dsa, .kar) with the metadata, hardware platform files and emulation files in them, and emulation and metadata files alone.
/// Sends no messages.
class HZEP_EXPORT HZEPMetadataLint {
public:
    enum Severity { Info, Warning, Error };

    struct Rule {
        const char* id;
        Severity severity;
        /// One sentence: why it matters.
        const char* why;
    };

    struct Finding {
        /// Of the static table.
        const Rule* rule;
        /// The member of an archive that it is about; "" for the file itself. Like the text it can't break a line or steer a terminal.
        std::string member;
        /// Counted from 1; 1 also for what the file says nowhere.
        std::size_t line;
        std::string text;
    };

    /// Findings in one document, which is no larger than HostJson reads one, be it JSON or XML: what goes beyond gets one finding that says
    /// so; a last one tells that there are more. Of an archive, further members are left out behind ten times that.
    static constexpr std::size_t kMaxFindings = 1000;

    /// All rules, in the order in which they are printed.
    static const std::vector<Rule>& getRules();

    /// "info", "warning", "error".
    static const char* getSeverityName(Severity severity);

    /// The findings in a file, document by document, each in the order of its lines. What the file is tells its extension, else its
    /// content. Raises HostError for a file that can't be read at all or whose kind is not known.
    static std::vector<Finding> check(const std::string& path);
};
