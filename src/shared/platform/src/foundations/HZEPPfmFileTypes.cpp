// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "HZEPPfmFileTypes.h"

namespace {

constexpr const char* kFileTypes[] = {
#define HZEP_NAME(name) #name,
    HZEP_FILE_TYPES(HZEP_NAME)};
constexpr const char* kTclFileTypes[] = {HZEP_TCL_FILE_TYPES(HZEP_NAME)};
#undef HZEP_NAME

template <class Type, std::size_t N>
std::map<Type, std::string> makeMap(const char* const (&names)[N]) {
    std::map<Type, std::string> map;
    for (std::size_t i = 0; i < N; ++i)
        map.emplace(static_cast<Type>(i), names[i]);
    return map;
}

const std::map<HZEPPfmFileTypes::FileType, std::string>& fileTypes() {
    static const auto map = makeMap<HZEPPfmFileTypes::FileType>(kFileTypes);
    return map;
}

const std::map<HZEPPfmFileTypes::TclFileType, std::string>& tclFileTypes() {
    static const auto map = makeMap<HZEPPfmFileTypes::TclFileType>(kTclFileTypes);
    return map;
}

template <class Type>
std::string textOf(const std::map<Type, std::string>& map, Type type) {
    const auto found = map.find(type);
    return found == map.end() ? std::string() : found->second;
}

template <class Type>
Type typeOf(const std::map<Type, std::string>& map, const std::string& text, Type unknown) {
    for (const auto& [type, name] : map)
        if (name == text)
            return type;
    return unknown;
}

} // namespace

std::map<HZEPPfmFileTypes::FileType, std::string> HZEPPfmFileTypes::getFileTypeMap() {
    return fileTypes();
}

std::map<HZEPPfmFileTypes::TclFileType, std::string> HZEPPfmFileTypes::getTclFileTypeMap() {
    return tclFileTypes();
}

std::string HZEPPfmFileTypes::toString(FileType type) {
    return textOf(fileTypes(), type);
}

std::string HZEPPfmFileTypes::toString(TclFileType type) {
    return textOf(tclFileTypes(), type);
}

HZEPPfmFileTypes::FileType HZEPPfmFileTypes::toFileType(const std::string& text) {
    return typeOf(fileTypes(), text, UNKNOWN_FILE_TYPE);
}

HZEPPfmFileTypes::TclFileType HZEPPfmFileTypes::toTclFileType(const std::string& text) {
    return typeOf(tclFileTypes(), text, TclFileType::UNKNOWN_TCL_FILE_TYPE);
}
