// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "hzep_c_api.h"

#include "ChunkedText.h"
#include "HZEPPlatform.h"
#include "HostText.h"
#include "JSONObjectWriter.h"
#include "PlatformLoader.h"

#include <algorithm>
#include <memory>
#include <ostream>
#include <stdexcept>
#include <string>

namespace {

/// Names of files may be any bytes, and so come into a document; text is UTF-8.
char* makeUtf8(std::unique_ptr<char[]> text) {
    if (HostText::isUtf8(text.get()))
        return text.release();
    const std::string clean = HostText::toUtf8(text.get());
    text.reset(new char[clean.size() + 1]);
    std::copy_n(clean.c_str(), clean.size() + 1, text.get());
    return text.release();
}

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
    return makeUtf8(std::unique_ptr<char[]>(text.release()));
}

} // namespace

char* hzep_get_platform_json(const char* path) {
    return renderPlatform(path, [](zep_platform::JSONObjectWriter& writer, const HZEPPlatform& platform) { writer.writeObject(platform); });
}

char* hzep_get_short_platform_json(const char* path) {
    return renderPlatform(path, [](zep_platform::JSONObjectWriter& writer, const HZEPPlatform& platform) {
        writer.addKey("uniqueName", platform.getUniqueName());
        writer.addKey("file", platform.getPlatformFile());
        writer.addKey("description", platform.getDescription());
    });
}

void hzep_free_json_string(char* text) {
    delete[] text;
}
