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
}
