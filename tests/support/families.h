// The two families of lists, for typed tests.
#ifndef ZV_TESTS_FAMILIES_H
#define ZV_TESTS_FAMILIES_H

#include "utils/zvdlisti.h"
#include "utils/zvdlists.h"
#include "utils/zvsdlist.h"
#include "utils/zvslisti.h"
#include "utils/zvslists.h"
#include "utils/zvsslist.h"

struct Doubly {
  using List = ZVDList;
  using Twin = ZVSList;
  using Cell = ZVDListCell;
  using Iter = ZVDListIter;
  using Sort = ZVDListSort;
  using Sorted = ZVSortedDList;
  static constexpr int TIES = 3;  // each key stands for so many objects
};

struct Singly {
  using List = ZVSList;
  using Twin = ZVDList;
  using Cell = ZVSListCell;
  using Iter = ZVSListIter;
  using Sort = ZVSListSort;
  using Sorted = ZVSortedSList;
  static constexpr int TIES = 3;
};

#endif
