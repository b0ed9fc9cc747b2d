// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "lmx_spec.h"
#include "lmx_xml.h"

#include <iosfwd>
#include <string>

namespace lmx60 {

/// Writes elements as text. Layout strings that aren't given are the process-wide defaults, which nothing locks.
class HOST_EXPORT c_xml_writer {
public:
    enum flags { include_xml_decl = 1 };

    /// The stream must outlive the writer. Null means the default.
    explicit c_xml_writer(std::ostream& out, int flag_bits = 0, const char* tab = nullptr, const char* nl = nullptr,
                          const char* attribute_tab = nullptr, const char* attribute_nl = nullptr);
    ~c_xml_writer();
    c_xml_writer(const c_xml_writer&) = delete;
    c_xml_writer& operator=(const c_xml_writer&) = delete;

    /// Written once per depth level before a tag; two blanks at first.
    static void set_default_tab(const std::string& text);
    /// Line ending; a line feed at first.
    static void set_default_nl(const std::string& text);
    /// Written once per depth level before an attribute; empty at first.
    static void set_default_attribute_tab(const std::string& text);
    /// Written before each attribute; one blank at first.
    static void set_default_attribute_nl(const std::string& text);

    /// Opens an element: attributes may follow until something is written inside it.
    void start_tag(const char* name);
    /// Closes the element that was opened last.
    void end_tag(const char* name);
    /// Writes name="text"; a member that isn't set writes nothing.
    elmx_error marshal_attribute_impl(const char* name, const c_marshal_bridge& bridge);
    /// Writes an element with text; a member that isn't set writes nothing. A map makes it a document element.
    elmx_error marshal_element_impl(const char* name, const c_marshal_bridge& bridge, const s_ns_map* namespaces);

    /// Only the first map counts: namespaces are declared on the document element.
    void conditionally_select_ns_map(const s_ns_map* namespaces);
    /// Writes the declarations once; again only when forced.
    void conditionally_write_ns_attrs(bool force);

    /// Records an error and gives its code back.
    elmx_error capture_error(elmx_error code, const std::string& item, const std::string& file, int line);
    const s_debug_error& get_captured_error() const { return captured_; }

private:
    friend class c_xml_writer_local;

    void close_start_tag();
    void indent();
    void write_attribute(const std::string& name, const std::string& escaped);

    std::ostream& out_;
    std::string tab_;
    std::string nl_;
    std::string attribute_tab_;
    std::string attribute_nl_;
    const s_ns_map* namespaces_ = nullptr;
    s_debug_error captured_;
    int depth_ = 0;
    bool tag_is_open_ = false;
    bool ns_attrs_written_ = false;
};

/// Puts a writer's depth back, so that it stays usable for its owner after an element failed half way.
class HOST_EXPORT c_xml_writer_local {
public:
    explicit c_xml_writer_local(c_xml_writer& writer);
    ~c_xml_writer_local();
    c_xml_writer_local(const c_xml_writer_local&) = delete;
    c_xml_writer_local& operator=(const c_xml_writer_local&) = delete;

private:
    c_xml_writer& writer_;
    int depth_;
};

} // namespace lmx60
