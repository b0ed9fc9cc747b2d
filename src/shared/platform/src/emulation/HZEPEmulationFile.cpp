// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HZEPEmulationFile.h"

namespace {

const char* orEmpty(const char* text) {
    return text ? text : "";
}

} // namespace

void HZEPEmulationFile::setType(const char* type) {
    type_ = orEmpty(type);
}

void HZEPEmulationFile::setName(const char* name) {
    name_ = orEmpty(name);
}

void HZEPEmulationFile::setInstPath(const char* instPath) {
    instPath_ = orEmpty(instPath);
}
