// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
import java.io.IOException;
import java.nio.charset.StandardCharsets;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.LinkedHashMap;
import java.util.List;
import java.util.Map;
import java.util.function.Consumer;
import java.util.function.IntFunction;
import java.util.function.Supplier;
import java.util.stream.Collectors;
import java.util.stream.IntStream;
import ui.data.platform.platform.*;

/** The scenarios of ../scenarios.md in Java. */
public final class Scenarios {
  private static final List<String> NAMES = List.of("kestrel", "minnow", "trellis", "osprey", "heron", "pebble");
  private static final StringBuilder ANSWERS = new StringBuilder();
  private static String examples;
  private static String data;
  private static String work;

  private static void say(String key, Object value) {
    String text = String.valueOf(value).replace("\\", "\\\\").replace("\n", "\\n");
    ANSWERS.append(key).append(" = ").append(text).append('\n');
  }

  private static void say(String key, List<String> items) {
    say(key, String.join(", ", items));
  }

  private static void sayDocument(String key, String text) {
    ANSWERS.append(key).append(" <<<\n").append(text).append(">>>\n");
  }

  private static void sayOrRefusal(String key, Supplier<Object> run) {
    Object answer;
    try {
      answer = run.get();
    } catch (RuntimeException e) {
      answer = "error: " + e.getMessage();
    }
    say(key, answer);
  }

  private static List<String> map(int size, IntFunction<String> tell) {
    return IntStream.range(0, size).mapToObj(tell).collect(Collectors.toList());
  }

  private static List<String> sorted(List<String> items) {
    return items.stream().sorted().collect(Collectors.toList());
  }

  private static List<String> texts(StringVector items) {
    return map(items.size(), items::get);
  }

  /** What an operation puts into a list. */
  private static List<String> filled(Consumer<StringVector> fill) {
    StringVector items = new StringVector();
    fill.accept(items);
    return texts(items);
  }

  private static List<String> platforms(Consumer<ZEPPlatformVector> fill) {
    ZEPPlatformVector found = new ZEPPlatformVector();
    fill.accept(found);
    return sorted(map(found.size(), i -> found.get(i).getName()));
  }

  private static StringVector vector(String... items) {
    StringVector made = new StringVector();
    for (String item : items) {
      made.add(item);
    }
    return made;
  }

  private static String fileOf(String name) {
    return examples + "/" + name + "/" + name + ".zpfm";
  }

  private static void hardware(String key, ZEPHardwarePlatform hardware) {
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
    say(key + "hardware.validSLRNames", filled(hardware::getValidSLRNames));
    say(key + "hardware.hbmBankCount", hardware.getHBMBankCount());
    say(key + "hardware.isMemoryResourceIndexed", hardware.isMemoryResourceIndexed());
    List<String> clocks = new ArrayList<>();
    for (ZEPSystemClockIter it = hardware.createSystemClockIter(); it.hasNext(); ) {
      ZEPSystemClock clock = it.next();
      clocks.add(clock.getName() + ":" + clock.getFrequency() + ":" + clock.getId());
    }
    say(key + "clocks", clocks);
    List<String> types = filled(hardware::getUniqueMemoryTypeStrings);
    say(key + "memories", map(types.size(), i -> types.get(i) + ":" + hardware.getMemoryTypeCount(types.get(i))));
    for (String type : types) {
      say(key + "memory." + type + ".sizes", map((int) hardware.getMemoryTypeCount(type), i -> hardware.getMemorySize(type, i)));
    }
    ZEPHardwareBusInterfaceVector buses = new ZEPHardwareBusInterfaceVector();
    hardware.getBusInterfaces(buses);
    say(key + "busInterfaces", map(buses.size(), i -> {
      ZEPHardwareBusInterface bus = buses.get(i);
      return bus.getName() + ":" + bus.getMode() + ":" + bus.getMemPort() + ":" + bus.getSPTag();
    }));
    ZEPDeviceVector devices = new ZEPDeviceVector();
    hardware.getDevices(devices);
    say(key + "devices", map(devices.size(), i -> devices.get(i).getName()));
  }

  private static void software(String key, ZEPSoftwarePlatform software) {
    say(key + "software.defaultConfigName", software.getDefaultConfigName());
    say(key + "software.supportedRuntimesByPrettyName", filled(software::getSupportedRuntimesByPrettyName));
    ZEPSystemConfigVec configs = new ZEPSystemConfigVec();
    software.getSystemConfigs(configs);
    say(key + "software.configs", map(configs.size(), i -> configs.get(i).getName()));
    for (int i = 0; i < configs.size(); ++i) {
      ZEPSystemConfig config = configs.get(i);
      String prefix = key + "config." + config.getName() + ".";
      say(prefix + "desc", config.getDesc());
      say(prefix + "prettyName", config.getPrettyName());
      say(prefix + "isQemuSupported", config.isQemuSupported());
      say(prefix + "runtimes", filled(config::getRuntimes));
      ZEPProcessorGroupVec groups = new ZEPProcessorGroupVec();
      config.getProcessorGroups(groups);
      say(prefix + "groups", map(groups.size(), at -> {
        ZEPProcessorGroup group = groups.get(at);
        return group.getName() + ":" + group.getCpuType() + ":" + group.getOSName();
      }));
      ZEPBootImgVec images = new ZEPBootImgVec();
      config.getBootImgs(images);
      say(prefix + "images", map(images.size(), at -> images.get(at).getName()));
    }
  }

  private static void platform() {
    for (String name : NAMES) {
      String key = "platform." + name + ".";
      PlatformLoader loader = new PlatformLoader(fileOf(name));
      ZEPPlatform platform = loader.load();
      say(key + "loader.name", loader.getName());
      say(key + "loader.vendor", loader.getVendor());
      say(key + "loader.version", loader.getVersion());
      say(key + "loader.baseName", loader.getBaseName());
      say(key + "loader.hardwarePlatformFile", loader.getHardwarePlatformFile());
      say(key + "uniqueName", platform.getUniqueName());
      say(key + "vendor", platform.getVendor());
      say(key + "library", platform.getLibrary());
      say(key + "name", platform.getName());
      say(key + "version", platform.getVersion());
      say(key + "description", platform.getDescription());
      say(key + "deviceName", platform.getDeviceName());
      say(key + "typeString", platform.getTypeString());
      say(key + "isUnified", platform.isUnified());
      say(key + "isExpandable", platform.isExpandable());
      say(key + "isHidden", platform.isHidden());
      say(key + "hasSimContent", platform.hasSimContent());
      say(key + "supportsHWEmulation", platform.supportsHWEmulation());
      say(key + "hasReconfigurablePartitions", platform.hasReconfigurablePartitions());
      say(key + "defaultRPId", platform.getDefaultRPId());
      say(key + "targetCategories", filled(platform::getTargetCategories));
      ZEPReconfigurablePartitionVec partitions = new ZEPReconfigurablePartitionVec();
      platform.getReconfigurablePartitions(partitions);
      say(key + "partitions", map(partitions.size(), i -> String.valueOf(partitions.get(i).getID())));
      for (int i = 0; i < partitions.size(); ++i) {
        HZEPReconfigurablePartition partition = partitions.get(i);
        say(key + "partition." + partition.getID() + ".hardware", partition.getHardwarePlatform().getUniqueName());
      }
      if (platform.getHardwarePlatform() != null) {
        hardware(key, platform.getHardwarePlatform());
      }
      if (platform.getSoftwarePlatform() != null) {
        software(key, platform.getSoftwarePlatform());
      }
      sayDocument(key + "document", platform.toJSONString());
    }
  }

  private static void documents() {
    for (String name : NAMES) {
      ZEPPlatform platform = new PlatformLoader(fileOf(name)).load();
      sayDocument("documents." + name + ".full", platform.toJSONString());
      JSONObjectWriter brief = new JSONObjectWriter();
      brief.addKey("uniqueName", platform.getUniqueName());
      brief.addKey("file", platform.getPlatformFile());
      brief.addKey("description", platform.getDescription());
      sayDocument("documents." + name + ".short", brief.toJSONString());
    }
    say("documents.damaged", new PlatformLoader(data + "/damaged.kar").load());
  }

  private static void manager() {
    ZEPPlatformMgr manager = ZEPPlatformMgr.getGlobalNoInit();
    say("manager.added", manager.addPlatformsFromDirs(vector(examples, data)));
    say("manager.count", manager.getNumPlatforms());
    List<String> names = new ArrayList<>();
    for (ZEPPlatformIter it = manager.createPlatformIter(); it.hasNext(); ) {
      names.add(it.next().getUniqueName());
    }
    say("manager.names", sorted(names));
    ZEPPlatformVector unified = new ZEPPlatformVector();
    manager.getUnifiedPlatforms(unified);
    say("manager.unified", unified.size());
    say("manager.projectType", manager.getProjectTypeAsStr());
    say("manager.messages", sorted(filled(manager::getParsingErrorMsgs)));
    for (String name : List.of("kestrel", "HERON", "nobody")) {
      ZEPPlatform found = manager.getPlatform(name);
      say("manager.byName." + name, found == null ? null : found.getUniqueName());
    }
    say("manager.byPart", platforms(out -> ZEPPlatformUtils.getPlatformsByPart("tlv9p", out)));
    say("manager.embedded", platforms(out -> ZEPPlatformUtils.getPlatformsByDesignIntent(4, "tlz7", "", "", false, out)));
    say("manager.isFixed.pebble", ZEPPlatformUtils.isFixedPlatform("pebble"));
    say("manager.runtimes.minnow", filled(out -> ZEPPlatformUtils.getRuntimesByPrettyName("minnow", "", out)));
    say("manager.parts", sorted(filled(ZEPPlatformUtils::getSupportedFpgaParts)));
    say("manager.libraryTypes", filled(ZEPPlatformUtils::getAllLibraryTypes));
    manager.removePlatformsFromDirs(vector(examples + "/pebble"));
    say("manager.afterRemoval", manager.getNumPlatforms());
    manager.clearAllPlatforms();
    say("manager.afterClear", manager.getNumPlatforms());
  }

  private static void facade() {
    for (String name : List.of("kestrel", "minnow")) {
      String key = "facade." + name + ".";
      ZEPPlatformEngineHelper helper = new ZEPPlatformEngineHelper(fileOf(name), new StringVector());
      say(key + "isValid", helper.isValid());
      say(key + "uniqueName", helper.getUniqueName());
      say(key + "fpgaPart", helper.getFpgaPart());
      say(key + "hostArch", helper.getHostArch());
      say(key + "memType", helper.getMemType());
      say(key + "memSize", helper.getMemSize());
      say(key + "numDDRs", helper.getNumDDRs());
      say(key + "defaultClockFrequency", helper.getDefaultClockFrequency());
      say(key + "BRAMCount", helper.getBRAMCount());
      say(key + "systemClockNames", filled(helper::getSystemClockNames));
      say(key + "isRuntimeSupported.ocl", helper.isRuntimeSupported("ocl"));
      say(key + "configs", filled(out -> helper.getSysConfigNames(out, "shared")));
      say(key + "defaultConfig", helper.getDefaultSystemConfig().getName());
      say(key + "boardConnectionsString", helper.getBoardConnectionsString());
    }
    say("facade.nobody.isValid", new ZEPPlatformEngineHelper("nobody", new StringVector()).isValid());
  }

  private static void services() {
    String file = fileOf("kestrel");
    NativeObjectService objects = new NativeObjectService();
    for (String path : List.of("description", "hardwarePlatform.systemClocks", "softwarePlatform.systemConfigurations[0].name",
        "nothing.here")) {
      boolean[] ok = {false};
      say("services.object." + path, objects.getObjectsByPath(file, path, ok));
      say("services.object." + path + ".ok", ok[0]);
    }
    say("services.root", objects.getHwPlatformRootPath(objects.getAsJsonStr(file)));
    StringSet keys = new NativeKeyService().get(file);
    say("services.keys.count", keys.size());
    say("services.keys", texts(keys.items()));
    StringMap dict = new NativeDictService().getAsDict(file, "softwarePlatform", new boolean[1]);
    say("services.dict", texts(dict.keys()).stream().map(key -> key + "=" + dict.get(key)).collect(Collectors.toList()));
    NativeCatalogService catalog = new NativeCatalogService();
    sayDocument("services.catalog", catalog.getAsJsonStr(file, true, false));
    say("services.catalog.type", catalog.getValue(file, "type"));
    say("services.found", sorted(filled(out -> new NativePlatformRepoService().getZpfmFiles("", vector(examples), false, out))));
    NativeTransformService transform = new NativeTransformService();
    sayDocument("services.transform", transform.getTransformSpecAsJsonStr(data + "/transform.json"));
    say("services.transform.count", transform.getObjectsBySpec(file, data + "/transform.json"));
  }

  private static void policy() {
    for (String version : List.of("2015.1", "2021.1", "2031.2")) {
      NativeCatalogService catalog = new NativeCatalogService();
      catalog.setTestCompilerVersion_(version);
      for (String name : List.of("kestrel", "heron")) {
        String key = "policy." + version + "." + name + ".";
        String[] reason = {""};
        say(key + "mayUse", catalog.isUnderWarranty(fileOf(name), reason, ""));
        say(key + "mayUse.reason", reason[0]);
        reason[0] = "";
        say(key + "mayOpen", catalog.canDsaBeOpened(fileOf(name), reason));
        say(key + "mayOpen.reason", reason[0]);
      }
    }
  }

  private static ZEPHardwarePlatform makeHardware() {
    ZEPHardwarePlatform hardware = ZEPHardwarePlatform.create();
    hardware.setName("shell");
    hardware.setVendor("hzep");
    hardware.setBoardId("board1");
    hardware.setExpandable(false);
    ZEPSystemClock clock = hardware.addSystemClock();
    clock.setName("clk0");
    clock.setFrequency("300");
    clock.setId(2);
    ZEPHardwareBusInterface bus = hardware.addBusInterface();
    bus.setName("mem0");
    bus.setMode("slave");
    bus.setMemPort("MIG");
    bus.setSPTag("bank0");
    bus.setDataWidth(512);
    return hardware;
  }

  private static void build() {
    ZEPPlatform platform = new ZEPPlatform();
    platform.setVendor("hzep");
    platform.setLibrary("examples");
    platform.setName("mine");
    platform.setVersion("1.2");
    platform.setDescription("built by hand: Grüße");
    platform.setPlatformFile("/plat/mine.zpfm");
    platform.setZpfm(true);
    ZEPSoftwarePlatform software = new ZEPSoftwarePlatform();
    software.setDefaultConfigName("linux");
    software.setLinuxRootFileSystemPath("/sw/rootfs");
    ZEPSystemConfig config = software.addSystemConfig();
    config.setName("linux");
    config.setPrettyName("Linux");
    config.setDesc("a \"quoted\" text");
    config.setSupportsQemu(true);
    config.addRuntime("ocl");
    config.addRuntime("cpp");
    ZEPProcessorGroup group = config.addProcessorGroup();
    group.setName("cpu");
    group.setCpuType("core72");
    group.setOSName("linux");
    group.setIncludePaths("inc:inc2");
    ZEPBootImg image = config.addBootImg();
    image.setName("sd");
    image.setBif("boot.bif");
    platform.addSoftwarePlatform(software);
    platform.setHardwarePlatform(makeHardware());

    say("build.version", platform.getVersion());
    say("build.clockFrequency", platform.getHardwarePlatform().getClockFrequency("clk0"));
    say("build.config", platform.getSoftwarePlatform().getSystemConfigByName("linux").getDesc());
    sayDocument("build.document", platform.toJSONString());
    say("build.tree", new PropertyTree("{\"a\": \"1\", \"c\": {\"b\": \"ä\"}}").getChild(1).getValue("b"));
    JSONListWriter list = new JSONListWriter();
    list.addItem("x");
    list.addItem(true);
    JSONObjectWriter object = new JSONObjectWriter();
    object.addKey("items", list);
    sayDocument("build.list", object.toJSONString());
  }

  private static void broken() {
    sayOrRefusal("broken.missing", () -> new PlatformLoader("/nowhere/at-all.zpfm").load());
    sayOrRefusal("broken.file", () -> new PlatformLoader(data + "/broken.zpfm").load());
    sayOrRefusal("broken.software", () -> new PlatformLoader(data + "/broken.spfm").load());
    say("broken.helper", new ZEPPlatformEngineHelper(data + "/broken.zpfm", new StringVector()).isValid());
    sayOrRefusal("broken.tree", () -> new PropertyTree("{").getValue());
  }

  private static void archive() {
    HMDAArchive made = new HMDAArchive();
    made.setFile(work + "/a.mda");
    made.setPfmName("mine");
    made.create();
    made.archive("NOTE", "doc/note.txt", data + "/note.txt");
    HMDAArchive read = new HMDAArchive();
    read.setFile(work + "/a.mda");
    say("archive.parsed", read.parse());
    say("archive.types", filled(out -> read.getFiles().getTypes(out)));
    say("archive.platform", read.getPfmName());
    sayDocument("archive.document", read.toJSONString());
    say("archive.extracted", read.extract("NOTE", work + "/out").substring(work.length()));
    say("archive.unknown", read.extract("OTHER", work + "/out"));
    sayOrRefusal("archive.refused", () -> read.extract("NOTE", ""));
  }

  private static void labels() {
    HZEPSemanticLabelReader labels = new HZEPSemanticLabelReader();
    say("labels.parsed", labels.parseFile(examples + "/kestrel/kestrel.labels.json"));
    say("labels.endpoints", labels.getPcieEndpoints().size());
    sayDocument("labels.document", labels.toJSONString());
    sayDocument("labels.partition", labels.getPartitionMetadata());
  }

  private static void convert() {
    HDFToDSAConverter converter = new HDFToDSAConverter(examples + "/wren", "wren.hdf", work + "/stage");
    say("convert.file", converter.getHwPfmFileName());
    say("convert.written", converter.writeDSA());
    say("convert.name", new PlatformLoader(converter.getDsaFile()).load().getHardwarePlatform().getName());
    sayOrRefusal("convert.refused", () -> new HDFToDSAConverter("/nowhere", "a.hdf", work + "/stage").getDsaFile());
    ZEPHardwarePlatform seed = makeHardware();
    SimpleFixedKARCreator creator = new SimpleFixedKARCreator(work + "/fixed.kar");
    creator.setSeedPlatform(seed);
    say("convert.fixed", creator.writeKAR());
    ZEPHardwarePlatform fixed = new PlatformLoader(work + "/fixed.kar").load().getHardwarePlatform();
    say("convert.fixed.name", fixed.getName());
    say("convert.fixed.isExpandable", fixed.isExpandable());
    say("convert.seed", seed.isGeneratedByLink());
  }

  public static void main(String[] arguments) throws IOException {
    examples = arguments[0];
    data = arguments[1];
    work = arguments[2];
    Map<String, Runnable> scenarios = new LinkedHashMap<>();
    scenarios.put("platform", Scenarios::platform);
    scenarios.put("documents", Scenarios::documents);
    scenarios.put("manager", Scenarios::manager);
    scenarios.put("facade", Scenarios::facade);
    scenarios.put("services", Scenarios::services);
    scenarios.put("policy", Scenarios::policy);
    scenarios.put("build", Scenarios::build);
    scenarios.put("broken", Scenarios::broken);
    scenarios.put("archive", Scenarios::archive);
    scenarios.put("labels", Scenarios::labels);
    scenarios.put("convert", Scenarios::convert);
    List<String> wanted = List.of(arguments).subList(3, arguments.length);
    scenarios.forEach((name, run) -> {
      if (wanted.isEmpty() || wanted.contains(name)) {
        run.run();
      }
    });
    Files.write(Path.of(work, "answers.txt"), ANSWERS.toString().getBytes(StandardCharsets.UTF_8));
  }
}
