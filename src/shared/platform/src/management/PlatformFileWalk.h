// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include <functional>
#include <string>

/// Calls `use` for every platform file in the directory and `levels` of directories below it, following links to directories, until it
/// answers false. A link that leads nowhere is passed over, as is whatever bears a platform file's extension and is no file. Raises
/// what the directory iterator raises, and what `use` does.
void walkPlatformFiles(const std::string& directory, int levels, const std::function<bool(const std::string& path)>& use);
