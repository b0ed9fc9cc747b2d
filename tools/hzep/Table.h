// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#pragma once

#include <ostream>
#include <string>
#include <vector>

/// Rows of text: aligned under a heading for a person, one tab between the columns and no heading for a program.
class Table {
public:
    explicit Table(std::vector<std::string> heading);

    void add(std::vector<std::string> row);
    void print(std::ostream& out, bool forPerson) const;

private:
    std::vector<std::string> heading_;
    std::vector<std::vector<std::string>> rows_;
};
