// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "JSONWriter.h"

namespace zep_platform {

/// Writes the items of an array. Empty texts and writers and null objects are skipped.
class HZEP_EXPORT JSONListWriter : public JSONWriter {
public:
    void addItem(std::string value);
    void addItem(const char* value);
    void addItem(const JSONWriter& value);
    void addItem(JSONWriter&& value);
    /// An object that writes nothing adds no item.
    void addItem(const JSONSerializable* value);
    /// Never returns. A boolean is added as the text "true" or "false".
    void addItem(bool value);

    template <JSONMisfit T>
    void addItem(T value) = delete;
};

} // namespace zep_platform
