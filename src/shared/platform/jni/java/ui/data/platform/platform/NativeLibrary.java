// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
package ui.data.platform.platform;

import java.io.IOException;
import java.io.InputStream;
import java.io.UncheckedIOException;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.List;

/**
 * Loads the native library: the file that the system property {@value #PROPERTY} names, else the one in this jar, which is unpacked to a
 * private directory for as long as the process runs.
 */
final class NativeLibrary {
  static final String PROPERTY = "hzep.platform.library";
  private static final String[] FILES = {"libhzep_platform.so.0", "libhzep_platform_jni.so"};

  private NativeLibrary() {}

  static void load() {
    String library = System.getProperty(PROPERTY);
    if (library != null) {
      System.load(Path.of(library).toAbsolutePath().toString());
      return;
    }
    List<Path> made = new ArrayList<>();
    try {
      Path directory = Files.createTempDirectory("hzep_platform");
      made.add(directory);
      for (String file : FILES) {
        made.add(unpack(file, directory));
      }
      System.load(made.get(made.size() - 1).toString());
    } catch (IOException e) {
      throw new UncheckedIOException("cannot unpack the native library; name one with -D" + PROPERTY, e);
    } finally {
      // What is loaded stays mapped; its file need not.
      for (int i = made.size() - 1; i >= 0; --i) {
        made.get(i).toFile().delete();
      }
    }
  }

  private static Path unpack(String file, Path directory) throws IOException {
    try (InputStream in = NativeLibrary.class.getResourceAsStream("/native/" + file)) {
      if (in == null) {
        throw new IOException("the jar holds no native/" + file);
      }
      Path target = directory.resolve(file);
      Files.copy(in, target);
      return target;
    }
  }
}
