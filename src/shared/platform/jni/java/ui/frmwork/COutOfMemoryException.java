// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
package ui.frmwork;

/** The native library ran out of memory. */
public class COutOfMemoryException extends RuntimeException {
  private static final long serialVersionUID = 1;

  public COutOfMemoryException(String message) {
    super(message);
  }
}
