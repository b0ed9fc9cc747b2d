// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "DsaXmlSupport.h"
#include "Family.h"
#include "HZEPDsaXmlWriter.h"
#include "HZEPHpfmReader.h"

// Of documents with everything that their schemas know, each value another one: the model, and what is written of it.
TEST(XmlModels, OfWholeDocuments) {
    const Family base("BasePlatform"), hardware("WELHardwarePlatform");
    std::string xml = base.print(base.make());
    for (const auto& [from, to] : {std::pair{"FpgaDevice=\"v", "FpgaDevice=\"tolvan:tlv9pz:fsgd2104:-2:v"},
                                   {"UsesPR=\"v", "UsesPR=\"true\" Not=\"v"},
                                   {"UUID=\"v", "UUID=\"5d1f0c7e-8a34-4d0b-9c5e-2f6b7a1e9d43\" Not=\"v"},
                                   {"Img Type=\"v", "Img Type=\"HDPI\" Not=\"v"},
                                   {"<Img ", "<Img Type=\"MDPI\" File=\"mid\"/><Img Type=\"LDPI\" File=\"low\"/><Img "}})
        xml = edited(xml, from, to);
    TempDir dir;
    HPLPlatform platform, read;
    ASSERT_TRUE(readDsa(platform, xml));
    platform.setPlatformFile("");
    HZEPDsaXmlWriter(&platform, dir.path("dsa.xml")).writeDSA();
    HPLPlatform again;
    ASSERT_TRUE(readDsa(again, dir.read("dsa.xml")));
    again.setPlatformFile("");
    EXPECT_EQ(documentOf(again), documentOf(platform));
    HZEPHpfmReader reader(hardware.print(hardware.make()), &read);
    ASSERT_TRUE(reader.parseStream()) << reader.getErrorMsg();
    expectTestFile("formats/xml_models.txt", "= kar.xml" + compact(documentOf(platform)) + "= hpfm" + compact(documentOf(read)));
    // What the document leaves out.
    const HPLPort& port = *elementsOf(elementsOf(platform.createDeviceIter())[0]->getCore().createPortIter())[0];
    const HPLAddressSegment& segment = *elementsOf(port.createAddressSegmentIter())[0];
    EXPECT_EQ(segment.getName() + segment.getBase() + segment.getRange() + segment.getSlaveName(), "v101v102v103v104");
    const HZEPHardwareBusInterface& bus = *elementsOf(read.createBusInterfaceIter())[0];
    EXPECT_EQ(bus.getSize() + " " + std::to_string(bus.getMaxMasters()), "v55 58");
    EXPECT_EQ(platform.getOldFeatureRomTime(), 13u);
}
