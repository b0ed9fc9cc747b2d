// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "TextTree.h"

#include "HZEPJSONText.h"
#include "HostText.h"

#include <rapidjson/error/en.h>
#include <rapidjson/memorystream.h>
#include <rapidjson/reader.h>

#include <algorithm>
#include <cstring>

namespace editing {

namespace {

constexpr unsigned kFlags = rapidjson::kParseIterativeFlag | rapidjson::kParseValidateEncodingFlag | rapidjson::kParseNumbersAsStringsFlag;
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr const char* kTooDeep = "nested too deep";
constexpr const char* kSurrogate = "half of a surrogate pair";

/// Takes the events of a parser that found no fault so far, and finds in the text where each value stands: between two of them there
/// are only blanks, a comma or a colon.
class Locator {
public:
    Locator(std::vector<Node>& nodes, std::string_view text, std::size_t start) : nodes_(nodes), text_(text), at_(start) {}

    bool Null() { return plain(4); }
    bool Bool(bool value) { return plain(value ? 4 : 5); }
    bool RawNumber(const char*, rapidjson::SizeType size, bool) { return plain(size); }
    bool String(const char* value, rapidjson::SizeType size, bool) {
        if (!isClean(value, size))
            return false;
        Node& node = place(Node::Text);
        at_ = endOfText(node.begin);
        return close(node);
    }
    bool Key(const char* name, rapidjson::SizeType size, bool) {
        if (!isClean(name, size))
            return false;
        key_ = skip();
        at_ = keyEnd_ = endOfText(key_);
        return true;
    }
    bool StartObject() { return open(Node::Object); }
    bool StartArray() { return open(Node::List); }
    bool EndObject(rapidjson::SizeType) { return leave(); }
    bool EndArray(rapidjson::SizeType) { return leave(); }

    // Numbers come as text.
    bool Int(int) { return false; }
    bool Uint(unsigned) { return false; }
    bool Int64(std::int64_t) { return false; }
    bool Uint64(std::uint64_t) { return false; }
    bool Double(double) { return false; }

    /// Why the locator stopped the parser; null when it did not.
    const char* getFault() const { return levels_.size() > HZEPJSONText::kMaxDepth ? kTooDeep : hasSurrogate_ ? kSurrogate : nullptr; }

private:
    /// The parser lets an escaped low surrogate without its high one through.
    bool isClean(const char* text, std::size_t size) {
        hasSurrogate_ = size > 0 && std::memchr(text, 0xED, size) && !HostText::isUtf8({text, size});
        return !hasSurrogate_;
    }

    Index skip() {
        at_ = text_.find_first_not_of(" \t\r\n,:", at_);
        return static_cast<Index>(at_);
    }

    Index endOfText(std::size_t quote) const {
        std::size_t at = quote + 1;
        while (text_[at] != '"')
            at += text_[at] == '\\' ? 2 : 1;
        return static_cast<Index>(at + 1);
    }

    Node& place(Node::Form form) {
        const Index begin = skip();
        const bool isMember = !levels_.empty() && nodes_[levels_.back()].form == Node::Object;
        nodes_.push_back({isMember ? key_ : begin, 0, begin, 0, isMember ? key_ + 1 : 0, isMember ? keyEnd_ - 1 : 0, 0, form});
        return nodes_.back();
    }

    bool close(Node& node) {
        node.outerEnd = node.end = static_cast<Index>(at_);
        node.next = static_cast<Index>(nodes_.size());
        return nodes_.size() <= HZEPTextEdit::kMaxValues;
    }

    bool plain(std::size_t size) {
        Node& node = place(Node::Plain);
        at_ = node.begin + size;
        return close(node);
    }

    bool open(Node::Form form) {
        place(form);
        ++at_;
        levels_.push_back(static_cast<Index>(nodes_.size() - 1));
        return !getFault() && nodes_.size() <= HZEPTextEdit::kMaxValues;
    }

    bool leave() {
        skip();
        ++at_;
        Node& node = nodes_[levels_.back()];
        levels_.pop_back();
        return close(node);
    }

    std::vector<Node>& nodes_;
    const std::string_view text_;
    std::size_t at_;
    std::vector<Index> levels_;
    Index key_ = 0;
    Index keyEnd_ = 0;
    bool hasSurrogate_ = false;
};

struct TextTaker : rapidjson::BaseReaderHandler<rapidjson::UTF8<>, TextTaker> {
    bool String(const char* value, rapidjson::SizeType size, bool) {
        text.assign(value, size);
        return true;
    }
    std::string text;
};

/// The text behind a quoted one.
std::string unquote(std::string_view quoted) {
    if (!std::memchr(quoted.data(), '\\', quoted.size()))
        return std::string(quoted.substr(1, quoted.size() - 2));
    rapidjson::MemoryStream stream(quoted.data(), quoted.size());
    TextTaker taker;
    rapidjson::Reader().Parse(stream, taker);
    return std::move(taker.text);
}

class JsonTree : public TextTree {
public:
    explicit JsonTree(std::string text) : TextTree(std::move(text), HZEPTextEdit::Json) {
        const std::size_t start = text_.starts_with(kByteOrderMark) ? kByteOrderMark.size() : 0;
        rapidjson::MemoryStream stream(text_.data() + start, text_.size() - start);
        Locator locator(nodes_, text_, start);
        rapidjson::Reader reader;
        const bool isWhole = reader.Parse<kFlags>(stream, locator) && start + stream.Tell() == text_.size();
        limitValues();
        if (isWhole)
            return;
        const std::size_t at = std::min(start + (reader.HasParseError() ? reader.GetErrorOffset() : stream.Tell()), text_.size());
        const auto line = 1 + std::count(text_.begin(), text_.begin() + static_cast<std::ptrdiff_t>(at), '\n');
        fail(static_cast<std::size_t>(line), locator.getFault()       ? locator.getFault()
                                             : reader.HasParseError() ? rapidjson::GetParseError_En(reader.GetParseErrorCode())
                                                                      : "a zero byte");
    }

    std::string getName(Index node) const override {
        const Node& n = nodes_[node];
        return n.nameBegin == 0 ? "" : unquote(getText(n.nameBegin - 1, n.nameEnd + 1));
    }

    std::string getValue(Index node) const override {
        const Node& n = nodes_[node];
        return n.form == Node::Text ? unquote(getText(n.begin, n.end)) : n.form == Node::Plain ? std::string(getText(n.begin, n.end)) : "";
    }
};

} // namespace

std::unique_ptr<TextTree> readJsonTree(std::string text) {
    return std::make_unique<JsonTree>(std::move(text));
}

} // namespace editing
