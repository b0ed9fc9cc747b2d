// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "Progress.h"

#include <iostream>
#include <unistd.h>

namespace {

constexpr std::chrono::milliseconds kPatience(1000);
constexpr std::chrono::milliseconds kInterval(200);

} // namespace

Progress::Progress(std::size_t total, std::string things)
    : total_(total), things_(std::move(things)), isTerminal_(isatty(STDERR_FILENO) == 1), next_(Clock::now() + kPatience) {}

Progress::~Progress() {
    clear();
}

void Progress::advance() {
    ++done_;
    if (!isTerminal_ || Clock::now() < next_)
        return;
    next_ = Clock::now() + kInterval;
    // The cursor goes back, so that what anybody else prints begins at the margin.
    std::cerr << "\r\033[K" << done_ << " of " << total_ << ' ' << things_ << '\r' << std::flush;
    isShown_ = true;
}

void Progress::clear() {
    if (isShown_)
        std::cerr << "\r\033[K" << std::flush;
    isShown_ = false;
}
