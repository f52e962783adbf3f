package com.larkmoor.jnilayout;

/** The mirror of a native object, and base of every mirror class. */
public class ZVNativeObject {
  /** The native object's address; 0 when it is gone. */
  private long pCppObj;

  /** How often the native object said that it goes. */
  private int unloads;

  public ZVNativeObject(long pCppObj) {
    this.pCppObj = pCppObj;
    javaIndex(pCppObj, ZVJavaFactory.add(this));
  }

  /** The native object is being destroyed. */
  void unload() {
    pCppObj = 0;
    ++unloads;
  }

  /** Stores the mirror's index in the native object. */
  private static native void javaIndex(long pCppObj, int index);
}
