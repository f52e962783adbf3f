// Walks a doubly linked list of rectangles. As ZVDListIter, with typed names.
#ifndef ZV_ZVREDLIT_H
#define ZV_ZVREDLIT_H

#include "utils/zvdlisti.h"
#include "utils/zvredl.h"

class ZV_EXPORT ZVRectDListIter : public ZVTypedListIter<ZVRectDList, ZVDListIter, ZVDListCell> {
 public:
  using ZVTypedListIter::ZVTypedListIter;

  // REQUIRES: there is a current cell.
  ZVRect* pRect() const { return ZVRect::castDown(pObject()); }

  ZV_SHAPE_NO_COPY(ZVRectDListIter)
};

#endif
