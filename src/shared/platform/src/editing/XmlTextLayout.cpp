// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "TextLayout.h"

#include "HostErrors.h"
#include "HostI18n.h"
#include "HostText.h"

#include <algorithm>
#include <cctype>

namespace editing {

namespace {

bool hasLineEnd(std::string_view text) {
    return text.find('\n') != text.npos;
}

class XmlLayout {
public:
    XmlLayout(const TextTree& tree, const Changes& changes) : tree_(tree), changes_(changes), lineEnd_(getLineEnd(tree)) {
        const std::string& text = tree.getText();
        std::string head = text.substr(0, std::min(text.find("?>"), std::size_t{200}));
        std::transform(head.begin(), head.end(), head.begin(), [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
        const std::size_t encoding = head.find("encoding");
        hasAllCharacters_ = encoding == head.npos || head.find("utf-", encoding) != head.npos;
    }

    std::vector<Splice> layOut() {
        for (const auto& [node, value] : changes_.replaced)
            replace(node, value);
        for (const Index node : changes_.removed)
            splices_.push_back({getLead(node), tree_[node].outerEnd, ""});
        for (const auto& [container, places] : changes_.inserted)
            for (const auto& [before, values] : places)
                insert(container, before, values);
        return std::move(splices_);
    }

private:
    /// Where the blanks before a node begin.
    Index getLead(Index node) const { return tree_[node].outerBegin - static_cast<Index>(getBlanks(node).size()); }
    std::string_view getBlanks(Index node) const { return getBlanksBefore(tree_, tree_[node].outerBegin); }
    char getQuote(Index attribute) const { return tree_.getText()[tree_[attribute].end]; }
    bool isEmptyTag(Index element) const {
        return tree_[element].begin == tree_[element].end && tree_.getText()[tree_[element].begin] == '/';
    }

    /// The prefix of an element's name with its colon.
    std::string getPrefix(Index element) const {
        return std::string(tree_.getText(tree_[element].outerBegin + 1, tree_[element].nameBegin));
    }

    void replace(Index node, const Value& value) {
        const Node& n = tree_[node];
        if (n.isAttribute)
            splices_.push_back({n.begin, n.end, escape(value.text, getQuote(node))});
        else
            splices_.push_back(
                {n.outerBegin, n.outerEnd,
                 render(value.named(tree_.getName(node)), node, getPrefix(node), getIndent(getBlanks(node)), hasLineEnd(getBlanks(node)))});
    }

    void insert(Index container, Index before, const std::vector<Value>& values) {
        Index lastAttribute = kNone, previous = kNone, next = kNone;
        for (const Index child : tree_.getChildren(container)) {
            if (tree_[child].isAttribute)
                lastAttribute = child;
            else if (next == kNone && child < before)
                previous = child;
            else if (next == kNone)
                next = child;
        }
        std::string attributes, elements;
        const std::string blanks = previous != kNone ? std::string(getBlanks(previous)) : next != kNone ? std::string(getBlanks(next)) : "";
        const auto [lead, tail] = getFrame(container);
        for (const Value& value : values) {
            if (value.kind == Value::Text) {
                const std::string gap = lastAttribute == kNone ? " " : std::string(getBlanks(lastAttribute));
                attributes += gap + getPrefix(container) + value.name + '=' + quote(value.text, lastAttribute);
                continue;
            }
            const bool hasSibling = previous != kNone || next != kNone;
            const std::string& around = hasSibling ? blanks : lead;
            const std::string element =
                render(value, findLike(container, value, before), getPrefix(container), getIndent(around), hasLineEnd(around));
            elements += around + element;
        }
        if (!attributes.empty()) {
            const Index at = lastAttribute == kNone ? tree_[container].nameEnd : tree_[lastAttribute].outerEnd;
            splices_.push_back({at, at, attributes});
        }
        if (elements.empty())
            return;
        const Node& node = tree_[container];
        if (previous != kNone) {
            splices_.push_back({tree_[previous].outerEnd, tree_[previous].outerEnd, elements});
        } else if (next != kNone) {
            splices_.push_back({getLead(next), getLead(next), elements});
        } else if (isEmptyTag(container)) {
            const auto space = static_cast<Index>(getBlanksBefore(tree_, node.begin).size());
            splices_.push_back(
                {node.begin - space, node.outerEnd, ">" + elements + tail + "</" + getPrefix(container) + tree_.getName(container) + ">"});
        } else {
            // Comments stay in front.
            const auto content =
                node.end - static_cast<Index>(std::min<std::size_t>(getBlanksBefore(tree_, node.end).size(), node.end - node.begin));
            splices_.push_back({content, node.end, elements + tail});
        }
    }

    /// What stands before an element in an empty one, and behind it.
    std::pair<std::string, std::string> getFrame(Index container) const {
        const std::string_view blanks = getBlanks(container);
        if (!hasLineEnd(blanks))
            return {};
        const std::string indent = getIndent(blanks);
        const std::vector<Index>& topElements = tree_.getChildren(0);
        const auto top = std::find_if(topElements.begin(), topElements.end(), [this](Index child) { return !tree_[child].isAttribute; });
        const std::string unit = top == topElements.end() ? "  " : getUnit(getIndent(getBlanks(0)), getIndent(getBlanks(*top)), "  ");
        return {lineEnd_ + indent + unit, lineEnd_ + indent};
    }

    /// The element of this name that is nearest before the place, else behind it.
    Index findLike(Index container, const Value& value, Index before) const {
        Index found = kNone;
        for (const Index child : tree_.getChildren(container, value.name)) {
            if (!tree_[child].isAttribute && (child < before || found == kNone))
                found = child;
        }
        return found;
    }

    std::string render(const Value& value, Index neighbour, const std::string& prefix, const std::string& indent, bool isMultiLine) const {
        std::string firstGap = " ", gap = " ", close = "/>";
        Index attribute = kNone;
        bool hasContent = false;
        if (neighbour != kNone) {
            std::vector<Index> attributes;
            for (const Index child : tree_.getChildren(neighbour))
                if (tree_[child].isAttribute)
                    attributes.push_back(child);
            if (!attributes.empty()) {
                attribute = attributes.front();
                firstGap = getBlanks(attributes.front());
                gap = attributes.size() > 1 ? std::string(getBlanks(attributes[1])) : firstGap;
            }
            hasContent = !isEmptyTag(neighbour);
            if (!hasContent)
                close = std::string(getBlanksBefore(tree_, tree_[neighbour].begin)) + "/>";
        }
        std::string text = "<" + prefix + value.name;
        std::string elements;
        bool isFirst = true;
        for (const Value& member : value.members) {
            if (member.kind == Value::Text) {
                text += (isFirst ? firstGap : gap) + prefix + member.name + '=' + quote(member.text, attribute);
                isFirst = false;
            } else {
                elements += (isMultiLine ? lineEnd_ + indent + "  " : "") + render(member, kNone, prefix, indent + "  ", isMultiLine);
            }
        }
        if (elements.empty() && !hasContent)
            return text + close;
        return text + ">" + elements + (elements.empty() || !isMultiLine ? "" : lineEnd_ + indent) + "</" + prefix + value.name + ">";
    }

    std::string quote(const std::string& text, Index neighbour) const {
        const char mark = neighbour == kNone ? '"' : getQuote(neighbour);
        return mark + escape(text, mark) + mark;
    }

    std::string escape(const std::string& text, char mark) const {
        if (!HostText::isUtf8(text))
            throw HostDataException("\"" + HostText::makePrintable(text) + "\" is no UTF-8");
        std::string escaped;
        for (const wchar_t c : HostI18n::toWide(text)) {
            const bool isBlank = c == L'\t' || c == L'\n' || c == L'\r';
            if ((c < 0x20 && !isBlank) || c == 0xFFFE || c == 0xFFFF)
                throw HostDataException("\"" + HostText::makePrintable(text) + "\" holds a character that XML can't hold");
            if (c == L'&')
                escaped += "&amp;";
            else if (c == L'<')
                escaped += "&lt;";
            else if (c == L'>')
                escaped += "&gt;";
            else if (c == static_cast<wchar_t>(mark))
                escaped += mark == '"' ? "&quot;" : "&apos;";
            else if (isBlank || (c >= 0x80 && !hasAllCharacters_))
                escaped += "&#" + std::to_string(static_cast<unsigned long>(c)) + ";";
            else
                escaped += HostI18n::toUtf8(std::wstring(1, c));
        }
        return escaped;
    }

    const TextTree& tree_;
    const Changes& changes_;
    const std::string lineEnd_;
    bool hasAllCharacters_ = true;
    std::vector<Splice> splices_;
};

} // namespace

std::vector<Splice> layOutXml(const TextTree& tree, const Changes& changes) {
    return XmlLayout(tree, changes).layOut();
}

} // namespace editing
