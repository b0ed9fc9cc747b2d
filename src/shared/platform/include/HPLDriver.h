// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HZEPExport.h"

#include <string>
#include <utility>

/// A driver of the board. Not part of the document, which tells only how many a board has.
class HZEP_EXPORT HPLDriver {
public:
    HPLDriver() = default;
    HPLDriver(const HPLDriver&) = delete;
    HPLDriver& operator=(const HPLDriver&) = delete;

    const std::string& getName() const { return name_; }
    void setName(std::string name) { name_ = std::move(name); }
    const std::string& getVendor() const { return vendor_; }
    void setVendor(std::string vendor) { vendor_ = std::move(vendor); }
    const std::string& getVersion() const { return version_; }
    void setVersion(std::string version) { version_ = std::move(version); }
    const std::string& getPlatform() const { return platform_; }
    void setPlatform(std::string platform) { platform_ = std::move(platform); }
    const std::string& getFile() const { return file_; }
    void setFile(std::string file) { file_ = std::move(file); }

private:
    std::string name_;
    std::string vendor_;
    std::string version_;
    std::string platform_ = "lin";
    std::string file_;
};
