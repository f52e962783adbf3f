#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <vector>

#include "utils/zvirect.h"
#include "utils/zvpermil.h"
#include "utils/zvrect.h"

namespace {

constexpr int32_t kMax = std::numeric_limits<int32_t>::max();
constexpr int32_t kMin = std::numeric_limits<int32_t>::min();

// A plain model of a rectangle and of its meeting with lines, exact in integers.

struct P {
  int64_t x, y;
  bool operator==(const P&) const = default;
};
using Hits = std::vector<P>;

int32_t i32(int64_t v) { return static_cast<int32_t>(v); }
ZVPoint point(P p) { return ZVPoint(i32(p.x), i32(p.y)); }
P place(const ZVPoint& p) { return {p.x(), p.y()}; }

struct Box {
  int64_t left, top, right, bottom;
  bool operator==(const Box&) const = default;

  bool holds(P p) const { return left <= p.x && p.x <= right && bottom <= p.y && p.y <= top; }
  bool holdsInside(P p) const { return left < p.x && p.x < right && bottom < p.y && p.y < top; }
  bool meetsX(const Box& o) const { return std::max(left, o.left) <= std::min(right, o.right); }
  bool meetsY(const Box& o) const { return std::max(bottom, o.bottom) <= std::min(top, o.top); }
  bool meets(const Box& o) const { return meetsX(o) && meetsY(o); }
  bool covers(const Box& o) const { return holds({o.left, o.bottom}) && holds({o.right, o.top}); }
};

Box boxOf(P a, P b) {
  return {std::min(a.x, b.x), std::max(a.y, b.y), std::max(a.x, b.x), std::min(a.y, b.y)};
}

template <class Rect>
Box boxOf(const Rect& r) {
  return {r.left(), r.top(), r.right(), r.bottom()};
}

struct Fraction {
  int64_t n, d;
  Fraction(int64_t over, int64_t under) : n(under < 0 ? -over : over), d(under < 0 ? -under : under) {}
  bool within(int64_t low, int64_t high) const { return low * d <= n && n <= high * d; }
  bool strictlyWithin(int64_t low, int64_t high) const { return low * d < n && n < high * d; }
  int64_t rounded() const {
    const int64_t twice = 2 * n + d;
    return twice >= 0 ? twice / (2 * d) : -((-twice + 2 * d - 1) / (2 * d));
  }
};

// The hits of the line a-b on the sides, those that lie between the given parts of the way from a to b. Top
// and bottom own the corners, and a side that lies on another one counts once.
Hits lineHits(const Box& r, P a, P b, int64_t from = -1000, int64_t to = 1000) {
  const int64_t dx = b.x - a.x;
  const int64_t dy = b.y - a.y;
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
  const Box common{std::max(r.left, s.left), std::min(r.top, s.top), std::min(r.right, s.right),
                   std::max(r.bottom, s.bottom)};
  if (liesOnSide(a.x, b.x, r.left, r.right)) return withoutRepeat({a.x, common.bottom}, {a.x, common.top});
  if (liesOnSide(a.y, b.y, r.bottom, r.top)) return withoutRepeat({common.left, a.y}, {common.right, a.y});
  return lineHits(r, a, b, 0, 1);
}

Hits rayHits(const Box& r, P a, P b) {
  auto clampedTo = [](int64_t low, int64_t v, int64_t high) { return std::min(std::max(low, v), high); };
  const P beyond{a.x + 1000 * (b.x - a.x), a.y + 1000 * (b.y - a.y)};
  if (!r.meets(boxOf(a, beyond))) return {};
  if (liesOnSide(a.x, b.x, r.left, r.right)) {
    return withoutRepeat({a.x, clampedTo(r.bottom, a.y, r.top)}, {a.x, a.y >= b.y ? r.bottom : r.top});
  }
  if (liesOnSide(a.y, b.y, r.bottom, r.top)) {
    return withoutRepeat({clampedTo(r.left, a.x, r.right), a.y}, {a.x >= b.x ? r.left : r.right, a.y});
  }
  Hits hits = lineHits(r, a, b, 0, 1000);
  std::stable_sort(hits.begin(), hits.end(), [a](P p, P q) {
    auto square = [a](P h) { return (h.x - a.x) * (h.x - a.x) + (h.y - a.y) * (h.y - a.y); };
    return square(p) < square(q);
  });
  return hits;
}

// Not all corners lie strictly on one side of the line.
bool lineMeets(const Box& r, P a, P b) {
  int sides = 0;
  for (P c : {P{r.left, r.top}, P{r.right, r.top}, P{r.left, r.bottom}, P{r.right, r.bottom}}) {
    const int64_t turn = (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
    sides |= turn > 0 ? 1 : turn < 0 ? 2 : 3;
  }
  return sides == 3;
}
bool segmentMeets(const Box& r, P a, P b) { return r.meets(boxOf(a, b)) && lineMeets(r, a, b); }

class Lattice {
 public:
  explicit Lattice(unsigned seed) : engine_(seed) {}
  // Mostly so small that ties, touching and empty sizes occur all the time.
  void next() { reach_ = engine_() % 4 ? 4 : 30; }
  int64_t number() { return static_cast<int64_t>(engine_() % unsigned(2 * reach_ + 1)) - reach_; }
  P point() {
    const int64_t x = number();
    return {x, number()};
  }
  Box box() {
    const P a = point();
    return boxOf(a, point());
  }

 private:
  std::mt19937 engine_;
  int reach_ = 4;
};

template <class Rect>
Rect rectOf(const Box& b) {
  return Rect(i32(b.right), i32(b.top), i32(b.left), i32(b.bottom));
}

template <class Rect>
class Rects : public testing::Test {};
using BothRects = testing::Types<ZVInternalRect, ZVRect>;
TYPED_TEST_SUITE(Rects, BothRects);

TYPED_TEST(Rects, StartFortyByFortyAroundZero) {
  TypeParam r;
  EXPECT_EQ(boxOf(r), (Box{-20, 20, 20, -20}));
  EXPECT_EQ(boxOf(TypeParam(5, 4)), (Box{-2, 2, 3, -2}));
  EXPECT_EQ(boxOf(TypeParam(ZVPoint(10, 10), ZVSize(5, 4))), (Box{8, 12, 13, 8}));
  EXPECT_EQ(boxOf(TypeParam(ZVPoint(10, 20), ZVPoint(3, 7))), (Box{3, 20, 10, 7}));
  r.set(1, 9, 5, 2);
  EXPECT_EQ(boxOf(r), (Box{1, 9, 5, 2}));
  EXPECT_EQ(r.sideCoordinate(ZV_SIDE_RIGHT), 5);
  EXPECT_EQ(r.sideCoordinate(ZV_SIDE_TOP), 9);
  EXPECT_EQ(r.sideCoordinate(ZV_SIDE_LEFT), 1);
  EXPECT_EQ(r.sideCoordinate(ZV_SIDE_BOTTOM), 2);
  EXPECT_EQ(r.sideCoordinate(ZV_SIDE_NONE), 0);
  EXPECT_EQ(r.area(), 28);
  EXPECT_EQ(r.diagonal(), 8);
  EXPECT_EQ(r.isZero(), 0);
  r.setZero();
  EXPECT_EQ(r.isZero(), 1);
  EXPECT_EQ(boxOf(r), (Box{0, 0, 0, 0}));
}

TYPED_TEST(Rects, ChangesKeepCentreAndSizeApart) {
  Lattice lattice(1);
  for (int round = 0; round < 20000; ++round) {
    SCOPED_TRACE(round);
    lattice.next();
    const Box b = lattice.box();
    TypeParam r = rectOf<TypeParam>(b);
    ASSERT_EQ(boxOf(r), b);
    const int32_t width = r.width();
    const int32_t height = r.height();
    ASSERT_EQ(r.left(), r.x() - width / 2);
    ASSERT_EQ(r.top(), r.y() + height - height / 2);
    ASSERT_EQ(r.leftHalfWidth() + r.rightHalfWidth(), width);
    ASSERT_EQ(r.bottomHalfHeight() + r.topHalfHeight(), height);
    ASSERT_EQ(r.right(), r.x() + r.rightHalfWidth());
    ASSERT_EQ(r.bottom(), r.y() - r.bottomHalfHeight());
    ASSERT_EQ(place(r.bottomRight()), (P{b.right, b.bottom}));
    ASSERT_EQ(place(r.topLeft()), (P{b.left, b.top}));

    const int32_t centreX = r.x();
    const int32_t centreY = r.y();
    const int32_t newWidth = i32(lattice.number());
    const int32_t newHeight = i32(lattice.number());
    switch (round % 4) {
      case 0:
        r.resize(newWidth, newHeight);
        break;
      case 1:
        r.size(ZVSize(newWidth, newHeight));
        break;
      case 2:
        ASSERT_EQ(r.width(newWidth), newWidth < 0 ? width : newWidth);
        ASSERT_EQ(r.height(newHeight), newHeight < 0 ? height : newHeight);
        break;
      default:
        r.dimension(ZV_ORIENTATION_HORIZONTAL, newWidth);
        r.dimension(ZV_ORIENTATION_VERTICAL, newHeight);
    }
    ASSERT_EQ(r.dimension(ZV_ORIENTATION_HORIZONTAL), newWidth < 0 ? width : newWidth);
    ASSERT_EQ(r.dimension(ZV_ORIENTATION_VERTICAL), newHeight < 0 ? height : newHeight);
    ASSERT_EQ(r.x(), centreX);
    ASSERT_EQ(r.y(), centreY);

    const TypeParam sized(r);
    r.center(point({7, -8}));
    ASSERT_EQ(place(r.center()), (P{7, -8}));
    r.move(ZVSize(centreX - 7, centreY));
    r.move(0, 8);
    ASSERT_EQ(boxOf(r), boxOf(sized));
    r.x(newWidth);
    r.y(newHeight);
    ASSERT_EQ(place(r.center()), (P{newWidth, newHeight}));
    ASSERT_EQ(r.width(), sized.width());
    r.setLeftRight(newWidth, newHeight);
    r.setBottomTop(3, 2);
    ASSERT_EQ(r.width(), newWidth <= newHeight ? newHeight - newWidth : sized.width());
    ASSERT_EQ(r.height(), sized.height());
  }
}

TYPED_TEST(Rects, CombineWithOthersAndWithPoints) {
  Lattice lattice(2);
  for (int round = 0; round < 20000; ++round) {
    SCOPED_TRACE(round);
    lattice.next();
    const Box a = lattice.box(), b = lattice.box();
    const P p = lattice.point();
    const TypeParam r = rectOf<TypeParam>(a), other = rectOf<TypeParam>(b);
    ASSERT_EQ(r.intersectsRectXRange(other), a.meetsX(b));
    ASSERT_EQ(r.intersectsRectYRange(other), a.meetsY(b));
    ASSERT_EQ(r.intersectsRect(other), a.meets(b));
    ASSERT_EQ(r.encloses(other), a.covers(b));
    ASSERT_EQ(r.enclosesXRange(other), a.left <= b.left && b.right <= a.right);
    ASSERT_EQ(r.enclosesYRange(other), a.bottom <= b.bottom && b.top <= a.top);
    ASSERT_EQ(r.encloses(i32(p.x), i32(p.y), i32(b.left), i32(b.top)),
              a.holds(p) && a.holds({b.left, b.top}));
    ASSERT_EQ(r.within(point(p)), a.holds(p));
    ASSERT_EQ(r.withinInterior(point(p)), a.holdsInside(p));
    ASSERT_EQ(r.onBoundary(point(p)), a.holds(p) && !a.holdsInside(p));

    const Box both{std::min(a.left, b.left), std::max(a.top, b.top), std::max(a.right, b.right),
                   std::min(a.bottom, b.bottom)};
    const Box none{0, 0, 0, 0};
    TypeParam united = r;
    united |= other;
    const bool zeroIsEmpty = std::is_same_v<TypeParam, ZVRect>;
    ASSERT_EQ(boxOf(united), zeroIsEmpty && a == none ? b : zeroIsEmpty && b == none ? a : both);
    TypeParam common = r;
    common &= other;
    const Box shared{std::max(a.left, b.left), std::min(a.top, b.top), std::min(a.right, b.right),
                     std::max(a.bottom, b.bottom)};
    ASSERT_EQ(boxOf(common), a.meets(b) ? shared : none);

    TypeParam grown = r;
    ASSERT_EQ(grown.updateBounds(&other), both != a);
    ASSERT_EQ(boxOf(grown), both);
    const ZVPoint at = point(p);
    ASSERT_EQ(grown.updateBounds(&at), !both.holds(p));
    ASSERT_EQ(grown.within(at), 1);
    ASSERT_EQ(grown.updateBounds(&at), 0);
  }
}

// Asks a question about hits and gives the hits, after checking that the points stay without any.
template <class Rect, class Question>
Hits ask(const Rect& r, P a, P b, Question question) {
  ZVPoint p = point(a);
  ZVPoint q = point(b);
  const int count = question(r, p, q);
  const Hits hits{place(p), place(q)};
  for (int i = count; i < 2; ++i) {
    EXPECT_EQ(hits[static_cast<size_t>(i)], i ? b : a);
  }
  return Hits(hits.begin(), hits.begin() + count);
}

TYPED_TEST(Rects, MeetLinesSegmentsAndRaysAsExactArithmeticSays) {
  Lattice lattice(3);
  for (int round = 0; round < 200000; ++round) {
    SCOPED_TRACE(round);
    lattice.next();
    const Box box = lattice.box();
    const P a = lattice.point(), b = lattice.point();
    if (a == b) continue;
    const TypeParam r = rectOf<TypeParam>(box);
    auto line = [](const TypeParam& s, ZVPoint& p, ZVPoint& q) { return s.intersectsLine(p, q); };
    auto segment = [](const TypeParam& s, ZVPoint& p, ZVPoint& q) { return s.intersectsSegment(p, q); };
    auto ray = [](const TypeParam& s, ZVPoint& p, ZVPoint& q) { return s.intersectsRay(p, q); };
    ASSERT_EQ(ask(r, a, b, line), lineHits(box, a, b));
    ASSERT_EQ(ask(r, a, b, segment), segmentHits(box, a, b));
    ASSERT_EQ(ask(r, a, b, ray), rayHits(box, a, b));

    ASSERT_EQ(r.overlapsLine(point(a), point(b)), lineMeets(box, a, b));
    ASSERT_EQ(r.overlapsSegment(point(a), point(b)), segmentMeets(box, a, b));
    const P beyond{a.x + 1000 * (b.x - a.x), a.y + 1000 * (b.y - a.y)};
    ASSERT_EQ(r.overlapsRay(point(a), point(b)), segmentMeets(box, a, beyond));
  }
}

// The two classes part ways where a line has no direction.
TEST(Rect, CoincidentPointsAreAVerticalLineOrNone) {
  for (int32_t x = -4; x <= 4; ++x) {
    for (int32_t y = -4; y <= 4; ++y) {
      const ZVInternalRect internal(-2, -3, 3, 1);
      const ZVRect full(internal);
      const ZVPoint at(x, y);
      const bool inX = -2 <= x && x <= 3;
      const bool in = inX && -3 <= y && y <= 1;
      const bool onSide = in && (x == -2 || x == 3 || y == -3 || y == 1);
      auto hits = [&](auto question) {
        ZVPoint p(at), q(at);
        return question(p, q);
      };
      EXPECT_EQ(internal.overlapsLine(at, at), inX);
      EXPECT_EQ(internal.overlapsSegment(at, at), in);
      EXPECT_EQ(internal.overlapsRay(at, at), in);
      EXPECT_EQ(hits([&](ZVPoint& p, ZVPoint& q) { return internal.intersectsLine(p, q); }), inX ? 2 : 0);
      EXPECT_EQ(hits([&](ZVPoint& p, ZVPoint& q) { return internal.intersectsSegment(p, q); }), onSide);
      // Along a vertical side the ray runs down, where its start may be its end.
      const bool startsAtItsEnd = (x == -2 || x == 3) && y == -3;
      EXPECT_EQ(hits([&](ZVPoint& p, ZVPoint& q) { return internal.intersectsRay(p, q); }),
                in ? (startsAtItsEnd ? 1 : 2) : 0);
      EXPECT_EQ(full.overlapsLine(at, at), 0);
      EXPECT_EQ(full.overlapsSegment(at, at), in);
      EXPECT_EQ(full.overlapsRay(at, at), 0);
      EXPECT_EQ(hits([&](ZVPoint& p, ZVPoint& q) { return full.intersectsLine(p, q); }), 0);
      EXPECT_EQ(hits([&](ZVPoint& p, ZVPoint& q) { return full.intersectsSegment(p, q); }), onSide);
      EXPECT_EQ(hits([&](ZVPoint& p, ZVPoint& q) { return full.intersectsRay(p, q); }), 0);
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

    const int64_t distances[] = {std::abs(b.right - p.x), std::abs(b.top - p.y), std::abs(b.left - p.x),
                                 std::abs(b.bottom - p.y)};
    int nearest = 0;
    for (int side = 1; side < 4; ++side) nearest = distances[side] < distances[nearest] ? side : nearest;
    ASSERT_EQ(r.closestSideWithin(point(p)), nearest);
    const int64_t gapX = std::max(b.left - p.x, p.x - b.right);
    const int64_t gapY = std::max(b.bottom - p.y, p.y - b.top);
    const int horizontal = p.x < b.left ? ZV_SIDE_LEFT : ZV_SIDE_RIGHT;
    const int vertical = p.y < b.bottom ? ZV_SIDE_BOTTOM : ZV_SIDE_TOP;
    int closest = nearest;
    if (gapX > 0 && gapY <= 0) closest = horizontal;
    if (gapY > 0 && gapX <= 0) closest = vertical;
    if (gapX > 0 && gapY > 0 && std::is_same_v<TypeParam, ZVRect>)
      closest = gapX >= gapY ? horizontal : vertical;
    ASSERT_EQ(r.closestSide(point(p)), closest);
  }
}

TEST(Rect, ScaleRoundsOrTruncates) {
  ZVInternalRect internal(3, 5);
  ZVRect full(3, 5);
  internal.scale(1.5);
  full.scale(1.5);
  EXPECT_EQ(internal.width(), 5);
  EXPECT_EQ(internal.height(), 8);
  EXPECT_EQ(full.width(), 4);
  EXPECT_EQ(full.height(), 7);
  full.scale(-1);
  full.scale(-1L);
  full.scale(-0.5);
  internal.scale(-1);
  EXPECT_EQ(full.width(), 4);
  EXPECT_EQ(internal.width(), 5);
  full.scale(2L);
  EXPECT_EQ(full.height(), 14);
}

TEST(Rect, ConvertIntoEachOtherWithoutLoss) {
  Lattice lattice(5);
  for (int round = 0; round < 1000; ++round) {
    const Box b = lattice.box();
    const ZVInternalRect internal = ZVInternalRect(rectOf<ZVRect>(b));
    EXPECT_EQ(boxOf(ZVRect(internal)), b);
    EXPECT_EQ(internal.x(), rectOf<ZVRect>(b).x());
  }
  ZVRect source(1, 2, 3, 5);
  const tagRECT* view = source;
  EXPECT_EQ(view->left, 1);
  EXPECT_EQ(view->top, 5);
  EXPECT_EQ(view->right, 3);
  EXPECT_EQ(view->bottom, 2);
  const tagRECT screen{1, 2, 3, 5};  // its top is the smaller y
  EXPECT_EQ(boxOf(ZVRect(&screen)), boxOf(source));
  ZVRect* clone = source.cloneObject();
  EXPECT_EQ(boxOf(*clone), boxOf(source));
  delete clone;
  EXPECT_EQ(boxOf(source.calculateUnion(ZVRect(9, 9, 9, 9))), (Box{1, 9, 9, 2}));
  EXPECT_EQ(boxOf(source.calculateIntersection(ZVRect(3, 5, 9, 9))), (Box{3, 5, 3, 5}));
}

TEST(Rect, InflateChangesBothSizesOrNone) {
  EXPECT_EQ(boxOf(ZVRect(0, 0, 10, 4).inflatedBy(-10, 1)), (Box{0, 4, 10, 0}));
  EXPECT_EQ(boxOf(ZVRect(0, 0, 10, 4).inflatedBy(1, -3)), (Box{0, 4, 10, 0}));
  EXPECT_EQ(boxOf(ZVRect(0, 0, 10, 4).inflatedBy(ZVSize(-5, 1))), (Box{5, 5, 5, -1}));
  ZVRect odd(-3, 0, 0, 1);
  EXPECT_EQ(boxOf(odd.inflate(2, 3).inflate(ZVSize(-1, 0))), (Box{-4, 4, 1, -3}));
}

// The side on which a route leaves, as a literal table.
int sideForRouting(const Box& a, const Box& b, bool horizontalFirst) {
  const int64_t gapX = std::max(a.left - b.right, b.left - a.right);
  const int64_t gapY = std::max(a.bottom - b.top, b.bottom - a.top);
  const int leftOrRight = a.left > b.right ? ZV_SIDE_LEFT : ZV_SIDE_RIGHT;
  const int bottomOrTop = a.bottom > b.top ? ZV_SIDE_BOTTOM : ZV_SIDE_TOP;
  if (gapX > 0 && gapY > 0) return horizontalFirst ? leftOrRight : bottomOrTop;
  if (gapX > 0) return leftOrRight;
  if (gapY > 0) return bottomOrTop;
  const int64_t right = b.right - a.right, top = b.top - a.top, left = a.left - b.left,
                bottom = a.bottom - b.bottom;
  int best = ZV_SIDE_NONE;
  if (a.covers(b) || b.covers(a)) {
    int64_t least = kMax;
    auto consider = [&](int side, int64_t value) {
      if (std::abs(value) < least) best = side, least = std::abs(value);
    };
    consider(ZV_SIDE_BOTTOM, bottom);
    consider(ZV_SIDE_LEFT, left);
    consider(ZV_SIDE_TOP, top);
    consider(ZV_SIDE_RIGHT, right);
    return best;
  }
  int64_t most = 0;
  auto consider = [&](bool group, int side, bool condition, int64_t value) {
    if (group && condition && value > most) best = side, most = value;
  };
  consider(a.left < b.left, ZV_SIDE_TOP, a.top < b.top, std::min(b.top - a.top, b.left - a.left));
  consider(a.left<b.left, ZV_SIDE_BOTTOM, a.bottom> b.bottom, std::min(a.bottom - b.bottom, b.left - a.left));
  consider(a.bottom < b.bottom, ZV_SIDE_RIGHT, a.right < b.right,
           std::min(b.right - a.right, b.bottom - a.bottom));
  consider(a.bottom<b.bottom, ZV_SIDE_LEFT, a.left> b.left, std::min(a.left - b.left, b.bottom - a.bottom));
  consider(b.right < a.right, ZV_SIDE_TOP, a.top < b.top, std::min(b.top - a.top, a.right - b.right));
  consider(b.right<a.right, ZV_SIDE_BOTTOM, a.bottom> b.bottom,
           std::min(a.bottom - b.bottom, a.right - b.right));
  consider(b.top < a.top, ZV_SIDE_RIGHT, a.right < b.right, std::min(b.right - a.right, a.top - b.top));
  consider(b.top<a.top, ZV_SIDE_LEFT, a.left> b.left, std::min(a.left - b.left, a.top - b.top));
  return best == ZV_SIDE_NONE ? ZV_SIDE_LEFT : best;
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
  int exits = 0;
  for (int round = 0; round < 100000; ++round) {
    SCOPED_TRACE(round);
    lattice.next();
    const Box b = lattice.box();
    const P p = lattice.point(), q = lattice.point();
    const ZVRect r = rectOf<ZVRect>(b);
    ZVPoint moved = point(p);
    r.getPointOutsideRect(moved, point(q));
    const P to = place(moved);
    const int64_t dx = p.x - q.x, dy = p.y - q.y;
    if (dx && dy) {
      // The least number of steps that passes the side, measured on the axis that the slope selects.
      const bool flat =
          b.top > b.bottom && std::abs(dx) * (b.top - b.bottom) >= (b.right - b.left) * std::abs(dy);
      const int64_t way = flat ? (dx > 0 ? b.right : b.left) - p.x : (dy > 0 ? b.top : b.bottom) - p.y;
      const int64_t step = std::abs(flat ? dx : dy);
      int64_t k = 1;
      while (k * step <= std::abs(way)) ++k;
      ASSERT_EQ(to, (P{p.x + k * dx, p.y + k * dy}));
      exits += b.holds(p);
      ASSERT_FALSE(b.holds(p) && b.holds(to));
    } else {
      ASSERT_EQ(to, (P{dy ? p.x : dx < 0 ? b.left : b.right, dy ? (dy > 0 ? b.top : b.bottom) : p.y}));
    }

    ZVPoint other = point(p);
    const int result = r.pointInOtherSide(other, point(q));
    const Hits hits = dx && dy ? lineHits(b, p, q) : Hits{};
    ASSERT_EQ(result, !(dx && dy) || hits.size() == 2);
    P expected = dx && dy ? q : p;
    if (hits.size() == 2) expected = hits[1] == q ? hits[0] : hits[1];
    ASSERT_EQ(place(other), expected);
  }
  EXPECT_GT(exits, 10000);
}

TEST(PerMil, StatesAnOffsetRelativeToTheHalfSizeOnItsSide) {
  ZVPerMil m;
  ZVSize s(5, 0);
  EXPECT_EQ(ZVRect(10, 10).setPerMil(s, m), &m);
  EXPECT_EQ(m.x(), 1000);
  EXPECT_EQ(m.y(), 0);
  ZVRect(7, 7, 7, 7).setPerMil(ZVPoint(3, 3), m);
  EXPECT_EQ(m.width(), 500);
  EXPECT_EQ(m.height(), 500);
  ZVRect(2, 2).setPerMil(ZVSize(-40, 70), m);
  EXPECT_EQ(m.x(), static_cast<int16_t>(-40000));
  EXPECT_EQ(m.y(), static_cast<int16_t>(70000));
  m.resize(ZVSize(65537, -1));
  EXPECT_EQ(m.x(), 1);
  EXPECT_EQ(m.y(), -1);
  ZVPerMil* clone = m.cloneObject();
  EXPECT_EQ(clone->y(), -1);
  EXPECT_GE(clone->sizeOf(), 8);
  delete clone;

  Lattice lattice(8);
  for (int round = 0; round < 20000; ++round) {
    SCOPED_TRACE(round);
    lattice.next();
    const Box b = lattice.box();
    const ZVRect r = rectOf<ZVRect>(b);
    const P p = lattice.point();
    ASSERT_EQ(r.setOffset(point(p), s), &s);
    ASSERT_EQ((P{s.x(), s.y()}), (P{p.x - r.x(), p.y - r.y()}));
    r.setPerMil(point(p), m);
    const P half{s.x() < 0 ? r.leftHalfWidth() : r.rightHalfWidth(),
                 s.y() < 0 ? r.bottomHalfHeight() : r.topHalfHeight()};
    auto perMil = [](int64_t offset, int64_t size) { return size ? offset * 1000 / size : 500; };
    ASSERT_EQ(m.x(), static_cast<int16_t>(perMil(s.x(), half.x)));
    ASSERT_EQ(m.y(), static_cast<int16_t>(perMil(s.y(), half.y)));
    // Back, with the sign of the offset: at most the unit is lost that truncation costs.
    ZVSize back(s);
    ASSERT_EQ(r.setOffset(m, back), &back);
    auto lost = [](int64_t size, int64_t perMils, int64_t from, int64_t to) {
      return size != 0 && perMils == static_cast<int16_t>(perMils) ? std::abs(from - to) : 0;
    };
    ASSERT_LE(lost(half.x, perMil(s.x(), half.x), s.x(), back.x()), 1);
    ASSERT_LE(lost(half.y, perMil(s.y(), half.y), s.y(), back.y()), 1);
  }
}

TEST(Spacing, AddsAConstantAndAPart) {
  EXPECT_EQ(ZVSpacing(10, 250).combined(100), 35);
  EXPECT_EQ(ZVSpacing(10, 250).combined(100L), 35);
  EXPECT_EQ(ZVSpacing(10, 250).combined(100.0), 35.0);
  EXPECT_EQ(ZVSpacing(0, 333).combined(10L), 3);
  EXPECT_EQ(ZVSpacing(0, -333).combined(10L), -3);
  ZVSpacing copy;
  copy.copyObject(ZVSpacing(3, 4));
  EXPECT_EQ(copy.constant(), 3);
  EXPECT_EQ(copy.proportional(), 4);
}

// Whatever the parts, what is left of the outer size is the inner one; the choice among several is settled.
TEST(Spacing, OuterSizeLeavesTheInnerOne) {
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
  EXPECT_EQ(ZVSpacing::calculateOuterSize(ZVSpacing(10), ZVSpacing(10), 100), 120);
  EXPECT_EQ(ZVSpacing::calculateOuterSize(ZVSpacing(), ZVSpacing(), 1), 1);
  EXPECT_EQ(ZVSpacing::calculateOuterSize(ZVSpacing(0, 500), ZVSpacing(), 10), 19);
  EXPECT_EQ(ZVSpacing::calculateOuterSize(ZVSpacing(), ZVSpacing(), 1000000000), 1000000000);
  // Outside the contract it ends, whatever it gives.
  for (int part : {-32768, -1, 500, 999, 1000, 32767}) {
    for (int32_t inner : {1, 77, kMax}) {
      ZVSpacing::calculateOuterSize(ZVSpacing(kMax, static_cast<int16_t>(part)), ZVSpacing(0, 500), inner);
    }
  }
}

TYPED_TEST(Rects, ExtremeCoordinatesAnswerWithoutTrapping) {
  const int32_t values[] = {kMin, kMin + 1, -1, 0, 1, kMax};
  int answers = 0;
  for (int32_t left : values) {
    for (int32_t bottom : values) {
      TypeParam r(left, bottom, kMax, kMax - 1);
      for (int32_t x : values) {
        for (int32_t y : values) {
          ZVPoint p(x, y);
          ZVPoint q(y, left);
          answers += r.intersectsLine(p, q) + r.intersectsSegment(p, q) + r.intersectsRay(p, q);
          answers += r.overlapsRay(x, y, left, y) + r.nearestPoint(p) + r.within(p) + r.closestSide(q);
          r.move(x, y);
          r.scale(1e300);
          r.scale(x);
          r.updateBounds(&q);
          answers += r.area() != 0;
        }
      }
    }
  }
  EXPECT_GT(answers, 0);
}

}  // namespace
