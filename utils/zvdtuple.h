// A pair of doubles, the unrounded twin of ZVTuple.
#ifndef ZV_ZVDTUPLE_H
#define ZV_ZVDTUPLE_H

#include <cmath>

#include "utils/zvobject.h"

class ZVTuple;

class ZV_EXPORT ZVDTuple : public ZVObject {
 public:
  ZVDTuple() = default;
  ZVDTuple(double x, double y) : x_(x), y_(y) {}
  // Convert exactly.
  ZVDTuple(const ZVTuple& other);
  const ZVDTuple& operator=(const ZVTuple& other);

  double x() const { return x_; }
  double y() const { return y_; }
  // No tolerance: neither coordinate is less or greater than 0.
  int isZero() const { return !(x_ < 0.0) && !(x_ > 0.0) && !(y_ < 0.0) && !(y_ > 0.0); }
  double normSquare() const { return innerProduct(*this); }
  double norm() const { return std::sqrt(normSquare()); }
  double product() const { return x_ * y_; }
  double innerProduct(const ZVDTuple& other) const;

  // The setters of one coordinate give the value set.
  double x(double value) { return x_ = value; }
  double y(double value) { return y_ = value; }
  void set(double x, double y) {
    x_ = x;
    y_ = y;
  }
  void setZero() { set(0.0, 0.0); }
  void add(double dx, double dy) { set(x_ + dx, y_ + dy); }
  void operator+=(const ZVDTuple& other) { add(other.x_, other.y_); }
  void operator-=(const ZVDTuple& other) { set(x_ - other.x_, y_ - other.y_); }
  void scale(double factor) { set(x_ * factor, y_ * factor); }
  void operator*=(double factor) { scale(factor); }

  // Hands the class's label to internalDebugOutput, which does nothing.
  void debugOutput(int level) override;
  virtual void internalDebugOutput(int level, char* label);

  ZV_SHAPE_VALUE(ZVDTuple)
  double x_ = 0.0;
  double y_ = 0.0;
};

#endif
