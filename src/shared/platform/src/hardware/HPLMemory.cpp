// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HPLMemory.h"

#include "ModelJson.h"

#include <algorithm>
#include <iterator>
#include <string_view>

using zep_platform::JSONObjectWriter;

namespace {

constexpr std::string_view kParams[] = {
    "AXI_ARBITRATION_SCHEME", "MEMORY_PART",  "MEM_ADDR_MAP",      "TIMEPERIOD_PS",     "DATA_WIDTH",       "CAS_LATENCY",
    "CAS_WRITE_LATENCY",      "BURST_LENGTH", "C0.APP_ADDR_WIDTH", "C0.APP_DATA_WIDTH", "C0.ControllerType"};

/// Behind "C0.DDR3" or "C0.DDR4".
constexpr std::string_view kControllerParams[] = {"_ADDR_WIDTH",
                                                  "_AXI_ADDR_WIDTH",
                                                  "_AXI_DATA_WIDTH",
                                                  "_AXI_ID_WIDTH",
                                                  "_AutoPrecharge",
                                                  "_AxiNarrowBurst",
                                                  "_BANK_GROUP_WIDTH",
                                                  "_BANK_WIDTH",
                                                  "_CL",
                                                  "_COLUMN_WIDTH",
                                                  "_CWL",
                                                  "_Mem_Add_Map",
                                                  "_Ordering",
                                                  "_RANK_WIDTH",
                                                  "_ROW_WIDTH",
                                                  "_tCK",
                                                  "_tCKE",
                                                  "_tFAW",
                                                  "_tMRD",
                                                  "_tRAS",
                                                  "_tRCD",
                                                  "_tREFI",
                                                  "_tRFC",
                                                  "_tRP",
                                                  "_tRRD",
                                                  "_tRRD_L",
                                                  "_tRRD_S",
                                                  "_tRTP",
                                                  "_tWR",
                                                  "_tWTR",
                                                  "_tWTR_L",
                                                  "_tWTR_S",
                                                  "_tXPR",
                                                  "_tZQCS",
                                                  "_tZQI",
                                                  "_tZQINIT"};

template <std::size_t Size>
bool contains(const std::string_view (&names)[Size], std::string_view name) {
    return std::find(std::begin(names), std::end(names), name) != std::end(names);
}

bool isKnownParam(const std::string& type, std::string_view name) {
    const std::string_view prefix = type == "ddr3" ? "C0.DDR3" : "C0.DDR4";
    return contains(kParams, name) || (name.starts_with(prefix) && contains(kControllerParams, name.substr(prefix.size())));
}

} // namespace

void HPLMemory::toJSON(JSONObjectWriter& writer) const {
    writer.addKey("name", name_);
    writer.addKey("type", type_);
    writer.addKey("size", size_);
    model_json::addPairs(writer, "configParams", configParamMap_, "name", "value");
    if (!areLowAndHighAddrsAtDefault_()) {
        writer.addKey("lowAddress", std::to_string(lowestAddress_));
        writer.addKey("highAddress", std::to_string(highestAddress_));
    }
}

void HPLMemory::addConfigParam(const std::string& name, const std::string& value) {
    if (isKnownParam(type_, name))
        configParamMap_[name] = value;
}
