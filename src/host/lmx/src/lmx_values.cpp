// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "lmx_values.h"

#include "HostI18n.h"

#include <algorithm>
#include <charconv>
#include <functional>
#include <limits>
#include <ostream>
#include <string_view>
#include <utility>

namespace lmx60 {
namespace {

bool is_digit(char c) {
    return c >= '0' && c <= '9';
}
bool is_blank(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

std::size_t sign_length(std::string_view text) {
    return !text.empty() && (text[0] == '+' || text[0] == '-') ? 1 : 0;
}

unsigned long long saturated(const std::string& digits, unsigned long long most) {
    unsigned long long value = 0;
    const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    return result.ec == std::errc() ? std::min(value, most) : most;
}

/// Value of a decimal as sign, whole digits without leading zeros and fraction digits without trailing ones.
struct s_decimal_parts {
    bool negative = false;
    std::string_view whole;
    std::string_view fraction;
};

s_decimal_parts parts_of(std::string_view text) {
    s_decimal_parts parts;
    const std::size_t sign = sign_length(text);
    const bool minus = sign != 0 && text[0] == '-';
    text.remove_prefix(sign);
    const std::size_t point = text.find('.');
    parts.whole = text.substr(0, point);
    if (point != std::string_view::npos) {
        parts.fraction = text.substr(point + 1);
    }
    parts.whole.remove_prefix(std::min(parts.whole.find_first_not_of('0'), parts.whole.size()));
    parts.fraction = parts.fraction.substr(0, parts.fraction.find_last_not_of('0') + 1);
    parts.negative = minus && !(parts.whole.empty() && parts.fraction.empty());
    return parts;
}

int compare_digits(std::string_view left, std::string_view right) {
    return left.size() != right.size() ? (left.size() < right.size() ? -1 : 1) : left.compare(right);
}

/// Value of a whole number as sign and digits without leading zeros, as far as the text's digits go.
struct s_integer_parts {
    bool negative = false;
    std::string_view digits = "0";

    explicit s_integer_parts(std::string_view text) {
        const std::size_t sign = sign_length(text);
        std::size_t end = sign;
        while (end < text.size() && is_digit(text[end])) {
            ++end;
        }
        std::size_t start = sign;
        while (start + 1 < end && text[start] == '0') {
            ++start;
        }
        if (start < end) {
            digits = text.substr(start, end - start);
        }
        negative = sign != 0 && text[0] == '-' && digits != "0";
    }
};

int compare_integers(bool left_negative, std::string_view left, bool right_negative, std::string_view right) {
    if (left_negative != right_negative) {
        return left_negative ? -1 : 1;
    }
    const int magnitude = compare_digits(left, right);
    return left_negative ? -magnitude : magnitude;
}

} // namespace

std::string collapse_whitespace(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    bool gap = false;
    for (const char c : text) {
        if (is_blank(c)) {
            gap = !result.empty();
            continue;
        }
        if (gap) {
            result += ' ';
            gap = false;
        }
        result += c;
    }
    return result;
}

bool is_valid_integer(std::string_view text) {
    const std::size_t start = sign_length(text);
    return start < text.size() && std::all_of(text.begin() + start, text.end(), is_digit);
}

bool is_valid_bool(std::string_view text) {
    return text == "true" || text == "false" || text == "1" || text == "0";
}

c_big_int::c_big_int(long long value) : c_big_int(std::to_string(value)) {}

c_big_int::c_big_int(std::string_view text) {
    const s_integer_parts parts(text);
    negative_ = parts.negative;
    digits_ = parts.digits;
}

long long c_big_int::get() const {
    constexpr unsigned long long most = std::numeric_limits<long long>::max();
    if (!negative_) {
        return static_cast<long long>(saturated(digits_, most));
    }
    return -1 - static_cast<long long>(saturated(digits_, most + 1) - 1);
}

unsigned long long c_big_int::get_unsigned() const {
    return negative_ ? 0 : saturated(digits_, std::numeric_limits<unsigned long long>::max());
}

std::string c_big_int::get_as_string() const {
    return negative_ ? "-" + digits_ : digits_;
}

int c_big_int::compare(const c_big_int& other) const {
    return compare_integers(negative_, digits_, other.negative_, other.digits_);
}

int compare(std::string_view text, const c_big_int& number) {
    const s_integer_parts parts(text);
    return compare_integers(parts.negative, parts.digits, number.negative_, number.digits_);
}

std::ostream& operator<<(std::ostream& out, const c_big_int& number) {
    return out << number.get_as_string();
}

c_decimal::c_decimal(std::string text) : text_(std::move(text)) {}

bool c_decimal::is_valid(std::string_view text) {
    std::size_t digits = 0;
    std::size_t points = 0;
    for (std::size_t i = sign_length(text); i < text.size(); ++i) {
        if (is_digit(text[i])) {
            ++digits;
        } else if (text[i] != '.' || ++points > 1) {
            return false;
        }
    }
    return digits > 0;
}

double c_decimal::get() const {
    double value = 0;
    if (is_valid(text_)) {
        const char* start = text_.data() + (text_[0] == '+' ? 1 : 0);
        std::from_chars(start, text_.data() + text_.size(), value);
    }
    return value;
}

int c_decimal::compare(const c_decimal& other) const {
    const s_decimal_parts mine = parts_of(text_);
    const s_decimal_parts its = parts_of(other.text_);
    if (mine.negative != its.negative) {
        return mine.negative ? -1 : 1;
    }
    int magnitude = compare_digits(mine.whole, its.whole);
    if (magnitude == 0) {
        magnitude = mine.fraction.compare(its.fraction);
    }
    return mine.negative ? -magnitude : magnitude;
}

std::ostream& operator<<(std::ostream& out, const c_decimal& number) {
    return out << number.get_as_string();
}

std::wstring vtostring(const std::string& text) {
    return HostI18n::toWide(text);
}

std::string vtoutf8(const std::wstring& text) {
    const auto is_code_point = [](wchar_t wide) {
        const auto c = static_cast<unsigned long>(wide);
        return c < 0xD800 || (c > 0xDFFF && c <= 0x10FFFF);
    };
    if (std::all_of(text.begin(), text.end(), is_code_point)) {
        return HostI18n::toUtf8(text);
    }
    std::wstring marked = text;
    std::replace_if(marked.begin(), marked.end(), std::not_fn(is_code_point), L'\xffff');
    return HostI18n::toUtf8(marked);
}

std::string output_convert_to_xml(std::string_view utf8, elmx_place place) {
    std::string result;
    result.reserve(utf8.size() + utf8.size() / 8);
    for (const char c : utf8) {
        switch (c) {
        case '&':
            result += "&amp;";
            break;
        case '<':
            result += "&lt;";
            break;
        case '>':
            result += "&gt;";
            break;
        case '\r':
            result += "&#13;";
            break;
        case '"':
            result += place == place_attribute ? "&quot;" : "\"";
            break;
        case '\n':
            result += place == place_attribute ? "&#10;" : "\n";
            break;
        case '\t':
            result += place == place_attribute ? "&#9;" : "\t";
            break;
        default:
            result += c;
        }
    }
    return result;
}

std::string output_convert_to_xml(const std::wstring& text, elmx_place place) {
    return output_convert_to_xml(HostI18n::toUtf8(text), place);
}

bool is_xml_text(std::string_view utf8) {
    const auto is_allowed = [](char c) { return static_cast<unsigned char>(c) >= 0x20 || c == '\t' || c == '\n' || c == '\r'; };
    return std::all_of(utf8.begin(), utf8.end(), is_allowed) && utf8.find("\xef\xbf\xbe") == std::string_view::npos &&
           utf8.find("\xef\xbf\xbf") == std::string_view::npos;
}

} // namespace lmx60
