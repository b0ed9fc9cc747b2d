// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "hzep_c_api.h"

#include "ChunkedText.h"
#include "HZEPPlatform.h"
#include "HostText.h"
#include "JSONObjectWriter.h"
#include "PlatformLoader.h"

#include <ostream>
#include <stdexcept>

namespace {

/// The loaded platform goes, then the tree, and only then is the whole text laid out: a large document is never held in all three
/// forms.
template <class Fill>
char* renderPlatform(const char* path, const Fill& fill) {
    if (!path)
        throw std::logic_error("basic_string::_M_construct null not valid");
    ChunkedText text;
    {
        zep_platform::JSONObjectWriter writer;
        if (const auto platform = zep_platform::PlatformLoader(path, zep_platform::PlatformLoader::PreferAlternateJson).load())
            fill(writer, *platform);
        else
            return nullptr;
        std::ostream stream(&text);
        stream.exceptions(std::ios::badbit | std::ios::failbit);
        writer.write(stream);
    }
    return text.release();
}

} // namespace

char* hzep_get_platform_json(const char* path) {
    return renderPlatform(path, [](zep_platform::JSONObjectWriter& writer, const HZEPPlatform& platform) { writer.writeObject(platform); });
}

char* hzep_get_short_platform_json(const char* path) {
    return renderPlatform(path, [](zep_platform::JSONObjectWriter& writer, const HZEPPlatform& platform) {
        writer.addKey("uniqueName", HostText::toUtf8(platform.getUniqueName()));
        writer.addKey("file", HostText::toUtf8(platform.getPlatformFile()));
        writer.addKey("description", platform.getDescription());
    });
}

void hzep_free_json_string(char* text) {
    delete[] text;
}
