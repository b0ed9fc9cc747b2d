// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HZEPSystemClock.h"

#include "../hardware/AsciiCase.h"
#include "JSONObjectWriter.h"

using zep_platform::JSONObjectWriter;

void HZEPSystemClock::toJSON(JSONObjectWriter& writer) const {
    writer.addKey("name", name_);
    writer.addKey("origName", origName_);
    writer.addKey("id", std::to_string(id_));
    writer.addKey("frequency", frequency_);
    writer.addKey("instRef", instRef_);
    writer.addKey("compRef", compRef_);
    writer.addKey("period", period_);
    writer.addKey("normalizedPeriod", normalizedPeriod_);
    writer.addKey("status", status_);
}

bool HZEPSystemClock::isScalable() const {
    return ascii::equalsIgnoringCase(status_, "scalable") || ascii::equalsIgnoringCase(status_, "changeable");
}

bool HZEPSystemClock::isFixed() const {
    return ascii::equalsIgnoringCase(status_, "fixed");
}

bool HZEPSystemClock::isReserved() const {
    return ascii::equalsIgnoringCase(status_, "reserved");
}
