// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "Table.h"

#include <algorithm>

namespace {

void printRow(std::ostream& out, const std::vector<std::string>& row, const std::vector<std::size_t>& widths) {
    std::string line;
    for (std::size_t column = 0; column < row.size(); ++column) {
        line += row[column];
        if (column + 1 < row.size())
            line.append(widths.empty() ? 1 : widths[column] - row[column].size() + 2, widths.empty() ? '\t' : ' ');
    }
    out << line << '\n';
}

} // namespace

Table::Table(std::vector<std::string> heading) : heading_(std::move(heading)) {}

void Table::add(std::vector<std::string> row) {
    // A name out of an archive must not be able to end a line or steer a terminal.
    for (std::string& cell : row)
        std::replace_if(
            cell.begin(), cell.end(), [](unsigned char c) { return c < 0x20 || c == 0x7f; }, '?');
    rows_.push_back(std::move(row));
}

void Table::print(std::ostream& out, bool forPerson) const {
    std::vector<std::size_t> widths;
    if (forPerson) {
        widths.resize(heading_.size());
        for (std::size_t column = 0; column < heading_.size(); ++column) {
            widths[column] = heading_[column].size();
            for (const auto& row : rows_)
                widths[column] = std::max(widths[column], row[column].size());
        }
        printRow(out, heading_, widths);
    }
    for (const auto& row : rows_)
        printRow(out, row, widths);
}
