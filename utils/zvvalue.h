// Boxed numbers: they let a number travel wherever objects are taken, in a list cell for example, and give
// it a Java mirror. A deep and an attribute copy are the same.
#ifndef ZV_ZVVALUE_H
#define ZV_ZVVALUE_H

#include "utils/zvobject.h"

class ZV_EXPORT ZVInt : public ZVObject {
 public:
  ZVInt(int32_t value = 0) : value_(value) {}

  int32_t value() const { return value_; }
  int32_t value(int32_t newValue) { return value_ = newValue; }

  ZV_SHAPE_FULL(ZVInt)
  int32_t value_ = 0;
};

// As wide as ZVInt, with a Java class of its own.
class ZV_EXPORT ZVLong : public ZVObject {
 public:
  ZVLong(int32_t value = 0) : value_(value) {}

  int32_t value() const { return value_; }
  int32_t value(int32_t newValue) { return value_ = newValue; }

  ZV_SHAPE_FULL(ZVLong)
  int32_t value_ = 0;
};

class ZV_EXPORT ZVDouble : public ZVObject {
 public:
  ZVDouble(double value = 0.0) : value_(value) {}

  double value() const { return value_; }
  double value(double newValue) { return value_ = newValue; }

  ZV_SHAPE_FULL(ZVDouble)
  double value_ = 0.0;
};

#endif
