// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "HZEPJSONText.h"

#include "HostErrors.h"
#include "HostFileUtils.h"
#include "JSONRenderer.h"

// Boost's parser still uses the placeholders of the global namespace.
#define BOOST_BIND_GLOBAL_PLACEHOLDERS
#include <boost/property_tree/json_parser.hpp>

#include <rapidjson/encodings.h>
#include <rapidjson/memorystream.h>
#include <rapidjson/reader.h>

#include <algorithm>
#include <cstring>
#include <istream>
#include <limits>
#include <optional>
#include <streambuf>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

using boost::property_tree::ptree;
using boost::property_tree::json_parser::json_parser_error;

namespace {

// What becomes of the events beside filling a tree; a null pointer is a thing not wanted.
struct Wishes {
    /// Arrays among the root's members that are left as text, and where they go.
    const std::set<std::string, std::less<>>* names = nullptr;
    HZEPJSONText::Lists* lists = nullptr;
    /// Takes each item of the root, which is an array.
    const std::function<void(ptree&)>* take = nullptr;
};

// Fills a tree from the events of a reader. Every child is inserted empty at its place and filled there: a tree is never copied.
template <class Stream>
class TreeFiller {
public:
    TreeFiller(ptree& root, const Stream& stream, bool hasEscapes, const Wishes& wishes)
        : root_(root), stream_(stream), hasEscapes_(hasEscapes), wishes_(wishes) {}

    bool Null() { return scalar("null", 4); }
    bool Bool(bool value) { return value ? scalar("true", 4) : scalar("false", 5); }
    bool RawNumber(const char* text, rapidjson::SizeType size, bool) { return scalar(text, size); }
    bool String(const char* text, rapidjson::SizeType size, bool) { return clean(text, size) && scalar(text, size); }
    bool Key(const char* text, rapidjson::SizeType size, bool) {
        if (!clean(text, size))
            return false;
        if (leftOut_ > 0)
            return true;
        const std::string_view key(text, size);
        leaveOutNext_ =
            wishes_.names && levels_.size() == 1 && wishes_.names->contains(key) && root_.find(std::string(key)) == root_.not_found();
        next_ = &emptyChild(key);
        return true;
    }
    bool StartObject() { return open(false); }
    bool StartArray() { return open(true); }
    bool EndObject(rapidjson::SizeType) { return close(); }
    bool EndArray(rapidjson::SizeType) { return close(); }

    // Numbers come as text.
    bool Int(int) { return false; }
    bool Uint(unsigned) { return false; }
    bool Int64(std::int64_t) { return false; }
    bool Uint64(std::uint64_t) { return false; }
    bool Double(double) { return false; }

private:
    struct Level {
        ptree* node;
        bool isArray;
    };
    struct KeyHash {
        using is_transparent = void;
        std::size_t operator()(std::string_view key) const { return std::hash<std::string_view>()(key); }
    };

    static constexpr std::size_t kKeptKeys = 256;

    bool scalar(const char* text, std::size_t size) {
        if (leftOut_ > 0)
            return true;
        place().data().assign(text, size);
        handOver();
        return true;
    }

    bool open(bool isArray) {
        if (levels_.size() + leftOut_ == HZEPJSONText::kMaxDepth)
            return false;
        if (leftOut_ > 0 || (isArray && leaveOutNext_)) {
            if (leftOut_++ == 0)
                listBegin_ = stream_.src_;
            return true;
        }
        leaveOutNext_ = false;
        levels_.push_back({&place(), isArray});
        return true;
    }

    bool close() {
        if (leftOut_ == 0) {
            levels_.pop_back();
            handOver();
        } else if (--leftOut_ == 0) {
            leaveOutNext_ = false;
            wishes_.lists->try_emplace(next_->first, listBegin_, stream_.src_ + 1 - listBegin_);
        }
        return true;
    }

    void handOver() {
        if (!wishes_.take || levels_.size() != 1)
            return;
        (*wishes_.take)(root_.front().second);
        root_.pop_front();
    }

    ptree& place() {
        if (levels_.empty())
            return root_;
        const Level& level = levels_.back();
        level.node->push_back(level.isArray ? item_ : *next_);
        return level.node->back().second;
    }

    // Documents use few keys many times, and a pair of the key and an empty tree is dear to make: the pairs are kept.
    const ptree::value_type& emptyChild(std::string_view key) {
        if (const auto found = children_.find(key); found != children_.end())
            return *found;
        if (children_.size() < kKeptKeys)
            return *children_.try_emplace(std::string(key)).first;
        return spare_.emplace(std::string(key), ptree());
    }

    // The reader lets an escaped low surrogate without its high one through; it shows as the three bytes of a surrogate.
    bool clean(const char* text, std::size_t size) const {
        if (!hasEscapes_)
            return true;
        const char* const end = text + size;
        for (const char* at = text; (at = static_cast<const char*>(std::memchr(at, 0xED, static_cast<std::size_t>(end - at)))); ++at)
            if (static_cast<unsigned char>(at[1]) >= 0xA0)
                return false;
        return true;
    }

    ptree& root_;
    const Stream& stream_;
    const bool hasEscapes_;
    const Wishes wishes_;
    std::vector<Level> levels_;
    std::unordered_map<std::string, ptree, KeyHash, std::equal_to<>> children_;
    std::optional<ptree::value_type> spare_;
    const ptree::value_type item_{std::string(), ptree()};
    const ptree::value_type* next_ = &item_;
    bool leaveOutNext_ = false;
    std::size_t leftOut_ = 0; // levels, counted from the list that is left out
    const char* listBegin_ = nullptr;
};

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

constexpr unsigned kFlags = rapidjson::kParseIterativeFlag | rapidjson::kParseValidateEncodingFlag | rapidjson::kParseNumbersAsStringsFlag;

bool hasEscapes(std::string_view text) {
    return text.find("\\u") != text.npos;
}

bool readFast(const std::string& text, ptree& out, const Wishes& wishes) {
    if (text.size() >= std::numeric_limits<rapidjson::SizeType>::max())
        return false;
    const std::size_t start = text.starts_with(kByteOrderMark) ? kByteOrderMark.size() : 0;
    rapidjson::StringStream stream(text.c_str() + start);
    TreeFiller filler(out, stream, hasEscapes(text), wishes);
    rapidjson::Reader reader;
    // A zero byte ends the stream early.
    return reader.Parse<kFlags>(stream, filler) && start + stream.Tell() == text.size();
}

std::size_t lineAt(const std::string& text, std::size_t offset) {
    return 1 + static_cast<std::size_t>(std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(offset), '\n'));
}

// Offset of the first bracket that opens one level too many; npos when there is none.
std::size_t findTooDeep(const std::string& text) {
    std::size_t depth = 0;
    bool inString = false;
    // Boost's parser takes three bytes for a byte order mark by the first of them.
    for (std::size_t i = text.starts_with(kByteOrderMark.front()) ? 3 : 0; i < text.size(); ++i) {
        const char c = text[i];
        if (inString) {
            if (c == '\\')
                ++i;
            else if (c == '"')
                inString = false;
        } else if (c == '"') {
            inString = true;
        } else if (c == '{' || c == '[') {
            if (++depth > HZEPJSONText::kMaxDepth)
                return i;
        } else if ((c == '}' || c == ']') && depth > 0) {
            --depth;
        }
    }
    return text.npos;
}

// The text up to the first bracket that is nested too deep, which raises when it is read: a fault before it is still reported first.
class BoundedBuffer : public std::streambuf {
public:
    explicit BoundedBuffer(const std::string& text) : text_(text), limit_(findTooDeep(text)) {
        char* const begin = const_cast<char*>(text.data());
        setg(begin, begin, begin + std::min(limit_, text.size()));
    }

protected:
    int_type underflow() override {
        if (limit_ == text_.npos)
            return traits_type::eof();
        throw json_parser_error("nested deeper than " + std::to_string(HZEPJSONText::kMaxDepth) + " levels", "", lineAt(text_, limit_));
    }

private:
    const std::string& text_;
    const std::size_t limit_;
};

struct NoOutput {
    using Ch = char;
    void Put(char) {}
};

void refuseInvalidUtf8(const std::string& text) {
    rapidjson::MemoryStream stream(text.data(), text.size());
    NoOutput nothing;
    while (stream.Tell() < text.size()) {
        const std::size_t at = stream.Tell();
        if (!rapidjson::UTF8<>::Validate(stream, nothing))
            throw json_parser_error("bytes that are no UTF-8", "", lineAt(text, at));
    }
}

// Boost's parser tells what is wrong with a text. It may also find nothing wrong: with a number that no double can hold, and with
// some byte sequences that are no UTF-8.
void readByBoost(const std::string& text, ptree& out) {
    BoundedBuffer buffer(text);
    std::istream stream(&buffer);
    boost::property_tree::read_json(stream, out);
    refuseInvalidUtf8(text);
}

} // namespace

void HZEPJSONText::read(const std::string& text, ptree& out) {
    ptree tree;
    if (!readFast(text, tree, {})) {
        tree = ptree();
        readByBoost(text, tree);
    }
    out.swap(tree);
}

void HZEPJSONText::read(const std::string& text, ptree& out, const std::set<std::string, std::less<>>& names, Lists& lists) {
    ptree tree;
    Lists found;
    if (!readFast(text, tree, {.names = &names, .lists = &found})) {
        found.clear();
        tree = ptree();
        readByBoost(text, tree);
    }
    out.swap(tree);
    lists.swap(found);
}

void HZEPJSONText::readItems(std::string_view list, const std::function<void(ptree&)>& take) {
    rapidjson::MemoryStream stream(list.data(), list.size());
    ptree root;
    TreeFiller filler(root, stream, hasEscapes(list), {.take = &take});
    rapidjson::Reader().Parse<kFlags>(stream, filler);
}

void HZEPJSONText::readFile(const std::string& path, ptree& out) {
    std::string text;
    try {
        text = HostFileUtils::readFile(path);
    } catch (const HostError& error) {
        throw json_parser_error(error.what(), path, 0);
    }
    try {
        read(text, out);
    } catch (const json_parser_error& error) {
        throw json_parser_error(error.message(), path, error.line());
    }
}

void HZEPJSONText::write(std::ostream& stream, const ptree& tree) {
    zep_platform::JSONRenderer::render(stream, tree);
}
