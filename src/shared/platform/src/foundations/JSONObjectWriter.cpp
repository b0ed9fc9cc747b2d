// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "JSONObjectWriter.h"

#include <utility>

namespace zep_platform {

void JSONObjectWriter::writeObject(const JSONSerializable* object) {
    if (object)
        object->toJSON(*this);
}

void JSONObjectWriter::writeObject(const JSONSerializable& object) {
    object.toJSON(*this);
}

void JSONObjectWriter::addKey(std::string_view key, std::string value) {
    if (!value.empty())
        putValue_(key, std::move(value));
}

void JSONObjectWriter::addKey(std::string_view key, const char* value) {
    addKey(key, std::string(value ? value : ""));
}

void JSONObjectWriter::addKey(std::string_view key, bool value) {
    putValue_(key, value ? "true" : "false");
}

void JSONObjectWriter::addKey(std::string_view key, const JSONWriter& value) {
    if (!value.empty())
        addTree_(key, JSONWriter(value));
}

void JSONObjectWriter::addKey(std::string_view key, JSONWriter&& value) {
    if (!value.empty())
        addTree_(key, std::move(value));
}

void JSONObjectWriter::addKey(std::string_view key, const boost::property_tree::ptree& value) {
    if (!value.empty())
        addTree_(key, value);
}

void JSONObjectWriter::addKey(std::string_view key, boost::property_tree::ptree&& value) {
    if (!value.empty())
        addTree_(key, std::move(value));
}

void JSONObjectWriter::addKey(std::string_view key, const JSONSerializable* value) {
    JSONObjectWriter writer;
    writer.writeObject(value);
    addKey(key, std::move(writer));
}

} // namespace zep_platform
