// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "lmx_writer.h"

#include <ostream>

namespace lmx60 {
namespace {

struct s_layout {
    std::string tab = "  ";
    std::string nl = "\n";
    std::string attribute_tab;
    std::string attribute_nl = " ";
};

s_layout& defaults() {
    static s_layout layout;
    return layout;
}

std::string given(const char* text, const std::string& otherwise) {
    return text ? text : otherwise;
}

} // namespace

c_xml_writer::c_xml_writer(std::ostream& out, int flag_bits, const char* tab, const char* nl, const char* attribute_tab,
                           const char* attribute_nl)
    : out_(out), tab_(given(tab, defaults().tab)), nl_(given(nl, defaults().nl)),
      attribute_tab_(given(attribute_tab, defaults().attribute_tab)), attribute_nl_(given(attribute_nl, defaults().attribute_nl)) {
    if (flag_bits & include_xml_decl) {
        out_ << R"(<?xml version="1.0" encoding="UTF-8"?>)" << nl_;
    }
}
c_xml_writer::~c_xml_writer() = default;

void c_xml_writer::set_default_tab(const std::string& text) {
    defaults().tab = text;
}
void c_xml_writer::set_default_nl(const std::string& text) {
    defaults().nl = text;
}
void c_xml_writer::set_default_attribute_tab(const std::string& text) {
    defaults().attribute_tab = text;
}
void c_xml_writer::set_default_attribute_nl(const std::string& text) {
    defaults().attribute_nl = text;
}

void c_xml_writer::close_start_tag() {
    if (tag_is_open_) {
        out_ << '>' << nl_;
        tag_is_open_ = false;
    }
}

void c_xml_writer::indent() {
    for (int i = 0; i < depth_; ++i) {
        out_ << tab_;
    }
}

void c_xml_writer::start_tag(const char* name) {
    close_start_tag();
    indent();
    out_ << '<' << name;
    ++depth_;
    tag_is_open_ = true;
}

void c_xml_writer::end_tag(const char* name) {
    --depth_;
    if (tag_is_open_) {
        out_ << "/>";
        tag_is_open_ = false;
    } else {
        indent();
        out_ << "</" << name << '>';
    }
    out_ << nl_;
}

void c_xml_writer::write_attribute(const std::string& name, const std::string& escaped) {
    out_ << attribute_nl_;
    for (int i = 0; i < depth_; ++i) {
        out_ << attribute_tab_;
    }
    out_ << name << "=\"" << escaped << '"';
}

elmx_error c_xml_writer::marshal_attribute_impl(const char* name, const c_marshal_bridge& bridge) {
    if (!bridge.is_set()) {
        return error_none;
    }
    if (!bridge.is_writable()) {
        return capture_error(error_bad_character, name, {}, 0);
    }
    write_attribute(name, output_convert_to_xml(bridge.get_text(), place_attribute));
    return error_none;
}

elmx_error c_xml_writer::marshal_element_impl(const char* name, const c_marshal_bridge& bridge, const s_ns_map* namespaces) {
    if (!bridge.is_set()) {
        return error_none;
    }
    if (!bridge.is_writable()) {
        return capture_error(error_bad_character, name, {}, 0);
    }
    start_tag(name);
    if (namespaces) {
        conditionally_select_ns_map(namespaces);
        conditionally_write_ns_attrs(false);
    }
    const std::string text = output_convert_to_xml(bridge.get_text(), place_element);
    if (text.empty()) {
        end_tag(name);
        return error_none;
    }
    out_ << '>' << text << "</" << name << '>' << nl_;
    tag_is_open_ = false;
    --depth_;
    return error_none;
}

void c_xml_writer::conditionally_select_ns_map(const s_ns_map* namespaces) {
    if (!namespaces_) {
        namespaces_ = namespaces;
    }
}

void c_xml_writer::conditionally_write_ns_attrs(bool force) {
    if (ns_attrs_written_ && !force) {
        return;
    }
    ns_attrs_written_ = true;
    for (const s_ns_map* row = namespaces_; row && row->uri; ++row) {
        write_attribute(std::string("xmlns") + (*row->prefix ? ":" : "") + row->prefix,
                        output_convert_to_xml(std::string(row->uri), place_attribute));
    }
}

elmx_error c_xml_writer::capture_error(elmx_error code, const std::string& item, const std::string& file, int line) {
    captured_.set(code, item, file, line);
    return code;
}

c_xml_writer_local::c_xml_writer_local(c_xml_writer& writer) : writer_(writer), depth_(writer.depth_) {}
c_xml_writer_local::~c_xml_writer_local() {
    writer_.depth_ = depth_;
}

} // namespace lmx60
