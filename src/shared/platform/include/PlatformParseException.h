// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HZEPExport.h"
#include "HostFault.h"

#include <stdexcept>
#include <string>
#include <utility>

namespace zep_platform {

/// A platform, or a member file that it can't do without, could not be read; what() says which, the fault where and why.
class HZEP_EXPORT PlatformParseException : public std::runtime_error {
public:
    explicit PlatformParseException(const std::string& text, HostFault fault = {}) : std::runtime_error(text), fault_(std::move(fault)) {}
    const HostFault& getFault() const noexcept { return fault_; }

private:
    HostFault fault_;
};

} // namespace zep_platform
