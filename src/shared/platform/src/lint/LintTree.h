// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "LintRules.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lint {

/// What documents of this system hold; a format's own tables say what is known in it.
enum class Kind {
    PlatformFile,
    SoftwareFile,
    HardwareFile,
    ArchiveJson,
    ArchiveXml,
    EmulationJson,
    EmulationXml,
    ExtensionJson,
    PropertyFile,
    LabelFile,
    IndexFile,
    BoardFile,
    PolicyFile,
    KeysFile
};
inline constexpr std::size_t kKinds = static_cast<std::size_t>(Kind::KeysFile) + 1;

/// One value of a document with its line. XML elements are objects; their attributes are texts in them, before the elements.
struct Node {
    enum Form : unsigned char { Text, Object, List };

    std::string name; // "" for an item of a list, and for names of foreign namespaces
    std::string value;
    std::size_t line = 1;
    Form form = Text;
    std::vector<Node> children;
    /// In bytes, of the name, or of the value of an item in a list; 0 where it is not known.
    std::size_t column = 0;

    /// The first child of the name; null when there is none.
    const Node* find(std::string_view child) const;
    /// Its value, "" when there is none.
    const std::string& get(std::string_view child) const;
    Spot spot() const { return {line, column}; }
};

bool isJson(Kind kind);

/// The document as a tree; a document that does not parse, or that is too large, is a finding and no tree. XML is held against its format's
/// bindings on the way.
std::optional<Node> readJson(const std::string& text, Findings& findings);
std::optional<Node> readXml(const std::string& text, Kind kind, Findings& findings);

/// Gives the nodes of a tree that was read from the text their columns.
void locateXml(std::string_view text, Node& root);

/// Kind of a text by what stands in it; none when that tells nothing.
std::optional<Kind> recogniseJson(const std::string& text);
std::optional<Kind> recogniseXml(const std::string& text);

/// Looks for keys that no table of the format has, and for values that don't fit their keys.
void checkKeys(const Node& root, Kind kind, Findings& findings);

/// Looks for members of one name in an object.
void checkDuplicateKeys(const Node& object, Findings& findings);

/// The checks of names, ids, defaults, parts, sizes and numbers.
void checkContent(const Node& root, Kind kind, Findings& findings);

/// Values that are words of a list, closed or open.
void checkWords(const Node& root, Kind kind, Findings& findings);

/// Forms of numbers and how likely they are.
void checkForms(const Node& root, Kind kind, Findings& findings);

/// What refers to things of the same document, and sets of things that have a rule.
void checkReferences(const Node& root, Kind kind, Findings& findings);

/// Ranges of addresses, and parts of a whole.
void checkPlaces(const Node& root, Kind kind, Findings& findings);

/// What depends on versions, and what readers and writers drop.
void checkAges(const Node& root, Kind kind, Findings& findings);
void checkLosses(const Node& root, Kind kind, Findings& findings);

/// Label files, the index of a metadata archive, board files, and the lists of a tool's installation.
void checkLabels(const Node& root, Findings& findings);
void checkIndex(const Node& root, Findings& findings);
void checkBoard(const Node& root, Findings& findings);
void checkPolicy(const Node& root, Findings& findings);

/// The nodes that have children, each before what stands in it; a document may nest deeply.
template <class Take>
void forEachHolder(const Node& root, const Take& take) {
    std::vector<const Node*> waiting = {&root};
    while (!waiting.empty()) {
        const Node& node = *waiting.back();
        waiting.pop_back();
        take(node);
        for (auto child = node.children.rbegin(); child != node.children.rend(); ++child)
            if (!child->children.empty())
                waiting.push_back(&*child);
    }
}

/// Hands over the objects in a list, or the elements of a name.
template <class Take>
void forEachItem(const Node* parent, std::string_view name, const Take& take) {
    if (parent)
        for (const Node& child : parent->children)
            if (child.form == Node::Object && child.name == name)
                take(child);
}

/// The shape of a property file, which has no table of keys.
void checkProperties(const Node& root, Findings& findings);

/// Looks for texts that the generator of emulation scripts can't write so that Tcl reads them as one value: in property files, XML metadata
/// and hardware platform files.
void checkTcl(const Node& root, Kind kind, Findings& findings);

/// What a file is that is listed under this type; none for types of other files.
std::optional<Kind> getListedKind(const std::string& type);

/// The first thing in a document that makes its readers refuse it; none for one that they take, or that is too large to be looked at.
std::optional<HZEPMetadataLint::Finding> findRefusal(const std::string& text, Kind kind);

/// A file that the document lists.
struct ListedFile {
    std::string type;
    std::string name;
    Spot spot;
};
std::vector<ListedFile> listFiles(const Node& root, Kind kind);

} // namespace lint
