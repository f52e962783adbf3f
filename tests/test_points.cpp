#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "tests/support/plane.h"
#include "utils/zvdtuple.h"
#include "utils/zvsize.h"

namespace {

TEST(Rounding, HalvesGoUpAndWhatDoesNotFitSaturates) {
  EXPECT_EQ(place(ZVTuple(ZVDTuple(2.5, -2.5))), (P{3, -2}));
  EXPECT_EQ(roundHalfUp(-2.51), -3);
  EXPECT_EQ(truncateToInt32(-2.9), -2);
  EXPECT_EQ(truncateToInt32(2147483647.9), kMax);
  EXPECT_EQ(truncateToInt32(-2147483648.9), kMin);
  for (double huge : {2147483648.0, 1e300, std::numeric_limits<double>::infinity()}) {
    EXPECT_EQ(roundHalfUp(huge), kMax);
    EXPECT_EQ(truncateToInt32(-huge * 2), kMin);
  }
  EXPECT_EQ(roundHalfUp(std::numeric_limits<double>::quiet_NaN()), 0);
}

TEST(Tuple, ScalesAndWrapsIn32Bits) {
  ZVTuple t(3, -3);
  t.scale(0.5);
  EXPECT_EQ(place(t), (P{2, -1}));
  t.scale(3);
  t.scale(-1L);
  t *= 1.5;
  EXPECT_EQ(place(t), (P{-9, 5}));
  t += ZVTuple(kMin, 1);
  EXPECT_EQ(t.x(), kMax - 8);
  t -= ZVTuple(kMin, 1);
  EXPECT_EQ(place(t), (P{-9, 5}));
  EXPECT_EQ(t.normSquare(), 106);
  EXPECT_EQ(t.innerProduct(ZVTuple(2, 3)), -3);
  EXPECT_EQ(ZVTuple(1, 1).norm(), 1);
  EXPECT_EQ(ZVTuple(1000000000, 1000000000).norm(), 1414213562);
  EXPECT_EQ(ZVTuple(1 << 16, 0).normSquare(), 0);
  EXPECT_EQ(ZVTuple(kMin, 1).product(), kMin);
  t = ZVDTuple(0.4, -0.5);
  EXPECT_EQ(t.isZero(), 1);

  ZVDTuple d(ZVTuple(3, -4));
  EXPECT_EQ(d.norm(), 5.0);
  d.scale(0.5);
  d.add(0.25, 0.0);
  EXPECT_EQ(d.product(), -3.5);
  EXPECT_EQ(d.innerProduct(ZVDTuple(2.0, 1.0)), 1.5);
  d -= ZVDTuple(1.75, -2.0);
  EXPECT_EQ(d.isZero(), 1);
  d += ZVDTuple(0.0, 1e-300);
  EXPECT_EQ(d.isZero(), 0);
}

template <class Pair>
std::string labelOf() {
  struct Labelled : Pair {
    std::string seen;
    void internalDebugOutput(int level, char* label) override { seen = label + std::to_string(level); }
  } pair;
  static_cast<ZVObject&>(pair).debugOutput(7);
  return pair.seen;
}

TEST(Tuple, EachClassHandsOutItsLabelAndCopies) {
  EXPECT_EQ(labelOf<ZVTuple>(), "Tuple7");
  EXPECT_EQ(labelOf<ZVDTuple>(), "DTuple7");
  EXPECT_EQ(labelOf<ZVPoint>(), "Point7");
  EXPECT_EQ(labelOf<ZVSize>(), "Size7");

  ZVTuple* clone = static_cast<const ZVTuple&>(ZVPoint(4, 5)).cloneObject();
  EXPECT_EQ(ZVPoint::castDown(clone)->distance(ZVPoint(4, 5)), 0.0);
  delete clone;
  ZVSize copy;
  const ZVSize size(6, 7);
  copy.copyObject(&size);
  EXPECT_EQ(copy.area(), 42);
  EXPECT_EQ(copy.diagonal(), 9);
  EXPECT_GE(copy.sizeOf(), 16);
  ZVDTuple real;
  real = ZVDTuple(0.5, 1.5);
  EXPECT_EQ(real.y(), 1.5);
}

TEST(Point, IsSeenInPlaceAsThePlatformStructure) {
  ZVPoint point(tagPOINT{3, 4});
  static_cast<tagPOINT&>(point).x = 7;
  ZVSize size(tagSIZE{1, 2});
  static_cast<tagSIZE&>(size).cy = -5;
  const ZVSize& constant = size;
  EXPECT_EQ(static_cast<const tagSIZE&>(constant).cx, 1);
  point.move(size);
  point.move(-1, 1);
  EXPECT_EQ(point.coordinate(ZV_ORIENTATION_HORIZONTAL), 7);
  EXPECT_EQ(point.coordinate(ZV_ORIENTATION_VERTICAL), 0);
  EXPECT_EQ(point.coordinate(static_cast<ZVOrientationEnum>(2), 9), 9);
  EXPECT_EQ(ZVPoint::distance(0, 0, 30000000, 40000000), 50000000.0);
  EXPECT_EQ(ZVPoint::distanceSquare(kMin, 0, kMax, 0), 1.0);  // the difference wraps
}

TEST(Point, DirectionsAgreeWithTheSigns) {
  for (int32_t dx = -3; dx <= 3; ++dx) {
    for (int32_t dy = -3; dy <= 3; ++dy) {
      const ZVPoint from(5, -2), to(5 + dx, -2 + dy);
      const ZVDirectionEnum upright = dy > 0 ? ZV_DIRECTION_UP : ZV_DIRECTION_DOWN;
      const ZVDirectionEnum level = dx >= 0 ? ZV_DIRECTION_RIGHT : ZV_DIRECTION_LEFT;
      EXPECT_EQ(from.direction(to), !dx == !dy ? ZV_DIRECTION_NONE : dx ? level : upright);
      EXPECT_EQ(from.roughDirection(to), dy * dy > dx * dx ? upright : level);
    }
  }
}

// Exact models in integers.

bool onSegment(P p, P a, P b) {
  if (p.x < std::min(a.x, b.x) || p.x > std::max(a.x, b.x)) return false;
  if (p.y < std::min(a.y, b.y) || p.y > std::max(a.y, b.y)) return false;
  const int64_t cross = turn(a, b, p);
  const int64_t dx = b.x - a.x, dy = b.y - a.y;
  return a == b || 5 * cross * cross < dx * dx + dy * dy;
}

// The hit of a-b with c-d in a; the crossing by its parameter along a-b.
bool segmentsMeet(P& a, P b, P c, P d) {
  for (P end : {c, d}) {
    if (onSegment(end, a, b)) return a = end, true;
  }
  if (onSegment(a, c, d)) return true;
  if (onSegment(b, c, d)) return a = b, true;
  const int64_t sideA = turn(c, d, a), sideB = turn(c, d, b);
  if (turn(a, b, c) * turn(a, b, d) >= 0 || sideA * sideB >= 0) return false;
  const int64_t span = sideA - sideB;
  a = {divideHalfUp(a.x * span + (b.x - a.x) * sideA, span),
       divideHalfUp(a.y * span + (b.y - a.y) * sideA, span)};
  return true;
}

TEST(Segment, IntersectionAgreesWithExactArithmetic) {
  Random random(1);
  for (int round = 0; round < 200000; ++round) {
    SCOPED_TRACE(round);
    const int64_t reach = round % 2 ? 4 : 40;
    const P a = random.point(reach), b = random.point(reach), c = random.point(reach),
            d = random.point(reach);
    ASSERT_EQ(ZVPoint::pointInSegment(i32(a.x), i32(a.y), i32(b.x), i32(b.y), i32(c.x), i32(c.y)),
              onSegment(a, b, c));
    P expected = a;
    const bool meets = segmentsMeet(expected, b, c, d);
    int32_t x = i32(a.x), y = i32(a.y);
    ASSERT_EQ(ZVPoint::segmentsIntersect(x, y, i32(b.x), i32(b.y), i32(c.x), i32(c.y), i32(d.x), i32(d.y)),
              meets);
    ASSERT_EQ((P{x, y}), expected);
    double rx = real(a.x), ry = real(a.y);
    ASSERT_EQ(
        ZVPoint::segmentsIntersect(rx, ry, real(b.x), real(b.y), real(c.x), real(c.y), real(d.x), real(d.y)),
        meets);
    ASSERT_EQ((P{roundHalfUp(rx), roundHalfUp(ry)}), expected);
  }
  double x = 0.0, y = 0.0;
  EXPECT_EQ(ZVPoint::segmentsIntersect(x, y, 3.0, 2.0, 0.0, 2.0, 3.0, 0.0), 1);
  EXPECT_EQ(x, 1.5);
  EXPECT_EQ(y, 1.0);
}

// An evaluation answers exactly where x lies in its reach, never for a vertical line, and the answer lies on
// the line. That at y is the same with the axes exchanged.
TEST(Segment, EvaluationAnswersWithinItsReach) {
  Random random(3);
  for (int round = 0; round < 50000; ++round) {
    SCOPED_TRACE(round);
    const ZVPoint a = point(random.point(5)), b = point(random.point(5));
    const double u = real(random.from(-5, 5)) / 2.0;
    const int32_t x1 = a.x(), y1 = a.y(), x2 = b.x(), y2 = b.y();
    const double part = x1 == x2 ? -1.0 : (u - x1) / (x2 - x1);
    const bool expected[3] = {x1 != x2, part >= 0.0, part >= 0.0 && part <= 1.0};
    decltype(&ZVPoint::lineAtX) atX[] = {ZVPoint::lineAtX, ZVPoint::rayAtX, ZVPoint::segmentAtX};
    decltype(&ZVPoint::lineAtY) atY[] = {ZVPoint::lineAtY, ZVPoint::rayAtY, ZVPoint::segmentAtY};
    for (int kind = 0; kind < 3; ++kind) {
      double v = 999.0, exchanged = 999.0;
      ASSERT_EQ(atX[kind](x1, y1, x2, y2, u, v), expected[kind]);
      ASSERT_NEAR(v, expected[kind] ? y1 + (y2 - y1) * part : 999.0, 1e-12);
      ASSERT_EQ(atY[kind](y1, x1, y2, x2, exchanged, u), expected[kind]);
      ASSERT_EQ(exchanged, v);
    }
  }
  double y = 0.0;
  EXPECT_EQ(ZVPoint::lineAtX(kMin, kMin, kMax, kMax, 0.5, y), 1);  // the differences do not wrap here
  EXPECT_EQ(y, 0.5);
  // The products round here, and the ends stay exact.
  EXPECT_EQ(ZVPoint::segmentAtX(492830188, -216941977, -915036452, 275167074, -915036452.0, y), 1);
  EXPECT_EQ(y, 275167074.0);
  // Multiplied before it is divided.
  EXPECT_EQ(ZVPoint::lineAtX(0, 0, 5, 3, 3.0, y), 1);
  EXPECT_EQ(y, 9.0 / 5.0);
}

}  // namespace
