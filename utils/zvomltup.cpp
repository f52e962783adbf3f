#include "utils/zvomltup.h"

ZV_DEFINE_VALUE(ZVOMLObjectTuple, ZVObject)

void ZVOMLObjectTuple::init() {
  first_ = nullptr;
  second_ = nullptr;
}

void ZVOMLObjectTuple::ZVOMLObjectTupleattributeCopy(const ZVOMLObjectTuple& other) {
  ZVObject::copyAttributes(&other);
  first_ = other.first_;
  second_ = other.second_;
}

int32_t ZVOMLObjectTuple::sizeOf() const { return static_cast<int32_t>(sizeof *this); }
