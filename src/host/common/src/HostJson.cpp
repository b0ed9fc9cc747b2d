// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HostJson.h"

#include "HostText.h"
#include "JsonAllocator.h"

#include <rapidjson/encodings.h>
#include <rapidjson/memorystream.h>
#include <rapidjson/reader.h>

#include <algorithm>
#include <cstdint>

namespace {

using Reader = rapidjson::GenericReader<rapidjson::UTF8<>, rapidjson::UTF8<>, JsonAllocator>;

constexpr unsigned kFlags = rapidjson::kParseIterativeFlag | rapidjson::kParseValidateEncodingFlag | rapidjson::kParseNumbersAsStringsFlag;

bool isBlank(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

/// How many bytes of a byte order mark there are; by the first one alone, as nothing else that begins so is JSON.
std::size_t getMarkSize(std::string_view text) {
    return text.starts_with('\xEF') && text.size() >= 3 && HostText::isUtf8(text.substr(0, 3)) ? 3 : 0;
}

/// Behind the text that begins with the quote at `at`.
std::size_t skipText(std::string_view text, std::size_t at) {
    for (++at; at < text.size() && text[at] != '"'; ++at)
        if (text[at] == '\\')
            ++at;
    return std::min(at + 1, text.size());
}

/// Behind the number at `at`; `at` when there is none.
std::size_t skipNumber(std::string_view text, std::size_t at) {
    const auto digits = [text](std::size_t from) { return std::min(text.find_first_not_of("0123456789", from), text.size()); };
    const auto is = [text](std::size_t i, std::string_view any) { return i < text.size() && any.find(text[i]) != any.npos; };
    const std::size_t first = at + is(at, "-");
    std::size_t end = is(first, "0") ? first + 1 : digits(first);
    if (end == first)
        return at;
    if (is(end, ".") && is(end + 1, "0123456789"))
        end = digits(end + 1);
    if (is(end, "eE"))
        if (const std::size_t exponent = end + 1 + is(end + 1, "+-"); is(exponent, "0123456789"))
            end = digits(exponent);
    return end;
}

/// The text with numbers in place of its longer numbers that the parser, which works out their values, finds none too large of.
std::string withTameNumbers(std::string_view text) {
    constexpr std::size_t kAlwaysTame = 3;
    std::string tame(text);
    for (std::size_t at = 0; at < text.size();) {
        if (text[at] == '"') {
            at = skipText(text, at);
        } else if (const std::size_t end = skipNumber(text, at); end > at) {
            // What follows a number must not go on with the other one.
            if (const std::size_t size = end - at; size > kAlwaysTame)
                tame.replace(at, size,
                             std::string(text.substr(at, size).find_first_of("eE") == text.npos ? "0." : "0e").append(size - 2, '0'));
            at = end;
        } else {
            ++at;
        }
    }
    return tame;
}

/// Keeps the rules that the parser does not know, and gives numbers as they are written.
class Forwarder {
public:
    Forwarder(std::string_view text, const rapidjson::MemoryStream& stream, std::size_t start, std::size_t told, HostJson::Events& events)
        : text_(text), stream_(stream), start_(start), toldBefore_(told), hasEscapes_(text.find("\\u") != text.npos), events_(events) {}

    bool Null() { return value("null"); }
    bool Bool(bool value) { return this->value(value ? "true" : "false"); }
    bool RawNumber(const char*, rapidjson::SizeType size, bool) { return value(text_.substr(offset() - size, size)); }
    bool String(const char* text, rapidjson::SizeType size, bool) { return isClean({text, size}) && value({text, size}); }
    bool Key(const char* text, rapidjson::SizeType size, bool) {
        return isClean({text, size}) && (isTold() || events_.key({text, size}, offset()));
    }
    bool StartObject() { return open(false); }
    bool StartArray() { return open(true); }
    bool EndObject(rapidjson::SizeType) { return close(); }
    bool EndArray(rapidjson::SizeType) { return close(); }

    // Numbers come as text.
    bool Int(int) { return false; }
    bool Uint(unsigned) { return false; }
    bool Int64(std::int64_t) { return false; }
    bool Uint64(std::uint64_t) { return false; }
    bool Double(double) { return false; }

    std::size_t getTold() const { return told_; }

private:
    std::size_t offset() const { return start_ + static_cast<std::size_t>(stream_.src_ - stream_.begin_); }

    /// The events of a reading that was broken off for a number are not told again.
    bool isTold() { return told_++ < toldBefore_; }

    bool value(std::string_view text) { return isTold() || events_.value(text, offset()); }
    bool open(bool isList) { return depth_++ < HostJson::kMaxDepth && (isTold() || events_.open(isList, offset())); }
    bool close() {
        --depth_;
        return isTold() || events_.close(offset());
    }

    /// The parser lets an escaped low surrogate without its high one through; it shows as the three bytes of a surrogate.
    bool isClean(std::string_view text) const {
        if (!hasEscapes_)
            return true;
        for (std::size_t at = 0; (at = text.find('\xED', at)) != text.npos; ++at)
            if (at + 1 < text.size() && static_cast<unsigned char>(text[at + 1]) >= 0xA0)
                return false;
        return true;
    }

    const std::string_view text_;
    const rapidjson::MemoryStream& stream_;
    const std::size_t start_;
    const std::size_t toldBefore_;
    const bool hasEscapes_;
    HostJson::Events& events_;
    std::size_t told_ = 0;
    std::size_t depth_ = 0;
};

/// Reads `parsed`, which is `text` but for its numbers.
bool readOnce(std::string_view text, std::string_view parsed, HostJson::Events& events, std::size_t& told, bool& isNumberTooBig) {
    const std::size_t start = getMarkSize(text);
    rapidjson::MemoryStream stream(parsed.data() + start, parsed.size() - start);
    Forwarder forwarder(text, stream, start, told, events);
    Reader reader;
    const rapidjson::ParseResult result = reader.Parse<kFlags>(stream, forwarder);
    told = forwarder.getTold();
    isNumberTooBig = result.Code() == rapidjson::kParseErrorNumberTooBig;
    // A zero byte ends the stream early.
    return !result.IsError() && start + stream.Tell() == text.size();
}

struct Count {
    std::size_t values = 1;
    std::size_t containers = 0;
};

std::size_t countOf(char wanted, std::string_view text) {
    std::size_t count = 0;
    for (std::size_t at = 0; (at = text.find(wanted, at)) != text.npos; ++at)
        ++count;
    return count;
}

/// No fewer than a text has, whatever its quotes enclose.
Count countAtMost(std::string_view text) {
    const std::size_t containers = countOf('{', text) + countOf('[', text);
    return {1 + containers + countOf(',', text), containers};
}

/// Exactly for a text that is JSON, and up to its fault for one that is not.
Count countExactly(std::string_view text) {
    Count count;
    bool isOpened = false;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char c = text[at];
        if (isBlank(c))
            continue;
        // The first item of a container has no comma.
        count.values += c == ',' || (isOpened && c != ']' && c != '}');
        isOpened = c == '[' || c == '{';
        count.containers += isOpened;
        if (c == '"')
            at = skipText(text, at) - 1;
    }
    return count;
}

} // namespace

HostJson::Events::~Events() = default;

std::string HostJson::getRefusal(std::string_view text) {
    if (text.size() > kMaxBytes)
        return "larger than " + std::to_string(kMaxBytes >> 20) + " MiB";
    const auto refuse = [text](const Count& count) -> std::string {
        const std::string bytes = " in " + std::to_string(text.size()) + " bytes";
        if (count.values > getMaxValues(text.size()))
            return "more than " + std::to_string(getMaxValues(text.size())) + " values" + bytes;
        if (count.containers > getMaxContainers(text.size()))
            return "more than " + std::to_string(getMaxContainers(text.size())) + " objects and lists" + bytes;
        return "";
    };
    // There is no room for more than are free in a short one.
    return text.size() < kFreeContainers || refuse(countAtMost(text)).empty() ? "" : refuse(countExactly(text));
}

bool HostJson::read(std::string_view text, Events& events) {
    return getRefusal(text).empty() && readPart(text, events);
}

bool HostJson::readPart(std::string_view text, Events& events) {
    std::size_t told = 0;
    bool isNumberTooBig = false;
    if (readOnce(text, text, events, told, isNumberTooBig))
        return true;
    return isNumberTooBig && readOnce(text, withTameNumbers(text), events, told, isNumberTooBig);
}
