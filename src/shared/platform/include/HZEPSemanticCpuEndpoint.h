// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HZEPSemanticEndpoint.h"

/// An endpoint that a processor of the shell addresses. A value.
class HZEP_EXPORT HZEPSemanticCpuEndpoint : public HZEPSemanticEndpoint {
public:
    HZEPSemanticCpuEndpoint() = default;
    /// A fault among the keys of any endpoint is told by itself, and the key of this class is read all the same.
    explicit HZEPSemanticCpuEndpoint(const boost::property_tree::ptree& label);

    void toJSON(zep_platform::JSONObjectWriter& writer) const override;

    const std::string& getCpuType() const { return cpuType_; }

private:
    std::string cpuType_;
};
