// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HPLFile.h"

#include "JSONObjectWriter.h"

using zep_platform::JSONObjectWriter;

void HPLFile::toJSON(JSONObjectWriter& writer) const {
    writer.addKey("name", name_);
    writer.addKey("type", type_);
    writer.addKey("usedIn", usedIn_);
    writer.addKey("processingOrder", processingOrder_);
}
