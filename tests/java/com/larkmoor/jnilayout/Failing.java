package com.larkmoor.jnilayout;

/** A mirror that enters itself in the table and then fails. */
public class Failing extends ZVNativeObject {
  public Failing(long pCppObj) {
    super(pCppObj);
    throw new IllegalStateException("no mirror today");
  }
}
