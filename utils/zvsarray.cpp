#include "utils/zvsarray.h"

ZV_DEFINE_ABSTRACT(ZVSimpleArray, ZVObject)

void ZVSimpleArray::resize(int32_t newSize) {
  if (newSize < 0) newSize = 0;
  reallocate(newSize);
  size_ = newSize;
}

void ZVSimpleArray::empty() {}

void ZVSimpleArray::allocate(int32_t) {}

void ZVSimpleArray::init() { size_ = 0; }

void ZVSimpleArray::ZVSimpleArraydeepCopy(const ZVSimpleArray& other) {
  ZVObject::copyObject(&other);
  if (size_ == other.size_) return;
  empty();
  allocate(other.size_);
  size_ = other.size_;
}

void ZVSimpleArray::ZVSimpleArrayattributeCopy(const ZVSimpleArray& other) {
  ZVObject::copyAttributes(&other);
  empty();
  size_ = 0;
}
