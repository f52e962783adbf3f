#include "utils/zvrect.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <utility>

ZV_DEFINE_VALUE(ZVRect, ZVObject)

ZVRect& ZVRect::operator=(const ZVInternalRect& rect) {
  setCorners(rect.left(), rect.bottom(), rect.right(), rect.top());
  return *this;
}

ZVSideEnum ZVRect::closestSide(const ZVPoint& p) const {
  const ZVSideEnum facing = sides().facingSide(p);
  if (facing != ZV_SIDE_NONE) return facing;
  if (within(p)) return closestSideWithin(p);
  const int64_t gapX = p.x() < left_ ? int64_t{left_} - p.x() : int64_t{p.x()} - right_;
  const int64_t gapY = p.y() < bottom_ ? int64_t{bottom_} - p.y() : int64_t{p.y()} - top_;
  if (gapX >= gapY) return p.x() < left_ ? ZV_SIDE_LEFT : ZV_SIDE_RIGHT;
  return p.y() < bottom_ ? ZV_SIDE_BOTTOM : ZV_SIDE_TOP;
}

ZVSideEnum ZVRect::sideForRouting(const ZVRect& other, int horizontalFirst) const {
  if (!intersectsRect(other)) return sideTowards(other, horizontalFirst);
  if (encloses(other) || other.encloses(*this)) return nearestLikeSide(other);
  return outstandingSide(other);
}

// The rectangles lie apart.
ZVSideEnum ZVRect::sideTowards(const ZVRect& other, int horizontalFirst) const {
  if (!intersectsRectXRange(other) && !intersectsRectYRange(other)) {
    if (horizontalFirst) return left_ > other.right_ ? ZV_SIDE_LEFT : ZV_SIDE_RIGHT;
    return bottom_ > other.top_ ? ZV_SIDE_BOTTOM : ZV_SIDE_TOP;
  }
  const int64_t gapX = std::max(int64_t{left_} - other.right_, int64_t{other.left_} - right_);
  const int64_t gapY = std::max(int64_t{bottom_} - other.top_, int64_t{other.bottom_} - top_);
  if (gapX > gapY) return x() > other.x() ? ZV_SIDE_LEFT : ZV_SIDE_RIGHT;
  return y() > other.y() ? ZV_SIDE_BOTTOM : ZV_SIDE_TOP;
}

// One rectangle encloses the other: bottom beats left beats top beats right on ties.
ZVSideEnum ZVRect::nearestLikeSide(const ZVRect& other) const {
  ZVSideEnum best = ZV_SIDE_BOTTOM;
  auto distance = [this, &other](ZVSideEnum side) {
    return std::abs(int64_t{other.sideCoordinate(side)} - sideCoordinate(side));
  };
  for (ZVSideEnum side : {ZV_SIDE_LEFT, ZV_SIDE_TOP, ZV_SIDE_RIGHT}) {
    if (distance(side) < distance(best)) best = side;
  }
  return best;
}

// The rectangles overlap in part or only touch: the side from which a route leaves this rectangle where it
// stands out of the other, and leads furthest along the other's reach. The first of equal candidates wins.
ZVSideEnum ZVRect::outstandingSide(const ZVRect& other) const {
  // How far the other reaches beyond this rectangle, and this one beyond the other, at each side.
  const int64_t overTop = int64_t{other.top_} - top_;
  const int64_t overBottom = int64_t{bottom_} - other.bottom_;
  const int64_t overRight = int64_t{other.right_} - right_;
  const int64_t overLeft = int64_t{left_} - other.left_;
  const struct {
    int64_t standsOut;
    ZVSideEnum side;
    int64_t reach;
  } candidates[] = {
      {-overLeft, ZV_SIDE_TOP, overTop},       {-overLeft, ZV_SIDE_BOTTOM, overBottom},
      {-overBottom, ZV_SIDE_RIGHT, overRight}, {-overBottom, ZV_SIDE_LEFT, overLeft},
      {-overRight, ZV_SIDE_TOP, overTop},      {-overRight, ZV_SIDE_BOTTOM, overBottom},
      {-overTop, ZV_SIDE_RIGHT, overRight},    {-overTop, ZV_SIDE_LEFT, overLeft},
  };
  ZVSideEnum best = ZV_SIDE_NONE;
  int64_t bestValue = 0;
  for (const auto& candidate : candidates) {
    const int64_t value = std::min(candidate.reach, candidate.standsOut);
    if (value > bestValue) {
      bestValue = value;
      best = candidate.side;
    }
  }
  return best != ZV_SIDE_NONE ? best : ZV_SIDE_LEFT;
}

ZVSideEnum ZVRect::sideForRouting(const ZVPoint& p, ZVDirectionEnum direction) const {
  if (within(p)) return static_cast<ZVSideEnum>(direction);
  const ZVSideEnum facing = sides().facingSide(p);
  if (facing != ZV_SIDE_NONE) return facing;
  if (direction % 2 == 0) return p.y() < bottom_ ? ZV_SIDE_BOTTOM : ZV_SIDE_TOP;
  return p.x() < left_ ? ZV_SIDE_LEFT : ZV_SIDE_RIGHT;
}

ZVSize* ZVRect::setOffset(const ZVPoint& p, ZVSize& s) const {
  s.resize(subtract32(p.x(), x()), subtract32(p.y(), y()));
  return &s;
}

ZVSize* ZVRect::setOffset(const ZVPerMil& m, ZVSize& s) const {
  const int32_t halfWidth = s.x() < 0 ? leftHalfWidth() : rightHalfWidth();
  const int32_t halfHeight = s.y() < 0 ? bottomHalfHeight() : topHalfHeight();
  s.resize(multiply32(m.x(), halfWidth) / 1000, multiply32(m.y(), halfHeight) / 1000);
  return &s;
}

ZVPerMil* ZVRect::setPerMil(const ZVSize& s, ZVPerMil& m) const {
  auto perMil = [](int32_t offset, int32_t half) {
    return static_cast<int16_t>(half ? int64_t{multiply32(offset, 1000)} / half : 500);
  };
  m.resize(perMil(s.x(), s.x() < 0 ? leftHalfWidth() : rightHalfWidth()),
           perMil(s.y(), s.y() < 0 ? bottomHalfHeight() : topHalfHeight()));
  return &m;
}

ZVPerMil* ZVRect::setPerMil(const ZVPoint& p, ZVPerMil& m) const {
  ZVSize offset;
  return setPerMil(*setOffset(p, offset), m);
}

int ZVRect::pointInOtherSide(ZVPoint& p1, const ZVPoint& p2) const {
  if (p1.x() == p2.x() || p1.y() == p2.y()) return 1;
  ZVPoint second(p2);
  if (intersectsLine(p1, second) != 2) {
    p1.moveTo(p2);
    return 0;
  }
  if (!coincide(second, p2)) p1.moveTo(second);
  return 1;
}

void ZVRect::getPointOutsideRect(ZVPoint& p, const ZVPoint& q) const {
  const int32_t dx = subtract32(q.x(), p.x());
  const int32_t dy = subtract32(q.y(), p.y());
  const int32_t exitX = dx < 0 ? right_ : left_;
  const int32_t exitY = dy < 0 ? top_ : bottom_;
  if (dx != 0 && dy != 0) {
    const double slope = std::fabs(static_cast<double>(dx) / dy);
    const bool throughVerticalSide = height() != 0 && slope >= static_cast<double>(width()) / height();
    const int64_t quotient =
        throughVerticalSide ? (int64_t{exitX} - p.x()) / dx : (int64_t{exitY} - p.y()) / dy;
    const int32_t steps = static_cast<int32_t>(std::abs(quotient) + 1);
    p.move(multiply32(subtract32(0, dx), steps), multiply32(subtract32(0, dy), steps));
  } else if (dx != 0) {
    p.x(exitX);
  } else if (dy != 0) {
    p.y(exitY);
  } else {
    p.x(right_);
  }
}

int32_t ZVRect::x(int32_t value) {
  placeRange(value, width(), left_, right_);
  return value;
}

int32_t ZVRect::y(int32_t value) {
  placeRange(value, height(), bottom_, top_);
  return value;
}

int32_t ZVRect::width(int32_t value) {
  if (value >= 0) placeRange(x(), value, left_, right_);
  return width();
}

int32_t ZVRect::height(int32_t value) {
  if (value >= 0) placeRange(y(), value, bottom_, top_);
  return height();
}

void ZVRect::setCorners(int32_t x1, int32_t y1, int32_t x2, int32_t y2) {
  if (y1 > y2) std::swap(y1, y2);
  if (x2 < x1) std::swap(x1, x2);
  left_ = x1;
  right_ = x2;
  bottom_ = y1;
  top_ = y2;
}

void ZVRect::placeRange(int32_t center, int32_t size, int32_t& low, int32_t& high) {
  low = subtract32(center, size / 2);
  high = add32(low, size);
}

void ZVRect::setAround(int32_t x, int32_t y, int32_t width, int32_t height) {
  placeRange(x, width, left_, right_);
  placeRange(y, height, bottom_, top_);
}

void ZVRect::setLeftRight(int32_t left, int32_t right) {
  if (left > right) return;
  left_ = left;
  right_ = right;
}

void ZVRect::setBottomTop(int32_t bottom, int32_t top) {
  if (bottom > top) return;
  bottom_ = bottom;
  top_ = top;
}

void ZVRect::resize(int32_t newWidth, int32_t newHeight) {
  width(newWidth);
  height(newHeight);
}

void ZVRect::move(int32_t dx, int32_t dy) {
  left_ = add32(left_, dx);
  right_ = add32(right_, dx);
  top_ = add32(top_, dy);
  bottom_ = add32(bottom_, dy);
}

void ZVRect::moveTo(int32_t newX, int32_t newY) {
  x(newX);
  y(newY);
}

ZVRect& ZVRect::inflate(int32_t dx, int32_t dy) {
  const int32_t newWidth = add32(width(), multiply32(dx, 2));
  const int32_t newHeight = add32(height(), multiply32(dy, 2));
  if (newWidth >= 0 && newHeight >= 0) resize(newWidth, newHeight);
  return *this;
}

ZVRect& ZVRect::operator|=(const ZVRect& other) {
  if (isZero()) {
    *this = other;
  } else if (!other.isZero()) {
    uniteRect(*this, sides(), other.sides());
  }
  return *this;
}

ZVRect& ZVRect::operator&=(const ZVRect& other) {
  intersectRect(*this, sides(), other.sides());
  return *this;
}

void ZVRect::init() { setCorners(-20, -20, 20, 20); }

void ZVRect::ZVRectattributeCopy(const ZVRect& other) {
  ZVObject::copyAttributes(&other);
  left_ = other.left_;
  top_ = other.top_;
  right_ = other.right_;
  bottom_ = other.bottom_;
}
