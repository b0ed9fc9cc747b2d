// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HZEPExport.h"

#include <string>

/// One file of an emulation: its type, its name in the archive, and the instance path that it is for. Null counts as "".
class HZEP_EXPORT HZEPEmulationFile {
public:
    void setType(const char* type);
    const std::string& getType() const { return type_; }
    void setName(const char* name);
    const std::string& getName() const { return name_; }
    void setInstPath(const char* instPath);
    const std::string& getInstPath() const { return instPath_; }

private:
    std::string type_;
    std::string name_;
    std::string instPath_;
};
