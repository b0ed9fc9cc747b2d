// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

// From an archive to its platform document, as hzep_get_platform_json does it, on cards that grow tenfold. Beside it, in the same
// run: Boost's read_json and write_json of the same bytes, and inflating the metadata entry alone. Peak memory is that of a fresh
// process that does nothing else.

#include "Card.h"
#include "Measure.h"

#include "hzep_c_api.h"

#define BOOST_BIND_GLOBAL_PLACEHOLDERS
#include <boost/property_tree/json_parser.hpp>

#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace {

std::size_t documentByUs(const std::string& path) {
    char* const text = hzep_get_platform_json(path.c_str());
    if (!text)
        throw std::runtime_error("no document of " + path);
    const std::size_t size = std::strlen(text);
    hzep_free_json_string(text);
    return size;
}

std::size_t documentByBoost(const std::string& text) {
    std::istringstream in(text);
    boost::property_tree::ptree tree;
    boost::property_tree::read_json(in, tree);
    std::ostringstream out;
    boost::property_tree::write_json(out, tree);
    return out.str().size();
}

std::size_t statusKilobytes(const std::string& name) {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.starts_with(name + ":"))
            return std::stoul(line.substr(name.size() + 1));
    return 0;
}

// In the fresh process: kilobytes that the work takes above what the process had before.
int reportPeak(const std::string& what, const std::string& path) {
    const std::size_t before = statusKilobytes("VmHWM");
    if (what == "document")
        documentByUs(path);
    else
        documentByBoost(bench::inflateEntry(path));
    std::printf("%zu\n", statusKilobytes("VmHWM") - before);
    return 0;
}

std::size_t peakKilobytes(const char* what, const std::string& path) {
    int ends[2];
    if (::pipe(ends) != 0)
        throw std::runtime_error("no pipe");
    const pid_t child = ::fork();
    if (child == 0) {
        ::dup2(ends[1], STDOUT_FILENO);
        ::execl("/proc/self/exe", "bench_document", "--peak", what, path.c_str(), nullptr);
        ::_exit(127);
    }
    ::close(ends[1]);
    char answer[32] = {};
    const ssize_t size = ::read(ends[0], answer, sizeof answer - 1);
    ::close(ends[0]);
    int status = 0;
    ::waitpid(child, &status, 0);
    if (size <= 0 || status != 0)
        throw std::runtime_error("the measuring process failed");
    return std::stoul(answer);
}

struct Row {
    std::size_t interfaces, textBytes, documentBytes;
    double document, boost, inflate;
    double documentPeak, boostPeak;
};

Row measure(const std::string& directory, std::size_t interfaces) {
    const std::string path = directory + "/card" + std::to_string(interfaces) + ".kar";
    const std::string text = bench::cardText(interfaces);
    bench::writeArchive(path, text);

    Row row{};
    row.interfaces = interfaces;
    row.textBytes = text.size();
    row.documentPeak = 1024.0 * static_cast<double>(peakKilobytes("document", path)) / static_cast<double>(text.size());
    row.boostPeak = 1024.0 * static_cast<double>(peakKilobytes("boost", path)) / static_cast<double>(text.size());

    // Taken in turns, so that a busy moment of the machine falls on all of them.
    std::vector<double> document, boost, inflate;
    const int rounds = interfaces >= 10'000 ? 7 : interfaces >= 1'000 ? 25 : 101;
    for (int i = 0; i < rounds; ++i) {
        document.push_back(bench::milliseconds([&] { row.documentBytes = documentByUs(path); }));
        boost.push_back(bench::milliseconds([&] { documentByBoost(text); }));
        inflate.push_back(bench::milliseconds([&] { bench::inflateEntry(path); }));
    }
    row.document = bench::median(document);
    row.boost = bench::median(boost);
    row.inflate = bench::median(inflate);
    return row;
}

} // namespace

int main(int argc, char** argv) {
    if (argc == 4 && std::string(argv[1]) == "--peak")
        return reportPeak(argv[2], argv[3]);

    std::string directory = (std::filesystem::temp_directory_path() / "hzep-bench-XXXXXX").string();
    if (!::mkdtemp(directory.data()))
        return 2;
    std::printf("%10s %10s %10s %12s %12s %8s %10s %9s %12s %12s\n", "interfaces", "text KB", "doc. KB", "load+doc ms", "boost rw ms",
                "ratio", "inflate ms", "growth", "peak/text", "boost peak");
    Row before{};
    for (const std::size_t interfaces : {100UL, 1'000UL, 10'000UL}) {
        const Row row = measure(directory, interfaces);
        char growth[32] = "-";
        if (before.interfaces)
            std::snprintf(growth, sizeof growth, "%.2f",
                          (row.document / before.document) / (static_cast<double>(row.textBytes) / static_cast<double>(before.textBytes)));
        std::printf("%10zu %10zu %10zu %12.2f %12.2f %8.2f %10.2f %9s %12.1f %12.1f\n", row.interfaces, row.textBytes / 1024,
                    row.documentBytes / 1024, row.document, row.boost, row.document / row.boost, row.inflate, growth, row.documentPeak,
                    row.boostPeak);
        before = row;
    }
    std::puts("\nms of processor time, medians. ratio: load+doc over boost rw.\n"
              "growth: time against the row before, over the growth of the text (1 is linear).\n"
              "peak/text: memory above an idle process, over the size of the text; small texts carry the fixed cost of a load.");
    std::filesystem::remove_all(directory);
}
