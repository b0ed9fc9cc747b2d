// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HostExport.h"
#include "HostFault.h"

#include <exception>
#include <string>
#include <utility>

/// Root of the host's exceptions; what() is the text it was raised with, the fault what a program may want to know of it: nothing when
/// the raiser told nothing.
class HOST_EXPORT HostErrorBase : public std::exception {
public:
    explicit HostErrorBase(std::string text, HostFault fault = {}) : text_(std::move(text)), fault_(std::move(fault)) {}
    const char* what() const noexcept override { return text_.c_str(); }
    const HostFault& getFault() const noexcept { return fault_; }

private:
    std::string text_;
    HostFault fault_;
};

/// A failure of the host layer itself: a file, an archive or a service that could not do its work.
class HOST_EXPORT HostError : public HostErrorBase {
public:
    using HostErrorBase::HostErrorBase;
};

/// Malformed text given to an algorithm, or an operation used against its rules.
class HOST_EXPORT HostAlgException : public HostError {
public:
    using HostError::HostError;
};

/// Data of a wrong form.
class HOST_EXPORT HostDataException : public HostError {
public:
    using HostError::HostError;
};

/// What a user asked for can't be done, for example a file that can't be written.
class HOST_EXPORT HostUserException : public HostError {
public:
    using HostError::HostError;
};

/// A file that must exist does not; what() is its path.
class HOST_EXPORT HostFileNotFoundException : public HostError {
public:
    using HostError::HostError;
};

/// An XML document that can't be read.
class HOST_EXPORT HostXMLException : public HostError {
public:
    using HostError::HostError;
};
