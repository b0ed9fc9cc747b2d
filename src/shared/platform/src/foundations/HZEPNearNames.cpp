// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HZEPNearNames.h"

#include "../hardware/AsciiCase.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <utility>

namespace {

/// Longest name that is compared, in bytes.
constexpr std::size_t kMaxCompared = 48;

/// Insertions, deletions, changes and swaps of neighbours between the two, whatever the letter case.
std::size_t getDistance(std::string_view a, std::string_view b) {
    using Row = std::array<std::size_t, kMaxCompared + 1>;
    Row before{}, last{}, row{};
    std::iota(last.begin(), last.end(), 0U);
    for (std::size_t i = 1; i <= a.size(); ++i) {
        row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const auto same = [&](std::size_t x, std::size_t y) { return ascii::lower(a[x - 1]) == ascii::lower(b[y - 1]); };
            row[j] = std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + (same(i, j) ? 0 : 1)});
            if (i > 1 && j > 1 && same(i, j - 1) && same(i - 1, j))
                row[j] = std::min(row[j], before[j - 2] + 1);
        }
        before = last;
        last = row;
    }
    return last[b.size()];
}

} // namespace

std::vector<std::string> HZEPNearNames::find(std::string_view name, const std::vector<std::string>& known, std::size_t most) {
    if (name.size() > kMaxCompared)
        return {};
    const std::size_t farthest = name.size() < 4 ? 1 : name.size() < 9 ? 2 : 3;
    std::vector<std::pair<std::size_t, const std::string*>> near;
    for (const std::string& candidate : known) {
        const std::size_t gap = candidate.size() > name.size() ? candidate.size() - name.size() : name.size() - candidate.size();
        if (candidate.size() > kMaxCompared || gap > farthest)
            continue;
        if (const std::size_t distance = getDistance(name, candidate); distance <= farthest && distance < candidate.size())
            near.emplace_back(distance, &candidate);
    }
    std::stable_sort(near.begin(), near.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    near.resize(std::min(near.size(), most));
    std::vector<std::string> names;
    for (const auto& [distance, candidate] : near)
        names.push_back(*candidate);
    return names;
}

std::string HZEPNearNames::suggest(std::string_view name, const std::vector<std::string>& known, std::size_t most) {
    return describe(find(name, known, most));
}

std::string HZEPNearNames::describe(const std::vector<std::string>& near) {
    std::string words;
    for (std::size_t i = 0; i < near.size(); ++i)
        words += (i == 0 ? "; did you mean \"" : i + 1 < near.size() ? ", \"" : " or \"") + near[i] + '"';
    return words + (words.empty() ? "" : "?");
}
