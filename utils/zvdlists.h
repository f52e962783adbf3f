// Sorts doubly linked lists by a comparison that a derived class supplies. The sorts stand in ZVListSortBase.
#ifndef ZV_ZVDLISTS_H
#define ZV_ZVDLISTS_H

#include <memory>

#include "utils/zvdlist.h"
#include "utils/zvlstsor.h"

using ZVDListSortBase = ZVListSortBase<ZVDList, ZVDListCell>;

class ZV_EXPORT ZVDListSort : public ZVDListSortBase {
 public:
  ZVDListSort() = default;

  // A cell with the i-th smallest value, counted from 1. Null if list is null or i is out of range. Leaves
  // the list as it is, and allocates one cell for each element.
  ZVDListCell* findIthElement(ZVDList* list, int32_t i);

  ZV_SHAPE_NO_COPY(ZVDListSort)
  // A new list whose objects are the cells of list.
  static std::unique_ptr<ZVDList> buildMetaList(ZVDList* list);
  // Selection by splitting; uses up the meta list.
  ZVDListCell* ithWrapper(ZVDList* metaList, int32_t i);
  // Moves the meta cells whose source cell compares after the pivot's to the end of upper.
  void metaCompareAndSplitIntoTwoLists(ZVDList* metaList, ZVDListCell* pivot, ZVDList* upper);
};

#endif
