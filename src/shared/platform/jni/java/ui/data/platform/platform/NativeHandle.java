// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
package ui.data.platform.platform;

import java.lang.ref.PhantomReference;
import java.lang.ref.ReferenceQueue;
import java.util.HashSet;
import java.util.Set;
import java.util.function.LongConsumer;

/**
 * A native object as Java holds it. {@link #close} frees an object that Java owns; a call on a closed handle, or on one whose native
 * object is gone, throws {@link NullPointerException}. What nobody holds any more is freed when the next handle is made, on the thread
 * that makes it.
 */
public abstract class NativeHandle implements AutoCloseable {
  private static final ReferenceQueue<NativeHandle> UNREACHABLE = new ReferenceQueue<>();
  private static final Set<Owned> OWNED = new HashSet<>();

  private Owned own;
  private NativeHandle origin;

  NativeHandle(LongConsumer deleter, long address) {
    if (deleter != null) {
      own = new Owned(this, deleter, address);
    }
    synchronized (OWNED) {
      if (own != null) {
        OWNED.add(own);
      }
      for (Object gone = UNREACHABLE.poll(); gone != null; gone = UNREACHABLE.poll()) {
        ((Owned) gone).free();
      }
    }
  }

  /** Where the native object is, 0 once the handle is closed. */
  abstract long nativeAddress();

  abstract void forget();

  @Override
  public final void close() {
    forget();
    origin = null;
    if (own != null) {
      own.free();
      own = null;
    }
  }

  /** Another name of {@link #close}. */
  public final void delete() {
    close();
  }

  /** The address of an argument; a closed handle is not the same as none. */
  final long open(long address) {
    if (address == 0) {
      throw new NullPointerException("this " + getClass().getSimpleName() + " is closed");
    }
    return address;
  }

  /** Another object becomes the owner. */
  final void giveAway() {
    if (nativeAddress() == 0 || own == null) {
      throw new IllegalArgumentException("this " + getClass().getSimpleName() + " is closed or has an owner already");
    }
    own.release();
    own = null;
  }

  /** The object lives inside this one, which therefore stays while the part is held. */
  final <T extends NativeHandle> T keep(T part) {
    NativeHandle handle = part;
    handle.origin = this;
    return part;
  }

  @Override
  public final boolean equals(Object other) {
    return other != null && other.getClass() == getClass() && ((NativeHandle) other).nativeAddress() == nativeAddress();
  }

  @Override
  public final int hashCode() {
    return Long.hashCode(nativeAddress());
  }

  private static final class Owned extends PhantomReference<NativeHandle> {
    private final LongConsumer deleter;
    private final long address;

    Owned(NativeHandle handle, LongConsumer deleter, long address) {
      super(handle, UNREACHABLE);
      this.deleter = deleter;
      this.address = address;
    }

    void free() {
      if (release()) {
        deleter.accept(address);
      }
    }

    boolean release() {
      synchronized (OWNED) {
        return OWNED.remove(this);
      }
    }
  }
}
