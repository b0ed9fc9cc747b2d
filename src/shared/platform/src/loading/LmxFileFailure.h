// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HostFault.h"
#include "lmx60.h"

#include <cstdint>
#include <optional>
#include <string>

/// Why an XML file could not be read; line 0 when the fault has no line.
struct LmxFileFailure {
    std::string text;
    int line;

    /// Prints the two lines that tell of the failure to the standard output; returns them joined by a line feed.
    std::string print(const std::string& heading, const std::string& file) const;

    HostFault toFault(const std::string& file, const std::string& member = "") const;
};

/// Runs `work`, which reads a document and answers with the reader's code. Answers what went wrong; foreign exceptions pass.
template <class Work>
std::optional<LmxFileFailure> catchLmxFailure(const Work& work) {
    try {
        const lmx60::elmx_error code = work();
        if (code != lmx60::error_none)
            return LmxFileFailure{lmx60::get_error_description(code), 0};
        return std::nullopt;
    } catch (const lmx60::c_lmx_reader_exception& e) {
        return LmxFileFailure{e.what(), e.get_line()};
    } catch (const lmx60::c_lmx_exception& e) {
        return LmxFileFailure{e.what(), 0};
    }
}

/// Reads `file` whole into a `Root` and hands that to `use`.
template <class Root, class Use>
std::optional<LmxFileFailure> readLmxFile(const std::string& file, const Use& use) {
    lmx60::s_debug_error error;
    auto failure = catchLmxFailure([&] {
        lmx60::elmx_error code = lmx60::error_none;
        const Root root(file.c_str(), &code, &error);
        if (code == lmx60::error_none)
            use(root);
        return code;
    });
    if (failure && !error.text.empty())
        failure->text += ": " + error.text;
    return failure;
}
