// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HZEPEmulation.h"

void HZEPEmulation::setName(const char* name) {
    name_ = name ? name : "";
}

HZEPEmulationFile* HZEPEmulation::createFile(const char* type, const char* name) {
    HZEPEmulationFile* file = createFile();
    file->setType(type);
    file->setName(name);
    return file;
}
