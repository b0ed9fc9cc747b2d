// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HostFwdIter.h"
#include "HostFwdStlIter.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

/// The elements that a model object owns, in the order in which they were added. What it hands out lives as long as the list.
template <class T>
class HZEPOwnedList {
public:
    HZEPOwnedList() = default;
    ~HZEPOwnedList() { clear(); }
    HZEPOwnedList(const HZEPOwnedList&) = delete;
    HZEPOwnedList& operator=(const HZEPOwnedList&) = delete;

    T* add() { return add(std::make_unique<T>()); }
    T* add(std::unique_ptr<T> item) {
        items_.push_back(item.get());
        return item.release();
    }

    /// Takes the element out and deletes it; one that is not in the list is left alone.
    void remove(const T* item) {
        const auto at = std::find(items_.begin(), items_.end(), item);
        if (at == items_.end())
            return;
        const std::unique_ptr<T> owned(*at);
        items_.erase(at);
    }

    /// Deletes all, the first one first.
    void clear() {
        for (T* item : std::exchange(items_, {}))
            delete item;
    }

    template <class Matches>
    void removeIf(Matches matches) {
        std::erase_if(items_, [&matches](T* item) {
            if (!matches(*item))
                return false;
            delete item;
            return true;
        });
    }

    const std::vector<T*>& items() const { return items_; }
    void appendTo(std::vector<T*>& out) const { out.insert(out.end(), items_.begin(), items_.end()); }

    /// Belongs to the caller, and must go before the list changes.
    HostFwdIter<T*>* createIter() const { return new HostFwdStlIter<std::vector<T*>>(items_); }

    bool empty() const { return items_.empty(); }
    std::size_t size() const { return items_.size(); }
    auto begin() const { return items_.begin(); }
    auto end() const { return items_.end(); }

private:
    std::vector<T*> items_;
};
