// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HZEPReconfigPartition.h"

#include "JSONObjectWriter.h"

#include <string>
#include <utility>

using zep_platform::JSONObjectWriter;

namespace {

void addId(JSONObjectWriter& writer, const char* key, std::uint32_t id) {
    if (id != 0)
        writer.addKey(key, std::to_string(id));
}

} // namespace

void HZEPReconfigPartition::toJSON(JSONObjectWriter& writer) const {
    addId(writer, "designID", designID_);
    addId(writer, "parentID", parentID_);
    addId(writer, "nodeID", nodeID_);
    addId(writer, "functionID", functionID_);

    JSONObjectWriter engines;
    addId(engines, "plInterfaceID", vcePlInterfaceID_);
    addId(engines, "nodeID", vceNodeID_);
    addId(engines, "uniqueID", vceUniqueID_);
    addId(engines, "puID", vcePuID_);
    writer.addKey("vcengineIDs", std::move(engines));
}
