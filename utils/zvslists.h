// Sorts singly linked lists by a comparison that a derived class supplies. The sorts stand in ZVListSortBase.
#ifndef ZV_ZVSLISTS_H
#define ZV_ZVSLISTS_H

#include "utils/zvlstsor.h"
#include "utils/zvslist.h"

using ZVSListSortBase = ZVListSortBase<ZVSList, ZVSListCell>;

class ZV_EXPORT ZVSListSort : public ZVSListSortBase {
 public:
  ZVSListSort() = default;

  ZV_SHAPE_NO_COPY(ZVSListSort)
};

#endif
