// Ready sorts for doubly linked lists.
#ifndef ZV_ZVUTDLSO_H
#define ZV_ZVUTDLSO_H

#include "utils/zvdlists.h"

// By the addresses of the objects, whatever they are.
class ZV_EXPORT ZVMemAddressDListSort : public ZVDListSort {
 public:
  ZVMemAddressDListSort() = default;

 protected:
  int32_t virtualCompare(ZVDListCell* cell1, ZVDListCell* cell2) override;
  void virtualDebugOutputElement(ZVDListCell*) override {}

  ZV_SHAPE_NO_COPY(ZVMemAddressDListSort)
};

// By one coordinate of the objects. REQUIRES: they are ZVDTuples.
class ZV_EXPORT ZVDTupleDListSort : public ZVDListSort {
 public:
  // Descending with 0 for increasing, by y with 0 for firstComponent.
  ZVDTupleDListSort(int increasing = 1, int firstComponent = 1)
      : increasing_(increasing), firstComponent_(firstComponent) {}

 protected:
  int32_t virtualCompare(ZVDListCell* cell1, ZVDListCell* cell2) override;
  void virtualDebugOutputElement(ZVDListCell*) override {}

  int increasing() const { return increasing_; }
  int increasing(int flag) { return increasing_ = flag; }
  int firstComponent() const { return firstComponent_; }

  ZV_SHAPE_NO_COPY(ZVDTupleDListSort)
  int32_t increasing_;
  int32_t firstComponent_;
};

#endif
