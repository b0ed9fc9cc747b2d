// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HZEPHardwareIPParam.h"

#include "JSONObjectWriter.h"

using zep_platform::JSONObjectWriter;

void HZEPHardwareIPParam::toJSON(JSONObjectWriter& writer) const {
    writer.addKey("name", name_);
    writer.addKey("value", value_);
    writer.addKey("instRef", instRef_);
    writer.addKey("compRef", compRef_);
    writer.addKey("valid", isValid_);
}
