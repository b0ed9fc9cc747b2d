// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HZEPExport.h"

#include <string>
#include <utility>

/// An address segment of a core's port.
class HZEP_EXPORT HPLAddressSegment {
public:
    HPLAddressSegment() = default;
    HPLAddressSegment(const HPLAddressSegment&) = delete;
    HPLAddressSegment& operator=(const HPLAddressSegment&) = delete;

    const std::string& getName() const { return name_; }
    void setName(std::string name) { name_ = std::move(name); }
    const std::string& getBase() const { return base_; }
    void setBase(std::string base) { base_ = std::move(base); }
    const std::string& getRange() const { return range_; }
    void setRange(std::string range) { range_ = std::move(range); }
    const std::string& getSlaveName() const { return slaveName_; }
    void setSlaveName(std::string slaveName) { slaveName_ = std::move(slaveName); }

private:
    std::string name_;
    std::string base_;
    std::string range_;
    std::string slaveName_;
};
