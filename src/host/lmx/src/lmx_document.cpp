// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "lmx_document.h"

#include <filesystem>
#include <fstream>
#include <sstream>

namespace lmx60 {
namespace {

void copy_out(const s_debug_error& captured, s_debug_error* error) {
    if (error) {
        *error = captured;
    }
}

elmx_error run(c_xml_reader& reader, s_debug_error* error, const unmarshal_function& read) {
    elmx_error result = error_none;
    try {
        result = read(reader);
    } catch (...) {
        copy_out(reader.get_captured_error(), error);
        throw;
    }
    copy_out(reader.get_captured_error(), error);
    return result;
}

elmx_error no_file(const char* file, const std::string& cause, s_debug_error* error) {
    if (error) {
        error->set(error_no_file, {}, file ? file : "", 0);
        error->text = cause;
    }
    return error_no_file;
}

} // namespace

elmx_error unmarshal_file(const char* file, s_debug_error* error, const unmarshal_function& read) {
    c_xml_reader_file reader(file);
    return reader.is_open() ? run(reader, error, read) : no_file(file, reader.get_cause(), error);
}

elmx_error unmarshal_memory(const char* buffer, std::size_t length, s_debug_error* error, const unmarshal_function& read) {
    c_xml_reader_memory reader(buffer, length);
    return run(reader, error, read);
}

elmx_error marshal_string(std::string* text, s_debug_error* error, const marshal_function& write) {
    std::ostringstream out;
    c_xml_writer writer(out, c_xml_writer::include_xml_decl);
    const elmx_error result = write(writer);
    copy_out(writer.get_captured_error(), error);
    if (result == error_none) {
        *text = out.str();
    }
    return result;
}

elmx_error marshal_stream(std::ostream& out, s_debug_error* error, const marshal_function& write) {
    std::string text;
    elmx_error result = marshal_string(&text, error, write);
    if (result == error_none && !(out << text)) {
        result = error_write_failed;
        copy_out({result, {}, {}, 0, 0}, error);
    }
    return result;
}

elmx_error marshal_file(const char* file, s_debug_error* error, const marshal_function& write) {
    std::string text;
    elmx_error result = marshal_string(&text, error, write);
    if (result != error_none) {
        return result;
    }
    std::ofstream out(file ? file : "", std::ios::binary | std::ios::trunc);
    if (!out) {
        return no_file(file, {}, error);
    }
    out << text;
    out.close();
    if (!out) {
        std::error_code ignored;
        if (std::filesystem::is_regular_file(file, ignored)) {
            std::filesystem::remove(file, ignored);
        }
        result = error_write_failed;
        copy_out({result, {}, file, 0, 0}, error);
    }
    return result;
}

} // namespace lmx60
