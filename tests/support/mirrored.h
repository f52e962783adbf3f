// Every library class that has a mirror class of its own, and how to make an object of it.
#ifndef ZV_TESTS_MIRRORED_H
#define ZV_TESTS_MIRRORED_H

#include "utils/zvutils.h"

struct MirroredClass {
  const char* name;
  ZVObject* (*make)();
  // A clone of such an object is of the same class; else its nearest base with copy members decides.
  bool clonesItself;
};

template <class Class>
ZVObject* makeDefault() {
  return new Class;
}

// In alphabetical order.
inline const MirroredClass MIRRORED_CLASSES[] = {
    {"ZVDList", makeDefault<ZVDList>, true},
    {"ZVDListCell", makeDefault<ZVDListCell>, true},
    {"ZVDListIter", makeDefault<ZVDListIter>, false},
    {"ZVDTuple", makeDefault<ZVDTuple>, true},
    {"ZVDouble", makeDefault<ZVDouble>, true},
    {"ZVInt", makeDefault<ZVInt>, true},
    {"ZVLong", makeDefault<ZVLong>, true},
    {"ZVObjectWithID", makeDefault<ZVObjectWithID>, true},
    {"ZVPoint", makeDefault<ZVPoint>, true},
    {"ZVSList", makeDefault<ZVSList>, true},
    {"ZVSListCell", makeDefault<ZVSListCell>, false},
    {"ZVSListIter", makeDefault<ZVSListIter>, false},
    {"ZVSize", makeDefault<ZVSize>, true},
    {"ZVStringHandle", makeDefault<ZVStringHandle>, true},
    {"ZVStringPool", makeDefault<ZVStringPool>, true},
    {"ZVTuple", makeDefault<ZVTuple>, true},
};

#endif
