// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "Documents.h"

#include "JSONObjectWriter.h"

#define BOOST_BIND_GLOBAL_PLACEHOLDERS
#include <boost/property_tree/json_parser.hpp>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <sstream>

using boost::property_tree::ptree;

std::string documentOf(const zep_platform::JSONSerializable& object) {
    zep_platform::JSONObjectWriter writer;
    object.toJSON(writer);
    std::ostringstream out;
    writer.write(out);
    return out.str();
}

ptree parse(const std::string& json) {
    std::istringstream in(json);
    ptree tree;
    boost::property_tree::read_json(in, tree);
    return tree;
}

std::string laidOut(const ptree& tree) {
    std::ostringstream out;
    boost::property_tree::write_json(out, tree);
    return out.str();
}

std::string laidOut(const std::string& json) {
    return laidOut(parse(json));
}

std::string compact(const std::string& json) {
    std::vector<std::string> words(1);
    std::istringstream in(json);
    for (std::string line; std::getline(in, line);) {
        words.back() += line.substr(std::min(line.find_first_not_of(' '), line.size()));
        if (line.ends_with(','))
            words.emplace_back();
    }
    return wrapped("", words);
}

std::string readTestFile(const std::string& name) {
    std::ifstream in(HZEP_TESTS "/" + name, std::ios::binary);
    EXPECT_TRUE(in) << name;
    return {std::istreambuf_iterator<char>(in), {}};
}

void expectTestFile(const std::string& name, const std::string& text) {
    if (std::getenv("HZEP_WRITE_EXPECTED"))
        std::ofstream(HZEP_TESTS "/" + name, std::ios::binary) << text;
    EXPECT_EQ(text, readTestFile(name)) << name;
}

std::string wrapped(const std::string& head, const std::vector<std::string>& words) {
    std::string text, line = head;
    for (const std::string& word : words) {
        if (line.size() + 1 + word.size() > 140) {
            text += line + "\n";
            line = "   ";
        }
        line += " " + word;
    }
    return text + line + "\n";
}

std::string edited(std::string text, const std::string& from, const std::string& to) {
    const auto at = text.find(from);
    EXPECT_NE(at, std::string::npos) << "nothing to edit: " << from;
    EXPECT_EQ(text.find(from, at + 1), std::string::npos) << "ambiguous: " << from;
    return at == std::string::npos ? text : text.replace(at, from.size(), to);
}

std::string between(const std::string& text, const std::string& from, const std::string& to) {
    const auto begin = text.find(from);
    const auto end = text.find(to, begin);
    EXPECT_NE(end, std::string::npos) << from << " ... " << to;
    return text.substr(begin, end - begin);
}

int lineOf(const std::string& document, const std::string& text) {
    const auto at = document.find(text);
    EXPECT_NE(at, std::string::npos) << text;
    return 1 + static_cast<int>(std::count(document.begin(), document.begin() + static_cast<std::ptrdiff_t>(at), '\n'));
}
