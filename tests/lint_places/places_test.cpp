// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "../lint/Rendered.h"
#include "Documents.h"
#include "Family.h"
#include "TempDir.h"
#include "WholePlatform.h"
#include "ZipBuilder.h"

#include <functional>
#include <map>

using boost::property_tree::ptree;

namespace {

using Lines = std::vector<std::string>;

const char* const kEmulation = R"({"pfm_metadata_version": "1", "emulations": [{"name": "e", "files": [
    {"type": "t1", "name": "n1", "inst_path": "p"}, {"type": "t2", "name": "n2"}]}, {"name": "f", "files": [{"type": "t3", "name": "n3"}]}]})";
const char* const kProperties =
    R"({"Flow": "f", "CustomScriptPath": "c", "UserIpRepoPath": "u", "DdrBanks": [{"DATA_WIDTH": "1", "SP_TAG": "2"}],
    "DesignIpInstances": [{"VLNV": "v1", "Configuration": {"A": "1", "NUM_SI": "2"}}, {"VLNV": "v2", "Configuration": {"B": "1"}}],
    "SystemClocks": {"CPU": "1", "other": "2"}})";

/// The words alone: the place tells the key, and lines and values are the test's own.
std::string withoutOwn(const std::string& line) {
    std::string words;
    for (std::size_t at = 0; at < line.size();) {
        const bool isQuote = line[at] == '"' || line[at] == '\'';
        const std::size_t end = isQuote ? line.find(line[at], at + 1) : line.npos;
        if (end == line.npos) {
            words += line[at++];
            continue;
        }
        const bool isKey = line.compare(end + 1, 2, ": ") == 0 || words.ends_with("an item of ");
        const bool isValue = line.substr(at + 1, end - at - 1).find_first_not_of("0123456789tvx[/") == line.npos;
        words += isKey ? "KEY" : isValue ? "V" : line.substr(at, end - at + 1);
        at = end + 1;
    }
    if (const std::size_t at = words.find("line "); at != words.npos)
        words.replace(at + 5, words.find_first_not_of("0123456789", at + 5) - at - 5, "N");
    return words;
}

/// Changes one place of a document after the other and gathers what the checker then finds, by its words.
class Places {
public:
    explicit Places(std::string file) : file_(std::move(file)) {}

    void begin(const std::string& text) {
        before_ = lint(text);
        for (const std::string& line : before_)
            add(line, "(as it is)");
    }
    void tryOne(const std::string& place, const std::string& text) {
        for (const std::string& line : lint(text))
            if (std::find(before_.begin(), before_.end(), line) == before_.end())
                add(line, place);
    }
    std::string print() const {
        std::string text = "= " + file_ + "\n";
        for (const auto& [line, places] : found_)
            text += wrapped(line + ":", places);
        return text;
    }

private:
    void add(const std::string& line, const std::string& place) {
        // What may stand where, and as a number, is told by the schemas; of numbers in texts, the bounds tell enough.
        for (const char* known : {"unexpected element", "is missing in",
                                  "not a whole number: ", "not a decimal: ", "not true or false: ", "is no whole number and is read as 0"})
            if (line.find(known) != line.npos)
                return;
        Lines& places = found_[withoutOwn(line)];
        if (std::find(places.begin(), places.end(), place) == places.end())
            places.push_back(place);
    }

    Lines lint(const std::string& text) {
        Lines lines = render(dir_.write(file_, text));
        for (std::string& line : lines) {
            line.erase(0, line.find(' ') + 1);
            if (const std::size_t at = line.find(dir_.path()); at != line.npos)
                line.erase(at, dir_.path().size() + 1);
        }
        return lines;
    }

    TempDir dir_;
    std::string file_;
    Lines before_;
    std::map<std::string, Lines> found_;
};

constexpr const char* kValues[] = {"99999999999999999999", "x["};

void tryXml(Places& places, const Family& family, const Element& document, Element& element) {
    for (auto& [name, value] : element.attributes) {
        const std::string kept = value;
        for (const char* other : kValues) {
            value = other;
            places.tryOne(element.name + "@" + name, family.print(document));
        }
        value = kept;
    }
    for (std::size_t i = 0; i < element.children.size(); ++i) {
        const std::vector<Element> kept = element.children;
        element.children.insert(element.children.begin() + static_cast<std::ptrdiff_t>(i), kept[i]);
        places.tryOne(element.name + "/" + kept[i].name + " twice", family.print(document));
        element.children = kept;
        tryXml(places, family, document, element.children[i]);
    }
}

void tryJson(Places& places, const ptree& document, ptree& node, const std::string& path) {
    // What stands in the network on chip is told once.
    if (path == "nocConnectivity.busInterfaces")
        return;
    bool isFirst = true;
    for (auto child = node.begin(), next = child; child != node.end(); child = next) {
        next = std::next(child);
        const ptree::value_type kept = *child;
        const bool isItem = kept.first.empty();
        const std::string place = path + (path.empty() || isItem ? "" : ".") + kept.first;
        for (const char* other : kValues) {
            child->second = ptree(other);
            places.tryOne(place, laidOut(document));
        }
        child->second = kept.second;
        if (isItem) {
            const auto second = node.insert(child, kept);
            places.tryOne(place + " twice", laidOut(document));
            node.erase(second);
        } else {
            node.erase(child);
            places.tryOne(place + " gone", laidOut(document));
            child = node.insert(next, kept);
        }
        // Items of a list are alike.
        if (!isItem || std::exchange(isFirst, false))
            tryJson(places, document, child->second, place);
    }
}

} // namespace

// What is found, and the places where a value too large, a value that is no name, a second one or none at all has it found.
TEST(LintPlaces, OfEveryDocument) {
    std::string text;
    for (const auto& [name, file] : {std::pair{"ZEPPlatform", "p.zpfm"},
                                     {"ZEPSoftwarePlatform", "s.spfm"},
                                     {"WELHardwarePlatform", "h.hpfm"},
                                     {"ZEPEmulation", "hw_emu.xml"},
                                     {"BasePlatform", "kar.xml"}}) {
        const Family family(name);
        Element document = family.make();
        Places places(file);
        places.begin(family.print(document));
        tryXml(places, family, document, document);
        text += places.print();
    }
    for (const auto& [file, json] : {std::pair{"kar.json", wholeMetadata()}, {"hw_emu.json", kEmulation}, {"prop.json", kProperties}}) {
        Places places(file);
        for (const ptree::value_type& part : parse(json)) {
            ptree document;
            document.push_back(part);
            places.begin(laidOut(document));
            tryJson(places, document, document, "");
        }
        text += places.print();
    }
    expectTestFile("lint_places/places.txt", text);
}

// Which documents are found, by their names and by the types under which an archive lists them.
TEST(LintPlaces, OfEveryKind) {
    TempDir dir;
    std::string text;
    const auto tell = [&](const std::string& name, const std::string& path) {
        std::string line;
        const std::string error = errorOf([&] {
            for (const std::string& found : render(path))
                line += " | " + found;
        });
        text += name + line + (error.empty() ? "" : " ! " + error.substr(error.rfind(": "))) + "\n";
    };
    for (const char* name : {"a.zpfm", "a.spfm", "a.hpfm", "hw_emu.xml", "kar.xml", "dsa.xml", "other.xml"})
        tell(name, dir.write(name, "<a/>"));
    for (const char* name : {"hw_emu.json", "kar.json", "alt_kar.json", "dsa.json", "alt_dsa.json", "prop.json", "user_prop.json",
                             "default_prop.json", "other.json"})
        tell(name, dir.write(name, R"({"versionMajor": "["})"));
    for (const char* type : {"HPFM", "EMU_HPFM", "EMU_JSON", "EMU_XML", "META_JSON", "EXT_META_JSON", "PROP_JSON", "USER_PROP_JSON", "DCP"})
        tell(type, ZipBuilder(dir.path("a.kar"))
                       .add("kar.json", R"({"files": [{"name": "m", "type": ")" + std::string(type) + R"("}]})")
                       .add("m", R"({"versionMajor": "[",})")
                       .write());
    const Family base("BasePlatform"), emulation("ZEPEmulation");
    tell("listed", ZipBuilder(dir.path("a.kar"))
                       .add("kar.json", R"({"board": {"imageFileHdpi": "h", "imageFileMdpi": "m", "imageFileLdpi": "l"},
"files": [{"name": "e.json", "type": "EMU_JSON"}, {"name": "e.xml", "type": "EMU_XML"}]})")
                       .add("kar.xml", base.print(base.make()))
                       .add("e.json", kEmulation)
                       .add("e.xml", emulation.print(emulation.make()))
                       .write());
    expectTestFile("lint_places/kinds.txt", text);
}
