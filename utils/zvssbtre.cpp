#include "utils/zvssbtre.h"

#include <functional>

#include "utils/zvsweep.h"

ZV_DEFINE_FULL(ZVSegSortedBinTree, ZVSortedBinTree)

ZVObject* ZVSegSortedBinTree::pPreceedingSegment(ZVObject* segment) const {
  const ZVBinTreeCell* cell = searchObject(segment);
  const ZVDListCell* previous = cell ? cell->pPreviousCell() : nullptr;
  return previous ? previous->pObject() : nullptr;
}

ZVObject* ZVSegSortedBinTree::pSucceedingSegment(ZVObject* segment) const {
  const ZVBinTreeCell* cell = searchObject(segment);
  const ZVDListCell* next = cell ? cell->pNextCell() : nullptr;
  return next ? next->pObject() : nullptr;
}

int32_t ZVSegSortedBinTree::virtualObjectCompare(const ZVObject* object1, const ZVObject* object2) const {
  int32_t start1 = pSweep()->otherStartCoordinateOfSegment(object1);
  int32_t start2 = pSweep()->otherStartCoordinateOfSegment(object2);
  if (start1 != start2) return start1 < start2 ? -1 : 1;
  return std::less<const ZVObject*>()(object1, object2) ? -1 : 1;
}

void ZVSegSortedBinTree::init() { sweep_ = nullptr; }

void ZVSegSortedBinTree::ZVSegSortedBinTreedeepCopy(const ZVSegSortedBinTree& other) {
  ZVSortedBinTree::copyObject(&other);
  sweep_ = other.sweep_;
}

void ZVSegSortedBinTree::ZVSegSortedBinTreeattributeCopy(const ZVSegSortedBinTree& other) {
  ZVSortedBinTree::copyAttributes(&other);
  sweep_ = other.sweep_;
}
