// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "lmx_errors.h"

#include <utility>

namespace lmx60 {

s_debug_error debug_error;

const char* get_error_description(int code) {
    switch (code) {
    case error_none:
        return "no error";
    case error_no_file:
        return "the file can't be opened";
    case error_nothing_selected:
        return "a choice with nothing selected can't be written";
    case error_wrong_root:
        return "not the expected document element";
    case error_missing_element:
        return "a required element is missing";
    case error_missing_attribute:
        return "a required attribute is missing";
    case error_no_choice:
        return "none of the elements to choose from is there";
    case error_not_valid:
        return "not a valid value of its type";
    case error_above_bound:
        return "the value is too large";
    case error_below_bound:
        return "the value is too small";
    case error_not_read:
        return "nothing has been read yet";
    case error_not_well_formed:
        return "not well-formed XML";
    case error_bad_namespace:
        return "wrong use of namespaces";
    case error_document_type:
        return "a document type is not allowed";
    case error_too_deep:
        return "elements are nested too deep";
    case error_too_large:
        return "the document is larger than allowed";
    case error_unexpected_element:
        return "unexpected element";
    case error_bad_character:
        return "the value holds a character that XML can't carry";
    case error_write_failed:
        return "the output could not be written";
    default:
        return "unknown error";
    }
}

void s_debug_error::set(elmx_error code, const std::string& item_name, const std::string& file, int line_number, int column_number) {
    error = code;
    item = item_name;
    source_file = file;
    line = line_number;
    column = column_number;
    text.clear();
}

lmx_exception::lmx_exception(std::string text) : text_(std::move(text)) {}
lmx_exception::~lmx_exception() = default;
const char* lmx_exception::what() const noexcept {
    return text_.c_str();
}

c_lmx_exception::c_lmx_exception(elmx_error code, std::string text)
    : code_(code), text_(text.empty() ? get_error_description(code) : std::move(text)) {}
c_lmx_exception::~c_lmx_exception() = default;
const char* c_lmx_exception::what() const noexcept {
    return text_.c_str();
}

c_lmx_reader_exception::c_lmx_reader_exception(elmx_error code, int line, std::string text)
    : c_lmx_exception(code, std::move(text)), line_(line) {}
c_lmx_reader_exception::~c_lmx_reader_exception() = default;

} // namespace lmx60
