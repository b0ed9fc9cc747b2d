// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HostFault.h"

#include <map>
#include <string>
#include <utility>

/// The members that property files on disk were taken out of: while one stands, what is said on this thread of such a file can be said of
/// its member, which is there still when the file is gone.
class PropertyOrigins {
public:
    explicit PropertyOrigins(std::string archive) : archive_(std::move(archive)), before_(std::exchange(current_, this)) {}
    ~PropertyOrigins() { current_ = before_; }
    PropertyOrigins(const PropertyOrigins&) = delete;
    PropertyOrigins& operator=(const PropertyOrigins&) = delete;

    void add(const std::string& file, const std::string& member) { members_[file] = member; }

    /// The fault of a file as one of its member, if it has one.
    static HostFault place(HostFault fault) {
        if (!current_)
            return fault;
        if (const auto found = current_->members_.find(fault.file); found != current_->members_.end()) {
            fault.file = current_->archive_;
            fault.member = found->second;
        }
        return fault;
    }

private:
    static inline thread_local PropertyOrigins* current_ = nullptr;

    std::string archive_;
    std::map<std::string, std::string> members_;
    PropertyOrigins* before_;
};
