// The compact axis-parallel rectangle: a plain value of centre and size, without object header.
//
// Invariant: width and height are not negative. The sides are derived: an odd size has its extra unit to the
// right and the top, and a rectangle given by its corners keeps them exactly.
//
// The rectangle is a closed region and answers as told in zvsides.h. Negative sizes and reversed sides are
// ignored by the setters.
#ifndef ZV_ZVIRECT_H
#define ZV_ZVIRECT_H

#include "utils/zvsides.h"

class ZVRect;

class ZV_EXPORT ZVInternalRect {
 public:
  // 40 by 40 around (0, 0).
  ZVInternalRect() = default;
  // REQUIRES: the size is not negative; a negative one counts as 0.
  ZVInternalRect(int32_t width, int32_t height) : width_(std::max(width, 0)), height_(std::max(height, 0)) {}
  ZVInternalRect(const ZVPoint& center, int32_t width, int32_t height)
      : x_(center.x()), y_(center.y()), width_(std::max(width, 0)), height_(std::max(height, 0)) {}
  ZVInternalRect(const ZVPoint& center, const ZVSize& size)
      : ZVInternalRect(center, size.width(), size.height()) {}
  // Any two opposite corners.
  ZVInternalRect(int32_t x1, int32_t y1, int32_t x2, int32_t y2) { setCorners(x1, y1, x2, y2); }
  ZVInternalRect(const ZVPoint& p1, const ZVPoint& p2) { setCorners(p1.x(), p1.y(), p2.x(), p2.y()); }
  ZVInternalRect(const ZVRect& rect);
  ZVInternalRect& operator=(const ZVRect& rect);

  int32_t x() const { return x_; }
  int32_t y() const { return y_; }
  int32_t width() const { return width_; }
  int32_t height() const { return height_; }
  int32_t dimension(ZVOrientationEnum orientation) const { return orientation ? width_ : height_; }
  int32_t leftHalfWidth() const { return width_ / 2; }
  int32_t rightHalfWidth() const { return width_ / 2 + width_ % 2; }
  int32_t bottomHalfHeight() const { return height_ / 2; }
  int32_t topHalfHeight() const { return height_ / 2 + height_ % 2; }
  int32_t left() const { return subtract32(x_, leftHalfWidth()); }
  int32_t right() const { return add32(x_, rightHalfWidth()); }
  int32_t bottom() const { return subtract32(y_, bottomHalfHeight()); }
  int32_t top() const { return add32(y_, topHalfHeight()); }
  ZVRectSides sides() const { return {left(), top(), right(), bottom()}; }
  int32_t sideCoordinate(ZVSideEnum side) const { return sides().sideCoordinate(side); }
  ZVPoint center() const { return ZVPoint(x_, y_); }
  ZVPoint topLeft() const { return ZVPoint(left(), top()); }
  ZVPoint topRight() const { return ZVPoint(right(), top()); }
  ZVPoint bottomLeft() const { return ZVPoint(left(), bottom()); }
  ZVPoint bottomRight() const { return ZVPoint(right(), bottom()); }
  ZVSize size() const { return ZVSize(width_, height_); }
  int isZero() const { return x_ == 0 && y_ == 0 && width_ == 0 && height_ == 0; }
  int32_t area() const { return multiply32(width_, height_); }
  int32_t diagonal() const { return sides().diagonal(); }

  int withinXRange(const ZVPoint& p) const { return sides().withinXRange(p); }
  int withinYRange(const ZVPoint& p) const { return sides().withinYRange(p); }
  int within(const ZVPoint& p) const { return sides().within(p); }
  int withinInteriorXRange(const ZVPoint& p) const { return sides().withinInteriorXRange(p); }
  int withinInteriorYRange(const ZVPoint& p) const { return sides().withinInteriorYRange(p); }
  int withinInterior(const ZVPoint& p) const { return sides().withinInterior(p); }
  int onBoundary(const ZVPoint& p) const { return sides().onBoundary(p); }
  int intersectsRectXRange(const ZVInternalRect& r) const { return sides().intersectsXRange(r.sides()); }
  int intersectsRectYRange(const ZVInternalRect& r) const { return sides().intersectsYRange(r.sides()); }
  int intersectsRect(const ZVInternalRect& r) const { return sides().intersects(r.sides()); }
  int enclosesXRange(const ZVInternalRect& r) const { return sides().enclosesXRange(r.sides()); }
  int enclosesYRange(const ZVInternalRect& r) const { return sides().enclosesYRange(r.sides()); }
  int encloses(const ZVInternalRect& r) const { return sides().encloses(r.sides()); }
  int encloses(int32_t x1, int32_t y1, int32_t x2, int32_t y2) const {
    return sides().within(x1, y1) && sides().within(x2, y2);
  }

  // The number of boundary hits, which replace the points. Two coincident points are a vertical line.
  int intersectsLine(int32_t& x1, int32_t& y1, int32_t& x2, int32_t& y2) const {
    return sides().intersectsLine(x1, y1, x2, y2);
  }
  int intersectsLine(ZVPoint& p1, ZVPoint& p2) const { return sides().intersectsLine(p1, p2); }
  int intersectsSegment(int32_t& x1, int32_t& y1, int32_t& x2, int32_t& y2) const {
    return sides().intersectsSegment(x1, y1, x2, y2);
  }
  int intersectsSegment(ZVPoint& p1, ZVPoint& p2) const { return sides().intersectsSegment(p1, p2); }
  int intersectsRay(int32_t& x1, int32_t& y1, int32_t& x2, int32_t& y2) const {
    return sides().intersectsRay(x1, y1, x2, y2);
  }
  int intersectsRay(ZVPoint& p1, ZVPoint& p2) const { return sides().intersectsRay(p1, p2); }
  int overlapsLine(int32_t x1, int32_t y1, int32_t x2, int32_t y2) const {
    return sides().overlapsLine(x1, y1, x2, y2);
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
    return sides().overlapsRay(x1, y1, x2, y2);
  }
  int overlapsRay(const ZVPoint& p1, const ZVPoint& p2) const {
    return overlapsRay(p1.x(), p1.y(), p2.x(), p2.y());
  }

  int nearestPoint(ZVPoint& p) const { return sides().nearestPoint(p); }
  ZVSideEnum closestSideWithin(const ZVPoint& p) const { return sides().closestSideWithin(p); }
  // The side that the point faces; within the rectangle and beyond its corners, closestSideWithin.
  ZVSideEnum closestSide(const ZVPoint& p) const;

  // Setters of one coordinate or size give what is held afterwards; the centre stays where a size changes.
  int32_t x(int32_t value) { return x_ = value; }
  int32_t y(int32_t value) { return y_ = value; }
  int32_t width(int32_t value) { return value >= 0 ? width_ = value : width_; }
  int32_t height(int32_t value) { return value >= 0 ? height_ = value : height_; }
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
  void scale(int32_t factor) { resize(multiply32(width_, factor), multiply32(height_, factor)); }
  void scale(long factor) { scale(static_cast<int32_t>(factor)); }
  // Rounds the size.
  void scale(double factor);
  void move(int32_t dx, int32_t dy) { moveTo(add32(x_, dx), add32(y_, dy)); }
  void move(const ZVSize& offset) { move(offset.width(), offset.height()); }
  void moveTo(int32_t x, int32_t y);
  void moveTo(const ZVPoint& center) { moveTo(center.x(), center.y()); }
  // Grow to hold the argument, which may not be null. 1 if anything changed.
  int updateBounds(const ZVInternalRect* rect) { return growRect(*this, rect->sides()); }
  int updateBounds(const ZVPoint* p) { return growRect(*this, {p->x(), p->y(), p->x(), p->y()}); }
  // The smallest rectangle that holds both; a zero rectangle is the point (0, 0) here.
  ZVInternalRect& operator|=(const ZVInternalRect& other);
  // The common part; the zero rectangle if there is none.
  ZVInternalRect& operator&=(const ZVInternalRect& other);

  void debugOutput(int) {}

 private:
  int32_t x_ = 0;
  int32_t y_ = 0;
  int32_t width_ = 40;
  int32_t height_ = 40;
};

#endif
