// Walks a singly linked list of points. As ZVSListIter, with typed names.
#ifndef ZV_ZVPTSLIT_H
#define ZV_ZVPTSLIT_H

#include "utils/zvptsl.h"
#include "utils/zvslisti.h"

class ZV_EXPORT ZVPointSListIter : public ZVTypedListIter<ZVPointSList, ZVSListIter, ZVSListCell> {
 public:
  using ZVTypedListIter::ZVTypedListIter;

  // REQUIRES: there is a current cell.
  ZVPoint* pPoint() const { return ZVPoint::castDown(pObject()); }

  ZV_SHAPE_NO_COPY(ZVPointSListIter)
};

#endif
