#include "utils/zvsides.h"

#include <cmath>
#include <cstdlib>
#include <utility>

#include "utils/zvdtuple.h"

namespace {

// The bounding box of a segment.
ZVRectSides boxOf(int32_t x1, int32_t y1, int32_t x2, int32_t y2) {
  return {std::min(x1, x2), std::max(y1, y2), std::max(x1, x2), std::min(y1, y2)};
}

// A line that is neither vertical nor horizontal has one answer everywhere.
struct SlantedLine {
  int32_t x1;
  int32_t y1;
  int32_t x2;
  int32_t y2;

  double atX(int32_t x) const {
    double y = 0.0;
    ZVPoint::lineAtX(x1, y1, x2, y2, x, y);
    return y;
  }
  double atY(int32_t y) const {
    double x = 0.0;
    ZVPoint::lineAtY(x1, y1, x2, y2, x, y);
    return x;
  }
};

// The hits of a line with the boundary, on a copy of the points that gave the line.
struct Hit {
  int32_t x;
  int32_t y;
};
struct LineHits {
  LineHits(const ZVRectSides& sides, int32_t x1, int32_t y1, int32_t x2, int32_t y2)
      : first{x1, y1}, second{x2, y2}, count(sides.intersectsLine(first.x, first.y, second.x, second.y)) {}

  Hit first;
  Hit second;
  int count;
};

// Hands out the hits that count, those that do not leave their place to the next.
template <class Counts>
int takeHits(const LineHits& hits, Counts counts, int32_t& x1, int32_t& y1, int32_t& x2, int32_t& y2) {
  const bool firstCounts = hits.count >= 1 && counts(hits.first);
  const bool secondCounts = hits.count == 2 && counts(hits.second);
  if (!firstCounts && !secondCounts) return 0;
  const Hit& first = firstCounts ? hits.first : hits.second;
  x1 = first.x;
  y1 = first.y;
  if (!firstCounts || !secondCounts) return 1;
  x2 = hits.second.x;
  y2 = hits.second.y;
  return 2;
}

// Which hits lie on the ray's side of its origin, on both axes.
class Forward {
 public:
  Forward(int32_t x1, int32_t y1, int32_t x2, int32_t y2) : x1_(x1), y1_(y1), x2_(x2), y2_(y2) {}

  bool operator()(const Hit& hit) const { return ahead(x1_, x2_, hit.x) && ahead(y1_, y2_, hit.y); }

 private:
  static bool ahead(int32_t from, int32_t through, int32_t hit) {
    return (from <= through && hit >= from) || (from >= through && hit <= from);
  }

  int32_t x1_;
  int32_t y1_;
  int32_t x2_;
  int32_t y2_;
};

// One or two hits along a line parallel to an axis.
int storeRange(int32_t from, int32_t to, int32_t& first, int32_t& second) {
  first = from;
  if (from == to) return 1;
  second = to;
  return 2;
}

// The part of a side low..high that a ray along it from start runs over, in the ray's direction.
int storeRayRange(int32_t low, int32_t high, int32_t& start, int32_t& through) {
  return start >= through ? storeRange(std::min(high, start), low, start, through)
                          : storeRange(std::max(low, start), high, start, through);
}

// Asks the form for coordinates on two points.
template <class Question>
int askOnPoints(ZVPoint& p1, ZVPoint& p2, Question question) {
  int32_t x1 = p1.x();
  int32_t y1 = p1.y();
  int32_t x2 = p2.x();
  int32_t y2 = p2.y();
  const int hits = question(x1, y1, x2, y2);
  p1.set(x1, y1);
  p2.set(x2, y2);
  return hits;
}

}  // namespace

int32_t ZVRectSides::sideCoordinate(ZVSideEnum side) const {
  switch (side) {
    case ZV_SIDE_RIGHT:
      return right;
    case ZV_SIDE_TOP:
      return top;
    case ZV_SIDE_LEFT:
      return left;
    case ZV_SIDE_BOTTOM:
      return bottom;
    default:
      return 0;
  }
}

int32_t ZVRectSides::diagonal() const {
  return truncateToInt32(ZVDTuple(subtract32(right, left), subtract32(top, bottom)).norm());
}

int ZVRectSides::onBoundary(const ZVPoint& p) const {
  return (withinXRange(p) && (p.y() == top || p.y() == bottom)) ||
         (withinYRange(p) && (p.x() == left || p.x() == right));
}

int ZVRectSides::intersectsLine(int32_t& x1, int32_t& y1, int32_t& x2, int32_t& y2) const {
  if (x1 == x2) return left <= x1 && x1 <= right ? storeRange(top, bottom, y1, y2) : 0;
  if (y1 == y2) return bottom <= y1 && y1 <= top ? storeRange(left, right, x1, x2) : 0;
  return intersectsSlantedLine(x1, y1, x2, y2);
}

int ZVRectSides::intersectsSlantedLine(int32_t& x1, int32_t& y1, int32_t& x2, int32_t& y2) const {
  int32_t hitX[2];
  int32_t hitY[2];
  int count = 0;
  auto hit = [&](int32_t x, int32_t y) {
    hitX[count] = x;
    hitY[count] = y;
    return ++count == 2;
  };
  const SlantedLine line{x1, y1, x2, y2};
  auto meetsHorizontal = [&](int32_t side) {
    const double x = line.atY(side);
    return left <= x && x <= right && hit(roundHalfUp(x), side);
  };
  auto meetsVertical = [&](int32_t side) {
    const double y = line.atX(side);
    return bottom < y && y < top && hit(side, roundHalfUp(y));
  };
  // Each term is true at the second hit, which ends the work.
  static_cast<void>(meetsHorizontal(top) || (bottom != top && meetsHorizontal(bottom)) ||
                    meetsVertical(left) || (left != right && meetsVertical(right)));
  if (count >= 1) {
    x1 = hitX[0];
    y1 = hitY[0];
  }
  if (count == 2) {
    x2 = hitX[1];
    y2 = hitY[1];
  }
  return count;
}

int ZVRectSides::intersectsSegment(int32_t& x1, int32_t& y1, int32_t& x2, int32_t& y2) const {
  const ZVRectSides box = boxOf(x1, y1, x2, y2);
  if (!intersects(box)) return 0;
  if (onVerticalSide(x1, x2)) return storeRange(std::max(bottom, box.bottom), std::min(top, box.top), y1, y2);
  if (onHorizontalSide(y1, y2))
    return storeRange(std::max(left, box.left), std::min(right, box.right), x1, x2);
  const LineHits hits(*this, x1, y1, x2, y2);
  return takeHits(
      hits, [&box](const Hit& hit) { return box.within(hit.x, hit.y); }, x1, y1, x2, y2);
}

bool ZVRectSides::rayLeadsAway(int32_t x1, int32_t y1, int32_t x2, int32_t y2) const {
  return (x1 <= x2 && right < x1) || (x1 >= x2 && left > x1) || (y1 <= y2 && top < y1) ||
         (y1 >= y2 && bottom > y1);
}

int ZVRectSides::intersectsRay(int32_t& x1, int32_t& y1, int32_t& x2, int32_t& y2) const {
  if (rayLeadsAway(x1, y1, x2, y2)) return 0;
  if (onVerticalSide(x1, x2)) return storeRayRange(bottom, top, y1, y2);
  if (onHorizontalSide(y1, y2)) return storeRayRange(left, right, x1, x2);
  LineHits hits(*this, x1, y1, x2, y2);
  auto distance = [&](const Hit& hit) { return ZVPoint::distanceSquare(x1, y1, hit.x, hit.y); };
  if (hits.count == 2 && distance(hits.second) < distance(hits.first)) std::swap(hits.first, hits.second);
  return takeHits(hits, Forward(x1, y1, x2, y2), x1, y1, x2, y2);
}

int ZVRectSides::intersectsLine(ZVPoint& p1, ZVPoint& p2) const {
  return askOnPoints(p1, p2, [this](auto&... xy) { return intersectsLine(xy...); });
}

int ZVRectSides::intersectsSegment(ZVPoint& p1, ZVPoint& p2) const {
  return askOnPoints(p1, p2, [this](auto&... xy) { return intersectsSegment(xy...); });
}

int ZVRectSides::intersectsRay(ZVPoint& p1, ZVPoint& p2) const {
  return askOnPoints(p1, p2, [this](auto&... xy) { return intersectsRay(xy...); });
}

int ZVRectSides::overlapsLine(int32_t x1, int32_t y1, int32_t x2, int32_t y2) const {
  if (x1 == x2) return left <= x1 && x1 <= right;
  if (y1 == y2) return bottom <= y1 && y1 <= top;
  // Unlike the hits, a side here owns both its ends.
  const SlantedLine line{x1, y1, x2, y2};
  auto meetsHorizontal = [&](int32_t side) {
    const double x = line.atY(side);
    return left <= x && x <= right;
  };
  auto meetsVertical = [&](int32_t side) {
    const double y = line.atX(side);
    return bottom <= y && y <= top;
  };
  return meetsHorizontal(top) || meetsHorizontal(bottom) || meetsVertical(left) || meetsVertical(right);
}

// By the separating axes of the rectangle and the segment, both taken twice as large around their centres.
// Where the line passes a corner by less than one unit, its rounded hits decide.
int ZVRectSides::overlapsSegment(int32_t x1, int32_t y1, int32_t x2, int32_t y2) const {
  const double dx = static_cast<double>(x2) - x1;
  const double dy = static_cast<double>(y2) - y1;
  const double width = static_cast<double>(right) - left;
  const double height = static_cast<double>(top) - bottom;
  const double toX = static_cast<double>(x1) + x2 - left - right;
  const double toY = static_cast<double>(y1) + y2 - bottom - top;
  const bool meetsOnX = std::abs(toX) <= width + std::abs(dx);
  const bool meetsOnY = std::abs(toY) <= height + std::abs(dy);
  const double gap = std::abs(dx * toY - dy * toX) - (width * std::abs(dy) + height * std::abs(dx));
  const double nearby = 2 * (std::abs(dx) + std::abs(dy));
  if (std::abs(gap) > nearby && left <= right && bottom <= top) return meetsOnX & meetsOnY & (gap < 0);
  return within(x1, y1) || within(x2, y2) || segmentHits(x1, y1, x2, y2);
}

// Whether a hit of the line lies in the bounding box of the segment.
int ZVRectSides::segmentHits(int32_t x1, int32_t y1, int32_t x2, int32_t y2) const {
  const ZVRectSides box = boxOf(x1, y1, x2, y2);
  if (!intersects(box)) return 0;
  const LineHits hits(*this, x1, y1, x2, y2);
  return (hits.count >= 1 && box.within(hits.first.x, hits.first.y)) ||
         (hits.count == 2 && box.within(hits.second.x, hits.second.y));
}

int ZVRectSides::overlapsRay(int32_t x1, int32_t y1, int32_t x2, int32_t y2) const {
  if (within(x1, y1) || within(x2, y2)) return 1;
  if (rayLeadsAway(x1, y1, x2, y2)) return 0;
  if (onVerticalSide(x1, x2) || onHorizontalSide(y1, y2)) return 1;
  const LineHits hits(*this, x1, y1, x2, y2);
  const Forward forward(x1, y1, x2, y2);
  return (hits.count >= 1 && forward(hits.first)) || (hits.count == 2 && forward(hits.second));
}

int ZVRectSides::nearestPoint(ZVPoint& p) const {
  if (!withinInterior(p)) {
    if (p.y() > top) p.y(top);
    if (p.y() < bottom) p.y(bottom);
    if (p.x() > right) p.x(right);
    if (p.x() < left) p.x(left);
    return 1;
  }
  const int64_t toLeft = int64_t{p.x()} - left;
  const int64_t toRight = int64_t{right} - p.x();
  const int64_t toBottom = int64_t{p.y()} - bottom;
  const int64_t toTop = int64_t{top} - p.y();
  const bool leftHalf = toRight >= toLeft;
  const bool topHalf = toTop < toBottom;
  if (std::min(toLeft, toRight) >= std::min(toBottom, toTop)) {
    p.y(topHalf ? top : bottom);
  } else {
    p.x(leftHalf ? left : right);
  }
  return 1;
}

ZVSideEnum ZVRectSides::closestSideWithin(const ZVPoint& p) const {
  const int64_t distances[4] = {std::abs(int64_t{right} - p.x()), std::abs(int64_t{top} - p.y()),
                                std::abs(int64_t{left} - p.x()), std::abs(int64_t{bottom} - p.y())};
  return static_cast<ZVSideEnum>(std::min_element(distances, distances + 4) - distances);
}

ZVSideEnum ZVRectSides::facingSide(const ZVPoint& p) const {
  const int inX = withinXRange(p);
  const int inY = withinYRange(p);
  if (inX && !inY) return p.y() > top ? ZV_SIDE_TOP : ZV_SIDE_BOTTOM;
  if (inY && !inX) return p.x() < left ? ZV_SIDE_LEFT : ZV_SIDE_RIGHT;
  return ZV_SIDE_NONE;
}
