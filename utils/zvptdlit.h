// Walks a doubly linked list of points. As ZVDListIter, with typed names.
#ifndef ZV_ZVPTDLIT_H
#define ZV_ZVPTDLIT_H

#include "utils/zvdlisti.h"
#include "utils/zvptdl.h"

class ZV_EXPORT ZVPointDListIter : public ZVTypedListIter<ZVPointDList, ZVDListIter, ZVDListCell> {
 public:
  using ZVTypedListIter::ZVTypedListIter;

  // REQUIRES: there is a current cell.
  ZVPoint* pPoint() const { return ZVPoint::castDown(pObject()); }

  ZV_SHAPE_NO_COPY(ZVPointDListIter)
};

#endif
