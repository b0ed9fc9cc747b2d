// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HZEPExport.h"
#include "PlatformLoader.h"

#include <cstdint>
#include <string>

namespace zep::platform {

using zep_platform::PlatformLoader;

/// Reads a transform specification, a JSON file whose member "spec" lists what is to be done. Nothing is transformed yet:
/// what is answered tells of that file alone.
class HZEP_EXPORT TransformService {
public:
    // The virtual operations stand in the order of the table that callers are compiled against.
    virtual ~TransformService() = default;

    /// The document of the platform, as ObjectService gives it.
    virtual std::string getAsJsonStr(const std::string& file) const = 0;
    virtual std::string getAsJsonStr(PlatformLoader* loader) const = 0;

    /// The file as it stands; "" when it can't be opened or its name doesn't end in ".json".
    virtual std::string getTransformSpecAsJsonStr(const std::string& specFile) const = 0;

    /// How many entries "spec" has; 0 when there is no text. The platform is not looked at. Raises json_parser_error for text that
    /// is no JSON, ptree_bad_path when there is no "spec".
    virtual std::uint32_t getObjectsBySpec(const std::string& file, const std::string& specFile) const = 0;

    /// The text of the file as it stands.
    virtual std::string getObjectsBySpec(PlatformLoader* loader, const std::string& specFile) const = 0;
};

} // namespace zep::platform
