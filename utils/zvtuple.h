// A pair of 32-bit integers, the base of points and sizes. Sums and products wrap in 32 bits: where a result
// has to be right, it has to fit.
#ifndef ZV_ZVTUPLE_H
#define ZV_ZVTUPLE_H

#include "utils/zvgeom.h"
#include "utils/zvobject.h"

class ZVDTuple;

class ZV_EXPORT ZVTuple : public ZVObject {
 public:
  ZVTuple() = default;
  ZVTuple(int32_t x, int32_t y) : x_(x), y_(y) {}
  // Round each coordinate.
  ZVTuple(const ZVDTuple& other);
  const ZVTuple& operator=(const ZVDTuple& other);

  int32_t x() const { return x_; }
  int32_t y() const { return y_; }
  int isZero() const { return x_ == 0 && y_ == 0; }
  int32_t normSquare() const { return innerProduct(*this); }
  // The length, truncated. Its squares need not fit 32 bits.
  int32_t norm() const;
  int32_t product() const { return multiply32(x_, y_); }
  int32_t innerProduct(const ZVTuple& other) const {
    return add32(multiply32(x_, other.x_), multiply32(y_, other.y_));
  }

  // The setters of one coordinate give the value set.
  int32_t x(int32_t value) { return x_ = value; }
  int32_t y(int32_t value) { return y_ = value; }
  void set(int32_t x, int32_t y) {
    x_ = x;
    y_ = y;
  }
  void setZero() { set(0, 0); }
  void add(int32_t dx, int32_t dy) { set(add32(x_, dx), add32(y_, dy)); }
  void operator+=(const ZVTuple& other) { add(other.x_, other.y_); }
  void operator-=(const ZVTuple& other) { set(subtract32(x_, other.x_), subtract32(y_, other.y_)); }
  void scale(int32_t factor) { set(multiply32(x_, factor), multiply32(y_, factor)); }
  void scale(long factor) { scale(static_cast<int32_t>(factor)); }
  // Rounds each coordinate.
  void scale(double factor);
  void operator*=(double factor) { scale(factor); }

  // Hands the class's label to internalDebugOutput, which does nothing.
  void debugOutput(int level) override;
  virtual void internalDebugOutput(int level, char* label);

  ZV_SHAPE_VALUE(ZVTuple)
 protected:
  int32_t x_ = 0;
  int32_t y_ = 0;
};

#endif
