// A doubly linked list of rectangles: ZVDList with typed names.
#ifndef ZV_ZVREDL_H
#define ZV_ZVREDL_H

#include "utils/zvdlist.h"
#include "utils/zvrect.h"
#include "utils/zvtyplst.h"

class ZVRectDList;
class ZVRectSList;

using ZVRectDListBase = ZVRectList<ZVRectDList, ZVRectSList, ZVDList, ZVDListCell>;

class ZV_EXPORT ZVRectDList : public ZVRectDListBase {
 public:
  ZVRectDList() = default;
  // New cells around the same rectangles.
  explicit ZVRectDList(const ZVRectSList& source);

  ZV_SHAPE_FULL(ZVRectDList)
};

#endif
