// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HZEPExport.h"

#include <cstddef>
#include <string>
#include <vector>

/// Looks for what is wrong in a platform: in its platform file (.zpfm), archives (.dsa, .kar) with all documents in them, software file
/// (.spfm) and the files beside them, and in what they say of each other; or in one such file alone. Sends no messages.
class HZEP_EXPORT HZEPMetadataLint {
public:
    /// A reader will wonder; a flow will probably fail or answer wrongly; the library refuses it, or reads something else than is written.
    enum Severity { Note, Warning, Error };

    /// An example platform holds `mended` in its file and is clean; with `broken` in its place just this rule speaks. The file is named
    /// "PATH", or "ARCHIVE(MEMBER)"; where `mended` is null it is a further file that holds `broken`. The file is "" where no text can
    /// show the fault, and then both are told in words.
    struct Example {
        const char* file;
        const char* broken;
        const char* mended;
    };

    struct Rule {
        const char* id;
        /// What it looks at: "identity", "words", "numbers", "references", "sets", "places", "files", "ages", "lost", "lint".
        const char* kind;
        Severity severity;
        /// One sentence: why it matters.
        const char* why;
        /// One sentence: what to do.
        const char* remedy;
        Example example;
    };

    /// Names are printable: they can't break a line or steer a terminal. Lines and columns (in bytes) count from 1; a line of 0 is no
    /// place, and a column of 0 is not known.
    struct Place {
        std::string file;
        std::string member; ///< of the archive; "" for the file itself
        std::size_t line = 0;
        std::size_t column = 0;
    };

    struct Finding {
        /// Of the static table.
        const Rule* rule;
        /// The line is 1 also for what the file says nowhere.
        Place place;
        /// What was found; printable like the names.
        std::string text;
        std::string expected; ///< "" where the text says it all
        std::string fix;      ///< the value to write instead where it is sure, else ""
        Place other;          ///< of the other party, where there is one
        std::string source;   ///< the line as it stands, printable and cut to kMaxSource bytes, and only where the column is known
    };

    /// A document, be it JSON or XML, is no larger than HostJson reads one: what goes beyond gets one finding that says so.
    /// Findings of one rule in one document; one more tells their number. A document is left at kMaxCounted findings of all rules.
    static constexpr std::size_t kMaxPerRule = 100;
    static constexpr std::size_t kMaxCounted = 10'000;
    /// Findings in one archive or platform, behind which further documents are left out.
    static constexpr std::size_t kMaxFindings = 10'000;
    /// Text of the documents of one platform that are held against each other, in bytes. What goes beyond is checked by itself.
    static constexpr std::size_t kMaxHeld = std::size_t{32} << 20;
    static constexpr std::size_t kMaxSource = 240;

    /// All rules, in the order in which they are printed.
    static const std::vector<Rule>& getRules();
    /// Null for an id that there isn't.
    static const Rule* findRule(const std::string& id);

    /// "note", "warning", "error".
    static const char* getSeverityName(Severity severity);

    /// The findings in a file, document by document, each in the order of its lines. What the file is tells its extension, else its
    /// content. A platform file is judged with all that it names and what stands in its folder, without the findings that a file
    /// ".hzeplint" there allows. Raises HostError for a file that can't be read at all or whose kind is not known.
    static std::vector<Finding> check(const std::string& path);

    /// What there is to check below a directory, in the order of the names: each platform file, and the files of known names that no
    /// platform's folder holds. Links are not followed. Raises HostError for a directory that can't be read.
    static std::vector<std::string> list(const std::string& directory);
};
