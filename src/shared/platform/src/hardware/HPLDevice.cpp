// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HPLDevice.h"

#include "ModelJson.h"

using zep_platform::JSONObjectWriter;

void HPLDevice::toJSON(JSONObjectWriter& writer) const {
    writer.addKey("name", getName());
    writer.addKey("type", type_);
    writer.addKey("fpgaPart", getFpgaPart());
    JSONObjectWriter part;
    part.addKey("name", getPartName());
    part.addKey("architecture", getPartArch());
    part.addKey("device", getPartDevice());
    part.addKey("package", getPartPackage());
    part.addKey("speedGrade", getPartSpeed());
    part.addKey("tempGrade", getPartTempGrade());
    part.addKey("staPower", getPartStaPower());
    part.addKey("revision", getPartRevision());
    writer.addKey("part", std::move(part));
    if (getNumSLRs() != 0)
        writer.addKey("numSLRs", std::to_string(getNumSLRs()));
    model_json::addPairs(writer, "scalableSystemClocks", systemClockMap_, "name", "frequency");
    writer.addKey("core", &core_);
}

void HPLDevice::addSystemClock(const std::string& name, const std::string& frequency) {
    systemClockMap_[name] = frequency;
}
