// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

// fuzz_X FILE|FOLDER...                          replays every file
// fuzz_X --mutate N SEED [--save F] FILE|FOLDER...  then N random mutations of them; F always holds the input at hand
#include "FuzzInput.h"

#include <algorithm>
#include <chrono>
#include <iterator>
#include <random>
#include <string_view>
#include <utility>
#include <vector>

namespace fs = std::filesystem;

namespace {

constexpr std::size_t kMaxInput = 1 << 16;
constexpr std::chrono::seconds kMaxTime(1);

/// Pieces that both formats react to.
constexpr std::string_view kTokens[] = {
    "\"",
    "{",
    "}",
    "[",
    "]",
    ":",
    ",",
    "\\u0000",
    "\\ud800",
    "null",
    "true",
    "-1",
    "1e999",
    "99999999999999999999",
    "0x",
    "{}",
    "[]",
    "\"\"",
    "<",
    ">",
    "/>",
    "</",
    "<!--",
    "-->",
    "<![CDATA[",
    "]]>",
    "<!DOCTYPE a [<!ENTITY e \"e\">]>",
    "&e;",
    "&amp;",
    "&#0;",
    "&#xffff;",
    "zep:",
    "xmlns=\"\"",
    "xmlns:zep=\"urn:tolvan:zep\"",
    ".",
    "..",
    "\xff",
    "\xc0\x80",
    std::string_view("\0", 1),
};

std::string read(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

/// What stands between two quotation marks at or behind a place: mostly a key or a value, so that exchanging two of them keeps a
/// document well formed. Nothing when there is none.
std::pair<std::size_t, std::size_t> quoted(const std::string& text, std::size_t at) {
    const std::size_t begin = text.find('"', at);
    const std::size_t end = begin == text.npos ? text.npos : text.find('"', begin + 1);
    return end == text.npos ? std::pair(text.size(), std::size_t{0}) : std::pair(begin + 1, end - begin - 1);
}

std::string mutate(const std::vector<std::string>& seeds, std::mt19937_64& random) {
    const auto below = [&random](std::size_t bound) { return static_cast<std::size_t>(random() % std::max<std::size_t>(bound, 1)); };
    std::string input = seeds[below(seeds.size())];
    for (std::size_t steps = 1 + below(4); steps > 0; --steps) {
        const std::size_t at = below(input.size() + 1);
        const std::size_t length = below(std::min<std::size_t>(input.size() - at + 1, below(2) ? 8 : 400));
        switch (below(14)) {
        case 0:
            if (at < input.size())
                input[at] = static_cast<char>(random());
            break;
        case 1:
            input.insert(at, kTokens[below(std::size(kTokens))]);
            break;
        case 2:
            input.replace(at, length, kTokens[below(std::size(kTokens))]);
            break;
        case 3:
            input.erase(at, length);
            break;
        case 4:
            input.insert(below(input.size() + 1), input.substr(at, length));
            break;
        case 5: {
            const std::string& other = seeds[below(seeds.size())];
            const std::size_t from = below(other.size() + 1);
            input.insert(at, other, from, below(400));
            break;
        }
        case 6:
            input.resize(below(8) ? input.size() : at);
            break;
        case 7:
        case 8: {
            const auto [begin, size] = quoted(input, at);
            input.replace(begin, size, kTokens[below(std::size(kTokens))]);
            break;
        }
        default: {
            const std::string& other = seeds[below(seeds.size())];
            const auto [from, count] = quoted(other, below(other.size() + 1));
            const auto [begin, size] = quoted(input, at);
            input.replace(begin, size, other, from, count);
        }
        }
    }
    input.resize(std::min(input.size(), kMaxInput));
    return input;
}

bool run(const std::string& input, const std::string& name) {
    const auto start = std::chrono::steady_clock::now();
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(input.data()), input.size());
    const bool slow = std::chrono::steady_clock::now() - start > kMaxTime;
    if (slow)
        std::cerr << name << ": takes longer than " << kMaxTime.count() << " s\n";
    return !slow;
}

} // namespace

int main(int argc, char** argv) {
    std::vector<std::string> arguments(argv + 1, argv + argc);
    std::uint64_t mutations = 0;
    std::mt19937_64 random;
    std::string save;
    if (arguments.size() > 3 && arguments[0] == "--mutate") {
        mutations = std::strtoull(arguments[1].c_str(), nullptr, 10);
        random.seed(std::strtoull(arguments[2].c_str(), nullptr, 10));
        arguments.erase(arguments.begin(), arguments.begin() + 3);
    }
    if (arguments.size() > 2 && arguments[0] == "--save") {
        save = arguments[1];
        arguments.erase(arguments.begin(), arguments.begin() + 2);
    }

    std::vector<fs::path> files;
    for (const std::string& argument : arguments) {
        if (fs::is_directory(argument))
            std::copy(fs::directory_iterator(argument), fs::directory_iterator(), std::back_inserter(files));
        else
            files.emplace_back(argument);
    }
    std::sort(files.begin(), files.end());
    if (files.empty()) {
        std::cerr << "no seeds\n";
        return 2;
    }

    bool good = true;
    std::vector<std::string> seeds;
    for (const fs::path& file : files) {
        seeds.push_back(read(file));
        good &= run(seeds.back(), file.string());
    }
    for (std::uint64_t i = 0; i < mutations; ++i) {
        const std::string input = mutate(seeds, random);
        if (!save.empty())
            std::ofstream(save, std::ios::binary | std::ios::trunc) << input;
        good &= run(input, "mutation " + std::to_string(i));
    }
    std::cerr << seeds.size() << " seeds, " << mutations << " mutations\n";
    return good ? 0 : 1;
}
