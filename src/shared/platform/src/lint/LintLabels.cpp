// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HZEPNearNames.h"

#include "LintNumbers.h"
#include "LintText.h"
#include "LintTree.h"

#include <algorithm>
#include <map>
#include <set>
#include <string>

namespace {

using lint::Findings;
using lint::Node;
using lint::Rule;

enum class Form { Text, Number, Address, List, Any };

struct Member {
    const char* name;
    Form form;
    bool isNeeded;
};
using Members = std::vector<Member>;

const Members kUuid = {{"uuid_type", Form::Text, true}, {"uuid_design_component", Form::Text, true}, {"uuid", Form::Text, true}};
const Members kBar = {{"bar_type", Form::Text, true},  {"physical_function", Form::Number, true}, {"bar", Form::Number, true},
                      {"dma_type", Form::Text, false}, {"offset", Form::Address, false},          {"range", Form::Address, false}};
const Members kEndpoint = {{"endpoint_name", Form::Text, true},
                           {"cell_vlnv", Form::Text, true},
                           {"cell", Form::Text, true},
                           {"interface", Form::Text, true},
                           {"addr_seg", Form::Text, true},
                           {"reg_abs", Form::Text, true},
                           {"partition", Form::Text, true},
                           {"partition_path", Form::Text, true},
                           {"addr", Form::Address, true},
                           {"range", Form::Address, true},
                           {"interrupt_source", Form::Text, false},
                           {"interrupt_sink", Form::Text, false},
                           {"interrupt_sink_cell", Form::Text, false},
                           {"interrupt_sink_cell_vlnv", Form::Text, false},
                           {"interrupt_sink_start", Form::Number, false},
                           {"interrupt_sink_end", Form::Number, false},
                           {"firmware_product", Form::Text, false},
                           {"firmware_branch", Form::Text, false},
                           {"firmware_version", Form::Text, false}};
const Members kNetwork = {{"physical_function", Form::Number, true},
                          {"bar", Form::Number, true},
                          {"bar_addr", Form::Address, true},
                          {"system_addr", Form::Address, true},
                          {"partition", Form::Text, true},
                          {"partition_path", Form::Text, true},
                          {"supports_nanocore_debug", Form::Text, true},
                          {"supports_jtag_fallback", Form::Text, true}};

Members join(Members members, const Members& more) {
    members.insert(members.end(), more.begin(), more.end());
    return members;
}

const std::map<std::string, Members, std::less<>>& labelKinds() {
    static const std::map<std::string, Members, std::less<>> kinds = {
        {"uuid", kUuid},
        {"pcie_bar", kBar},
        {"pcie_endpoint", join(kEndpoint, {{"physical_function", Form::Number, true}, {"bar", Form::Number, true}})},
        {"cpu_endpoint", join(kEndpoint, {{"cpu_type", Form::Text, true}})},
        {"debug_network", kNetwork}};
    return kinds;
}

std::vector<std::string> namesOf(const Members& members) {
    std::vector<std::string> names;
    for (const Member& member : members)
        names.emplace_back(member.name);
    return names;
}

std::string describe(const Node& node) {
    return lint::quote(node.name) + ": " + lint::quote(node.value);
}

void complainOfKey(const Node& key, const std::vector<std::string>& known, Findings& findings) {
    findings.add(Rule::UnknownKey, key.spot(),
                 "key " + lint::quote(key.name) + " is not known here" +
                     (findings.isFull(Rule::UnknownKey) ? "" : HZEPNearNames::suggest(key.name, known, 1)));
}

/// Of the decimal form, too, the readers take no tail.
bool hasForm(const Node& value, Form form) {
    if (form == Form::Any)
        return true;
    if (form == Form::List)
        return value.form == Node::List;
    if (value.form != Node::Text)
        return false;
    constexpr unsigned long kMaxNumber = 0x7FFFFFFF;
    const auto number = form == Form::Text      ? std::nullopt
                        : form == Form::Address ? lint::toAddress(value.value)
                                                : lint::toWhole(value.value);
    return form == Form::Text || (number && (form == Form::Address || *number <= kMaxNumber));
}

void checkMembers(const Node& object, const std::string& what, const Members& members, Findings& findings) {
    lint::checkDuplicateKeys(object, findings);
    std::set<std::string_view> there;
    for (const Node& child : object.children) {
        const auto member = std::find_if(members.begin(), members.end(), [&](const Member& row) { return child.name == row.name; });
        if (member == members.end()) {
            complainOfKey(child, namesOf(members), findings);
            continue;
        }
        there.insert(child.name);
        if (hasForm(child, member->form))
            continue;
        if (child.form == Node::Text)
            findings.add(Rule::LabelNumber, child.spot(),
                         describe(child) + " is no " + (member->form == Form::Address ? "address" : "number"),
                         {member->form == Form::Address ? "a text such as \"0x1000\" or \"4096\"" : "digits", "", {}});
        else
            findings.add(Rule::WrongShape, child.spot(), lint::quote(child.name) + ": a text is expected");
    }
    for (const Member& member : members)
        if (member.isNeeded && !there.contains(member.name))
            findings.add(Rule::Schema, object.spot(), what + " has no " + lint::quote(member.name));
}

/// Registers by function and number, as they are written.
void checkRegisters(const Node& root, Findings& findings) {
    std::set<std::string> registers, numbers;
    const auto nameOf = [](const Node& label) { return label.get("physical_function") + "/" + label.get("bar"); };
    forEachItem(&root, "pcie_bar", [&](const Node& bar) {
        registers.insert(nameOf(bar));
        numbers.insert(bar.get("bar"));
    });
    if (registers.empty())
        return;
    const auto complain = [&](const Node& label) {
        if (const Node* bar = label.find("bar"))
            findings.add(Rule::UnknownBar, bar->spot(),
                         "there is no register " + lint::quote(bar->value) + " of function " + lint::quote(label.get("physical_function")));
    };
    forEachItem(&root, "debug_network", [&](const Node& network) {
        if (!registers.contains(nameOf(network)))
            complain(network);
    });
    // A function may see a register of another one.
    forEachItem(&root, "pcie_endpoint", [&](const Node& endpoint) {
        if (!numbers.contains(endpoint.get("bar")))
            complain(endpoint);
    });
}

void checkPartitions(const Node& root, Findings& findings) {
    std::map<std::string, const Node*> byPath, byName;
    for (const Node& label : root.children) {
        const Node* name = label.find("partition");
        const Node* path = label.find("partition_path");
        if (!name || !path)
            continue;
        const Node* sameName = byName.try_emplace(name->value, path).first->second;
        const Node* samePath = byPath.try_emplace(path->value, name).first->second;
        const Node* other = sameName->value != path->value ? sameName : samePath->value != name->value ? samePath : nullptr;
        if (other)
            findings.add(Rule::UnknownPartition, name->spot(),
                         "partition " + lint::quote(name->value) + " has the path " + lint::quote(path->value) + ", and line " +
                             std::to_string(other->line) + " says " + lint::quote(other->value),
                         {{}, {}, findings.at(other->spot())});
    }
}

const Members kIndexMembers = {{"version", Form::Any, false},  {"instPath", Form::Text, false}, {"drBdInstName", Form::Text, false},
                               {"pfmName", Form::Text, false}, {"hierName", Form::Text, false}, {"files", Form::List, false}};
const Members kIndexFile = {{"name", Form::Text, true}, {"type", Form::Text, true}};
const Members kBoardMembers = {{"boardFile", Form::Any, true},     {"id", Form::Text, true},      {"name", Form::Text, false},
                               {"displayName", Form::Text, false}, {"vendor", Form::Text, false}, {"version", Form::Text, false},
                               {"connectors", Form::List, false}};
const Members kConnector = {{"name", Form::Text, true},
                            {"displayName", Form::Text, false},
                            {"type", Form::Text, true},
                            {"form", Form::Text, false},
                            {"accepts", Form::List, false},
                            {"connectedName", Form::Text, false},
                            {"connectedDisplayName", Form::Text, false},
                            {"locked", Form::Any, false}};

const Members kPolicyMembers = {{"black_list", Form::List, false}, {"white_list", Form::List, false}};
const Members kDecision = {
    {"products", Form::List, true}, {"key", Form::Text, false}, {"value", Form::Text, false}, {"reason", Form::Text, false}};

} // namespace

namespace lint {

void checkLabels(const Node& root, Findings& findings) {
    for (const Node& label : root.children) {
        const auto known = labelKinds().find(label.name);
        if (known == labelKinds().end()) {
            std::vector<std::string> names;
            for (const auto& [name, members] : labelKinds())
                names.push_back(name);
            complainOfKey(label, names, findings);
            continue;
        }
        checkMembers(label, "a " + quote(label.name), known->second, findings);
        if (label.get("bar_type") == "DMA" && !label.find("dma_type"))
            findings.add(Rule::Schema, label.spot(), "a register of the type \"DMA\" has no \"dma_type\"");
    }
    checkRegisters(root, findings);
    checkPartitions(root, findings);
}

void checkIndex(const Node& root, Findings& findings) {
    checkMembers(root, "the index", kIndexMembers, findings);
    forEachItem(root.find("files"), "", [&](const Node& file) { checkMembers(file, "an item of \"files\"", kIndexFile, findings); });
}

void checkPolicy(const Node& root, Findings& findings) {
    checkMembers(root, "the list", kPolicyMembers, findings);
    for (const Member& list : kPolicyMembers)
        forEachItem(root.find(list.name), "", [&](const Node& item) { checkMembers(item, "a decision", kDecision, findings); });
}

void checkBoard(const Node& root, Findings& findings) {
    checkMembers(root, "the board", kBoardMembers, findings);
    if (const Node* revision = root.find("boardFile"); revision && revision->value != "1")
        findings.add(Rule::BoardFile, revision->spot(), describe(*revision) + " is no revision that is read", {"1", "1", {}});
    forEachItem(root.find("connectors"), "", [&](const Node& connector) { checkMembers(connector, "a connector", kConnector, findings); });
}

} // namespace lint
