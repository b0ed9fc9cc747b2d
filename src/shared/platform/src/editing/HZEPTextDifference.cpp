// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HZEPTextDifference.h"

#include "TextTree.h"

#include <map>

using namespace editing;

namespace {

/// What an item of a list may be known by.
constexpr const char* kMarks[] = {"name", "id", "Name", "Id", "instance", "InstanceName", "type", "Type"};

class Comparison {
public:
    Comparison(const TextTree& before, const TextTree& after, const std::set<std::string>& passedOver)
        : before_(before), after_(after), passedOver_(passedOver) {}

    std::vector<HZEPTextDifference::Change> compare() {
        compareValues(0, 0, "");
        return std::move(changes_);
    }

private:
    static std::string join(const std::string& path, const std::string& name) {
        if (name.empty() || name.find_first_of(".[\"\\") != name.npos) {
            std::string quoted;
            for (const char c : name)
                quoted += c == '"' || c == '\\' ? std::string{'\\', c} : std::string{c};
            return path + "[\"" + quoted + "\"]";
        }
        return path.empty() ? name : path + "." + name;
    }

    static std::string join(const std::string& path, std::size_t place) { return path + "[" + std::to_string(place) + "]"; }

    /// kNone for a value that is missing.
    void compareValues(Index node, Index other, const std::string& path) {
        if (passedOver_.contains(path))
            return;
        const Node& n = before_[node];
        const bool isAlike = other != kNone && (n.form == after_[other].form || (isText(n) && isText(after_[other])));
        if (const std::string value = before_.getValue(node); !value.empty()) {
            const std::string now = isAlike ? after_.getValue(other) : "";
            if (value != now)
                changes_.push_back({path, value, now, now.empty()});
        }
        if (n.form == Node::List)
            compareItems(before_.getChildren(node), isAlike ? after_.getChildren(other) : std::vector<Index>(), path);
        else if (n.form == Node::Object)
            compareMembers(node, isAlike ? other : kNone, path);
    }

    static bool isText(const Node& node) { return node.form == Node::Text || node.form == Node::Plain; }

    void compareMembers(Index node, Index other, const std::string& path) {
        std::set<std::string> done;
        for (const Index child : before_.getChildren(node)) {
            const std::string name = before_.getName(child);
            if (!done.insert(name).second)
                continue;
            const std::vector<Index>& own = before_.getChildren(node, name);
            const std::vector<Index> others = other == kNone ? std::vector<Index>() : after_.getChildren(other, name);
            const std::string at = join(path, name);
            // Elements of one name are a list; of members of one name only the first is read.
            if (before_.getForm() == HZEPTextEdit::Xml && (own.size() > 1 || others.size() > 1)) {
                compareItems(own, others, at);
                continue;
            }
            for (std::size_t i = 0; i < own.size(); ++i)
                compareValues(own[i], i == 0 && !others.empty() ? others.front() : kNone, at);
        }
    }

    void compareItems(const std::vector<Index>& own, const std::vector<Index>& others, const std::string& path) {
        std::map<std::string, Index> marked;
        const char* mark = nullptr;
        for (const char* candidate : kMarks)
            if (std::map<std::string, Index> unused;
                !mark && collect(before_, own, candidate, unused) && collect(after_, others, candidate, marked))
                mark = candidate;
        for (std::size_t i = 0; i < own.size(); ++i) {
            Index other = i < others.size() ? others[i] : kNone;
            if (mark) {
                const auto found = marked.find(getMark(before_, own[i], mark));
                other = found == marked.end() ? kNone : found->second;
            }
            compareValues(own[i], other, join(path, i));
        }
    }

    static std::string getMark(const TextTree& tree, Index item, const char* mark) {
        if (tree[item].form != Node::Object)
            return "";
        const std::vector<Index>& named = tree.getChildren(item, mark);
        return named.empty() ? "" : tree.getValue(named.front());
    }

    /// Each item has such a mark, and no two have the same.
    static bool collect(const TextTree& tree, const std::vector<Index>& items, const char* mark, std::map<std::string, Index>& marked) {
        marked.clear();
        for (const Index item : items) {
            const std::string text = getMark(tree, item, mark);
            if (text.empty() || !marked.try_emplace(text, item).second)
                return false;
        }
        return true;
    }

    const TextTree& before_;
    const TextTree& after_;
    const std::set<std::string>& passedOver_;
    std::vector<HZEPTextDifference::Change> changes_;
};

} // namespace

std::vector<HZEPTextDifference::Change> HZEPTextDifference::find(const std::string& before, const std::string& after,
                                                                 HZEPTextEdit::Form form, const std::set<std::string>& passedOver) {
    const std::unique_ptr<TextTree> first = TextTree::read(before, form);
    const std::unique_ptr<TextTree> second = TextTree::read(after, form);
    return Comparison(*first, *second, passedOver).compare();
}
