// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
import java.lang.reflect.Constructor;
import java.lang.reflect.InvocationTargetException;
import java.lang.reflect.Method;
import java.lang.reflect.Modifier;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.Arrays;
import java.util.Enumeration;
import java.util.LinkedHashMap;
import java.util.List;
import java.util.Map;
import java.util.TreeMap;
import java.util.jar.JarEntry;
import java.util.jar.JarFile;
import java.util.stream.Stream;
import ui.data.platform.platform.*;
import ui.frmwork.cmd.CommandFailedException;

/** Calls that no caller should make: each must end in its exception, and none may end the process. */
public final class Misuse {
  private static final String PACKAGE = "ui.data.platform.platform.";
  private static final Map<String, Integer> REFUSED = new TreeMap<>();
  private static int calls;
  private static int faults;
  private static String examples;
  private static String data;

  private interface Call {
    void run() throws Throwable;
  }

  private static void fail(String what, Object outcome) {
    ++faults;
    System.out.println("FAULT: " + what + ": " + outcome);
  }

  /** The call ends in exactly that exception, whose text holds the other text. */
  private static void refuse(Class<? extends Throwable> expected, String text, String what, Call call) {
    ++calls;
    try {
      call.run();
      fail(what, "went through, expected " + expected.getSimpleName());
    } catch (Throwable thrown) {
      Throwable e = thrown instanceof InvocationTargetException ? thrown.getCause() : thrown;
      if (e.getClass() != expected || e.getMessage() == null || !e.getMessage().contains(text)) {
        fail(what, e);
      } else {
        REFUSED.merge(expected.getSimpleName(), 1, Integer::sum);
      }
    }
  }

  private static void gone(String what, Call call) {
    refuse(NullPointerException.class, "", what, call);
  }

  /** The call may be answered, or refused by an exception that the library's callers know. */
  private static void survive(String what, Call call) {
    ++calls;
    try {
      call.run();
      REFUSED.merge("answered", 1, Integer::sum);
    } catch (Throwable thrown) {
      Throwable e = thrown instanceof InvocationTargetException ? thrown.getCause() : thrown;
      if (e instanceof CommandFailedException || e instanceof NullPointerException || e instanceof IndexOutOfBoundsException
          || e instanceof IllegalArgumentException) {
        REFUSED.merge("or " + e.getClass().getSimpleName(), 1, Integer::sum);
      } else {
        fail(what, e);
      }
    }
  }

  private static List<Class<?>> wrappedClasses() throws Exception {
    List<Class<?>> found = new ArrayList<>();
    Path jar = Path.of(ZEPPlatform.class.getProtectionDomain().getCodeSource().getLocation().toURI());
    try (JarFile file = new JarFile(jar.toFile())) {
      for (Enumeration<JarEntry> entries = file.entries(); entries.hasMoreElements(); ) {
        String name = entries.nextElement().getName().replace('/', '.');
        if (name.startsWith(PACKAGE) && name.endsWith(".class") && !name.contains("$")) {
          Class<?> type = Class.forName(name.substring(0, name.length() - 6));
          if (NativeHandle.class.isAssignableFrom(type) && type != NativeHandle.class) {
            found.add(type);
          }
        }
      }
    }
    return found;
  }

  private static Stream<Method> operations(Class<?> type) {
    return Arrays.stream(type.getDeclaredMethods()).filter(
        m -> Modifier.isPublic(m.getModifiers()) && !m.isBridge() && !List.of("delete", "close").contains(m.getName()));
  }

  private static boolean isPlainGetter(Method method) {
    return method.getName().matches("(get|is|has|supports|find|uses|contains|size|to|create\\w*Iter).*")
        && !method.getName().matches("get(HwDb|BoardRepo|Global).*|getNodeIDFromKar");
  }

  /** An argument of that type with the number where it is one. */
  private static Object argument(Class<?> type, long number, Object text) throws Exception {
    if (type == int.class) {
      return (int) number;
    } else if (type == long.class) {
      return number;
    } else if (type == short.class) {
      return (short) number;
    } else if (type == byte.class) {
      return (byte) number;
    } else if (type == boolean.class) {
      return number != 0;
    } else if (type == String.class) {
      return text;
    } else if (type == String[].class) {
      return new String[] {""};
    } else if (type == boolean[].class) {
      return new boolean[1];
    } else if (type == java.math.BigInteger.class) {
      return java.math.BigInteger.valueOf(number).pow(number > 1 ? 3 : 1);
    }
    return null;
  }

  private static Object[] arguments(Method method, long number, Object text) throws Exception {
    Class<?>[] types = method.getParameterTypes();
    Object[] values = new Object[types.length];
    for (int i = 0; i < types.length; ++i) {
      values[i] = argument(types[i], number, text);
    }
    return values;
  }

  /** A new list for each list that the method fills. */
  private static void giveLists(Method method, Object[] values) throws Exception {
    Class<?>[] types = method.getParameterTypes();
    for (int i = 0; i < types.length; ++i) {
      if (types[i].getSimpleName().matches(".*(Vector|Vec|StringSet|StringMap)") && values[i] == null) {
        values[i] = types[i].getConstructor().newInstance();
      }
    }
  }

  private static void closedHandles(List<Class<?>> types) throws Exception {
    for (Class<?> type : types) {
      Constructor<?> make = type.getDeclaredConstructor(long.class, boolean.class);
      make.setAccessible(true);
      NativeHandle closed = (NativeHandle) make.newInstance(0L, false);
      for (Method method : (Iterable<Method>) operations(type)::iterator) {
        if (!Modifier.isStatic(method.getModifiers())) {
          Object[] values = arguments(method, 0, "");
          giveLists(method, values);
          gone("closed " + method, () -> method.invoke(closed, values));
        }
      }
    }
  }

  private static void nullTexts(Map<Class<?>, Object> objects) throws Exception {
    for (Map.Entry<Class<?>, Object> entry : objects.entrySet()) {
      for (Method method : (Iterable<Method>) operations(entry.getKey())::iterator) {
        if (Arrays.asList(method.getParameterTypes()).contains(String.class)) {
          Object[] values = arguments(method, 0, null);
          giveLists(method, values);
          gone("null text for " + method, () -> method.invoke(entry.getValue(), values));
        }
      }
    }
  }

  private static void oddNumbers(Map<Class<?>, Object> objects) throws Exception {
    for (Map.Entry<Class<?>, Object> entry : objects.entrySet()) {
      for (Method method : (Iterable<Method>) operations(entry.getKey())::iterator) {
        boolean odd = Arrays.stream(method.getParameterTypes()).anyMatch(t -> t.isPrimitive() || t == String.class || t == boolean[].class);
        if (odd && isPlainGetter(method)) {
          for (long number : new long[] {-1, Integer.MIN_VALUE, Integer.MAX_VALUE, Long.MAX_VALUE}) {
            Object[] values = arguments(method, number, "\uD800 ..[" + number + "]%s\0\u00fc\uD83D\uDE00");
            giveLists(method, values);
            survive("odd values for " + method, () -> method.invoke(entry.getValue(), values));
          }
        }
      }
    }
  }

  private static void lists(List<Class<?>> types) throws Exception {
    for (Class<?> type : types) {
      if (!type.getSimpleName().matches(".*(Vector|Vec)")) {
        continue;
      }
      Object list = type.getConstructor().newInstance();
      Method get = type.getMethod("get", int.class);
      for (int index : new int[] {-1, 0, 1, Integer.MAX_VALUE, Integer.MIN_VALUE}) {
        refuse(IndexOutOfBoundsException.class, "out of range", get.toString(), () -> get.invoke(list, index));
      }
    }
  }

  private static void iterators(ZEPHardwarePlatform hardware, ZEPPlatformMgr manager) {
    ZEPSystemClockIter clock = hardware.createSystemClockIter();
    while (clock.hasNext()) {
      clock.next();
    }
    for (int i = 0; i < 20; ++i) {
      refuse(IndexOutOfBoundsException.class, "at its end", "iterator", clock::next);
    }
    manager.addPlatformsFromDirs(vector(examples));
    ZEPPlatformIter platform = manager.createPlatformIter();
    manager.clearAllPlatforms();
    while (platform.hasNext()) {
      refuse(NullPointerException.class, "gone", "iterator over platforms that are gone", platform::next);
      break;
    }
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

  private static void references() {
    ZEPPlatform platform = new ZEPPlatform();
    String reference = " & reference is null";
    refuse(NullPointerException.class, "zep_platform::JSONObjectWriter" + reference, "toJSON(null)", () -> platform.toJSON(null));
    refuse(NullPointerException.class, "std::vector< std::string >" + reference, "null list", () -> platform.getTargetCategories(null));
    refuse(NullPointerException.class, "std::vector< std::string > const" + reference, "null const list",
        () -> ZEPPlatformMgr.getGlobalNoInit().addPlatformsFromDirs(null));
    refuse(NullPointerException.class, "zep_platform::JSONWriter const" + reference, "null writer",
        () -> new JSONObjectWriter().addKey("key", (JSONWriter) null));
    for (Call act : new Call[] {() -> new PlatformLoader(fileOf("pebble"), null), () -> new NativeObjectService(null),
        () -> new NativeKeyService(null), () -> new NativeDocService(null)}) {
      refuse(NullPointerException.class, "Attempt to dereference null zep_platform::PlatformLoader::HwMetadataMode", "null mode", act);
    }
    PropertyTree tree = new PropertyTree("{}");
    tree.close();
    refuse(NullPointerException.class, "this PropertyTree is closed", "closed tree", () -> new NativeKeyService().get(tree));
    refuse(NullPointerException.class, "array", "null array", () -> new NativeCatalogService().canDsaBeOpened(fileOf("pebble"), null));
    refuse(IndexOutOfBoundsException.class, "Array", "empty array",
        () -> new NativeObjectService().getObjectsByPath(fileOf("pebble"), "name", new boolean[0]));
    refuse(NullPointerException.class, "null", "null text", () -> new PlatformLoader(null));
  }

  private static void brokenFiles() throws Exception {
    refuse(CommandFailedException.class, "at-all.zpfm", "no file", () -> new PlatformLoader("/nowhere/at-all.zpfm"));
    refuse(CommandFailedException.class, "failed to parse", "broken file", () -> new PlatformLoader(data + "/broken.zpfm"));
    refuse(CommandFailedException.class, "", "no JSON", () -> new PropertyTree("{"));
    refuse(CommandFailedException.class, "", "too deep", () -> new PropertyTree("[".repeat(200000)));
    refuse(CommandFailedException.class, "", "no definition", () -> new HDFToDSAConverter("/nowhere", "a.hdf", "/nowhere/stage"));
    refuse(CommandFailedException.class, "", "no archive", () -> new HMDAArchive().archive("A", "a", data + "/note.txt"));
    refuse(CommandFailedException.class, "", "no seed", () -> new SimpleFixedKARCreator("/nowhere/x.kar").writeKAR());
    refuse(CommandFailedException.class, "", "partition file",
        () -> ZEPHardwarePlatform.create().parseVCEPartitions(data + "/broken.zpfm"));
    byte[] whole = Files.readAllBytes(Path.of(fileOf("kestrel")));
    Path cut = Files.createTempFile("misuse", ".zpfm");
    for (int size = 0; size < whole.length - 2; size += 1 + whole.length / 60) {
      Files.write(cut, Arrays.copyOf(whole, size));
      refuse(CommandFailedException.class, "failed to parse", "file cut at " + size, () -> new PlatformLoader(cut.toString()));
    }
    Files.delete(cut);
  }

  private static void deadObjects() {
    PlatformLoader loader = new PlatformLoader(fileOf("kestrel"));
    ZEPPlatform platform = loader.load();
    ZEPHardwarePlatform hardware = platform.getHardwarePlatform();
    ZEPSystemConfig config = platform.getSoftwarePlatform().getDefaultSystemConfig();
    ZEPHardwareBusInterfaceVector buses = new ZEPHardwareBusInterfaceVector();
    hardware.getBusInterfaces(buses);
    ZEPSystemClockIter clocks = hardware.createSystemClockIter();
    ZEPDeviceVector devices = new ZEPDeviceVector();
    hardware.getDevices(devices);
    ZEPDevice device = devices.get(0);
    ZEPDesignIntentStorage intent = hardware.getDesignIntent();
    ZEPPlatformEngineHelper helper = new ZEPPlatformEngineHelper(platform);
    SimpleFixedKARCreator creator = new SimpleFixedKARCreator("/nowhere/x.kar");
    creator.setSeedPlatform(hardware);
    loader.close();
    loader.close();
    gone("closed loader", loader::load);
    gone("platform of a closed loader", platform::getName);
    gone("hardware of a closed loader", hardware::getName);
    gone("configuration of a closed loader", config::getName);
    gone("device of a closed loader", device::getName);
    gone("intent of a closed loader", () -> intent.toJSON(new JSONObjectWriter()));
    gone("bus interface in a list", () -> buses.get(0));
    gone("clock of an iterator", clocks::next);
    gone("device in a list", () -> devices.get(0));
    gone("helper of a platform that is gone", helper::getName);
    gone("seed that is gone", creator::writeKAR);
    gone("list of what is gone", () -> ZEPHardwarePlatform.create().getBusInterfaces(buses));
    gone("argument that is gone", () -> new ZEPPlatformVector().add(platform));
    gone("item for a writer that is gone", () -> new JSONListWriter().addItem(platform));
    creator.setSeedPlatform(null);
    helper.close();
    creator.close();

    ZEPPlatformMgr manager = ZEPPlatformMgr.getGlobalNoInit();
    for (boolean remove : new boolean[] {true, false}) {
      manager.addPlatformsFromDirs(vector(examples + "/kestrel"));
      ZEPPlatform dropped = manager.getPlatform("kestrel");
      ZEPHardwarePlatform itsHardware = dropped.getHardwarePlatform();
      ZEPPlatformVector all = new ZEPPlatformVector();
      manager.getPlatforms(all);
      ZEPPlatformEngineHelper byName = new ZEPPlatformEngineHelper("kestrel", new StringVector());
      if (remove) {
        manager.removePlatformsFromDirs(vector(examples + "/kestrel"));
      } else {
        manager.clearAllPlatforms();
      }
      gone("dropped platform", dropped::getName);
      gone("hardware of a dropped platform", itsHardware::getPlatformState);
      gone("list with a dropped platform", () -> all.get(0));
      gone("candidates that were dropped", () -> ZEPPlatformUtils.filterOutOldPlatforms(all));
      gone("helper of a dropped platform", byName::getUniqueName);
    }
  }

  private static void ownership() {
    for (int i = 0; i < 50; ++i) {
      ZEPPlatform platform = new ZEPPlatform();
      ZEPSoftwarePlatform software = new ZEPSoftwarePlatform();
      ZEPHardwarePlatform hardware = ZEPHardwarePlatform.create();
      platform.addSoftwarePlatform(software);
      platform.setHardwarePlatform(hardware);
      refuse(IllegalArgumentException.class, "owner", "taken over twice", () -> platform.addSoftwarePlatform(software));
      refuse(IllegalArgumentException.class, "owner", "taken over twice", () -> new ZEPPlatform().setHardwarePlatform(hardware));
      refuse(IllegalArgumentException.class, "owner", "taken out of its platform",
          () -> new ZEPPlatform().addSoftwarePlatform(platform.getSoftwarePlatform()));
      software.close();
      platform.close();
      gone("software of a closed platform", () -> platform.getSoftwarePlatform());
      gone("hardware of a closed platform", hardware::getName);
      refuse(IllegalArgumentException.class, "closed", "closed one taken over", () -> new ZEPPlatform().addSoftwarePlatform(software));
      platform.close();
      platform.delete();
    }
  }

  public static void main(String[] arguments) throws Exception {
    examples = arguments[0];
    data = arguments[1];
    List<Class<?>> types = wrappedClasses();
    PlatformLoader loader = new PlatformLoader(fileOf("kestrel"));
    ZEPPlatform platform = loader.load();
    ZEPHardwarePlatform hardware = platform.getHardwarePlatform();
    ZEPSoftwarePlatform software = platform.getSoftwarePlatform();
    ZEPDeviceVector devices = new ZEPDeviceVector();
    hardware.getDevices(devices);
    Map<Class<?>, Object> objects = new LinkedHashMap<>();
    for (Object object : new Object[] {loader, platform, hardware, software, software.getDefaultSystemConfig(), devices.get(0),
        hardware.createSystemClockIter().next(), hardware.createBusInterfaceIter().next(), hardware.getVceHardware(),
        hardware.getDesignIntent(), new ZEPPlatformEngineHelper(platform), new ZEPPlatformMgr(), new ZEPPlatformUtils(),
        new ZEPSoftwarePlatformUtils(), new ZEPProcessorGroup(), new ZEPBootImg(), new HMDAArchive(), new HMDAFiles(),
        new HZEPSemanticLabelReader(), new HZEPSemanticUuid(), new NativeCatalogService(), new NativeDictService(), new NativeDocService(),
        new NativeKeyService(), new NativeObjectService(), new NativePlatformRepoService(), new NativeTransformService(),
        new HZEPEmulationUtils(), new JSONObjectWriter(), new JSONListWriter(), new PropertyTree("{\"a\": \"1\"}"), new StringMap(),
        new StringSet(), new ZEPPfmFileTypes()}) {
      objects.put(object.getClass(), object);
    }
    closedHandles(types);
    nullTexts(objects);
    oddNumbers(objects);
    lists(types);
    references();
    brokenFiles();
    deadObjects();
    iterators(hardware, ZEPPlatformMgr.getGlobalNoInit());
    ownership();
    System.gc();
    new StringVector();
    if (!"kestrel".equals(platform.getDeviceName())) {
      fail("the platform afterwards", platform.getDeviceName());
    }
    System.out.println(calls + " calls, " + REFUSED + ", " + faults + " faults");
    System.exit(faults == 0 && calls >= 1000 ? 0 : 1);
  }
}
