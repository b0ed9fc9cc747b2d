// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HostExport.h"
#include "lmx_errors.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace lmx60 {

/// One row of a namespace map; a map ends with a row whose uri is null.
struct HOST_EXPORT s_ns_map {
    int id;
    const char* prefix;
    const char* uri;
};

/// Ids of names that no namespace map gives one.
enum elmx_ns_id { ns_unknown = 0, ns_none = 1 };

/// Where a document's bytes come from.
class HOST_EXPORT c_read {
public:
    virtual ~c_read();
    /// Puts at most size bytes into the buffer and answers how many; 0 at the end.
    virtual std::size_t read(char* buffer, std::size_t size) = 0;
};

/// Bytes in memory, which must outlive the reading.
class HOST_EXPORT c_read_memory : public c_read {
public:
    c_read_memory(const char* buffer, std::size_t length);
    std::size_t read(char* buffer, std::size_t size) override;

private:
    const char* next_;
    const char* end_;
};

/// A regular file, read whole into memory when constructed (one byte past c_xml::max_document_size at most).
class HOST_EXPORT c_read_file : public c_read {
public:
    explicit c_read_file(const char* file);
    /// False when the file could not be opened or read.
    bool is_open() const { return cause_.empty(); }
    /// Why it could not, in words.
    const std::string& get_cause() const { return cause_; }
    std::size_t read(char* buffer, std::size_t size) override;

private:
    std::string text_;
    std::size_t next_ = 0;
    std::string cause_;
};

/// What a document consists of, as far as bindings look at it.
enum class xml_event_kind { start, end, text, end_of_document, failed };

/// The XML parser that a reader pulls from. Strict: malformed text and wrong namespaces are failures. It never looks at a document type
/// or at anything outside the document, and keeps only the events of one piece of input.
class HOST_EXPORT c_xml {
public:
    static constexpr std::size_t piece_size = std::size_t{16} * 1024;               ///< bytes fed at a time
    static constexpr std::size_t max_piece_size = std::size_t{4} * 1024 * 1024;     ///< bytes fed at a time within one very long tag
    static constexpr std::size_t max_document_size = std::size_t{64} * 1024 * 1024; ///< bytes
    static constexpr int max_depth = 1000;                                          ///< elements inside each other
    static constexpr std::size_t max_attributes = 1000;                             ///< of one element, namespace declarations included
    static constexpr std::size_t max_namespaces = 100;                              ///< declarations in force at one place
    static constexpr std::size_t max_names = 10'000; ///< different ones in a document, of elements, attributes, prefixes and namespaces

    virtual ~c_xml();
    c_xml(const c_xml&) = delete;
    c_xml& operator=(const c_xml&) = delete;

    /// Consumes the current element up to and with its end tag.
    void skip_rest_of_element();

protected:
    explicit c_xml(c_read& source);

    /// A null map leaves all prefixed names unknown.
    void set_namespaces(const s_ns_map* map);
    void add_namespace(int id, const std::string& uri);

    /// What comes next, without consuming it; parses on when need be.
    xml_event_kind peek() { return next_ < events_.size() ? events_[next_].kind : peek_further(); }
    /// Consumes a start, an end or a text.
    void pop() {
        const s_event& event = events_[next_++];
        if (event.kind == xml_event_kind::start) {
            tag_ = event;
        }
    }

    // Of the start tag or text that comes next. Names live as long as this, and equal local names share one address; other views live
    // until the following peek() after the event was consumed.
    int next_ns_id() const { return events_[next_].name.ns_id; }
    std::string_view next_local_name() const { return events_[next_].name.local; }
    std::string_view next_name() const { return written(events_[next_].name); } ///< as written, with its prefix
    std::string_view next_text() const { return view(events_[next_].span); }
    int next_line() const { return next_ < events_.size() ? events_[next_].line : current_line(); } ///< for a start tag the line of its "<"

    // Attributes of the start tag consumed last, until the following peek().
    std::size_t attribute_count() const { return tag_.span.length; }
    int attribute_ns_id(std::size_t index) const { return attribute(index).name.ns_id; }
    std::string_view attribute_local_name(std::size_t index) const { return attribute(index).name.local; }
    std::string_view attribute_name(std::size_t index) const { return written(attribute(index).name); }
    std::string_view attribute_value(std::size_t index) const { return view(attribute(index).value); }
    int attribute_line(std::size_t index) const { return attribute(index).line; }

    // When peek() says failed.
    elmx_error failure_code() const;
    const std::string& failure_text() const;
    int failure_line() const;

private:
    struct s_parser;

    /// The parser keeps each text of a name once, as long as it lives.
    struct s_name {
        const char* local = "";
        const char* prefix = nullptr;
        int ns_id = ns_unknown;
    };
    // Millions of these can come out of one piece of input: they are kept small, and no text is longer than a document may be.
    struct s_span {
        std::uint32_t start = 0;
        std::uint32_t length = 0;
    };
    struct s_attribute {
        s_name name;
        int line = 0;
        s_span value;
    };
    struct s_event {
        s_name name;
        int line = 0;
        xml_event_kind kind = xml_event_kind::end;
        s_span span; // of a start tag its attributes, else text
    };

    xml_event_kind peek_further();
    int current_line() const;
    std::string_view written(const s_name& name) const;
    std::string_view view(s_span span) const { return {texts_.data() + span.start, span.length}; }
    const s_attribute& attribute(std::size_t index) const { return attributes_[tag_.span.start + index]; }

    // What came out of the latest piece.
    std::vector<s_event> events_;
    std::vector<s_attribute> attributes_;
    std::string texts_;
    std::size_t next_ = 0;
    s_event tag_; // the start tag consumed last
    std::unique_ptr<s_parser> parser_;
};

} // namespace lmx60
