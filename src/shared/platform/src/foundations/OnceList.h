// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include <string>
#include <unordered_set>
#include <vector>

/// Appends texts to a list that keeps each text once.
class OnceList {
public:
    explicit OnceList(std::vector<std::string>& out) : out_(out), seen_(out.begin(), out.end()) {}
    void add(const std::string& text) {
        if (seen_.insert(text).second)
            out_.push_back(text);
    }
    void addUnlessEmpty(const std::string& text) {
        if (!text.empty())
            add(text);
    }

private:
    std::vector<std::string>& out_;
    std::unordered_set<std::string> seen_;
};
