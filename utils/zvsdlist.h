// A doubly linked list that keeps itself sorted; a small collection's counterpart of the sorted tree. A
// subclass gives the order, virtualObjectCompare. All of it stands in ZVSortedList, with the operations of
// ZVDList that are out of bounds.
#ifndef ZV_ZVSDLIST_H
#define ZV_ZVSDLIST_H

#include "utils/zvdlist.h"
#include "utils/zvsrtlst.h"

class ZVSortedDList;

using ZVSortedDListBase = ZVSortedList<ZVSortedDList, ZVDList, ZVDListCell>;

class ZV_EXPORT ZVSortedDList : public ZVSortedDListBase {
 public:
  ZVSortedDList() = default;

  ZV_SHAPE_ABSTRACT_CLOSED(ZVSortedDList)
};

#endif
