// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HZEPExport.h"

namespace zep_platform {

class JSONObjectWriter;

/// Base of every model class that writes itself into a JSON document.
class HZEP_EXPORT JSONSerializable {
public:
    JSONSerializable() = default;
    JSONSerializable(const JSONSerializable&) noexcept {}
    JSONSerializable& operator=(const JSONSerializable&) noexcept { return *this; }
    virtual void toJSON(JSONObjectWriter& writer) const = 0;
    virtual ~JSONSerializable() {
        if (watched_)
            forget_();
    }

private:
    friend class LiveObjects;
    void forget_();

    /// LiveObjects wants to know when this object dies; a copy is another object.
    mutable bool watched_ = false;
};

} // namespace zep_platform
