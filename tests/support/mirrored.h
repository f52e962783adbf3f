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

template <class Class, auto... arguments>
ZVObject* made() {
  return new Class(arguments...);
}

// In alphabetical order.
inline const MirroredClass MIRRORED_CLASSES[] = {
    {"ZVDList", made<ZVDList>, true},
    {"ZVDList", makeDefault<ZVDList>, true},
    {"ZVDListCell", made<ZVDListCell>, true},
    {"ZVDListCell", makeDefault<ZVDListCell>, true},
    {"ZVDListIter", made<ZVDListIter>, false},
    {"ZVDListIter", makeDefault<ZVDListIter>, false},
    {"ZVDTuple", made<ZVDTuple>, true},
    {"ZVDTuple", makeDefault<ZVDTuple>, true},
    {"ZVDouble", made<ZVDouble>, true},
    {"ZVDouble", makeDefault<ZVDouble>, true},
    {"ZVErrorMsg", makeDefault<ZVErrorMsg>, true},
    {"ZVFile", makeDefault<ZVFile>, true},
    {"ZVIndexHashTable", made<ZVIndexHashTable>, true},
    {"ZVInt", made<ZVInt>, true},
    {"ZVInt", makeDefault<ZVInt>, true},
    {"ZVLong", made<ZVLong>, true},
    {"ZVLong", makeDefault<ZVLong>, true},
    {"ZVOMLStatic", made<ZVOMLStatic, nullptr, nullptr, nullptr, nullptr>, false},
    {"ZVObjectWithID", made<ZVObjectWithID>, true},
    {"ZVObjectWithID", makeDefault<ZVObjectWithID>, true},
    {"ZVPerMil", made<ZVPerMil>, true},
    {"ZVPoint", made<ZVPoint>, true},
    {"ZVPoint", makeDefault<ZVPoint>, true},
    {"ZVRect", made<ZVRect>, true},
    {"ZVSList", made<ZVSList>, true},
    {"ZVSList", makeDefault<ZVSList>, true},
    {"ZVSListCell", made<ZVSListCell>, false},
    {"ZVSListCell", makeDefault<ZVSListCell>, false},
    {"ZVSListIter", made<ZVSListIter>, false},
    {"ZVSListIter", makeDefault<ZVSListIter>, false},
    {"ZVSize", made<ZVSize>, true},
    {"ZVSize", makeDefault<ZVSize>, true},
    {"ZVStringHandle", made<ZVStringHandle>, true},
    {"ZVStringHandle", makeDefault<ZVStringHandle>, true},
    {"ZVStringPool", made<ZVStringPool>, true},
    {"ZVStringPool", makeDefault<ZVStringPool>, true},
    {"ZVText", makeDefault<ZVText>, true},
    {"ZVTextFile", makeDefault<ZVTextFile>, true},
    {"ZVTuple", made<ZVTuple>, true},
    {"ZVTuple", makeDefault<ZVTuple>, true},
};

#endif
