// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include <string>

class HPLPlatform;

/// What is written to a folder first and becomes an archive then. Operations raise HostError.
namespace staged_files {

/// The platform's document, also raising what toJSON raises.
void writeDocument(const HPLPlatform& platform, const std::string& file);

/// Makes a new archive of the files in the folder, which is to hold one at least.
void pack(const std::string& folder, const std::string& archive, bool withDigest);

} // namespace staged_files
