// The four sides of an axis-parallel rectangle, and every question that is answered from them alone. The two
// rectangle classes store themselves differently and ask here; where their answers differ they say so
// themselves.
//
// The rectangle is a closed region: the boundary belongs to it, and no width or no height makes it a segment
// or a point. Of the corners, the top and the bottom side own both ends where a corner must not count twice.
#ifndef ZV_ZVSIDES_H
#define ZV_ZVSIDES_H

#include <algorithm>

#include "utils/zvgeom.h"
#include "utils/zvpoint.h"

struct ZV_EXPORT ZVRectSides {
  int32_t left;
  int32_t top;
  int32_t right;
  int32_t bottom;

  // The coordinate of a side; 0 for any other value.
  int32_t sideCoordinate(ZVSideEnum side) const;
  // The length of the diagonal, truncated.
  int32_t diagonal() const;

  // Within: bounds inclusive. Within the interior: exclusive.
  int withinXRange(const ZVPoint& p) const { return left <= p.x() && p.x() <= right; }
  int withinYRange(const ZVPoint& p) const { return bottom <= p.y() && p.y() <= top; }
  int within(const ZVPoint& p) const { return within(p.x(), p.y()); }
  int within(int32_t x, int32_t y) const { return left <= x && x <= right && bottom <= y && y <= top; }
  int withinInteriorXRange(const ZVPoint& p) const { return left < p.x() && p.x() < right; }
  int withinInteriorYRange(const ZVPoint& p) const { return bottom < p.y() && p.y() < top; }
  int withinInterior(const ZVPoint& p) const { return withinInteriorXRange(p) && withinInteriorYRange(p); }
  int onBoundary(const ZVPoint& p) const;

  // Closed ranges: what only touches intersects, and equals enclose each other.
  int intersectsXRange(const ZVRectSides& other) const { return other.right >= left && right >= other.left; }
  int intersectsYRange(const ZVRectSides& other) const { return other.top >= bottom && top >= other.bottom; }
  int intersects(const ZVRectSides& other) const {
    return intersectsXRange(other) && intersectsYRange(other);
  }
  int enclosesXRange(const ZVRectSides& other) const { return left <= other.left && other.right <= right; }
  int enclosesYRange(const ZVRectSides& other) const { return bottom <= other.bottom && other.top <= top; }
  int encloses(const ZVRectSides& other) const { return enclosesXRange(other) && enclosesYRange(other); }

  // The hits of the boundary with a line, a segment or a ray (from the first point through the second): their
  // number, 0 to 2, and the hits in place of the points. Without a hit the points stay.
  //
  // Line: two coincident points count as a vertical one; a slanted line is met with the top, the bottom, the
  // left and the right side in this order, and a corner belongs to the top or the bottom. Segment: the line's
  // hits in the bounding box of the segment, or along a side the ends of the common part, the lower or left
  // one first. Ray: the line's hits from the origin on, the nearer first.
  int intersectsLine(int32_t& x1, int32_t& y1, int32_t& x2, int32_t& y2) const;
  int intersectsSegment(int32_t& x1, int32_t& y1, int32_t& x2, int32_t& y2) const;
  int intersectsRay(int32_t& x1, int32_t& y1, int32_t& x2, int32_t& y2) const;
  int intersectsLine(ZVPoint& p1, ZVPoint& p2) const;
  int intersectsSegment(ZVPoint& p1, ZVPoint& p2) const;
  int intersectsRay(ZVPoint& p1, ZVPoint& p2) const;

  // Whether the closed rectangle meets the line, the segment or the ray.
  int overlapsLine(int32_t x1, int32_t y1, int32_t x2, int32_t y2) const;
  int overlapsSegment(int32_t x1, int32_t y1, int32_t x2, int32_t y2) const;
  int overlapsRay(int32_t x1, int32_t y1, int32_t x2, int32_t y2) const;

  // Moves the point to the boundary: from outside to the nearest point, from the interior perpendicularly to
  // the nearest side, where horizontal beats vertical, left beats right and bottom beats top. Gives 1.
  int nearestPoint(ZVPoint& p) const;

  // The side whose line is nearest to the point; right beats top beats left beats bottom on ties.
  ZVSideEnum closestSideWithin(const ZVPoint& p) const;
  // The side that a point outside faces straight on; none within the rectangle and beyond its corners.
  ZVSideEnum facingSide(const ZVPoint& p) const;

 private:
  bool onVerticalSide(int32_t x1, int32_t x2) const { return x1 == x2 && (x1 == left || x1 == right); }
  bool onHorizontalSide(int32_t y1, int32_t y2) const { return y1 == y2 && (y1 == top || y1 == bottom); }
  int segmentHits(int32_t x1, int32_t y1, int32_t x2, int32_t y2) const;
  bool rayLeadsAway(int32_t x1, int32_t y1, int32_t x2, int32_t y2) const;
  int intersectsSlantedLine(int32_t& x1, int32_t& y1, int32_t& x2, int32_t& y2) const;
};

// The changes that both rectangle classes make in the same way, through their own setters.

// Grows the rectangle side by side to hold the other sides. Gives 1 if it changed.
template <class Rect>
int growRect(Rect& rect, const ZVRectSides& other) {
  int changed = 0;
  if (other.left < rect.left()) rect.setLeftRight(other.left, rect.right()), changed = 1;
  if (other.right > rect.right()) rect.setLeftRight(rect.left(), other.right), changed = 1;
  if (other.bottom < rect.bottom()) rect.setBottomTop(other.bottom, rect.top()), changed = 1;
  if (other.top > rect.top()) rect.setBottomTop(rect.bottom(), other.top), changed = 1;
  return changed;
}

template <class Rect>
void uniteRect(Rect& rect, const ZVRectSides& a, const ZVRectSides& b) {
  rect.setCorners(std::min(a.left, b.left), std::min(a.bottom, b.bottom), std::max(a.right, b.right),
                  std::max(a.top, b.top));
}

// Rectangles apart leave the zero rectangle.
template <class Rect>
void intersectRect(Rect& rect, const ZVRectSides& a, const ZVRectSides& b) {
  if (a.intersects(b)) {
    rect.setCorners(std::max(a.left, b.left), std::max(a.bottom, b.bottom), std::min(a.right, b.right),
                    std::min(a.top, b.top));
  } else {
    rect.setZero();
  }
}

#endif
