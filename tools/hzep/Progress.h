// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#pragma once

#include <chrono>
#include <cstddef>
#include <string>

/// Tells on stderr, if that is a terminal, how far long work has come: from the second second on, in one line that goes away again.
class Progress {
public:
    /// `things` names what is counted.
    Progress(std::size_t total, std::string things);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    /// One more is done.
    void advance();
    /// Makes room for a line of other output.
    void clear();

private:
    using Clock = std::chrono::steady_clock;

    std::size_t total_;
    std::string things_;
    std::size_t done_ = 0;
    bool isShown_ = false;
    const bool isTerminal_;
    Clock::time_point next_;
};
