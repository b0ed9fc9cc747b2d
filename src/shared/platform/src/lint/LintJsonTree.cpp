// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HZEPJSONText.h"
#include "HostJson.h"
#include "HostText.h"
#include "LintTree.h"

#include <algorithm>

namespace {

using lint::Node;

/// Fills a tree whose values know their lines.
class Filler : public HostJson::Events {
public:
    Filler(Node& root, std::string_view text) : root_(root), text_(text) {}

    bool key(std::string_view name, std::size_t offset) override {
        name_ = name;
        line_ = countLines(offset);
        // The reader is behind the closing quote. With escapes the key is longer than its name.
        const std::size_t size = name.size() + 2;
        column_ = offset >= lineStart_ + size && text_[offset - size] == '"' ? offset - size - lineStart_ + 1 : 0;
        return true;
    }

    bool value(std::string_view text, std::size_t offset) override {
        place(offset).value = text;
        return true;
    }

    bool open(bool isList, std::size_t offset) override {
        Node& node = place(offset);
        node.form = isList ? Node::List : Node::Object;
        levels_.push_back(&node);
        return true;
    }

    // An open level's own place in its parent's list stays as it is: only the innermost level grows.
    bool close(std::size_t) override {
        levels_.pop_back();
        return true;
    }

private:
    std::size_t countLines(std::size_t offset) {
        const auto at = [this](std::size_t i) { return text_.begin() + static_cast<std::ptrdiff_t>(i); };
        if (const auto lines = static_cast<std::size_t>(std::count(at(counted_), at(offset), '\n')); lines > 0) {
            lines_ += lines;
            lineStart_ = text_.rfind('\n', offset - 1) + 1;
        }
        counted_ = offset;
        return lines_;
    }

    Node& place(std::size_t offset) {
        if (levels_.empty())
            return root_;
        Node& parent = *levels_.back();
        Node& node = parent.children.emplace_back();
        node.line = parent.form == Node::Object ? line_ : countLines(offset);
        node.column = parent.form == Node::Object ? column_ : 0;
        if (parent.form == Node::Object)
            node.name.swap(name_);
        return node;
    }

    Node& root_;
    const std::string_view text_;
    std::vector<Node*> levels_;
    std::string name_;
    std::size_t line_ = 1;
    std::size_t column_ = 0;
    std::size_t lines_ = 1;
    std::size_t counted_ = 0;
    std::size_t lineStart_ = 0;
};

} // namespace

namespace lint {

std::optional<Node> readJson(const std::string& text, Findings& findings) {
    if (const std::string refusal = HostJson::getRefusal(text); !refusal.empty()) {
        findings.add(Rule::TooLarge, 1, refusal + "; not checked");
        return std::nullopt;
    }
    Node root;
    Filler filler(root, text);
    if (HostJson::read(text, filler))
        return root;
    const HostFault fault = HZEPJSONText::explain(text);
    findings.add(Rule::Parse, fault.line, HostText::makePrintable(fault.cause));
    return std::nullopt;
}

} // namespace lint
