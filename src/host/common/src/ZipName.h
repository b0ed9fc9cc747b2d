// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include <string>

struct ZipMember;

/// The member's name in UTF-8: as a Unicode field tells it, else as it stands when that is UTF-8, else out of code page 437.
std::string getZipName(const ZipMember& member);

/// Why a member must not bear this name, in a few words; null for a name that stays below the folder it is unpacked to.
const char* getZipNameFault(const std::string& name);
