// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HZEPSemanticEndpoint.h"

/// An endpoint that is reached through a PCIe base address register. A value.
class HZEP_EXPORT HZEPSemanticPcieEndpoint : public HZEPSemanticEndpoint {
public:
    HZEPSemanticPcieEndpoint() = default;
    /// A fault among the keys of any endpoint is told by itself, and the keys of this class are read all the same.
    explicit HZEPSemanticPcieEndpoint(const boost::property_tree::ptree& label);

    void toJSON(zep_platform::JSONObjectWriter& writer) const override;

    int getPhysicalFunction() const { return physicalFunction_; }
    int getBar() const { return bar_; }

private:
    int physicalFunction_ = 0;
    int bar_ = 0;
};
