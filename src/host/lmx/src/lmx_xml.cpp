// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "lmx_xml.h"

#include "HostErrors.h"
#include "HostFileUtils.h"
#include "lmx_tag_scan.h"

#include <libxml/parser.h>
#include <libxml/parserInternals.h>
#include <libxml/xmlerror.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <exception>
#include <functional>
#include <new>
#include <utility>
#include <vector>

namespace lmx60 {
namespace {

const char* chars(const xmlChar* text) {
    return reinterpret_cast<const char*>(text);
}

std::uint32_t narrow(std::size_t size) {
    return static_cast<std::uint32_t>(size);
}

/// Encodings in which the bytes of markup mean nothing else.
bool is_plain_encoding(const char* name) {
    for (const char* plain : {"UTF-8", "ASCII", "US-ASCII", "ISO-8859-", "WINDOWS-125", "CP125"}) {
        if (xmlStrncasecmp(BAD_CAST name, BAD_CAST plain, static_cast<int>(std::strlen(plain))) == 0) {
            return true;
        }
    }
    return false;
}

bool is_blank(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

/// Takes what the parser's library says outside of any parser, of input that it can't convert: it would print it.
class c_library_errors {
public:
    c_library_errors(xmlStructuredErrorFunc take, void* user) : take_(xmlStructuredError), user_(xmlStructuredErrorContext) {
        xmlSetStructuredErrorFunc(user, take);
    }
    ~c_library_errors() { xmlSetStructuredErrorFunc(user_, take_); }
    c_library_errors(const c_library_errors&) = delete;
    c_library_errors& operator=(const c_library_errors&) = delete;

private:
    const xmlStructuredErrorFunc take_; // of the process before
    void* const user_;
};

} // namespace

c_read::~c_read() = default;

c_read_memory::c_read_memory(const char* buffer, std::size_t length) : next_(buffer), end_(buffer + length) {}

std::size_t c_read_memory::read(char* buffer, std::size_t size) {
    const std::size_t count = std::min(size, static_cast<std::size_t>(end_ - next_));
    if (count) {
        std::memcpy(buffer, next_, count);
    }
    next_ += count;
    return count;
}

c_read_file::c_read_file(const char* file) {
    try {
        text_ = HostFileUtils::readStart(file ? file : "", c_xml::max_document_size + 1);
    } catch (const HostError& error) {
        cause_ = error.getFault().cause;
    }
}

std::size_t c_read_file::read(char* buffer, std::size_t size) {
    const std::size_t count = text_.copy(buffer, size, next_);
    next_ += count;
    return count;
}

struct c_xml::s_parser {
    s_parser(c_read& input, c_xml& events) : source(input), out(events) {}
    ~s_parser() {
        if (context) {
            xmlFreeParserCtxt(context);
        }
    }
    s_parser(const s_parser&) = delete;
    s_parser& operator=(const s_parser&) = delete;

    void open();
    void feed();
    void fail(elmx_error code, std::string text, int line);
    void fail_large(const std::string& what, int at_line);
    int resolve(const xmlChar* uri);
    s_span keep(const char* text, std::size_t length);
    void locate(s_event& event);
    void keep_attributes(int count, const xmlChar** list, int at_line);
    int line() const { return context->input ? context->input->line : 0; }

    void start_document();
    void start_element(const xmlChar* local, const xmlChar* prefix, const xmlChar* uri, int declared, int count, const xmlChar** list);
    void end_element();
    void characters(const char* text, std::size_t length);

    void take_error(const xmlError& error);
    void check_names();
    void stop() const {
        if (may_stop) {
            xmlStopParser(context);
        }
    }
    void check_end();

    static void handler_of_errors(void* user, xmlErrorPtr error) {
        guarded(user, [&](s_parser& parser) { parser.take_error(*error); });
    }
    static void handler_of_library_errors(void* user, xmlErrorPtr error) {
        s_parser& parser = of(user);
        parser.may_stop = false; // the input is in use by whoever complains of it
        handler_of_errors(user, error);
        parser.may_stop = true;
    }
    static s_parser& of(void* user) { return *static_cast<s_parser*>(user); }

    /// For what the parser calls: nothing raised may pass through its frames.
    template <class Step>
    static void guarded(void* user, const Step& step) {
        s_parser& parser = of(user);
        if (parser.raised) {
            return;
        }
        try {
            step(parser);
        } catch (...) {
            parser.raised = std::current_exception();
            parser.stop();
        }
    }

    c_read& source;
    c_xml& out; // its events
    xmlParserCtxtPtr context = nullptr;
    std::vector<std::pair<int, std::string>> namespaces;
    const xmlChar* last_uri = nullptr;
    int last_id = ns_none;

    c_tag_scan scan;
    std::vector<char> piece;
    std::vector<std::uint32_t> declarations; // per open element
    std::size_t namespaces_in_force = 0;
    std::size_t fed = 0;
    int latest_line = 0; // of the latest event
    bool at_end = false;
    elmx_error code = error_none;
    std::string text;
    int fault_line = 0;
    std::exception_ptr raised;
    bool may_stop = true;
};

void c_xml::s_parser::open() {
    xmlSAXHandler handler = {};
    handler.initialized = XML_SAX2_MAGIC;
    handler.startDocument = [](void* user) { guarded(user, [](s_parser& parser) { parser.start_document(); }); };
    handler.startElementNs = [](void* user, const xmlChar* local, const xmlChar* prefix, const xmlChar* uri, int declared, const xmlChar**,
                                int count, int, const xmlChar** list) {
        guarded(user, [&](s_parser& parser) { parser.start_element(local, prefix, uri, declared, count, list); });
    };
    handler.endElementNs = [](void* user, const xmlChar*, const xmlChar*, const xmlChar*) {
        guarded(user, [](s_parser& parser) { parser.end_element(); });
    };
    handler.characters = [](void* user, const xmlChar* from, int length) {
        guarded(user, [&](s_parser& parser) { parser.characters(chars(from), static_cast<std::size_t>(length)); });
    };
    handler.ignorableWhitespace = handler.characters;
    handler.cdataBlock = handler.characters;
    handler.processingInstruction = [](void* user, const xmlChar*, const xmlChar*) {
        guarded(user, [](s_parser& parser) { parser.check_names(); });
    };
    handler.internalSubset = [](void* user, const xmlChar*, const xmlChar*, const xmlChar*) {
        guarded(user,
                [](s_parser& parser) { parser.fail(error_document_type, get_error_description(error_document_type), parser.line()); });
    };
    handler.getEntity = [](void*, const xmlChar* name) { return xmlGetPredefinedEntity(name); };
    handler.resolveEntity = [](void*, const xmlChar*, const xmlChar*) -> xmlParserInputPtr { return nullptr; };
    handler.serror = handler_of_errors;
    {
        // All that can go wrong here is a lack of memory, which the caller hears of.
        const c_library_errors unheard([](void*, xmlErrorPtr) {}, nullptr);
        context = xmlCreatePushParserCtxt(&handler, this, nullptr, 0, nullptr);
    }
    if (!context) {
        throw std::bad_alloc();
    }
    // NOENT gives the five predefined entities as characters, also in attributes; there are no others, as document types are refused.
    // HUGE lifts the parser's own limits on depth and lengths: max_depth and max_document_size stand in their place.
    xmlCtxtUseOptions(context, XML_PARSE_NOENT | XML_PARSE_NONET | XML_PARSE_HUGE);
}

void c_xml::s_parser::take_error(const xmlError& error) {
    if (error.code == XML_ERR_NO_MEMORY) {
        throw std::bad_alloc();
    }
    if (error.level < XML_ERR_ERROR) {
        return;
    }
    std::string words = error.message ? error.message : "";
    while (!words.empty() && is_blank(words.back())) {
        words.pop_back();
    }
    const elmx_error kind = error.domain == XML_FROM_NAMESPACE ? error_bad_namespace : error_not_well_formed;
    // What has no parser has no line.
    fail(kind, std::string(get_error_description(kind)) + ": " + words, error.line > 0 ? error.line : line());
}

void c_xml::s_parser::fail(elmx_error kind, std::string description, int at_line) {
    if (code == error_none) {
        code = kind;
        text = std::move(description);
        fault_line = at_line;
        stop();
    }
}

void c_xml::s_parser::feed() {
    if (!context) {
        open();
    }
    out.texts_.clear();
    out.events_.clear();
    out.attributes_.clear();
    out.next_ = 0;
    while (out.events_.empty() && code == error_none && !at_end) {
        // The parser searches all that it holds of an unfinished tag again with each piece: the longer the tag, the larger the pieces.
        const auto held = static_cast<std::size_t>(context->input->end - context->input->cur);
        piece.resize(std::clamp(held, std::size_t{piece_size}, std::size_t{max_piece_size}));
        const std::size_t count = source.read(piece.data(), piece.size());
        fed += count;
        if (fed > max_document_size) {
            fail_large("more than " + std::to_string(max_document_size) + " bytes", line());
        } else if (!scan.scan(piece.data(), count, max_attributes)) {
            fail_large("an element with more than " + std::to_string(max_attributes) + " attributes", line());
        } else {
            at_end = count == 0;
            const c_library_errors errors(handler_of_library_errors, this);
            xmlParseChunk(context, piece.data(), static_cast<int>(count), at_end ? 1 : 0);
            if (at_end) {
                check_end();
            }
        }
        if (raised) {
            std::rethrow_exception(raised);
        }
    }
}

/// The library keeps to itself that the last character of a converted text is cut off.
void c_xml::s_parser::check_end() {
    const xmlParserInputBuffer* const input = context->input ? context->input->buf : nullptr;
    const bool is_cut = input && input->encoder && input->raw && xmlBufUse(input->raw) > 0;
    if (is_cut || scan.has_half()) {
        fail(error_not_well_formed, std::string(get_error_description(error_not_well_formed)) + ": the last character is cut off", line());
    }
}

/// The parser's table of names grows to a size of its own, and from there on each new name is compared with more and more others.
void c_xml::s_parser::check_names() {
    if (static_cast<std::size_t>(xmlDictSize(context->dict)) > max_names) {
        fail_large("more than " + std::to_string(max_names) + " different names", line());
    }
}

void c_xml::s_parser::fail_large(const std::string& what, int at_line) {
    fail(error_too_large, std::string(get_error_description(error_too_large)) + ": " + what, at_line);
}

void c_xml::s_parser::start_document() {
    const xmlCharEncodingHandler* const encoder = context->input->buf ? context->input->buf->encoder : nullptr;
    const bool is_utf16 = encoder && xmlStrncasecmp(BAD_CAST encoder->name, BAD_CAST "UTF-16", 6) == 0;
    if (is_utf16 != scan.is_utf16() || (encoder && !is_utf16 && !is_plain_encoding(encoder->name))) {
        fail(error_not_well_formed, std::string("the encoding ") + (encoder ? encoder->name : "") + " is not supported; UTF-8 is", 1);
    }
}

int c_xml::s_parser::resolve(const xmlChar* uri) {
    if (!uri) {
        return ns_none;
    }
    if (uri != last_uri) { // the parser keeps one copy of each URI
        last_uri = uri;
        last_id = ns_unknown;
        for (const auto& [id, known] : namespaces) {
            if (known == chars(uri)) {
                last_id = id;
            }
        }
    }
    return last_id;
}

c_xml::s_span c_xml::s_parser::keep(const char* from, std::size_t length) {
    const s_span span{narrow(out.texts_.size()), narrow(length)};
    out.texts_.append(from, length);
    return span;
}

/// The parser knows the line where a start tag ends; the tag's text, still in its buffer, gives the lines within.
void c_xml::s_parser::locate(s_event& event) {
    const char* const end = chars(context->input->cur);
    const void* const open = memrchr(context->input->base, '<', static_cast<std::size_t>(end - chars(context->input->base)));
    if (!open) {
        return;
    }
    const std::string_view in_tag(static_cast<const char*>(open), static_cast<std::size_t>(end - static_cast<const char*>(open)));
    if (in_tag.find('\n') == std::string_view::npos) {
        return;
    }
    event.line -= static_cast<int>(std::count(in_tag.begin(), in_tag.end(), '\n'));
    auto attribute = out.attributes_.begin() + event.span.start;
    const auto attribute_end = attribute + event.span.length;
    int at = event.line;
    std::size_t i = 0;
    const auto step = [&] { at += in_tag[i++] == '\n' ? 1 : 0; };
    while (i < in_tag.size() && !is_blank(in_tag[i])) {
        ++i;
    }
    while (attribute != attribute_end) {
        while (i < in_tag.size() && is_blank(in_tag[i])) {
            step();
        }
        const std::size_t name = i;
        const int name_line = at;
        while (i < in_tag.size() && in_tag[i] != '"' && in_tag[i] != '\'') {
            step();
        }
        if (i == in_tag.size()) {
            return;
        }
        const char quote = in_tag[i];
        const std::string_view written = in_tag.substr(name, i - name);
        for (++i; i < in_tag.size() && in_tag[i] != quote;) {
            step();
        }
        i += i < in_tag.size() ? 1 : 0;
        const bool declares =
            written.substr(0, 5) == "xmlns" && written.size() > 5 && (written[5] == ':' || written[5] == '=' || is_blank(written[5]));
        if (!declares) {
            attribute->line = name_line;
            ++attribute;
        }
    }
}

/// Values without entities still stand in the parser's buffer, one behind the other: these are copied in one go, names and all.
void c_xml::s_parser::keep_attributes(int count, const xmlChar** list, int at_line) {
    if (count == 0) {
        return;
    }
    constexpr std::less_equal<> is_ordered;
    const xmlChar* first = list[3];
    const xmlChar* last = list[5 * (count - 1) + 4];
    std::uint32_t start = 0;
    if (is_ordered(context->input->base, first) && is_ordered(first, last) && is_ordered(last, context->input->cur)) {
        start = keep(chars(first), static_cast<std::size_t>(last - first)).start;
    } else {
        first = last = nullptr;
    }
    for (int i = 0; i < count; ++i, list += 5) {
        const auto length = static_cast<std::size_t>(list[4] - list[3]);
        const bool is_kept = is_ordered(first, list[3]) && is_ordered(list[4], last);
        const s_span value =
            is_kept ? s_span{start + narrow(static_cast<std::size_t>(list[3] - first)), narrow(length)} : keep(chars(list[3]), length);
        out.attributes_.push_back({{chars(list[0]), chars(list[1]), resolve(list[2])}, at_line, value});
    }
}

void c_xml::s_parser::start_element(const xmlChar* local, const xmlChar* prefix, const xmlChar* uri, int declared, int count,
                                    const xmlChar** list) {
    // A tag that breaks off is announced as well, before its fault.
    const xmlChar* const tag_end = context->input->cur;
    const bool is_whole = *tag_end == '>' || (*tag_end == '/' && tag_end[1] == '>');
    if (code != error_none || !is_whole) {
        return;
    }
    s_event event;
    event.kind = xml_event_kind::start;
    event.name = {chars(local), chars(prefix), resolve(uri)};
    event.line = line();
    event.span = {narrow(out.attributes_.size()), narrow(static_cast<std::size_t>(count))};
    keep_attributes(count, list, event.line);
    if (event.line != latest_line) {
        locate(event);
        latest_line = line();
    }
    out.events_.push_back(event);
    check_names();
    declarations.push_back(narrow(static_cast<std::size_t>(declared)));
    namespaces_in_force += declarations.back();
    if (declarations.size() > max_depth) {
        fail(error_too_deep, std::string(get_error_description(error_too_deep)) + ": more than " + std::to_string(max_depth), event.line);
    } else if (namespaces_in_force > max_namespaces) {
        fail_large("more than " + std::to_string(max_namespaces) + " namespace declarations in force", event.line);
    }
}

void c_xml::s_parser::end_element() {
    if (code != error_none) {
        return;
    }
    namespaces_in_force -= declarations.back();
    declarations.pop_back();
    s_event event;
    event.line = latest_line = line();
    out.events_.push_back(event);
}

void c_xml::s_parser::characters(const char* from, std::size_t length) {
    if (code != error_none || declarations.empty()) {
        return;
    }
    const s_span span = keep(from, length);
    if (!out.events_.empty() && out.events_.back().kind == xml_event_kind::text) {
        out.events_.back().span.length += narrow(length);
        return;
    }
    s_event event;
    event.kind = xml_event_kind::text;
    event.span = span;
    event.line = latest_line = line();
    out.events_.push_back(event);
}

c_xml::c_xml(c_read& source) : parser_(std::make_unique<s_parser>(source, *this)) {}
c_xml::~c_xml() = default;

void c_xml::set_namespaces(const s_ns_map* map) {
    parser_->namespaces.clear();
    for (; map && map->uri; ++map) {
        add_namespace(map->id, map->uri);
    }
}

void c_xml::add_namespace(int id, const std::string& uri) {
    parser_->namespaces.emplace_back(id, uri);
    parser_->last_uri = nullptr;
}

xml_event_kind c_xml::peek_further() {
    s_parser& parser = *parser_;
    if (parser.code == error_none && !parser.at_end) {
        parser.feed();
    }
    if (next_ < events_.size()) {
        return events_[next_].kind;
    }
    return parser.code != error_none ? xml_event_kind::failed : xml_event_kind::end_of_document;
}

int c_xml::current_line() const {
    return parser_->context ? parser_->line() : 0;
}

std::string_view c_xml::written(const s_name& name) const {
    if (!name.prefix) {
        return name.local;
    }
    const xmlChar* const whole = xmlDictQLookup(parser_->context->dict, BAD_CAST name.prefix, BAD_CAST name.local);
    if (!whole) {
        throw std::bad_alloc();
    }
    return chars(whole);
}

void c_xml::skip_rest_of_element() {
    for (int open = 1; open > 0;) {
        const xml_event_kind kind = peek();
        if (kind == xml_event_kind::failed || kind == xml_event_kind::end_of_document) {
            return;
        }
        open += kind == xml_event_kind::start ? 1 : kind == xml_event_kind::end ? -1 : 0;
        pop();
    }
}

elmx_error c_xml::failure_code() const {
    return parser_->code;
}
const std::string& c_xml::failure_text() const {
    return parser_->text;
}
int c_xml::failure_line() const {
    return parser_->fault_line;
}

} // namespace lmx60
