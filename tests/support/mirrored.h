// Every library class that has a mirror class, and how to make an object of it. Where two lines have one
// name, classes share a mirror class.
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

// The least that makes an abstract class concrete.
template <class Sort, class Cell>
struct ConcreteSort : Sort {
  int32_t virtualCompare(Cell*, Cell*) override { return 0; }
  void virtualDebugOutputElement(Cell*) override {}
};

struct ConcreteSearch : ConcreteSort<ZVDListSearch, ZVDListCell> {
  int32_t virtualCompareKey(ZVDListCell*, void*) override { return 0; }
};
template <class List>
struct ConcreteSorted : List {
  int32_t virtualObjectCompare(const ZVObject*, const ZVObject*) const override { return 0; }
};
struct ConcreteAlgorithm : ZVAlgorithm {
  void algorithmBody() override {}
};
struct ConcreteArray : ZVSimpleArray {
  void reallocate(int32_t) override {}
  int elementEquals(const ZVSimpleArray*, int32_t) const override { return 1; }
  void copyElement(const ZVSimpleArray*, int32_t) override {}
};
struct ConcreteResource : ZVResource {
  int32_t sortKey() const override { return 0; }
  int isEqual(const ZVResource*) const override { return 1; }
};
struct ConcreteResourceDB : ZVResourceDB {
  ZVResource* vNewResource() override { return new ConcreteResource; }
};
struct ConcreteSweep : ZVSweep {
  int32_t startCoordinateOfSegment(const ZVObject*) override { return 0; }
  int32_t endCoordinateOfSegment(const ZVObject*) override { return 0; }
};

// In alphabetical order.
inline const MirroredClass MIRRORED_CLASSES[] = {
    {"ZVAlgorithm", made<ConcreteAlgorithm>, false},
    {"ZVBinHeap", made<ZVBinHeap>, true},
    {"ZVBinHeapCell", made<ZVBinHeapCell>, true},
    {"ZVBinTree", made<ZVBinTree>, true},
    {"ZVBinTreeCell", made<ZVBinTreeCell>, true},
    {"ZVColor", made<ZVColor>, true},
    {"ZVColorResource", made<ZVColorResource>, true},
    {"ZVColorResourceDB", made<ZVColorResourceDB>, false},
    {"ZVDList", made<ZVDList>, true},
    {"ZVDListCell", made<ZVDListCell>, true},
    {"ZVDListIter", made<ZVDListIter>, false},
    {"ZVDListSearch", made<ConcreteSearch>, false},
    {"ZVDListSort", made<ConcreteSort<ZVDListSort, ZVDListCell>>, false},
    {"ZVDTuple", made<ZVDTuple>, true},
    {"ZVDTupleDListSort", made<ZVDTupleDListSort>, false},
    {"ZVDouble", made<ZVDouble>, true},
    {"ZVErrorMsg", made<ZVErrorMsg>, true},
    {"ZVFile", made<ZVFile>, true},
    {"ZVFontInfo", made<ZVFontInfo>, true},
    {"ZVHorSegment", made<ZVHorSegment>, true},
    {"ZVIUserFieldDListSort", made<ZVIUserFieldDListSort>, false},
    {"ZVIUserFieldSListSort", made<ZVIUserFieldSListSort>, false},
    {"ZVIndexHashTable", made<ZVIndexHashTable>, true},
    {"ZVInt", made<ZVInt>, true},
    {"ZVLong", made<ZVLong>, true},
    {"ZVMemAddressDListSort", made<ZVMemAddressDListSort>, false},
    {"ZVOMLBinValue", made<ZVOMLBinValue>, true},
    {"ZVOMLExtension", made<ZVOMLExtension>, true},
    {"ZVOMLFile", made<ZVOMLFile>, false},
    {"ZVOMLObject", made<ZVOMLObject>, true},
    {"ZVOMLObjectTuple", made<ZVOMLObjectTuple>, true},
    {"ZVOMLStatic", made<ZVOMLStatic, nullptr, nullptr, nullptr, nullptr>, false},
    {"ZVOMLSyntaxFieldIter", made<ZVOMLSyntaxFieldIter>, false},
    {"ZVOMLSyntaxObjectIter", made<ZVOMLSyntaxObjectIter>, false},
    {"ZVOMLSyntaxStruct", made<ZVOMLSyntaxObject, nullptr, 0, 0, 0, 0, 0, 0, 0U, nullptr>, false},
    {"ZVOMLSyntaxStruct", made<ZVOMLSyntaxStruct, nullptr, 0, 0, 0>, false},
    {"ZVOMLSyntaxStruct", made<ZVOMLSyntaxField, nullptr, 0, 0, 0, 0, 0, 0U, nullptr, nullptr, 0>, false},
    {"ZVObjectWithID", made<ZVObjectWithID>, true},
    {"ZVPerMil", made<ZVPerMil>, true},
    {"ZVPoint", made<ZVPoint>, true},
    {"ZVPointDList", made<ZVPointDList>, true},
    {"ZVPointDListIter", made<ZVPointDListIter>, false},
    {"ZVPointSList", made<ZVPointSList>, true},
    {"ZVPointSListIter", made<ZVPointSListIter>, false},
    {"ZVPointSListSort", made<ZVPointSListSort>, false},
    {"ZVPolygon", made<ZVPolygon, nullptr>, true},
    {"ZVRect", made<ZVRect>, true},
    {"ZVRectDList", made<ZVRectDList>, true},
    {"ZVRectDListIter", made<ZVRectDListIter>, false},
    {"ZVRectSList", made<ZVRectSList>, true},
    {"ZVRectSListIter", made<ZVRectSListIter>, false},
    {"ZVResource", made<ConcreteResource>, false},
    {"ZVResourceDB", made<ConcreteResourceDB>, false},
    {"ZVRotatedRect", made<ZVRotatedRect>, true},
    {"ZVSList", made<ZVSList>, true},
    {"ZVSListCell", made<ZVSListCell>, false},
    {"ZVSListIter", made<ZVSListIter>, false},
    {"ZVSListSort", made<ConcreteSort<ZVSListSort, ZVSListCell>>, false},
    {"ZVSegSortedBinTree", made<ZVSegSortedBinTree>, true},
    {"ZVShape", made<ZVShape>, true},
    {"ZVShapeResource", made<ZVShapeResource>, true},
    {"ZVShapeResourceDB", made<ZVShapeResourceDB>, false},
    {"ZVSimpleArray", made<ConcreteArray>, false},
    {"ZVSize", made<ZVSize>, true},
    {"ZVSortedBinTree", made<ConcreteSorted<ZVSortedBinTree>>, false},
    {"ZVSortedDList", made<ConcreteSorted<ZVSortedDList>>, false},
    {"ZVSortedSList", made<ConcreteSorted<ZVSortedSList>>, false},
    {"ZVStringHandle", made<ZVStringHandle>, true},
    {"ZVStringPool", made<ZVStringPool>, true},
    {"ZVSweep", made<ConcreteSweep>, false},
    {"ZVSweepSegmentSort", made<ZVSweepSegmentSort>, false},
    {"ZVText", made<ZVText>, true},
    {"ZVTextFile", made<ZVTextFile>, true},
    {"ZVTextWithDim", made<ZVTextWithDim>, true},
    {"ZVTransform", made<ZVTransform>, true},
    {"ZVTuple", made<ZVTuple>, true},
    {"ZVUFactory", made<ZVUFactory>, false},
};

#endif
