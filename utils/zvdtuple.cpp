#include "utils/zvdtuple.h"

#include "utils/zvtuple.h"

ZV_DEFINE_VALUE(ZVDTuple, ZVObject)

ZVDTuple::ZVDTuple(const ZVTuple& other) : x_(other.x()), y_(other.y()) {}

const ZVDTuple& ZVDTuple::operator=(const ZVTuple& other) {
  set(other.x(), other.y());
  return *this;
}

double ZVDTuple::innerProduct(const ZVDTuple& other) const { return x_ * other.x_ + y_ * other.y_; }

void ZVDTuple::debugOutput(int level) {
  char label[] = "DTuple";
  internalDebugOutput(level, label);
}

void ZVDTuple::internalDebugOutput(int, char*) {}

void ZVDTuple::init() { setZero(); }

void ZVDTuple::ZVDTupleattributeCopy(const ZVDTuple& other) {
  ZVObject::copyAttributes(&other);
  set(other.x_, other.y_);
}
