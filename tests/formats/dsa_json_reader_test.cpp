// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "Documents.h"
#include "HPLPlatform.h"
#include "HZEPDsaJsonReader.h"
#include "MessageLog.h"
#include "TempDir.h"
#include "WholePlatform.h"
#include "ZipBuilder.h"

#include <gmock/gmock.h>

#include <chrono>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using zep_platform::PlatformLoader;

namespace {

/// An archive of these members; each is a document that carries its own member name.
std::string makeArchive(const TempDir& dir, const std::string& name, const std::vector<std::string>& members) {
    ZipBuilder zip(dir.path(name));
    zip.add("readme.txt", "x");
    for (const std::string& member : members)
        zip.add(member, "{\"name\": \"" + member + "\"}");
    return zip.write();
}

constexpr auto kOtherMode = static_cast<PlatformLoader::HwMetadataMode>(3);

} // namespace

TEST(HZEPDsaJsonReader, ModesChooseTheMember) {
    const struct {
        std::vector<std::string> members;
        PlatformLoader::HwMetadataMode mode;
        bool answer;
        const char* entry; // "-": untouched
        bool emuAnswer;
        const char* emuEntry;
    } rows[] = {
        {{"kar.json", "alt_kar.json"}, PlatformLoader::PreferAlternateJson, true, "alt_kar.json", false, ""},
        {{"kar.json", "alt_kar.json"}, PlatformLoader::PrimaryJsonOnly, true, "kar.json", false, ""},
        {{"kar.json", "alt_kar.json"}, kOtherMode, true, "kar.json", false, ""},
        {{"kar.json"}, PlatformLoader::PreferAlternateJson, true, "kar.json", false, ""},
        {{"alt_kar.json"}, PlatformLoader::PrimaryJsonOnly, false, "kar.json", false, "-"},
        {{"alt_kar.json"}, kOtherMode, true, "kar.json", false, ""},
        {{"dsa.json", "kar.xml"}, PlatformLoader::PreferAlternateJson, false, "-", false, "-"},
        {{"kar.json"}, PlatformLoader::XmlOnly, false, "-", false, "-"},
        {{"kar.json", "hw_emu/kar.json", "hw_emu/alt_kar.json"},
         PlatformLoader::PreferAlternateJson,
         true,
         "kar.json",
         true,
         "hw_emu/kar.json"},
        {{"kar.json", "hw_emu/alt_kar.json"}, PlatformLoader::PreferAlternateJson, true, "kar.json", true, "hw_emu/alt_kar.json"},
        {{"kar.json", "hw_emu/alt_kar.json"}, PlatformLoader::PrimaryJsonOnly, true, "kar.json", false, ""},
        {{"kar.json", "hw_emu/alt_kar.json"}, kOtherMode, true, "kar.json", true, "hw_emu/alt_kar.json"},
        {{"hw_emu/kar.json"}, PlatformLoader::PreferAlternateJson, false, "-", false, "-"},
    };
    TempDir dir;
    MessageLog log;
    int index = 0;
    for (const auto& row : rows) {
        SCOPED_TRACE(index);
        // Neither the name of the archive nor the way to it plays a part.
        makeArchive(dir, std::to_string(index) + ".kar", row.members);
        const std::string archive = dir.path("./" + std::to_string(index) + ".kar");
        HPLPlatform platform;
        std::string entry = "-";
        EXPECT_EQ(HZEPDsaJsonReader(&platform).canParse(archive, row.mode, entry), row.answer);
        EXPECT_EQ(entry, row.entry);
        const std::string canonical = row.mode == PlatformLoader::XmlOnly ? "" : dir.path(std::to_string(index) + ".kar");
        EXPECT_EQ(platform.getPlatformFile(), canonical);

        HPLPlatform read;
        EXPECT_EQ(HZEPDsaJsonReader(&read).parseDSA(archive, row.mode), row.answer && row.members.front() != "alt_kar.json");
        EXPECT_EQ(read.getName(), row.answer && row.members.front() != "alt_kar.json" ? row.entry : "");
        EXPECT_FALSE(read.isChildHardwareEmuPlatform());

        HPLPlatform child;
        std::string emuEntry = "-";
        EXPECT_EQ(HZEPDsaJsonReader(&child).canParseHwEmu(archive, row.mode, emuEntry), row.emuAnswer);
        EXPECT_EQ(emuEntry, row.emuEntry);
        EXPECT_EQ(HZEPDsaJsonReader(&child).parseHwEmuKAR(archive, row.mode), row.emuAnswer);
        EXPECT_EQ(child.isChildHardwareEmuPlatform(), row.emuAnswer);
        EXPECT_EQ(child.getName(), row.emuAnswer ? row.emuEntry : "");
        ++index;
    }
    // A mode of no name takes the primary member at its word, and says so when it isn't there.
    EXPECT_THAT(log.lines, ElementsAre(testing::StartsWith("critical warning|@74-64@%s%s%s|kar.json|" + dir.path("./5.kar") + "|")));
}

TEST(HZEPDsaJsonReader, MissingArchive) {
    MessageLog log;
    HPLPlatform platform;
    std::string entry = "-";
    HZEPDsaJsonReader reader(&platform);
    EXPECT_FALSE(reader.canParse("", PlatformLoader::PreferAlternateJson, entry));
    EXPECT_FALSE(reader.parseDSA("/no/such.kar", PlatformLoader::XmlOnly));
    EXPECT_FALSE(reader.parseHwEmuKAR("/no/such.kar", PlatformLoader::PrimaryJsonOnly));
    EXPECT_FALSE(reader.canParseHwEmu("/no/such.kar", PlatformLoader::XmlOnly, entry));
    EXPECT_EQ(entry, "-");
    EXPECT_EQ(platform.getPlatformFile(), "");
    EXPECT_THAT(log.lines, ElementsAre("critical warning|@74-66@%s|", "critical warning|@74-66@%s|/no/such.kar",
                                       "critical warning|@74-66@%s|/no/such.kar"));
}

TEST(HZEPDsaJsonReader, ReadsArchiveFileAndTextAlike) {
    TempDir dir;
    MessageLog log;
    const std::string archive = ZipBuilder(dir.path("a.dsa")).add("dsa.json", wholeMetadata()).write();
    HPLPlatform fromArchive;
    ASSERT_TRUE(HZEPDsaJsonReader(&fromArchive).parseDSA(archive, PlatformLoader::PreferAlternateJson));
    HPLPlatform fromFile;
    ASSERT_TRUE(HZEPDsaJsonReader(&fromFile).parseFile(dir.write("a.json", wholeMetadata())));
    fromFile.setPlatformFile(archive);
    EXPECT_EQ(documentOf(fromArchive), documentOf(fromFile));

    HPLPlatform broken;
    HZEPDsaJsonReader reader(&broken);
    EXPECT_FALSE(reader.parseFile(dir.path("absent.json")));
    EXPECT_FALSE(reader.parseFile(dir.path()));
    EXPECT_FALSE(reader.parseFile(dir.write("empty.json", "")));
    EXPECT_FALSE(reader.parseFile(dir.write("broken.json", "{\"a\": ")));
    EXPECT_FALSE(reader.parseFile(dir.write("device.json", "{\"devices\": [{}]}")));
    EXPECT_THAT(log.lines, IsEmpty());
}

TEST(HZEPDsaJsonReader, BadDocumentsAreToldOnceAndAnswerFalse) {
    const std::string good = R"({"name": "x"})";
    const auto part = [](const char* text) {
        return R"({"devices": [{"name": "fpga0", "fpgaPart": ")" + std::string(text) + R"(", "core": {}}]})";
    };
    const auto member = [](const std::string& content) {
        ZipBuilder::Member made;
        made.name = "kar.json";
        made.content = content;
        return made;
    };
    ZipBuilder::Member encrypted = member(good);
    encrypted.flags = 1;
    ZipBuilder::Member huge = member(good);
    huge.size = 1ULL << 40;
    const struct {
        const char* name;
        ZipBuilder::Member member;
        const char* cause; // part of the message; null: no message
        bool emuOpens = true;
    } rows[] = {
        {"empty", member(""), nullptr},
        {"syntax error", member("{\n\"name\": \"x\",\n\"vendor\" \"y\"\n}"), "3"},
        {"cut text", member("{\"name\": \"x\""), "1"},
        {"too deep", member(std::string(100000, '[') + std::string(100000, ']')), ""},
        {"device without core", member(R"({"devices": [{"name": "fpga0"}]})"), "core"},
        {"3 part tokens", member(part("a:b:c")),
         "HZEPDevice::convertFpgaDeviceToPart_ - FPGA Device (string) format not as expected: 'a:b:c'"},
        {"no UUID", member(R"({"featureRoms": [{"uuid": "x"}]})"), "Unable to convert string to Feature ROM UUID: 'x'"},
        {"encrypted", encrypted, "kar.json", false},
        {"announces 1 TiB", huge, "kar.json", false},
    };
    TempDir dir;
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        ZipBuilder::Member emu = row.member;
        emu.name = "hw_emu/kar.json";
        const std::string archive = ZipBuilder(dir.path("a.kar")).add(row.member).add(emu).write();
        const auto start = std::chrono::steady_clock::now();
        MessageLog log;
        HPLPlatform platform;
        EXPECT_FALSE(HZEPDsaJsonReader(&platform).parseDSA(archive, PlatformLoader::PreferAlternateJson));
        if (row.cause)
            EXPECT_THAT(log.lines,
                        ElementsAre(testing::AllOf(testing::StartsWith("critical warning|@74-64@%s%s%s|kar.json|" + archive + "|"),
                                                   HasSubstr(row.cause))));
        else
            EXPECT_THAT(log.lines, IsEmpty());

        log.lines.clear();
        HPLPlatform child;
        EXPECT_FALSE(HZEPDsaJsonReader(&child).parseHwEmuKAR(archive, PlatformLoader::PreferAlternateJson));
        EXPECT_FALSE(child.isChildHardwareEmuPlatform());
        if (!row.emuOpens)
            EXPECT_THAT(log.lines, ElementsAre("critical warning|@74-67@%s%s|" + archive + "|hw_emu/kar.json"));
        else if (row.cause)
            EXPECT_THAT(log.lines, ElementsAre(testing::StartsWith("critical warning|@74-64@%s%s%s|hw_emu/kar.json|" + archive + "|")));
        else
            EXPECT_THAT(log.lines, IsEmpty());
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(2));
    }
}

TEST(HZEPDsaJsonReader, CostGrowsWithTheText) {
    std::string document = R"({"busInterfaces": [)";
    for (int i = 0; i < 20000; ++i)
        document += (i ? "," : "") + std::string(R"({"name": "b)") + std::to_string(i) + R"(", "mode": "master", "typeRef": "aximm"})";
    // Distinct values, and one pblock a device: none of them may be searched from the start for each new one.
    document += R"(], "validAcceleratorBinaryContentValues": ")";
    for (int i = 0; i < 50000; ++i)
        document += "v" + std::to_string(i) + ",";
    document += R"("})";
    const auto start = std::chrono::steady_clock::now();
    HPLPlatform platform;
    ASSERT_TRUE(HZEPDsaJsonReader(&platform).parseJsonString(document));
    EXPECT_EQ(platform.getMaxAXIMMManagers(), 20000u);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
}
