// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "HZEPDsaJsonReader.h"
#include "HpfmDocument.h"
#include "TempDir.h"
#include "XmlMetadataSupport.h"
#include "ZipBuilder.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;
using zep_platform::PlatformLoader;

namespace {

const std::string kLists = R"(
    "description": "not read",
    "systemClocks": [{"name": "document clock", "id": "9"}],
    "ipParameters": [{"name": "document parameter"}],
    "busInterfaces": [{"name": "document bus"}],
    "nocConnectivity": [{"instRef": "document noc"}])";

std::string documentWith(const std::string& hpfmName) {
    return "{\"name\": \"egret\", \"files\": [{\"type\": \"Hpfm\", \"name\": \"" + hpfmName + "\"}]," + kLists + "}";
}

std::vector<std::string> busNames(const HPLPlatform& platform) {
    std::vector<std::string> names;
    for (const HZEPHardwareBusInterface* bus : elementsOf(platform.createBusInterfaceIter()))
        names.push_back(bus->getName());
    return names;
}

std::vector<std::string> nocNames(const HPLPlatform& platform) {
    std::vector<std::string> names;
    for (const HZEPHardwareNocConnectivity* noc : elementsOf(platform.createNocConnectivityIter()))
        names.push_back(noc->getInstanceRef());
    return names;
}

} // namespace

TEST(DsaJsonHpfm, ItsListsGoBeforeTheDocuments) {
    const std::string noNoc = edited(kHpfm, between(kHpfm, "<qd:nocConnectivity", "<qd:resourceEstimates"), "");
    const struct {
        const char* what;
        std::string member;
        std::string hpfm;
        std::vector<std::string> buses;
        std::vector<std::string> nocs;
    } rows[] = {
        {"both lists", "hw/a.hpfm", kHpfm, {"S00_AXI", "irq"}, {"noc_0", "noc_1"}},
        {"no NoC: the document's is not read either", "hw/a.hpfm", noNoc, {"S00_AXI", "irq"}, {}},
        {"not in the archive", "hw/other.hpfm", kHpfm, {"document bus"}, {"document noc"}},
        {"empty", "hw/a.hpfm", "", {"document bus"}, {"document noc"}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        TempDir dir;
        MessageLog sent;
        const std::string archive =
            ZipBuilder(dir.path("a.kar")).add("kar.json", documentWith("hw/a.hpfm")).add(row.member, row.hpfm).write();
        HPLPlatform platform;
        HZEPDsaJsonReader reader(&platform);
        ASSERT_TRUE(reader.parseDSA(archive, PlatformLoader::PreferAlternateJson));
        EXPECT_THAT(sent.lines, IsEmpty());
        EXPECT_EQ(busNames(platform), row.buses);
        EXPECT_EQ(nocNames(platform), row.nocs);
        EXPECT_EQ(reader.getHpfmFile(), row.member == "hw/a.hpfm" ? "hw/a.hpfm" : "");
        EXPECT_EQ(reader.getHpfmStr(), row.member == "hw/a.hpfm" ? row.hpfm : "");
        // All else is the document's, and the text is kept by the XML route alone.
        EXPECT_EQ(elementsOf(platform.createSystemClockIter()).size(), 1u);
        EXPECT_EQ(elementsOf(platform.createIPParamIter()).size(), 1u);
        EXPECT_EQ(platform.getDescription(), "");
        EXPECT_EQ(platform.getHpfmString(), "");
    }
}

TEST(DsaJsonHpfm, ABadOneFailsTheDocument) {
    TempDir dir;
    MessageLog sent;
    const std::string archive = ZipBuilder(dir.path("a.kar")).add("kar.json", documentWith("a.hpfm")).add("a.hpfm", "<qd:x").write();
    HPLPlatform platform;
    EXPECT_FALSE(HZEPDsaJsonReader(&platform).parseDSA(archive, PlatformLoader::PreferAlternateJson));
    EXPECT_THAT(sent.lines, ElementsAre("critical warning|@74-63@%s%s|kar.json|" + archive));

    HPLPlatform loose;
    HZEPDsaJsonReader reader(&loose);
    EXPECT_TRUE(reader.parseFile(dir.write("loose.json", documentWith("a.hpfm")))) << "no archive, no hardware platform file";
    EXPECT_THAT(busNames(loose), ElementsAre("document bus"));
    EXPECT_FALSE(reader.readHpfmBusInterfaces(""));
    EXPECT_FALSE(reader.readHpfmNocConnectivity(""));
    EXPECT_TRUE(reader.readHpfmBusInterfaces(kHpfm));
    EXPECT_THAT(busNames(loose), ElementsAre("document bus", "S00_AXI", "irq"));
}
