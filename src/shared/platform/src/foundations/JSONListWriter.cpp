// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#include "JSONListWriter.h"

#include "JSONObjectWriter.h"

#include <utility>

namespace zep_platform {

void JSONListWriter::addItem(std::string value) {
    if (!value.empty())
        appendValue_(std::move(value));
}

void JSONListWriter::addItem(const char* value) {
    addItem(std::string(value ? value : ""));
}

void JSONListWriter::addItem(const JSONWriter& value) {
    if (!value.empty())
        appendTree_(JSONWriter(value));
}

void JSONListWriter::addItem(JSONWriter&& value) {
    if (!value.empty())
        appendTree_(std::move(value));
}

void JSONListWriter::addItem(const JSONSerializable* value) {
    JSONObjectWriter writer;
    writer.writeObject(value);
    addItem(std::move(writer));
}

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Winfinite-recursion"
// Calls itself without end: callers rely on no such item ever being in a list.
void JSONListWriter::addItem(bool) {
    addItem(true);
}
#pragma GCC diagnostic pop

} // namespace zep_platform
