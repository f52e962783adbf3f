package com.larkmoor.jnilayout;

/** The mirror of a class in a layer above the library. */
public class LayerNode extends ZVObjectWithID {
  public LayerNode(long pCppObj) {
    super(pCppObj);
  }
}
