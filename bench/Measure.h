// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include <algorithm>
#include <cstddef>
#include <ctime>
#include <vector>

namespace bench {

/// Of the processor, so that other work on the machine doesn't count.
template <class Action>
double milliseconds(const Action& action) {
    const std::clock_t begin = std::clock();
    action();
    return 1000.0 * static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;
}

inline double median(std::vector<double> values) {
    std::nth_element(values.begin(), values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2), values.end());
    return values[values.size() / 2];
}

} // namespace bench
