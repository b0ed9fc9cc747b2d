// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "FuzzInput.h"
#include "HZEPJSONText.h"
#include "HZEPSemanticLabelReader.h"
#include "HostErrors.h"
#include "JSONObjectWriter.h"

#include <sstream>

using boost::property_tree::ptree;

namespace {

template <class Generate>
void checkDocument(Generate generate) {
    std::ostringstream text;
    try {
        generate(text);
    } catch (const HostDataException&) {
        return;
    }
    ptree tree;
    HZEPJSONText::read(text.str(), tree);
}

} // namespace

/// A label file is read or refused; what was read gives documents that are JSON, or is refused for a name of too many parts.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    silence();
    static const InputFile file(".json");
    HZEPSemanticLabelReader reader;
    if (!reader.parseFile(file.write(data, size)))
        return 0;
    checkDocument([&](std::ostream& out) { reader.generatePartitionMetadata(out); });
    checkDocument([&](std::ostream& out) { reader.generateExtMetadata("/top/dynamic", out); });
    checkDocument([&](std::ostream& out) {
        zep_platform::JSONObjectWriter writer;
        writer.writeObject(reader);
        writer.write(out);
    });
    return 0;
}
