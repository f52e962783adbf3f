#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <string>

#include "utils/zvdtuple.h"
#include "utils/zvpoint.h"
#include "utils/zvsize.h"
#include "utils/zvtuple.h"

namespace {

constexpr int32_t kMax = std::numeric_limits<int32_t>::max();
constexpr int32_t kMin = std::numeric_limits<int32_t>::min();

struct P {
  int64_t x, y;
};

class Lattice {
 public:
  Lattice(unsigned seed, int reach) : engine_(seed), reach_(reach) {}
  int32_t number() { return static_cast<int32_t>(engine_() % unsigned(2 * reach_ + 1)) - reach_; }
  P point() {
    int32_t x = number();
    return {x, number()};
  }

 private:
  std::mt19937 engine_;
  int reach_;
};

TEST(Rounding, HalvesGoUpAndWhatDoesNotFitSaturates) {
  EXPECT_EQ(roundHalfUp(2.5), 3);
  EXPECT_EQ(roundHalfUp(-2.5), -2);
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

TEST(Tuple, ConvertsScalesAndWrapsIn32Bits) {
  ZVTuple t(ZVDTuple(2.5, -2.5));
  EXPECT_EQ(t.x(), 3);
  EXPECT_EQ(t.y(), -2);
  t.set(3, -3);
  t.scale(0.5);
  EXPECT_EQ(t.x(), 2);
  EXPECT_EQ(t.y(), -1);
  t.scale(3);
  t.scale(-1L);
  t *= 1.5;
  EXPECT_EQ(t.x(), -9);
  EXPECT_EQ(t.y(), 5);
  t += ZVTuple(kMin, 1);
  EXPECT_EQ(t.x(), kMax - 8);
  t -= ZVTuple(kMin, 1);
  EXPECT_EQ(t.x(), -9);
  EXPECT_EQ(t.y(), 5);
  EXPECT_EQ(t.normSquare(), 106);
  EXPECT_EQ(t.product(), -45);
  EXPECT_EQ(t.innerProduct(ZVTuple(2, 3)), -3);
  EXPECT_EQ(ZVTuple(1, 1).norm(), 1);
  EXPECT_EQ(ZVTuple(-3, 4).norm(), 5);
  EXPECT_EQ(ZVTuple(1000000000, 1000000000).norm(), 1414213562);
  EXPECT_EQ(ZVTuple(1 << 16, 0).normSquare(), 0);
  EXPECT_EQ(ZVTuple(kMin, 1).product(), kMin);
  EXPECT_EQ(t.isZero(), 0);
  t = ZVDTuple(0.4, -0.5);
  EXPECT_EQ(t.isZero(), 1);
}

TEST(Tuple, DoublesStayUnrounded) {
  ZVDTuple d(ZVTuple(3, -4));
  EXPECT_EQ(d.norm(), 5.0);
  d.scale(0.5);
  d.add(0.25, 0.0);
  EXPECT_EQ(d.x(), 1.75);
  EXPECT_EQ(d.product(), -3.5);
  EXPECT_EQ(d.innerProduct(ZVDTuple(2.0, 1.0)), 1.5);
  d -= ZVDTuple(1.75, -2.0);
  EXPECT_EQ(d.isZero(), 1);
  d += ZVDTuple(0.0, 1e-300);
  EXPECT_EQ(d.isZero(), 0);
}

template <class Pair>
class Labelled : public Pair {
 public:
  std::string seen;
  void internalDebugOutput(int level, char* label) override { seen = label + std::to_string(level); }
};

template <class Pair>
std::string labelOf() {
  Labelled<Pair> pair;
  static_cast<ZVObject&>(pair).debugOutput(7);
  return pair.seen;
}

TEST(Tuple, EachClassHandsOutItsLabelAndCopies) {
  EXPECT_EQ(labelOf<ZVTuple>(), "Tuple7");
  EXPECT_EQ(labelOf<ZVDTuple>(), "DTuple7");
  EXPECT_EQ(labelOf<ZVPoint>(), "Point7");
  EXPECT_EQ(labelOf<ZVSize>(), "Size7");

  ZVPoint source(4, 5);
  ZVTuple* clone = static_cast<const ZVTuple&>(source).cloneObject();
  EXPECT_EQ(ZVPoint::castDown(clone)->distance(source), 0.0);
  delete clone;
  ZVSize size(6, 7);
  ZVSize copy(size, ZV_DEEP_COPY);
  EXPECT_EQ(copy.area(), 42);
  copy.setZero();
  copy.copyObject(&size);
  EXPECT_EQ(copy.diagonal(), 9);
  EXPECT_EQ(copy.magnitude(), 9);
  EXPECT_GE(copy.sizeOf(), 16);
  struct Noticing : ZVSize {
    void copyAttributes(const ZVObject* other) override { area = ZVSize::castDown(other)->area(); }
    int32_t area = 0;
  } noticing;
  noticing.copyObject(&size);
  EXPECT_EQ(noticing.area, 42);
  ZVDTuple real(0.5, 1.5);
  ZVDTuple realCopy;
  realCopy = real;
  EXPECT_EQ(realCopy.y(), 1.5);
}

TEST(Point, IsSeenInPlaceAsThePlatformStructure) {
  ZVPoint point(tagPOINT{3, 4});
  tagPOINT& view = point;
  view.x = 7;
  view.y = 8;
  EXPECT_EQ(point.x(), 7);
  EXPECT_EQ(point.y(), 8);
  ZVSize size(tagSIZE{1, 2});
  static_cast<tagSIZE&>(size).cy = -5;
  EXPECT_EQ(size.height(), -5);
  const ZVSize& constant = size;
  EXPECT_EQ(static_cast<const tagSIZE&>(constant).cx, 1);

  point.move(size);
  point.move(-1, 1);
  EXPECT_EQ(point.coordinate(ZV_ORIENTATION_HORIZONTAL), 7);
  EXPECT_EQ(point.coordinate(ZV_ORIENTATION_VERTICAL), 4);
  EXPECT_EQ(point.coordinate(static_cast<ZVOrientationEnum>(2), 9), 9);
  EXPECT_EQ(point.x(), 9);
  EXPECT_EQ(ZVPoint::distance(0, 0, 30000000, 40000000), 50000000.0);
  EXPECT_EQ(ZVPoint::distanceSquare(kMin, 0, kMax, 0), 1.0);  // the difference wraps
}

TEST(Point, DirectionsAgreeWithTheSigns) {
  for (int32_t dx = -3; dx <= 3; ++dx) {
    for (int32_t dy = -3; dy <= 3; ++dy) {
      const ZVPoint from(5, -2);
      const ZVPoint to(5 + dx, -2 + dy);
      ZVDirectionEnum exact = ZV_DIRECTION_NONE;
      if (dy == 0 && dx) exact = dx > 0 ? ZV_DIRECTION_RIGHT : ZV_DIRECTION_LEFT;
      if (dx == 0 && dy) exact = dy > 0 ? ZV_DIRECTION_UP : ZV_DIRECTION_DOWN;
      EXPECT_EQ(from.direction(to), exact);
      const bool steep = dy * dy > dx * dx;
      EXPECT_EQ(from.roughDirection(to), steep ? (dy > 0 ? ZV_DIRECTION_UP : ZV_DIRECTION_DOWN)
                                               : (dx >= 0 ? ZV_DIRECTION_RIGHT : ZV_DIRECTION_LEFT));
    }
  }
}

// Exact models in integers.

bool onSegment(P p, P a, P b) {
  if (p.x < std::min(a.x, b.x) || p.x > std::max(a.x, b.x)) return false;
  if (p.y < std::min(a.y, b.y) || p.y > std::max(a.y, b.y)) return false;
  const int64_t dx = b.x - a.x;
  const int64_t dy = b.y - a.y;
  const int64_t cross = dx * (p.y - a.y) - dy * (p.x - a.x);
  return (dx == 0 && dy == 0) || 5 * cross * cross < dx * dx + dy * dy;
}

int64_t turn(P a, P b, P p) { return (b.x - a.x) * (p.y - a.y) - (b.y - a.y) * (p.x - a.x); }

int64_t roundedQuotient(int64_t n, int64_t d) {
  if (d < 0) n = -n, d = -d;
  const int64_t twice = 2 * n + d;
  return twice >= 0 ? twice / (2 * d) : -((-twice + 2 * d - 1) / (2 * d));
}

// The hit of a-b with c-d in a; the crossing by its parameter along a-b.
bool segmentsMeet(P& a, P b, P c, P d) {
  for (P end : {c, d}) {
    if (onSegment(end, a, b)) return a = end, true;
  }
  if (onSegment(a, c, d)) return true;
  if (onSegment(b, c, d)) return a = b, true;
  const int64_t sideC = turn(a, b, c);
  const int64_t sideD = turn(a, b, d);
  const int64_t sideA = turn(c, d, a);
  const int64_t sideB = turn(c, d, b);
  if (sideC * sideD >= 0 || sideA * sideB >= 0) return false;
  const int64_t span = sideA - sideB;
  a = {roundedQuotient(a.x * span + (b.x - a.x) * sideA, span),
       roundedQuotient(a.y * span + (b.y - a.y) * sideA, span)};
  return true;
}

int32_t i32(int64_t v) { return static_cast<int32_t>(v); }

TEST(Segment, IntersectionAgreesWithExactArithmetic) {
  Lattice touching(1, 4);
  Lattice wide(2, 40);
  for (int round = 0; round < 200000; ++round) {
    SCOPED_TRACE(round);
    Lattice& lattice = round % 2 ? touching : wide;
    const P a = lattice.point(), b = lattice.point(), c = lattice.point(), d = lattice.point();
    ASSERT_EQ(ZVPoint::pointInSegment(i32(a.x), i32(a.y), i32(b.x), i32(b.y), i32(c.x), i32(c.y)),
              onSegment(a, b, c));

    P expected = a;
    const bool meets = segmentsMeet(expected, b, c, d);
    int32_t x = i32(a.x);
    int32_t y = i32(a.y);
    ASSERT_EQ(ZVPoint::segmentsIntersect(x, y, i32(b.x), i32(b.y), i32(c.x), i32(c.y), i32(d.x), i32(d.y)),
              meets);
    ASSERT_EQ(x, expected.x);
    ASSERT_EQ(y, expected.y);

    auto real = [](int64_t v) { return static_cast<double>(v); };
    double rx = real(a.x);
    double ry = real(a.y);
    ASSERT_EQ(
        ZVPoint::segmentsIntersect(rx, ry, real(b.x), real(b.y), real(c.x), real(c.y), real(d.x), real(d.y)),
        meets);
    ASSERT_EQ(roundHalfUp(rx), expected.x);
    ASSERT_EQ(roundHalfUp(ry), expected.y);
  }
}

TEST(Segment, ToleranceIsAStrictDistanceInsideTheBox) {
  EXPECT_EQ(ZVPoint::pointInSegment(1, 0, 0, 0, 10, 1), 1);
  EXPECT_EQ(ZVPoint::pointInSegment(5, 0, 0, 0, 10, 1), 0);
  EXPECT_EQ(ZVPoint::pointInSegment(5, 2, 0, 0, 10, 1), 0);
  EXPECT_EQ(ZVPoint::pointInSegment(1, 1, 0, 0, 1, 2), 0);  // the squared distance is exactly 0.2
  EXPECT_EQ(ZVPoint::pointInSegment(3, 3, 3, 3, 3, 3), 1);
  EXPECT_EQ(ZVPoint::pointInSegment(3, 4, 3, 3, 3, 3), 0);
  double x = 0.0;
  double y = 0.0;
  EXPECT_EQ(ZVPoint::segmentsIntersect(x, y, 3.0, 2.0, 0.0, 2.0, 3.0, 0.0), 1);
  EXPECT_EQ(x, 1.5);
  EXPECT_EQ(y, 1.0);
}

// An evaluation answers exactly where x lies in its reach, never for u1 = u2, and the answer lies on the
// line.
TEST(Segment, EvaluationAtXAndAtYAreTheSameWithAxesExchanged) {
  Lattice lattice(3, 5);
  for (int round = 0; round < 50000; ++round) {
    SCOPED_TRACE(round);
    const P a = lattice.point(), b = lattice.point();
    const double u = lattice.number() / 2.0;
    const int32_t x1 = i32(a.x), y1 = i32(a.y), x2 = i32(b.x), y2 = i32(b.y);
    const double fraction = x1 == x2 ? 0.0 : (u - x1) / (x2 - x1);
    const bool line = x1 != x2;
    const bool expected[3] = {line, line && fraction >= 0.0, line && fraction >= 0.0 && fraction <= 1.0};
    decltype(&ZVPoint::lineAtX) atX[] = {ZVPoint::lineAtX, ZVPoint::rayAtX, ZVPoint::segmentAtX};
    decltype(&ZVPoint::lineAtY) atY[] = {ZVPoint::lineAtY, ZVPoint::rayAtY, ZVPoint::segmentAtY};
    for (int kind = 0; kind < 3; ++kind) {
      double v = 999.0;
      ASSERT_EQ(atX[kind](x1, y1, x2, y2, u, v), expected[kind]);
      if (expected[kind]) {
        ASSERT_NEAR(v, y1 + (y2 - y1) * fraction, 1e-12);
        if (u == x1 || u == x2) {
          ASSERT_EQ(v, u == x1 ? y1 : y2);
        }
      } else {
        ASSERT_EQ(v, 999.0);
      }
      double exchanged = 999.0;
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
