// The sweep line: a sorted tree of the segments that a sweep has open, which answers for the neighbours of a
// segment.
//
// Segments stand by their other-start coordinate, which the sweep tells, and of equal ones by their
// addresses: no two tie, so every search is exact. Only in a deep copy, which keeps the source's order,
// clones with equal coordinates may stand against their addresses, and a search may miss them.
#ifndef ZV_ZVSSBTRE_H
#define ZV_ZVSSBTRE_H

#include "utils/zvsbtree.h"

class ZVSweep;

// Which coordinate a ZVSweepSegmentSort compares.
enum ZVSegmentSortTypeEnum : int32_t { ZV_SEGMENT_SORT_START = 0, ZV_SEGMENT_SORT_END = 1 };

class ZV_EXPORT ZVSegSortedBinTree : public ZVSortedBinTree {
 public:
  // REQUIRES: the sweep is not null once there are two segments.
  explicit ZVSegSortedBinTree(ZVSweep* sweep = nullptr) : sweep_(sweep) {}

  // The segment next to the given one; null if there is none or the given one is not in the tree. REQUIRES:
  // segment is not null.
  ZVObject* pPreceedingSegment(ZVObject* segment) const;
  ZVObject* pSucceedingSegment(ZVObject* segment) const;

 protected:
  int32_t virtualObjectCompare(const ZVObject* object1, const ZVObject* object2) const override;

  // As for ZVSortedBinTree. Each copy takes over the sweep.
  ZV_SHAPE_FULL(ZVSegSortedBinTree)
  ZVSweep* pSweep() const { return sweep_; }

  ZVSweep* sweep_;
};

#endif
