// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include <cassert>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>

/// The text with each @name@ replaced by the value of that name. Values are taken as they are, an "@" in them too.
inline std::string fillTemplate(std::string_view text, std::initializer_list<std::pair<std::string_view, std::string_view>> values) {
    std::string filled;
    for (std::size_t at = text.find('@'); at != std::string_view::npos; at = text.find('@')) {
        const std::size_t end = text.find('@', at + 1);
        assert(end != std::string_view::npos);
        const std::string_view name = text.substr(at + 1, end - at - 1);
        filled += text.substr(0, at);
        [[maybe_unused]] bool isKnown = false;
        for (const auto& [known, value] : values)
            if (known == name) {
                filled += value;
                isKnown = true;
            }
        assert(isKnown);
        text.remove_prefix(end + 1);
    }
    return filled += text;
}
