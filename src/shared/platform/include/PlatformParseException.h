// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HZEPExport.h"

#include <stdexcept>

namespace zep_platform {

/// A platform, or a member file that it can't do without, could not be read; what() says which.
class HZEP_EXPORT PlatformParseException : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

} // namespace zep_platform
