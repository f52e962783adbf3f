// A cell of a heap: a list cell with the links of the heap's tree and a value.
//
// The cell is the handle of its element: it keeps its address whatever happens to the heap around it.
#ifndef ZV_ZVBHEAPC_H
#define ZV_ZVBHEAPC_H

#include "utils/zvbcell.h"

class ZVBinHeapCell;

using ZVBinHeapCellBase = ZVBinCellBase<ZVBinHeapCell>;

class ZV_EXPORT ZVBinHeapCell : public ZVBinHeapCellBase {
 public:
  ZVBinHeapCell(ZVObject* object = nullptr, int32_t value = 0) : ZVBinHeapCellBase(object), value_(value) {}

  int32_t value() const { return value_; }
  // Gives the new value. For a cell in a heap use ZVBinHeap::changeValue, which restores the order.
  int32_t value(int32_t newValue) { return value_ = newValue; }

  // As for ZVDListCell, and the value is copied.
  ZV_SHAPE_FULL(ZVBinHeapCell)
  friend class ZVBinHeap;
  friend ZVBinHeapCellBase;

  int32_t value_;
};

#endif
