// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "lmx_tag_scan.h"

#include <cstring>

namespace lmx60 {
namespace {

constexpr std::size_t shortest_attribute = 4; // a=""

const char* find(const char* from, const char* end, char wanted) {
    return static_cast<const char*>(std::memchr(from, wanted, static_cast<std::size_t>(end - from)));
}

/// From text to the next "<" that needs a look. No tag holds another "<": one with the next "<" near is too short to reach the limit.
const char* next_markup(const char* from, const char* end, std::size_t limit) {
    const char* at = find(from, end, '<');
    for (const char* next = nullptr; at; at = next) {
        next = find(at + 1, end, '<');
        if (!next || at[1] == '!' || at[1] == '?' || static_cast<std::size_t>(next - at) > limit * shortest_attribute) {
            break;
        }
    }
    return at;
}

} // namespace

bool c_tag_scan::scan(const char* bytes, std::size_t count, std::size_t limit) {
    if (width_ == width::unknown && count >= 2) {
        const bool is_little = (bytes[0] == '\xff' && bytes[1] == '\xfe') || (bytes[0] == '<' && bytes[1] == 0);
        const bool is_big = (bytes[0] == '\xfe' && bytes[1] == '\xff') || (bytes[0] == 0 && bytes[1] == '<');
        width_ = is_little ? width::little : is_big ? width::big : width::single;
    }
    const char* const end = bytes + count;
    if (!is_utf16()) {
        while (bytes != end) {
            if (state_ == state::text || state_ == state::quoted) {
                bytes = state_ == state::text ? next_markup(bytes, end, limit) : find(bytes, end, quote_);
                if (!bytes) {
                    return true;
                }
            } else if (state_ == state::tag) {
                while (bytes != end && *bytes != '"' && *bytes != '\'' && *bytes != '>') {
                    ++bytes;
                }
                if (bytes == end) {
                    return true;
                }
            }
            if (!step(*bytes++, limit)) {
                return false;
            }
        }
        return true;
    }
    for (; bytes != end; ++bytes) {
        if (!has_pending_) {
            pending_ = *bytes;
            has_pending_ = true;
            continue;
        }
        has_pending_ = false;
        const char high = width_ == width::little ? *bytes : pending_;
        const char low = width_ == width::little ? pending_ : *bytes;
        if (!step(high == 0 ? low : 'x', limit)) {
            return false;
        }
    }
    return true;
}

bool c_tag_scan::step(char unit, std::size_t limit) {
    const auto ends = [&](char repeated, std::size_t times) {
        const bool is_end = unit == '>' && run_ >= times;
        run_ = unit == repeated ? run_ + 1 : 0;
        return is_end;
    };
    switch (state_) {
    case state::text:
        state_ = unit == '<' ? state::open : state::text;
        break;
    case state::open:
        attributes_ = 0;
        run_ = 0;
        state_ = unit == '!' ? state::bang : unit == '?' ? state::instruction : unit == '>' ? state::text : state::tag;
        break;
    case state::tag:
        if (unit == '"' || unit == '\'') {
            quote_ = unit;
            state_ = state::quoted;
            return ++attributes_ <= limit;
        }
        state_ = unit == '>' ? state::text : state::tag;
        break;
    case state::quoted:
        state_ = unit == quote_ ? state::tag : state::quoted;
        break;
    case state::bang:
        state_ = unit == '-' ? state::comment_open : unit == '[' ? state::cdata : state::document_type;
        break;
    case state::comment_open:
        state_ = state::comment;
        break;
    case state::comment:
        state_ = ends('-', 2) ? state::text : state::comment;
        break;
    case state::cdata:
        state_ = ends(']', 2) ? state::text : state::cdata;
        break;
    case state::instruction:
        state_ = ends('?', 1) ? state::text : state::instruction;
        break;
    case state::document_type: // the parser stops here
        break;
    }
    return true;
}

} // namespace lmx60
