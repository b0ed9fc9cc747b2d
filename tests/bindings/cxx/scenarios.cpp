// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

// The scenarios of ../scenarios.md in C++: what the other languages' runners write is compared with this one's answers.

#include "HDFToDSAConverter.h"
#include "HMDAArchive.h"
#include "HPLDevice.h"
#include "HPLPlatform.h"
#include "HZEPBootImg.h"
#include "HZEPJSONText.h"
#include "HZEPPlatform.h"
#include "HZEPPlatformHelper.h"
#include "HZEPPlatformMgr.h"
#include "HZEPPlatformUtils.h"
#include "HZEPProcessorGroup.h"
#include "HZEPReconfigurablePartition.h"
#include "HZEPSemanticLabelReader.h"
#include "HZEPSoftwarePlatform.h"
#include "HZEPSystemConfig.h"
#include "JSONListWriter.h"
#include "JSONObjectWriter.h"
#include "NativeCatalogService.h"
#include "NativeDictService.h"
#include "NativeKeyService.h"
#include "NativeObjectService.h"
#include "NativePlatformRepoService.h"
#include "NativeTransformService.h"
#include "PlatformLoader.h"
#include "SimpleFixedKARCreator.h"

#include <boost/algorithm/string/replace.hpp>

#include <algorithm>
#include <concepts>
#include <fstream>
#include <functional>
#include <iostream>
#include <memory>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace zep::platform;
using zep_platform::JSONListWriter;
using zep_platform::JSONObjectWriter;
using zep_platform::JSONSerializable;
using zep_platform::JSONWriter;
using zep_platform::PlatformLoader;
using Texts = std::vector<std::string>;
using std::to_string;

const Texts kNames = {"kestrel", "minnow", "trellis", "osprey", "heron", "pebble"};

std::string examples, data, work;
std::ofstream answers;

std::string join(const Texts& items) {
    std::string text;
    for (const std::string& item : items)
        text += (text.empty() ? "" : ", ") + item;
    return text;
}

Texts sorted(Texts items) {
    std::sort(items.begin(), items.end());
    return items;
}

template <class List, class Tell>
Texts map(const List& list, Tell tell) {
    Texts items;
    for (const auto& item : list)
        items.push_back(tell(item));
    return items;
}

/// What an operation puts into a list.
template <class T = std::string, class Fill>
std::vector<T> filled(Fill fill) {
    std::vector<T> items;
    fill(items);
    return items;
}

const auto getName = [](const auto* object) { return std::string(object->getName()); };
const auto getUniqueName = [](const auto* object) { return std::string(object->getUniqueName()); };

void say(const std::string& key, std::string text) {
    boost::replace_all(text, "\\", "\\\\");
    boost::replace_all(text, "\n", "\\n");
    answers << key << " = " << text << '\n';
}
void say(const std::string& key, const char* text) {
    say(key, std::string(text));
}
void say(const std::string& key, std::same_as<bool> auto value) {
    say(key, value ? "true" : "false");
}
template <class T>
requires(std::integral<T> && !std::same_as<T, bool>) void say(const std::string& key, T value) {
    say(key, to_string(value));
}
void say(const std::string& key, const Texts& items) {
    say(key, join(items));
}
void sayDocument(const std::string& key, const std::string& text) {
    answers << key << " <<<\n" << text << ">>>\n";
}
template <class Do>
void sayOrRefusal(const std::string& key, Do run) {
    try {
        say(key, run());
    } catch (const std::exception& error) {
        say(key, std::string("error: ") + error.what());
    }
}

std::string toText(const JSONWriter& writer) {
    std::ostringstream text;
    writer.write(text);
    return text.str();
}
std::string toDocument(const JSONSerializable& object) {
    JSONObjectWriter writer;
    object.toJSON(writer);
    return toText(writer);
}

std::string fileOf(const std::string& name) {
    return examples + "/" + name + "/" + name + ".zpfm";
}

void runHardware(const std::string& key, const HZEPHardwarePlatform& hardware) {
    say(key + "hardware.name", hardware.getName());
    say(key + "hardware.uniqueName", hardware.getUniqueName());
    say(key + "hardware.boardId", hardware.getBoardId());
    say(key + "hardware.partName", hardware.getPartName());
    say(key + "hardware.fpgaPart", hardware.getFpgaPart());
    say(key + "hardware.platformState", hardware.getPlatformState());
    say(key + "hardware.hostArch", hardware.getHostArch());
    say(key + "hardware.busInterfaceMaxDataWidth", hardware.getBusInterfaceMaxDataWidth());
    say(key + "hardware.numDDRs", hardware.getNumDDRs());
    say(key + "hardware.memSize", hardware.getMemSize());
    say(key + "hardware.validSLRNames", filled([&](auto& out) { hardware.getValidSLRNames(out); }));
    say(key + "hardware.hbmBankCount", hardware.getHBMBankCount());
    say(key + "hardware.isMemoryResourceIndexed", hardware.isMemoryResourceIndexed());
    Texts clocks;
    const std::unique_ptr<HostFwdIter<HZEPSystemClock*>> clock(hardware.createSystemClockIter());
    while (clock->hasNext()) {
        const HZEPSystemClock* const found = clock->next();
        clocks.push_back(found->getName() + ":" + found->getFrequency() + ":" + to_string(found->getId()));
    }
    say(key + "clocks", clocks);
    const Texts types = filled([&](auto& out) { hardware.getUniqueMemoryTypeStrings(out); });
    say(key + "memories", map(types, [&](const std::string& type) { return type + ":" + to_string(hardware.getMemoryTypeCount(type)); }));
    for (const std::string& type : types) {
        Texts sizes;
        for (unsigned i = 0; i < hardware.getMemoryTypeCount(type); ++i)
            sizes.push_back(hardware.getMemorySize(type, i));
        say(key + "memory." + type + ".sizes", sizes);
    }
    say(key + "busInterfaces",
        map(filled<HZEPHardwareBusInterface*>([&](auto& out) { hardware.getBusInterfaces(out); }),
            [](const auto* bus) { return bus->getName() + ":" + bus->getMode() + ":" + bus->getMemPort() + ":" + bus->getSPTag(); }));
    say(key + "devices", map(filled<HZEPDevice*>([&](auto& out) { hardware.getDevices(out); }), getName));
}

void runSoftware(const std::string& key, const HZEPSoftwarePlatform& software) {
    say(key + "software.defaultConfigName", software.getDefaultConfigName());
    say(key + "software.supportedRuntimesByPrettyName", filled([&](auto& out) { software.getSupportedRuntimesByPrettyName(out); }));
    const auto configs = filled<HZEPSystemConfig*>([&](auto& out) { software.getSystemConfigs(out); });
    say(key + "software.configs", map(configs, getName));
    for (const HZEPSystemConfig* const config : configs) {
        const std::string prefix = key + "config." + config->getName() + ".";
        say(prefix + "desc", config->getDesc());
        say(prefix + "prettyName", config->getPrettyName());
        say(prefix + "isQemuSupported", config->isQemuSupported());
        say(prefix + "runtimes", filled([&](auto& out) { config->getRuntimes(out); }));
        say(prefix + "groups", map(filled<HZEPProcessorGroup*>([&](auto& out) { config->getProcessorGroups(out); }), [](const auto* group) {
                return group->getName() + ":" + group->getCpuType() + ":" + group->getOSName();
            }));
        say(prefix + "images", map(filled<HZEPBootImg*>([&](auto& out) { config->getBootImgs(out); }), getName));
    }
}

void runPlatform() {
    for (const std::string& name : kNames) {
        const std::string key = "platform." + name + ".";
        PlatformLoader loader(fileOf(name));
        const std::shared_ptr<HZEPPlatform> platform = loader.load();
        say(key + "loader.name", loader.getName());
        say(key + "loader.vendor", loader.getVendor());
        say(key + "loader.version", loader.getVersion());
        say(key + "loader.baseName", loader.getBaseName());
        say(key + "loader.hardwarePlatformFile", loader.getHardwarePlatformFile());
        say(key + "uniqueName", platform->getUniqueName());
        say(key + "vendor", platform->getVendor());
        say(key + "library", platform->getLibrary());
        say(key + "name", platform->getName());
        say(key + "version", platform->getVersion());
        say(key + "description", platform->getDescription());
        say(key + "deviceName", platform->getDeviceName());
        say(key + "typeString", platform->getTypeString());
        say(key + "isUnified", platform->isUnified());
        say(key + "isExpandable", platform->isExpandable());
        say(key + "isHidden", platform->isHidden());
        say(key + "hasSimContent", platform->hasSimContent());
        say(key + "supportsHWEmulation", platform->supportsHWEmulation());
        say(key + "hasReconfigurablePartitions", platform->hasReconfigurablePartitions());
        say(key + "defaultRPId", platform->getDefaultRPId());
        say(key + "targetCategories", filled([&](auto& out) { platform->getTargetCategories(out); }));
        const auto partitions = filled<HZEPReconfigurablePartition*>([&](auto& out) { platform->getReconfigurablePartitions(out); });
        say(key + "partitions", map(partitions, [](const auto* partition) { return to_string(partition->getID()); }));
        for (const HZEPReconfigurablePartition* const partition : partitions)
            say(key + "partition." + to_string(partition->getID()) + ".hardware", partition->getHardwarePlatform()->getUniqueName());
        if (const HZEPHardwarePlatform* const hardware = platform->getHardwarePlatform())
            runHardware(key, *hardware);
        if (const HZEPSoftwarePlatform* const software = platform->getSoftwarePlatform())
            runSoftware(key, *software);
        sayDocument(key + "document", toDocument(*platform));
    }
}

void runDocuments() {
    for (const std::string& name : kNames) {
        PlatformLoader loader(fileOf(name));
        const std::shared_ptr<HZEPPlatform> platform = loader.load();
        sayDocument("documents." + name + ".full", toDocument(*platform));
        JSONObjectWriter brief;
        brief.addKey("uniqueName", platform->getUniqueName());
        brief.addKey("file", platform->getPlatformFile());
        brief.addKey("description", platform->getDescription());
        sayDocument("documents." + name + ".short", toText(brief));
    }
    say("documents.damaged", PlatformLoader(data + "/damaged.kar").load() ? "loaded" : "null");
}

void runManager() {
    HZEPPlatformMgr& manager = *HZEPPlatformMgr::getGlobalNoInit();
    say("manager.added", manager.addPlatformsFromDirs(Texts{examples, data}));
    say("manager.count", manager.getNumPlatforms());
    Texts names;
    const std::unique_ptr<HostFwdIter<HZEPPlatform*>> platform(manager.createPlatformIter());
    while (platform->hasNext())
        names.push_back(platform->next()->getUniqueName());
    say("manager.names", sorted(names));
    say("manager.unified", filled<HZEPPlatform*>([&](auto& out) { manager.getUnifiedPlatforms(out); }).size());
    say("manager.projectType", manager.getProjectTypeAsStr());
    say("manager.messages", sorted(filled([&](auto& out) { manager.getParsingErrorMsgs(out); })));
    for (const std::string name : {"kestrel", "HERON", "nobody"}) {
        const HZEPPlatform* const found = manager.getPlatform(name);
        say("manager.byName." + name, found ? found->getUniqueName() : "null");
    }
    say("manager.byPart",
        sorted(map(filled<HZEPPlatform*>([&](auto& out) { HZEPPlatformUtils::getPlatformsByPart("tlv9p", out); }), getName)));
    say("manager.embedded",
        sorted(map(filled<HZEPPlatform*>([&](auto& out) { HZEPPlatformUtils::getPlatformsByDesignIntent(4, "tlz7", "", "", false, out); }),
                   getName)));
    say("manager.isFixed.pebble", HZEPPlatformUtils::isFixedPlatform("pebble"));
    say("manager.runtimes.minnow", filled([](auto& out) { HZEPPlatformUtils::getRuntimesByPrettyName("minnow", "", out); }));
    say("manager.parts", sorted(filled([](auto& out) { HZEPPlatformUtils::getSupportedFpgaParts(out); })));
    say("manager.libraryTypes", filled([](auto& out) { HZEPPlatformUtils::getAllLibraryTypes(out); }));
    manager.removePlatformsFromDirs({examples + "/pebble"});
    say("manager.afterRemoval", manager.getNumPlatforms());
    manager.clearAllPlatforms();
    say("manager.afterClear", manager.getNumPlatforms());
}

void runFacade() {
    for (const std::string name : {"kestrel", "minnow"}) {
        const std::string key = "facade." + name + ".";
        const HZEPPlatformHelper helper(fileOf(name), {});
        say(key + "isValid", helper.isValid());
        say(key + "uniqueName", helper.getUniqueName());
        say(key + "fpgaPart", helper.getFpgaPart());
        say(key + "hostArch", helper.getHostArch());
        say(key + "memType", helper.getMemType());
        say(key + "memSize", helper.getMemSize());
        say(key + "numDDRs", helper.getNumDDRs());
        say(key + "defaultClockFrequency", helper.getDefaultClockFrequency());
        say(key + "BRAMCount", helper.getBRAMCount());
        say(key + "systemClockNames", filled([&](auto& out) { helper.getSystemClockNames(out); }));
        say(key + "isRuntimeSupported.ocl", helper.isRuntimeSupported("ocl"));
        say(key + "configs", filled([&](auto& out) { helper.getSysConfigNames(out, "shared"); }));
        say(key + "defaultConfig", helper.getDefaultSystemConfig()->getName());
        say(key + "boardConnectionsString", helper.getBoardConnectionsString());
    }
    say("facade.nobody.isValid", HZEPPlatformHelper("nobody", {}).isValid());
}

void runServices() {
    const std::string file = fileOf("kestrel");
    const NativeObjectService objects;
    for (const std::string path :
         {"description", "hardwarePlatform.systemClocks", "softwarePlatform.systemConfigurations[0].name", "nothing.here"}) {
        bool ok = false;
        say("services.object." + path, objects.getObjectsByPath(file, path, ok));
        say("services.object." + path + ".ok", ok);
    }
    say("services.root", objects.getHwPlatformRootPath(objects.getAsJsonStr(file)));
    const auto keys = NativeKeyService().get(file);
    say("services.keys.count", keys.size());
    say("services.keys", Texts(keys.begin(), keys.end()));
    bool found = false;
    say("services.dict", map(NativeDictService().getAsDict(file, "softwarePlatform", found),
                             [](const auto& entry) { return entry.first + "=" + entry.second; }));
    const NativeCatalogService catalog;
    sayDocument("services.catalog", catalog.getAsJsonStr(file, true, false));
    say("services.catalog.type", catalog.getValue(file, "type"));
    say("services.found", sorted(filled([](auto& out) { NativePlatformRepoService().getZpfmFiles("", Texts{examples}, false, out); })));
    const NativeTransformService transform;
    sayDocument("services.transform", transform.getTransformSpecAsJsonStr(data + "/transform.json"));
    say("services.transform.count", transform.getObjectsBySpec(file, data + "/transform.json"));
}

void runPolicy() {
    for (const std::string version : {"2015.1", "2021.1", "2031.2"}) {
        NativeCatalogService catalog;
        catalog.setTestCompilerVersion_(version);
        for (const std::string name : {"kestrel", "heron"}) {
            const std::string key = "policy." + version + "." + name + ".";
            std::string reason;
            say(key + "mayUse", catalog.isUnderWarranty(fileOf(name), reason, ""));
            say(key + "mayUse.reason", reason);
            reason.clear();
            say(key + "mayOpen", catalog.canDsaBeOpened(fileOf(name), reason));
            say(key + "mayOpen.reason", reason);
        }
    }
}

std::unique_ptr<HPLPlatform> makeHardware() {
    auto hardware = std::make_unique<HPLPlatform>();
    hardware->setName("shell");
    hardware->setVendor("hzep");
    hardware->setBoardId("board1");
    hardware->setExpandable(false);
    HZEPSystemClock& clock = *hardware->addSystemClock();
    clock.setName("clk0");
    clock.setFrequency("300");
    clock.setId(2);
    HZEPHardwareBusInterface& bus = *hardware->addBusInterface();
    bus.setName("mem0");
    bus.setMode("slave");
    bus.setMemPort("MIG");
    bus.setSPTag("bank0");
    bus.setDataWidth(512);
    return hardware;
}

boost::property_tree::ptree readTree(const std::string& text) {
    boost::property_tree::ptree tree;
    HZEPJSONText::read(text, tree);
    return tree;
}

void runBuild() {
    HZEPPlatform platform;
    platform.setVendor("hzep");
    platform.setLibrary("examples");
    platform.setName("mine");
    platform.setVersion("1.2");
    platform.setDescription("built by hand: Grüße");
    platform.setPlatformFile("/plat/mine.zpfm");
    platform.setZpfm(true);
    auto software = std::make_unique<HZEPSoftwarePlatform>();
    software->setDefaultConfigName("linux");
    software->setLinuxRootFileSystemPath("/sw/rootfs");
    HZEPSystemConfig& config = *software->addSystemConfig();
    config.setName("linux");
    config.setPrettyName("Linux");
    config.setDesc("a \"quoted\" text");
    config.setSupportsQemu(true);
    config.addRuntime("ocl");
    config.addRuntime("cpp");
    HZEPProcessorGroup& group = *config.addProcessorGroup();
    group.setName("cpu");
    group.setCpuType("core72");
    group.setOSName("linux");
    group.setIncludePaths("inc:inc2");
    HZEPBootImg& image = *config.addBootImg();
    image.setName("sd");
    image.setBif("boot.bif");
    platform.addSoftwarePlatform(software.release());
    platform.setHardwarePlatform(makeHardware().release());

    say("build.version", platform.getVersion());
    say("build.clockFrequency", platform.getHardwarePlatform()->getClockFrequency("clk0"));
    say("build.config", platform.getSoftwarePlatform()->getSystemConfigByName("linux")->getDesc());
    sayDocument("build.document", toDocument(platform));
    say("build.tree", std::next(readTree(R"({"a": "1", "c": {"b": "ä"}})").begin())->second.get<std::string>("b"));
    JSONListWriter list;
    list.addItem("x");
    list.addItem("true");
    JSONObjectWriter object;
    object.addKey("items", list);
    sayDocument("build.list", toText(object));
}

void runBroken() {
    const auto load = [](const std::string& file) {
        PlatformLoader loader(file);
        return loader.load() ? "loaded" : "null";
    };
    sayOrRefusal("broken.missing", [&] { return load("/nowhere/at-all.zpfm"); });
    sayOrRefusal("broken.file", [&] { return load(data + "/broken.zpfm"); });
    sayOrRefusal("broken.software", [&] { return load(data + "/broken.spfm"); });
    say("broken.helper", HZEPPlatformHelper(data + "/broken.zpfm", {}).isValid());
    sayOrRefusal("broken.tree", [] { return readTree("{").data(); });
}

void runArchive() {
    HMDAArchive made;
    made.setFile(work + "/a.mda");
    made.setPfmName("mine");
    made.create();
    made.archive("NOTE", "doc/note.txt", data + "/note.txt");
    HMDAArchive read;
    read.setFile(work + "/a.mda");
    say("archive.parsed", read.parse());
    say("archive.types", filled([&](auto& out) { read.getFiles().getTypes(out); }));
    say("archive.platform", read.getPfmName());
    sayDocument("archive.document", toDocument(read));
    say("archive.extracted", read.extract("NOTE", work + "/out").substr(work.size()));
    say("archive.unknown", read.extract("OTHER", work + "/out"));
    sayOrRefusal("archive.refused", [&] { return read.extract("NOTE", ""); });
}

void runLabels() {
    HZEPSemanticLabelReader labels;
    say("labels.parsed", labels.parseFile(examples + "/kestrel/kestrel.labels.json"));
    say("labels.endpoints", labels.getPcieEndpoints().size());
    sayDocument("labels.document", toDocument(labels));
    std::ostringstream partition;
    labels.generatePartitionMetadata(partition);
    sayDocument("labels.partition", partition.str());
}

void runConvert() {
    HDFToDSAConverter converter(examples + "/wren", "wren.hdf", work + "/stage");
    say("convert.file", converter.getHwPfmFileName());
    say("convert.written", converter.writeDSA());
    say("convert.name", PlatformLoader(converter.getDsaFile()).load()->getHardwarePlatform()->getName());
    sayOrRefusal("convert.refused", [] { return HDFToDSAConverter("/nowhere", "a.hdf", work + "/stage").getDsaFile(); });
    const std::unique_ptr<HPLPlatform> seed = makeHardware();
    SimpleFixedKARCreator creator(work + "/fixed.kar");
    creator.setSeedPlatform(seed.get());
    say("convert.fixed", creator.writeKAR());
    const std::shared_ptr<HZEPPlatform> fixed = PlatformLoader(work + "/fixed.kar").load();
    say("convert.fixed.name", fixed->getHardwarePlatform()->getName());
    say("convert.fixed.isExpandable", fixed->getHardwarePlatform()->isExpandable());
    say("convert.seed", seed->isGeneratedByLink());
}

const std::pair<std::string, std::function<void()>> kScenarios[] = {
    {"platform", runPlatform}, {"documents", runDocuments}, {"manager", runManager}, {"facade", runFacade},
    {"services", runServices}, {"policy", runPolicy},       {"build", runBuild},     {"broken", runBroken},
    {"archive", runArchive},   {"labels", runLabels},       {"convert", runConvert},
};

} // namespace

int main(int argc, char** argv) {
    if (argc < 4) {
        std::cerr << "usage: scenarios EXAMPLES DATA WORK [SCENARIO...]\n";
        return 2;
    }
    examples = argv[1];
    data = argv[2];
    work = argv[3];
    const Texts wanted(argv + 4, argv + argc);
    answers.open(work + "/answers.txt", std::ios::binary);
    for (const auto& [name, run] : kScenarios) {
        if (wanted.empty() || std::find(wanted.begin(), wanted.end(), name) != wanted.end())
            run();
    }
    answers.close();
    return answers ? 0 : 1;
}
