// Walks a singly linked list of rectangles. As ZVSListIter, with typed names.
#ifndef ZV_ZVRESLIT_H
#define ZV_ZVRESLIT_H

#include "utils/zvresl.h"
#include "utils/zvslisti.h"

class ZV_EXPORT ZVRectSListIter : public ZVTypedListIter<ZVRectSList, ZVSListIter, ZVSListCell> {
 public:
  using ZVTypedListIter::ZVTypedListIter;

  // REQUIRES: there is a current cell.
  ZVRect* pRect() const { return ZVRect::castDown(pObject()); }

  ZV_SHAPE_NO_COPY(ZVRectSListIter)
};

#endif
