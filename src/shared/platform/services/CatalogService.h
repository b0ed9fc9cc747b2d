// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HZEPExport.h"

#include <string>

namespace zep_platform {
class PlatformLoader;
}

namespace zep::platform {

using zep_platform::PlatformLoader;

/// What a platform is, in a few flat keys of one JSON document, all scalars as text; `all` asks for the long variant. `reserved` changes
/// nothing. What a loader or a model reader raises passes, unless it says otherwise.
class HZEP_EXPORT CatalogService {
public:
    // The virtual operations stand in the order of the table that callers are compiled against.
    virtual ~CatalogService();

    /// One document of the platforms in the directories, joined by ":", under "platforms". Files that don't load, said on the standard
    /// output, and hidden platforms are left out; what is raised beyond that ends the list.
    virtual std::string getAllAsJsonStr(const std::string& repoPaths, bool all, bool reserved) const = 0;

    /// The document of one platform; "" for a null loader, and for a platform that doesn't load or is hidden.
    virtual std::string getAsJsonStr(const std::string& platformFile, bool all, bool reserved) const = 0;
    virtual std::string getAsJsonStr(PlatformLoader* loader, bool all, bool reserved) const = 0;

    /// The scalar at a dotted path in the long variant; "" where there is none, said on the standard output, and for an object or a list.
    virtual std::string getValue(const std::string& platformFile, const std::string& keyPath) const = 0;
    virtual std::string getValue(PlatformLoader* loader, const std::string& keyPath) const = 0;
};

} // namespace zep::platform
