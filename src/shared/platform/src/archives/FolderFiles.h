// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include <map>
#include <string>

/// Names of members and the files that they get.
using MemberSources = std::map<std::string, std::string>;

/// A member name without the "/" at its end.
std::string withoutTrailingSeparators(std::string name);

/// All files below a folder as members below `name`, but not `archive` itself. Raises HostUserException, with `operation` before its words,
/// for links, special files, a folder that can't be read and one without files.
MemberSources findFolderFiles(const std::string& operation, const std::string& archive, const std::string& name, const std::string& folder);
