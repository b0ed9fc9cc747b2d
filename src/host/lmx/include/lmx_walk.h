// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "lmx_reader.h"
#include "lmx_writer.h"

#include <string>
#include <type_traits>

namespace lmx60 {

/// Reads the current attribute into a member: the tail of each class's unmarshal_attributes. Always true: the attribute was known.
template <class Member>
bool read_attribute(c_xml_reader& reader, Member& member, [[maybe_unused]] const ct_validation_spec<typename Member::value_type>& spec,
                    elmx_error* error) {
    if constexpr (std::is_same_v<typename Member::value_type, c_text>) { // nothing to check, and most values are text
        member.set().assign(reader.get_attribute_text());
        *error = error_none;
    } else {
        ct_unmarshal_bridge<Member> bridge(member, spec);
        *error = reader.unmarshal_attribute_value_impl(bridge, spec);
    }
    return true;
}

/// The attribute check of one element: ask for each mandatory attribute, then take the result.
class HOST_EXPORT c_attribute_check {
public:
    explicit c_attribute_check(c_xml_reader& reader) : reader_(reader) {}
    c_attribute_check& require(bool is_set, const char* name) {
        if (!is_set && error_ == error_none) {
            report(name);
        }
        return *this;
    }
    elmx_error result() const { return error_; }

private:
    void report(const char* name);

    c_xml_reader& reader_;
    elmx_error error_ = error_none;
};

/// Walks the children of one element strictly in schema order. After the first error that a hook doesn't let pass it does nothing more.
class HOST_EXPORT c_body_walk {
public:
    /// Moves to the first child.
    c_body_walk(c_xml_reader& reader, const s_event_map* map, elmx_error* error);

    /// True when the next child has this number.
    bool at(int event) const { return *error_ == error_none && reader_.get_current_event() == event; }

    /// True when the next child starts the model group; leaves the current event as it was if not.
    template <class Group>
    bool at_group() const {
        return *error_ == error_none && Group::IsMember(reader_);
    }

    template <class Member>
    c_body_walk& simple(int event, const char* name, Member& member, const ct_validation_spec<typename Member::value_type>& spec) {
        if (at(event)) {
            ct_unmarshal_bridge<Member> bridge(member, spec);
            *error_ = reader_.unmarshal_child_element_impl(bridge, spec, map_);
        } else if (!Member::is_optional) {
            missing(name);
        }
        return *this;
    }

    template <class Child>
    c_body_walk& single(int event, const char* name, ct_child<Child>& child, bool is_mandatory) {
        if (at(event)) {
            read(child.get());
        } else if (is_mandatory) {
            missing(name);
        }
        return *this;
    }

    template <class Child>
    c_body_walk& repeating(int event, const char* name, ct_child_list<Child>& children, bool is_mandatory) {
        const bool matched = at(event);
        while (at(event)) {
            read(children.append());
        }
        if (!matched && is_mandatory) {
            missing(name);
        }
        return *this;
    }

    template <class Group>
    c_body_walk& group(const char* name, ct_child<Group>& child, bool is_mandatory) {
        if (at_group<Group>()) {
            read_group(child.get());
        } else if (is_mandatory) {
            missing(name);
        }
        return *this;
    }

    template <class Group>
    c_body_walk& groups(const char* name, ct_child_list<Group>& children, bool is_mandatory) {
        const bool matched = at_group<Group>();
        while (at_group<Group>()) {
            read_group(children.append());
        }
        if (!matched && is_mandatory) {
            missing(name);
        }
        return *this;
    }

    /// Of a mandatory choice: no member matched.
    void no_choice();
    /// Of an element: what is left is unexpected. Of a model group: the rest is its parent's.
    bool end();
    bool leave() const { return *error_ == error_none; }

private:
    template <class Child>
    void read(Child& child) {
        *error_ = child.unmarshal(reader_, reader_.get_cracked_name().get_local_name());
        next();
    }
    template <class Group>
    void read_group(Group& group) {
        *error_ = group.unmarshal(reader_, parent_);
        if (*error_ == error_none) {
            reader_.tokenise(map_, name_of_element);
        }
    }
    void next();
    void missing(const char* name);

    c_xml_reader& reader_;
    const s_event_map* map_;
    elmx_error* error_;
    std::string parent_; // name of the element whose children these are
};

/// Reads one element into an object of an element's class.
template <class Binding>
elmx_error unmarshal_element(Binding& object, c_xml_reader& reader, const std::string& name, bool has_children) {
    reader.set_current_item(name);
    const c_known_elements_selector selector(reader, Binding::known_elements);
    ct_unmarshal_helper<Binding> helper(object, reader);
    const std::string& file = reader.get_source_file();
    const int line = reader.get_next_line();
    return has_children ? helper.unmarshal_complex_content(file, line) : helper.unmarshal_empty_content(file, line);
}

/// True when the start tag that comes next is in the table; leaves the current event as it was if not.
HOST_EXPORT bool is_member(c_xml_reader& reader, const s_event_map* first_elements);

/// Starts a document: namespaces, then the document element, which must be in the map; its local name comes back. A code that a hook lets
/// pass is error_none.
HOST_EXPORT elmx_error open_document(c_xml_reader& reader, const s_ns_map* namespaces, const s_event_map* roots, const char* expected,
                                     std::string* name);

/// Reads a document into an object of a root class.
template <class Binding>
elmx_error unmarshal_document(Binding& object, c_xml_reader& reader, const s_ns_map* namespaces, const s_event_map* roots,
                              const char* expected) {
    const c_xml_reader_local local(reader);
    std::string name;
    elmx_error error = open_document(reader, namespaces, roots, expected, &name);
    if (error == error_none && reader.at_element()) {
        error = object.unmarshal(reader, name);
    }
    return error == error_none ? reader.finish_document() : error;
}

/// Writes the members of one object in schema order. After the first error it does nothing more.
class HOST_EXPORT c_marshal_walk {
public:
    explicit c_marshal_walk(c_xml_writer& writer) : writer_(writer) {}

    template <class Member>
    c_marshal_walk& attribute(const char* name, const Member& member, const ct_validation_spec<typename Member::value_type>& spec) {
        if (error_ == error_none) {
            error_ = writer_.marshal_attribute_impl(name, ct_marshal_bridge<Member>(member, spec));
        }
        return *this;
    }

    template <class Member>
    c_marshal_walk& simple(const char* name, const Member& member, const ct_validation_spec<typename Member::value_type>& spec) {
        if (error_ == error_none) {
            if (!Member::is_optional && !member.is_set()) {
                throw_absent(name);
            }
            error_ = writer_.marshal_element_impl(name, ct_marshal_bridge<Member>(member, spec), nullptr);
        }
        return *this;
    }

    template <class Child>
    c_marshal_walk& single(const char* name, const ct_child<Child>& child, bool is_mandatory) {
        if (error_ == error_none && (is_mandatory || child.is_set())) {
            error_ = child.get(name).marshal(writer_, name);
        }
        return *this;
    }

    template <class Child>
    c_marshal_walk& repeating(const char* name, const ct_child_list<Child>& children, bool is_mandatory) {
        if (is_mandatory && children.size() == 0) {
            throw_absent(name);
        }
        for (std::size_t i = 0; i < children.size() && error_ == error_none; ++i) {
            error_ = children.get(i).marshal(writer_, name);
        }
        return *this;
    }

    /// A choice with nothing selected.
    c_marshal_walk& nothing_selected();
    elmx_error result() const { return error_; }

private:
    c_xml_writer& writer_;
    elmx_error error_ = error_none;
};

/// Throws lmx_exception: a mandatory member of the element is missing.
[[noreturn]] HOST_EXPORT void throw_incomplete(const char* name);

/// Writes one element of an element's class. A root class gives the namespaces that the document element declares, else null.
template <class Binding>
elmx_error marshal_element(const Binding& object, c_xml_writer& writer, const char* name, const s_ns_map* namespaces) {
    if (!object.IsOccursOk()) {
        throw_incomplete(name);
    }
    const c_xml_writer_local local(writer);
    writer.start_tag(name);
    if (namespaces) {
        writer.conditionally_select_ns_map(namespaces);
        writer.conditionally_write_ns_attrs(false);
    }
    elmx_error error = object.marshal_attributes(writer);
    if (error == error_none) {
        error = object.marshal_child_elements(writer);
    }
    if (error == error_none) {
        writer.end_tag(name);
    }
    return error;
}

} // namespace lmx60
