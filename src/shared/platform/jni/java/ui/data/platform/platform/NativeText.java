// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
package ui.data.platform.platform;

import java.nio.ByteBuffer;
import java.nio.charset.CharacterCodingException;
import java.nio.charset.StandardCharsets;

/** Texts of the library are UTF-8; they arrive with each byte widened to a character. */
final class NativeText {
  private NativeText() {}

  /** Bytes that are no UTF-8 stay as they came. */
  static String fromWidenedBytes(String widened) {
    if (widened == null || widened.chars().allMatch(c -> c < 0x80)) {
      return widened;
    }
    byte[] bytes = widened.getBytes(StandardCharsets.ISO_8859_1);
    try {
      return StandardCharsets.UTF_8.newDecoder().decode(ByteBuffer.wrap(bytes)).toString();
    } catch (CharacterCodingException e) {
      return widened;
    }
  }

  /** An argument that is read and written is an array of one; an element of null counts as an empty text. */
  static void checkInOut(String[] argument) {
    if (argument == null) {
      throw new NullPointerException("array null");
    }
    if (argument.length == 0) {
      throw new IndexOutOfBoundsException("Array must contain at least 1 element");
    }
    if (argument[0] == null) {
      argument[0] = "";
    }
  }

  static void decodeInOut(String[] argument) {
    argument[0] = fromWidenedBytes(argument[0]);
  }
}
