// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HostMsgMgr.h"

#include <boost/property_tree/ptree.hpp>

#include <cstdint>
#include <exception>
#include <locale>
#include <sstream>
#include <stdexcept>
#include <string>

/// The fields of one label. Each raises for a missing key and for a value of another form.
namespace label_fields {

inline std::string getText(const boost::property_tree::ptree& label, const char* key) {
    return label.get_child(key).get_value<std::string>();
}

inline int getNumber(const boost::property_tree::ptree& label, const char* key) {
    std::istringstream in(getText(label, key));
    in.imbue(std::locale::classic());
    int number = 0;
    if (!(in >> number) || !(in >> std::ws).eof())
        throw std::invalid_argument(key);
    return number;
}

/// 0 for a missing key.
inline int getOptionalNumber(const boost::property_tree::ptree& label, const char* key) {
    return label.count(key) == 0 ? 0 : getNumber(label, key);
}

/// "0x1000", "4096" and, octal, "010000".
inline std::uint64_t toAddress(const std::string& text) {
    return std::stoull(text, nullptr, 0);
}

inline std::uint64_t getAddress(const boost::property_tree::ptree& label, const char* key) {
    return toAddress(getText(label, key));
}

/// Reads as far as it goes; an exception becomes the message.
template <class Read>
void readLabel(const char* failureKey, Read read) {
    try {
        read();
    } catch (const std::exception&) {
        HostMsgMgr::getGlobal().send("platform", HostMsgMgr::Error, failureKey);
    }
}

} // namespace label_fields
