// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

// From the bytes of XML metadata to a filled model, on cards that grow tenfold, against libxml2's SAX2 push parser on the same bytes in
// the same pieces with handlers that do nothing. The metadata of an archive is read from one that stores it, the hardware platform file
// from memory. Beside them the writers of both formats.

#include "Card.h"
#include "Measure.h"

#include "BasePlatformLMX.h"
#include "HPLPlatform.h"
#include "HZEPDsaXmlReader.h"
#include "HZEPDsaXmlWriter.h"
#include "HZEPHpfmReader.h"
#include "HostFileUtils.h"
#include "WELHardwarePlatformLMX.h"

#include <libxml/parser.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

void check(bool ok, const char* what) {
    if (!ok)
        throw std::runtime_error(std::string("failed: ") + what);
}

std::string readExample(const char* name) {
    return HostFileUtils::readFile(std::string(HZEP_BENCH_EXAMPLES) + "/" + name, 1 << 20);
}

/// Puts `count` copies of the entry, each "@" in it the copy's number, in front of the mark.
void grow(std::string& text, const std::string& mark, const std::string& entry, std::size_t count) {
    std::string grown;
    for (std::size_t i = 0; i < count; ++i) {
        const std::string number = std::to_string(i);
        for (const char c : entry)
            c == '@' ? grown.append(number) : grown.append(1, c);
    }
    const std::size_t at = text.find(mark);
    check(at != std::string::npos, "the example has no place to grow");
    text.insert(at, grown);
}

/// An archive's metadata with that many more ports, files and IPs.
std::string dsaText(std::size_t entries) {
    std::string text = readExample("heron/hw/heron.dsa.d/dsa.xml");
    grow(text, "</DesignIPs>",
         R"(  <IP InstanceName="heron_i/ip_@" VLNV="norvane:ip:axi_register:2.1">
        <Configuration>
          <Parameter Name="DATA_WIDTH" Value="512"/>
          <Parameter Name="ID_WIDTH" Value="4"/>
        </Configuration>
      </IP>
    )",
         entries);
    grow(
        text, "<AvailableResources ",
        R"(<Port Name="M@_AXI" Type="addressable" Mode="master" Protocol="AXI4" Base="0x0" Range="0x1000000000" DataWidth="512" AddressWidth="36">
            <AddressSegments>
              <AddressSegment Name="seg_ddr_@" Base="0x400000000" Range="0x400000000" Slave="ddr_1"/>
            </AddressSegments>
          </Port>
          )",
        entries);
    grow(text, "</Files>", R"(  <File Type="TCL" Name="scripts/step_@.tcl" UsedIn="implementation" ProcessingOrder="late"/>
    )",
         entries);
    return text;
}

/// A hardware platform file with that many more bus interfaces.
std::string hpfmText(std::size_t entries) {
    std::string text = readExample("osprey/hw/osprey.kar.d/hpfm/osprey.hpfm");
    grow(
        text, "<qd:nocConnectivity ",
        R"(<qd:busInterface qd:busTypeRef="aximm" qd:name="M@_DDR" qd:instanceRef="memory_subsystem" qd:componentRef="ddr_subsystem" qd:mode="slave" qd:category="memory" qd:dataWidth="512" qd:memport="S_AXI_NOC" qd:sptag="DDR[@]" qd:slr="SLR1" qd:maxMasters="15">
      <qd:addressSegment qd:baseName="DDR_MEM@" qd:index="0" qd:memoryInstance="ddr_@" qd:auto="true" qd:sptag="DDR[@]" qd:slr="SLR1" qd:maxMasters="15"/>
    </qd:busInterface>
    )",
        entries);
    return text;
}

std::size_t elementsSeen = 0;

void parseAlone(const std::string& text) {
    xmlSAXHandler handler = {};
    handler.initialized = XML_SAX2_MAGIC;
    handler.startElementNs = [](void*, const xmlChar*, const xmlChar*, const xmlChar*, int, const xmlChar**, int, int, const xmlChar**) {
        ++elementsSeen;
    };
    handler.endElementNs = [](void*, const xmlChar*, const xmlChar*, const xmlChar*) {};
    handler.characters = [](void*, const xmlChar*, int) {};
    handler.ignorableWhitespace = handler.characters;
    xmlParserCtxtPtr context = xmlCreatePushParserCtxt(&handler, nullptr, nullptr, 0, nullptr);
    check(context != nullptr, "no parser");
    xmlCtxtUseOptions(context, XML_PARSE_NOENT | XML_PARSE_NONET | XML_PARSE_HUGE);
    constexpr std::size_t piece = lmx60::c_xml::piece_size;
    for (std::size_t at = 0; at < text.size(); at += piece)
        xmlParseChunk(context, text.data() + at, static_cast<int>(std::min(piece, text.size() - at)), 0);
    xmlParseChunk(context, nullptr, 0, 1);
    check(context->wellFormed == 1, "the text is no XML");
    xmlFreeParserCtxt(context);
}

/// What one format has to be measured.
struct Format {
    const char* name;
    std::function<std::string(std::size_t)> makeText;
    std::function<void(const std::string& text)> bind;
    std::function<void(const std::string& text)> prepare;
    std::function<void(const std::string& text)> load;
    std::function<std::size_t()> write; // what was loaded; answers its bytes
};

template <class Root>
void bind(Root& root, const std::string& text) {
    check(root.Unmarshal(text.data(), text.size(), nullptr) == lmx60::error_none, "binding");
}

void measure(const Format& format) {
    std::printf("%-6s %8s %9s %9s %9s %9s %8s %8s %8s %10s\n", format.name, "entries", "text KB", "sax ms", "bind ms", "model ms",
                "bind/sax", "mod/sax", "growth", "write MB/s");
    double timeBefore = 0;
    double sizeBefore = 0;
    for (const std::size_t entries : {100UL, 1'000UL, 10'000UL}) {
        const std::string text = format.makeText(entries);
        const auto size = static_cast<double>(text.size());
        format.prepare(text);
        // Taken in turns, so that a busy moment of the machine falls on all of them.
        std::vector<double> sax, binding, model, writing;
        double written = 0;
        const int rounds = entries >= 10'000 ? 9 : entries >= 1'000 ? 31 : 101;
        for (int i = 0; i < rounds; ++i) {
            sax.push_back(bench::milliseconds([&] { parseAlone(text); }));
            binding.push_back(bench::milliseconds([&] { format.bind(text); }));
            model.push_back(bench::milliseconds([&] { format.load(text); }));
            writing.push_back(bench::milliseconds([&] { written = static_cast<double>(format.write()); }));
        }
        const double alone = bench::median(sax);
        const double time = bench::median(model);
        char growth[32] = "-";
        if (timeBefore > 0)
            std::snprintf(growth, sizeof growth, "%.2f", (time / timeBefore) / (size / sizeBefore));
        std::printf("%-6s %8zu %9zu %9.2f %9.2f %9.2f %8.2f %8.2f %8s %10.1f\n", "", entries, text.size() / 1024, alone,
                    bench::median(binding), time, bench::median(binding) / alone, time / alone, growth,
                    written / 1000.0 / bench::median(writing));
        timeBefore = time;
        sizeBefore = size;
    }
}

} // namespace

int main(int argc, char** argv) {
    std::string directory = (std::filesystem::temp_directory_path() / "hzep-bench-XXXXXX").string();
    if (!::mkdtemp(directory.data()))
        return 2;
    const std::string archive = directory + "/card.dsa";
    const std::string target = directory + "/written.xml";
    // One workload alone, for a profile.
    const std::string only = argc > 1 ? argv[1] : "";

    std::unique_ptr<HPLPlatform> platform;
    if (only.empty() || only == "dsa")
        measure({"dsa", dsaText,
                 [](const std::string& text) {
                     BasePlatform::Root root;
                     bind(root, text);
                 },
                 [&](const std::string& text) { bench::writeArchive(archive, text, "dsa.xml", false); },
                 [&](const std::string&) {
                     platform = std::make_unique<HPLPlatform>();
                     check(HZEPDsaXmlReader(archive, platform.get()).parseDSA(), "loading");
                 },
                 [&] {
                     HZEPDsaXmlWriter(platform.get(), target).writeDSA();
                     return static_cast<std::size_t>(std::filesystem::file_size(target));
                 }});

    WELHardwarePlatform::Repository repository;
    if (only.empty() || only == "hpfm")
        measure({"hpfm", hpfmText,
                 [](const std::string& text) {
                     WELHardwarePlatform::Repository root;
                     bind(root, text);
                 },
                 [&](const std::string& text) { bind(repository, text); },
                 [&](const std::string& text) {
                     platform = std::make_unique<HPLPlatform>();
                     check(HZEPHpfmReader(text, platform.get()).parseStream(), "loading");
                 },
                 [&] {
                     std::string document;
                     check(repository.Marshal(&document, nullptr) == lmx60::error_none, "writing");
                     return document.size();
                 }});

    std::puts(
        "\nms of processor time, medians. sax: the parser alone. bind: to the objects of the schema. model: to a filled platform, all of\n"
        "it, with the end of the platform before. growth: model's time against the row before, over the growth of the text (1 is\n"
        "linear). write: the platform to a file, and an hpfm's objects to text.");
    check(elementsSeen > 0, "nothing was parsed");
    std::filesystem::remove_all(directory);
}
