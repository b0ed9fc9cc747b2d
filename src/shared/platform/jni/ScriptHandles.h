// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HPLDevice.h"
#include "HZEPPlatform.h"
#include "HZEPPlatformHelper.h"
#include "HostFwdIter.h"
#include "LiveObjects.h"
#include "SimpleFixedKARCreator.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

/// What the generated wrappers of every language share.
namespace hzep_script {

/// Model objects can die under a script's handle and are watched; all else lives as long as its handle.
template <class T>
constexpr bool isWatched() {
    if constexpr (requires { sizeof(T); })
        return std::is_base_of_v<zep_platform::JSONSerializable, T>;
    else
        return false;
}

template <class T>
bool isUsable(const T* object) {
    if constexpr (isWatched<T>())
        return object && zep_platform::LiveObjects::isAlive(object);
    else
        return object != nullptr;
}

template <class T>
void handOut(const T* object) {
    if constexpr (isWatched<T>())
        zep_platform::LiveObjects::watch(object);
}

/// Every device that the library hands out is an HPLDevice, and scripts make none. Its watched part is found without a look at the object,
/// which may be gone.
inline bool isUsable(const HZEPDevice* device) {
    using zep_platform::JSONSerializable;
    if (!device)
        return false;
    static const HPLDevice sample;
    static const std::ptrdiff_t distance = reinterpret_cast<const char*>(static_cast<const HZEPDevice*>(&sample)) -
                                           reinterpret_cast<const char*>(static_cast<const JSONSerializable*>(&sample));
    const auto* const base = reinterpret_cast<const JSONSerializable*>(reinterpret_cast<const char*>(device) - distance);
    return zep_platform::LiveObjects::isAlive(base) && dynamic_cast<const HPLDevice*>(base);
}
inline void handOut(const HZEPDevice* device) {
    zep_platform::LiveObjects::watch(static_cast<const HPLDevice*>(device));
}

/// What a list holds is watched from the moment that the list is filled, and a list is passed on only while all of it is there.
template <class T>
void handOut(const std::vector<T*>* list) {
    for (const T* item : *list)
        handOut(item);
}
template <class T>
bool hasLiveItems(const std::vector<T*>& list) {
    return std::all_of(list.begin(), list.end(), [](const T* item) { return !item || isUsable(item); });
}

/// These two refer to a platform that is a script's own; they are called only while it is there.
inline void handOut(const HZEPPlatformHelper* helper) {
    handOut(helper->getPlatform());
}
template <class T>
bool isCallable(const T* self, std::string_view) {
    return isUsable(self);
}
inline bool isCallable(const HZEPPlatformHelper* self, std::string_view operation) {
    return self && (operation.starts_with("delete_") || !self->getPlatform() || isUsable(self->getPlatform()));
}
inline bool isCallable(const SimpleFixedKARCreator* self, std::string_view operation) {
    return self && (operation.starts_with("delete_") || operation.ends_with("setSeedPlatform") || !self->getSeedPlatform() ||
                    isUsable(self->getSeedPlatform()));
}

/// Told to scripts as an object that is closed.
class GoneError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// An item of a list, which may have died since.
template <class T>
T* checkItem(T* item) {
    if (item && !isUsable(item))
        throw GoneError("the object of this item is gone");
    return item;
}
template <class T>
const T& checkItem(const T& value) {
    return value;
}

/// Told to scripts as their own kind of index error.
class IndexError : public std::out_of_range {
public:
    using std::out_of_range::out_of_range;
};

inline std::size_t checkIndex(long index, std::size_t size) {
    if (index < 0 || static_cast<unsigned long>(index) >= size)
        throw IndexError("index " + std::to_string(index) + " is out of range, there are " + std::to_string(size) + " elements");
    return static_cast<std::size_t>(index);
}

/// An iterator over the elements as they were when it was made: it outlives the object that it walks, and its end raises IndexError.
template <class T>
class DetachedIter : public HostFwdIter<T> {
public:
    /// Takes the iterator over.
    explicit DetachedIter(HostFwdIter<T>* source) {
        const std::unique_ptr<HostFwdIter<T>> owned(source);
        while (owned->hasNext())
            items_.push_back(owned->next());
        if constexpr (std::is_pointer_v<T>)
            handOut(&items_);
    }

    bool hasNext() const override { return at_ < items_.size(); }
    T next() override {
        if (!hasNext())
            throw IndexError("the iterator is at its end");
        return checkItem(items_[at_++]);
    }

private:
    std::vector<T> items_;
    std::size_t at_ = 0;
};

template <class T>
HostFwdIter<T>* detach(HostFwdIter<T>* source) {
    return source ? new DetachedIter<T>(source) : nullptr;
}

} // namespace hzep_script
