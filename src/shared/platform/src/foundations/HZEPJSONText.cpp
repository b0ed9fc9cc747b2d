// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "HZEPJSONText.h"

#include "HostErrors.h"
#include "HostFileUtils.h"
#include "HostText.h"
#include "JSONRenderer.h"

// Boost's parser still uses the placeholders of the global namespace.
#define BOOST_BIND_GLOBAL_PLACEHOLDERS
#include <boost/property_tree/json_parser.hpp>

#include <algorithm>
#include <iterator>
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
class TreeFiller : public HostJson::Events {
public:
    TreeFiller(ptree& root, std::string_view text, const Wishes& wishes) : root_(root), text_(text), wishes_(wishes) {}

    bool key(std::string_view name, std::size_t) override {
        if (leftOut_ > 0)
            return true;
        leaveOutNext_ =
            wishes_.names && levels_.size() == 1 && wishes_.names->contains(name) && root_.find(std::string(name)) == root_.not_found();
        next_ = &emptyChild(name);
        return true;
    }

    bool value(std::string_view text, std::size_t) override {
        if (leftOut_ > 0)
            return true;
        place().data().assign(text);
        handOver();
        return true;
    }

    bool open(bool isList, std::size_t offset) override {
        if (leftOut_ > 0 || (isList && leaveOutNext_)) {
            if (leftOut_++ == 0)
                listBegin_ = offset;
            return true;
        }
        leaveOutNext_ = false;
        levels_.push_back({&place(), isList});
        return true;
    }

    bool close(std::size_t offset) override {
        if (leftOut_ == 0) {
            levels_.pop_back();
            handOver();
        } else if (--leftOut_ == 0) {
            leaveOutNext_ = false;
            wishes_.lists->try_emplace(next_->first, text_.substr(listBegin_, offset + 1 - listBegin_));
        }
        return true;
    }

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

    ptree& root_;
    const std::string_view text_;
    const Wishes wishes_;
    std::vector<Level> levels_;
    std::unordered_map<std::string, ptree, KeyHash, std::equal_to<>> children_;
    std::optional<ptree::value_type> spare_;
    const ptree::value_type item_{std::string(), ptree()};
    const ptree::value_type* next_ = &item_;
    bool leaveOutNext_ = false;
    std::size_t leftOut_ = 0; // levels, counted from the list that is left out
    std::size_t listBegin_ = 0;
};

std::size_t lineAt(const std::string& text, std::size_t offset) {
    return 1 + static_cast<std::size_t>(std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(offset), '\n'));
}

// Offset of the first bracket that opens one level too many; npos when there is none.
std::size_t findTooDeep(const std::string& text) {
    std::size_t depth = 0;
    bool inString = false;
    // Boost's parser takes three bytes for a byte order mark by the first of them.
    for (std::size_t i = text.starts_with('\xEF') ? 3 : 0; i < text.size(); ++i) {
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

// Boost's parser finds a fault without building anything.
struct NoTree {
    using char_type = char;
    void on_null() {}
    void on_boolean(bool) {}
    void on_begin_number() {}
    void on_digit(char) {}
    void on_end_number() {}
    void on_begin_string() {}
    void on_code_unit(char) {}
    void on_end_string() {}
    void on_begin_array() {}
    void on_end_array() {}
    void on_begin_object() {}
    void on_end_object() {}
};

void readOrRaise(const std::string& text, ptree& out, const Wishes& wishes) {
    TreeFiller filler(out, text, wishes);
    if (!HostJson::read(text, filler))
        throw HZEPJSONTextError(HZEPJSONText::explain(text));
}

} // namespace

// Boost's parser tells what is wrong with a text. It may also find nothing wrong with some byte sequences that are no UTF-8.
HostFault HZEPJSONText::explain(const std::string& text) {
    if (std::string refusal = HostJson::getRefusal(text); !refusal.empty())
        return {"", "", 0, 0, std::move(refusal)};
    try {
        namespace boost_json = boost::property_tree::json_parser::detail;
        BoundedBuffer buffer(text);
        NoTree callbacks;
        boost_json::encoding<char> encoding;
        using Units = std::istreambuf_iterator<char>;
        boost_json::read_json_internal(Units(&buffer), Units(), encoding, callbacks, "");
    } catch (const json_parser_error& error) {
        return {"", "", error.line(), 0, error.message()};
    }
    const std::size_t invalid = HostText::findNoUtf8(text);
    const char* const cause = invalid == text.npos ? "no JSON" : "bytes that are no UTF-8";
    return {"", "", lineAt(text, std::min(invalid, text.size())), 0, cause};
}

void HZEPJSONText::read(const std::string& text, ptree& out) {
    ptree tree;
    readOrRaise(text, tree, {});
    out.swap(tree);
}

void HZEPJSONText::read(const std::string& text, ptree& out, const std::set<std::string, std::less<>>& names, Lists& lists) {
    ptree tree;
    Lists found;
    readOrRaise(text, tree, {.names = &names, .lists = &found});
    out.swap(tree);
    lists.swap(found);
}

void HZEPJSONText::readItems(std::string_view list, const std::function<void(ptree&)>& take) {
    ptree root;
    TreeFiller filler(root, list, {.take = &take});
    HostJson::readPart(list, filler);
}

void HZEPJSONText::readFile(const std::string& path, ptree& out) {
    try {
        read(HostFileUtils::readFile(path, HostJson::kMaxBytes), out);
    } catch (const HostError& error) {
        throw HZEPJSONTextError({path, "", 0, 0, error.what()});
    } catch (const HZEPJSONTextError& error) {
        throw error.in(path);
    }
}

void HZEPJSONText::write(std::ostream& stream, const ptree& tree) {
    zep_platform::JSONRenderer::render(stream, tree);
}
