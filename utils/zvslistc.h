// A cell of a singly linked list: the link to the next cell and the object it holds. Ownership is that of
// ZVDListCell.
#ifndef ZV_ZVSLISTC_H
#define ZV_ZVSLISTC_H

#include "utils/zvobject.h"

class ZV_EXPORT ZVSListCell : public ZVObject {
 public:
  ZVSListCell(ZVObject* object = nullptr) : object_(object) {}
  // A copy shares the object and has no next cell; there is no deep copy.
  ZVSListCell(const ZVSListCell& other) : ZVObject(), object_(other.object_) {}
  // Takes the object and clears the link, so this is not for linked cells.
  const ZVSListCell& operator=(const ZVSListCell& other);

  ZVSListCell* pNextCell() const { return nextCell_; }
  ZVSListCell* pNextSListCell() const { return nextCell_; }

  ZVObject* pObject() const { return object_; }
  // Gives the new object; the old one is not touched.
  ZVObject* pObject(ZVObject* object) { return object_ = object; }

  // The bytes of the cell alone.
  int32_t sizeOf() const { return sizeof(ZVSListCell); }

  ZV_MIRROR(ZVSListCell)
  // The family whose members write links.
  friend class ZVSList;

  ZVSListCell* pNextSListCell(ZVSListCell* cell) { return nextCell_ = cell; }

  ZVSListCell* nextCell_ = nullptr;
  ZVObject* object_ = nullptr;
};

#endif
