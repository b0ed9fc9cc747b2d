// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

// The catalog of a repository, on repositories that double. Beside it, in the same run and on the same archives: opening each with
// libzip, inflating the metadata entry and parsing it, by Boost's read_json and by RapidJSON into its own document. The catalog also
// finds the files, reads two XML files a platform and writes its document; the others do nothing else.

#include "Card.h"
#include "Measure.h"

#include "HostMsgMgr.h"
#include "NativeCatalogService.h"

#define BOOST_BIND_GLOBAL_PLACEHOLDERS
#include <boost/property_tree/json_parser.hpp>
#include <rapidjson/document.h>

#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

constexpr std::size_t kBusInterfaces = 40;

/// The example's platform file with another archive, and without the emulation archive: that would be a second one to parse.
void writePlatformFile(const std::string& path, const std::string& archive) {
    std::ifstream example(std::string(HZEP_BENCH_EXAMPLES) + "/kestrel/kestrel.zpfm");
    std::ofstream file(path);
    for (std::string line; std::getline(example, line);) {
        if (line.find("hwEmuPlatform") != line.npos)
            continue;
        if (const std::size_t at = line.find("kestrel.kar"); at != line.npos)
            line.replace(at, std::string("kestrel.kar").size(), archive);
        file << line << '\n';
    }
}

/// Platforms made of the example card, four in a folder; answers their archives.
std::vector<std::string> makeRepository(const std::string& directory, std::size_t count) {
    const std::string software = std::string(HZEP_BENCH_EXAMPLES) + "/kestrel/sw/kestrel.spfm";
    const std::string card = bench::cardText(kBusInterfaces);
    std::vector<std::string> archives;
    for (std::size_t i = 0; i < count; ++i) {
        const std::string folder = directory + "/" + std::to_string(i / 4);
        const std::string name = "card" + std::to_string(i);
        std::filesystem::create_directories(folder + "/hw");
        std::filesystem::create_directories(folder + "/sw");
        std::filesystem::copy_file(software, folder + "/sw/kestrel.spfm", std::filesystem::copy_options::skip_existing);
        writePlatformFile(folder + "/" + name + ".zpfm", name + ".kar");
        archives.push_back(folder + "/hw/" + name + ".kar");
        bench::writeArchive(archives.back(), card);
    }
    return archives;
}

void parseByBoost(const std::vector<std::string>& archives) {
    for (const std::string& archive : archives) {
        std::istringstream in(bench::inflateEntry(archive));
        boost::property_tree::ptree tree;
        boost::property_tree::read_json(in, tree);
        if (tree.empty())
            throw std::runtime_error("nothing in " + archive);
    }
}

void parseByRapidJson(const std::vector<std::string>& archives) {
    for (const std::string& archive : archives) {
        const std::string text = bench::inflateEntry(archive);
        rapidjson::Document document;
        if (document.Parse(text.data(), text.size()).HasParseError())
            throw std::runtime_error("nothing in " + archive);
    }
}

std::size_t list(const std::string& directory, std::size_t count, bool all) {
    const std::string text = zep::platform::NativeCatalogService().getAllAsJsonStr(directory, all, false);
    std::size_t platforms = 0;
    for (std::size_t at = 0; (at = text.find("\"baseName\"", at)) != text.npos; ++at)
        ++platforms;
    if (platforms != count)
        throw std::runtime_error("the catalog lists " + std::to_string(platforms) + " platforms of " + std::to_string(count));
    return text.size();
}

} // namespace

int main() {
    std::string directory = (std::filesystem::temp_directory_path() / "hzep-bench-XXXXXX").string();
    if (!::mkdtemp(directory.data()))
        return 2;
    HostMsgMgr::getGlobal().setSink({});
    std::printf("%10s %10s %10s %10s %10s %8s %8s %8s %8s\n", "platforms", "list ms", "all ms", "boost ms", "rapid ms", "list/b", "all/b",
                "list/r", "growth");
    double before = 0;
    for (const std::size_t count : {250UL, 500UL, 1'000UL}) {
        const std::string repository = directory + "/" + std::to_string(count);
        const std::vector<std::string> archives = makeRepository(repository, count);
        std::vector<double> brief, all, boost, rapid;
        for (int round = 0; round < 5; ++round) {
            brief.push_back(bench::milliseconds([&] { list(repository, count, false); }));
            all.push_back(bench::milliseconds([&] { list(repository, count, true); }));
            boost.push_back(bench::milliseconds([&] { parseByBoost(archives); }));
            rapid.push_back(bench::milliseconds([&] { parseByRapidJson(archives); }));
        }
        const double time = bench::median(brief), byBoost = bench::median(boost), byRapid = bench::median(rapid);
        char growth[32] = "-";
        if (before > 0)
            std::snprintf(growth, sizeof growth, "%.2f", time / before / 2);
        std::printf("%10zu %10.1f %10.1f %10.1f %10.1f %8.2f %8.2f %8.2f %8s\n", count, time, bench::median(all), byBoost, byRapid,
                    time / byBoost, bench::median(all) / byBoost, time / byRapid, growth);
        before = time;
    }
    std::printf(
        "\nms of processor time, medians; %zu bytes of metadata a platform. list/b: over libzip with Boost's read_json, list/r: over\n"
        "libzip with RapidJSON. growth: time against the row before, over the growth in platforms (1 is linear).\n",
        bench::cardText(kBusInterfaces).size());
    std::filesystem::remove_all(directory);
}
