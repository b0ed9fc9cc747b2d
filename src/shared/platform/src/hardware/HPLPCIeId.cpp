// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HPLPCIeId.h"

#include "JSONObjectWriter.h"

using zep_platform::JSONObjectWriter;

void HPLPCIeId::toJSON(JSONObjectWriter& writer) const {
    writer.addKey("vendor", vendor_);
    writer.addKey("device", device_);
    writer.addKey("subsystem", subsystem_);
    writer.addKey("featureId", featureId_);
}
