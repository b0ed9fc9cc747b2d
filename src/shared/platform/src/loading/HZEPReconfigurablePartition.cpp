// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HZEPReconfigurablePartition.h"

#include "HZEPHardwarePlatform.h"
#include "JSONObjectWriter.h"

HZEPReconfigurablePartition::HZEPReconfigurablePartition(std::uint32_t id) : id_(id) {}

HZEPReconfigurablePartition::~HZEPReconfigurablePartition() = default;

void HZEPReconfigurablePartition::toJSON(zep_platform::JSONObjectWriter& writer) const {
    writer.addKey("id", std::to_string(id_));
    writer.addKey("hardwarePlatform", hardwarePlatform_);
    if (hasDistinctHardwareEmulationPlatform())
        writer.addKey("hwEmuPlatform", hardwareEmulationPlatform_);
}
