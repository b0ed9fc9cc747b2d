// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "JSONSerializable.h"

#include <string>
#include <utility>

/// A host interface of the platform.
class HZEP_EXPORT HPLInterface : public zep_platform::JSONSerializable {
public:
    HPLInterface() = default;
    HPLInterface(const HPLInterface&) = delete;
    HPLInterface& operator=(const HPLInterface&) = delete;

    void toJSON(zep_platform::JSONObjectWriter& writer) const override;

    const std::string& getId() const { return id_; }
    void setId(std::string id) { id_ = std::move(id); }
    const std::string& getName() const { return name_; }
    void setName(std::string name) { name_ = std::move(name); }
    const std::string& getType() const { return type_; }
    void setType(std::string type) { type_ = std::move(type); }

private:
    std::string id_;
    std::string name_;
    std::string type_;
};
