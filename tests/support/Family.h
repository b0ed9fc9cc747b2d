// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

/// An element of a document.
struct Element {
    std::string name;
    std::vector<std::string> parts;                              // of the line that tells what it holds
    std::vector<std::pair<std::string, std::string>> attributes; // as written
    std::vector<Element> children;
};

/// What one of the five families of XML documents holds, as support/schemas.txt tells.
class Family {
public:
    explicit Family(const std::string& name);

    /// A document with everything in it, each value another one; of elements with choices the given one, or the last.
    Element make(std::size_t choice = 0) const;
    std::size_t choices() const;

    /// As a writer lays it out, without the first line.
    std::string print(const Element& element, const std::string& indent = "") const;

private:
    Element make_(const std::string& name, std::size_t choice, int& values) const;

    std::string prefix_;
    std::string root_;
    std::map<std::string, std::vector<std::vector<std::string>>> contents_;
};
