// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include <cstddef>

namespace lmx60 {

/// Counts the attributes of each tag in bytes before the parser sees them: the parser compares all attributes of an element with each
/// other, so an element with a million of them must not reach it. Exact as long as the text is well-formed; beyond that the parser stops.
class c_tag_scan {
public:
    /// True while no tag has more attributes than the limit.
    bool scan(const char* bytes, std::size_t count, std::size_t limit);

    /// True when the bytes are read two by two.
    bool is_utf16() const { return width_ == width::little || width_ == width::big; }

    /// True when the second byte of a pair is missing so far.
    bool has_half() const { return has_pending_; }

private:
    enum class width { unknown, single, little, big };
    enum class state { text, open, tag, quoted, bang, comment_open, comment, cdata, instruction, document_type };

    bool step(char unit, std::size_t limit);

    width width_ = width::unknown;
    state state_ = state::text;
    char pending_ = 0; // first byte of a pair
    bool has_pending_ = false;
    char quote_ = 0;
    std::size_t run_ = 0; // dashes, brackets or question marks in a row
    std::size_t attributes_ = 0;
};

} // namespace lmx60
