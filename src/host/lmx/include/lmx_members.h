// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "lmx_errors.h"

#include <cstddef>
#include <memory>
#include <type_traits>
#include <utility>
#include <vector>

namespace lmx60 {

/// Attribute or simple element: a value and a flag that tells whether it was set.
template <class T, bool IsOptional>
class ct_simple {
public:
    using value_type = T;
    /// Plain numbers come by value, all else by reference.
    using answer_type = std::conditional_t<std::is_arithmetic_v<T>, T, const T&>;
    static constexpr bool is_optional = IsOptional;

    answer_type get() const { return value_; }
    bool is_set() const { return is_set_; }
    elmx_error set(T value) {
        value_ = std::move(value);
        is_set_ = true;
        return error_none;
    }
    /// Sets the flag; the value is for the caller to change in place.
    T& set() {
        is_set_ = true;
        return value_;
    }
    /// Back to the given value with the flag false.
    void preset(T value) {
        value_ = std::move(value);
        is_set_ = false;
    }
    void unset() { preset(T()); }
    bool operator==(const ct_simple& other) const { return is_set_ == other.is_set_ && value_ == other.value_; }

private:
    T value_{};
    bool is_set_ = false;
};

template <class T>
using ct_simple_pod_single = ct_simple<T, false>;
template <class T>
using ct_simple_pod_optional = ct_simple<T, true>;
template <class T>
using ct_simple_non_pod_single = ct_simple<T, false>;
template <class T>
using ct_simple_non_pod_optional = ct_simple<T, true>;

[[noreturn]] HOST_EXPORT void throw_absent(const char* name);
[[noreturn]] HOST_EXPORT void throw_bad_index(std::size_t index, std::size_t size);

/// Child element that occurs at most once: an owning pointer, copied and compared by what it points at.
template <class T>
class ct_child {
public:
    ct_child() = default;
    ct_child(const ct_child& other) : child_(other.child_ ? other.child_->do_clone() : nullptr) {}
    ct_child(ct_child&& other) noexcept = default;
    ct_child& operator=(ct_child other) noexcept {
        child_.swap(other.child_);
        return *this;
    }
    ~ct_child() = default;

    bool is_set() const { return child_ != nullptr; }
    const T& get(const char* name) const {
        if (!child_) {
            throw_absent(name);
        }
        return *child_;
    }
    T& get() {
        if (!child_) {
            child_ = std::make_unique<T>();
        }
        return *child_;
    }
    /// Takes the child over. Null gives the old one up: the caller owns what comes back, else null comes back.
    T* assign(T* child) {
        if (!child) {
            return child_.release();
        }
        if (child != child_.get()) {
            child_.reset(child);
        }
        return nullptr;
    }
    void assign(const T& child) {
        if (&child != child_.get()) {
            get() = child;
        }
    }
    void unset() { child_.reset(); }
    bool operator==(const ct_child& other) const { return child_ && other.child_ ? *child_ == *other.child_ : child_ == other.child_; }

private:
    std::unique_ptr<T> child_;
};

/// Child element that can repeat: owning pointers, copied and compared by what they point at.
template <class T>
class ct_child_list {
public:
    ct_child_list() = default;
    ct_child_list(const ct_child_list& other) {
        children_.reserve(other.children_.size());
        for (const auto& child : other.children_) {
            children_.emplace_back(child->do_clone());
        }
    }
    ct_child_list(ct_child_list&& other) noexcept = default;
    ct_child_list& operator=(ct_child_list other) noexcept {
        children_.swap(other.children_);
        return *this;
    }
    ~ct_child_list() = default;

    std::size_t size() const { return children_.size(); }
    const T& get(std::size_t index) const {
        check(index);
        return *children_[index];
    }
    /// Appends default objects until the index exists.
    T& get(std::size_t index) {
        while (children_.size() <= index) {
            append();
        }
        return *children_[index];
    }
    T& append() {
        if (children_.capacity() == 0) {
            children_.reserve(4);
        }
        return *children_.emplace_back(std::make_unique<T>());
    }
    void append(T* child) { insert(children_.size(), child); }
    T& insert(std::size_t index) { return **children_.insert(place(index), std::make_unique<T>()); }
    /// Takes the child over; null does nothing.
    void insert(std::size_t index, T* child) {
        if (std::unique_ptr<T> owned(child); owned) {
            children_.insert(place(index), std::move(owned));
        }
    }
    /// As ct_child::assign for the element at the index (null takes the element out of the list); at or past the end it appends.
    T* assign(std::size_t index, T* child) {
        if (index >= children_.size()) {
            append(child);
            return nullptr;
        }
        if (!child) {
            T* const old = children_[index].release();
            children_.erase(place(index));
            return old;
        }
        if (child != children_[index].get()) {
            children_[index].reset(child);
        }
        return nullptr;
    }
    void assign(std::size_t index, const T& child) {
        if (index >= children_.size()) {
            children_.emplace_back(child.do_clone());
        } else if (&child != children_[index].get()) {
            *children_[index] = child;
        }
    }
    T& back() {
        if (children_.empty()) {
            throw_bad_index(0, 0);
        }
        return *children_.back();
    }
    const T& back() const {
        if (children_.empty()) {
            throw_bad_index(0, 0);
        }
        return *children_.back();
    }
    void remove(std::size_t index) {
        check(index);
        children_.erase(place(index));
    }
    void clear() { children_.clear(); }
    bool operator==(const ct_child_list& other) const {
        if (children_.size() != other.children_.size()) {
            return false;
        }
        for (std::size_t i = 0; i < children_.size(); ++i) {
            if (!(*children_[i] == *other.children_[i])) {
                return false;
            }
        }
        return true;
    }

private:
    auto place(std::size_t index) {
        return children_.begin() + static_cast<std::ptrdiff_t>(index < children_.size() ? index : children_.size());
    }
    void check(std::size_t index) const {
        if (index >= children_.size()) {
            throw_bad_index(index, children_.size());
        }
    }

    std::vector<std::unique_ptr<T>> children_;
};

} // namespace lmx60
