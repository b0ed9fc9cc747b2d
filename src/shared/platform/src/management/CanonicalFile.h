// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include <string>

/// The canonical form of one path, to be compared with that of many files.
class CanonicalFile {
public:
    explicit CanonicalFile(const std::string& path);

    const std::string& text() const { return text_; }

    bool equals(const std::string& file) const;
    bool equalsIgnoringCase(const std::string& file) const;

private:
    bool mayEqual_(const std::string& file) const;

    std::string text_;
    std::string name_;
};
