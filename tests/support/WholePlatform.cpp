// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "WholePlatform.h"

#include "Documents.h"
#include "HPLPlatform.h"
#include "HZEPDsaJsonReader.h"

using boost::property_tree::ptree;

namespace {

std::uint32_t toNumber(const std::string& text) {
    return static_cast<std::uint32_t>(std::stoul(text));
}

template <class Model>
struct Text {
    const char* key;
    void (Model::*set)(std::string);
};

template <class Model, std::size_t Size>
void setTexts(Model& model, const ptree& object, const Text<Model> (&texts)[Size]) {
    for (const auto& [key, set] : texts)
        (model.*set)(object.get<std::string>(key));
}

constexpr Text<HPLPort> kPort[] = {{"name", &HPLPort::setName},
                                   {"type", &HPLPort::setType},
                                   {"mode", &HPLPort::setMode},
                                   {"base", &HPLPort::setBase},
                                   {"range", &HPLPort::setRange},
                                   {"dataWidth", &HPLPort::setDataWidth},
                                   {"protocol", &HPLPort::setProtocol},
                                   {"idWidth", &HPLPort::setIdWidth},
                                   {"addrWidth", &HPLPort::setAddrWidth},
                                   {"userWidth", &HPLPort::setUserWidth},
                                   {"addrOffset", &HPLPort::setAddrOffset},
                                   {"addrRange", &HPLPort::setAddrRange},
                                   {"frequency", &HPLPort::setFrequency},
                                   {"maxBurstLength", &HPLPort::setMaxBurstLength},
                                   {"polarity", &HPLPort::setPolarity},
                                   {"direction", &HPLPort::setDirection}};
constexpr Text<HPLCore> kCore[] = {
    {"parentRMInstPath", &HPLCore::setParentRMInstPath}, {"vlnv", &HPLCore::setVlnv}, {"clockFreq", &HPLCore::setClockFreq}};
constexpr Text<HZEPHardwareBusInterface> kBus[] = {{"resetRef", &HZEPHardwareBusInterface::setResetRef},
                                                   {"slr", &HZEPHardwareBusInterface::setSLR},
                                                   {"memoryInstance", &HZEPHardwareBusInterface::setMemoryInstance},
                                                   {"direction", &HZEPHardwareBusInterface::setDirection}};

void fillBus(HZEPHardwareBusInterface& bus, const ptree& object) {
    setTexts(bus, object, kBus);
    bus.setNumIdBits(std::stoi(object.get<std::string>("numIdBits")));
    bus.setISRId(std::stoi(object.get<std::string>("isrId")));
}

} // namespace

std::string wholeMetadata() {
    return laidOut(readTestFile("support/whole.json"));
}

void fillWhole(HPLPlatform& platform) {
    const ptree document = parse(wholeMetadata());
    EXPECT_TRUE(HZEPDsaJsonReader(&platform).parseJsonString(wholeMetadata()));
    platform.setDescription(document.get<std::string>("description"));
    platform.setDetailedDescription(document.get<std::string>("detailedDescription"));
    platform.setPlatformFile(document.get<std::string>("platformFile"));
    platform.setGeneratedIpChangeList(document.get<std::string>("generatedIpChangeList"));
    platform.setGeneratedSharedDataChangeList(document.get<std::string>("generatedSharedDataChangeList"));

    for (const auto& [none, connector] : document.get_child("board.connectors")) {
        const auto text = [&object = connector](const char* key) { return object.get<std::string>(key); };
        platform.getBoard().addDimmConnector(text("name"), text("displayName"), text("type"), text("connectedName"),
                                             text("connectedDisplayName"), text("connected") == "true", text("locked") == "true");
    }
    for (std::size_t i = 0; i < document.get_child("board.drivers").size(); ++i)
        platform.getBoard().addDriver();
    const ptree& core = document.get_child("devices").front().second.get_child("core");
    HPLCore& own = elementsOf(platform.createDeviceIter()).front()->getCore();
    setTexts(own, core, kCore);
    for (const auto& [none, param] : core.get_child("configParams"))
        own.addConfigParam(param.get<std::string>("name"), param.get<std::string>("value"));
    for (const auto& [none, port] : core.get_child("ports"))
        setTexts(*own.addPort(), port, kPort);
    fillBus(*elementsOf(platform.createBusInterfaceIter()).front(), document.get_child("busInterfaces").front().second);
    fillBus(*elementsOf(elementsOf(platform.createNocConnectivityIter()).front()->createBusInterfaceIter()).front(),
            document.get_child("nocConnectivity").front().second.get_child("busInterfaces").front().second);
    HZEPReconfigPartition& partition = *platform.getReconfigPartitions().front();
    const ptree& ids = document.get_child("reconfigPartitionIDs").front().second.get_child("vcengineIDs");
    partition.setVCEPlInterfaceID(toNumber(ids.get<std::string>("plInterfaceID")));
    partition.setVCENodeID(toNumber(ids.get<std::string>("nodeID")));
    partition.setVCEUniqueID(toNumber(ids.get<std::string>("uniqueID")));
    partition.setVCEPuID(toNumber(ids.get<std::string>("puID")));
}
