// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "lmx_reader.h"

#include <utility>

namespace lmx60 {
namespace {

/// Foreign text for a message, cut between two characters when it is long.
std::string quoted(std::string_view text) {
    if (text.size() <= c_xml_reader::max_quoted) {
        return "'" + std::string(text) + "'";
    }
    std::size_t end = c_xml_reader::max_quoted;
    while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80) {
        --end;
    }
    return "'" + std::string(text.substr(0, end)) + "...'";
}

} // namespace

c_cracked_name::c_cracked_name(int element_ns_id, std::string_view local_name) : ns_id_(element_ns_id), local_name_(local_name) {}

c_any_info::c_any_info(std::string xml) : xml_(std::move(xml)) {}

c_xml_reader::c_xml_reader(c_read& source, std::string source_file) : c_xml(source), source_file_(std::move(source_file)) {}
c_xml_reader::~c_xml_reader() = default;

void c_xml_reader::set_ns_map(const s_ns_map* map) {
    set_namespaces(map);
}
void c_xml_reader::add_namespace_mapping(int id, const std::string& uri) {
    add_namespace(id, uri);
}
void c_xml_reader::set_source_file(const std::string& file) {
    source_file_ = file;
}
void c_xml_reader::set_document_flag(int flag) {
    document_flag_ = flag;
}

int c_xml_reader::search(const s_event_map* map, int ns_id, const char* name) {
    if (!map) {
        return event_none;
    }
    const std::string_view wanted = name;
    const s_event_map* row = map;
    while (row->name && (row->length != wanted.size() || row->ns_id != ns_id || wanted != std::string_view(row->name, row->length))) {
        ++row;
    }
    const int event = row->name ? row->event : event_none;
    known_place(map, name) = {map, name, ns_id, event};
    return event;
}

int c_xml_reader::tokenise(const s_event_map* map, elmx_name_kind kind) {
    if (kind == name_of_attribute) {
        event_ = look_up(map, attribute_ns_id(attribute_), attribute_local_name(attribute_).data());
        if (event_ == event_none) {
            skipped_hook(kind, std::string(attribute_name(attribute_)), attribute_line(attribute_), map);
        }
    } else {
        event_ = at_element() ? look_up(map, next_ns_id(), next_local_name().data()) : event_none;
    }
    return event_;
}

c_cracked_name c_xml_reader::get_cracked_name() {
    return at_element() ? c_cracked_name(next_ns_id(), next_local_name()) : c_cracked_name(ns_unknown, {});
}

bool c_xml_reader::get_element_event(elmx_error* error, std::string* name) {
    while (peek() == xml_event_kind::text) {
        pop();
    }
    if (peek() == xml_event_kind::failed) {
        *error = report_failure();
        return false;
    }
    if (peek() != xml_event_kind::start) {
        line_ = next_line();
        return false;
    }
    line_ = next_line();
    if (name && next_local_name().size() <= max_quoted) {
        *name = next_local_name();
    }
    return true;
}

int c_xml_reader::get_element_event(const s_event_map* map, elmx_error* error, std::string* name) {
    return get_element_event(error, name) ? tokenise(map, name_of_element) : (event_ = event_none);
}

int c_xml_reader::get_known_element_event(const s_event_map* map, elmx_error* error, std::string* name) {
    event_ = event_none;
    while (get_element_event(error, name)) {
        if (tokenise(map, name_of_element) != event_none ||
            look_up(known_elements_, next_ns_id(), next_local_name().data()) != event_none) {
            break;
        }
        skipped_hook(name_of_element, std::string(next_name()), next_line(), map);
        pop();
        skip_rest_of_element();
    }
    return event_;
}

bool c_xml_reader::leave_element(elmx_error* error) {
    if (peek() == xml_event_kind::failed) {
        *error = report_failure();
        return false;
    }
    if (peek() == xml_event_kind::end) {
        pop();
    }
    return true;
}

elmx_error c_xml_reader::finish_document() {
    xml_event_kind kind = peek();
    for (; kind != xml_event_kind::failed && kind != xml_event_kind::end_of_document; kind = peek()) {
        pop();
    }
    return kind == xml_event_kind::failed ? report_failure() : error_none;
}

elmx_error c_xml_reader::unmarshal_attribute_value_impl(c_unmarshal_bridge& bridge, const c_validation_spec& spec) {
    return store(bridge, spec, attribute_value(attribute_), nullptr);
}

elmx_error c_xml_reader::unmarshal_child_element_impl(c_unmarshal_bridge& bridge, const c_validation_spec& spec, const s_event_map* map) {
    const s_element element = {next_name(), next_local_name(), next_line()};
    enter_element();
    while (next_attribute()) {
        tokenise(nullptr, name_of_attribute);
    }
    std::string value;
    elmx_error error = get_element_value(&value, whitespace_preserve);
    if (error != error_none || !leave_element(&error)) {
        return error;
    }
    error = store(bridge, spec, value, &element);
    if (error == error_none) {
        get_known_element_event(map, &error, nullptr);
    }
    return error;
}

elmx_error c_xml_reader::get_element_value(std::string* value, elmx_whitespace whitespace) {
    value->clear();
    for (;;) {
        switch (peek()) {
        case xml_event_kind::text:
            value->append(next_text());
            pop();
            break;
        case xml_event_kind::start:
            if (look_up(known_elements_, next_ns_id(), next_local_name().data()) == event_none) {
                skipped_hook(name_of_element, std::string(next_name()), next_line(), nullptr);
                pop();
                skip_rest_of_element();
            } else if (const elmx_error error = report_unexpected(); error != error_none) {
                return error;
            }
            break;
        case xml_event_kind::failed:
            return report_failure();
        default:
            if (whitespace == whitespace_collapse) {
                *value = collapse_whitespace(*value);
            }
            return error_none;
        }
    }
}

elmx_error c_xml_reader::store(c_unmarshal_bridge& bridge, const c_validation_spec& spec, std::string_view value,
                               const s_element* element) {
    std::string collapsed;
    std::string_view text = value;
    if (spec.whitespace == whitespace_collapse && text.find_first_of(" \t\r\n") != std::string_view::npos) {
        text = collapsed = collapse_whitespace(value);
    }
    const auto refuse = [&](elmx_error code, const std::string& why) {
        const s_element at =
            element ? *element : s_element{attribute_name(attribute_), attribute_local_name(attribute_), attribute_line(attribute_)};
        const std::string what = std::string(element ? "element" : "attribute") + " '" + std::string(at.written_name) + "': ";
        return report(code, std::string(at.local_name), what + why + ": " + quoted(text), at.line);
    };
    elmx_error error = error_none;
    if (spec.is_valid && !spec.is_valid(text)) {
        error = refuse(error_not_valid, std::string("not ") + spec.type_name);
    }
    if (error == error_none && spec.lower && compare(text, *spec.lower) < 0) {
        error = refuse(error_below_bound, "less than " + spec.lower->get_as_string());
    }
    if (error == error_none && spec.upper && compare(text, *spec.upper) > 0) {
        error = refuse(error_above_bound, "more than " + spec.upper->get_as_string());
    }
    if (error == error_none && !bridge.assign(text)) {
        error = refuse(error_not_valid, "not an allowed value");
    }
    return error;
}

elmx_error c_xml_reader::capture_error(elmx_error code, const std::string& item, const std::string& file, int line) {
    captured_.set(code, item, file, line);
    return code;
}

elmx_error c_xml_reader::report(elmx_error code, const std::string& item, const std::string& text, int line) {
    line_ = line;
    error_text_ = text;
    return error_hook(capture_error(code, item, source_file_, line), item, source_file_, line);
}

elmx_error c_xml_reader::report_unexpected() {
    const std::string name = get_next_name();
    const elmx_error error =
        report(error_unexpected_element, std::string(next_local_name()), "unexpected element '" + name + "'", next_line());
    if (error == error_none) {
        pop();
        skip_rest_of_element();
    }
    return error;
}

elmx_error c_xml_reader::report_failure() {
    if (failure_ == error_none) {
        const elmx_error answer = report(failure_code(), item_, failure_text(), failure_line());
        failure_ = answer != error_none ? answer : failure_code();
    }
    return failure_;
}

int c_xml_reader::get_next_line() {
    return peek() == xml_event_kind::failed ? failure_line() : next_line();
}

std::string c_xml_reader::get_next_name() {
    if (!at_element()) {
        return {};
    }
    const std::string text = quoted(next_name());
    return text.substr(1, text.size() - 2);
}

elmx_error c_xml_reader::error_hook(elmx_error code, const std::string& item, const std::string& file, int line) {
    debug_error.set(code, item, file, line);
    if (code != error_none) {
        throw c_lmx_reader_exception(code, line, error_text_);
    }
    return after_error_hook(code);
}

elmx_error c_xml_reader::after_error_hook(elmx_error code) {
    return code;
}

void c_xml_reader::skipped_hook(elmx_name_kind, const std::string&, int, const s_event_map*) {}

c_xml_reader_local::c_xml_reader_local(c_xml_reader& reader)
    : reader_(reader), item_(reader.item_), known_elements_(reader.known_elements_), event_(reader.event_),
      document_flag_(reader.document_flag_) {}

c_xml_reader_local::~c_xml_reader_local() {
    reader_.item_.swap(item_);
    reader_.known_elements_ = known_elements_;
    reader_.event_ = event_;
    reader_.document_flag_ = document_flag_;
}

c_known_elements_selector::c_known_elements_selector(c_xml_reader& reader, const s_event_map* known_elements)
    : reader_(reader), before_(reader.known_elements_) {
    reader.known_elements_ = known_elements;
}

c_known_elements_selector::~c_known_elements_selector() {
    reader_.known_elements_ = before_;
}

c_xml_reader_file::c_xml_reader_file(const char* file)
    : c_read_file(file), c_xml_reader(static_cast<c_read_file&>(*this), file ? file : "") {}
c_xml_reader_file::~c_xml_reader_file() = default;

c_xml_reader_memory::c_xml_reader_memory(const char* buffer, std::size_t length)
    : c_read_memory(buffer, length), c_xml_reader(static_cast<c_read_memory&>(*this)) {}
c_xml_reader_memory::~c_xml_reader_memory() = default;

c_unmarshal_helper::c_unmarshal_helper(c_xml_reader& reader) : reader_(reader) {}
c_unmarshal_helper::~c_unmarshal_helper() = default;

elmx_error c_unmarshal_helper::unmarshal_start(const std::string& file, int line) {
    reader_.enter_element();
    elmx_error error = error_none;
    while (error == error_none && reader_.next_attribute()) {
        unmarshal_attributes(&error);
    }
    reader_.set_source_file(file);
    reader_.set_source_line(line);
    return error != error_none ? error : unmarshal_attributes_check();
}

elmx_error c_unmarshal_helper::unmarshal_complex_content(const std::string& file, int line) {
    elmx_error error = unmarshal_start(file, line);
    if (error == error_none) {
        unmarshal_body(&error);
    }
    if (error == error_none) {
        reader_.leave_element(&error);
    }
    return error;
}

elmx_error c_unmarshal_helper::unmarshal_empty_content(const std::string& file, int line) {
    elmx_error error = unmarshal_start(file, line);
    if (error == error_none) {
        unmarshal_simple_body(&error);
    }
    return error;
}

elmx_error c_unmarshal_helper::unmarshal_simple_body(elmx_error* error) {
    std::string ignored;
    *error = reader_.get_element_value(&ignored, whitespace_preserve);
    if (*error == error_none) {
        reader_.leave_element(error);
    }
    return *error;
}

} // namespace lmx60
