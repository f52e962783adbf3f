#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>

#include "tests/support/plane.h"
#include "utils/zvshape.h"

// A look at a private member, by explicit instantiation.
struct AddPoint {
  using Type = ZVPoint* (ZVShape::*)(int32_t, int32_t);
  friend Type open(AddPoint);
};
template <AddPoint::Type member>
struct Opened {
  friend AddPoint::Type open(AddPoint) { return member; }
};
template struct Opened<&ZVShape::addPoint>;

namespace {

ZVPointDList* listOf(const Points& outline) {
  ZVPointDList* list = new ZVPointDList;
  for (P p : outline) list->appendPoint(new ZVPoint(point(p)));
  return list;
}

bool hasOutline(const ZVShape& shape, const Points& outline) {
  return shape.pPointList() && shape.compare(std::make_unique<ZVShape>(listOf(outline)).get());
}

std::array<int32_t, 4> sidesOf(const ZVRect& r) { return {r.left(), r.bottom(), r.right(), r.top()}; }
using Sides = std::array<int32_t, 4>;

Points outline(Random& random, int64_t reach, int64_t step) {
  Points outline = random.points(random.from(3, 7), reach);
  for (P& p : outline) p = {p.x * step, p.y * step};
  return outline;
}

TEST(Shape, TakesListsOfThreePointsAndMore) {
  ZVShape shape;
  ZVRect r;
  shape.getInnerRect(r);
  EXPECT_EQ(sidesOf(r), (Sides{-1000, -1000, 1000, 1000}));
  const struct {
    Points outline;
    int result;
    ZVShapeTypeEnum type;
  } cases[] = {
      {{}, 0, ZV_SHAPE_RECTANGLE},
      {{{0, 0}, {5, 5}}, 0, ZV_SHAPE_RECTANGLE},
      {{{0, 0}, {5, 5}, {9, 9}}, 1, ZV_SHAPE_CONVEX_POLYGON},
      {{{0, 0}, {0, 9}, {5, 9}, {5, 5}, {9, 5}, {9, 0}}, 1, ZV_SHAPE_NONCONVEX_POLYGON},
      {{{0, 0}, {0, 9}, {9, 9}, {9, 4}, {9, 0}}, 1, ZV_SHAPE_CONVEX_POLYGON},
      {{{0, 0}, {9, 9}, {0, 9}, {9, 0}}, 1, ZV_SHAPE_NONCONVEX_POLYGON},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(shape.pPointList(listOf(c.outline)), c.result);
    EXPECT_EQ(shape.shapeType(), c.type);
    EXPECT_EQ(hasOutline(shape, c.outline), c.result);
  }
  EXPECT_EQ(shape.pPointList(const_cast<ZVPointDList*>(shape.pPointList())), 1);
  EXPECT_TRUE(hasOutline(shape, cases[5].outline));
  EXPECT_EQ(shape.pPointList(nullptr), 0);
  EXPECT_EQ(shape.shapeType(), ZV_SHAPE_RECTANGLE);
  shape.pPointList(listOf(cases[3].outline));
  shape.setShapeType(ZV_SHAPE_ELLIPSE);
  EXPECT_EQ(shape.pPointList(), nullptr);

  ZVShape grown;
  auto addPoint = open(AddPoint{});
  const Points dart = {{0, 0}, {4, 0}, {4, 4}, {3, 1}};
  for (int i = 0; i < 4; ++i) {
    EXPECT_EQ(place(*(grown.*addPoint)(i32(dart[size_t(i)].x), i32(dart[size_t(i)].y))), dart[size_t(i)]);
    EXPECT_EQ(grown.shapeType(), i == 2 ? ZV_SHAPE_CONVEX_POLYGON : ZV_SHAPE_NONCONVEX_POLYGON);
  }
}

TEST(Shape, IsConvexWhenItNeverTurnsBothWays) {
  Random random(1);
  for (int round = 0; round < 50000; ++round) {
    const Points o = outline(random, 2, 1);
    int turns = 0;
    for (size_t i = 0; i < o.size(); ++i) {
      const P a = o[i], b = o[(i + 1) % o.size()], c = o[(i + 2) % o.size()];
      const int64_t area = turn(a, b, c);
      turns |= area > 0 ? 1 : area < 0 ? 2 : 0;
    }
    ASSERT_EQ(ZVShape(listOf(o)).isConvexPolygon(), turns != 3 || o.size() == 3) << round;
  }
}

TEST(Shape, CopiesOwnTheirPointsAndCompareEqual) {
  ZVShape source(listOf({{-1000, 0}, {0, 1000}, {1000, 500}, {100, 100}}));
  source.setInnerRect(ZVRect(-10, -20, 30, 40));
  ZVShape copy(source, ZV_DEEP_COPY);
  EXPECT_EQ(copy.compare(&source) + copy.compare(&copy), 2);
  EXPECT_EQ(copy.compare(nullptr), 0);
  copy.rotate(180);
  EXPECT_EQ(copy.compare(&source), 0);
  copy = *&copy;
  EXPECT_EQ(copy.pPointList()->length(), 4);
  copy.copyAttributes(&source);
  EXPECT_EQ(copy.compare(&source), 1);
  copy.setInnerRect(ZVRect(-10, -20, 30, 41));
  EXPECT_EQ(copy.compare(&source), 0);
  ZVShape turned(listOf({{0, 1000}, {1000, 500}, {100, 100}, {-1000, 0}}));  // begins at another vertex
  turned.setInnerRect(ZVRect(-10, -20, 30, 40));
  EXPECT_EQ(turned.compare(&source), 0);
  copy = ZVShape(ZV_SHAPE_ELLIPSE);
  EXPECT_EQ(copy.pPointList(), nullptr);
  EXPECT_EQ(copy.compare(std::make_unique<ZVShape>().get()), 0);
  ZVShape bare(ZV_SHAPE_NONCONVEX_POLYGON);  // without a list
  EXPECT_EQ(bare.compare(&copy) + bare.within(0, 0, 0, 0, 9, 9) + bare.onBoundary(0, 0, 0, 0, 9, 9), 0);
  bare.rotate(90);
}

TEST(Shape, QuarterTurnsGoCounterclockwise) {
  const Points o = {{1000, 500}, {-3, 4}, {-1000, -999}, {0, 7}};
  for (int quarters = 0; quarters < 4; ++quarters) {
    ZVShape shape(listOf(o));
    shape.rotate(90 * quarters);
    Points turned = o;
    for (P& p : turned) {
      for (int i = 0; i < quarters; ++i) p = {-p.y, p.x};
    }
    EXPECT_TRUE(hasOutline(shape, turned));
    for (int degrees : {360 - 90 * quarters, 45, -90}) shape.rotate(degrees);
    EXPECT_TRUE(hasOutline(shape, o));
  }
}

TEST(Shape, TextRectangleIsClampedAndNeverFlat) {
  ZVShape shape;
  ZVRect r;
  shape.setInnerRect(ZVRect(-2000, -300, 501, 2000));
  for (const ZVRect& flat : {ZVRect(5, 5, 5, 50), ZVRect(0, 7, 9, 7), ZVRect(1000, 0, 2000, 9)}) {
    shape.setInnerRect(flat);
    shape.getInnerRect(r);
    EXPECT_EQ(sidesOf(r), (Sides{-1000, -300, 501, 1000}));
  }
}

// From any node to its text rectangle and back to a node with the same text rectangle; with the whole box for
// the text, to the same node.
TEST(Shape, FittingUndoesTheTextRectangleOfANode) {
  Random random(2);
  for (int round = 0; round < 100000; ++round) {
    SCOPED_TRACE(round);
    ZVShape shape;
    if (round % 10) shape.setInnerRect(ZVRect(point(random.point(1000)), point(random.point(1000))));
    const ZVRect node(point(random.point(40)), ZVSize(i32(random.from(0, 200)), i32(random.from(0, 200))));
    ZVRect inner, bounds, again;
    shape.getCurrentInnerRect(inner, node.center(), node.size());
    shape.fitBoundingRectToInnerRect(bounds, inner);
    shape.getCurrentInnerRect(again, bounds.center(), bounds.size());
    ASSERT_EQ(sidesOf(again), sidesOf(inner));
    ASSERT_TRUE(round % 10 || (sidesOf(inner) == sidesOf(node) && sidesOf(bounds) == sidesOf(node)));
  }
  ZVShape shape;
  shape.setInnerRect(ZVRect(-500, -500, 500, 500));
  ZVRect bounds;
  shape.fitBoundingRectToInnerRect(bounds, ZVRect(0, 0, 100, 100));
  EXPECT_EQ(sidesOf(bounds), (Sides{-50, -50, 150, 150}));
}

TEST(Shape, AnglesAreThoseBetweenVectors) {
  const double right = std::acos(0.0);
  EXPECT_EQ(ZVShape::angleBetweenTwoLines(0, 0, 1, 0), right);
  EXPECT_EQ(ZVShape::angleBetweenTwoLines(1, 0, 0, 1), right);
  EXPECT_EQ(ZVShape::angleBetweenTwoLines(1 << 16, 0, 1, 0), right);  // the square wraps to 0
  for (P p : Points{{3, 4}, {-3, 4}, {-4, -3}, {5, -5}, {8, 6}}) {
    const double expected = std::fabs(std::atan2(real(-4 * p.y + 3 * p.x), real(3 * p.y + 4 * p.x)));
    EXPECT_NEAR(ZVShape::angleBetweenTwoLines(4, 3, i32(p.x), i32(p.y)), expected, 1e-7);
  }
}

// Placed shapes against plain models.

struct Node {
  int64_t cx, cy, w, h;
  int64_t left() const { return cx - w / 2; }
  int64_t right() const { return left() + w; }
  int64_t bottom() const { return cy - h / 2; }
  int64_t top() const { return bottom() + h; }
  ZVPoint center() const { return point({cx, cy}); }
  ZVSize size() const { return ZVSize(i32(w), i32(h)); }
};

struct Edge {
  P a, b;
  int64_t plainAX;
};

// A negative coordinate is a part of the lower half, a positive one of the upper half.
int64_t world(int64_t v, int64_t c, int64_t s) {
  return v < 1 ? c + v * (s / 2) / 1000 : c + v * (s - s / 2) / 1000;
}

std::vector<Edge> edgesOf(const Points& o, const Node& n) {
  std::vector<Edge> edges;
  for (size_t i = 0; i < o.size(); ++i) {
    const P a = o[(i + o.size() - 1) % o.size()], b = o[i];
    edges.push_back({{world(a.x, n.cx, n.w), world(a.y, n.cy, n.h)},
                     {world(b.x, n.cx, n.w), world(b.y, n.cy, n.h)},
                     n.cx + a.x * n.w / 2000});
  }
  return edges;
}

bool near(const P& p, const P& a, const P& b) {
  return ZVPoint::pointInSegment(i32(p.x), i32(p.y), i32(a.x), i32(a.y), i32(b.x), i32(b.y));
}

Node randomNode(Random& random) {
  return {random.from(-3, 3), random.from(-3, 3), random.from(1, 24), random.from(1, 24)};
}

TEST(PlacedShape, ContainmentAgreesWithExactArithmetic) {
  Random random(4);
  for (int round = 0; round < 100000; ++round) {
    SCOPED_TRACE(round);
    const Node n{random.from(-3, 3), random.from(-3, 3), random.from(0, 24), random.from(0, 24)};
    const P p{n.cx + random.from(-13, 13), n.cy + random.from(-13, 13)};
    const ZVPoint at = point(p), center = n.center();
    const ZVSize size = n.size();
    const bool inBox = n.left() <= p.x && p.x <= n.right() && n.bottom() <= p.y && p.y <= n.top();
    const bool inside = n.left() < p.x && p.x < n.right() && n.bottom() < p.y && p.y < n.top();
    const ZVShape rectangle(static_cast<ZVShapeTypeEnum>(round % 2 ? 0 : 9));
    ASSERT_EQ(rectangle.within(at, center, size), inBox);
    ASSERT_EQ(rectangle.onBoundary(at, center, size), inBox && !inside);
    ASSERT_EQ(rectangle.withinInterior(at, center, size), inside);

    // x x h h + y y w w against w w h h / 4; the chord's end is x with (2x - 1) below and (2x + 1) above it.
    const int64_t dx = p.x - n.cx, dy = p.y - n.cy, ww = n.w * n.w, hh = n.h * n.h;
    const int64_t room = ww * hh - 4 * dy * dy * ww;  // 4 h h r r
    const int64_t inner = (2 * std::abs(dx) - 1) * (2 * std::abs(dx) - 1) * hh;
    const int64_t outer = (2 * std::abs(dx) + 1) * (2 * std::abs(dx) + 1) * hh;
    const bool flat = ww * hh == 0;
    const ZVShape ellipse(ZV_SHAPE_ELLIPSE);
    if (flat || 4 * dx * dx * hh != room) {
      ASSERT_EQ(ellipse.within(at, center, size), flat ? inBox : 4 * dx * dx * hh < room);
    }
    if (flat || (inner != room && outer != room && room != 0)) {
      const bool onChordEnd = room >= 0 && (dx == 0 || inner <= room) && room < outer;
      ASSERT_EQ(ellipse.onBoundary(at, center, size), flat ? inBox : onChordEnd);
    }

    const Points o = outline(random, round % 3 ? 5 : 1000, round % 3 ? 250 : 1);
    const ZVShape polygon(listOf(o));
    bool onEdge = false, outward = false, close = false;
    int crossings = 0;
    for (const Edge& e : edgesOf(o, n)) {
      onEdge = onEdge || near(p, e.a, e.b);
      outward = outward || turn(e.a, e.b, p) > 0;
      const P a{e.plainAX, e.a.y};
      if (std::min(a.y, e.b.y) >= p.y || p.y > std::max(a.y, e.b.y)) continue;
      close = close || ((a.x <= p.x || e.b.x <= p.x) && near(p, a, e.b));
      // Where the edge is on the point's level, it lies to the left of it.
      crossings += turn(a, e.b, p) < 0 ? a.y < e.b.y : a.y > e.b.y;
    }
    ASSERT_EQ(polygon.onBoundary(at, center, size), onEdge);
    const bool convex = polygon.shapeType() == ZV_SHAPE_CONVEX_POLYGON;
    const bool within = convex ? !outward : inBox && (close || crossings % 2);
    ASSERT_EQ(polygon.within(at, center, size), within);
    ASSERT_EQ(polygon.withinInterior(at, center, size), within && !onEdge);
  }
}

// From side to side, each hit is the next start; a convex polygon is left at its second one.
TEST(PlacedShape, SegmentsEndAtTheirLastCrossing) {
  Random random(5);
  const Points box = {{-1000, 1000}, {1000, 1000}, {1000, -1000}, {-1000, -1000}};
  int hits = 0;
  for (int round = 0; round < 100000; ++round) {
    SCOPED_TRACE(round);
    const Node n = randomNode(random);
    const P from = random.point(16), to = random.point(16);
    const Points o = round % 2 ? outline(random, 4, 250) : box;
    const ZVShape shape = round % 2 ? ZVShape(listOf(o)) : ZVShape();
    double x = real(from.x), y = real(from.y), hx = x, hy = y;
    int32_t ix = i32(from.x), iy = i32(from.y);
    int count = 0, any = 0;
    for (const Edge& e : edgesOf(o, n)) {
      if (round % 2 == 0) {
        any |= ZVPoint::segmentsIntersect(ix, iy, i32(to.x), i32(to.y), i32(e.a.x), i32(e.a.y), i32(e.b.x),
                                          i32(e.b.y));
        continue;
      }
      if (!ZVPoint::segmentsIntersect(x, y, real(to.x), real(to.y), real(e.a.x), real(e.a.y), real(e.b.x),
                                      real(e.b.y))) {
        continue;
      }
      any = 1;
      ix = roundHalfUp(x), iy = roundHalfUp(y);
      count += x != hx || y != hy;
      hx = x, hy = y;
      if (count == 2 && shape.shapeType() == ZV_SHAPE_CONVEX_POLYGON) break;
    }
    ZVPoint moved = point(from);
    ASSERT_EQ(shape.intersectsSegment(moved, point(to), n.center(), n.size()), any);
    ASSERT_EQ(place(moved), (P{ix, iy}));
    hits += any;
  }
  EXPECT_GT(hits, 10000);
}

TEST(PlacedShape, SegmentsCrossAnEllipseWhereItsEquationSays) {
  const ZVShape ellipse(ZV_SHAPE_ELLIPSE);
  const struct {
    P from, to, hit;
    int result;
  } cases[] = {{{0, 100}, {0, 0}, {0, 25}, 1},      {{0, 100}, {0, -100}, {0, -25}, 1},
               {{100, 0}, {0, 0}, {50, 0}, 1},      {{5, 5}, {-5, -5}, {5, 5}, 0},
               {{-60, 30}, {60, 30}, {-60, 30}, 0}, {{50, 0}, {50, 0}, {50, 0}, 0},
               {{-50, 25}, {50, 25}, {0, 25}, 1}};
  for (const auto& c : cases) {
    ZVPoint moved = point(c.from);
    EXPECT_EQ(ellipse.intersectsSegment(moved, point(c.to), ZVPoint(0, 0), ZVSize(100, 50)), c.result);
    EXPECT_EQ(place(moved), c.hit);
  }
  int32_t x = -5, y = 2;
  EXPECT_EQ(ellipse.intersectsSegment(x, y, 5, 2, 0, 0, 0, 5), 1);  // no width: an upright segment
  EXPECT_EQ(x, 0);
  EXPECT_EQ(ellipse.within(50, 0, 0, 0, 100, 50) + ellipse.within(0, 25, 0, 0, 100, 50), 2);
  EXPECT_EQ(ellipse.within(40, 20, 0, 0, 100, 50), 0);

  Random random(6);
  int compared = 0;
  for (int round = 0; round < 100000; ++round) {
    SCOPED_TRACE(round);
    const Node n{random.from(-3, 3), random.from(-3, 3), random.from(1, 40), random.from(1, 40)};
    const P from = random.point(30), to = random.point(30);
    if (from == to) continue;
    // |p + t d|^2 = 1 in units of the half axes.
    const double w = real(n.w) / 2.0, h = real(n.h) / 2.0;
    const double px = real(from.x - n.cx) / w, py = real(from.y - n.cy) / h;
    const double dx = real(to.x - from.x) / w, dy = real(to.y - from.y) / h;
    const double a = dx * dx + dy * dy, b = px * dx + py * dy, c = px * px + py * py - 1.0;
    const double d = b * b - a * c;
    if (std::fabs(d) < 1e-6) continue;
    double last = -1.0;
    bool close = false;
    for (double root : {-std::sqrt(std::max(d, 0.0)), std::sqrt(std::max(d, 0.0))}) {
      const double t = d > 0.0 ? (root - b) / a : 9.0;
      close = close || std::fabs(t) < 1e-9 || std::fabs(t - 1.0) < 1e-9;
      if (t >= 0.0 && t <= 1.0) last = t;
    }
    if (close) continue;
    ++compared;
    ZVPoint moved = point(from);
    ASSERT_EQ(ellipse.intersectsSegment(moved, point(to), n.center(), n.size()), last >= 0.0);
    last = std::max(last, 0.0);
    ASSERT_NEAR(moved.x(), real(from.x) + last * real(to.x - from.x), 0.5 + 1e-6);
    ASSERT_NEAR(moved.y(), real(from.y) + last * real(to.y - from.y), 0.5 + 1e-6);
  }
  EXPECT_GT(compared, 50000);
}

// Reached: on the outline. Not reached: on the node's rectangle.
TEST(PlacedShape, NearestPointsLieOnThePointsOrOnTheRectangle) {
  Random random(7);
  int reached[2] = {0, 0};
  for (int round = 0; round < 40000; ++round) {
    SCOPED_TRACE(round);
    const Node n = randomNode(random);
    const P p = random.point(16);
    const Points o = outline(random, 4, 250);
    const ZVShape shape = round % 2 ? ZVShape(listOf(o)) : ZVShape(ZV_SHAPE_ELLIPSE);
    ZVPoint moved = point(p), onBox = point(p);
    ZVRect(n.center(), n.size()).nearestPoint(onBox);
    const int result = shape.nearestPoint(moved, n.center(), n.size());
    const bool stays = shape.onBoundary(point(p), n.center(), n.size());
    if (!result || stays) {
      ASSERT_EQ(place(moved), result ? p : place(onBox));
      continue;
    }
    ++reached[round % 2];
    int inside = 0, onPoints = 0;
    for (int i = 0; i < 9; ++i) {
      const ZVPoint next(moved.x() + i % 3 - 1, moved.y() + i / 3 - 1);
      inside += shape.within(next, n.center(), n.size());
      onPoints += shape.onBoundary(next, n.center(), n.size());
    }
    ASSERT_TRUE(onPoints > 0 || (inside > 0 && inside < 9));
  }
  EXPECT_GT(std::min(reached[0], reached[1]), 3000);
}

TEST(PlacedShape, NearestPointLooksOnTheNearSideFirst) {
  const ZVShape rectangle, diamond(listOf({{0, 1000}, {1000, 0}, {0, -1000}, {-1000, 0}}));
  const struct {
    const ZVShape& shape;
    P from, to;
    int result;
  } cases[] = {
      {diamond, {10, 0}, {50, 0}, 1},    // right is near
      {diamond, {10, 20}, {10, 40}, 1},  // up is near
      {diamond,
       {45, 40},
       {50, 40},
       0},  // off the outline, its line crosses no part of it before the near side
      {diamond, {100, 100}, {25, 25}, 1},  // beyond a corner, from the far side
      {diamond, {0, 80}, {0, 50}, 0},      // level with the rectangle the line has no length
      {rectangle, {0, 80}, {0, 50}, 1},
  };
  for (const auto& c : cases) {
    ZVPoint moved = point(c.from);
    EXPECT_EQ(c.shape.nearestPoint(moved, ZVPoint(0, 0), ZVSize(100, 100)), c.result);
    EXPECT_EQ(place(moved), c.to);
  }
}

TEST(PlacedShape, WidthIsMeasuredAcrossTheDirection) {
  const ZVShape rectangle, ellipse(ZV_SHAPE_ELLIPSE);
  const struct {
    P to;
    double rectangle, ellipse;
  } cases[] = {
      {{4, 3}, 50, 50}, {{3, 4}, 100, 100}, {{4, 4}, 75 * std::sqrt(2.0), std::sqrt(6250.0)}, {{3, 3}, 0, 0}};
  for (const auto& c : cases) {
    EXPECT_NEAR(rectangle.maxAvailableDiagonalLengthAtShape(ZVPoint(3, 3), point(c.to), ZVSize(100, 50)),
                c.rectangle, 1e-9);
    EXPECT_NEAR(ellipse.maxAvailableDiagonalLengthAtShape(ZVPoint(3, 3), point(c.to), ZVSize(100, 50)),
                c.ellipse, 1e-9);
  }
  Random random(8);
  for (int round = 0; round < 1000; ++round) {
    SCOPED_TRACE(round);
    const Node n = randomNode(random);
    const P from = random.point(9), to{from.x + random.from(1, 9), random.from(-9, 9)};
    const Points o = outline(random, 4, 250);
    double left = 0.0, right = 0.0;
    for (P v : o) {
      const P w{v.x * n.w / 2000, v.y * n.h / 2000};
      const double side =
          real(w.y * (to.x - from.x) - w.x * (to.y - from.y)) / point(from).distance(point(to));
      left = std::max(left, side);
      right = std::max(right, -side);
    }
    const ZVShape shape(listOf(o));
    ASSERT_NEAR(shape.maxAvailableDiagonalLengthAtShape(point(from), point(to), n.size()),
                2 * std::min(left, right), 1e-9);
  }
}

}  // namespace
