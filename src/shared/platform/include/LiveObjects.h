// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HZEPExport.h"
#include "JSONSerializable.h"

namespace zep_platform {

/// Which of the model objects that a script holds are still there. A script's handle is a plain pointer, and its object goes with the
/// platform that owns it; so a binding watches what it hands out, and asks before it follows a pointer that comes back.
class HZEP_EXPORT LiveObjects {
public:
    /// From now until it dies the object counts as alive. Null is ignored.
    static void watch(const JSONSerializable* object);

    /// The object at this address is watched, is alive and is a T. The pointer is not followed unless it is alive.
    template <class T>
    static bool isAlive(const T* object) {
        const auto* const base = static_cast<const JSONSerializable*>(object);
        return isAliveAt_(base) && dynamic_cast<const T*>(base) == object;
    }

private:
    static bool isAliveAt_(const JSONSerializable* object);
};

} // namespace zep_platform
