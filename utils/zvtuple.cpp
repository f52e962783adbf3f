#include "utils/zvtuple.h"

#include "utils/zvdtuple.h"

ZV_DEFINE_VALUE(ZVTuple, ZVObject)

ZVTuple::ZVTuple(const ZVDTuple& other) : x_(roundHalfUp(other.x())), y_(roundHalfUp(other.y())) {}

const ZVTuple& ZVTuple::operator=(const ZVDTuple& other) {
  set(roundHalfUp(other.x()), roundHalfUp(other.y()));
  return *this;
}

int32_t ZVTuple::norm() const { return truncateToInt32(ZVDTuple(x_, y_).norm()); }

void ZVTuple::scale(double factor) { set(roundHalfUp(x_ * factor), roundHalfUp(y_ * factor)); }

void ZVTuple::debugOutput(int level) {
  char label[] = "Tuple";
  internalDebugOutput(level, label);
}

void ZVTuple::internalDebugOutput(int, char*) {}

void ZVTuple::init() { setZero(); }

void ZVTuple::ZVTupleattributeCopy(const ZVTuple& other) {
  ZVObject::copyAttributes(&other);
  set(other.x_, other.y_);
}
