// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "JSONWriter.h"

namespace zep_platform {

/// Writes named members. A value on a present key replaces the one there and keeps its place; a tree, writer or object on a present
/// key adds a second member of that name. Empty texts, trees and writers and null objects write nothing.
class HZEP_EXPORT JSONObjectWriter : public JSONWriter {
public:
    /// The object's members become members of this writer, without nesting.
    void writeObject(const JSONSerializable* object);
    void writeObject(const JSONSerializable& object);

    void addKey(std::string_view key, std::string value);
    void addKey(std::string_view key, const char* value);
    /// "true" or "false", always written.
    void addKey(std::string_view key, bool value);
    void addKey(std::string_view key, const JSONWriter& value);
    void addKey(std::string_view key, JSONWriter&& value);
    void addKey(std::string_view key, const boost::property_tree::ptree& value);
    void addKey(std::string_view key, boost::property_tree::ptree&& value);
    /// An object that writes nothing leaves no key.
    void addKey(std::string_view key, const JSONSerializable* value);

    template <JSONMisfit T>
    void addKey(std::string_view key, T value) = delete;
};

} // namespace zep_platform
