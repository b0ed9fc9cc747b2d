// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "Documents.h"
#include "HPLPlatform.h"
#include "HZEPDsaJsonReader.h"
#include "WholePlatform.h"

#include <functional>
#include <map>

using boost::property_tree::ptree;

namespace {

using Values = std::map<std::string, std::string>;

/// The leaves of a tree by their paths.
void collect(const ptree& node, const std::string& path, Values& values) {
    if (node.empty() && !path.empty())
        values[path] = node.data();
    int index = 0;
    for (const auto& [name, child] : node)
        collect(child, path + (name.empty() ? "[" + std::to_string(index++) + "]" : (path.empty() ? "" : ".") + name), values);
}

Values valuesOf(const HPLPlatform& platform) {
    Values values;
    collect(parse(documentOf(platform)), "", values);
    return values;
}

Values readBack(const ptree& document) {
    HPLPlatform platform;
    EXPECT_TRUE(HZEPDsaJsonReader(&platform).parseJsonString(laidOut(document)));
    return valuesOf(platform);
}

/// What became of one value, and of others with it.
std::string tell(const std::string& path, const Values& before, const Values& after) {
    std::string own = "same", others;
    int count = 0;
    Values both = before;
    both.insert(after.begin(), after.end());
    for (const auto& [key, value] : both) {
        const auto was = before.find(key), is = after.find(key);
        if (was != before.end() && is != after.end() && was->second == is->second)
            continue;
        const std::string now = is == after.end() ? "gone" : is->second.empty() ? "empty" : is->second;
        if (key == path)
            own = now;
        else if (++count < 2)
            others += "+" + key + "=" + now;
    }
    return own + others + (count < 2 ? "" : "+" + std::to_string(count - 1) + " more");
}

using Visit = std::function<void(ptree& object, ptree::iterator child, const std::string& path)>;

/// Each text of each object.
void forEachKey(ptree& node, const std::string& path, const Visit& visit) {
    int index = 0;
    for (auto child = node.begin(), next = child; child != node.end(); child = next) {
        next = std::next(child);
        const std::string below =
            path + (child->first.empty() ? "[" + std::to_string(index++) + "]" : (path.empty() ? "" : ".") + child->first);
        if (child->second.empty() && !child->first.empty())
            visit(node, child, below);
        else
            forEachKey(child->second, below, visit);
    }
}

/// The key in the list of all of them: what the bus interfaces of the network on chip know is told once.
std::string nameOf(std::string path) {
    for (std::size_t at = 0; (at = path.find('[')) != path.npos;)
        path.erase(at, path.find(']') - at + 1);
    const std::string network = "nocConnectivity.busInterfaces";
    return path.starts_with(network) ? path.substr(network.find('.') + 1) : path;
}

std::string print(const std::map<std::string, std::vector<std::string>>& groups) {
    std::string text;
    for (const auto& [outcome, keys] : groups)
        text += wrapped(outcome + ":", keys);
    return text;
}

} // namespace

TEST(DsaJsonKeys, TheWholeDocumentIsWrittenAsItWasRead) {
    HPLPlatform platform;
    fillWhole(platform);
    EXPECT_EQ(documentOf(platform), wholeMetadata());
}

// By outcome, the keys: what "199x" or the other flag in capitals comes to, what an absent key does, and an empty text.
TEST(DsaJsonKeys, EachByItself) {
    std::map<std::string, std::vector<std::string>> groups;
    for (const ptree::value_type& part : parse(wholeMetadata())) {
        ptree document;
        document.push_back(part);
        const Values whole = readBack(document);
        forEachKey(document, "", [&](ptree& object, ptree::iterator child, const std::string& path) {
            const ptree::value_type kept = *child;
            child->second.data() = kept.second.data() == "true" ? "FALSE" : kept.second.data() == "false" ? "TRUE" : "199x";
            // A part is read as a whole or not at all.
            const bool isForm = kept.first == "fpgaPart" || kept.first == "uuid";
            std::string outcome = isForm ? "-" : tell(path, whole, readBack(document));
            child->second.data() = "";
            const std::string empty = tell(path, whole, readBack(document));
            const auto next = object.erase(child);
            const std::string absent = tell(path, whole, readBack(document));
            object.insert(next, kept);
            if (absent != outcome || empty != outcome)
                outcome += " | " + absent + " | " + empty;
            std::vector<std::string>& keys = groups[outcome];
            if (const std::string key = nameOf(path); std::find(keys.begin(), keys.end(), key) == keys.end())
                keys.push_back(key);
        });
    }
    expectTestFile("formats/dsa_json_keys.txt", print(groups));
}

TEST(DsaJsonKeys, OfTheSameNameTheFirstIsReadAndLetterCaseCounts) {
    ptree document = parse(wholeMetadata());
    const Values whole = readBack(document);
    std::vector<std::pair<ptree*, ptree::value_type>> more;
    forEachKey(document, "", [&](ptree& object, ptree::iterator child, const std::string& path) {
        std::string upper = child->first;
        std::transform(upper.begin(), upper.end(), upper.begin(), [](unsigned char c) { return std::toupper(c); });
        if (path.find("configuration") == path.npos)
            more.emplace_back(&object, ptree::value_type(child->first, ptree("199")));
        if (path.find("configuration") == path.npos && upper != child->first)
            object.insert(object.begin(), {upper, ptree("88")});
    });
    for (auto& [object, child] : more)
        object->push_back(child);
    EXPECT_EQ(readBack(document), whole);
}

TEST(DsaJsonKeys, WhatIsAbsentInALaterDocument) {
    HPLPlatform platform;
    fillWhole(platform);
    const Values whole = valuesOf(platform);
    ptree document = parse(wholeMetadata());
    for (auto child = document.begin(); child != document.end();)
        child = !child->second.empty() && child->second.front().first.empty() ? document.erase(child) : std::next(child);
    std::map<std::string, std::vector<std::string>> groups;
    std::vector<std::string> keys;
    forEachKey(document, "", [&](ptree& object, ptree::iterator child, const std::string& path) {
        keys.push_back(path);
        object.erase(child);
    });
    ASSERT_TRUE(HZEPDsaJsonReader(&platform).parseJsonString(laidOut(document)));
    const Values after = valuesOf(platform);
    for (const std::string& key : keys)
        groups[!after.contains(key) ? "gone" : after.at(key) == whole.at(key) ? "same" : after.at(key)].push_back(key);
    expectTestFile("formats/dsa_json_later.txt", print(groups));
}
