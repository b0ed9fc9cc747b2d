// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include <string>

struct ZipMember;

/// The member's name in UTF-8: as a Unicode field tells it, else as it stands when that is UTF-8, else out of code page 437.
std::string getZipName(const ZipMember& member);

/// Why an archive with a member of this name must not be changed, in a few words; "" for a name that leads nowhere.
std::string getZipNameFault(const std::string& name);

/// Why no file may be written under this name, neither in an archive nor out of one: the above, and whatever systems differ in. "" for a
/// sound name; one with a trailing "/" is that of a folder.
std::string getZipPathFault(const std::string& name);
