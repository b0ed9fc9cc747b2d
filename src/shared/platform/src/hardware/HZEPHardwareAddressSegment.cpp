// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HZEPHardwareAddressSegment.h"

#include "JSONObjectWriter.h"

using zep_platform::JSONObjectWriter;

void HZEPHardwareAddressSegment::toJSON(JSONObjectWriter& writer) const {
    writer.addKey("baseName", baseName_);
    writer.addKey("index", std::to_string(index_));
    writer.addKey("memoryInstance", memoryInstance_);
    writer.addKey("auto", autoAssign_);
    writer.addKey("spTag", spTag_);
    writer.addKey("slr", slr_);
    writer.addKey("maxMasters", std::to_string(maxMasters_));
    writer.addKey("name", name_);
    writer.addKey("instRef", instanceRef_);
    writer.addKey("region", region_);
    writer.addKey("readBwUsed", std::to_string(readBwUsed_));
    writer.addKey("writeBwUsed", std::to_string(writeBwUsed_));
    writer.addKey("interleave", std::to_string(interleave_));
}
