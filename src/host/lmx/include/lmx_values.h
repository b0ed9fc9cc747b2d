// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HostExport.h"

#include <iosfwd>
#include <string>

namespace lmx60 {

/// What is done to the white space of a value before it is looked at.
enum elmx_whitespace { whitespace_preserve = 0, whitespace_collapse = 2 };

/// Trims, and makes one blank of each run of white space.
HOST_EXPORT std::string collapse_whitespace(const std::string& text);

/// A sign or none, and digits.
HOST_EXPORT bool is_valid_integer(const std::string& text);

/// "true", "false", "1" or "0".
HOST_EXPORT bool is_valid_bool(const std::string& text);

/// A whole number of any size. Text that is no whole number counts as far as its digits go, so "abc" is 0.
class HOST_EXPORT c_big_int {
public:
    c_big_int() = default;
    c_big_int(long long value); // NOLINT(google-explicit-constructor)
    explicit c_big_int(const std::string& text);

    /// The value; beyond the range of long long it is the nearest end of that range.
    long long get() const;
    /// The value; beyond the range of unsigned long long it is the nearest end of that range.
    unsigned long long get_unsigned() const;
    /// Digits without leading zeros, behind "-" for a negative value.
    std::string get_as_string() const;

    /// Less than 0, 0 or more than 0, as this is less than, equal to or more than the other.
    int compare(const c_big_int& other) const;

    bool operator==(const c_big_int& other) const { return compare(other) == 0; }
    bool operator!=(const c_big_int& other) const { return compare(other) != 0; }
    bool operator<(const c_big_int& other) const { return compare(other) < 0; }
    bool operator<=(const c_big_int& other) const { return compare(other) <= 0; }
    bool operator>(const c_big_int& other) const { return compare(other) > 0; }
    bool operator>=(const c_big_int& other) const { return compare(other) >= 0; }

private:
    bool negative_ = false;
    std::string digits_ = "0";
};

/// Compares the text of a whole number with a number, whatever the text's size.
HOST_EXPORT int compare(const std::string& text, const c_big_int& number);
HOST_EXPORT std::ostream& operator<<(std::ostream& out, const c_big_int& number);

/// A decimal number of any precision. Keeps its text; comparison is by value ("1.0" equals "1.00").
class HOST_EXPORT c_decimal {
public:
    c_decimal() = default;
    explicit c_decimal(std::string text);

    /// A sign or none, and digits with at most one point among or beside them.
    static bool is_valid(const std::string& text);

    /// The nearest double; 0 for text that is no decimal.
    double get() const;
    /// The text that it was made from.
    const std::string& get_as_string() const { return text_; }

    int compare(const c_decimal& other) const;

    bool operator==(const c_decimal& other) const { return compare(other) == 0; }
    bool operator!=(const c_decimal& other) const { return compare(other) != 0; }
    bool operator<(const c_decimal& other) const { return compare(other) < 0; }
    bool operator<=(const c_decimal& other) const { return compare(other) <= 0; }
    bool operator>(const c_decimal& other) const { return compare(other) > 0; }
    bool operator>=(const c_decimal& other) const { return compare(other) >= 0; }

private:
    std::string text_ = "0";
};

HOST_EXPORT std::ostream& operator<<(std::ostream& out, const c_decimal& number);

/// UTF-8 to the wide text that bindings keep.
HOST_EXPORT std::wstring vtostring(const std::string& text);

/// Where escaped text is going to stand: an attribute needs its quotes, line feeds and tabs escaped too.
enum elmx_place { place_element, place_attribute };

/// Escaped so that a reader gets every character back.
HOST_EXPORT std::string output_convert_to_xml(const std::string& utf8, elmx_place place);
HOST_EXPORT std::string output_convert_to_xml(const std::wstring& text, elmx_place place);

/// True when each character may stand in an XML document.
HOST_EXPORT bool is_xml_text(const std::wstring& text);

} // namespace lmx60
