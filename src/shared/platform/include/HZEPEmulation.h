// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HZEPEmulationFile.h"
#include "HZEPExport.h"
#include "HZEPOwnedList.h"

#include <string>
#include <vector>

/// One emulation variant of a platform and its files, which it owns.
class HZEP_EXPORT HZEPEmulation {
public:
    HZEPEmulation() = default;
    HZEPEmulation(const HZEPEmulation&) = delete;
    HZEPEmulation& operator=(const HZEPEmulation&) = delete;

    /// Null counts as "".
    void setName(const char* name);
    const std::string& getName() const { return name_; }

    /// In the order in which they were created.
    const std::vector<HZEPEmulationFile*>& getFiles() const { return files_.items(); }
    HZEPEmulationFile* createFile() { return files_.add(); }
    HZEPEmulationFile* createFile(const char* type, const char* name);

private:
    std::string name_;
    HZEPOwnedList<HZEPEmulationFile> files_;
};
