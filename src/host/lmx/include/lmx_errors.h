// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HostExport.h"

#include <exception>
#include <string>

namespace lmx60 {

/// Result of reading and writing; error_none is 0, and code that only asks "did it work" may compare with 0.
enum elmx_error : int {
    error_none = 0,
    error_no_file = 1,              ///< the file could not be opened or read
    error_nothing_selected = 7,     ///< a choice with nothing selected is written
    error_wrong_root = 16,          ///< the document element has the wrong name or namespace
    error_missing_element = 21,     ///< a mandatory child is missing, or a list is below its minimum
    error_missing_attribute = 25,   ///< a mandatory attribute is missing
    error_no_choice = 31,           ///< no member of a choice matches
    error_not_valid = 35,           ///< a value is not lexically valid
    error_above_bound = 36,         ///< a value is above its upper bound
    error_below_bound = 37,         ///< a value is below its lower bound
    error_not_read = 42,            ///< preset before a constructor reads
    error_not_well_formed = 101,    ///< the text is no well-formed XML
    error_bad_namespace = 102,      ///< a prefix or a namespace declaration is wrong
    error_document_type = 103,      ///< the document has a document type
    error_too_deep = 104,           ///< elements nest deeper than c_xml::max_depth
    error_too_large = 105,          ///< the document is longer, or one of its parts larger, than c_xml allows
    error_unexpected_element = 106, ///< a known element in the wrong place, or once too often
    error_bad_character = 107,      ///< a value holds a character that XML text can't hold
    error_write_failed = 108        ///< the output took no more bytes
};

/// What a code means, in a few words; never null, also for a number that is no code.
HOST_EXPORT const char* get_error_description(int code);

/// Record of one error: which item (element or attribute, its name without prefix), and where.
struct HOST_EXPORT s_debug_error {
    elmx_error error = error_none;
    std::string item;
    std::string source_file;
    int line = 0;          ///< counted from 1; 0 when there is none
    int column = 0;        ///< 0 when not known
    std::string text = {}; ///< why a file could not be read, in words

    void set(elmx_error code, const std::string& item_name, const std::string& file, int line_number, int column_number = 0);
};

/// The last error that a reader's default hook saw in this process. Unlocked.
extern HOST_EXPORT s_debug_error debug_error;

/// Misuse of a binding class: an absent child is read, an index is out of range, an incomplete object is written.
class HOST_EXPORT lmx_exception : public std::exception {
public:
    explicit lmx_exception(std::string text);
    ~lmx_exception() override;
    const char* what() const noexcept override;

private:
    std::string text_;
};

/// Bad input or output. Stands alone: not a std::exception.
class HOST_EXPORT c_lmx_exception {
public:
    /// An empty text becomes the description of the code.
    explicit c_lmx_exception(elmx_error code, std::string text = {});
    virtual ~c_lmx_exception();

    virtual const char* what() const noexcept;
    elmx_error get_error() const noexcept { return code_; }

private:
    elmx_error code_;
    std::string text_;
};

/// Bad input, with its place.
class HOST_EXPORT c_lmx_reader_exception : public c_lmx_exception {
public:
    c_lmx_reader_exception(elmx_error code, int line, std::string text = {});
    ~c_lmx_reader_exception() override;

    /// Line in the source, counted from 1; 0 when the fault has no line.
    int get_line() const noexcept { return line_; }

private:
    int line_;
};

} // namespace lmx60
