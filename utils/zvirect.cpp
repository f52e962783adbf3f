#include "utils/zvirect.h"

#include <utility>

#include "utils/zvrect.h"

ZVInternalRect::ZVInternalRect(const ZVRect& rect) { *this = rect; }

ZVInternalRect& ZVInternalRect::operator=(const ZVRect& rect) {
  setCorners(rect.left(), rect.bottom(), rect.right(), rect.top());
  return *this;
}

ZVSideEnum ZVInternalRect::closestSide(const ZVPoint& p) const {
  const ZVSideEnum facing = sides().facingSide(p);
  return facing != ZV_SIDE_NONE ? facing : closestSideWithin(p);
}

void ZVInternalRect::setCorners(int32_t x1, int32_t y1, int32_t x2, int32_t y2) {
  if (y1 > y2) std::swap(y1, y2);
  if (x2 < x1) std::swap(x1, x2);
  setLeftRight(x1, x2);
  setBottomTop(y1, y2);
}

void ZVInternalRect::setLeftRight(int32_t left, int32_t right) {
  if (left > right) return;
  width_ = subtract32(right, left);
  x_ = add32(left, leftHalfWidth());
}

void ZVInternalRect::setBottomTop(int32_t bottom, int32_t top) {
  if (bottom > top) return;
  height_ = subtract32(top, bottom);
  y_ = add32(bottom, bottomHalfHeight());
}

void ZVInternalRect::resize(int32_t newWidth, int32_t newHeight) {
  width(newWidth);
  height(newHeight);
}

void ZVInternalRect::scale(double factor) {
  resize(roundHalfUp(width_ * factor), roundHalfUp(height_ * factor));
}

void ZVInternalRect::moveTo(int32_t newX, int32_t newY) {
  x_ = newX;
  y_ = newY;
}

ZVInternalRect& ZVInternalRect::operator|=(const ZVInternalRect& other) {
  uniteRect(*this, sides(), other.sides());
  return *this;
}

ZVInternalRect& ZVInternalRect::operator&=(const ZVInternalRect& other) {
  intersectRect(*this, sides(), other.sides());
  return *this;
}
