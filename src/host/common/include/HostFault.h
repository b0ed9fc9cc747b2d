// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include <cstddef>
#include <string>

/// Where something is wrong and what, as far as it is known: texts are empty and numbers 0 where it is not.
struct HostFault {
    std::string file;       ///< as it was given
    std::string member;     ///< of an archive, or the key in a document
    std::size_t line = 0;   ///< counted from 1
    std::size_t column = 0; ///< counted from 1, in bytes
    std::string cause;      ///< in words, without the place
};
