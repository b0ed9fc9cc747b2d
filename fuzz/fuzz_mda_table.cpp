// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "FuzzInput.h"
#include "HMDAArchive.h"
#include "HostErrors.h"
#include "JSONObjectWriter.h"
#include "ZipBuilder.h"

#include <sstream>
#include <vector>

namespace fs = std::filesystem;

namespace {

std::string textOf(const HMDAArchive& archive) {
    zep_platform::JSONObjectWriter writer;
    writer.writeObject(archive);
    std::ostringstream text;
    writer.write(text);
    return text.str();
}

/// The table's names are also members of the archive, as far as an archive may be told of them; nothing may land beside the target.
void extractAll(HMDAArchive& archive) {
    static const InputFile file(".mda");
    std::vector<std::string> types, names;
    archive.getFiles().getTypes(types);
    archive.getFiles().getNames(names);
    if (types.size() > 20)
        return;
    ZipBuilder builder;
    for (const std::string& name : names)
        builder.add(name.substr(0, 1000), "x");
    const std::string bytes = builder.bytes();
    const std::string path = file.write(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    archive.setFile(path);
    const fs::path around = path + ".d";
    for (const std::string& type : types)
        try {
            archive.extract(type, (around / "target").string());
        } catch (const HostErrorBase&) {
        }
    for (const auto& entry : fs::directory_iterator(around))
        if (entry.path().filename() != "target")
            std::abort();
    fs::remove_all(around);
}

} // namespace

/// An index is read or refused with an exception. One that was read can be written, and comes back the same from then on.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    silence();
    HMDAArchive archive, again;
    try {
        if (!archive.parseJsonString(std::string(reinterpret_cast<const char*>(data), size)))
            return 0;
    } catch (const std::exception&) {
        return 0;
    }
    const std::string written = textOf(archive);
    if (!again.parseJsonString(written) || textOf(again) != written)
        std::abort();
    if (!archive.getFiles().empty())
        extractAll(archive);
    return 0;
}
