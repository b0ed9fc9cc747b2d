// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
package ui.frmwork.cmd;

/** An operation of the native library failed; the message is the library's own. */
public class CommandFailedException extends RuntimeException {
  private static final long serialVersionUID = 1;

  public CommandFailedException(String message) {
    super(message);
  }
}
