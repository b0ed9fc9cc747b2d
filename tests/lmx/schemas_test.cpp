// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include <gtest/gtest.h>

#include "BasePlatformLMX.h"
#include "Outcome.h"
#include "WELHardwarePlatformLMX.h"
#include "ZEPEmulationLMX.h"
#include "ZEPPlatformLMX.h"
#include "ZEPSoftwarePlatformLMX.h"

#include <fstream>
#include <functional>
#include <map>
#include <set>
#include <sstream>

namespace {

using Words = std::vector<std::string>;

/// A document with everything that its family knows, each value another one.
struct Element {
    std::string name;
    Words parts;                                                 // of the line that tells what it holds
    std::vector<std::pair<std::string, std::string>> attributes; // as written
    std::vector<Element> children;
};

struct Family {
    std::string prefix;
    std::string root;
    std::map<std::string, std::vector<Words>> contents;
    int values = 0;

    Element make(const std::string& name, std::size_t choice) {
        Element made{name, {}, {}, {}};
        const auto found = contents.find(name);
        if (found == contents.end())
            return made;
        made.parts = found->second[std::min(choice, found->second.size() - 1)];
        for (const std::string& part : made.parts) {
            const std::string plain = part.substr(part[0] == '@', part.find_first_of("#=?*+") - (part[0] == '@'));
            const bool isText = part.find_first_of("#=") == part.npos;
            if (part[0] != '@')
                made.children.push_back(make(plain, choice));
            else if (part.find('=') != part.npos)
                made.attributes.emplace_back(prefix + plain, "true");
            else
                made.attributes.emplace_back(prefix + plain, (isText ? "v" : "") + std::to_string(++values % 250));
        }
        return made;
    }

    std::string print(const Element& element, const std::string& indent = "") const {
        std::string text = indent + "<" + prefix + element.name;
        if (indent.empty() && !prefix.empty())
            text += " xmlns:" + prefix.substr(0, prefix.size() - 1) + "=\"urn:tolvan:" + prefix.substr(0, prefix.size() - 1) + "\"";
        for (const auto& [name, value] : element.attributes)
            text += " " + name + "=\"" + value + "\"";
        if (element.children.empty())
            return text + (contents.contains(element.name) ? "/>\n" : ">text</" + prefix + element.name + ">\n");
        text += ">\n";
        for (const Element& child : element.children)
            text += print(child, indent + "  ");
        return text + indent + "</" + prefix + element.name + ">\n";
    }
};

std::map<std::string, Family> readFamilies() {
    std::ifstream file(SCHEMA_FACTS);
    std::map<std::string, Family> families;
    Family* family = nullptr;
    for (std::string line, name; std::getline(file, line);) {
        std::istringstream words(line);
        words >> name;
        if (name == "#")
            continue;
        if (name[0] == '=') {
            family = &families[name.substr(1)];
            if (words >> family->prefix)
                family->prefix += ":";
            continue;
        }
        if (family->root.empty())
            family->root = name;
        family->contents[name].emplace_back(std::istream_iterator<std::string>(words), std::istream_iterator<std::string>());
    }
    return families;
}

/// Every single fact: what happens when one thing is taken away, comes again, or is no number.
class Probe {
public:
    Probe(const Family& family, Element& root, std::function<Outcome(const std::string&)> read)
        : family_(family), root_(root), read_(std::move(read)) {}

    void tryAll(Element& element) {
        for (std::size_t i = 0; i < element.parts.size(); ++i) {
            const std::string& part = element.parts[i];
            const bool mayGo = part.find_first_of("?*") != part.npos;
            SCOPED_TRACE(element.name + ": " + part);
            if (part[0] == '@') {
                const auto whole = element.attributes;
                if (part.find_first_of("#=") != part.npos) {
                    element.attributes[i].second = "x";
                    expect(lmx60::error_not_valid, part.substr(1, part.find_first_of("#=") - 1));
                }
                element.attributes.erase(element.attributes.begin() + static_cast<std::ptrdiff_t>(i));
                expect(mayGo ? lmx60::error_none : lmx60::error_missing_attribute, element.name);
                element.attributes = whole;
            } else {
                const std::size_t at = i - element.attributes.size();
                const auto whole = element.children;
                element.children.insert(element.children.begin() + static_cast<std::ptrdiff_t>(at), whole[at]);
                EXPECT_EQ(read_(family_.print(root_)).code == 0, part.find_first_of("*+") != part.npos) << "a second one";
                element.children = whole;
                element.children.erase(element.children.begin() + static_cast<std::ptrdiff_t>(at));
                expect(mayGo ? lmx60::error_none : lmx60::error_missing_element, whole[at].name);
                element.children = whole;
                tryAll(element.children[at]);
            }
        }
    }

private:
    void expect(int code, const std::string& item) {
        const Outcome outcome = read_(family_.print(root_));
        EXPECT_EQ(outcome.code, code) << outcome;
        if (code != lmx60::error_none) {
            EXPECT_EQ(outcome.item, item) << outcome;
        }
    }

    const Family& family_;
    Element& root_;
    std::function<Outcome(const std::string&)> read_;
};

template <class Root>
void probe(const std::string& name) {
    SCOPED_TRACE(name);
    Family family = readFamilies().at(name);
    std::size_t choices = 0;
    for (const auto& [element, lines] : family.contents)
        choices = std::max(choices, lines.size());
    for (std::size_t choice = 0; choice < choices; ++choice) {
        Element document = family.make(family.root, choice);
        Root whole;
        ASSERT_EQ(readInto(whole, family.print(document)).code, 0) << family.print(document);
        EXPECT_EQ(written(whole), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n" + family.print(document));
        Probe(family, document, [](const std::string& text) {
            Root root;
            return readInto(root, text);
        }).tryAll(document);
    }
}

TEST(Schemas, TellWhatMayBeAbsentAndWhatMayComeAgain) {
    probe<BasePlatform::Root>("BasePlatform");
    probe<WELHardwarePlatform::Repository>("WELHardwarePlatform");
    probe<ZEPPlatform::Platform>("ZEPPlatform");
    probe<ZEPSoftwarePlatform::Platform>("ZEPSoftwarePlatform");
    probe<ZEPEmulation::Root>("ZEPEmulation");
}

} // namespace
