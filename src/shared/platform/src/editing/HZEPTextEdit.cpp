// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HZEPTextEdit.h"

#include "HostErrors.h"
#include "HostText.h"
#include "TextLayout.h"

#include <algorithm>
#include <charconv>
#include <optional>

using namespace editing;

namespace {

/// A name, or a place in a list.
struct Step {
    std::string name;
    std::optional<std::size_t> place;
};

[[noreturn]] void fail(std::string_view path, const std::string& cause) {
    const std::string shown = HostText::makePrintable(path);
    throw HostDataException("\"" + shown + "\": " + cause, {"", shown, 0, 0, cause});
}

std::vector<Step> parsePath(std::string_view path) {
    std::vector<Step> steps;
    for (std::size_t at = 0; at < path.size();) {
        Step& step = steps.emplace_back();
        if (path.substr(at).starts_with("[\"")) {
            for (at += 2; at < path.size() && path[at] != '"'; ++at) {
                at += path[at] == '\\' ? 1 : 0;
                step.name += at < path.size() ? path[at] : '\\';
            }
            if (!path.substr(std::min(at, path.size())).starts_with("\"]"))
                fail(path, "is no path: a name in quotes has no end");
            at += 2;
        } else if (path[at] == '[') {
            std::size_t place = 0;
            const char* const end = path.data() + path.size();
            const auto [last, error] = std::from_chars(path.data() + at + 1, end, place);
            if (error != std::errc() || last == end || *last != ']')
                fail(path, "is no path: a place in brackets is a number from 0 on");
            step.place = place;
            at = static_cast<std::size_t>(last - path.data()) + 1;
        } else {
            const std::size_t end = std::min(path.find_first_of(".[", at), path.size());
            step.name = path.substr(at, end - at);
            if (step.name.empty())
                fail(path, "is no path: a name is empty");
            at = end;
        }
        if (at < path.size() && path[at] == '.' && ++at == path.size())
            fail(path, "is no path: a name is missing at its end");
    }
    return steps;
}

} // namespace

HZEPTextEdit::Value HZEPTextEdit::Value::plain(std::string text) {
    Value value(std::move(text));
    value.kind = Plain;
    return value;
}

HZEPTextEdit::Value HZEPTextEdit::Value::named(std::string as) const {
    Value value = *this;
    value.name = std::move(as);
    return value;
}

struct HZEPTextEdit::State {
    State(std::string text, Form form) : tree(TextTree::read(std::move(text), form)) {}

    bool isXml() const { return tree->getForm() == Xml; }

    std::vector<Index> getElements(Index container, const std::string& name) const {
        std::vector<Index> elements = tree->getChildren(container, name);
        std::erase_if(elements, [this](Index child) { return (*tree)[child].isAttribute; });
        return elements;
    }

    /// The nodes on the way, from the root to the one named by the first `count` steps; nothing when the way ends before.
    std::vector<Index> find(const std::vector<Step>& steps, std::size_t count) const {
        std::vector<Index> way = {0};
        for (std::size_t i = 0; i < count; ++i) {
            const Node& node = (*tree)[way.back()];
            if (steps[i].place) {
                if (node.form != Node::List || *steps[i].place >= tree->getChildren(way.back()).size())
                    return {};
                way.push_back(tree->getChildren(way.back())[*steps[i].place]);
                continue;
            }
            if (node.form != Node::Object)
                return {};
            const bool isCounted = isXml() && i + 1 < count && steps[i + 1].place;
            const std::vector<Index>& named = tree->getChildren(way.back(), steps[i].name);
            // Attributes stand in front of the elements.
            const auto first =
                isCounted ? std::find_if(named.begin(), named.end(), [&](Index n) { return !(*tree)[n].isAttribute; }) : named.begin();
            const std::size_t place = isCounted ? *steps[++i].place : 0;
            if (place >= static_cast<std::size_t>(named.end() - first))
                return {};
            way.push_back(first[static_cast<std::ptrdiff_t>(place)]);
        }
        return way;
    }

    std::vector<Index> require(std::string_view path, const std::vector<Step>& steps, std::size_t count) const {
        std::vector<Index> way = find(steps, count);
        if (way.empty())
            fail(path, "there is no such value");
        return way;
    }

    void touch(const std::vector<Index>& way) { changes.touched.insert(way.begin(), way.end()); }

    /// The child before which a new member stands.
    Index findPlace(Index container, const Value& value, const std::vector<std::string>& order) const {
        const bool isAttribute = isXml() && value.kind == Value::Text;
        const auto isAlike = [&](Index child) { return (*tree)[child].isAttribute == isAttribute; };
        const auto own = std::find(order.begin(), order.end(), value.name);
        Index before = kNone, firstAlike = kNone;
        bool isBehind = false;
        for (const Index child : tree->getChildren(container)) {
            if (!isAlike(child)) {
                if (isAttribute && before == kNone && (isBehind || own == order.end()))
                    before = child;
                continue;
            }
            if (firstAlike == kNone)
                firstAlike = child;
            if (own != order.end() && std::find(order.begin(), own, tree->getName(child)) != own) {
                isBehind = true;
                before = kNone;
            } else if (isBehind && before == kNone) {
                before = child;
            }
        }
        return own == order.end() || isBehind ? before : firstAlike;
    }

    std::string splice() const {
        std::vector<Splice> splices = isXml() ? layOutXml(*tree, changes) : layOutJson(*tree, changes);
        std::stable_sort(splices.begin(), splices.end(),
                         [](const Splice& a, const Splice& b) { return std::pair(a.begin, a.end) < std::pair(b.begin, b.end); });
        std::string text;
        Index at = 0;
        for (const Splice& splice : splices) {
            if (splice.begin < at)
                throw HostAlgException("HZEPTextEdit::apply() - one value is changed twice, or within one that goes");
            text += tree->getText(at, splice.begin);
            text += splice.text;
            at = splice.end;
        }
        return text + tree->getText().substr(at);
    }

    bool isSameRange(Index node, const TextTree& other, Index otherNode) const {
        const Index size = (*tree)[node].next - node;
        if (other[otherNode].next - otherNode != size)
            return false;
        for (Index i = 0; i < size; ++i)
            if ((*tree)[node + i].next - node != other[otherNode + i].next - otherNode || !tree->isSame(node + i, other, otherNode + i))
                return false;
        return true;
    }

    static bool isValue(const Value& value, const TextTree& other, Index node) {
        static constexpr Node::Form kForms[] = {Node::Text, Node::Plain, Node::Object, Node::List};
        const Node& n = other[node];
        if (value.kind == None || n.form != kForms[value.kind] || (!value.name.empty() && other.getName(node) != value.name))
            return false;
        if (n.form == Node::Text || n.form == Node::Plain)
            return other.getValue(node) == value.text;
        // Attributes stand in front of the elements, wherever the value has them.
        const std::vector<Index>& children = other.getChildren(node);
        std::vector<const Value*> members;
        for (const bool wantsText : {true, false})
            for (const Value& member : value.members)
                if (other.getForm() == Json ? wantsText : wantsText == (member.kind == Value::Text))
                    members.push_back(&member);
        return std::equal(members.begin(), members.end(), children.begin(), children.end(),
                          [&](const Value* member, Index child) { return isValue(*member, other, child); });
    }

    /// The other tree is this one with the changes.
    bool isChanged(Index node, const TextTree& other, Index otherNode) const {
        if (const auto found = changes.replaced.find(node); found != changes.replaced.end())
            return isValue(found->second, other, otherNode) && tree->getName(node) == other.getName(otherNode);
        if (!changes.touched.contains(node))
            return isSameRange(node, other, otherNode);
        if (!tree->isSame(node, other, otherNode))
            return false;
        const auto inserted = changes.inserted.find(node);
        Index at = otherNode + 1;
        const Index end = other[otherNode].next;
        const auto take = [&](Index before) {
            if (inserted == changes.inserted.end())
                return true;
            const auto values = inserted->second.find(before);
            if (values == inserted->second.end())
                return true;
            for (const Value& value : values->second) {
                if (at >= end || !isValue(value, other, at))
                    return false;
                at = other[at].next;
            }
            return true;
        };
        for (const Index child : tree->getChildren(node)) {
            if (!take(child))
                return false;
            if (changes.removed.contains(child))
                continue;
            if (at >= end || !isChanged(child, other, at))
                return false;
            at = other[at].next;
        }
        return take(kNone) && at == end;
    }

    std::unique_ptr<TextTree> tree;
    Changes changes;
};

HZEPTextEdit::HZEPTextEdit(std::string text, Form form) : state_(std::make_unique<State>(std::move(text), form)) {}
HZEPTextEdit::~HZEPTextEdit() = default;

HZEPTextEdit::Kind HZEPTextEdit::getKind(std::string_view path) const {
    static constexpr Kind kKinds[] = {Text, Plain, Object, List};
    const std::vector<Step> steps = parsePath(path);
    const std::vector<Index> way = state_->find(steps, steps.size());
    return way.empty() ? None : kKinds[(*state_->tree)[way.back()].form];
}

std::size_t HZEPTextEdit::getCount(std::string_view path) const {
    const std::vector<Step> steps = parsePath(path);
    if (state_->isXml() && !steps.empty()) {
        const std::vector<Index> way = state_->find(steps, steps.size() - 1);
        return way.empty() ? 0 : state_->getElements(way.back(), steps.back().name).size();
    }
    const std::vector<Index> way = state_->find(steps, steps.size());
    return way.empty() ? 0 : state_->tree->getChildren(way.back()).size();
}

std::string HZEPTextEdit::getText(std::string_view path) const {
    const std::vector<Step> steps = parsePath(path);
    const std::vector<Index> way = state_->find(steps, steps.size());
    return way.empty() ? "" : state_->tree->getValue(way.back());
}

void HZEPTextEdit::replace(std::string_view path, const Value& value) {
    const std::vector<Step> steps = parsePath(path);
    const std::vector<Index> way = state_->require(path, steps, steps.size());
    if (value.kind == None)
        fail(path, "there is no value to put in");
    if (state_->isXml() && (*state_->tree)[way.back()].isAttribute != (value.kind == Value::Text))
        fail(path, "an attribute is a text, an element an object");
    state_->touch(way);
    if (!state_->changes.replaced.try_emplace(way.back(), value).second)
        fail(path, "is changed twice");
    state_->changes.replaced.at(way.back()).name.clear();
}

void HZEPTextEdit::insert(std::string_view path, const Value& value, const std::vector<std::string>& order) {
    const std::vector<Step> steps = parsePath(path);
    if (steps.empty())
        fail(path, "names no place");
    const bool isElement = state_->isXml() && value.kind != Value::Text;
    if (state_->isXml() &&
        (value.kind == Value::Plain || value.kind == Value::List || value.kind == Value::None || (steps.back().place && !isElement)))
        fail(path, "an attribute is a text, an element an object");
    const bool isCounted = steps.back().place.has_value();
    const std::size_t parents = steps.size() - (isCounted && state_->isXml() ? 2 : 1);
    if (parents > steps.size())
        fail(path, "names no place");
    const std::vector<Index> way = state_->require(path, steps, parents);
    const Index container = way.back();
    const bool isList = isCounted && !state_->isXml();
    if ((*state_->tree)[container].form != (isList ? Node::List : Node::Object))
        fail(path, isList ? "is in no list" : "is in no object");

    Value named = value;
    named.name = isList ? "" : steps[parents].name;
    auto& places = state_->changes.inserted[container];
    Index before = kNone;
    if (isCounted || isElement) {
        const std::vector<Index> items = isList ? state_->tree->getChildren(container) : state_->getElements(container, named.name);
        const std::size_t place = isCounted ? *steps.back().place : items.size();
        if (place > items.size())
            fail(path, "there are only " + std::to_string(items.size()));
        if (place < items.size()) {
            before = items[place];
        } else if (!isList && !items.empty()) {
            const std::vector<Index>& all = state_->tree->getChildren(container);
            const auto behind = std::upper_bound(all.begin(), all.end(), items.back());
            before = behind == all.end() ? kNone : *behind;
        } else if (!isList) {
            before = state_->findPlace(container, named, order);
        }
    } else {
        for (const Index child : state_->tree->getChildren(container, named.name))
            if (!state_->isXml() || (*state_->tree)[child].isAttribute)
                fail(path, "is there already");
        for (const auto& [at, values] : places)
            for (const Value& other : values)
                if (other.name == named.name && (!state_->isXml() || other.kind == Value::Text))
                    fail(path, "is put in twice");
        before = state_->findPlace(container, named, order);
    }
    std::vector<Value>& values = places[before];
    auto at = values.end();
    if (state_->isXml() && !isElement)
        at = std::find_if(values.begin(), values.end(), [](const Value& other) { return other.kind != Value::Text; });
    values.insert(at, std::move(named));
    state_->touch(way);
    state_->changes.rearranged.insert(container);
}

void HZEPTextEdit::remove(std::string_view path) {
    const std::vector<Step> steps = parsePath(path);
    const std::vector<Index> way = state_->require(path, steps, steps.size());
    if (way.size() < 2)
        fail(path, "the whole document can't go");
    state_->touch({way.begin(), way.end() - 1});
    state_->changes.removed.insert(way.back());
    state_->changes.rearranged.insert(way[way.size() - 2]);
}

std::string HZEPTextEdit::apply() const {
    std::string text = state_->tree->encode(state_->splice());
    const std::unique_ptr<TextTree> result = TextTree::read(text, state_->tree->getForm());
    if (!state_->isChanged(0, *result, 0))
        throw HostError("HZEPTextEdit::apply() - the changed text does not hold what it should");
    return text;
}
