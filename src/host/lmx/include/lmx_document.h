// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "lmx_walk.h"

#include <functional>
#include <iosfwd>
#include <string>

namespace lmx60 {

using unmarshal_function = std::function<elmx_error(c_xml_reader&)>;
using marshal_function = std::function<elmx_error(c_xml_writer&)>;

/// Reads through the function. A fault goes into the debug error when one is given, thrown or not. A file that can't be opened is code 1.
HOST_EXPORT elmx_error unmarshal_file(const char* file, s_debug_error* error, const unmarshal_function& read);
HOST_EXPORT elmx_error unmarshal_memory(const char* buffer, std::size_t length, s_debug_error* error, const unmarshal_function& read);

/// Writes through the function, with the XML declaration. The document is rendered whole before the output is touched, so a fault leaves
/// neither half a file nor half a text. A file that can't be opened is code 1.
HOST_EXPORT elmx_error marshal_file(const char* file, s_debug_error* error, const marshal_function& write);
HOST_EXPORT elmx_error marshal_stream(std::ostream& out, s_debug_error* error, const marshal_function& write);
HOST_EXPORT elmx_error marshal_string(std::string* text, s_debug_error* error, const marshal_function& write);

/// The operations behind the Unmarshal and Marshal members of root classes.
template <class Binding>
elmx_error unmarshal(Binding& object, const char* file, s_debug_error* error) {
    return unmarshal_file(file, error, [&](c_xml_reader& reader) { return object.unmarshal(reader); });
}
template <class Binding>
elmx_error unmarshal(Binding& object, const char* buffer, std::size_t length, s_debug_error* error) {
    return unmarshal_memory(buffer, length, error, [&](c_xml_reader& reader) { return object.unmarshal(reader); });
}
template <class Binding>
elmx_error marshal(const Binding& object, const char* name, const char* file, s_debug_error* error) {
    return marshal_file(file, error, [&](c_xml_writer& writer) { return object.marshal(writer, name); });
}
template <class Binding>
elmx_error marshal(const Binding& object, const char* name, std::ostream& out, s_debug_error* error) {
    return marshal_stream(out, error, [&](c_xml_writer& writer) { return object.marshal(writer, name); });
}
template <class Binding>
elmx_error marshal(const Binding& object, const char* name, std::string* text, s_debug_error* error) {
    return marshal_string(text, error, [&](c_xml_writer& writer) { return object.marshal(writer, name); });
}

/// The reading in a constructor: the code out starts as "not read yet".
template <class Read>
void read_in_constructor(elmx_error* error, const Read& read) {
    if (error) {
        *error = error_not_read;
    }
    const elmx_error result = read();
    if (error) {
        *error = result;
    }
}

} // namespace lmx60
