// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HPLPlatform.h"
#include "JSONObjectWriter.h"
#include "MessageLog.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iostream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

/// What is printed to the standard output while it lives.
class Printed {
public:
    Printed() { testing::internal::CaptureStdout(); }
    ~Printed() {
        // What failed in the meantime was captured too.
        if (!taken_)
            std::cerr << testing::internal::GetCapturedStdout();
    }
    std::string take() {
        taken_ = true;
        return testing::internal::GetCapturedStdout();
    }

private:
    bool taken_ = false;
};

/// The text with its one occurrence of `from` replaced.
inline std::string edited(std::string text, const std::string& from, const std::string& to) {
    const auto at = text.find(from);
    EXPECT_NE(at, std::string::npos) << "nothing to edit: " << from;
    EXPECT_EQ(text.find(from, at + 1), std::string::npos) << "ambiguous: " << from;
    return at == std::string::npos ? text : text.replace(at, from.size(), to);
}

/// The text from the first `from` to the `to` behind it, which does not belong to it.
inline std::string between(const std::string& text, const std::string& from, const std::string& to) {
    const auto begin = text.find(from);
    const auto end = text.find(to, begin);
    EXPECT_NE(end, std::string::npos) << from << " ... " << to;
    return text.substr(begin, end - begin);
}

/// Line, counted from 1, in which the text first stands.
inline int lineOf(const std::string& document, const std::string& text) {
    const auto at = document.find(text);
    EXPECT_NE(at, std::string::npos) << text;
    return 1 + static_cast<int>(std::count(document.begin(), document.begin() + static_cast<std::ptrdiff_t>(at), '\n'));
}

inline std::string documentOf(const HPLPlatform& platform) {
    zep_platform::JSONObjectWriter writer;
    platform.toJSON(writer);
    std::ostringstream out;
    writer.write(out);
    return out.str();
}

/// All elements of an iterator that is the caller's.
template <class T>
std::vector<T*> elementsOf(HostFwdIter<T*>* iterator) {
    const std::unique_ptr<HostFwdIter<T*>> owned(iterator);
    std::vector<T*> elements;
    while (owned->hasNext())
        elements.push_back(owned->next());
    return elements;
}
