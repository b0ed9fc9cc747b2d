// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include <gtest/gtest.h>

#include "BasePlatformLMX.h"
#include "Family.h"
#include "Outcome.h"
#include "TempDir.h"
#include "WELHardwarePlatformLMX.h"
#include "ZEPEmulationLMX.h"
#include "ZEPPlatformLMX.h"
#include "ZEPSoftwarePlatformLMX.h"

#include <cstdlib>
#include <functional>

namespace {

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
    const Family family(name);
    for (std::size_t choice = 0; choice < family.choices(); ++choice) {
        Element document = family.make(choice);
        Root whole;
        ASSERT_EQ(readInto(whole, family.print(document)).code, 0) << family.print(document);
        EXPECT_EQ(written(whole), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n" + family.print(document));
        // As any other checker sees it.
        const TempDir dir;
        EXPECT_EQ(std::system(("xmllint --noout --nonet --schema " PLATFORM_SCHEMA_DIR "/" + name + ".xsd " +
                               dir.write("file.xml", family.print(document)) + " 2>/dev/null")
                                  .c_str()),
                  0);
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
