// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HZEPExport.h"
#include "JSONSerializable.h"

#include <boost/property_tree/ptree.hpp>

#include <concepts>
#include <cstddef>
#include <iosfwd>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace zep_platform {

/// What a writer holds until somebody asks for its tree: a third of a property tree's size. Children keep the order of their adding.
struct HZEP_EXPORT JSONNode {
    std::string key;
    std::string value;
    std::vector<JSONNode> children;
    /// Position of the first child of each key; made by the first look-up among many children.
    std::unique_ptr<std::map<std::string, std::size_t, std::less<>>> index;

    JSONNode() = default;
    JSONNode(std::string nodeKey, std::string nodeValue);
    JSONNode(const JSONNode& other);
    JSONNode(JSONNode&&) noexcept = default;
    JSONNode& operator=(const JSONNode& other);
    JSONNode& operator=(JSONNode&&) noexcept = default;
    ~JSONNode();
};

/// Arguments that would turn into a boolean unseen; numbers are written as text.
template <class T>
concept JSONMisfit =
    !std::same_as<T, bool> &&
    (std::is_arithmetic_v<T> || std::is_enum_v<T> ||
     (std::is_pointer_v<T> && !std::is_convertible_v<T, const char*> && !std::is_convertible_v<T, const JSONSerializable*>));

/// A JSON document in the making. All scalars are text, and what is empty vanishes.
/// Keys are paths: "a.b" is the member "b" of the object "a".
class HZEP_EXPORT JSONWriter {
public:
    JSONWriter();
    JSONWriter(const JSONWriter& other);
    JSONWriter(JSONWriter&&) noexcept;
    JSONWriter& operator=(const JSONWriter& other);
    JSONWriter& operator=(JSONWriter&&) noexcept;
    ~JSONWriter();

    /// The document as a property tree. It is made on the first call and is the writer's state from then on: it shows what is added
    /// later, and what its holder changes is written. Costs three times the memory of a writer that is only written.
    boost::property_tree::ptree& getTree();
    const boost::property_tree::ptree& getTree() const;
    boost::property_tree::ptree& getOtherTree(JSONWriter& other) { return other.getTree(); }
    const boost::property_tree::ptree& getOtherTree(const JSONWriter& other) const { return other.getTree(); }

    /// There are no children; a value alone doesn't count.
    bool empty() const;

    /// Pretty-printed as boost::property_tree::write_json prints it, a line end at the end. Raises its json_parser_error for a tree
    /// with a value beside children, or for a stream that fails.
    void write(std::ostream& stream) const;

protected:
    void putValue_(std::string_view path, std::string value);
    void addTree_(std::string_view path, JSONWriter&& sub);
    void addTree_(std::string_view path, const boost::property_tree::ptree& tree);
    void addTree_(std::string_view path, boost::property_tree::ptree&& tree);
    void appendValue_(std::string value);
    void appendTree_(JSONWriter&& sub);

private:
    mutable JSONNode root_;
    mutable std::unique_ptr<boost::property_tree::ptree> tree_;
};

} // namespace zep_platform
