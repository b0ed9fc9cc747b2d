// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#pragma once

#include <ostream>
#include <string>
#include <vector>

/// Rows of text. For a person they are aligned under a heading and fit the terminal: the last column is broken into lines, and stands
/// below its row where the columns before it leave no room. For a program there is one tab between the columns and no heading.
class Table {
public:
    explicit Table(std::vector<std::string> heading);

    /// What would end a line or steer a terminal becomes an escape.
    void add(std::vector<std::string> row);
    void print(std::ostream& out, bool forPerson) const;

private:
    void printFitting(std::ostream& out) const;

    std::vector<std::string> heading_;
    std::vector<std::vector<std::string>> rows_;
};
