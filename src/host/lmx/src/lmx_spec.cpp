// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "lmx_spec.h"

#include <limits>
#include <string>
#include <type_traits>

namespace lmx60 {
namespace {

/// The value of text that may lie outside the type: the nearest end of its range.
template <class T>
void integer_from_text(std::string_view text, T& result) {
    using limits = std::numeric_limits<T>;
    const c_big_int number(text);
    if constexpr (std::is_unsigned_v<T>) {
        const unsigned long long value = number.get_unsigned();
        result = value > limits::max() ? limits::max() : static_cast<T>(value);
    } else {
        const long long value = number.get();
        result = value < limits::min() ? limits::min() : value > limits::max() ? limits::max() : static_cast<T>(value);
    }
}

template <class T>
std::string integer_to_text(const T& value) {
    return std::to_string(value);
}

template <class T>
ct_validation_spec<T> integer_spec(const char* type_name, const char* default_text) {
    static const c_big_int lower(std::to_string(std::numeric_limits<T>::min()));
    static const c_big_int upper(std::to_string(std::numeric_limits<T>::max()));
    return {{type_name, whitespace_collapse, default_text, &is_valid_integer, &lower, &upper},
            nullptr,
            &integer_from_text<T>,
            &integer_to_text<T>,
            nullptr};
}

constexpr const char* whole_number = "a whole number";

} // namespace

c_marshal_bridge::~c_marshal_bridge() = default;
c_unmarshal_bridge::~c_unmarshal_bridge() = default;

void throw_absent(const char* name) {
    throw lmx_exception(std::string("'") + name + "' is absent");
}

void throw_bad_index(std::size_t index, std::size_t size) {
    throw lmx_exception("index " + std::to_string(index) + " in a list of " + std::to_string(size));
}

ct_validation_spec<c_text> string_type::spec(const char* default_text) {
    return {{"text", whitespace_preserve, default_text, nullptr, nullptr, nullptr},
            nullptr,
            [](std::string_view text, c_text& value) { value.assign(text); },
            [](const c_text& value) { return value.get_utf8(); },
            [](const c_text& value) { return is_xml_text(value.get_view()); }};
}

ct_validation_spec<unsigned char> unsigned_byte_type::spec(const char* default_text) {
    return integer_spec<unsigned char>(whole_number, default_text);
}
ct_validation_spec<short> short_type::spec(const char* default_text) {
    return integer_spec<short>(whole_number, default_text);
}
ct_validation_spec<unsigned short> unsigned_short_type::spec(const char* default_text) {
    return integer_spec<unsigned short>(whole_number, default_text);
}
ct_validation_spec<unsigned int> unsigned_int_type::spec(const char* default_text) {
    return integer_spec<unsigned int>(whole_number, default_text);
}
ct_validation_spec<long long> long_type::spec(const char* default_text) {
    return integer_spec<long long>(whole_number, default_text);
}
ct_validation_spec<unsigned long long> unsigned_long_type::spec(const char* default_text) {
    return integer_spec<unsigned long long>(whole_number, default_text);
}

ct_validation_spec<c_big_int> integer_type::spec(const char* default_text) {
    return {{whole_number, whitespace_collapse, default_text, &is_valid_integer, nullptr, nullptr},
            nullptr,
            [](std::string_view text, c_big_int& value) { value = c_big_int(text); },
            [](const c_big_int& value) { return value.get_as_string(); },
            nullptr};
}

ct_validation_spec<c_decimal> decimal_type::spec(const char* default_text) {
    return {{"a decimal", whitespace_collapse, default_text, &c_decimal::is_valid, nullptr, nullptr},
            nullptr,
            [](std::string_view text, c_decimal& value) { value = c_decimal(std::string(text)); },
            [](const c_decimal& value) { return value.get_as_string(); },
            [](const c_decimal& value) { return c_decimal::is_valid(value.get_as_string()); }};
}

ct_validation_spec<bool> boolean_type::spec(const char* default_text) {
    return {{"true or false", whitespace_collapse, default_text, &is_valid_bool, nullptr, nullptr},
            nullptr,
            [](std::string_view text, bool& value) { value = text == "true" || text == "1"; },
            [](const bool& value) { return std::string(value ? "true" : "false"); },
            nullptr};
}

} // namespace lmx60
