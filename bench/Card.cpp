// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "Card.h"

#include "HZEPJSONText.h"

#include <zip.h>

#include <sstream>
#include <stdexcept>

using boost::property_tree::ptree;

namespace bench {

namespace {

constexpr const char* kEntry = "kar.json";

[[noreturn]] void fail(const std::string& path) {
    throw std::runtime_error("cannot use the archive " + path);
}

} // namespace

std::string cardText(std::size_t busInterfaces) {
    ptree card;
    HZEPJSONText::readFile(HZEP_BENCH_CARD, card);
    ptree& list = card.get_child("busInterfaces");
    ptree grown;
    auto next = list.begin();
    for (std::size_t i = 0; i < busInterfaces; ++i) {
        ptree& item = grown.push_back(*next)->second;
        item.put("name", item.get<std::string>("name") + "_" + std::to_string(i));
        if (++next == list.end())
            next = list.begin();
    }
    list.swap(grown);
    std::ostringstream text;
    HZEPJSONText::write(text, card);
    return text.str();
}

void writeArchive(const std::string& path, const std::string& text, const char* entry, bool isDeflated) {
    zip_t* archive = zip_open(path.c_str(), ZIP_CREATE | ZIP_TRUNCATE, nullptr);
    if (!archive)
        fail(path);
    zip_source_t* source = zip_source_buffer(archive, text.data(), text.size(), 0);
    if (!source || zip_file_add(archive, entry, source, 0) < 0 ||
        zip_set_file_compression(archive, 0, isDeflated ? ZIP_CM_DEFLATE : ZIP_CM_STORE, 0) != 0 || zip_close(archive) != 0)
        fail(path);
}

std::string inflateEntry(const std::string& path) {
    zip_t* archive = zip_open(path.c_str(), ZIP_RDONLY, nullptr);
    zip_stat_t stat;
    if (!archive || zip_stat(archive, kEntry, 0, &stat) != 0)
        fail(path);
    std::string text(stat.size, '\0');
    zip_file_t* file = zip_fopen(archive, kEntry, 0);
    if (!file || zip_fread(file, text.data(), text.size()) != static_cast<zip_int64_t>(text.size()))
        fail(path);
    zip_fclose(file);
    zip_discard(archive);
    return text;
}

} // namespace bench
