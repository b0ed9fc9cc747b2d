// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "lmx60.h"

#include <ostream>
#include <string>

/// What reading a text came to.
struct Outcome {
    int code = 0;
    std::string item;
    int line = 0;
    std::string text;
};

inline std::ostream& operator<<(std::ostream& out, const Outcome& outcome) {
    return out << "code " << outcome.code << ", item '" << outcome.item << "', line " << outcome.line << ": " << outcome.text;
}

template <class Root>
Outcome readInto(Root& root, const std::string& text) {
    lmx60::s_debug_error debug;
    try {
        const auto code = root.Unmarshal(text.data(), text.size(), &debug);
        return {code, debug.item, debug.line, {}};
    } catch (const lmx60::c_lmx_reader_exception& error) {
        EXPECT_EQ(error.get_error(), debug.error);
        EXPECT_EQ(error.get_line(), debug.line);
        EXPECT_EQ(lmx60::debug_error.error, debug.error);
        return {error.get_error(), debug.item, error.get_line(), error.what()};
    }
}

template <class Root>
std::string written(const Root& root) {
    std::string text;
    EXPECT_EQ(root.Marshal(&text), lmx60::error_none);
    return text;
}
