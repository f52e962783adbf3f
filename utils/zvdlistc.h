// A cell of a doubly linked list: two links and the object it holds.
//
// A cell is either linked, and then owned by its list, or free, and then owned by whoever has the pointer. A
// cell that was taken out of a list keeps its links until it is inserted again, so that an iterator can still
// step off it. A cell does not own its object.
#ifndef ZV_ZVDLISTC_H
#define ZV_ZVDLISTC_H

#include "utils/zvobject.h"

class ZV_EXPORT ZVDListCell : public ZVObject {
 public:
  ZVDListCell(ZVObject* object = nullptr) : object_(object) {}

  ZVDListCell* pNextCell() const { return nextCell_; }
  ZVDListCell* pNextDListCell() const { return nextCell_; }
  ZVDListCell* pPreviousCell() const { return previousCell_; }
  ZVDListCell* pPrevDListCell() const { return previousCell_; }

  ZVObject* pObject() const { return object_; }
  // Gives the new object; the old one is not touched.
  ZVObject* pObject(ZVObject* object) { return object_ = object; }

  // The bytes of the cell alone.
  virtual int32_t sizeOf() const;

  // A deep copy holds a clone of the source's object, an attribute copy the object itself. No copy touches
  // the links, or destroys the object held before.
  ZV_SHAPE_FULL(ZVDListCell)
  // The family whose members write links.
  friend class ZVDList;
  friend class ZVBinHeap;
  friend class ZVBinTree;

  ZVDListCell* pNextDListCell(ZVDListCell* cell) { return nextCell_ = cell; }
  ZVDListCell* pPrevDListCell(ZVDListCell* cell) { return previousCell_ = cell; }

  ZVDListCell* previousCell_ = nullptr;
  ZVDListCell* nextCell_ = nullptr;
  ZVObject* object_ = nullptr;
};

#endif
