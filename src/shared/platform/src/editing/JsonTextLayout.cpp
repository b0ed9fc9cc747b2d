// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "TextLayout.h"

#include "HostErrors.h"
#include "HostText.h"

namespace editing {

namespace {

constexpr std::string_view kBlanks = " \t\r\n";

bool hasLineEnd(std::string_view text) {
    return text.find('\n') != text.npos;
}

/// What stands around the children of a container.
struct Frame {
    std::string lead;      // before the first
    std::string separator; // between two
    std::string tail;      // behind the last
    std::string colon;     // between a key's text and its value

    bool isMultiLine() const { return hasLineEnd(lead); }
};

class JsonLayout {
public:
    JsonLayout(const TextTree& tree, const Changes& changes)
        : tree_(tree), changes_(changes), lineEnd_(getLineEnd(tree)), escapesSlashes_(tree.getText().find("\\/") != std::string::npos) {
        const Node& root = tree_[0];
        colon_ = ": ";
        if (root.next > 1) {
            const std::string_view lead = tree_.getText(root.begin + 1, tree_[1].outerBegin);
            unit_ = hasLineEnd(lead) ? getUnit("", getIndent(lead), "") : "    ";
            if (root.form == Node::Object)
                colon_ = getColon(1);
        }
        gap_ = colon_.ends_with(' ') ? ", " : ",";
        for (Index node = 0; node < tree_.getNodes().size(); ++node) {
            const Node& first = tree_[node];
            const bool hasComma = first.outerEnd < tree_.getText().size() && tree_.getText()[first.outerEnd] == ',';
            if (!hasComma)
                continue;
            const std::size_t end = tree_.getText().find_first_not_of(kBlanks, first.outerEnd + 1);
            const std::string_view separator = tree_.getText(first.outerEnd, static_cast<Index>(end));
            if (!hasLineEnd(separator)) {
                gap_ = separator;
                break;
            }
        }
    }

    std::vector<Splice> layOut() {
        for (const auto& [node, value] : changes_.replaced) {
            const Index at = tree_[node].outerBegin;
            const std::string_view blanks = getBlanksBefore(tree_, at);
            splices_.push_back({tree_[node].begin, tree_[node].end,
                                render(value, isLike(node, value) ? node : kNone, getIndent(blanks), hasLineEnd(blanks))});
        }
        for (const Index container : changes_.rearranged)
            rearrange(container);
        return std::move(splices_);
    }

private:
    std::string getColon(Index member) const { return std::string(tree_.getText(tree_[member].nameEnd + 1, tree_[member].begin)); }

    /// As the container has it, or, when it is empty, as the line says on which it stands.
    Frame getFrame(Index container) const {
        const Node& node = tree_[container];
        const std::vector<Index>& children = tree_.getChildren(container);
        if (children.empty()) {
            const std::string_view blanks = getBlanksBefore(tree_, node.outerBegin);
            return makeFrame(getIndent(blanks), hasLineEnd(blanks));
        }
        Frame frame;
        const Node& first = tree_[children.front()];
        frame.lead = tree_.getText(node.begin + 1, first.outerBegin);
        frame.tail = tree_.getText(tree_[children.back()].outerEnd, node.end - 1);
        frame.separator = children.size() > 1 ? std::string(tree_.getText(first.outerEnd, tree_[children[1]].outerBegin))
                                              : (frame.isMultiLine() ? "," + frame.lead : gap_);
        frame.colon = node.form == Node::Object ? getColon(children.front()) : colon_;
        return frame;
    }

    Frame makeFrame(const std::string& indent, bool isMultiLine) const {
        if (!isMultiLine)
            return {"", gap_, "", colon_};
        const std::string lead = lineEnd_ + indent + unit_;
        return {lead, "," + lead, lineEnd_ + indent, colon_};
    }

    bool isLike(Index node, const Value& value) const {
        const Node::Form form = tree_[node].form;
        return tree_[node].next > node + 1 && form == (value.kind == Value::Object ? Node::Object : Node::List);
    }

    /// The child whose layout a new one takes over: the nearest before the place, else one behind it.
    Index findNeighbour(const std::vector<Index>& children, std::size_t place, const Value& value) const {
        for (std::size_t i = place; i > 0; --i)
            if (isLike(children[i - 1], value))
                return children[i - 1];
        for (std::size_t i = place; i < children.size(); ++i)
            if (isLike(children[i], value))
                return children[i];
        return kNone;
    }

    void rearrange(Index container) {
        const Node& node = tree_[container];
        const std::vector<Index>& children = tree_.getChildren(container);
        const Frame frame = getFrame(container);
        const auto found = changes_.inserted.find(container);
        const auto separatorBefore = [&](std::size_t i) {
            return i > 0 && i < children.size() ? std::string(tree_.getText(tree_[children[i - 1]].outerEnd, tree_[children[i]].outerBegin))
                                                : frame.separator;
        };
        Index cursor = node.begin + 1;
        std::string pending;
        bool isFirst = true, isChanged = false;
        for (std::size_t i = 0; i <= children.size(); ++i) {
            const Index child = i < children.size() ? children[i] : kNone;
            if (found != changes_.inserted.end())
                if (const auto values = found->second.find(child); values != found->second.end())
                    for (const Value& value : values->second) {
                        const bool isMember = node.form == Node::Object;
                        pending += isFirst ? frame.lead : separatorBefore(std::min(i, children.size() - (children.empty() ? 0 : 1)));
                        pending += isMember ? quote(value.name) + frame.colon : "";
                        pending +=
                            render(value, isMember ? kNone : findNeighbour(children, i, value), getIndent(frame.lead), frame.isMultiLine());
                        isChanged = true;
                        isFirst = false;
                    }
            if (child == kNone)
                break;
            if (changes_.removed.contains(child)) {
                isChanged = true;
                continue;
            }
            if (isChanged)
                splices_.push_back({cursor, tree_[child].outerBegin, pending + (isFirst ? frame.lead : separatorBefore(i))});
            pending.clear();
            isChanged = isFirst = false;
            cursor = tree_[child].outerEnd;
        }
        if (isChanged)
            splices_.push_back({cursor, node.end - 1, pending + (isFirst ? "" : frame.tail)});
    }

    std::string render(const Value& value, Index neighbour, const std::string& indent, bool isMultiLine) const {
        if (value.kind == Value::Text)
            return quote(value.text);
        if (value.kind == Value::Plain)
            return value.text;
        const bool isObject = value.kind == Value::Object;
        if (value.members.empty())
            return isObject ? "{}" : "[]";
        const Frame frame = neighbour == kNone ? makeFrame(indent, isMultiLine) : getFrame(neighbour);
        std::string text;
        for (const Value& member : value.members) {
            text += text.empty() ? frame.lead : frame.separator;
            text += isObject ? quote(member.name) + frame.colon : "";
            text += render(member, findLike(neighbour, member), getIndent(frame.lead), frame.isMultiLine());
        }
        return (isObject ? "{" : "[") + text + frame.tail + (isObject ? "}" : "]");
    }

    /// The neighbour's own child that such a value takes after.
    Index findLike(Index neighbour, const Value& value) const {
        if (neighbour == kNone || value.kind == Value::Text || value.kind == Value::Plain)
            return kNone;
        if (tree_[neighbour].form == Node::List)
            return findNeighbour(tree_.getChildren(neighbour), 0, value);
        const std::vector<Index>& named = tree_.getChildren(neighbour, value.name);
        return !named.empty() && isLike(named.front(), value) ? named.front() : kNone;
    }

    std::string quote(const std::string& text) const {
        static constexpr std::string_view kEscaped = "\"\\\b\f\n\r\t", kLetters = "\"\\bfnrt";
        if (!HostText::isUtf8(text))
            throw HostDataException("\"" + HostText::makePrintable(text) + "\" is no UTF-8");
        std::string quoted = "\"";
        for (const char c : text) {
            const std::size_t escape = kEscaped.find(c);
            if (escape != kEscaped.npos) {
                quoted += {'\\', kLetters[escape]};
            } else if (static_cast<unsigned char>(c) < 0x20) {
                static constexpr char kDigits[] = "0123456789ABCDEF";
                quoted += {'\\', 'u', '0', '0', kDigits[c >> 4], kDigits[c & 15]};
            } else {
                if (c == '/' && escapesSlashes_)
                    quoted += '\\';
                quoted += c;
            }
        }
        return quoted + '"';
    }

    const TextTree& tree_;
    const Changes& changes_;
    const std::string lineEnd_;
    const bool escapesSlashes_;
    std::string colon_;
    std::string unit_ = "    ";
    std::string gap_; // between two values on one line
    std::vector<Splice> splices_;
};

} // namespace

std::vector<Splice> layOutJson(const TextTree& tree, const Changes& changes) {
    return JsonLayout(tree, changes).layOut();
}

} // namespace editing
