// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "LintTree.h"

#include <algorithm>

namespace {

using lint::Node;

/// Walks a well-formed document's start tags beside its tree, which has a node for each of them in the same order.
class Locator {
public:
    Locator(std::string_view text, Node& root) : text_(text) { waiting_.push_back(&root); }

    void run() {
        while (!waiting_.empty() && (at_ = text_.find('<', at_)) != text_.npos) {
            if (starts("<!--"))
                skipPast("-->");
            else if (starts("<![CDATA["))
                skipPast("]]>");
            else if (starts("<?"))
                skipPast("?>");
            else if (starts("</") || starts("<!"))
                skipPast(">");
            else
                takeTag();
        }
    }

private:
    bool starts(std::string_view what) const { return text_.substr(at_, what.size()) == what; }

    void skipPast(std::string_view end) {
        const std::size_t found = text_.find(end, at_);
        at_ = found == text_.npos ? text_.size() : found + end.size();
    }

    void takeTag() {
        Node& node = *waiting_.back();
        waiting_.pop_back();
        place(node, at_);
        for (auto child = node.children.rbegin(); child != node.children.rend() && child->form != Node::Text; ++child)
            waiting_.push_back(&*child);
        auto attribute = node.children.begin();
        at_ = std::min(text_.find_first_of(" \t\r\n/>", at_), text_.size());
        for (;;) {
            at_ = std::min(text_.find_first_not_of(" \t\r\n/", at_), text_.size());
            if (at_ == text_.size() || text_[at_] == '>')
                return;
            const std::size_t start = at_;
            const std::size_t end = text_.find_first_of(" \t\r\n=", start);
            const std::size_t quote = text_.find_first_of("\"'", start);
            if (end == text_.npos || quote == text_.npos)
                return;
            std::string_view name = text_.substr(start, end - start);
            name.remove_prefix(std::min(name.find(':') + 1, name.size()));
            if (attribute != node.children.end() && attribute->form == Node::Text && attribute->name == name)
                place(*attribute++, start);
            at_ = std::min(text_.find(text_[quote], quote + 1), text_.size() - 1) + 1;
        }
    }

    /// The reader's own line stands; a place on another one is none.
    void place(Node& node, std::size_t offset) {
        for (; counted_ < offset; ++counted_)
            if (text_[counted_] == '\n') {
                ++line_;
                lineStart_ = counted_ + 1;
            }
        if (node.line == line_)
            node.column = offset - lineStart_ + 1;
    }

    std::string_view text_;
    std::vector<Node*> waiting_;
    std::size_t at_ = 0;
    std::size_t counted_ = 0;
    std::size_t line_ = 1;
    std::size_t lineStart_ = 0;
};

} // namespace

namespace lint {

void locateXml(std::string_view text, Node& root) {
    Locator(text, root).run();
}

} // namespace lint
