// Walks a doubly linked list. An iterator is one cell, null when it is exhausted: it keeps neither the list
// nor the direction it was started in, so a backward walk starts with ZV_ITER_BACKWARD and steps with --.
//
//   for (ZVDListIter it(&list); it; ++it) use(it.pObject());
//
// An iterator on a removed cell can still step off it until that cell is linked elsewhere.
#ifndef ZV_ZVDLISTI_H
#define ZV_ZVDLISTI_H

#include "utils/zvdlist.h"

// Where an iterator starts. Any value but 1 counts as backward.
enum ZVIterDirectionEnum : int32_t { ZV_ITER_FORWARD = 1, ZV_ITER_BACKWARD = 2 };

class ZV_EXPORT ZVDListIter : public ZVObject {
 public:
  // A null list gives an exhausted iterator.
  ZVDListIter(const ZVDList* list = nullptr, ZVIterDirectionEnum direction = ZV_ITER_FORWARD) {
    init(list, direction);
  }
  // Starts at cell, which is not tested against the list.
  ZVDListIter(const ZVDList* list, ZVDListCell* cell) { init(list, cell); }

  // 1 while there is a current cell.
  operator int() const { return cell_ != nullptr; }
  ZVDListCell* pCell() const { return cell_; }
  ZVDListCell* pDListCell() const { return cell_; }
  // REQUIRES: there is a current cell.
  ZVObject* pObject() const { return cell_->pObject(); }

  void init(const ZVDList* list, ZVIterDirectionEnum direction = ZV_ITER_FORWARD) {
    if (!list) {
      cell_ = nullptr;
    } else {
      cell_ = direction == ZV_ITER_FORWARD ? list->pFirstCell() : list->pLastCell();
    }
  }
  void init(const ZVDList* list, ZVDListCell* cell) { cell_ = list ? cell : nullptr; }

  void operator++() {
    if (cell_) cell_ = cell_->pNextCell();
  }
  void operator++(int) { ++*this; }
  void operator--() {
    if (cell_) cell_ = cell_->pPreviousCell();
  }
  void operator--(int) { --*this; }

  ZV_SHAPE_NO_COPY(ZVDListIter)
  ZVDListCell* cell_ = nullptr;
};

#endif
