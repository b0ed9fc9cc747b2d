// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "TextTree.h"

#include "HostErrors.h"

namespace editing {

std::unique_ptr<TextTree> TextTree::read(std::string text, HZEPTextEdit::Form form) {
    if (text.size() > HZEPTextEdit::kMaxSize)
        throw HostDataException("is larger than " + std::to_string(HZEPTextEdit::kMaxSize >> 20) + " MiB");
    return form == HZEPTextEdit::Json ? readJsonTree(std::move(text)) : readXmlTree(std::move(text));
}

void TextTree::fail(std::size_t line, const std::string& cause) const {
    throw HostDataException("line " + std::to_string(line) + ": " + cause, {"", "", line, 0, cause});
}

void TextTree::limitValues() const {
    if (nodes_.size() > HZEPTextEdit::kMaxValues)
        throw HostDataException("holds more than " + std::to_string(HZEPTextEdit::kMaxValues) + " values");
}

bool TextTree::isSame(Index node, const TextTree& other, Index otherNode) const {
    const Node& a = nodes_[node];
    const Node& b = other.nodes_[otherNode];
    const bool isLeaf = a.form == Node::Text || a.form == Node::Plain;
    return a.form == b.form && a.isAttribute == b.isAttribute && getText(a.nameBegin, a.nameEnd) == other.getText(b.nameBegin, b.nameEnd) &&
           (!isLeaf || getText(a.begin, a.end) == other.getText(b.begin, b.end));
}

const TextTree::Contents& TextTree::getContents(Index node) const {
    const auto [found, isNew] = contents_.try_emplace(node);
    Contents& contents = found->second;
    if (isNew)
        for (Index child = node + 1; child < nodes_[node].next; child = nodes_[child].next) {
            contents.all.push_back(child);
            if (nodes_[node].form == Node::Object)
                contents.byName[getName(child)].push_back(child);
        }
    return contents;
}

const std::vector<Index>& TextTree::getChildren(Index node, const std::string& name) const {
    static const std::vector<Index> none;
    const auto& byName = getContents(node).byName;
    const auto found = byName.find(name);
    return found == byName.end() ? none : found->second;
}

} // namespace editing
