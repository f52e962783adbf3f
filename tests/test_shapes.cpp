#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <memory>
#include <random>
#include <vector>

#include "utils/zvshape.h"

// A look at a private member, by explicit instantiation.
template <class Tag, typename Tag::Type member>
struct Opened {
  friend typename Tag::Type open(Tag) { return member; }
};
struct AddPoint {
  using Type = ZVPoint* (ZVShape::*)(int32_t, int32_t);
  friend Type open(AddPoint);
};
template struct Opened<AddPoint, &ZVShape::addPoint>;
struct ShapeToWorld {
  using Type = int32_t (*)(int32_t, int32_t, int32_t);
  friend Type open(ShapeToWorld);
};
template struct Opened<ShapeToWorld, &ZVShape::shapeToWorld>;

namespace {

struct P {
  int32_t x, y;
  bool operator==(const P&) const = default;
};
using Outline = std::vector<P>;

P place(const ZVPoint& p) { return {p.x(), p.y()}; }
ZVPoint point(P p) { return ZVPoint(p.x, p.y); }

ZVPointDList* listOf(const Outline& outline) {
  ZVPointDList* list = new ZVPointDList;
  for (P p : outline) list->appendPoint(new ZVPoint(p.x, p.y));
  return list;
}

Outline outlineOf(const ZVShape& shape) {
  Outline outline;
  for (const ZVDListCell* cell = shape.pPointList() ? shape.pPointList()->pFirstCell() : nullptr; cell;
       cell = cell->pNextCell()) {
    outline.push_back(place(*ZVPoint::castDown(cell->pObject())));
  }
  return outline;
}

std::array<int32_t, 4> sidesOf(const ZVRect& r) { return {r.left(), r.bottom(), r.right(), r.top()}; }
using Sides = std::array<int32_t, 4>;

class Random {
 public:
  explicit Random(unsigned seed) : engine_(seed) {}
  int32_t upTo(int32_t reach) { return between(-reach, reach); }
  int32_t between(int32_t low, int32_t high) {
    return low + static_cast<int32_t>(engine_() % unsigned(high - low + 1));
  }
  P point(int32_t reach) {
    const int32_t x = upTo(reach);
    return {x, upTo(reach)};
  }
  Outline outline(int32_t reach, int32_t step) {
    Outline outline(static_cast<size_t>(between(3, 7)));
    for (P& p : outline) p = {upTo(reach) * step, upTo(reach) * step};
    return outline;
  }

 private:
  std::mt19937 engine_;
};

TEST(Shape, TakesListsOfThreePointsAndMore) {
  ZVShape shape;
  ZVRect r;
  shape.getInnerRect(r);
  EXPECT_EQ(sidesOf(r), (Sides{-1000, -1000, 1000, 1000}));
  const struct {
    Outline outline;
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
    EXPECT_EQ(outlineOf(shape), c.result ? c.outline : Outline{});
    EXPECT_EQ(ZVShape(listOf(c.outline)).isConvexPolygon(), c.type == ZV_SHAPE_CONVEX_POLYGON);
  }
  EXPECT_EQ(shape.pPointList(const_cast<ZVPointDList*>(shape.pPointList())), 1);
  EXPECT_EQ(outlineOf(shape), cases[5].outline);
  EXPECT_EQ(shape.pPointList(nullptr), 0);
  EXPECT_EQ(shape.shapeType(), ZV_SHAPE_RECTANGLE);
  shape.pPointList(listOf(cases[3].outline));
  shape.setShapeType(ZV_SHAPE_ELLIPSE);
  EXPECT_EQ(shape.pPointList(), nullptr);

  ZVShape grown;
  auto addPoint = open(AddPoint{});
  EXPECT_EQ(place(*(grown.*addPoint)(0, 0)), (P{0, 0}));
  (grown.*addPoint)(4, 0);
  EXPECT_EQ(grown.shapeType(), ZV_SHAPE_NONCONVEX_POLYGON);
  (grown.*addPoint)(4, 4);
  EXPECT_EQ(grown.shapeType(), ZV_SHAPE_CONVEX_POLYGON);
  (grown.*addPoint)(3, 1);
  EXPECT_EQ(grown.shapeType(), ZV_SHAPE_NONCONVEX_POLYGON);
}

TEST(Shape, IsConvexWhenItNeverTurnsBothWays) {
  Random random(1);
  int convex = 0;
  for (int round = 0; round < 50000; ++round) {
    SCOPED_TRACE(round);
    const Outline o = random.outline(2, 1);
    int turns = 0;
    for (size_t i = 0; i < o.size(); ++i) {
      const P a = o[i], b = o[(i + 1) % o.size()], c = o[(i + 2) % o.size()];
      const int turn = (b.x - a.x) * (c.y - b.y) - (b.y - a.y) * (c.x - b.x);
      turns |= turn > 0 ? 1 : turn < 0 ? 2 : 0;
    }
    const ZVShape shape(listOf(o));
    ASSERT_EQ(shape.isConvexPolygon(), turns != 3 || o.size() == 3);
    convex += o.size() > 3 && turns != 3;
  }
  EXPECT_GT(convex, 500);
}

TEST(Shape, CopiesOwnTheirPointsAndCompareEqual) {
  ZVShape source(listOf({{-1000, 0}, {0, 1000}, {1000, 500}, {100, 100}}));
  source.setInnerRect(ZVRect(-10, -20, 30, 40));
  ZVShape copy(source, ZV_DEEP_COPY);
  EXPECT_EQ(copy.compare(&source), 1);
  EXPECT_EQ(copy.compare(&copy), 1);
  EXPECT_EQ(copy.compare(nullptr), 0);
  EXPECT_NE(copy.pPointList(), source.pPointList());
  copy.rotate(180);
  EXPECT_EQ(copy.compare(&source), 0);
  copy = *&copy;
  EXPECT_EQ(outlineOf(copy).size(), 4U);
  copy.copyAttributes(&source);
  EXPECT_EQ(copy.compare(&source), 1);
  ZVShape* clone = source.cloneAttributes();
  EXPECT_EQ(clone->compare(&source), 1);
  clone->setInnerRect(ZVRect(-10, -20, 30, 41));
  EXPECT_EQ(clone->compare(&source), 0);
  delete clone;
  EXPECT_EQ(ZVShape(listOf({{0, 1000}, {1000, 500}, {100, 100}, {-1000, 0}})).compare(&source), 0);
  EXPECT_EQ(ZVShape(ZV_SHAPE_ELLIPSE).compare(&source), 0);
  copy = ZVShape(ZV_SHAPE_ELLIPSE);
  EXPECT_EQ(copy.pPointList(), nullptr);
  ZVShape rectangle;
  EXPECT_EQ(rectangle.compare(&copy), 0);
  copy.setShapeType(ZV_SHAPE_RECTANGLE);
  EXPECT_EQ(rectangle.compare(&copy), 1);
  copy.setShapeType(ZV_SHAPE_CONVEX_POLYGON);  // without a list
  ZVShape bare(ZV_SHAPE_CONVEX_POLYGON);
  EXPECT_EQ(bare.compare(&copy), 1);
  EXPECT_EQ(bare.within(0, 0, 0, 0, 9, 9) + bare.onBoundary(0, 0, 0, 0, 9, 9), 1);
  bare.rotate(90);
}

TEST(Shape, QuarterTurnsGoCounterclockwise) {
  const Outline o = {{1000, 500}, {-3, 4}, {-1000, -999}, {0, 7}};
  for (int quarters = 0; quarters < 4; ++quarters) {
    ZVShape shape(listOf(o));
    shape.rotate(90 * quarters);
    Outline turned = o;
    for (P& p : turned) {
      for (int i = 0; i < quarters; ++i) p = {-p.y, p.x};
    }
    EXPECT_EQ(outlineOf(shape), turned);
    shape.rotate(360 - 90 * quarters);
    shape.rotate(45);
    shape.rotate(-90);
    EXPECT_EQ(outlineOf(shape), o);
  }
}

TEST(Shape, TextRectangleIsClampedAndNeverFlat) {
  ZVShape shape;
  ZVRect r;
  shape.setInnerRect(ZVRect(-2000, -300, 501, 2000));
  shape.getInnerRect(r);
  EXPECT_EQ(sidesOf(r), (Sides{-1000, -300, 501, 1000}));
  for (const ZVRect& flat : {ZVRect(5, 5, 5, 50), ZVRect(0, 7, 9, 7), ZVRect(1000, 0, 2000, 9)}) {
    shape.setInnerRect(flat);
    shape.getInnerRect(r);
    EXPECT_EQ(sidesOf(r), (Sides{-1000, -300, 501, 1000}));
  }
  const ZVShape whole;
  whole.getCurrentInnerRect(r, ZVPoint(0, 0), ZVSize(10, 11));
  EXPECT_EQ(sidesOf(r), (Sides{-5, -5, 5, 6}));
  shape.setInnerRect(ZVRect(-500, -500, 500, 500));
  ZVRect bounds;
  shape.fitBoundingRectToInnerRect(bounds, ZVRect(0, 0, 100, 100));
  EXPECT_EQ(sidesOf(bounds), (Sides{-50, -50, 150, 150}));
}

// From any node to its text rectangle and back to a node with the same text rectangle.
TEST(Shape, FittingUndoesTheTextRectangleOfANode) {
  Random random(2);
  for (int round = 0; round < 100000; ++round) {
    SCOPED_TRACE(round);
    ZVShape shape;
    if (round % 10) shape.setInnerRect(ZVRect(point(random.point(1000)), point(random.point(1000))));
    const ZVRect node(point(random.point(40)), ZVSize(random.between(0, 200), random.between(0, 200)));
    ZVRect inner;
    shape.getCurrentInnerRect(inner, node.center(), node.size());
    ZVRect bounds, again;
    shape.fitBoundingRectToInnerRect(bounds, inner);
    shape.getCurrentInnerRect(again, bounds.center(), bounds.size());
    ASSERT_EQ(sidesOf(again), sidesOf(inner));
    if (round % 10 == 0) {
      ASSERT_EQ(sidesOf(bounds), sidesOf(node));
    }
  }
}

TEST(Shape, AnglesAreThoseBetweenVectors) {
  const double right = std::acos(0.0);
  EXPECT_EQ(ZVShape::angleBetweenTwoLines(0, 0, 1, 0), right);
  EXPECT_EQ(ZVShape::angleBetweenTwoLines(1, 0, 0, 1), right);
  EXPECT_EQ(ZVShape::angleBetweenTwoLines(1 << 16, 0, 1, 0), right);  // the square wraps to 0
  for (int32_t x = -5; x <= 5; ++x) {
    for (int32_t y = -5; y <= 5; ++y) {
      if (x == 0 && y == 0) continue;
      const double expected = std::fabs(std::atan2(-4 * y + 3 * x, 3 * y + 4 * x));
      EXPECT_NEAR(ZVShape::angleBetweenTwoLines(4, 3, x, y), expected, 1e-7);
    }
  }
}

// Placed shapes against plain models.

struct Node {
  int32_t cx, cy, w, h;
  int32_t left() const { return cx - w / 2; }
  int32_t right() const { return left() + w; }
  int32_t bottom() const { return cy - h / 2; }
  int32_t top() const { return bottom() + h; }
};

struct Edge {
  P a, b;
  int32_t plainAX;
};

// A negative coordinate is a part of the lower half, a positive one of the upper half.
int32_t world(int32_t v, int32_t c, int32_t s) {
  return v < 1 ? c + v * (s / 2) / 1000 : c + v * (s - s / 2) / 1000;
}

std::vector<Edge> edgesOf(const Outline& o, const Node& n) {
  std::vector<Edge> edges;
  for (size_t i = 0; i < o.size(); ++i) {
    const P a = o[(i + o.size() - 1) % o.size()], b = o[i];
    edges.push_back({{world(a.x, n.cx, n.w), world(a.y, n.cy, n.h)},
                     {world(b.x, n.cx, n.w), world(b.y, n.cy, n.h)},
                     n.cx + a.x * n.w / 2000});
  }
  return edges;
}

bool near(P p, P a, P b) { return ZVPoint::pointInSegment(p.x, p.y, a.x, a.y, b.x, b.y); }

double distanceToSegment(double x, double y, P a, P b) {
  const double dx = b.x - a.x, dy = b.y - a.y;
  const double square = dx * dx + dy * dy;
  const double t = square > 0.0 ? std::clamp(((x - a.x) * dx + (y - a.y) * dy) / square, 0.0, 1.0) : 0.0;
  return std::hypot(a.x + t * dx - x, a.y + t * dy - y);
}

Node randomNode(Random& random) {
  return {random.upTo(3), random.upTo(3), random.between(1, 24), random.between(1, 24)};
}

TEST(PlacedShape, CoordinatesReachBothSidesOfTheNode) {
  auto shapeToWorld = open(ShapeToWorld{});
  EXPECT_EQ(shapeToWorld(500, 100, 50), 112);
  Random random(3);
  for (int round = 0; round < 2000; ++round) {
    const Node n = randomNode(random);
    ASSERT_EQ(shapeToWorld(-1000, n.cx, n.w), n.left());
    ASSERT_EQ(shapeToWorld(1000, n.cx, n.w), n.right());
    const int32_t v = random.upTo(1500);
    ASSERT_EQ(shapeToWorld(v, n.cy, n.h), world(v, n.cy, n.h));
  }
}

TEST(PlacedShape, ContainmentAgreesWithExactArithmetic) {
  Random random(4);
  for (int round = 0; round < 100000; ++round) {
    SCOPED_TRACE(round);
    const Node n = randomNode(random);
    const P p{n.cx + random.upTo(13), n.cy + random.upTo(13)};
    const bool inBox = n.left() <= p.x && p.x <= n.right() && n.bottom() <= p.y && p.y <= n.top();
    const bool inside = n.left() < p.x && p.x < n.right() && n.bottom() < p.y && p.y < n.top();
    const ZVPoint at = point(p), center(n.cx, n.cy);
    const ZVSize size(n.w, n.h);

    const ZVShape rectangle(static_cast<ZVShapeTypeEnum>(round % 2 ? 0 : 9));
    ASSERT_EQ(rectangle.within(at, center, size), inBox);
    ASSERT_EQ(rectangle.onBoundary(at, center, size), inBox && !inside);
    ASSERT_EQ(rectangle.withinInterior(at, center, size), inside);

    // x x h h + y y w w against w w h h / 4; the chord's end is x with (2x - 1) below and (2x + 1) above it.
    const int64_t dx = p.x - n.cx, dy = p.y - n.cy, ww = int64_t{n.w} * n.w, hh = int64_t{n.h} * n.h;
    const int64_t room = ww * hh - 4 * dy * dy * ww;  // 4 h h r r
    const ZVShape ellipse(ZV_SHAPE_ELLIPSE);
    if (4 * dx * dx * hh != room) {
      ASSERT_EQ(ellipse.within(at, center, size), 4 * dx * dx * hh < room);
    }
    const int64_t inner = 2 * std::abs(dx) - 1, outer = 2 * std::abs(dx) + 1;
    const bool onChordEnd = room >= 0 && (dx == 0 || inner * inner * hh <= room) && room < outer * outer * hh;
    if (inner * inner * hh != room && outer * outer * hh != room && room != 0) {
      ASSERT_EQ(ellipse.onBoundary(at, center, size), onChordEnd);
    }

    const Outline o = random.outline(round % 3 ? 4 : 1000, round % 3 ? 250 : 1);
    const ZVShape polygon(listOf(o));
    bool onEdge = false, outward = false, close = false;
    int crossings = 0;
    for (const Edge& e : edgesOf(o, n)) {
      onEdge = onEdge || near(p, e.a, e.b);
      outward = outward || (e.b.x - e.a.x) * (p.y - e.a.y) - (e.b.y - e.a.y) * (p.x - e.a.x) > 0;
      const P a{e.plainAX, e.a.y};
      if (std::min(a.y, e.b.y) >= p.y || p.y > std::max(a.y, e.b.y)) continue;
      close = close || ((a.x <= p.x || e.b.x <= p.x) && near(p, a, e.b));
      // Where the edge is on the point's level, it lies to the left of it.
      const int32_t up = e.b.y - a.y;
      crossings += (a.x - p.x) * up + (e.b.x - a.x) * (p.y - a.y) < 0 ? up > 0 : up < 0;
    }
    ASSERT_EQ(polygon.onBoundary(at, center, size), onEdge);
    const bool convex = polygon.shapeType() == ZV_SHAPE_CONVEX_POLYGON;
    const bool within = convex ? !outward : inBox && (close || crossings % 2);
    ASSERT_EQ(polygon.within(at, center, size), within);
    ASSERT_EQ(polygon.withinInterior(at, center, size), within && !onEdge);
  }
}

// By exact crossings: the hit lies on the outline and the segment, and none of the crossings lies beyond it,
// as far as tolerance and rounding go. Crossings at a small angle are left out, since tolerance moves them
// far.
void expectLastCrossing(const std::vector<Edge>& edges, P from, P to, int result, P hit) {
  const double length = std::hypot(to.x - from.x, to.y - from.y);
  double reached = -1.0;
  double toOutline = 1e9;
  for (const Edge& e : edges) {
    const int64_t dx = to.x - from.x, dy = to.y - from.y, ex = e.b.x - e.a.x, ey = e.b.y - e.a.y;
    const int64_t den = dx * ey - dy * ex;
    const int64_t t = (e.a.x - from.x) * ey - (e.a.y - from.y) * ex;
    const int64_t u = (e.a.x - from.x) * dy - (e.a.y - from.y) * dx;
    auto inUnit = [den](int64_t v) { return den > 0 ? 0 <= v && v <= den : den <= v && v <= 0; };
    const bool steep = std::fabs(static_cast<double>(den)) > 0.5 * length * std::hypot(ex, ey);
    if (steep && inUnit(t) && inUnit(u)) {
      reached = std::max(reached, static_cast<double>(t) / static_cast<double>(den));
    }
    toOutline = std::min(toOutline, distanceToSegment(hit.x, hit.y, e.a, e.b));
  }
  if (reached >= 0.0) {
    ASSERT_EQ(result, 1);
  }
  if (result == 0) {
    ASSERT_EQ(hit, from);
    return;
  }
  ASSERT_LE(std::hypot(to.x - hit.x, to.y - hit.y), (1.0 - std::max(reached, 0.0)) * length + 3.0);
  ASSERT_LE(toOutline, 1.2);
  ASSERT_LE(distanceToSegment(hit.x, hit.y, from, to), 1.2);
}

TEST(PlacedShape, SegmentsEndAtTheirLastCrossing) {
  Random random(5);
  const Outline box = {{-1000, 1000}, {1000, 1000}, {1000, -1000}, {-1000, -1000}};
  int hits = 0;
  for (int round = 0; round < 100000; ++round) {
    SCOPED_TRACE(round);
    const Node n = randomNode(random);
    const ZVPoint center(n.cx, n.cy);
    const ZVSize size(n.w, n.h);
    const P from = random.point(16), to = random.point(16);
    const Outline o = round % 2 ? random.outline(4, 250) : box;
    const ZVShape shape = round % 2 ? ZVShape(listOf(o)) : ZVShape();
    const std::vector<Edge> edges = edgesOf(o, n);
    ZVPoint moved = point(from);
    const int result = shape.intersectsSegment(moved, point(to), center, size);
    hits += result;
    // A convex outline is left at the second hit, which need not be the last where tolerance plays in.
    if (shape.shapeType() != ZV_SHAPE_CONVEX_POLYGON) {
      expectLastCrossing(edges, from, to, result, place(moved));
    }
    if (HasFatalFailure()) return;

    // The last bit: from edge to edge, each hit is the next start; a convex outline ends at its second one.
    double x = from.x, y = from.y, hx = x, hy = y;
    int32_t ix = from.x, iy = from.y;
    int count = 0, any = 0;
    for (const Edge& e : edges) {
      if (round % 2 == 0) {
        any |= ZVPoint::segmentsIntersect(ix, iy, to.x, to.y, e.a.x, e.a.y, e.b.x, e.b.y);
      } else if (ZVPoint::segmentsIntersect(x, y, double(to.x), double(to.y), double(e.a.x), double(e.a.y),
                                            double(e.b.x), double(e.b.y))) {
        any = 1;
        if (x != hx || y != hy) ++count;
        hx = x, hy = y;
        if (count == 2 && shape.shapeType() == ZV_SHAPE_CONVEX_POLYGON) break;
      }
    }
    const P expected = round % 2 ? P{roundHalfUp(x), roundHalfUp(y)} : P{ix, iy};
    ASSERT_EQ(result, any);
    ASSERT_EQ(place(moved), any ? expected : from);
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
  EXPECT_EQ(ellipse.within(0, 3, 0, 0, 0, 5) + ellipse.onBoundary(0, -2, 0, 0, 0, 5), 2);
  EXPECT_EQ(ellipse.within(0, -3, 0, 0, 0, 5) + ellipse.within(1, 0, 0, 0, 0, 5), 0);
  EXPECT_EQ(ellipse.within(3, 0, 0, 0, 5, 0) + ellipse.within(-2, 0, 0, 0, 5, 0), 2);
  EXPECT_EQ(ellipse.within(-3, 0, 0, 0, 5, 0) + ellipse.within(0, 1, 0, 0, 5, 0), 0);
  EXPECT_EQ(ellipse.within(50, 0, 0, 0, 100, 50) + ellipse.within(0, 25, 0, 0, 100, 50), 2);
  EXPECT_EQ(ellipse.within(40, 20, 0, 0, 100, 50), 0);

  Random random(6);
  int compared = 0;
  for (int round = 0; round < 100000; ++round) {
    SCOPED_TRACE(round);
    const Node n{random.upTo(3), random.upTo(3), random.between(1, 40), random.between(1, 40)};
    const P from = random.point(30), to = random.point(30);
    if (from == to) continue;
    // |p + t d|^2 = 1 in units of the half axes.
    const double px = (from.x - n.cx) * 2.0 / n.w, py = (from.y - n.cy) * 2.0 / n.h;
    const double dx = (to.x - from.x) * 2.0 / n.w, dy = (to.y - from.y) * 2.0 / n.h;
    const double a = dx * dx + dy * dy, b = px * dx + py * dy, c = px * px + py * py - 1.0;
    const double d = b * b - a * c;
    if (std::fabs(d) < 1e-6) continue;
    double last = -1.0;
    bool close = false;
    for (double sign : {-1.0, 1.0}) {
      const double t = d > 0.0 ? (-b + sign * std::sqrt(d)) / a : 9.0;
      close = close || std::fabs(t) < 1e-9 || std::fabs(t - 1.0) < 1e-9;
      if (t >= 0.0 && t <= 1.0) last = t;
    }
    if (close) continue;
    ++compared;
    ZVPoint moved = point(from);
    ASSERT_EQ(ellipse.intersectsSegment(moved, point(to), ZVPoint(n.cx, n.cy), ZVSize(n.w, n.h)),
              last >= 0.0);
    ASSERT_LE(std::fabs(moved.x() - (from.x + std::max(last, 0.0) * (to.x - from.x))), 0.5 + 1e-6);
    ASSERT_LE(std::fabs(moved.y() - (from.y + std::max(last, 0.0) * (to.y - from.y))), 0.5 + 1e-6);
  }
  EXPECT_GT(compared, 50000);
}

// Reached: on the outline, on the line toward the node's rectangle. Not reached: on that rectangle.
TEST(PlacedShape, NearestPointsLieOnTheOutlineOrOnTheRectangle) {
  Random random(7);
  int reached[2] = {0, 0};
  for (int round = 0; round < 60000; ++round) {
    SCOPED_TRACE(round);
    const Node n = randomNode(random);
    const ZVPoint center(n.cx, n.cy);
    const ZVSize size(n.w, n.h);
    const ZVRect box(center, size);
    const P p = random.point(16);
    const Outline o = random.outline(4, 250);
    const int kind = round % 3;
    const ZVShape shape = kind == 2 ? ZVShape(listOf(o)) : ZVShape(static_cast<ZVShapeTypeEnum>(kind));
    ZVPoint onBox = point(p);
    box.nearestPoint(onBox);
    ZVPoint moved = point(p);
    const int result = shape.nearestPoint(moved, center, size);
    if (kind == 0 || !result) {
      ASSERT_EQ(place(moved), place(onBox));
      ASSERT_TRUE(result || kind);
      continue;
    }
    ++reached[kind - 1];
    if (shape.onBoundary(point(p), center, size)) {
      ASSERT_EQ(place(moved), p);
      continue;
    }
    double toOutline = kind == 1 ? 0.0 : 1e9;
    for (const Edge& e : edgesOf(o, n)) {
      if (kind == 2) toOutline = std::min(toOutline, distanceToSegment(moved.x(), moved.y(), e.a, e.b));
    }
    ASSERT_LE(toOutline, 1.2);
    if (kind == 1) {
      // Some place next to it is within the ellipse and some is not.
      int sides = 0;
      for (double ox : {-0.75, 0.0, 0.75}) {
        for (double oy : {-0.75, 0.0, 0.75}) {
          sides |=
              std::hypot((moved.x() + ox - n.cx) * 2 / n.w, (moved.y() + oy - n.cy) * 2 / n.h) <= 1.0 ? 1 : 2;
        }
      }
      ASSERT_EQ(sides, n.w > 1 && n.h > 1 ? 3 : sides);
    }
    // Inside the rectangle the line is upright or level.
    if (box.withinInterior(point(p))) {
      ASSERT_TRUE(moved.x() == p.x || moved.y() == p.y);
    }
  }
  EXPECT_GT(reached[0], 3000);
  EXPECT_GT(reached[1], 3000);
}

TEST(PlacedShape, NearestPointLooksOnTheNearSideFirst) {
  const ZVPoint center(0, 0);
  const ZVSize size(100, 100);
  const ZVShape diamond(listOf({{0, 1000}, {1000, 0}, {0, -1000}, {-1000, 0}}));
  const struct {
    P from, to;
    int result;
  } cases[] = {
      {{10, 0}, {50, 0}, 1},      // right is near
      {{10, 20}, {10, 40}, 1},    // up is near
      {{45, 40}, {50, 40}, 0},    // off the outline, its line crosses no part of it before the near side
      {{100, 100}, {25, 25}, 1},  // beyond a corner, from the far side
      {{0, 80}, {0, 50}, 0},      // level with the rectangle the line has no length
  };
  for (const auto& c : cases) {
    ZVPoint moved = point(c.from);
    EXPECT_EQ(diamond.nearestPoint(moved, center, size), c.result) << c.from.x << ' ' << c.from.y;
    EXPECT_EQ(place(moved), c.to) << c.from.x << ' ' << c.from.y;
  }
}

TEST(PlacedShape, WidthIsMeasuredAcrossTheDirection) {
  const ZVShape rectangle, ellipse(ZV_SHAPE_ELLIPSE);
  EXPECT_EQ(rectangle.maxAvailableDiagonalLengthAtShape(0, 0, 1, 0, 100, 50), 50.0);
  EXPECT_EQ(rectangle.maxAvailableDiagonalLengthAtShape(ZVPoint(3, 3), ZVPoint(3, 4), ZVSize(100, 50)),
            100.0);
  EXPECT_EQ(rectangle.maxAvailableDiagonalLengthAtShape(3, 3, 3, 3, 100, 50), 0.0);
  Random random(8);
  for (int round = 0; round < 1000; ++round) {
    SCOPED_TRACE(round);
    const Node n = randomNode(random);
    const P from = random.point(9), to = random.point(9);
    if (from == to) continue;
    const double length = std::hypot(to.x - from.x, to.y - from.y);
    auto across = [&](double x, double y) { return (y * (to.x - from.x) - x * (to.y - from.y)) / length; };
    auto width = [&](const ZVShape& s) {
      return s.maxAvailableDiagonalLengthAtShape(from.x, from.y, to.x, to.y, n.w, n.h);
    };
    double most = 0.0;
    for (int i = 0; i < 4000; ++i) {
      const double angle = i * 0.0005 * std::acos(-1.0);
      most = std::max(most, 2 * across(std::cos(angle) * n.w / 2, std::sin(angle) * n.h / 2));
    }
    ASSERT_NEAR(width(ellipse), most, 1e-4);
    ASSERT_NEAR(
        width(rectangle),
        2 * std::max(std::fabs(across(n.w / 2.0, n.h / 2.0)), std::fabs(across(n.w / 2.0, -n.h / 2.0))),
        1e-9);
    const Outline o = random.outline(4, 250);
    double left = 0.0, right = 0.0;
    for (P v : o) {
      const int32_t x = v.x * n.w / 2000, y = v.y * n.h / 2000;
      left = std::max(left, across(x, y));
      right = std::max(right, -across(x, y));
    }
    ASSERT_NEAR(width(ZVShape(listOf(o))), 2 * std::min(left, right), 1e-9);
  }
}

}  // namespace
