// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "TextTree.h"

#include "HostErrors.h"
#include "HostI18n.h"
#include "lmx60.h"

#include <cstring>

namespace editing {

namespace {

constexpr std::string_view kBlanks = " \t\r\n";

/// Two bytes a character, lowest or highest first; none for all other encodings.
enum class Pairs { None, Little, Big };

Pairs getPairs(std::string_view text) {
    if (text.starts_with("\xFF\xFE") || text.starts_with(std::string_view("<\0", 2)))
        return Pairs::Little;
    if (text.starts_with("\xFE\xFF") || text.starts_with(std::string_view("\0<", 2)))
        return Pairs::Big;
    return Pairs::None;
}

std::string fromPairs(std::string_view text, Pairs pairs) {
    std::wstring wide;
    for (std::size_t at = 0; at + 1 < text.size(); at += 2) {
        const auto first = static_cast<unsigned char>(text[at]), second = static_cast<unsigned char>(text[at + 1]);
        const std::uint32_t unit = pairs == Pairs::Little ? first | second << 8 : first << 8 | second;
        const bool isSecondHalf = unit >= 0xDC00 && unit < 0xE000 && !wide.empty() && wide.back() >= 0xD800 && wide.back() < 0xDC00;
        if (isSecondHalf)
            wide.back() = static_cast<wchar_t>(0x10000 + ((static_cast<std::uint32_t>(wide.back()) - 0xD800) << 10) + (unit - 0xDC00));
        else
            wide += static_cast<wchar_t>(unit);
    }
    return HostI18n::toUtf8(wide);
}

std::string toPairs(const std::string& text, Pairs pairs) {
    std::string out;
    const auto put = [&](std::uint32_t unit) {
        const char low = static_cast<char>(unit & 0xFF), high = static_cast<char>(unit >> 8);
        out += {pairs == Pairs::Little ? low : high, pairs == Pairs::Little ? high : low};
    };
    for (const wchar_t c : HostI18n::toWide(text)) {
        const auto character = static_cast<std::uint32_t>(c);
        if (character < 0x10000) {
            put(character);
        } else {
            put(0xD800 + ((character - 0x10000) >> 10));
            put(0xDC00 + ((character - 0x10000) & 0x3FF));
        }
    }
    return out;
}

/// Finds the tags of a text that is known to be well-formed and to have no document type.
class Locator {
public:
    Locator(std::vector<Node>& nodes, std::string_view text) : nodes_(nodes), text_(text) {}

    void locate() {
        std::vector<Index> levels;
        for (std::size_t at = text_.find('<'); at != text_.npos; at = text_.find('<', at)) {
            if (text_.substr(at).starts_with("<!--")) {
                at = behind("-->", at + 4);
            } else if (text_.substr(at).starts_with("<![CDATA[")) {
                at = behind("]]>", at + 9);
            } else if (text_.substr(at).starts_with("<?")) {
                at = behind("?>", at + 2);
            } else if (text_.substr(at).starts_with("</")) {
                if (levels.empty())
                    return;
                Node& node = nodes_[levels.back()];
                levels.pop_back();
                node.end = static_cast<Index>(at);
                at = behind(">", at);
                close(node, at);
            } else {
                const auto element = static_cast<Index>(nodes_.size());
                at = readTag(at);
                if (nodes_.size() > HZEPTextEdit::kMaxValues)
                    return;
                if (nodes_[element].next == 0)
                    levels.push_back(element);
            }
        }
    }

private:
    std::size_t behind(std::string_view mark, std::size_t at) const {
        const std::size_t found = text_.find(mark, at);
        return found == text_.npos ? text_.size() : found + mark.size();
    }

    void close(Node& node, std::size_t end) {
        node.outerEnd = static_cast<Index>(end);
        node.next = static_cast<Index>(nodes_.size());
    }

    /// Gives the name without its prefix to the node.
    void setName(Node& node, std::size_t begin, std::size_t end) const {
        const std::size_t colon = text_.substr(begin, end - begin).find(':');
        node.nameBegin = static_cast<Index>(colon == text_.npos ? begin : begin + colon + 1);
        node.nameEnd = static_cast<Index>(end);
    }

    /// An element without content is complete behind its tag; "next" of others stays 0.
    std::size_t readTag(std::size_t open) {
        const auto element = static_cast<Index>(nodes_.size());
        nodes_.push_back({static_cast<Index>(open), 0, 0, 0, 0, 0, 0, Node::Object});
        std::size_t at = std::min(text_.find_first_of(" \t\r\n/>", open), text_.size());
        setName(nodes_[element], open + 1, at);
        while ((at = text_.find_first_not_of(kBlanks, at)) != text_.npos && text_[at] != '>' && text_[at] != '/') {
            const std::size_t nameEnd = std::min(text_.find_first_of(" \t\r\n=", at), text_.size());
            const std::size_t quote = std::min(text_.find_first_of("\"'", nameEnd), text_.size() - 1);
            const std::size_t end = std::min(text_.find(text_[quote], quote + 1), text_.size() - 1);
            const std::string_view name = text_.substr(at, nameEnd - at);
            if (name != "xmlns" && !name.starts_with("xmlns:")) {
                Node node{static_cast<Index>(at), 0, static_cast<Index>(quote + 1), static_cast<Index>(end), 0, 0, 0, Node::Text, true};
                setName(node, at, nameEnd);
                nodes_.push_back(node);
                close(nodes_.back(), end + 1);
            }
            at = end + 1;
        }
        Node& node = nodes_[element];
        if (at == text_.npos || text_[at] == '>') {
            at = std::min(at, text_.size() - 1) + 1;
            node.begin = static_cast<Index>(at);
            return at;
        }
        node.begin = node.end = static_cast<Index>(at);
        at = behind(">", at);
        close(node, at);
        return at;
    }

    std::vector<Node>& nodes_;
    const std::string_view text_;
};

/// Takes the values from the parser that all readers use.
class ValueReader : public lmx60::c_xml_reader_memory {
public:
    explicit ValueReader(const std::string& text) : c_xml_reader_memory(text.data(), text.size()) {}

    struct Item {
        std::string name;
        std::string value;
        bool isAttribute;
    };

    /// One item for each element and attribute, in the order of the nodes; a fault is raised by `fail`.
    template <class Fail>
    std::vector<Item> readAll(const Fail& fail) {
        std::vector<Item> items;
        std::vector<std::size_t> levels;
        for (;;) {
            switch (peek()) {
            case lmx60::xml_event_kind::start:
                levels.push_back(items.size());
                items.push_back({std::string(next_local_name()), "", false});
                pop();
                for (std::size_t i = 0; i < attribute_count(); ++i)
                    items.push_back({std::string(attribute_local_name(i)), std::string(attribute_value(i)), true});
                if (items.size() > HZEPTextEdit::kMaxValues)
                    return items;
                break;
            case lmx60::xml_event_kind::end:
                levels.pop_back();
                pop();
                break;
            case lmx60::xml_event_kind::text:
                addText(items[levels.back()].value, next_text());
                pop();
                break;
            case lmx60::xml_event_kind::end_of_document:
                return items;
            default:
                fail(static_cast<std::size_t>(std::max(failure_line(), 1)), failure_text());
            }
        }
    }

private:
    /// Blanks between elements are layout.
    static void addText(std::string& value, std::string_view text) {
        const std::size_t first = text.find_first_not_of(kBlanks);
        if (first != text.npos)
            value += text.substr(first, text.find_last_not_of(kBlanks) + 1 - first);
    }
};

std::string withoutBlanks(std::string text) {
    std::erase_if(text, [](char c) { return kBlanks.find(c) != kBlanks.npos; });
    return text;
}

class XmlTree : public TextTree {
public:
    explicit XmlTree(std::string text) : TextTree(std::move(text), HZEPTextEdit::Xml), pairs_(getPairs(text_)) {
        std::vector<ValueReader::Item> items =
            ValueReader(text_).readAll([this](std::size_t line, const std::string& cause) { fail(line, cause); });
        if (pairs_ != Pairs::None)
            text_ = fromPairs(text_, pairs_);
        if (items.size() <= HZEPTextEdit::kMaxValues)
            Locator(nodes_, text_).locate();
        if (items.size() > HZEPTextEdit::kMaxValues)
            nodes_.resize(items.size());
        limitValues();
        bool isAlike = items.size() == nodes_.size() && !nodes_.empty();
        for (std::size_t i = 0; isAlike && i < items.size(); ++i)
            isAlike = items[i].isAttribute == nodes_[i].isAttribute && nodes_[i].next > i;
        if (!isAlike)
            fail(1, "is written in a way that can't be changed in place");
        items_ = std::move(items);
    }

    std::string encode(const std::string& text) const override { return pairs_ == Pairs::None ? text : toPairs(text, pairs_); }
    std::string getName(Index node) const override { return items_[node].name; }
    std::string getValue(Index node) const override { return items_[node].value; }
    bool isSame(Index node, const TextTree& other, Index otherNode) const override {
        if (!TextTree::isSame(node, other, otherNode) || getName(node) != other.getName(otherNode))
            return false;
        // Where an element goes, the texts around it come together.
        return nodes_[node].isAttribute ? getValue(node) == other.getValue(otherNode)
                                        : withoutBlanks(getValue(node)) == withoutBlanks(other.getValue(otherNode));
    }

private:
    const Pairs pairs_;
    std::vector<ValueReader::Item> items_;
};

} // namespace

std::unique_ptr<TextTree> readXmlTree(std::string text) {
    return std::make_unique<XmlTree>(std::move(text));
}

} // namespace editing
