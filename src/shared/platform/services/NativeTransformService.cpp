// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "NativeTransformService.h"

#include "HZEPJSONText.h"
#include "HostFile.h"
#include "NativeObjectService.h"

#include <fstream>
#include <sstream>

namespace zep::platform {

std::string NativeTransformService::getAsJsonStr(const std::string& file) const {
    return NativeObjectService().getAsJsonStr(file);
}

std::string NativeTransformService::getAsJsonStr(PlatformLoader* loader) const {
    return NativeObjectService().getAsJsonStr(loader);
}

std::string NativeTransformService::getTransformSpecAsJsonStr(const std::string& specFile) const {
    if (!specFile.ends_with(".json") || !HostFile::isRegularFile(specFile))
        return "";
    const std::ifstream file(specFile, std::ios::binary);
    std::ostringstream text;
    if (file)
        text << file.rdbuf();
    return text.str();
}

std::uint32_t NativeTransformService::getObjectsBySpec(const std::string&, const std::string& specFile) const {
    const std::string text = getTransformSpecAsJsonStr(specFile);
    if (text.empty())
        return 0;
    boost::property_tree::ptree spec;
    HZEPJSONText::read(text, spec);
    return static_cast<std::uint32_t>(spec.get_child("spec").size());
}

std::string NativeTransformService::getObjectsBySpec(PlatformLoader*, const std::string& specFile) const {
    return getTransformSpecAsJsonStr(specFile);
}

} // namespace zep::platform
