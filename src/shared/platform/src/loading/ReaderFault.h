// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HostFault.h"

#include <exception>
#include <string>

/// What an exception, caught by the reader of a file or of a member of an archive, tells of the place and the cause.
HostFault toReaderFault(const std::exception& error, const std::string& file, const std::string& member = "");
