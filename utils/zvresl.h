// A singly linked list of rectangles: ZVSList with typed names.
#ifndef ZV_ZVRESL_H
#define ZV_ZVRESL_H

#include "utils/zvrect.h"
#include "utils/zvslist.h"
#include "utils/zvtyplst.h"

class ZVRectDList;
class ZVRectSList;

using ZVRectSListBase = ZVRectList<ZVRectSList, ZVRectDList, ZVSList, ZVSListCell>;

class ZV_EXPORT ZVRectSList : public ZVRectSListBase {
 public:
  ZVRectSList() = default;
  // New cells around the same rectangles.
  explicit ZVRectSList(const ZVRectDList& source);

  // The cell before the first one that holds the rectangle; null if that is the first cell, noPredecessor()
  // if there is none or the rectangle is null.
  ZVSListCell* searchRectPrev(const ZVRect* rect) const { return searchPreviousObject(rect); }

  ZV_SHAPE_FULL(ZVRectSList)
};

#endif
