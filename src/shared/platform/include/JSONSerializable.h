// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HZEPExport.h"

namespace zep_platform {

class JSONObjectWriter;

/// Base of every model class that writes itself into a JSON document.
class HZEP_EXPORT JSONSerializable {
public:
    virtual void toJSON(JSONObjectWriter& writer) const = 0;
    virtual ~JSONSerializable() = default;
};

} // namespace zep_platform
