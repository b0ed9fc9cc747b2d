// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "Table.h"

#include "HostText.h"

#include <algorithm>
#include <numeric>
#include <sys/ioctl.h>
#include <unistd.h>

namespace {

constexpr std::size_t kGap = 2;

std::size_t getScreenWidth() {
    winsize size{};
    const bool isKnown = ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return std::max<std::size_t>(isKnown ? size.ws_col : 80, 20);
}

/// Characters, of which each takes one column.
std::size_t getWidth(const std::string& text) {
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char c) { return (c & 0xC0) != 0x80; }));
}

/// Bytes of the next line of a text: up to the last blank that lets it fit, else as much as fits.
std::size_t getLineSize(const std::string& text, std::size_t begin, std::size_t width) {
    std::size_t end = begin;
    std::size_t blank = text.npos;
    for (std::size_t used = 0; end < text.size(); ++end) {
        if ((text[end] & 0xC0) != 0x80 && used++ == width)
            return (text[end] == ' ' ? end + 1 : blank == text.npos ? end : blank + 1) - begin;
        if (text[end] == ' ')
            blank = end;
    }
    return end - begin;
}

} // namespace

Table::Table(std::vector<std::string> heading) : heading_(std::move(heading)) {}

void Table::add(std::vector<std::string> row) {
    for (std::string& cell : row)
        cell = HostText::makePrintable(cell);
    rows_.push_back(std::move(row));
}

void Table::print(std::ostream& out, bool forPerson) const {
    if (forPerson)
        return printFitting(out);
    for (const auto& row : rows_)
        for (std::size_t column = 0; column < row.size(); ++column)
            out << row[column] << (column + 1 < row.size() ? '\t' : '\n');
}

void Table::printFitting(std::ostream& out) const {
    std::vector<std::vector<std::string>> rows{heading_};
    rows.insert(rows.end(), rows_.begin(), rows_.end());
    std::vector<std::size_t> widths(heading_.size());
    for (const auto& row : rows)
        for (std::size_t column = 0; column < row.size(); ++column)
            widths[column] = std::max(widths[column], getWidth(row[column]) + kGap);

    const std::size_t screen = getScreenWidth();
    const std::size_t total = std::accumulate(widths.begin(), widths.end(), std::size_t{0}) - kGap;
    const std::size_t all = total + kGap - widths.back();
    const std::size_t offset = total <= screen ? all : std::min(all, screen / 2);
    for (const auto& row : rows) {
        std::string line;
        for (std::size_t column = 0; column + 1 < row.size(); ++column)
            line += row[column] + std::string(column + 2 < row.size() ? widths[column] - getWidth(row[column]) : kGap, ' ');
        std::size_t used = getWidth(line);
        if (used > offset) {
            line.erase(line.find_last_not_of(' ') + 1);
            line += '\n';
            used = 0;
        }
        const std::string& last = row.back();
        for (std::size_t at = 0, size = 0; at < last.size() || at == 0; at += std::max<std::size_t>(size, 1)) {
            size = getLineSize(last, at, screen - offset);
            line.append(offset - used, ' ');
            line.append(last, at, size);
            line.erase(line.find_last_not_of(' ') + 1);
            line += '\n';
            used = 0;
        }
        out << line;
    }
}
