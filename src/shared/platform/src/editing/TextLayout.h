// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "TextTree.h"

#include <map>
#include <set>
#include <string>
#include <vector>

namespace editing {

using Value = HZEPTextEdit::Value;

/// What is to be done to a tree, by the numbers of its nodes.
struct Changes {
    std::map<Index, Value> replaced;
    std::set<Index> removed;
    /// Into a container, before one of its children; before kNone: at the end.
    std::map<Index, std::map<Index, std::vector<Value>>> inserted;
    /// Containers of which children go or come.
    std::set<Index> rearranged;
    /// All containers with a change in them, however deep.
    std::set<Index> touched;
};

/// A stretch of the text and what stands in its place.
struct Splice {
    Index begin;
    Index end;
    std::string text;
};

/// Raises HostDataException for a value that the text can't hold.
std::vector<Splice> layOutJson(const TextTree& tree, const Changes& changes);
std::vector<Splice> layOutXml(const TextTree& tree, const Changes& changes);

/// The blanks in front of a place.
std::string_view getBlanksBefore(const TextTree& tree, Index at);
/// What of some blanks stands on the last line; all when there is no line end.
std::string getIndent(std::string_view blanks);
/// Line end of the text's first line, "\n" when there is none.
std::string getLineEnd(const TextTree& tree);
/// How much deeper `inner` is than `outer`, or a guess.
std::string getUnit(const std::string& outer, const std::string& inner, const char* otherwise);

} // namespace editing
