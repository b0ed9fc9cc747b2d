// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "LiveObjects.h"

#include <unordered_set>

namespace zep_platform {

namespace {

/// Never destroyed: objects may die after every static of this library.
std::unordered_set<const JSONSerializable*>& watchedObjects() {
    static auto* const objects = new std::unordered_set<const JSONSerializable*>;
    return *objects;
}

} // namespace

void LiveObjects::watch(const JSONSerializable* object) {
    if (object && watchedObjects().insert(object).second)
        object->watched_ = true;
}

bool LiveObjects::isAliveAt_(const JSONSerializable* object) {
    return watchedObjects().contains(object);
}

void JSONSerializable::forget_() {
    watchedObjects().erase(this);
}

} // namespace zep_platform
