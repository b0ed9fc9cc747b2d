// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HZEPExport.h"
#include "HostFault.h"
#include "HostJson.h"

#include <boost/property_tree/json_parser/error.hpp>
#include <boost/property_tree/ptree.hpp>

#include <cstddef>
#include <functional>
#include <iosfwd>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>

/// A JSON text that can't be read, with its place as far as the reader knows it.
class HZEP_EXPORT HZEPJSONTextError : public boost::property_tree::json_parser::json_parser_error {
public:
    explicit HZEPJSONTextError(HostFault fault)
        : json_parser_error(fault.cause, fault.member.empty() ? fault.file : fault.file + ": " + fault.member, fault.line),
          fault_(std::move(fault)) {}
    const HostFault& getFault() const noexcept { return fault_; }

    /// The same fault of a text that stands in this file, or in this member of an archive.
    HZEPJSONTextError in(const std::string& file, const std::string& member = {}) const {
        return HZEPJSONTextError({file, member, fault_.line, fault_.column, fault_.cause});
    }

private:
    HostFault fault_;
};

/// JSON text to property tree and back, with the trees, bytes and exceptions of boost::property_tree's own functions, but bounded as
/// HostJson says, strict about UTF-8, and faster.
class HZEP_EXPORT HZEPJSONText {
public:
    /// Deepest nesting of objects and arrays that is read.
    static constexpr std::size_t kMaxDepth = HostJson::kMaxDepth;

    /// Replaces `out` by the text's tree. Raises HZEPJSONTextError with the line and leaves `out` as it is for a text that is no JSON, is
    /// nested deeper than kMaxDepth, or holds bytes that are no UTF-8; and with line 0 for one that is too large.
    static void read(const std::string& text, boost::property_tree::ptree& out);

    /// Lists of a document that are left as text beside its tree, by the name of the root's member. They are parts of the text that
    /// was read.
    using Lists = std::map<std::string, std::string_view, std::less<>>;

    /// The same, but an array that is the root's member under one of the names is only checked: it goes to `lists` in place of the
    /// tree. A tree takes nine times the memory of its text, so long lists are better read item by item. Of several members of
    /// one name only the first counts. `lists` may stay empty, and then the tree holds all.
    static void read(const std::string& text, boost::property_tree::ptree& out, const std::set<std::string, std::less<>>& names,
                     Lists& lists);
    static void read(std::string&& text, boost::property_tree::ptree& out, const std::set<std::string, std::less<>>& names,
                     Lists& lists) = delete;

    /// Hands over the items of such a list in their order, each as a tree that lives as long as the call.
    static void readItems(std::string_view list, const std::function<void(boost::property_tree::ptree& item)>& take);

    /// The whole tree of a file, with the file's name in the exception; a file that can't be read raises it too, with line 0.
    static void readFile(const std::string& path, boost::property_tree::ptree& out);

    /// What is wrong with a text that HostJson does not read, and in which line.
    static HostFault explain(const std::string& text);

    /// Pretty-printed, with a line end at the end. Raises json_parser_error for a tree that can't be JSON or a stream that fails.
    static void write(std::ostream& stream, const boost::property_tree::ptree& tree);
};
