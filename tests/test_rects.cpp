#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

#include "tests/support/plane.h"
#include "utils/zvrect.h"

namespace {

// A plain model of a rectangle and of its meeting with lines, exact in integers.

using Hits = Points;

struct Box {
  int64_t left, top, right, bottom;
  bool operator==(const Box&) const = default;

  bool holds(P p) const { return left <= p.x && p.x <= right && bottom <= p.y && p.y <= top; }
  bool holdsInside(P p) const { return left < p.x && p.x < right && bottom < p.y && p.y < top; }
  bool meetsX(const Box& o) const { return std::max(left, o.left) <= std::min(right, o.right); }
  bool meetsY(const Box& o) const { return std::max(bottom, o.bottom) <= std::min(top, o.top); }
  bool meets(const Box& o) const { return meetsX(o) && meetsY(o); }
  bool covers(const Box& o) const { return holds({o.left, o.bottom}) && holds({o.right, o.top}); }
  Box common(const Box& o) const {
    return {std::max(left, o.left), std::min(top, o.top), std::min(right, o.right),
            std::max(bottom, o.bottom)};
  }
};

Box boxOf(P a, P b) {
  return {std::min(a.x, b.x), std::max(a.y, b.y), std::max(a.x, b.x), std::min(a.y, b.y)};
}

template <class Rect>
Box boxOf(const Rect& r) {
  return {r.left(), r.top(), r.right(), r.bottom()};
}

template <class Rect>
Rect rectOf(const Box& b) {
  return Rect(i32(b.right), i32(b.top), i32(b.left), i32(b.bottom));
}

class Lattice : public Random {
 public:
  using Random::Random;
  void next(int64_t wide = 30) { reach_ = from(0, 3) ? 4 : wide; }
  int32_t number() { return i32(from(-reach_, reach_)); }
  P point() { return Random::point(reach_); }
  Box box() {
    const P a = point();
    return boxOf(a, point());
  }

 private:
  int64_t reach_ = 4;
};

struct Fraction {
  int64_t n, d;
  Fraction(int64_t over, int64_t under) : n(under < 0 ? -over : over), d(under < 0 ? -under : under) {}
  bool within(int64_t low, int64_t high) const { return low * d <= n && n <= high * d; }
  bool strictlyWithin(int64_t low, int64_t high) const { return low * d < n && n < high * d; }
  int64_t rounded() const { return divideHalfUp(n, d); }
};

// The hits of the line a-b on the sides, those that lie between the given parts of the way from a to b. Top
// and bottom own the corners, and a side that lies on another one counts once.
Hits lineHits(const Box& r, P a, P b, int64_t from = -1000, int64_t to = 1000) {
  const int64_t dx = b.x - a.x, dy = b.y - a.y;
  Hits hits;
  for (int64_t y : {r.top, r.bottom}) {
    if (dy == 0 || (y == r.bottom && r.top == r.bottom && !hits.empty())) continue;
    const Fraction x(a.x * dy + dx * (y - a.y), dy);
    if (x.within(r.left, r.right) && Fraction(y - a.y, dy).within(from, to)) hits.push_back({x.rounded(), y});
  }
  bool leftHit = false;
  for (int64_t x : {r.left, r.right}) {
    if (dx == 0 || (x == r.right && r.left == r.right && leftHit)) continue;
    const Fraction y(a.y * dx + dy * (x - a.x), dx);
    if (!(dy ? y.strictlyWithin(r.bottom, r.top) : y.within(r.bottom, r.top))) continue;
    leftHit = true;
    if (Fraction(x - a.x, dx).within(from, to)) hits.push_back({x, y.rounded()});
  }
  return hits;
}

Hits withoutRepeat(P a, P b) { return a == b ? Hits{a} : Hits{a, b}; }

bool liesOnSide(int64_t a, int64_t b, int64_t low, int64_t high) { return a == b && (a == low || a == high); }

Hits segmentHits(const Box& r, P a, P b) {
  const Box s = boxOf(a, b);
  if (!r.meets(s)) return {};
  const Box common = r.common(s);
  if (liesOnSide(a.x, b.x, r.left, r.right)) return withoutRepeat({a.x, common.bottom}, {a.x, common.top});
  if (liesOnSide(a.y, b.y, r.bottom, r.top)) return withoutRepeat({common.left, a.y}, {common.right, a.y});
  return lineHits(r, a, b, 0, 1);
}

P farAlong(P a, P b) { return {a.x + 1000 * (b.x - a.x), a.y + 1000 * (b.y - a.y)}; }

Hits rayHits(const Box& r, P a, P b) {
  if (!r.meets(boxOf(a, farAlong(a, b)))) return {};
  if (liesOnSide(a.x, b.x, r.left, r.right)) {
    return withoutRepeat({a.x, std::clamp(a.y, r.bottom, r.top)}, {a.x, a.y >= b.y ? r.bottom : r.top});
  }
  if (liesOnSide(a.y, b.y, r.bottom, r.top)) {
    return withoutRepeat({std::clamp(a.x, r.left, r.right), a.y}, {a.x >= b.x ? r.left : r.right, a.y});
  }
  Hits hits = lineHits(r, a, b, 0, 1000);
  auto square = [a](P h) { return (h.x - a.x) * (h.x - a.x) + (h.y - a.y) * (h.y - a.y); };
  std::stable_sort(hits.begin(), hits.end(), [&](P p, P q) { return square(p) < square(q); });
  return hits;
}

// Not all corners lie strictly on one side of the line.
bool lineMeets(const Box& r, P a, P b) {
  int sides = 0;
  for (P c : {P{r.left, r.top}, P{r.right, r.top}, P{r.left, r.bottom}, P{r.right, r.bottom}}) {
    const int64_t side = turn(a, b, c);
    sides |= side > 0 ? 1 : side < 0 ? 2 : 3;
  }
  return sides == 3;
}
bool segmentMeets(const Box& r, P a, P b) { return r.meets(boxOf(a, b)) && lineMeets(r, a, b); }

template <class Rect>
class Rects : public testing::Test {};
using BothRects = testing::Types<ZVInternalRect, ZVRect>;
TYPED_TEST_SUITE(Rects, BothRects);

TYPED_TEST(Rects, SingleCases) {
  TypeParam r;
  EXPECT_EQ(boxOf(r), (Box{-20, 20, 20, -20}));
  EXPECT_EQ(boxOf(TypeParam(5, 4)), (Box{-2, 2, 3, -2}));
  EXPECT_EQ(boxOf(TypeParam(ZVPoint(10, 10), ZVSize(5, 4))), (Box{8, 12, 13, 8}));
  EXPECT_EQ(boxOf(TypeParam(ZVPoint(10, 20), ZVPoint(3, 7))), (Box{3, 20, 10, 7}));
  r.set(1, 9, 5, 2);
  EXPECT_EQ(boxOf(r), (Box{1, 9, 5, 2}));
  const int32_t sides[] = {5, 9, 1, 2, 0};
  for (int side = 0; side < 5; ++side) {
    EXPECT_EQ(r.sideCoordinate(static_cast<ZVSideEnum>(side)), sides[side]);
  }
  EXPECT_EQ(r.area(), 28);
  EXPECT_EQ(r.diagonal(), 8);
  r.scale(-1);
  r.scale(-1L);
  r.scale(-0.5);
  EXPECT_EQ(boxOf(r), (Box{1, 9, 5, 2}));
  r.size(ZVSize(r.dimension(ZV_ORIENTATION_HORIZONTAL), r.dimension(ZV_ORIENTATION_VERTICAL)));
  r.scale(2L);
  EXPECT_EQ(boxOf(r), (Box{-1, 12, 7, -2}));
  EXPECT_EQ(r.isZero(), 0);
  r.setZero();
  EXPECT_EQ(r.isZero(), 1);
  EXPECT_EQ(TypeParam(0, 0, kMax, kMax).rightHalfWidth(), 1 << 30);
  EXPECT_EQ(TypeParam(0, 0, kMax, kMax).topHalfHeight(), 1 << 30);
}

TYPED_TEST(Rects, ChangesKeepCentreAndSizeApart) {
  Lattice lattice(1);
  for (int round = 0; round < 20000; ++round) {
    SCOPED_TRACE(round);
    lattice.next();
    const Box b = lattice.box();
    TypeParam r = rectOf<TypeParam>(b);
    ASSERT_EQ(boxOf(r), b);
    ASSERT_EQ(boxOf(ZVRect(ZVInternalRect(r))), b);
    const int32_t width = r.width(), height = r.height();
    ASSERT_EQ(boxOf(r), (Box{r.x() - r.leftHalfWidth(), r.y() + r.topHalfHeight(), r.x() + r.rightHalfWidth(),
                             r.y() - r.bottomHalfHeight()}));
    ASSERT_EQ(r.leftHalfWidth(), width / 2);
    ASSERT_EQ(r.bottomHalfHeight(), height / 2);
    ASSERT_EQ(boxOf(place(r.bottomRight()), place(r.topLeft())), b);
    ASSERT_EQ(boxOf(place(r.bottomLeft()), place(r.topRight())), b);

    const P centre = place(r.center());
    const int32_t v = lattice.number(), w = lattice.number();
    const P expected{v < 0 ? width : v, w < 0 ? height : w};
    ASSERT_EQ(r.width(v), expected.x);
    ASSERT_EQ(r.dimension(ZV_ORIENTATION_VERTICAL, w), expected.y);
    ASSERT_EQ(place(r.size()), expected);
    ASSERT_EQ(place(r.center()), centre);

    const ZVPoint at = r.center();
    r.center(ZVPoint(7, -8));
    r.move(ZVSize(at.x() - 7, at.y()));
    r.move(0, 8);
    ASSERT_EQ(place(r.center()), centre);
    ASSERT_EQ(r.x(v), v);
    ASSERT_EQ(r.y(w), w);
    ASSERT_EQ(place(r.center()), (P{v, w}));
    r.setLeftRight(v, w);
    r.setBottomTop(3, 2);
    ASSERT_EQ(place(r.size()), (P{v <= w ? w - v : expected.x, expected.y}));
  }
}

TYPED_TEST(Rects, CombineWithOthersAndWithPoints) {
  Lattice lattice(2);
  for (int round = 0; round < 20000; ++round) {
    SCOPED_TRACE(round);
    lattice.next();
    const Box a = lattice.box(), b = lattice.box();
    const P p = lattice.point();
    const ZVPoint at = point(p);
    const TypeParam r = rectOf<TypeParam>(a), other = rectOf<TypeParam>(b);
    ASSERT_EQ(r.intersectsRectXRange(other), a.meetsX(b));
    ASSERT_EQ(r.intersectsRectYRange(other), a.meetsY(b));
    ASSERT_EQ(r.intersectsRect(other), a.meets(b));
    ASSERT_EQ(r.encloses(other), a.covers(b));
    ASSERT_EQ(r.enclosesXRange(other), a.left <= b.left && b.right <= a.right);
    ASSERT_EQ(r.enclosesYRange(other), a.bottom <= b.bottom && b.top <= a.top);
    ASSERT_EQ(r.encloses(at.x(), at.y(), other.left(), other.top()), a.holds(p) && a.holds({b.left, b.top}));
    ASSERT_EQ(r.within(at), a.holds(p));
    ASSERT_EQ(r.withinInterior(at), a.holdsInside(p));
    ASSERT_EQ(r.onBoundary(at), a.holds(p) && !a.holdsInside(p));

    const Box both{std::min(a.left, b.left), std::max(a.top, b.top), std::max(a.right, b.right),
                   std::min(a.bottom, b.bottom)};
    const Box none{0, 0, 0, 0};
    const bool zeroIsEmpty = std::is_same_v<TypeParam, ZVRect>;
    TypeParam united = r, common = r, grown = r;
    united |= other;
    ASSERT_EQ(boxOf(united), zeroIsEmpty && a == none ? b : zeroIsEmpty && b == none ? a : both);
    common &= other;
    ASSERT_EQ(boxOf(common), a.meets(b) ? a.common(b) : none);
    ASSERT_EQ(grown.updateBounds(&other), both != a);
    ASSERT_EQ(boxOf(grown), both);
    ASSERT_EQ(grown.updateBounds(&at), !both.holds(p));
    ASSERT_EQ(grown.within(at), 1);
    ASSERT_EQ(grown.updateBounds(&at), 0);
  }
}

// The hits that a question finds. Where there are less than two, points stay.
template <class Question>
Hits ask(P a, P b, Question question) {
  ZVPoint p = point(a), q = point(b);
  const int count = question(p, q);
  if (count < 1) {
    EXPECT_EQ(place(p), a);
  }
  if (count < 2) {
    EXPECT_EQ(place(q), b);
  }
  const Hits hits{place(p), place(q)};
  return Hits(hits.begin(), hits.begin() + count);
}

TYPED_TEST(Rects, MeetLinesSegmentsAndRaysAsExactArithmeticSays) {
  Lattice lattice(3);
  for (int round = 0; round < 200000; ++round) {
    SCOPED_TRACE(round);
    lattice.next(round % 2 ? 30 : 1 << 20);
    const Box box = lattice.box();
    const P a = lattice.point(), b = lattice.point();
    if (a == b) continue;
    const TypeParam r = rectOf<TypeParam>(box);
    ASSERT_EQ(ask(a, b, [&](auto&... points) { return r.intersectsLine(points...); }), lineHits(box, a, b));
    ASSERT_EQ(ask(a, b, [&](auto&... points) { return r.intersectsSegment(points...); }),
              segmentHits(box, a, b));
    ASSERT_EQ(ask(a, b, [&](auto&... points) { return r.intersectsRay(points...); }), rayHits(box, a, b));
    ASSERT_EQ(r.overlapsLine(point(a), point(b)), lineMeets(box, a, b));
    ASSERT_EQ(r.overlapsSegment(point(a), point(b)), segmentMeets(box, a, b));
    ASSERT_EQ(r.overlapsRay(point(a), point(b)), segmentMeets(box, a, farAlong(a, b)));
  }
}

// The two classes part ways where a line has no direction.
TYPED_TEST(Rects, TakeCoincidentPointsForAVerticalLineOrNone) {
  const int isLine = std::is_same_v<TypeParam, ZVInternalRect>;
  const TypeParam r(-2, -3, 3, 1);
  for (P p{-4, 0}; p.x <= 4; ++p.x) {
    for (p.y = -4; p.y <= 4; ++p.y) {
      SCOPED_TRACE(p);
      const bool inX = -2 <= p.x && p.x <= 3, onVertical = p.x == -2 || p.x == 3;
      const bool in = inX && -3 <= p.y && p.y <= 1;
      ZVPoint line = point(p), segment = line, ray = line, q = line;
      EXPECT_EQ(r.overlapsLine(line, q), isLine && inX);
      EXPECT_EQ(r.overlapsSegment(line, q), in);
      EXPECT_EQ(r.overlapsRay(line, q), isLine && in);
      EXPECT_EQ(r.intersectsSegment(segment, q), in && (onVertical || p.y == -3 || p.y == 1));
      // Along a vertical side the ray runs down, where its start may be its end.
      EXPECT_EQ(r.intersectsRay(ray, q), isLine * in * (onVertical && p.y == -3 ? 1 : 2));
      q = point(p);
      EXPECT_EQ(r.intersectsLine(line, q), isLine * inX * 2);
    }
  }
}

TYPED_TEST(Rects, NearestPointAndClosestSideAgreeWithASearch) {
  Lattice lattice(4);
  for (int round = 0; round < 50000; ++round) {
    SCOPED_TRACE(round);
    lattice.next();
    const Box b = lattice.box();
    const P p = lattice.point();
    const TypeParam r = rectOf<TypeParam>(b);
    // By the order of the ties: the first nearest of these wins.
    P expected{std::clamp(p.x, b.left, b.right), std::clamp(p.y, b.bottom, b.top)};
    if (b.holdsInside(p)) {
      int64_t least = kMax;
      for (P q : {P{p.x, b.bottom}, P{p.x, b.top}, P{b.left, p.y}, P{b.right, p.y}}) {
        const int64_t far = std::abs(q.x - p.x) + std::abs(q.y - p.y);
        if (far < least) expected = q, least = far;
      }
    }
    ZVPoint moved = point(p);
    ASSERT_EQ(r.nearestPoint(moved), 1);
    ASSERT_EQ(place(moved), expected);

    int nearest = 0;
    auto distance = [&](int side) {
      return std::abs(r.sideCoordinate(static_cast<ZVSideEnum>(side)) - (side % 2 ? p.y : p.x));
    };
    for (int side = 1; side < 4; ++side) nearest = distance(side) < distance(nearest) ? side : nearest;
    ASSERT_EQ(r.closestSideWithin(point(p)), nearest);
    const int64_t gapX = std::max(b.left - p.x, p.x - b.right);
    const int64_t gapY = std::max(b.bottom - p.y, p.y - b.top);
    const int level = p.x < b.left ? ZV_SIDE_LEFT : ZV_SIDE_RIGHT;
    const int upright = p.y < b.bottom ? ZV_SIDE_BOTTOM : ZV_SIDE_TOP;
    int closest = nearest;
    if (gapX > 0 && gapY <= 0) closest = level;
    if (gapY > 0 && gapX <= 0) closest = upright;
    if (gapX > 0 && gapY > 0 && std::is_same_v<TypeParam, ZVRect>) closest = gapX >= gapY ? level : upright;
    ASSERT_EQ(r.closestSide(point(p)), closest);
  }
}

TEST(Rect, ConvertsScalesAndInflates) {
  ZVRect r(1, 2, 3, 5);
  const tagRECT* view = r;
  EXPECT_EQ(view, static_cast<const tagRECT*>(r));
  EXPECT_EQ(boxOf(P{view->left, view->top}, P{view->right, view->bottom}), boxOf(r));
  const tagRECT screen{1, 2, 3, 5};  // its top is the smaller y
  EXPECT_EQ(boxOf(ZVRect(&screen)), boxOf(r));
  ZVRect* clone = r.cloneObject();
  EXPECT_EQ(boxOf(*clone), boxOf(r));
  delete clone;
  EXPECT_EQ(boxOf(r.calculateUnion(ZVRect(9, 9, 9, 9))), (Box{1, 9, 9, 2}));
  EXPECT_EQ(boxOf(r.calculateIntersection(ZVRect(3, 5, 9, 9))), (Box{3, 5, 3, 5}));

  ZVInternalRect rounds(3, 5);
  ZVRect truncates(3, 5);
  rounds.scale(1.5);
  truncates.scale(1.5);
  EXPECT_EQ(place(rounds.size()), (P{5, 8}));
  EXPECT_EQ(place(truncates.size()), (P{4, 7}));

  r.set(0, 4, 10, 0);
  EXPECT_EQ(boxOf(r.inflatedBy(-10, 1)), boxOf(r));
  EXPECT_EQ(boxOf(r.inflatedBy(1, -3)), boxOf(r));
  EXPECT_EQ(boxOf(r.inflatedBy(ZVSize(-5, 1))), (Box{5, 5, 5, -1}));
  EXPECT_EQ(boxOf(ZVRect(-3, 0, 0, 1).inflate(2, 3).inflate(ZVSize(-1, 0))), (Box{-4, 4, 1, -3}));
}

// The side on which a route leaves a for b.
int sideForRouting(const Box& a, const Box& b, bool horizontalFirst) {
  const int level = a.left > b.right ? ZV_SIDE_LEFT : ZV_SIDE_RIGHT;
  const int upright = a.bottom > b.top ? ZV_SIDE_BOTTOM : ZV_SIDE_TOP;
  if (!a.meetsX(b) && !a.meetsY(b)) return horizontalFirst ? level : upright;
  if (!a.meets(b)) return a.meetsX(b) ? upright : level;
  // How far b reaches beyond a at each side.
  const int64_t reach[] = {b.right - a.right, b.top - a.top, a.left - b.left, a.bottom - b.bottom};
  int best = ZV_SIDE_LEFT;
  if (a.covers(b) || b.covers(a)) {
    best = ZV_SIDE_BOTTOM;
    for (int side : {2, 1, 0}) best = std::abs(reach[side]) < std::abs(reach[best]) ? side : best;
    return best;
  }
  int64_t most = 0;
  for (int group : {2, 3, 0, 1}) {
    for (int side : {group % 2 ? 0 : 1, group % 2 ? 2 : 3}) {
      const int64_t value = std::min(reach[side], -reach[group]);
      if (value > most) best = side, most = value;
    }
  }
  return best;
}

TEST(Routing, PicksTheSideOfTheTable) {
  Lattice lattice(6);
  for (int round = 0; round < 100000; ++round) {
    SCOPED_TRACE(round);
    lattice.next();
    const Box a = lattice.box(), b = lattice.box();
    const ZVRect r = rectOf<ZVRect>(a), other = rectOf<ZVRect>(b);
    ASSERT_EQ(r.sideForRouting(other, 2), sideForRouting(a, b, true));
    ASSERT_EQ(r.sideForRouting(other, 0), sideForRouting(a, b, false));

    const P p = lattice.point();
    const int direction = round % 4;
    const bool inX = a.left <= p.x && p.x <= a.right;
    const bool inY = a.bottom <= p.y && p.y <= a.top;
    const bool upright = (inX && !inY) || (inX == inY && direction % 2 == 0);
    const int side = upright ? (p.y < a.bottom ? ZV_SIDE_BOTTOM : ZV_SIDE_TOP)
                             : (p.x < a.left ? ZV_SIDE_LEFT : ZV_SIDE_RIGHT);
    ASSERT_EQ(r.sideForRouting(point(p), static_cast<ZVDirectionEnum>(direction)),
              inX && inY ? direction : side);
  }
}

TEST(Routing, PointsLeaveTheRectangleAlongTheirLine) {
  Lattice lattice(7);
  for (int round = 0; round < 100000; ++round) {
    SCOPED_TRACE(round);
    lattice.next();
    const Box b = lattice.box();
    const P p = lattice.point(), q = lattice.point();
    const ZVRect r = rectOf<ZVRect>(b);
    ZVPoint out = point(p), other = out;
    r.getPointOutsideRect(out, point(q));
    const int result = r.pointInOtherSide(other, point(q));
    const int64_t dx = p.x - q.x, dy = p.y - q.y;
    if (!dx || !dy) {
      ASSERT_EQ(place(out), (P{dy       ? p.x
                               : dx < 0 ? b.left
                                        : b.right,
                               dy ? (dy > 0 ? b.top : b.bottom) : p.y}));
      ASSERT_EQ(result, 1);
      ASSERT_EQ(place(other), p);
      continue;
    }
    // The least number of steps that passes the side, measured on the axis that the slope selects.
    const bool level =
        b.top > b.bottom && std::abs(dx) * (b.top - b.bottom) >= (b.right - b.left) * std::abs(dy);
    const int64_t way = level ? (dx > 0 ? b.right : b.left) - p.x : (dy > 0 ? b.top : b.bottom) - p.y;
    const int64_t steps = std::abs(way) / std::abs(level ? dx : dy) + 1;
    ASSERT_EQ(place(out), (P{p.x + steps * dx, p.y + steps * dy}));
    ASSERT_FALSE(b.holds(p) && b.holds(place(out)));

    const Hits hits = lineHits(b, p, q);
    ASSERT_EQ(result, hits.size() == 2);
    ASSERT_EQ(place(other), result == 0 ? q : hits[1] == q ? hits[0] : hits[1]);
  }
}

TEST(PerMil, StatesAnOffsetRelativeToTheHalfSizeOnItsSide) {
  ZVPerMil m;
  ZVSize s(5, 0);
  EXPECT_EQ(ZVRect(10, 10).setPerMil(s, m), &m);
  EXPECT_EQ(m.x(), 1000);
  EXPECT_EQ(m.y(), 0);
  m.resize(ZVSize(65537, -1));
  EXPECT_EQ(m.width(), 1);
  ZVPerMil* clone = m.cloneObject();
  EXPECT_EQ(clone->height(), -1);
  EXPECT_GE(clone->sizeOf(), 8);
  delete clone;

  Lattice lattice(8);
  for (int round = 0; round < 20000; ++round) {
    SCOPED_TRACE(round);
    lattice.next();
    const ZVRect r = rectOf<ZVRect>(lattice.box());
    const ZVPoint p = point(lattice.point());
    ASSERT_EQ(r.setOffset(p, s), &s);
    ASSERT_EQ(place(s), (P{p.x() - r.x(), p.y() - r.y()}));
    r.setPerMil(p, m);
    // Back, with the sign of the offset: at most the unit is lost that truncation costs.
    ZVSize back(s);
    ASSERT_EQ(r.setOffset(m, back), &back);
    const int32_t half[] = {s.x() < 0 ? r.leftHalfWidth() : r.rightHalfWidth(),
                            s.y() < 0 ? r.bottomHalfHeight() : r.topHalfHeight()};
    const int32_t offset[] = {s.x(), s.y()}, perMil[] = {m.x(), m.y()}, returned[] = {back.x(), back.y()};
    for (int axis : {0, 1}) {
      const int32_t wide = half[axis] ? offset[axis] * 1000 / half[axis] : 500;
      ASSERT_EQ(perMil[axis], static_cast<int16_t>(wide));
      ASSERT_LE(half[axis] && wide == perMil[axis] ? std::abs(offset[axis] - returned[axis]) : 0, 1);
    }
  }
}

// Whatever the parts, what is left of the outer size is the inner one; the choice among several is settled.
TEST(Spacing, AddsAConstantAndAPartAndLeavesTheInnerSize) {
  EXPECT_EQ(ZVSpacing(10, 250).combined(100L), 35);
  EXPECT_EQ(ZVSpacing(10, 250).combined(100.0), 35.0);
  EXPECT_EQ(ZVSpacing(0, 333).combined(10), 3);
  EXPECT_EQ(ZVSpacing(0, -333).combined(10), -3);
  for (int p = 0; p < 1000; p += 37) {
    for (int q = 0; p + q < 1000; q += 41) {
      for (int32_t inner = -2; inner < 200; ++inner) {
        const ZVSpacing a(3, static_cast<int16_t>(p)), b(-1, static_cast<int16_t>(q));
        const int32_t outer = ZVSpacing::calculateOuterSize(a, b, inner);
        ASSERT_EQ(outer - (outer * p / 1000 + outer * q / 1000), std::max(inner + 2, 0)) << p << ' ' << q;
      }
    }
  }
  EXPECT_EQ(ZVSpacing::calculateOuterSize(ZVSpacing(0, 100), ZVSpacing(0, 100), 80), 98);
  EXPECT_EQ(ZVSpacing::calculateOuterSize(ZVSpacing(0, 500), ZVSpacing(), 10), 19);
  EXPECT_EQ(ZVSpacing::calculateOuterSize(ZVSpacing(), ZVSpacing(), 1000000000), 1000000000);
  // Outside the contract it ends, whatever it gives.
  for (int part : {-32768, -1, 500, 999, 1000, 32767}) {
    for (int32_t inner : {1, 77, kMax}) {
      ZVSpacing::calculateOuterSize(ZVSpacing(kMax, static_cast<int16_t>(part)), ZVSpacing(0, 500), inner);
    }
  }
}

// What overflows is the caller's matter, but never undefined.
TYPED_TEST(Rects, AnswerAtExtremeCoordinates) {
  const int32_t values[] = {kMin, kMin + 1, -1, 0, 1, kMax};
  for (int i = 0; i < 6 * 6 * 6 * 6; ++i) {
    TypeParam r(values[i % 6], values[i / 6 % 6], kMax, kMax - 1);
    ZVPoint p(values[i / 36 % 6], values[i / 216]), q(p.y(), r.left()), s(p);
    r.intersectsLine(p, q);
    r.intersectsSegment(p, q);
    r.intersectsRay(p, q);
    r.overlapsRay(p, q);
    r.closestSide(q);
    EXPECT_EQ(r.nearestPoint(p), 1);
    r.move(s.x(), s.y());
    r.scale(1e300);
    r.scale(s.x());
    r.updateBounds(&q);
    r.diagonal();
    r.area();
  }
}

}  // namespace
