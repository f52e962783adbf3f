// The frame of an array: the number of elements, and how arrays are sized, copied and compared. Storage and
// elements belong to a derived class.
//
// The constructors and the destructor cannot reach the derived class, so that makes its first storage and
// frees its last one itself. Its copies begin with those of this class, which size the storage, and then take
// over the elements.
#ifndef ZV_ZVSARRAY_H
#define ZV_ZVSARRAY_H

#include "utils/zvobject.h"

class ZV_EXPORT ZVSimpleArray : public ZVObject {
 public:
  // A negative size counts as 0, here and in resize.
  ZVSimpleArray(int32_t size = 0) : size_(size > 0 ? size : 0) {}

  int32_t size() const { return size_; }

  void resize(int32_t newSize);

  // Element by element, up to the first difference; arrays of different sizes differ.
  friend int operator==(const ZVSimpleArray& a, const ZVSimpleArray& b);

 protected:
  // Frees the storage.
  virtual void empty();
  // Creates storage for newSize elements. REQUIRES: there is none.
  virtual void allocate(int32_t newSize);
  // Changes the storage to newSize elements.
  virtual void reallocate(int32_t newSize) = 0;
  // 1 if the element at index, counted from 0, is the same in both arrays. REQUIRES: other is of the same
  // class, and index is valid in both; so in copyElement.
  virtual int elementEquals(const ZVSimpleArray* other, int32_t index) const = 0;
  // Takes over the element at index. Not called here: it is what the deep copy of a derived class repeats.
  virtual void copyElement(const ZVSimpleArray* other, int32_t index) = 0;

  // A deep copy gives this array the size of the source, and new storage if the sizes differ; an attribute
  // copy empties it.
  ZV_SHAPE_ABSTRACT_CLOSED(ZVSimpleArray)
  int32_t size_;
};

inline int operator==(const ZVSimpleArray& a, const ZVSimpleArray& b) {
  if (a.size_ != b.size_) return 0;
  for (int32_t index = 0; index < a.size_; ++index) {
    if (!a.elementEquals(&b, index)) return 0;
  }
  return 1;
}

inline int operator!=(const ZVSimpleArray& a, const ZVSimpleArray& b) { return !(a == b); }

#endif
