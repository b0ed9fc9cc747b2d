// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "JSONSerializable.h"

#include <string>
#include <utility>

/// One line of the archive's table of contents: the name of an entry and the type under which it is found.
class HZEP_EXPORT HPLFile : public zep_platform::JSONSerializable {
public:
    HPLFile() = default;
    HPLFile(const HPLFile&) = delete;
    HPLFile& operator=(const HPLFile&) = delete;

    void toJSON(zep_platform::JSONObjectWriter& writer) const override;

    const std::string& getName() const { return name_; }
    void setName(std::string name) { name_ = std::move(name); }
    const std::string& getType() const { return type_; }
    void setType(std::string type) { type_ = std::move(type); }
    const std::string& getUsedIn() const { return usedIn_; }
    void setUsedIn(std::string usedIn) { usedIn_ = std::move(usedIn); }
    const std::string& getProcessingOrder() const { return processingOrder_; }
    void setProcessingOrder(std::string processingOrder) { processingOrder_ = std::move(processingOrder); }

private:
    std::string name_;
    std::string type_;
    std::string usedIn_;
    std::string processingOrder_;
};
