// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HZEPJSONText.h"
#include "HostText.h"
#include "LintText.h"
#include "LintTree.h"

#include <rapidjson/reader.h>

#include <algorithm>

namespace {

using lint::Node;

/// Fills a tree whose values know their lines.
class Filler {
public:
    Filler(Node& root, const rapidjson::StringStream& stream)
        : root_(root), stream_(stream), counted_(stream.src_), lineStart_(stream.src_) {}

    bool Null() { return text("null"); }
    bool Bool(bool value) { return text(value ? "true" : "false"); }
    bool RawNumber(const char* value, rapidjson::SizeType size, bool) { return text({value, size}); }
    bool String(const char* value, rapidjson::SizeType size, bool) { return text({value, size}); }
    bool Key(const char* name, rapidjson::SizeType size, bool) {
        name_.assign(name, size);
        line_ = line();
        column_ = columnOfText();
        return true;
    }
    bool StartObject() { return open(Node::Object); }
    bool StartArray() { return open(Node::List); }
    bool EndObject(rapidjson::SizeType) { return close(); }
    bool EndArray(rapidjson::SizeType) { return close(); }

    // Numbers come as text.
    bool Int(int) { return false; }
    bool Uint(unsigned) { return false; }
    bool Int64(std::int64_t) { return false; }
    bool Uint64(std::uint64_t) { return false; }
    bool Double(double) { return false; }

    bool isTooLarge() const { return values_ > HZEPMetadataLint::kMaxValues; }

private:
    std::size_t line() {
        if (const auto lines = static_cast<std::size_t>(std::count(counted_, stream_.src_, '\n')); lines > 0) {
            lines_ += lines;
            for (lineStart_ = stream_.src_; lineStart_[-1] != '\n';)
                --lineStart_;
        }
        counted_ = stream_.src_;
        return lines_;
    }

    /// The parser stands at the opening quote until its text is taken.
    std::size_t columnOfText() const { return *stream_.src_ == '"' ? static_cast<std::size_t>(stream_.src_ - lineStart_) + 1 : 0; }

    Node* place() {
        if (++values_ > HZEPMetadataLint::kMaxValues)
            return nullptr;
        if (levels_.empty())
            return &root_;
        Node& parent = *levels_.back();
        Node& node = parent.children.emplace_back();
        node.line = parent.form == Node::Object ? line_ : line();
        node.column = parent.form == Node::Object ? column_ : 0;
        if (parent.form == Node::Object)
            node.name.swap(name_);
        return &node;
    }

    bool text(std::string_view value) {
        Node* node = place();
        if (node)
            node->value = value;
        return node;
    }

    bool open(Node::Form form) {
        Node* node = levels_.size() < HZEPJSONText::kMaxDepth ? place() : nullptr;
        if (node) {
            node->form = form;
            levels_.push_back(node);
        }
        return node;
    }

    // An open level's own place in its parent's list stays as it is: only the innermost level grows.
    bool close() {
        levels_.pop_back();
        return true;
    }

    Node& root_;
    const rapidjson::StringStream& stream_;
    const char* counted_;
    const char* lineStart_;
    std::vector<Node*> levels_;
    std::string name_;
    std::size_t line_ = 1;
    std::size_t column_ = 0;
    std::size_t lines_ = 1;
    std::size_t values_ = 0;
};

} // namespace

namespace lint {

std::optional<Node> readJson(const std::string& text, Findings& findings) {
    constexpr unsigned kFlags =
        rapidjson::kParseIterativeFlag | rapidjson::kParseValidateEncodingFlag | rapidjson::kParseNumbersAsStringsFlag;
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    Node root;
    const std::size_t start = text.starts_with(kByteOrderMark) ? kByteOrderMark.size() : 0;
    rapidjson::StringStream stream(text.c_str() + start);
    Filler filler(root, stream);
    rapidjson::Reader reader;
    const bool isWhole = reader.Parse<kFlags>(stream, filler) && start + stream.Tell() == text.size();
    if (filler.isTooLarge()) {
        findings.add(Rule::TooLarge, 1, "more than " + std::to_string(HZEPMetadataLint::kMaxValues) + " values; not checked");
        return std::nullopt;
    }
    if (isWhole)
        return root;
    // The parser that the readers use knows the words for it.
    std::string cause = "not strictly JSON";
    std::size_t line = 1;
    try {
        boost::property_tree::ptree tree;
        HZEPJSONText::read(text, tree);
    } catch (const boost::property_tree::json_parser::json_parser_error& error) {
        cause = error.message();
        line = error.line();
    }
    findings.add(Rule::Parse, line, HostText::makePrintable(cause));
    return std::nullopt;
}

} // namespace lint
