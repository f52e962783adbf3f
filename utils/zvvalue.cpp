#include "utils/zvvalue.h"

ZV_DEFINE_FULL(ZVInt, ZVObject)
ZV_DEFINE_FULL(ZVLong, ZVObject)
ZV_DEFINE_FULL(ZVDouble, ZVObject)

void ZVInt::init() { value_ = 0; }

void ZVInt::ZVIntdeepCopy(const ZVInt& other) {
  ZVObject::copyObject(&other);
  value_ = other.value_;
}

void ZVInt::ZVIntattributeCopy(const ZVInt& other) {
  ZVObject::copyAttributes(&other);
  value_ = other.value_;
}

void ZVLong::init() { value_ = 0; }

void ZVLong::ZVLongdeepCopy(const ZVLong& other) {
  ZVObject::copyObject(&other);
  value_ = other.value_;
}

void ZVLong::ZVLongattributeCopy(const ZVLong& other) {
  ZVObject::copyAttributes(&other);
  value_ = other.value_;
}

void ZVDouble::init() { value_ = 0.0; }

void ZVDouble::ZVDoubledeepCopy(const ZVDouble& other) {
  ZVObject::copyObject(&other);
  value_ = other.value_;
}

void ZVDouble::ZVDoubleattributeCopy(const ZVDouble& other) {
  ZVObject::copyAttributes(&other);
  value_ = other.value_;
}
