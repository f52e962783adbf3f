// A y coordinate with a list: one horizontal stripe of a polygon's label grid.
//
// Ownership: the segment owns the cells of its list, never the objects in them.
#ifndef ZV_ZVHORSEG_H
#define ZV_ZVHORSEG_H

#include "utils/zvdlist.h"
#include "utils/zvobject.h"

class ZV_EXPORT ZVHorSegment : public ZVObject {
 public:
  // y is 0 and the list empty.
  ZVHorSegment() = default;

  int32_t y() const { return y_; }
  const ZVDList* pList() const { return &list_; }
  // The bytes of the segment and its list's cells, without the objects.
  virtual int32_t sizeOf() const;

  // Gives the value set.
  int32_t y(int32_t value) { return y_ = value; }
  ZVDList* pList() { return &list_; }

  // A deep copy shares the objects of the source's list in cells of its own, an attribute copy has an empty
  // list. The target's own cells are deleted, its objects left.
  ZV_SHAPE_FULL(ZVHorSegment)
  int32_t y_ = 0;
  ZVDList list_;
};

#endif
