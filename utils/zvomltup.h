// A pair of references to OML objects, which may be missing. Neither is owned, and copies share them.
#ifndef ZV_ZVOMLTUP_H
#define ZV_ZVOMLTUP_H

#include "utils/zvobject.h"

class ZVOMLObject;

class ZV_EXPORT ZVOMLObjectTuple : public ZVObject {
 public:
  ZVOMLObjectTuple(ZVOMLObject* first = nullptr, ZVOMLObject* second = nullptr)
      : first_(first), second_(second) {}

  ZVOMLObject* pFirstObject() const { return first_; }
  ZVOMLObject* pFirstObject(ZVOMLObject* object) { return first_ = object; }
  ZVOMLObject* pSecondObject() const { return second_; }
  ZVOMLObject* pSecondObject(ZVOMLObject* object) { return second_ = object; }

  virtual int32_t sizeOf() const;

  ZV_SHAPE_VALUE(ZVOMLObjectTuple)
  ZVOMLObject* first_ = nullptr;
  ZVOMLObject* second_ = nullptr;
};

#endif
