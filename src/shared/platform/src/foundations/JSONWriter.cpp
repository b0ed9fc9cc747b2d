// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "JSONWriter.h"

#include "JSONRenderer.h"

#include <utility>

namespace zep_platform {

namespace {

// Among fewer children a walk is cheaper than keeping an index.
constexpr std::size_t kWalkLimit = 64;

JSONNode* findChild(JSONNode& node, std::string_view key) {
    if (node.children.size() <= kWalkLimit) {
        for (JSONNode& child : node.children)
            if (child.key == key)
                return &child;
        return nullptr;
    }
    if (!node.index) {
        node.index = std::make_unique<std::map<std::string, std::size_t, std::less<>>>();
        for (std::size_t i = 0; i < node.children.size(); ++i)
            node.index->try_emplace(node.children[i].key, i);
    }
    const auto found = node.index->find(key);
    return found == node.index->end() ? nullptr : &node.children[found->second];
}

ptree* findChild(ptree& node, std::string_view key) {
    const auto found = node.find(std::string(key));
    return found == node.not_found() ? nullptr : &found->second;
}

JSONNode& appendChild(JSONNode& node, JSONNode&& child) {
    if (node.index)
        node.index->try_emplace(child.key, node.children.size());
    return node.children.emplace_back(std::move(child));
}

JSONNode& appendChild(JSONNode& node, std::string_view key) {
    return appendChild(node, JSONNode(std::string(key), {}));
}

ptree& appendChild(ptree& node, std::string_view key) {
    return node.push_back({std::string(key), ptree()})->second;
}

void setValue(JSONNode& node, std::string&& value) {
    node.value = std::move(value);
}
void setValue(ptree& node, std::string&& value) {
    node.data() = std::move(value);
}

// The object in which the last name of a path stands, made where it is missing; the path is cut to that name.
template <class Node>
Node& parentOf(Node& root, std::string_view& path) {
    Node* node = &root;
    for (std::size_t point; (point = path.find('.')) != path.npos; path.remove_prefix(point + 1)) {
        const std::string_view name = path.substr(0, point);
        Node* child = findChild(*node, name);
        node = child ? child : &appendChild(*node, name);
    }
    return *node;
}

template <class Node>
Node& addChild(Node& root, std::string_view path) {
    Node& parent = parentOf(root, path);
    return appendChild(parent, path);
}

template <class Node>
void putValue(Node& root, std::string_view path, std::string&& value) {
    if (path.empty())
        return setValue(root, std::move(value));
    Node& parent = parentOf(root, path);
    Node* child = findChild(parent, path);
    setValue(child ? *child : appendChild(parent, path), std::move(value));
}

void fill(JSONNode& to, const ptree& from) {
    to.value = from.data();
    to.children.reserve(from.size());
    for (const auto& [key, child] : from)
        fill(to.children.emplace_back(key, std::string()), child);
}

void fill(JSONNode& to, ptree&& from) {
    to.value = std::move(from.data());
    to.children.reserve(from.size());
    for (auto& [key, child] : from)
        fill(to.children.emplace_back(key, std::string()), std::move(child));
    from.clear();
}

void fill(ptree& to, JSONNode&& from) {
    to.data() = std::move(from.value);
    for (JSONNode& child : from.children)
        fill(appendChild(to, child.key), std::move(child));
    from.children = {};
}

} // namespace

JSONNode::JSONNode(std::string nodeKey, std::string nodeValue) : key(std::move(nodeKey)), value(std::move(nodeValue)) {}

JSONNode::JSONNode(const JSONNode& other) : key(other.key), value(other.value), children(other.children) {}

JSONNode& JSONNode::operator=(const JSONNode& other) {
    return *this = JSONNode(other);
}

JSONNode::~JSONNode() = default;

JSONWriter::JSONWriter() = default;

JSONWriter::JSONWriter(const JSONWriter& other)
    : root_(other.root_), tree_(other.tree_ ? std::make_unique<ptree>(*other.tree_) : nullptr) {}

JSONWriter::JSONWriter(JSONWriter&&) noexcept = default;

JSONWriter& JSONWriter::operator=(const JSONWriter& other) {
    return *this = JSONWriter(other);
}

JSONWriter& JSONWriter::operator=(JSONWriter&&) noexcept = default;

JSONWriter::~JSONWriter() = default;

ptree& JSONWriter::getTree() {
    std::as_const(*this).getTree();
    return *tree_;
}

const ptree& JSONWriter::getTree() const {
    if (!tree_) {
        auto tree = std::make_unique<ptree>();
        fill(*tree, std::move(root_));
        root_ = JSONNode();
        tree_ = std::move(tree);
    }
    return *tree_;
}

bool JSONWriter::empty() const {
    return tree_ ? tree_->empty() : root_.children.empty();
}

void JSONWriter::write(std::ostream& stream) const {
    if (tree_)
        JSONRenderer::render(stream, *tree_);
    else
        JSONRenderer::render(stream, root_);
}

void JSONWriter::putValue_(std::string_view path, std::string value) {
    if (tree_)
        putValue(*tree_, path, std::move(value));
    else
        putValue(root_, path, std::move(value));
}

void JSONWriter::addTree_(std::string_view path, JSONWriter&& sub) {
    if (tree_) {
        ptree& child = addChild(*tree_, path);
        if (sub.tree_)
            child.swap(*sub.tree_);
        else
            fill(child, std::move(sub.root_));
        sub = JSONWriter();
        return;
    }
    if (sub.tree_)
        return addTree_(path, std::move(*std::exchange(sub.tree_, nullptr)));
    JSONNode& parent = parentOf(root_, path);
    sub.root_.key = path;
    sub.root_.index.reset();
    appendChild(parent, std::exchange(sub.root_, JSONNode()));
}

void JSONWriter::addTree_(std::string_view path, const ptree& tree) {
    if (tree_)
        addChild(*tree_, path) = ptree(tree);
    else
        fill(addChild(root_, path), tree);
}

void JSONWriter::addTree_(std::string_view path, ptree&& tree) {
    if (tree_)
        addChild(*tree_, path).swap(tree);
    else
        fill(addChild(root_, path), std::move(tree));
}

void JSONWriter::appendValue_(std::string value) {
    if (tree_)
        setValue(appendChild(*tree_, {}), std::move(value));
    else
        appendChild(root_, JSONNode({}, std::move(value)));
}

void JSONWriter::appendTree_(JSONWriter&& sub) {
    addTree_({}, std::move(sub));
}

} // namespace zep_platform
