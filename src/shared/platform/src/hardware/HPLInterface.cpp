// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HPLInterface.h"

#include "JSONObjectWriter.h"

using zep_platform::JSONObjectWriter;

void HPLInterface::toJSON(JSONObjectWriter& writer) const {
    writer.addKey("id", id_);
    writer.addKey("name", name_);
    writer.addKey("type", type_);
}
