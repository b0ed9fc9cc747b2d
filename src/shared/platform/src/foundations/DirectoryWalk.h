// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include <boost/filesystem/path.hpp>
#include <boost/system/error_code.hpp>

#include <functional>
#include <string>

/// Hands over everything below a directory, in the order of the file system, following links to directories, until `visit` answers
/// false; `levels` directories below it are entered at most, so that loops end. What can't be read ends the walk and is the answer;
/// what `visit` raises passes.
boost::system::error_code walkDirectory(const std::string& directory, int levels,
                                        const std::function<bool(const boost::filesystem::path&)>& visit);
