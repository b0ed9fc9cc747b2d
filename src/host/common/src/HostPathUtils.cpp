// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HostPathUtils.h"

#include "HostFile.h"

bool HostPathUtils::exists(const std::string& path) {
    return HostFile::exists(path);
}
