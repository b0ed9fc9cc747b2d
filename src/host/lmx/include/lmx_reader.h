// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "lmx_spec.h"
#include "lmx_xml.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace lmx60 {

/// One row of a name table; a table ends with a row whose name is null, and stays as it is while a reader uses it. Numbers start at 1.
struct HOST_EXPORT s_event_map {
    int ns_id;
    const char* name;
    std::size_t length;
    int event;
};

/// No row of a table matches, or there is no further element.
constexpr int event_none = 0;

enum elmx_name_kind { name_of_element, name_of_attribute };

/// A name taken apart.
class HOST_EXPORT c_cracked_name {
public:
    /// The name must outlive this; those of a document live as long as its reader.
    c_cracked_name(int element_ns_id, std::string_view local_name);
    int get_element_ns_id() const { return ns_id_; }
    std::string get_local_name() const { return std::string(local_name_); }

private:
    int ns_id_;
    std::string_view local_name_;
};

/// XML text of one element, kept as it stands with the namespace declarations that it needs.
class HOST_EXPORT c_any_info {
public:
    explicit c_any_info(std::string xml);
    const std::string& get_value() const { return xml_; }

private:
    std::string xml_;
};

/// Pull reader that bindings read from. Each fault is recorded with capture_error and then goes to error_hook; a subclass may turn faults
/// into return codes there. A hook that answers error_none lets a fault pass where reading can go on: not past a fault of the XML itself.
class HOST_EXPORT c_xml_reader : public c_xml {
public:
    /// The source must outlive the reader.
    explicit c_xml_reader(c_read& source, std::string source_file = {});
    ~c_xml_reader() override;

    /// To be called before anything is read. A null map is an empty one.
    void set_ns_map(const s_ns_map* map);
    void add_namespace_mapping(int id, const std::string& uri);
    void set_source_file(const std::string& file);
    /// 1 while a document is being read.
    void set_document_flag(int flag);

    const std::string& get_source_file() const { return source_file_; }
    int get_source_line() const { return line_; }
    void set_source_line(int line) { line_ = line; }
    const std::string& get_current_item() const { return item_; }
    void set_current_item(const std::string& item) { item_ = item; }

    int get_current_event() const { return event_; }
    void set_current_event(int event) { event_ = event; }
    /// Looks the current name up and makes its number the current event; event_none when no row has it.
    int tokenise(const s_event_map* map, elmx_name_kind kind);
    /// Name of the start tag that comes next.
    c_cracked_name get_cracked_name();

    /// Moves to the next start tag within the current element; true when there is one. With a map its number becomes the current event.
    bool get_element_event(elmx_error* error, std::string* name);
    int get_element_event(const s_event_map* map, elmx_error* error, std::string* name);
    /// The same, skipping what the selected table of known elements doesn't have. event_none: the end, or a known one that isn't in the
    /// map.
    int get_known_element_event(const s_event_map* map, elmx_error* error, std::string* name);
    /// True when a start tag comes next.
    bool at_element() { return peek() == xml_event_kind::start; }
    /// Takes the start tag that comes next: its attributes become readable.
    void enter_element() {
        line_ = next_line();
        before_first_attribute_ = true;
        pop();
    }
    /// Takes the end tag of the element that was entered; true when it came.
    bool leave_element(elmx_error* error);
    /// Reads what follows the document element.
    elmx_error finish_document();

    /// Moves to the next attribute of the start tag; false behind the last.
    bool next_attribute() {
        attribute_ = before_first_attribute_ ? 0 : attribute_ + 1;
        before_first_attribute_ = false;
        return attribute_ < attribute_count();
    }
    /// Value of the current attribute, until the reader moves on.
    std::string_view get_attribute_text() const { return attribute_value(attribute_); }

    elmx_error unmarshal_attribute_value_impl(c_unmarshal_bridge& bridge, const c_validation_spec& spec);
    /// Reads the element that comes next as a value, then moves on as get_known_element_event does.
    elmx_error unmarshal_child_element_impl(c_unmarshal_bridge& bridge, const c_validation_spec& spec, const s_event_map* map);
    /// Text of the element that was entered, up to its end tag, which stays. Unknown elements inside are skipped.
    elmx_error get_element_value(std::string* value, elmx_whitespace whitespace);

    /// Records an error and gives its code back.
    elmx_error capture_error(elmx_error code, const std::string& item, const std::string& file, int line);
    const s_debug_error& get_captured_error() const { return captured_; }
    /// Captures, then asks the hook. The text says more than the code does; empty means the code's description.
    elmx_error report(elmx_error code, const std::string& item, const std::string& text, int line);
    /// Reports the start tag that comes next as unexpected; when that passes, skips the element.
    elmx_error report_unexpected();
    /// Line of what comes next.
    int get_next_line();
    /// Name as written of the start tag that comes next.
    std::string get_next_name();

    /// Type, name and value parts of a message stay readable at this length, in bytes.
    static constexpr std::size_t max_quoted = 80;

protected:
    /// The default records the error in debug_error and throws c_lmx_reader_exception, or answers after_error_hook for error_none.
    virtual elmx_error error_hook(elmx_error code, const std::string& item, const std::string& file, int line);
    /// The default answers the code it was given.
    virtual elmx_error after_error_hook(elmx_error code);
    /// Called for each attribute and element that is passed over because no table knows it, with its name as written. The table holds what
    /// is known at this place; it is null where nothing is. The default does nothing.
    virtual void skipped_hook(elmx_name_kind kind, const std::string& written_name, int line, const s_event_map* known);
    /// Words for the fault that the hook was called for.
    const std::string& get_error_text() const { return error_text_; }

private:
    friend class c_xml_reader_local;
    friend class c_known_elements_selector;

    /// A simple element that was read.
    struct s_element {
        std::string_view written_name;
        std::string_view local_name;
        int line;
    };
    /// An answer of a name table. A name is known by its address: the parser keeps each name once.
    struct s_known_name {
        const s_event_map* map;
        const char* name;
        int ns_id;
        int event;
    };

    elmx_error report_failure();
    elmx_error store(c_unmarshal_bridge& bridge, const c_validation_spec& spec, std::string_view value, const s_element* element);

    s_known_name& known_place(const s_event_map* map, const char* name) {
        const std::uintptr_t key = reinterpret_cast<std::uintptr_t>(map) / sizeof(s_event_map) + reinterpret_cast<std::uintptr_t>(name);
        return known_names_[key % known_names_.size()];
    }
    int look_up(const s_event_map* map, int ns_id, const char* name) {
        const s_known_name& known = known_place(map, name);
        return known.map == map && known.name == name && known.ns_id == ns_id ? known.event : search(map, ns_id, name);
    }
    int search(const s_event_map* map, int ns_id, const char* name);

    std::string source_file_;
    std::string item_;
    std::string error_text_;
    s_debug_error captured_;
    std::array<s_known_name, 256> known_names_ = {}; // by a hash of table and name
    const s_event_map* known_elements_ = nullptr;
    std::size_t attribute_ = 0;
    elmx_error failure_ = error_none;
    int event_ = event_none;
    int line_ = 0;
    int document_flag_ = 0;
    bool before_first_attribute_ = true;
};

/// Puts a reader's current item, event and known elements back.
class HOST_EXPORT c_xml_reader_local {
public:
    explicit c_xml_reader_local(c_xml_reader& reader);
    ~c_xml_reader_local();
    c_xml_reader_local(const c_xml_reader_local&) = delete;
    c_xml_reader_local& operator=(const c_xml_reader_local&) = delete;

private:
    c_xml_reader& reader_;
    std::string item_;
    const s_event_map* known_elements_;
    int event_;
    int document_flag_;
};

/// Selects a table of known elements for its own life time.
class HOST_EXPORT c_known_elements_selector {
public:
    c_known_elements_selector(c_xml_reader& reader, const s_event_map* known_elements);
    ~c_known_elements_selector();
    c_known_elements_selector(const c_known_elements_selector&) = delete;
    c_known_elements_selector& operator=(const c_known_elements_selector&) = delete;

private:
    c_xml_reader& reader_;
    const s_event_map* before_;
};

/// Reader over a file; is_open() is false when it can't be read.
class HOST_EXPORT c_xml_reader_file : private c_read_file, public c_xml_reader {
public:
    explicit c_xml_reader_file(const char* file);
    ~c_xml_reader_file() override;
    using c_read_file::get_cause;
    using c_read_file::is_open;
};

/// Reader over bytes in memory, which must outlive it.
class HOST_EXPORT c_xml_reader_memory : private c_read_memory, public c_xml_reader {
public:
    c_xml_reader_memory(const char* buffer, std::size_t length);
    ~c_xml_reader_memory() override;
};

/// Drives the hooks of a binding class over one element.
class HOST_EXPORT c_unmarshal_helper {
public:
    explicit c_unmarshal_helper(c_xml_reader& reader);
    virtual ~c_unmarshal_helper();
    c_unmarshal_helper(const c_unmarshal_helper&) = delete;
    c_unmarshal_helper& operator=(const c_unmarshal_helper&) = delete;

    /// Attributes until none is left, the attribute check, the body, the closing tag.
    elmx_error unmarshal_complex_content(const std::string& file, int line);
    /// The same for a class without child elements.
    elmx_error unmarshal_empty_content(const std::string& file, int line);
    /// Attributes and text only; nothing of the text is kept.
    elmx_error unmarshal_simple_body(elmx_error* error);

protected:
    virtual bool unmarshal_attributes(elmx_error* error) = 0;
    virtual elmx_error unmarshal_attributes_check() = 0;
    virtual bool unmarshal_body(elmx_error* error) = 0;

    c_xml_reader& reader_;

private:
    elmx_error unmarshal_start(const std::string& file, int line);
};

/// The helper of a binding class: carries the object and forwards the hooks to it.
template <class Binding>
class ct_unmarshal_helper : public c_unmarshal_helper {
public:
    ct_unmarshal_helper(Binding& object, c_xml_reader& reader) : c_unmarshal_helper(reader), object_(object) {}

protected:
    bool unmarshal_attributes(elmx_error* error) override { return object_.unmarshal_attributes(reader_, error); }
    elmx_error unmarshal_attributes_check() override { return object_.unmarshal_attributes_check(reader_); }
    bool unmarshal_body(elmx_error* error) override { return object_.unmarshal_body(reader_, error); }

private:
    Binding& object_;
};

} // namespace lmx60
