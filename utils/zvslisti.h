// Walks a singly linked list. As ZVDListIter, without a direction.
#ifndef ZV_ZVSLISTI_H
#define ZV_ZVSLISTI_H

#include "utils/zvslist.h"

class ZV_EXPORT ZVSListIter : public ZVObject {
 public:
  // A null list gives an exhausted iterator.
  ZVSListIter(const ZVSList* list = nullptr) { init(list); }
  // Starts at cell, which is not tested against the list.
  ZVSListIter(const ZVSList* list, ZVSListCell* cell) { init(list, cell); }

  // 1 while there is a current cell.
  operator int() const { return cell_ != nullptr; }
  ZVSListCell* pCell() const { return cell_; }
  ZVSListCell* pSListCell() const { return cell_; }
  // REQUIRES: there is a current cell.
  ZVObject* pObject() const { return cell_->pObject(); }

  void init(const ZVSList* list) { cell_ = list ? list->pFirstCell() : nullptr; }
  void init(const ZVSList* list, ZVSListCell* cell) { cell_ = list ? cell : nullptr; }

  void operator++() {
    if (cell_) cell_ = cell_->pNextCell();
  }
  void operator++(int) { ++*this; }

  ZV_SHAPE_NO_COPY(ZVSListIter)
  ZVSListCell* cell_ = nullptr;
};

#endif
