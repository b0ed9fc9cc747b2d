// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

// HZEPJSONText and the writers against Boost's read_json and write_json, on cards of 100 to 10,000 bus interfaces.

#include "Card.h"

#include "HZEPJSONText.h"
#include "JSONObjectWriter.h"

#define BOOST_BIND_GLOBAL_PLACEHOLDERS
#include <boost/property_tree/json_parser.hpp>

#include <benchmark/benchmark.h>

#include <sstream>
#include <string>

using boost::property_tree::ptree;

namespace {

std::string textOf(const benchmark::State& state) {
    return bench::cardText(static_cast<std::size_t>(state.range(0)));
}

ptree treeOf(const benchmark::State& state) {
    ptree tree;
    HZEPJSONText::read(textOf(state), tree);
    return tree;
}

void countBytes(benchmark::State& state, std::size_t bytes) {
    state.SetBytesProcessed(static_cast<std::int64_t>(bytes) * static_cast<std::int64_t>(state.iterations()));
}

void readByUs(benchmark::State& state) {
    const std::string text = textOf(state);
    for (auto _ : state) {
        ptree tree;
        HZEPJSONText::read(text, tree);
        benchmark::DoNotOptimize(tree);
    }
    countBytes(state, text.size());
}

void readByBoost(benchmark::State& state) {
    const std::string text = textOf(state);
    for (auto _ : state) {
        std::istringstream stream(text);
        ptree tree;
        boost::property_tree::read_json(stream, tree);
        benchmark::DoNotOptimize(tree);
    }
    countBytes(state, text.size());
}

template <class Write>
void write(benchmark::State& state, Write write) {
    std::size_t bytes = 0;
    for (auto _ : state) {
        std::ostringstream stream;
        write(stream);
        bytes = static_cast<std::size_t>(stream.tellp());
    }
    countBytes(state, bytes);
}

void writeTreeByUs(benchmark::State& state) {
    const ptree tree = treeOf(state);
    write(state, [&tree](std::ostream& stream) { HZEPJSONText::write(stream, tree); });
}

void writeTreeByBoost(benchmark::State& state) {
    const ptree tree = treeOf(state);
    write(state, [&tree](std::ostream& stream) { boost::property_tree::write_json(stream, tree); });
}

void writeWriter(benchmark::State& state) {
    zep_platform::JSONObjectWriter writer;
    writer.addKey("card", treeOf(state));
    write(state, [&writer](std::ostream& stream) { writer.write(stream); });
}

} // namespace

BENCHMARK(readByUs)->RangeMultiplier(10)->Range(100, 10'000)->Unit(benchmark::kMillisecond);
BENCHMARK(readByBoost)->RangeMultiplier(10)->Range(100, 10'000)->Unit(benchmark::kMillisecond);
BENCHMARK(writeTreeByUs)->RangeMultiplier(10)->Range(100, 10'000)->Unit(benchmark::kMillisecond);
BENCHMARK(writeTreeByBoost)->RangeMultiplier(10)->Range(100, 10'000)->Unit(benchmark::kMillisecond);
BENCHMARK(writeWriter)->RangeMultiplier(10)->Range(100, 10'000)->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
