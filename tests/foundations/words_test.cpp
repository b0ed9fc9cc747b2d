// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "Documents.h"
#include "HPLPlatform.h"
#include "HZEPEmulationUtils.h"
#include "HZEPPfmFileTypes.h"
#include "HZEPVceHardware.h"
#include "NativeDictService.h"
#include "TempDir.h"
#include "WholePlatform.h"
#include "ZipBuilder.h"

#include <iterator>
#include <sstream>

namespace {

using Words = std::vector<std::string>;

/// The words that stand in the file behind the head.
Words wordsBehind(const std::string& head) {
    std::string text = readTestFile("foundations/words.txt");
    text.erase(0, text.find(head) + head.size());
    std::istringstream words(text.substr(0, text.find(':')));
    return {std::istream_iterator<std::string>(words), {}};
}

template <class Map>
Words numbered(const Map& map) {
    Words words;
    for (const auto& [number, word] : map)
        words.push_back(std::to_string(static_cast<int>(number)) + "=" + word);
    return words;
}

// Each word of each list, those that are asked for one by one in the order of the file.
TEST(Words, OfEveryList) {
    std::string text;
    const auto add = [&text](const std::string& head, const auto& words) {
        text += wrapped(head, Words(std::begin(words), std::end(words)));
    };
    for (const std::string type : {"ddr3", "ddr4"}) {
        const std::string head = "parameters of " + type + ":";
        HPLMemory memory;
        memory.setType(type);
        Words kept;
        for (const std::string& word : wordsBehind(head)) {
            memory.addConfigParam(word, "1");
            if (memory.getConfigParamMap().contains(word))
                kept.push_back(word);
        }
        add(head, kept);
    }
    add("file types:", numbered(HZEPPfmFileTypes::getFileTypeMap()));
    add("script types:", numbered(HZEPPfmFileTypes::getTclFileTypeMap()));
    add("vector engines:", numbered(HZEPVceHardware::getArchMap()));
    add("hosts:", HPLPlatform::getHostArchTypesAsStr());
    add("extensions:", HZEPHardwarePlatform::getValidPlatformExts());
    add("unused of memory subsystems:", HZEPEmulationUtils::getUnUsedZepMemorySubSystemParams());
    add("unused of memories:", HZEPEmulationUtils::getUnUsedParamatersInDDRModel(0));
    add("unused of clocks:", HZEPEmulationUtils::getUnUsedCLKSettings());
    const TempDir dir;
    Words keys;
    for (const auto& [key, value] :
         zep::platform::NativeDictService().getFilteredDict(ZipBuilder(dir.path("a.kar")).add("kar.json", wholeMetadata()).write(), ""))
        keys.push_back(key);
    add("keys of a dictionary:", keys);
    expectTestFile("foundations/words.txt", text + ":\n");
}

} // namespace
