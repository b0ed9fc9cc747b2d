// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HostExport.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <iosfwd>
#include <string>
#include <string_view>
#include <utility>

namespace lmx60 {

/// What is done to the white space of a value before it is looked at.
enum elmx_whitespace { whitespace_preserve = 0, whitespace_collapse = 2 };

/// Trims, and makes one blank of each run of white space.
HOST_EXPORT std::string collapse_whitespace(std::string_view text);

/// A sign or none, and digits.
HOST_EXPORT bool is_valid_integer(std::string_view text);

/// "true", "false", "1" or "0".
HOST_EXPORT bool is_valid_bool(std::string_view text);

/// A whole number of any size. Text that is no whole number counts as far as its digits go, so "abc" is 0.
class HOST_EXPORT c_big_int {
public:
    c_big_int() = default;
    c_big_int(long long value); // NOLINT(google-explicit-constructor)
    explicit c_big_int(std::string_view text);

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
    friend HOST_EXPORT int compare(std::string_view text, const c_big_int& number);

    bool negative_ = false;
    std::string digits_ = "0";
};

/// Compares the text of a whole number with a number, whatever the text's size.
HOST_EXPORT int compare(std::string_view text, const c_big_int& number);
HOST_EXPORT std::ostream& operator<<(std::ostream& out, const c_big_int& number);

/// A decimal number of any precision. Keeps its text; comparison is by value ("1.0" equals "1.00").
class HOST_EXPORT c_decimal {
public:
    c_decimal() = default;
    explicit c_decimal(std::string text);

    /// A sign or none, and digits with at most one point among or beside them.
    static bool is_valid(std::string_view text);

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

/// UTF-8 to the wide text that bindings answer.
HOST_EXPORT std::wstring vtostring(const std::string& text);
/// Back; a wide character that is no code point becomes U+FFFF, which no document can carry either.
HOST_EXPORT std::string vtoutf8(const std::wstring& text);

/// Text of a member: answered wide, held as UTF-8, and without a heap block unless it is longer than max_near bytes.
class c_text {
public:
    static constexpr std::size_t max_near = 23;

    c_text() = default;
    explicit c_text(std::string_view utf8) { assign(utf8); }
    explicit c_text(const std::wstring& text) : c_text(std::string_view(vtoutf8(text))) {}
    c_text(const c_text& other) : c_text(other.get_view()) {}
    c_text(c_text&& other) noexcept { swap(other); }
    c_text& operator=(c_text other) noexcept {
        swap(other);
        return *this;
    }
    ~c_text() {
        if (is_far()) {
            delete[] get_far().data;
        }
    }

    void assign(std::string_view utf8) {
        c_text old;
        if (is_far()) {
            swap(old);
        }
        char* to = held_.bytes;
        if (utf8.size() > max_near) {
            const s_far far = {new char[utf8.size()], utf8.size()};
            std::memcpy(to, &far, sizeof far);
            to = far.data;
        }
        std::copy(utf8.begin(), utf8.end(), to);
        held_.near_size = static_cast<unsigned char>(std::min(utf8.size(), max_near + 1));
    }
    void swap(c_text& other) noexcept { std::swap(held_, other.held_); }

    std::wstring get_wide() const { return vtostring(get_utf8()); }
    std::string get_utf8() const { return std::string(get_view()); }
    std::string_view get_view() const { return is_far() ? std::string_view(get_far().data, get_far().size) : get_near(); }
    bool operator==(const c_text& other) const { return get_view() == other.get_view(); }

private:
    struct s_far {
        char* data;
        std::size_t size;
    };
    struct alignas(s_far) s_held {
        char bytes[max_near] = {}; // the text, or an s_far
        unsigned char near_size = 0;
    };

    bool is_far() const { return held_.near_size > max_near; }
    std::string_view get_near() const { return {held_.bytes, held_.near_size}; }
    s_far get_far() const {
        s_far far;
        std::memcpy(&far, held_.bytes, sizeof far);
        return far;
    }

    s_held held_;
};

/// Where escaped text is going to stand: an attribute needs its quotes, line feeds and tabs escaped too.
enum elmx_place { place_element, place_attribute };

/// Escaped so that a reader gets every character back.
HOST_EXPORT std::string output_convert_to_xml(std::string_view utf8, elmx_place place);
HOST_EXPORT std::string output_convert_to_xml(const std::wstring& text, elmx_place place);

/// True when each character of the UTF-8 may stand in an XML document.
HOST_EXPORT bool is_xml_text(std::string_view utf8);

} // namespace lmx60
