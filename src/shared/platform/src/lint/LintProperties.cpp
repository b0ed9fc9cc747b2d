// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "../emulation/EmulationPropertyKeys.h"
#include "../hardware/AsciiCase.h"
#include "HZEPEmulationUtils.h"
#include "LintText.h"
#include "LintTree.h"

#include <algorithm>

namespace keys = emulation_properties;

namespace {

using lint::Findings;
using lint::Node;
using lint::Rule;
using Utils = HZEPEmulationUtils;

/// How a text stands in a script: alone, between quotes, between braces, or as the name of a variable.
enum class Standing { Bare, Quoted, Braced, Variable };

/// Backslashes take away the meaning of the brace behind them, so that one at the end would leave the script's own without any.
bool hasPairedBraces(const std::string& text) {
    int depth = 0;
    for (std::size_t i = 0; i < text.size() && depth >= 0; ++i) {
        if (text[i] == '\\' && ++i == text.size())
            return false;
        else if (text[i] == '{')
            ++depth;
        else if (text[i] == '}')
            --depth;
    }
    return depth == 0;
}

bool isWordCharacter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
}

/// What is wrong with the text, as the end of a sentence; "" when nothing is.
std::string getFault(const std::string& text, Standing standing) {
    std::size_t at = std::string::npos;
    if (standing == Standing::Braced)
        return hasPairedBraces(text) ? "" : "has braces that don't pair";
    if (standing == Standing::Bare && text.empty())
        return "leaves a command without its value";
    if (standing == Standing::Variable)
        at = static_cast<std::size_t>(std::find_if_not(text.begin(), text.end(), isWordCharacter) - text.begin());
    else
        at = text.find_first_of(standing == Standing::Quoted ? "\"$[\\" : " \t\n\r\v\f;\"$[]{}\\");
    return at < text.size() ? "goes into Tcl as it is, where " + lint::quote(text.substr(at, 1)) + " has a meaning" : "";
}

void checkText(const std::string& what, const std::string& text, lint::Spot spot, Standing standing, Findings& findings) {
    if (const std::string fault = getFault(text, standing); !fault.empty())
        findings.add(Rule::TclText, spot, what + " " + lint::quote(text) + " " + fault);
}

void checkValue(const Node& value, Standing standing, Findings& findings) {
    if (value.form == Node::Text)
        checkText(lint::quote(value.name) + ":", value.value, value.spot(), standing, findings);
}

/// The texts of an object that the script gets, each with its key.
void checkDictionary(const Node& object, const Utils::Keys& unused, Standing key, Standing value, Findings& findings) {
    for (const Node& child : object.children) {
        if (child.form != Node::Text || unused.contains(child.name))
            continue;
        checkText("key", child.name, child.spot(), key, findings);
        checkValue(child, value, findings);
    }
}

void checkPropertyTexts(const Node& root, Findings& findings) {
    for (const Node& child : root.children) {
        if (child.name == keys::kClocks) {
            checkDictionary(child, Utils::getUnUsedCLKSettings(), Standing::Quoted, Standing::Bare, findings);
        } else if (child.name == keys::kBanks) {
            for (const Node& bank : child.children)
                checkDictionary(bank, Utils::getUnUsedParamatersInDDRModel(0), Standing::Bare, Standing::Bare, findings);
        } else if (child.name == keys::kInstances) {
            for (const Node& instance : child.children) {
                if (const Node* vlnv = instance.find(keys::kVlnv))
                    checkValue(*vlnv, Standing::Bare, findings);
                if (const Node* configuration = instance.find(keys::kConfiguration))
                    checkDictionary(*configuration, Utils::getUnUsedZepMemorySubSystemParams(), Standing::Bare, Standing::Braced, findings);
            }
        } else if (child.form == Node::Text && !child.value.empty()) {
            checkText("key", child.name, child.spot(), Standing::Bare, findings);
            checkValue(child, Standing::Bare, findings);
        }
    }
}

void checkAttributes(const Node* element, std::initializer_list<const char*> names, Standing standing, Findings& findings) {
    for (const char* name : names)
        if (const Node* attribute = element ? element->find(name) : nullptr; attribute && !attribute->value.empty())
            checkValue(*attribute, standing, findings);
}

void checkPlatform(const Node& root, Findings& findings) {
    const Node* const platform = root.find("DSA");
    checkAttributes(platform, {"Vendor", "BoardId", "Name"}, Standing::Quoted, findings);
    if (!platform)
        return;
    checkAttributes(platform->find("Board"), {"Name", "BoardPart"}, Standing::Quoted, findings);
    if (const Node* devices = platform->find("Devices"))
        checkAttributes(devices->find("Device"), {"FpgaDevice"}, Standing::Quoted, findings);
}

/// Only the bus interfaces of memories get into a script.
void checkMemories(const Node& root, Findings& findings) {
    for (const Node& component : root.children)
        for (const Node& interface : component.children) {
            const std::string port = ascii::toUpper(interface.get("memport"));
            if (interface.name != "busInterface" || port.empty() || port == "M_AXI_GP" || port == "S_AXI_GP")
                continue;
            checkAttributes(&interface, {"sptag"}, Standing::Variable, findings);
            for (const Node& segment : interface.children)
                if (segment.name == "addressSegment")
                    checkAttributes(&segment, {"auto", "sptag", "slr"}, Standing::Bare, findings);
        }
}

class ShapeCheck {
public:
    explicit ShapeCheck(Findings& findings) : findings_(findings) {}

    void checkRoot(const Node& root) {
        lint::checkDuplicateKeys(root, findings_);
        for (const Node& child : root.children) {
            if (child.name == keys::kBanks || child.name == keys::kInstances)
                checkList(child);
            else if (child.name == keys::kClocks)
                checkTexts(child);
            else
                checkIsText(child);
        }
    }

private:
    void checkList(const Node& list) {
        if (list.form != Node::List)
            complain(list, "a list of objects is expected");
        else
            for (const Node& item : list.children) {
                if (list.name == keys::kBanks || item.form != Node::Object)
                    checkTexts(item);
                else if (const Node* configuration = item.find(keys::kConfiguration))
                    checkTexts(*configuration);
            }
    }

    void checkTexts(const Node& object) {
        if (object.form != Node::Object)
            return complain(object, "an object is expected");
        lint::checkDuplicateKeys(object, findings_);
        for (const Node& child : object.children)
            checkIsText(child);
    }

    void checkIsText(const Node& node) {
        if (node.form != Node::Text)
            complain(node, "a text is expected");
    }

    void complain(const Node& node, const std::string& expectation) {
        findings_.add(Rule::WrongShape, node.spot(), (node.name.empty() ? "" : lint::quote(node.name) + ": ") + expectation);
    }

    Findings& findings_;
};

} // namespace

namespace lint {

void checkProperties(const Node& root, Findings& findings) {
    if (root.form != Node::Object)
        findings.add(Rule::WrongShape, root.spot(), "the document must be an object");
    else
        ShapeCheck(findings).checkRoot(root);
}

void checkTcl(const Node& root, Kind kind, Findings& findings) {
    if (kind == Kind::PropertyFile)
        checkPropertyTexts(root, findings);
    else if (kind == Kind::ArchiveXml)
        checkPlatform(root, findings);
    else if (kind == Kind::HardwareFile)
        checkMemories(root, findings);
}

} // namespace lint
