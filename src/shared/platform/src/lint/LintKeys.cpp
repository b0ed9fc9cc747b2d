// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "../emulation/EmulationJsonKeys.h"
#include "../emulation/EmulationPropertyKeys.h"
#include "../formats/DsaJsonPlatformKeys.h"
#include "HZEPNearNames.h"
#include "LintNumbers.h"
#include "LintText.h"

#include "HostConvert.h"

#include <boost/algorithm/string/predicate.hpp>

#include <cerrno>
#include <cstdlib>
#include <unordered_map>

namespace {

using dsa_json::KeyInfo;
using dsa_json::Shape;
using lint::Findings;
using lint::Node;
using lint::Rule;
using lint::Spot;

using Members = std::vector<const KeyInfo*> (*)();

class KeyCheck {
public:
    explicit KeyCheck(Findings& findings) : findings_(findings) {}

    void checkObject(const Node& object, Members membersOf) {
        const Table& table = getTable(membersOf);
        lint::checkDuplicateKeys(object, findings_);
        for (const Node& child : object.children) {
            if (findings_.isFull())
                return;
            if (const auto key = table.keys.find(child.name); key != table.keys.end())
                checkValue(child, *key->second);
            else
                findings_.add(Rule::UnknownKey, child.spot(),
                              "key " + lint::quote(child.name) + " is not known here" +
                                  (findings_.isFull(Rule::UnknownKey) ? "" : HZEPNearNames::suggest(child.name, table.names, 1)));
        }
    }

private:
    struct Table {
        std::unordered_map<std::string_view, const KeyInfo*> keys;
        std::vector<std::string> names;
    };

    const Table& getTable(Members membersOf) {
        auto [found, isNew] = tables_.try_emplace(membersOf);
        Table& table = found->second;
        if (isNew)
            for (const KeyInfo* key : membersOf()) {
                table.keys.emplace(key->name, key);
                table.names.emplace_back(key->name);
            }
        return table;
    }

    /// What is written only is told once, not again for all that is in it.
    void checkValue(const Node& node, const KeyInfo& key) {
        const bool isLost =
            key.use == dsa_json::Use::Written && !isInLost_ &&
            (node.form == Node::Text ? !node.value.empty() && node.value != "0" && node.value != "false" : !node.children.empty());
        if (isLost)
            findings_.add(Rule::WrittenOnly, node.spot(), "key " + lint::quote(node.name) + " is not read");
        const bool wasInLost = isInLost_;
        isInLost_ = isInLost_ || isLost;
        checkShape(node, key);
        isInLost_ = wasInLost;
    }

    void checkShape(const Node& node, const KeyInfo& key) {
        const bool isNested = key.shape == Shape::Object || key.shape == Shape::List;
        if (isNested != (node.form != Node::Text) && !(isNested && node.value.empty())) {
            complainOfShape(node, isNested ? "a list or an object is expected" : "a text is expected");
            return;
        }
        switch (key.shape) {
        case Shape::Number:
            lint::checkNumber(node, key.min, key.max, findings_);
            break;
        case Shape::Hex:
            lint::checkHex(node, key.bytes, findings_);
            break;
        case Shape::Flag:
            if (!node.value.empty() && !boost::algorithm::iequals(node.value, "true") && !boost::algorithm::iequals(node.value, "false"))
                findings_.add(Rule::NotAFlag, node.spot(), lint::quote(node.name) + ": " + lint::quote(node.value) + " is read as false",
                              {"\"true\" or \"false\"", lint::toFlag(node.value), {}});
            break;
        case Shape::Object:
            if (key.members)
                checkObject(node, key.members);
            break;
        case Shape::List:
            if (key.members)
                checkItems(node, key.members);
            break;
        default:
            break;
        }
    }

    void checkItems(const Node& list, Members membersOf) {
        for (const Node& item : list.children) {
            if (findings_.isFull())
                return;
            if (item.form == Node::Text && !item.value.empty())
                complainOfShape(item, "an item of " + lint::quote(list.name) + " must be an object");
            else
                checkObject(item, membersOf);
        }
    }

    void complainOfShape(const Node& node, const std::string& expectation) {
        findings_.add(Rule::WrongShape, node.spot(), (node.name.empty() ? "" : lint::quote(node.name) + ": ") + expectation);
    }

    Findings& findings_;
    std::unordered_map<Members, Table> tables_;
    bool isInLost_ = false;
};

/// The same in base 10; "" when the field doesn't hold it.
std::string toDecimal(const std::string& hex, long min, long max) {
    char* end = nullptr;
    errno = 0;
    const long number = std::strtol(hex.c_str(), &end, 16);
    return errno == 0 && end == hex.c_str() + hex.size() && number >= min && number <= max ? std::to_string(number) : "";
}

std::string describe(const Node& node) {
    return lint::quote(node.name) + ": " + lint::quote(node.value);
}

template <const auto& Table>
bool hasOneOf(const Node& root) {
    for (const auto& key : Table)
        if (root.find(key.name))
            return true;
    return false;
}

} // namespace

namespace lint {

std::string toFlag(const std::string& text) {
    for (const auto& [word, flag] :
         {std::pair{"yes", "true"}, {"on", "true"}, {"1", "true"}, {"no", "false"}, {"off", "false"}, {"0", "false"}})
        if (boost::algorithm::iequals(text, word))
            return flag;
    return boost::algorithm::iequals(text, "true") ? "true" : boost::algorithm::iequals(text, "false") ? "false" : "";
}

void checkNumber(const Node& node, long min, long max, Findings& findings) {
    const char* const text = node.value.c_str();
    if (node.value.empty())
        return;
    char* end = nullptr;
    errno = 0;
    const long number = std::strtol(text, &end, 10);
    const bool isWhole = end == text + node.value.size();
    const bool isHex = node.value.size() > 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X');
    if (isHex && node.value.find_first_not_of('0', 2) == std::string::npos)
        return; // 0 in any base
    if (isHex)
        findings.add(Rule::HexInDecimal, node.spot(), describe(node) + " is in base 16 and is read as 0; base 10 is expected",
                     {"a number in base 10", toDecimal(node.value, min, max), {}});
    else if (!isWhole)
        findings.add(Rule::NotANumber, node.spot(), describe(node) + " is no whole number and is read as " + std::to_string(number));
    else if (errno == ERANGE || number < min || number > max)
        findings.add(Rule::TooWide, node.spot(),
                     describe(node) + " is not between " + std::to_string(min) + " and " + std::to_string(max) + " and is cut");
}

void checkHex(const Node& node, std::size_t bytes, Findings& findings) {
    std::vector<unsigned char> data(bytes);
    if (node.value.empty() || HostConvert::hexToDataLittleEndian(node.value, data.data(), bytes))
        return;
    const std::size_t prefix = node.value.starts_with("0x") || node.value.starts_with("0X") ? 2 : 0;
    const bool isHex = node.value.size() > prefix && node.value.find_first_not_of("0123456789abcdefABCDEF", prefix) == std::string::npos;
    if (isHex)
        findings.add(Rule::TooWide, node.spot(),
                     describe(node) + " has more than " + std::to_string(2 * bytes) + " digits and is read as 0");
    else
        findings.add(Rule::NotANumber, node.spot(), describe(node) + " is no number in base 16 and is read as 0");
}

void checkDuplicateKeys(const Node& object, Findings& findings) {
    std::unordered_map<std::string_view, Spot> seen;
    for (const Node& child : object.children)
        if (const auto [earlier, isFirst] = seen.try_emplace(child.name, child.spot()); !isFirst)
            findings.add(Rule::DuplicateKey, child.spot(),
                         "key " + quote(child.name) + " comes again, line " + std::to_string(earlier->second.line) +
                             " has it too; only the first is read",
                         {{}, {}, findings.at(earlier->second)});
}

void checkKeys(const Node& root, Kind kind, Findings& findings) {
    if (kind != Kind::ArchiveJson && kind != Kind::EmulationJson)
        return;
    if (root.form != Node::Object)
        findings.add(Rule::WrongShape, root.spot(), "the document must be an object");
    else
        KeyCheck(findings).checkObject(root, kind == Kind::ArchiveJson ? &dsa_json::membersOf<dsa_json::kPlatformKeys>
                                                                       : &dsa_json::membersOf<emulation_json::kRootKeys>);
}

std::optional<Kind> recogniseJson(const std::string& text) {
    Findings unused;
    const std::optional<Node> root = readJson(text, unused);
    if (!root)
        return std::nullopt;
    if (root->find(emulation_json::kEmulations))
        return Kind::EmulationJson;
    if (root->find("boardFile"))
        return Kind::BoardFile;
    for (const char* key : {"pcie_bar", "pcie_endpoint", "cpu_endpoint", "debug_network"})
        if (root->find(key))
            return Kind::LabelFile;
    for (const char* key : {emulation_properties::kBanks, emulation_properties::kInstances, emulation_properties::kClocks})
        if (root->find(key))
            return Kind::PropertyFile;
    return hasOneOf<dsa_json::kPlatformKeys>(*root) ? std::optional(Kind::ArchiveJson) : std::nullopt;
}

} // namespace lint
