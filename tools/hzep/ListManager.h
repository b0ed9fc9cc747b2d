// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

#pragma once

#include "Session.h"

#include <string>
#include <vector>

/// Prints what the platform manager finds in the directories, and in the default ones before them: platforms, newest first, then loose
/// archives, and on stderr the text of each platform that it left out. With `json` one document with "platforms" and "errors".
/// Raises Answered when nothing but what it left out is there.
void listByManager(Session& session, const std::vector<std::string>& dirs, bool defaults, bool json);
