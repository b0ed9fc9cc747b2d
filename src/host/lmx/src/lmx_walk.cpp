// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "lmx_walk.h"

#include <cstring>

namespace lmx60 {
namespace {

std::string local_part(const char* written_name) {
    const char* colon = std::strchr(written_name, ':');
    return colon ? colon + 1 : written_name;
}

} // namespace

void c_attribute_check::report(const char* name) {
    const std::string& element = reader_.get_current_item();
    error_ = reader_.report(error_missing_attribute, element, "element '" + element + "': attribute '" + name + "' is missing",
                            reader_.get_source_line());
}

c_body_walk::c_body_walk(c_xml_reader& reader, const s_event_map* map, elmx_error* error)
    : reader_(reader), map_(map), error_(error), parent_(reader.get_current_item()) {
    reader_.get_known_element_event(map_, error_, nullptr);
}

void c_body_walk::next() {
    if (*error_ == error_none) {
        reader_.set_current_item(parent_);
        reader_.get_known_element_event(map_, error_, nullptr);
    }
}

void c_body_walk::missing(const char* name) {
    if (*error_ != error_none) {
        return;
    }
    const int event = reader_.get_current_event();
    *error_ = reader_.report(error_missing_element, local_part(name), "element '" + std::string(name) + "' is missing in '" + parent_ + "'",
                             reader_.get_next_line());
    reader_.set_current_event(event);
}

void c_body_walk::no_choice() {
    if (*error_ == error_none) {
        *error_ = reader_.report(error_no_choice, parent_, "element '" + parent_ + "': " + get_error_description(error_no_choice),
                                 reader_.get_next_line());
    }
}

bool c_body_walk::end() {
    while (*error_ == error_none && reader_.at_element()) {
        *error_ = reader_.report_unexpected();
        next();
    }
    return *error_ == error_none;
}

bool is_member(c_xml_reader& reader, const s_event_map* first_elements) {
    const int event = reader.get_current_event();
    if (reader.tokenise(first_elements, name_of_element) != event_none) {
        return true;
    }
    reader.set_current_event(event);
    return false;
}

elmx_error open_document(c_xml_reader& reader, const s_ns_map* namespaces, const s_event_map* roots, const char* expected,
                         std::string* name) {
    reader.set_ns_map(namespaces);
    reader.set_document_flag(1);
    elmx_error error = error_none;
    const int event = reader.get_element_event(roots, &error, name);
    if (error == error_none && event == event_none) {
        const std::string found = reader.get_next_name();
        error = reader.report(error_wrong_root, *name, "element '" + found + "': the document element must be " + expected,
                              reader.get_next_line());
    }
    return error;
}

c_marshal_walk& c_marshal_walk::nothing_selected() {
    if (error_ == error_none) {
        error_ = writer_.capture_error(error_nothing_selected, "{anonymous compositor}", {}, 0);
    }
    return *this;
}

void throw_incomplete(const char* name) {
    throw lmx_exception("'" + std::string(name) + "' can't be written: a mandatory attribute or child is missing");
}

} // namespace lmx60
