// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "JSONSerializable.h"

#include <map>
#include <string>
#include <utility>

/// An IP instance of the platform's design with its configuration.
class HZEP_EXPORT HZEPDesignIPInstance : public zep_platform::JSONSerializable {
public:
    HZEPDesignIPInstance() = default;
    HZEPDesignIPInstance(const HZEPDesignIPInstance&) = delete;
    HZEPDesignIPInstance& operator=(const HZEPDesignIPInstance&) = delete;

    /// A dotted name of the configuration nests: "a.b" is written as the object "a" with the member "b". It stays one literal
    /// key "a.b" where nesting can't be written: beside a value under "a", with an empty part ("a..b", ".a"), or of more than
    /// kMaxNestedParts parts. So every configuration gives a document that can be written.
    void toJSON(zep_platform::JSONObjectWriter& writer) const override;

    static constexpr unsigned kMaxNestedParts = 16;

    const std::string& getVLNV() const { return vlnv_; }
    void setVLNV(std::string vlnv) { vlnv_ = std::move(vlnv); }
    const std::string& getInstanceName() const { return instanceName_; }
    void setInstanceName(std::string instanceName) { instanceName_ = std::move(instanceName); }

    /// Raises HostAlgException for a name that is there already; the first value stays.
    void addConfigParam(const std::string& name, const std::string& value);
    /// Copies the whole map over `out`.
    void getConfigParamMap(std::map<std::string, std::string>& out) const { out = configParams_; }

private:
    std::string vlnv_;
    std::string instanceName_;
    std::map<std::string, std::string> configParams_;
};
