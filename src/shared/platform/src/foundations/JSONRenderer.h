// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "JSONWriter.h"

#include <boost/property_tree/json_parser/error.hpp>
#include <boost/property_tree/ptree.hpp>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

namespace zep_platform {

// The two forms of a document, seen alike.
using boost::property_tree::ptree;
inline const std::string& keyOf(const ptree::value_type& child) {
    return child.first;
}
inline const ptree& nodeOf(const ptree::value_type& child) {
    return child.second;
}
inline const std::string& valueOf(const ptree& node) {
    return node.data();
}
inline const ptree& childrenOf(const ptree& node) {
    return node;
}
inline const std::string& keyOf(const JSONNode& child) {
    return child.key;
}
inline const JSONNode& nodeOf(const JSONNode& child) {
    return child;
}
inline const std::string& valueOf(const JSONNode& node) {
    return node.value;
}
inline const std::vector<JSONNode>& childrenOf(const JSONNode& node) {
    return node.children;
}

/// Prints a document as boost::property_tree::write_json does, byte for byte, through one buffer: a growing text or a call of the
/// stream for each token costs several times as much.
class JSONRenderer {
public:
    template <class Node>
    static void render(std::ostream& stream, const Node& root) {
        using boost::property_tree::json_parser::json_parser_error;
        if (!valueOf(root).empty() || !representable(root))
            throw json_parser_error("ptree contains data that cannot be represented in JSON format", "", 0);
        JSONRenderer renderer(stream);
        renderer.object(root, 0);
        renderer.put('\n');
        renderer.flush();
        stream.flush();
        if (!stream.good())
            throw json_parser_error("write error", "", 0);
    }

private:
    static constexpr std::size_t kBufferSize = 64 * 1024;

    explicit JSONRenderer(std::ostream& stream) : stream_(stream), buffer_(std::make_unique_for_overwrite<char[]>(kBufferSize)) {}

    template <class Node>
    static bool representable(const Node& node) {
        if (!valueOf(node).empty() && !childrenOf(node).empty())
            return false;
        for (const auto& child : childrenOf(node))
            if (!representable(nodeOf(child)))
                return false;
        return true;
    }

    template <class Node>
    void value(const Node& node, std::size_t depth) {
        if (childrenOf(node).empty())
            return text(valueOf(node));
        for (const auto& child : childrenOf(node))
            if (!keyOf(child).empty())
                return object(node, depth);
        array(node, depth);
    }

    template <class Node>
    void object(const Node& node, std::size_t depth) {
        members(node, depth, '{', '}', [this](const std::string& key) {
            text(key);
            put(':');
            put(' ');
        });
    }

    template <class Node>
    void array(const Node& node, std::size_t depth) {
        members(node, depth, '[', ']', [](const std::string&) {});
    }

    template <class Node, class Name>
    void members(const Node& node, std::size_t depth, char open, char close, Name name) {
        put(open);
        bool first = true;
        for (const auto& child : childrenOf(node)) {
            if (!first)
                put(',');
            first = false;
            put('\n');
            indent(depth + 1);
            name(keyOf(child));
            value(nodeOf(child), depth + 1);
        }
        put('\n');
        indent(depth);
        put(close);
    }

    void text(const std::string& text);
    void escape(unsigned char byte);

    void put(char c) {
        if (used_ == kBufferSize)
            flush();
        buffer_[used_++] = c;
    }
    void indent(std::size_t depth) {
        for (std::size_t left = 4 * depth; left > 0;) {
            if (used_ == kBufferSize)
                flush();
            const std::size_t part = std::min(left, kBufferSize - used_);
            std::memset(buffer_.get() + used_, ' ', part);
            used_ += part;
            left -= part;
        }
    }
    void copy(const char* data, std::size_t size) {
        if (size > kBufferSize - used_)
            flush();
        if (size > kBufferSize) {
            stream_.write(data, static_cast<std::streamsize>(size));
            return;
        }
        std::memcpy(buffer_.get() + used_, data, size);
        used_ += size;
    }
    void flush() {
        stream_.write(buffer_.get(), static_cast<std::streamsize>(used_));
        used_ = 0;
    }

    std::ostream& stream_;
    std::unique_ptr<char[]> buffer_;
    std::size_t used_ = 0;
};

} // namespace zep_platform
