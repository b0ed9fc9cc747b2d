// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HostBoard.h"

#include <string>

namespace board_file {

/// Revision of the form that this code reads.
constexpr int kRevision = 1;

/// What the file says, except for its path. Raises HostError for a file that can't be read and HostDataException for one that is no board
/// file: with the line where it is no JSON, else with the member and what was expected.
HostBoard::Data read(const std::string& path);

} // namespace board_file
