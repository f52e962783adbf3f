// The full axis-parallel rectangle of the library, stored as four sides.
//
// Invariant: left <= right and bottom <= top, kept by setCorners; only the constructors that take a size
// leave it to the caller. The fields lie in the order of the platform's rectangle, but top is the greater y.
//
// The rectangle is a closed region and answers as told in zvsides.h, alike its compact twin ZVInternalRect
// apart from these rules of its own:
//  - Two coincident points are no line and no ray: intersectsLine, intersectsRay, overlapsLine and
//    overlapsRay give 0, even within the rectangle.
//  - Beyond a corner closestSide compares the gaps to the rectangle itself.
//  - scale by a double truncates.
//  - operator|= treats a zero rectangle, with all sides 0, as empty.
#ifndef ZV_ZVRECT_H
#define ZV_ZVRECT_H

#include "utils/zvirect.h"
#include "utils/zvobject.h"
#include "utils/zvpermil.h"
#include "utils/zvsides.h"

class ZV_EXPORT ZVRect : public ZVObject {
 public:
  // 40 by 40 around (0, 0).
  ZVRect() = default;
  // The size is not tested.
  ZVRect(int32_t width, int32_t height) { setAround(0, 0, width, height); }
  ZVRect(const ZVPoint& center, int32_t width, int32_t height) {
    setAround(center.x(), center.y(), width, height);
  }
  ZVRect(const ZVPoint& center, const ZVSize& size) : ZVRect(center, size.width(), size.height()) {}
  // Any two opposite corners.
  ZVRect(int32_t x1, int32_t y1, int32_t x2, int32_t y2) { setCorners(x1, y1, x2, y2); }
  ZVRect(const ZVPoint& p1, const ZVPoint& p2) { setCorners(p1.x(), p1.y(), p2.x(), p2.y()); }
  // Whichever of the platform's top and bottom is greater becomes the top.
  ZVRect(const tagRECT* rect) { setCorners(rect->left, rect->bottom, rect->right, rect->top); }
  ZVRect(const ZVInternalRect& rect) { *this = rect; }
  ZVRect& operator=(const ZVInternalRect& rect);

  int32_t left() const { return left_; }
  int32_t top() const { return top_; }
  int32_t right() const { return right_; }
  int32_t bottom() const { return bottom_; }
  // The centre, rounded down.
  int32_t x() const { return static_cast<int32_t>((int64_t{left_} + right_) >> 1); }
  int32_t y() const { return static_cast<int32_t>((int64_t{top_} + bottom_) >> 1); }
  int32_t width() const { return subtract32(right_, left_); }
  int32_t height() const { return subtract32(top_, bottom_); }
  int32_t dimension(ZVOrientationEnum orientation) const { return orientation ? width() : height(); }
  int32_t leftHalfWidth() const { return width() / 2; }
  int32_t rightHalfWidth() const { return static_cast<int32_t>((int64_t{width()} + 1) / 2); }
  int32_t bottomHalfHeight() const { return height() / 2; }
  int32_t topHalfHeight() const { return static_cast<int32_t>((int64_t{height()} + 1) / 2); }
  ZVRectSides sides() const { return {left_, top_, right_, bottom_}; }
  int32_t sideCoordinate(ZVSideEnum side) const { return sides().sideCoordinate(side); }
  ZVPoint center() const { return ZVPoint(x(), y()); }
  ZVPoint topLeft() const { return ZVPoint(left_, top_); }
  ZVPoint topRight() const { return ZVPoint(right_, top_); }
  ZVPoint bottomLeft() const { return ZVPoint(left_, bottom_); }
  ZVPoint bottomRight() const { return ZVPoint(right_, bottom_); }
  ZVSize size() const { return ZVSize(width(), height()); }
  int isZero() const { return left_ == 0 && top_ == 0 && right_ == 0 && bottom_ == 0; }
  int32_t area() const { return multiply32(width(), height()); }
  int32_t diagonal() const { return sides().diagonal(); }
  // The four fields in place.
  operator const tagRECT*() const { return reinterpret_cast<const tagRECT*>(&left_); }

  int withinXRange(const ZVPoint& p) const { return sides().withinXRange(p); }
  int withinYRange(const ZVPoint& p) const { return sides().withinYRange(p); }
  int within(const ZVPoint& p) const { return sides().within(p); }
  int withinInteriorXRange(const ZVPoint& p) const { return sides().withinInteriorXRange(p); }
  int withinInteriorYRange(const ZVPoint& p) const { return sides().withinInteriorYRange(p); }
  int withinInterior(const ZVPoint& p) const { return sides().withinInterior(p); }
  int onBoundary(const ZVPoint& p) const { return sides().onBoundary(p); }
  int intersectsRectXRange(const ZVRect& r) const { return sides().intersectsXRange(r.sides()); }
  int intersectsRectYRange(const ZVRect& r) const { return sides().intersectsYRange(r.sides()); }
  int intersectsRect(const ZVRect& r) const { return sides().intersects(r.sides()); }
  int enclosesXRange(const ZVRect& r) const { return sides().enclosesXRange(r.sides()); }
  int enclosesYRange(const ZVRect& r) const { return sides().enclosesYRange(r.sides()); }
  int encloses(const ZVRect& r) const { return sides().encloses(r.sides()); }
  int encloses(int32_t x1, int32_t y1, int32_t x2, int32_t y2) const {
    return sides().within(x1, y1) && sides().within(x2, y2);
  }

  // The number of boundary hits, which replace the points. Two coincident points are no line and no ray.
  int intersectsLine(int32_t& x1, int32_t& y1, int32_t& x2, int32_t& y2) const {
    return coincide(x1, y1, x2, y2) ? 0 : sides().intersectsLine(x1, y1, x2, y2);
  }
  int intersectsLine(ZVPoint& p1, ZVPoint& p2) const {
    return coincide(p1, p2) ? 0 : sides().intersectsLine(p1, p2);
  }
  int intersectsSegment(int32_t& x1, int32_t& y1, int32_t& x2, int32_t& y2) const {
    return sides().intersectsSegment(x1, y1, x2, y2);
  }
  int intersectsSegment(ZVPoint& p1, ZVPoint& p2) const { return sides().intersectsSegment(p1, p2); }
  int intersectsRay(int32_t& x1, int32_t& y1, int32_t& x2, int32_t& y2) const {
    return coincide(x1, y1, x2, y2) ? 0 : sides().intersectsRay(x1, y1, x2, y2);
  }
  int intersectsRay(ZVPoint& p1, ZVPoint& p2) const {
    return coincide(p1, p2) ? 0 : sides().intersectsRay(p1, p2);
  }
  int overlapsLine(int32_t x1, int32_t y1, int32_t x2, int32_t y2) const {
    return coincide(x1, y1, x2, y2) ? 0 : sides().overlapsLine(x1, y1, x2, y2);
  }
  int overlapsLine(const ZVPoint& p1, const ZVPoint& p2) const {
    return overlapsLine(p1.x(), p1.y(), p2.x(), p2.y());
  }
  int overlapsSegment(int32_t x1, int32_t y1, int32_t x2, int32_t y2) const {
    return sides().overlapsSegment(x1, y1, x2, y2);
  }
  int overlapsSegment(const ZVPoint& p1, const ZVPoint& p2) const {
    return overlapsSegment(p1.x(), p1.y(), p2.x(), p2.y());
  }
  int overlapsRay(int32_t x1, int32_t y1, int32_t x2, int32_t y2) const {
    return coincide(x1, y1, x2, y2) ? 0 : sides().overlapsRay(x1, y1, x2, y2);
  }
  int overlapsRay(const ZVPoint& p1, const ZVPoint& p2) const {
    return overlapsRay(p1.x(), p1.y(), p2.x(), p2.y());
  }

  int nearestPoint(ZVPoint& p) const { return sides().nearestPoint(p); }
  ZVSideEnum closestSideWithin(const ZVPoint& p) const { return sides().closestSideWithin(p); }
  // The side that the point faces, within the rectangle closestSideWithin, and beyond a corner the one with
  // the greater gap, a vertical side on a tie.
  ZVSideEnum closestSide(const ZVPoint& p) const;

  // The side of this rectangle at which a route to the other one leaves. horizontalFirst decides where the
  // other lies diagonally off.
  ZVSideEnum sideForRouting(const ZVRect& other, int horizontalFirst) const;
  // The side at which a route arrives from p travelling in the direction.
  ZVSideEnum sideForRouting(const ZVPoint& p, ZVDirectionEnum direction) const;

  // Offsets from the centre and per-mil of the half size on the offset's side: 1000 is the side itself. All
  // give the address of the second argument. A half size of 0 gives 500 per-mil. From per-mil, the half size
  // is chosen by the sign that s has on entry.
  ZVSize* setOffset(const ZVPoint& p, ZVSize& s) const;
  ZVSize* setOffset(const ZVPerMil& m, ZVSize& s) const;
  ZVPerMil* setPerMil(const ZVSize& s, ZVPerMil& m) const;
  ZVPerMil* setPerMil(const ZVPoint& p, ZVPerMil& m) const;

  // Sets p1 to the hit of the line through both points that is not p2, the far side for a p2 on the boundary.
  // Gives 1; without two hits p1 becomes p2 and the result is 0. Points that share x or y stay and give 1.
  int pointInOtherSide(ZVPoint& p1, const ZVPoint& p2) const;
  // Moves p out of the rectangle, away from q, in whole steps of the vector from q to p; where they share x
  // or y, onto the side. Coincident points go to the right side.
  void getPointOutsideRect(ZVPoint& p, const ZVPoint& q) const;

  // Setters of a centre coordinate keep the size and give the value; setters of a size keep the centre,
  // ignore negative values and give what is held afterwards.
  int32_t x(int32_t value);
  int32_t y(int32_t value);
  int32_t width(int32_t value);
  int32_t height(int32_t value);
  int32_t dimension(ZVOrientationEnum orientation, int32_t value) {
    return orientation ? width(value) : height(value);
  }
  const ZVPoint& center(const ZVPoint& p) {
    moveTo(p);
    return p;
  }
  const ZVSize& size(const ZVSize& s) {
    resize(s);
    return s;
  }
  void setCorners(int32_t x1, int32_t y1, int32_t x2, int32_t y2);
  void set(int32_t left, int32_t top, int32_t right, int32_t bottom) { setCorners(left, bottom, right, top); }
  void setLeftRight(int32_t left, int32_t right);
  void setBottomTop(int32_t bottom, int32_t top);
  void setZero() { setCorners(0, 0, 0, 0); }
  void resize(int32_t width, int32_t height);
  void resize(const ZVSize& size) { resize(size.width(), size.height()); }
  void scale(int32_t factor) { resize(multiply32(width(), factor), multiply32(height(), factor)); }
  void scale(long factor) { scale(static_cast<int32_t>(factor)); }
  // Truncates the size.
  void scale(double factor) { resize(truncateToInt32(width() * factor), truncateToInt32(height() * factor)); }
  void move(int32_t dx, int32_t dy);
  void move(const ZVSize& offset) { move(offset.width(), offset.height()); }
  void moveTo(int32_t x, int32_t y);
  void moveTo(const ZVPoint& center) { moveTo(center.x(), center.y()); }
  // Grows each side by dx or dy around the centre; a negative one shrinks. If either size would become
  // negative nothing changes.
  ZVRect& inflate(int32_t dx, int32_t dy);
  ZVRect& inflate(const ZVSize& by) { return inflate(by.width(), by.height()); }
  ZVRect inflatedBy(int32_t dx, int32_t dy) const { return ZVRect(*this).inflate(dx, dy); }
  ZVRect inflatedBy(const ZVSize& by) const { return ZVRect(*this).inflate(by); }
  // Grow to hold the argument, which may not be null. 1 if anything changed.
  int updateBounds(const ZVRect* rect) { return growRect(*this, rect->sides()); }
  int updateBounds(const ZVPoint* p) { return growRect(*this, {p->x(), p->y(), p->x(), p->y()}); }
  // The smallest rectangle that holds both; a zero rectangle is empty.
  ZVRect& operator|=(const ZVRect& other);
  // The common part; the zero rectangle if there is none.
  ZVRect& operator&=(const ZVRect& other);
  ZVRect calculateUnion(const ZVRect& other) const { return ZVRect(*this) |= other; }
  ZVRect calculateIntersection(const ZVRect& other) const { return ZVRect(*this) &= other; }

  ZV_SHAPE_VALUE(ZVRect)
  static bool coincide(int32_t x1, int32_t y1, int32_t x2, int32_t y2) { return x1 == x2 && y1 == y2; }
  static bool coincide(const ZVPoint& p1, const ZVPoint& p2) {
    return coincide(p1.x(), p1.y(), p2.x(), p2.y());
  }
  // The extra unit of an odd size goes to the high end.
  static void placeRange(int32_t center, int32_t size, int32_t& low, int32_t& high);
  void setAround(int32_t x, int32_t y, int32_t width, int32_t height);
  ZVSideEnum sideTowards(const ZVRect& other, int horizontalFirst) const;
  ZVSideEnum nearestLikeSide(const ZVRect& other) const;
  ZVSideEnum outstandingSide(const ZVRect& other) const;

  int32_t left_ = -20;
  int32_t top_ = 20;
  int32_t right_ = 20;
  int32_t bottom_ = -20;
};

#endif
