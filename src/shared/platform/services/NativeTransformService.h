// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "TransformService.h"

namespace zep::platform {

class HZEP_EXPORT NativeTransformService : public TransformService {
public:
    std::string getAsJsonStr(const std::string& file) const override;
    std::string getAsJsonStr(PlatformLoader* loader) const override;
    std::string getTransformSpecAsJsonStr(const std::string& specFile) const override;
    std::uint32_t getObjectsBySpec(const std::string& file, const std::string& specFile) const override;
    std::string getObjectsBySpec(PlatformLoader* loader, const std::string& specFile) const override;
};

} // namespace zep::platform
