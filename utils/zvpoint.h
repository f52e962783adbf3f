// A location in the plane, and the questions about points, lines and segments on which the rest of the
// geometry stands.
#ifndef ZV_ZVPOINT_H
#define ZV_ZVPOINT_H

#include "utils/zvsize.h"
#include "utils/zvtuple.h"

class ZV_EXPORT ZVPoint : public ZVTuple {
 public:
  ZVPoint() = default;
  ZVPoint(int32_t x, int32_t y) : ZVTuple(x, y) {}
  ZVPoint(tagPOINT point) : ZVTuple(point.x, point.y) {}

  int32_t coordinate(ZVOrientationEnum orientation) const { return orientation ? x_ : y_; }
  // The point seen as the platform's structure, in place.
  operator tagPOINT&() { return reinterpret_cast<tagPOINT&>(x_); }
  operator const tagPOINT&() const { return reinterpret_cast<const tagPOINT&>(x_); }

  // Differences of coordinates are taken in 32 bits, squares in double.
  double distance(const ZVPoint& other) const { return distance(x_, y_, other.x_, other.y_); }
  static double distance(int32_t x1, int32_t y1, int32_t x2, int32_t y2);
  double distanceSquare(const ZVPoint& other) const { return distanceSquare(x_, y_, other.x_, other.y_); }
  static double distanceSquare(int32_t x1, int32_t y1, int32_t x2, int32_t y2);

  // The axis direction from this point to other: none if the points coincide or both coordinates differ.
  ZVDirectionEnum direction(const ZVPoint& other) const;
  // The dominant axis direction from this point to other, never none: horizontal on a tie, right if the
  // points coincide.
  ZVDirectionEnum roughDirection(const ZVPoint& other) const;

  // Sets the coordinate and gives the value set.
  int32_t coordinate(ZVOrientationEnum orientation, int32_t value) { return (orientation ? x_ : y_) = value; }
  void move(int32_t dx, int32_t dy) { add(dx, dy); }
  void move(const ZVSize& offset) { add(offset.width(), offset.height()); }
  void moveTo(int32_t x, int32_t y) { set(x, y); }
  void moveTo(const ZVPoint& point) { set(point.x_, point.y_); }

  // Whether the point lies in the bounding box of the segment 1-2 and closer to its line than sqrt(0.2): wide
  // enough that a rounded intersection still counts as on its segment.
  static int pointInSegment(int32_t px, int32_t py, int32_t x1, int32_t y1, int32_t x2, int32_t y2);
  static int doublePointInSegment(double px, double py, double x1, double y1, double x2, double y2);

  // Whether the segments 1-2 and 3-4 meet, and where: the hit replaces x1 and y1, which stay as they are
  // without one. An end of a segment that lies on the other one (pointInSegment) is the hit, looked for in
  // the order 3, 4, 1, 2; else the crossing of two segments that properly cross. The integer form rounds it.
  static int segmentsIntersect(int32_t& x1, int32_t& y1, int32_t x2, int32_t y2, int32_t x3, int32_t y3,
                               int32_t x4, int32_t y4);
  static int segmentsIntersect(double& x1, double& y1, double x2, double y2, double x3, double y3, double x4,
                               double y4);

  // Evaluate the line through the points 1 and 2, the ray from 1 through 2 or the segment 1-2 at one
  // coordinate. 0, with nothing written, if there is no answer or no single one. The ends are included, and
  // at the points 1 and 2 the answer is exactly their own coordinate.
  static int lineAtX(int32_t x1, int32_t y1, int32_t x2, int32_t y2, double x, double& y);
  static int lineAtY(int32_t x1, int32_t y1, int32_t x2, int32_t y2, double& x, double y);
  static int rayAtX(int32_t x1, int32_t y1, int32_t x2, int32_t y2, double x, double& y);
  static int rayAtY(int32_t x1, int32_t y1, int32_t x2, int32_t y2, double& x, double y);
  static int segmentAtX(int32_t x1, int32_t y1, int32_t x2, int32_t y2, double x, double& y);
  static int segmentAtY(int32_t x1, int32_t y1, int32_t x2, int32_t y2, double& x, double y);

  void debugOutput(int level) override;

  ZV_SHAPE_VALUE(ZVPoint)
};

#endif
