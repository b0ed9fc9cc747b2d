// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HostErrors.h"
#include "HostText.h"

#include <string>

/// Raises HostError "<archive>: <cause>".
[[noreturn]] inline void failArchive(const std::string& archive, const std::string& cause) {
    throw HostError(archive + ": " + cause, HostFault{archive, "", 0, 0, cause});
}

/// Raises HostError "<archive>: <member>: <cause>".
[[noreturn]] inline void failMember(const std::string& archive, const std::string& member, const std::string& cause) {
    throw HostError(archive + ": " + HostText::makePrintable(member) + ": " + cause, HostFault{archive, member, 0, 0, cause});
}
