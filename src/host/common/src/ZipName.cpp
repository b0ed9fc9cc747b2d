// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "ZipName.h"

#include "HostI18n.h"
#include "HostText.h"
#include "HostZip.h"
#include "ZipDirectory.h"
#include "ZipRecord.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include <zlib.h>

namespace {

// The upper half of code page 437.
constexpr std::wstring_view kUpperHalf = L"ÇüéâäàåçêëèïîìÄÅÉæÆôöòûùÿÖÜ¢£¥₧ƒ"
                                         L"áíóúñÑªº¿⌐¬½¼¡«»░▒▓│┤╡╢╖╕╣║╗╝╜╛┐"
                                         L"└┴┬├─┼╞╟╚╔╩╦╠═╬╧╨╤╥╙╘╒╓╫╪┘┌█▄▌▐▀"
                                         L"αßΓπΣσµτΦΘΩδ∞φε∩≡±≥≤⌠⌡÷≈°∙·√ⁿ²■\u00a0";
static_assert(kUpperHalf.size() == 128);
constexpr std::uint16_t kUnicodeName = 0x7075;

/// Holds as long as the name that it was made for is the one that stands there.
std::optional<std::string> findUnicodeName(const ZipMember& member) {
    zip_record::Reader extra(member.extra);
    while (extra.left() >= 4) {
        const std::uint16_t id = extra.u16();
        const std::size_t size = extra.u16();
        zip_record::Reader field(extra.text(size));
        if (id != kUnicodeName || field.left() < 5 || field.number(1) != 1)
            continue;
        const auto* name = reinterpret_cast<const Bytef*>(member.name.data());
        if (field.u32() != crc32(0, name, static_cast<uInt>(member.name.size())))
            continue;
        if (std::string text(field.text(field.left())); HostText::isUtf8(text))
            return text;
    }
    return std::nullopt;
}

std::vector<std::string_view> split(std::string_view name) {
    std::vector<std::string_view> parts;
    for (std::size_t at = 0; at <= name.size(); at += parts.back().size() + 1)
        parts.push_back(name.substr(at, name.find('/', at) - at));
    return parts;
}

} // namespace

std::string getZipName(const ZipMember& member) {
    if (auto name = findUnicodeName(member))
        return *name;
    const std::string& name = member.name;
    const auto isPlain = [](char c) { return static_cast<unsigned char>(c) < 0x80; };
    if (std::all_of(name.begin(), name.end(), isPlain) || HostText::isUtf8(name))
        return name;
    std::wstring text;
    for (const char c : name)
        text += isPlain(c) ? static_cast<wchar_t>(c) : kUpperHalf[static_cast<unsigned char>(c) - 0x80];
    return HostI18n::toUtf8(text);
}

std::string getZipNameFault(const std::string& name) {
    if (name.empty())
        return "it has no name";
    if (name.size() > 0xffff)
        return "its name is too long";
    if (name.find('\0') != std::string::npos)
        return "its name holds a zero byte";
    if (name.find('\\') != std::string::npos)
        return "its name holds a back-slash";
    if (name.front() == '/')
        return "its name is absolute";
    for (const std::string_view part : split(name))
        if (part == "..")
            return "its name leads out of the archive";
    return "";
}

std::string getZipPathFault(const std::string& name) {
    if (std::string fault = getZipNameFault(name); !fault.empty())
        return fault;
    if (std::any_of(name.begin(), name.end(), [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7f; }))
        return "its name holds a control character";
    if (!HostText::isUtf8(name))
        return "its name is not UTF-8";
    std::vector<std::string_view> parts = split(name);
    if (parts.back().empty())
        parts.pop_back();
    if (parts.size() > HostZip::kMaxNameParts)
        return "its name has more than " + std::to_string(HostZip::kMaxNameParts) + " parts";
    if (parts[0].size() >= 2 && parts[0][1] == ':')
        return "its name begins with a drive letter";
    for (const std::string_view part : parts)
        if (part.empty() || part == ".")
            return "its name has the part '" + std::string(part) + "'";
    return "";
}
