// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include <boost/filesystem/path.hpp>

#include <functional>
#include <string>

/// Hands over everything below a directory, in the order of the file system, following links to directories; `levels` directories
/// below it are entered at most, so that loops end. What can't be read ends the walk without a word; what `visit` raises passes.
void walkDirectory(const std::string& directory, int levels, const std::function<void(const boost::filesystem::path&)>& visit);
