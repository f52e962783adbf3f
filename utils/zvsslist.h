// The singly linked twin of ZVSortedDList. All of it stands in ZVSortedList, with the operations of ZVSList
// that are out of bounds, but for the search for a predecessor; transferNextListPart is out of bounds too.
#ifndef ZV_ZVSSLIST_H
#define ZV_ZVSSLIST_H

#include "utils/zvslist.h"
#include "utils/zvsrtlst.h"

class ZVSortedSList;

using ZVSortedSListBase = ZVSortedList<ZVSortedSList, ZVSList, ZVSListCell>;

class ZV_EXPORT ZVSortedSList : public ZVSortedSListBase {
 public:
  ZVSortedSList() = default;

  // The cell before cell, or before the one that holds object, null for the first; noPredecessor() if the
  // walk does not find it, and for null.
  ZVSListCell* searchPreviousCell(const ZVSListCell* cell) const;
  ZVSListCell* searchPreviousObject(const ZVObject* object) const;

  ZV_SHAPE_ABSTRACT_CLOSED(ZVSortedSList)
};

#endif
