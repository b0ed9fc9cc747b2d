// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "LintTree.h"

#include <array>
#include <string_view>
#include <unordered_map>

namespace lint {

inline constexpr char kRoot[] = "/";

/// What a row of a table looks at: objects of the name `holder` (kRoot: the document's own), or, with an item, the objects of that name in
/// them ("" in a list).
struct Holder {
    Kind kind;
    const char* holder;
    const char* item = nullptr;
};

/// The rows of a table by what they look at, so that a document's size isn't multiplied by the table's.
template <class Row>
class ByHolder {
public:
    template <std::size_t Size>
    explicit ByHolder(const Row (&table)[Size]) {
        for (const Row& row : table)
            rows_.at(static_cast<std::size_t>(row.kind))[row.holder].push_back(&row);
    }

    template <class Take>
    void apply(Kind kind, const Node& root, const Node& node, const Take& take) const {
        applyTo(kind, node.name, node, take);
        if (&node == &root)
            applyTo(kind, kRoot, node, take);
    }

private:
    template <class Take>
    void applyTo(Kind kind, std::string_view name, const Node& node, const Take& take) const {
        const auto& rows = rows_.at(static_cast<std::size_t>(kind));
        const auto found = rows.find(name);
        if (found == rows.end())
            return;
        for (const Row* row : found->second)
            if (!row->item) {
                if (node.form == Node::Object)
                    take(*row, node);
            } else {
                forEachItem(&node, row->item, [&](const Node& item) { take(*row, item); });
            }
    }

    std::array<std::unordered_map<std::string_view, std::vector<const Row*>>, kKinds> rows_;
};

} // namespace lint
