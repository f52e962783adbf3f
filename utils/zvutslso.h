// Ready sorts for singly linked lists.
#ifndef ZV_ZVUTSLSO_H
#define ZV_ZVUTSLSO_H

#include "utils/zvslists.h"

// By x, then by y. REQUIRES: the objects are ZVPoints, and their differences fit 32 bits.
class ZV_EXPORT ZVPointSListSort : public ZVSListSort {
 public:
  ZVPointSListSort() = default;

 protected:
  // The difference of the coordinates that decide.
  int32_t virtualCompare(ZVSListCell* cell1, ZVSListCell* cell2) override;
  void virtualDebugOutputElement(ZVSListCell*) override {}

  ZV_SHAPE_NO_COPY(ZVPointSListSort)
};

#endif
