// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "TextLayout.h"

namespace editing {

std::string_view getBlanksBefore(const TextTree& tree, Index at) {
    const std::string_view before = std::string_view(tree.getText()).substr(0, at);
    const std::size_t last = before.find_last_not_of(" \t\r\n");
    return before.substr(last == before.npos ? 0 : last + 1);
}

std::string getIndent(std::string_view blanks) {
    const std::size_t lineEnd = blanks.find_last_of("\r\n");
    return std::string(blanks.substr(lineEnd == blanks.npos ? 0 : lineEnd + 1));
}

std::string getLineEnd(const TextTree& tree) {
    const std::size_t at = tree.getText().find('\n');
    return at != std::string::npos && at > 0 && tree.getText()[at - 1] == '\r' ? "\r\n" : "\n";
}

std::string getUnit(const std::string& outer, const std::string& inner, const char* otherwise) {
    return inner.size() > outer.size() && inner.starts_with(outer) ? inner.substr(outer.size()) : otherwise;
}

} // namespace editing
