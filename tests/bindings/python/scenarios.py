# SPDX-License-Identifier: Apache-2.0
# SPDX-FileCopyrightText: the hzep platform authors
"""The scenarios of ../scenarios.md in Python."""

import pathlib
import sys

from hzep_platform import *

EXAMPLES, DATA, WORK = sys.argv[1:4]
NAMES = ("kestrel", "minnow", "trellis", "osprey", "heron", "pebble")
answers = []


def say(key, value):
    if value is None or isinstance(value, bool):
        value = {None: "null", True: "true", False: "false"}[value]
    elif isinstance(value, (list, tuple)):
        value = ", ".join(str(item) for item in value)
    answers.append(f"{key} = " + str(value).replace("\\", "\\\\").replace("\n", "\\n") + "\n")


def say_document(key, text):
    answers.append(f"{key} <<<\n{text}>>>\n")


def say_or_refusal(key, run):
    try:
        say(key, run())
    except PlatformError as error:
        say(key, f"error: {error}")


def say_getters(key, subject, names):
    """Answers under the operation's name, less its "get"."""
    for name in names.split():
        if name.startswith("get"):
            said = name[3:] if name[4].isupper() else name[3].lower() + name[4:]
        else:
            said = name
        say(key + said, getattr(subject, name)())


def names(objects):
    return [subject.getName() for subject in objects]


def file_of(name):
    return f"{EXAMPLES}/{name}/{name}.zpfm"


def hardware_platform(key, hardware):
    say_getters(key + "hardware.", hardware, "getName getUniqueName getBoardId getPartName getFpgaPart getPlatformState getHostArch "
                "getBusInterfaceMaxDataWidth getNumDDRs getMemSize getValidSLRNames")
    say(key + "hardware.hbmBankCount", hardware.getHBMBankCount())
    say(key + "hardware.isMemoryResourceIndexed", hardware.isMemoryResourceIndexed())
    say(key + "clocks", [f"{clock.getName()}:{clock.getFrequency()}:{clock.getId()}" for clock in hardware.createSystemClockIter()])
    _, types = hardware.getUniqueMemoryTypeStrings()
    counts = {kind: hardware.getMemoryTypeCount(kind) for kind in types}
    say(key + "memories", [f"{kind}:{counts[kind]}" for kind in types])
    for kind in types:
        say(f"{key}memory.{kind}.sizes", [hardware.getMemorySize(kind, i) for i in range(counts[kind])])
    say(key + "busInterfaces", [f"{bus.getName()}:{bus.getMode()}:{bus.getMemPort()}:{bus.getSPTag()}" for bus in hardware.getBusInterfaces()])
    say(key + "devices", names(hardware.getDevices()))


def software_platform(key, software):
    say_getters(key + "software.", software, "getDefaultConfigName getSupportedRuntimesByPrettyName")
    configs = software.getSystemConfigs()
    say(key + "software.configs", names(configs))
    for config in configs:
        prefix = f"{key}config.{config.getName()}."
        say_getters(prefix, config, "getDesc getPrettyName isQemuSupported getRuntimes")
        say(prefix + "groups", [f"{group.getName()}:{group.getCpuType()}:{group.getOSName()}" for group in config.getProcessorGroups()])
        say(prefix + "images", names(config.getBootImgs()))


def platform():
    for name in NAMES:
        key = f"platform.{name}."
        with PlatformLoader(file_of(name)) as loader, loader.load() as found:
            say_getters(key + "loader.", loader, "getName getVendor getVersion getBaseName getHardwarePlatformFile")
            say_getters(key, found, "getUniqueName getVendor getLibrary getName getVersion getDescription getDeviceName getTypeString isUnified "
                        "isExpandable isHidden hasSimContent supportsHWEmulation hasReconfigurablePartitions")
            say(key + "defaultRPId", found.getDefaultRPId())
            say(key + "targetCategories", found.getTargetCategories())
            partitions = found.getReconfigurablePartitions()
            say(key + "partitions", [partition.getID() for partition in partitions])
            for partition in partitions:
                say(f"{key}partition.{partition.getID()}.hardware", partition.getHardwarePlatform().getUniqueName())
            if found.getHardwarePlatform():
                hardware_platform(key, found.getHardwarePlatform())
            if found.getSoftwarePlatform():
                software_platform(key, found.getSoftwarePlatform())
            say_document(key + "document", found.toJSONString())


def documents():
    for name in NAMES:
        with PlatformLoader(file_of(name)) as loader:
            found = loader.load()
            say_document(f"documents.{name}.full", found.toJSONString())
            brief = JSONObjectWriter()
            brief.addKey("uniqueName", found.getUniqueName())
            brief.addKey("file", found.getPlatformFile())
            brief.addKey("description", found.getDescription())
            say_document(f"documents.{name}.short", brief.toJSONString())
    say("documents.damaged", PlatformLoader(f"{DATA}/damaged.kar").load())


def manager():
    known = ZEPPlatformMgr.getGlobalNoInit()
    say("manager.added", known.addPlatformsFromDirs([EXAMPLES, DATA]))
    say("manager.count", known.getNumPlatforms())
    say("manager.names", sorted(found.getUniqueName() for found in known.createPlatformIter()))
    say("manager.unified", len(known.getUnifiedPlatforms()))
    say("manager.projectType", known.getProjectTypeAsStr())
    say("manager.messages", sorted(known.getParsingErrorMsgs()))
    for name in ("kestrel", "HERON", "nobody"):
        found = known.getPlatform(name)
        say(f"manager.byName.{name}", found and found.getUniqueName())
    say("manager.byPart", sorted(names(ZEPPlatformUtils.getPlatformsByPart("tlv9p"))))
    say("manager.embedded", sorted(names(ZEPPlatformUtils.getPlatformsByDesignIntent(4, "tlz7", "", "", False))))
    say("manager.isFixed.pebble", ZEPPlatformUtils.isFixedPlatform("pebble"))
    say("manager.runtimes.minnow", ZEPPlatformUtils.getRuntimesByPrettyName("minnow", ""))
    say("manager.parts", sorted(ZEPPlatformUtils.getSupportedFpgaParts()))
    say("manager.libraryTypes", ZEPPlatformUtils.getAllLibraryTypes())
    known.removePlatformsFromDirs([f"{EXAMPLES}/pebble"])
    say("manager.afterRemoval", known.getNumPlatforms())
    known.clearAllPlatforms()
    say("manager.afterClear", known.getNumPlatforms())


def facade():
    for name in ("kestrel", "minnow"):
        key = f"facade.{name}."
        helper = ZEPPlatformEngineHelper(file_of(name), [])
        say_getters(key, helper, "isValid getUniqueName getFpgaPart getHostArch getMemType getMemSize getNumDDRs getDefaultClockFrequency "
                    "getBRAMCount getSystemClockNames")
        say(key + "isRuntimeSupported.ocl", helper.isRuntimeSupported("ocl"))
        say(key + "configs", helper.getSysConfigNames("shared")[1])
        say(key + "defaultConfig", helper.getDefaultSystemConfig().getName())
        say(key + "boardConnectionsString", helper.getBoardConnectionsString())
    say("facade.nobody.isValid", ZEPPlatformEngineHelper("nobody", []).isValid())


def services():
    file = file_of("kestrel")
    objects = NativeObjectService()
    for path in ("description", "hardwarePlatform.systemClocks", "softwarePlatform.systemConfigurations[0].name", "nothing.here"):
        text, ok = objects.getObjectsByPath(file, path, False)
        say(f"services.object.{path}", text)
        say(f"services.object.{path}.ok", ok)
    say("services.root", objects.getHwPlatformRootPath(objects.getAsJsonStr(file)))
    keys = NativeKeyService().get(file)
    say("services.keys.count", len(keys))
    say("services.keys", sorted(keys, key=str.encode))
    values, _ = NativeDictService().getAsDict(file, "softwarePlatform", False)
    say("services.dict", [f"{key}={values[key]}" for key in sorted(values, key=str.encode)])
    catalog = NativeCatalogService()
    say_document("services.catalog", catalog.getAsJsonStr(file, True, False))
    say("services.catalog.type", catalog.getValue(file, "type"))
    say("services.found", sorted(NativePlatformRepoService().getZpfmFiles("", [EXAMPLES], False)))
    transform = NativeTransformService()
    say_document("services.transform", transform.getTransformSpecAsJsonStr(f"{DATA}/transform.json"))
    say("services.transform.count", transform.getObjectsBySpec(file, f"{DATA}/transform.json"))


def policy():
    for version in ("2015.1", "2021.1", "2031.2"):
        catalog = NativeCatalogService()
        catalog.setTestCompilerVersion_(version)
        for name in ("kestrel", "heron"):
            key = f"policy.{version}.{name}."
            for question, (answer, reason) in (("mayUse", catalog.isUnderWarranty(file_of(name), "", "")),
                                               ("mayOpen", catalog.canDsaBeOpened(file_of(name), ""))):
                say(key + question, answer)
                say(f"{key}{question}.reason", reason)


def make_hardware():
    hardware = ZEPHardwarePlatform.create()
    hardware.setName("shell")
    hardware.setVendor("hzep")
    hardware.setBoardId("board1")
    hardware.setExpandable(False)
    clock = hardware.addSystemClock()
    clock.setName("clk0")
    clock.setFrequency("300")
    clock.setId(2)
    bus = hardware.addBusInterface()
    bus.setName("mem0")
    bus.setMode("slave")
    bus.setMemPort("MIG")
    bus.setSPTag("bank0")
    bus.setDataWidth(512)
    return hardware


def build():
    made = ZEPPlatform()
    made.setVendor("hzep")
    made.setLibrary("examples")
    made.setName("mine")
    made.setVersion("1.2")
    made.setDescription("built by hand: Grüße")
    made.setPlatformFile(pathlib.Path("/plat/mine.zpfm"))
    made.setZpfm(True)
    software = ZEPSoftwarePlatform()
    software.setDefaultConfigName("linux")
    software.setLinuxRootFileSystemPath("/sw/rootfs")
    config = software.addSystemConfig()
    config.setName("linux")
    config.setPrettyName("Linux")
    config.setDesc('a "quoted" text')
    config.setSupportsQemu(True)
    config.addRuntime("ocl")
    config.addRuntime("cpp")
    group = config.addProcessorGroup()
    group.setName("cpu")
    group.setCpuType("core72")
    group.setOSName("linux")
    group.setIncludePaths("inc:inc2")
    image = config.addBootImg()
    image.setName("sd")
    image.setBif("boot.bif")
    made.addSoftwarePlatform(software)
    made.setHardwarePlatform(make_hardware())
    say("build.version", made.getVersion())
    say("build.clockFrequency", made.getHardwarePlatform().getClockFrequency("clk0"))
    say("build.config", made.getSoftwarePlatform().getSystemConfigByName("linux").getDesc())
    say_document("build.document", made.toJSONString())
    say("build.tree", PropertyTree('{"a": "1", "c": {"b": "ä"}}').getChild(1).getValue("b"))
    items = JSONListWriter()
    items.addItem("x")
    items.addItem(True)
    listed = JSONObjectWriter()
    listed.addKey("items", items)
    say_document("build.list", listed.toJSONString())


def broken():
    say_or_refusal("broken.missing", lambda: PlatformLoader("/nowhere/at-all.zpfm").load())
    say_or_refusal("broken.file", lambda: PlatformLoader(f"{DATA}/broken.zpfm").load())
    say_or_refusal("broken.software", lambda: PlatformLoader(f"{DATA}/broken.spfm").load())
    say("broken.helper", ZEPPlatformEngineHelper(f"{DATA}/broken.zpfm", []).isValid())
    say_or_refusal("broken.tree", lambda: PropertyTree("{").getValue())


def archive():
    made = HMDAArchive()
    made.setFile(f"{WORK}/a.mda")
    made.setPfmName("mine")
    made.create()
    made.archive("NOTE", "doc/note.txt", f"{DATA}/note.txt")
    read = HMDAArchive()
    read.setFile(f"{WORK}/a.mda")
    say("archive.parsed", read.parse())
    say("archive.types", read.getFiles().getTypes())
    say("archive.platform", read.getPfmName())
    say_document("archive.document", read.toJSONString())
    say("archive.extracted", read.extract("NOTE", f"{WORK}/out").removeprefix(WORK))
    say("archive.unknown", read.extract("OTHER", f"{WORK}/out"))
    say_or_refusal("archive.refused", lambda: read.extract("NOTE", ""))


def labels():
    reader = HZEPSemanticLabelReader()
    say("labels.parsed", reader.parseFile(f"{EXAMPLES}/kestrel/kestrel.labels.json"))
    say("labels.endpoints", len(reader.getPcieEndpoints()))
    say_document("labels.document", reader.toJSONString())
    say_document("labels.partition", reader.getPartitionMetadata())


def convert():
    converter = HDFToDSAConverter(f"{EXAMPLES}/wren", "wren.hdf", f"{WORK}/stage")
    say("convert.file", converter.getHwPfmFileName())
    say("convert.written", converter.writeDSA())
    say("convert.name", PlatformLoader(converter.getDsaFile()).load().getHardwarePlatform().getName())
    say_or_refusal("convert.refused", lambda: HDFToDSAConverter("/nowhere", "a.hdf", f"{WORK}/stage").getDsaFile())
    seed = make_hardware()
    creator = SimpleFixedKARCreator(f"{WORK}/fixed.kar")
    creator.setSeedPlatform(seed)
    say("convert.fixed", creator.writeKAR())
    fixed = PlatformLoader(f"{WORK}/fixed.kar").load().getHardwarePlatform()
    say("convert.fixed.name", fixed.getName())
    say("convert.fixed.isExpandable", fixed.isExpandable())
    say("convert.seed", seed.isGeneratedByLink())


for scenario in (platform, documents, manager, facade, services, policy, build, broken, archive, labels, convert):
    if len(sys.argv) == 4 or scenario.__name__ in sys.argv[4:]:
        scenario()
pathlib.Path(WORK, "answers.txt").write_text("".join(answers), encoding="utf-8")
