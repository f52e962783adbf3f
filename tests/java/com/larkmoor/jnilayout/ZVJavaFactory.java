package com.larkmoor.jnilayout;

import java.util.ArrayList;

/** The table of all mirrors. A native object knows its mirror by the index here. */
public final class ZVJavaFactory {
  private static final ArrayList<Object> mirrors = new ArrayList<>();

  private ZVJavaFactory() {}

  /** Enters a mirror and gives its index. */
  static int add(Object mirror) {
    mirrors.add(mirror);
    return mirrors.size() - 1;
  }

  /** The mirror at an index, null if its entry was released. */
  static Object getJavaObject(int index) {
    return mirrors.get(index);
  }

  /** Releases an entry; gives 1 if a mirror was there. Indices are not used again. */
  static int delJavaObject(int index) {
    return mirrors.set(index, null) == null ? 0 : 1;
  }

  /** How many mirrors were ever entered. */
  static int size() {
    return mirrors.size();
  }
}
