// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HZEPTextEdit.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace editing {

using Index = std::uint32_t;
constexpr Index kNone = UINT32_MAX;

/// A value and where it stands. Offsets are in bytes of the tree's text.
struct Node {
    enum Form : unsigned char { Text, Plain, Object, List };

    Index outerBegin; // with its key; of an attribute with its name
    Index outerEnd;
    Index begin; // the value; of an attribute what stands between the quotes, of an element what stands between its tags
    Index end;
    Index nameBegin; // without quotes and prefix
    Index nameEnd;
    Index next; // the node behind all that are in this one
    Form form;
    bool isAttribute = false;
};

/// The values of one text in their order, each before those in it; the first is the root.
class TextTree {
public:
    /// Raises HostDataException with line and cause for a text that the readers would refuse.
    static std::unique_ptr<TextTree> read(std::string text, HZEPTextEdit::Form form);
    virtual ~TextTree() = default;

    HZEPTextEdit::Form getForm() const { return form_; }
    const std::string& getText() const { return text_; }
    std::string_view getText(Index begin, Index end) const { return std::string_view(text_).substr(begin, end - begin); }
    const std::vector<Node>& getNodes() const { return nodes_; }
    const Node& operator[](Index node) const { return nodes_[node]; }

    /// The same text in the encoding that it was given in.
    virtual std::string encode(const std::string& text) const { return text; }
    virtual std::string getName(Index node) const = 0;
    /// Of a text or plain value; of an element the text between its elements.
    virtual std::string getValue(Index node) const = 0;
    /// Both stand there in the same bytes.
    virtual bool isSame(Index node, const TextTree& other, Index otherNode) const;

    /// The values directly in this one. Each is looked up once and kept.
    const std::vector<Index>& getChildren(Index node) const { return getContents(node).all; }
    const std::vector<Index>& getChildren(Index node, const std::string& name) const;

protected:
    TextTree(std::string text, HZEPTextEdit::Form form) : text_(std::move(text)), form_(form) {}

    [[noreturn]] void fail(std::size_t line, const std::string& cause) const;
    void limitValues() const;

    std::string text_;
    std::vector<Node> nodes_;

private:
    struct Contents {
        std::vector<Index> all;
        std::map<std::string, std::vector<Index>, std::less<>> byName;
    };
    const Contents& getContents(Index node) const;

    const HZEPTextEdit::Form form_;
    mutable std::map<Index, Contents> contents_;
};

std::unique_ptr<TextTree> readJsonTree(std::string text);
std::unique_ptr<TextTree> readXmlTree(std::string text);

} // namespace editing
