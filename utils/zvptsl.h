// A singly linked list of points: ZVSList with typed names.
#ifndef ZV_ZVPTSL_H
#define ZV_ZVPTSL_H

#include "utils/zvpoint.h"
#include "utils/zvslist.h"
#include "utils/zvtyplst.h"

class ZVPointDList;
class ZVPointSList;

using ZVPointSListBase = ZVPointList<ZVPointSList, ZVPointDList, ZVSList, ZVSListCell>;

class ZV_EXPORT ZVPointSList : public ZVPointSListBase {
 public:
  ZVPointSList() = default;
  // New cells around the same points.
  explicit ZVPointSList(const ZVPointDList& source);

  // The cell before the first one that holds the point; null if that is the first cell, noPredecessor() if
  // there is none or the point is null.
  ZVSListCell* searchPointPrev(const ZVPoint* point) const { return searchPreviousObject(point); }

  ZV_SHAPE_FULL(ZVPointSList)
};

#endif
