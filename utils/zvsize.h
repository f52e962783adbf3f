// An extent: width and height under their own names. Either may be negative, as an offset.
#ifndef ZV_ZVSIZE_H
#define ZV_ZVSIZE_H

#include "utils/zvtuple.h"

class ZV_EXPORT ZVSize : public ZVTuple {
 public:
  ZVSize() = default;
  ZVSize(int32_t width, int32_t height) : ZVTuple(width, height) {}
  ZVSize(tagSIZE size) : ZVTuple(size.cx, size.cy) {}

  int32_t width() const { return x_; }
  int32_t height() const { return y_; }
  // Both the length of the diagonal, truncated.
  int32_t diagonal() const { return norm(); }
  int32_t magnitude() const { return norm(); }
  int32_t area() const { return product(); }
  // The size seen as the platform's structure, in place.
  operator tagSIZE&() { return reinterpret_cast<tagSIZE&>(x_); }
  operator const tagSIZE&() const { return reinterpret_cast<const tagSIZE&>(x_); }

  int32_t width(int32_t value) { return x_ = value; }
  int32_t height(int32_t value) { return y_ = value; }
  void resize(int32_t width, int32_t height) { set(width, height); }
  void resize(const ZVSize& size) { set(size.x_, size.y_); }

  void debugOutput(int level) override;
  // Bytes that the object occupies.
  virtual int32_t sizeOf() const;

  ZV_SHAPE_VALUE(ZVSize)
};

#endif
