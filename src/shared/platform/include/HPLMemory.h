// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "JSONSerializable.h"

#include <cstdint>
#include <map>
#include <string>
#include <utility>

/// A memory that the platform declares. The size is text such as "16GB".
class HZEP_EXPORT HPLMemory : public zep_platform::JSONSerializable {
public:
    HPLMemory() = default;
    HPLMemory(const HPLMemory&) = delete;
    HPLMemory& operator=(const HPLMemory&) = delete;

    void toJSON(zep_platform::JSONObjectWriter& writer) const override;

    const std::string& getName() const { return name_; }
    void setName(std::string name) { name_ = std::move(name); }
    const std::string& getType() const { return type_; }
    void setType(std::string type) { type_ = std::move(type); }
    const std::string& getSize() const { return size_; }
    void setSize(std::string size) { size_ = std::move(size); }
    std::uint64_t getLowestAddress() const { return lowestAddress_; }
    void setLowestAddress(std::uint64_t lowestAddress) { lowestAddress_ = lowestAddress; }
    std::uint64_t getHighestAddress() const { return highestAddress_; }
    void setHighestAddress(std::uint64_t highestAddress) { highestAddress_ = highestAddress; }

    /// Keeps known parameters of the memory controller, and drops others silently. Which are known depends on the type at the
    /// time of the call, so setType comes first.
    void addConfigParam(const std::string& name, const std::string& value);
    const std::map<std::string, std::string>& getConfigParamMap() const { return configParamMap_; }

    /// Both addresses are 0, and so stay out of the document.
    bool areLowAndHighAddrsAtDefault_() const { return lowestAddress_ == 0 && highestAddress_ == 0; }

private:
    std::string name_;
    std::string type_;
    std::string size_;
    std::uint64_t lowestAddress_ = 0;
    std::uint64_t highestAddress_ = 0;
    std::map<std::string, std::string> configParamMap_;
};
