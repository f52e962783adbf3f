// Sizes relative to something else: a pair of per-mil values, and a distance with a part in per-mil.
#ifndef ZV_ZVPERMIL_H
#define ZV_ZVPERMIL_H

#include "utils/zvgeom.h"
#include "utils/zvobject.h"

class ZVSize;

// Two 16-bit per-mil values: 1000 is the whole of the reference, a negative value leads the other way. The
// range has no limit of its own.
class ZV_EXPORT ZVPerMil : public ZVObject {
 public:
  ZVPerMil() = default;
  ZVPerMil(int16_t x, int16_t y) : x_(x), y_(y) {}

  int16_t x() const { return x_; }
  int16_t y() const { return y_; }
  int16_t width() const { return x_; }
  int16_t height() const { return y_; }

  // The setters of one value give the value set.
  int16_t x(int16_t value) { return x_ = value; }
  int16_t y(int16_t value) { return y_ = value; }
  int16_t width(int16_t value) { return x_ = value; }
  int16_t height(int16_t value) { return y_ = value; }
  void resize(int16_t x, int16_t y) {
    x_ = x;
    y_ = y;
  }
  // Cuts width and height to 16 bits.
  void resize(const ZVSize& size);

  // Bytes that the object occupies.
  virtual int32_t sizeOf() const;

  ZV_SHAPE_VALUE(ZVPerMil)
  int16_t x_ = 0;
  int16_t y_ = 0;
};

// A distance made of a constant part and a part in per-mil of a reference size.
class ZV_EXPORT ZVSpacing {
 public:
  ZVSpacing(int32_t constant = 0, int16_t proportional = 0)
      : constant_(constant), proportional_(proportional) {}
  ZVSpacing(const ZVSpacing&) = default;
  ZVSpacing& operator=(const ZVSpacing&) = default;

  int32_t constant() const { return constant_; }
  int16_t proportional() const { return proportional_; }
  // The distance for a reference size; the whole-number forms truncate.
  double combined(double size) const;
  int32_t combined(int32_t size) const { return truncateToInt32(combined(static_cast<double>(size))); }
  int32_t combined(long size) const { return combined(static_cast<int32_t>(size)); }

  // The setters give the value set.
  int32_t constant(int32_t value) { return constant_ = value; }
  int16_t proportional(int16_t value) { return proportional_ = value; }
  void copyObject(const ZVSpacing& other) { *this = other; }

  // An outer size of which inner is left between a at its one end and b at its other. Truncation makes
  // several sizes right; the result is the one that a bisection of a fixed bracket meets first. 0 where inner
  // and the constant parts add up to less than 1. Cost: logarithmic in the size.
  // REQUIRES: the proportional parts are not negative and add up to less than 1000.
  static int32_t calculateOuterSize(const ZVSpacing& a, const ZVSpacing& b, int32_t inner);

 private:
  int32_t constant_ = 0;
  int16_t proportional_ = 0;
};

#endif
