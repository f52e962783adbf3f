#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <ostream>
#include <random>
#include <utility>
#include <vector>

#include "utils/zvpolygo.h"
#include "utils/zvptdlit.h"

namespace {

constexpr int32_t kMax = std::numeric_limits<int32_t>::max();
constexpr int32_t kMin = std::numeric_limits<int32_t>::min();

struct P {
  int64_t x, y;
  bool operator==(const P&) const = default;
  friend std::ostream& operator<<(std::ostream& out, const P& p) { return out << p.x << ", " << p.y; }
};
using Points = std::vector<P>;
using testing::PrintToString;

ZVPoint* newPoint(const P& p) { return new ZVPoint(static_cast<int32_t>(p.x), static_cast<int32_t>(p.y)); }

struct Polygon : ZVPolygon {
  explicit Polygon(const Points& points) : ZVPolygon(new ZVPointDList) {
    for (const P& p : points) pPointList()->appendPoint(newPoint(p));
  }
};

Points pointsOf(const ZVPointDList* list) {
  Points points;
  for (ZVPointDListIter it(list); it; ++it) points.push_back({it.pPoint()->x(), it.pPoint()->y()});
  return points;
}

std::vector<std::pair<P, P>> edgesOf(const Points& points) {
  std::vector<std::pair<P, P>> edges;
  for (size_t i = 0; i < points.size(); ++i)
    edges.push_back({points[i ? i - 1 : points.size() - 1], points[i]});
  return edges;
}

class Random {
 public:
  explicit Random(unsigned seed) : engine_(seed) {}
  int64_t from(int64_t low, int64_t high) {
    return low + static_cast<int64_t>(engine_() % static_cast<uint64_t>(high - low + 1));
  }
  // Corners on a small lattice, so that ties, touches and vertices on one line come all the time.
  Points points(int64_t count, int64_t reach) {
    Points points(static_cast<size_t>(count));
    for (P& p : points) p.x = from(-reach, reach), p.y = from(-reach, reach);
    return points;
  }

 private:
  std::mt19937 engine_;
};

int64_t cross(const P& a, const P& b, const P& c) {
  return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

// num / den rounded, halves up; den is positive.
int64_t divideHalfUp(int64_t num, int64_t den) {
  const int64_t twice = 2 * num + den;
  return twice / (2 * den) - (twice % (2 * den) < 0);
}

// Where the edge meets the height y: exactly, except that single precision decides what is exactly half way.
int64_t crossingAt(const P& prev, const P& cur, int64_t y) {
  const int64_t dy = cur.y - prev.y;
  const int64_t den = std::abs(dy);
  const int64_t num = (dy > 0 ? 1 : -1) * ((y - prev.y) * (cur.x - prev.x) + prev.x * dy);
  if ((2 * num + den) % (2 * den) != 0) return divideHalfUp(num, den);
  const double rise = static_cast<double>(dy) / static_cast<double>(cur.x - prev.x);
  const volatile float slope = static_cast<float>(rise);
  const double start = static_cast<double>(prev.y) - static_cast<double>(prev.x) * static_cast<double>(slope);
  const volatile float intercept = static_cast<float>(start);
  const double x = (static_cast<double>(y) - static_cast<double>(intercept)) / static_cast<double>(slope);
  return static_cast<int64_t>(std::floor(x + 0.5));
}

// The count over a list of crossings with strikes in place.
bool modelWithin(const Points& points, const P& p) {
  // A merged pair beyond a point left of all vertices would count.
  if (std::all_of(points.begin(), points.end(), [&](const P& v) { return v.x > p.x; })) return false;
  std::vector<int64_t> crossings;
  for (const auto& [a, b] : edgesOf(points)) {
    if (a == p) return true;
    if (std::min(a.y, b.y) > p.y || std::max(a.y, b.y) < p.y) continue;
    if (a.y == b.y && a.x != b.x) {
      if (a.x <= p.x && p.x <= b.x) return true;
      crossings.insert(crossings.begin(), a.x);
      crossings.insert(crossings.begin(), b.x);
    } else {
      const int64_t x = a.x == b.x ? a.x : crossingAt(a, b, p.y);
      if (x == p.x) return true;
      crossings.insert(crossings.begin(), x);
    }
  }
  if (crossings.empty()) return false;
  const std::vector<int64_t> values = crossings;
  if (values.front() == values.back()) crossings.back() = kMin;
  for (size_t i = 1; i < values.size(); ++i) {
    if (values[i] == values[i - 1]) crossings[i] = kMin;
  }
  return std::count_if(crossings.begin(), crossings.end(), [&](int64_t x) { return x > p.x; }) % 2 != 0;
}

TEST(Polygon, PointsAreWithinAsTheCountOfCrossingsSays) {
  Random random(1);
  for (int round = 0; round < 4000; ++round) {
    const Points points = random.points(random.from(0, 8), random.from(1, 7));
    const Polygon polygon(points);
    for (P p{-8, 0}; p.x <= 8; ++p.x) {
      for (p.y = -8; p.y <= 8; ++p.y) {
        ASSERT_EQ(polygon.pointWithin(static_cast<int32_t>(p.x), static_cast<int32_t>(p.y)),
                  modelWithin(points, p))
            << PrintToString(points) << " at " << p;
      }
    }
  }
}

// The corners of the convex hull without the points on its sides, counterclockwise.
Points hullOf(Points points) {
  auto before = [](const P& a, const P& b) { return a.x != b.x ? a.x < b.x : a.y < b.y; };
  std::sort(points.begin(), points.end(), before);
  Points hull;
  for (int half = 0; half < 2; ++half) {
    const size_t start = hull.size();
    for (const P& p : points) {
      while (hull.size() > start + 1 && cross(hull[hull.size() - 2], hull.back(), p) <= 0) hull.pop_back();
      hull.push_back(p);
    }
    hull.pop_back();
    std::reverse(points.begin(), points.end());
  }
  return hull;
}

TEST(Polygon, EveryLatticePointOfAConvexRegionIsWithin) {
  Random random(2);
  for (int round = 0; round < 2000; ++round) {
    Points hull = hullOf(random.points(random.from(3, 9), 9));
    if (hull.size() < 3) continue;
    const auto edges = edgesOf(hull);
    if (random.from(0, 1)) std::reverse(hull.begin(), hull.end());
    std::rotate(hull.begin(), hull.begin() + random.from(0, 2), hull.end());
    const Polygon polygon(hull);
    for (P p{-9, 0}; p.x <= 9; ++p.x) {
      for (p.y = -9; p.y <= 9; ++p.y) {
        const bool inside = std::all_of(edges.begin(), edges.end(),
                                        [&](const auto& e) { return cross(e.first, e.second, p) >= 0; });
        if (!inside) continue;
        ASSERT_EQ(polygon.pointWithin(static_cast<int32_t>(p.x), static_cast<int32_t>(p.y)), 1)
            << PrintToString(hull) << " at " << p;
      }
    }
  }
}

TEST(Polygon, AnswersAreThoseOfEveryTarget) {
  Random random(3);
  uint32_t sum = 2166136261;
  for (int round = 0; round < 20000; ++round) {
    const int64_t reach = int64_t{10} << random.from(0, 27);
    const Points points = random.points(random.from(3, 6), reach);
    const Polygon polygon(points);
    // A point near a corner or a side is the one that rounding decides.
    const P& a = points[0];
    const P& b = points[1];
    const int64_t part = random.from(0, 8);
    const int64_t x = a.x + (b.x - a.x) * part / 8 + random.from(-1, 1);
    const int64_t y = a.y + (b.y - a.y) * part / 8 + random.from(-1, 1);
    const int within = polygon.pointWithin(static_cast<int32_t>(x), static_cast<int32_t>(y));
    sum = (sum ^ static_cast<uint32_t>(within)) * 16777619;
  }
  EXPECT_EQ(sum, 2444377156U);
}

TEST(Polygon, SingleCasesOfPoints) {
  const struct {
    Points polygon;
    P point;
    int within;
  } cases[] = {
      {{{0, 0}, {10, 0}, {10, 10}, {0, 10}}, {5, 5}, 1},
      {{{0, 0}, {10, 0}, {10, 10}, {0, 10}}, {0, 5}, 1},
      {{{0, 0}, {10, 0}, {10, 10}, {0, 10}}, {10, 5}, 1},
      {{{0, 0}, {10, 0}, {10, 10}, {0, 10}}, {11, 5}, 0},
      {{{0, 0}, {10, 0}, {10, 10}, {0, 10}}, {5, 0}, 1},
      // On the side toward smaller x, found by the count alone.
      {{{0, 0}, {10, 0}, {10, 10}, {0, 10}}, {5, 10}, 1},
      {{{0, 0}, {10, 0}, {5, 10}}, {5, 10}, 1},
      {{{0, 0}, {10, 0}, {5, 10}}, {3, 6}, 1},
      // Level with a vertex that the boundary only touches, and left of it.
      {{{0, 0}, {10, 0}, {5, 10}}, {2, 10}, 1},
      {{{0, 0}, {10, 0}, {5, 10}}, {8, 10}, 0},
      {{}, {0, 0}, 0},
      {{}, {kMax, kMin}, 0},
      {{{3, 4}}, {3, 4}, 1},
      {{{3, 4}}, {3, 5}, 0},
      // The greatest coordinate is never counted, but a point on it is found.
      {{{0, 0}, {kMax, 0}, {kMax, 10}, {0, 10}}, {5, 5}, 0},
      {{{0, 0}, {kMax, 0}, {kMax, 10}, {0, 10}}, {kMax, 5}, 1},
      {{{kMin, kMin}, {kMax, kMin}, {0, kMax}}, {0, 0}, 1},
      {{{kMin, kMin}, {kMax, kMax}, {kMin, 0}}, {kMin, -5}, 1},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(
        Polygon(c.polygon).pointWithin(static_cast<int32_t>(c.point.x), static_cast<int32_t>(c.point.y)),
        c.within)
        << PrintToString(c.polygon) << " at " << c.point;
  }
  const Polygon empty({});
  EXPECT_EQ(empty.left(), kMax);
  EXPECT_EQ(empty.bottom(), kMax);
  EXPECT_EQ(empty.right(), kMin);
  EXPECT_EQ(empty.top(), kMin);
  EXPECT_EQ(empty.overlapsSegment(0, 0, 1, 1), 0);
  const Polygon triangle({{0, -1}, {10, 0}, {5, 12}});
  EXPECT_EQ(triangle.left(), 0);
  EXPECT_EQ(triangle.right(), 10);
  EXPECT_EQ(triangle.bottom(), -1);
  EXPECT_EQ(triangle.top(), 12);
  EXPECT_EQ(triangle.polygonWithin(triangle), 1);
  EXPECT_EQ(triangle.polygonWithin(empty), 1);
  EXPECT_EQ(triangle.polygonWithin(Polygon({{5, 1}, {5, 2}, {11, 2}})), 0);
}

double distance(const P& p, const P& a, const P& b) {
  const double dx = static_cast<double>(b.x - a.x);
  const double dy = static_cast<double>(b.y - a.y);
  const double px = static_cast<double>(p.x - a.x);
  const double py = static_cast<double>(p.y - a.y);
  const double length = dx * dx + dy * dy;
  const double along = length > 0 ? std::clamp((px * dx + py * dy) / length, 0.0, 1.0) : 0.0;
  return std::hypot(px - along * dx, py - along * dy);
}

// Whether two closed segments share a point, from the signs of areas.
bool meet(const P& a, const P& b, const P& c, const P& d) {
  auto sign = [](int64_t v) { return (v > 0) - (v < 0); };
  auto apart = [](int64_t p, int64_t q, int64_t r, int64_t s) {
    return std::max(p, q) < std::min(r, s) || std::max(r, s) < std::min(p, q);
  };
  return !apart(a.x, b.x, c.x, d.x) && !apart(a.y, b.y, c.y, d.y) &&
         sign(cross(a, b, c)) * sign(cross(a, b, d)) <= 0 && sign(cross(c, d, a)) * sign(cross(c, d, b)) <= 0;
}

TEST(Polygon, SegmentsOverlapIfTheyEndWithinOrMeetAnEdge) {
  Random random(4);
  int outside = 0;
  for (int round = 0; round < 30000; ++round) {
    const Points points = random.points(random.from(1, 6), 6);
    const Polygon polygon(points);
    const Points segment = random.points(2, 9);
    const P& a = segment[0];
    const P& b = segment[1];
    const int overlaps = polygon.overlapsSegment(static_cast<int32_t>(a.x), static_cast<int32_t>(a.y),
                                                 static_cast<int32_t>(b.x), static_cast<int32_t>(b.y));
    if (modelWithin(points, a) || modelWithin(points, b)) {
      ASSERT_EQ(overlaps, 1) << PrintToString(points) << " with " << PrintToString(segment);
      continue;
    }
    ++outside;
    // Between meeting and coming nearer than the tolerance of a touch the answer is free.
    bool meets = false;
    double nearest = 1000.0;
    for (const auto& [c, d] : edgesOf(points)) {
      meets = meets || meet(a, b, c, d);
      nearest =
          std::min({nearest, distance(a, c, d), distance(b, c, d), distance(c, a, b), distance(d, a, b)});
    }
    if (meets || nearest > 0.4473) {
      ASSERT_EQ(overlaps, meets) << PrintToString(points) << " with " << PrintToString(segment);
    }
  }
  EXPECT_GT(outside, 10000);
}

// Column by column, the height as the greatest number whose square fits.
Points modelEllipse(const P& center, int64_t width, int64_t height, int64_t step) {
  const int64_t halfWidth = (width + 1) / 2;
  Points points{{center.x - halfWidth, center.y}, {center.x + halfWidth, center.y}};
  size_t lower = 1;
  for (int64_t t = step - halfWidth; 2 * t < width; t += step) {
    int64_t r = 0;
    const int64_t room = height * height * (width * width - 4 * t * t);
    while (4 * (r + 1) * (r + 1) * width * width <= room) ++r;
    if (4 * r * r * width * width == room) {
      const double a = static_cast<double>(width) / 2.0;
      const double b = static_cast<double>(height) / 2.0;
      r = static_cast<int64_t>(std::sqrt(b * b - static_cast<double>(t * t) * (b * b / (a * a))));
    }
    points.insert(points.begin() + static_cast<ptrdiff_t>(lower), {center.x + t, center.y - r});
    points.insert(points.begin() + static_cast<ptrdiff_t>(++lower) + 1, {center.x + t, center.y + r});
  }
  return points;
}

TEST(Polygon, EllipsesAreSampledAtStepsOfX) {
  Random random(5);
  for (int round = 0; round < 3000; ++round) {
    const int32_t width = static_cast<int32_t>(random.from(-1, 60));
    const int32_t height = static_cast<int32_t>(random.from(-1, 60));
    const int32_t step = static_cast<int32_t>(random.from(-1, 30));
    const P center{random.from(-50, 50), random.from(-50, 50)};
    ZVPointDList list;
    list.appendPoint(new ZVPoint(1, 2));
    ZVPolygon::polygonOfEllipse(
        &list, ZVPoint(static_cast<int32_t>(center.x), static_cast<int32_t>(center.y)), width, height, step);
    Points expected;
    if (width > 1 && height > 1 && step > 0 && step < width) {
      expected = modelEllipse(center, width, height, step);
    }
    expected.push_back({1, 2});
    ASSERT_EQ(pointsOf(&list), expected)
        << width << " x " << height << " step " << step << ": " << PrintToString(pointsOf(&list));
    list.deleteAllCellsAndPoints();
  }

  const struct {
    P center;
    int32_t width, height, step;
    Points expected;
  } cases[] = {
      {{0, 0}, 10, 6, 5, {{-5, 0}, {0, -3}, {5, 0}, {0, 3}}},
      {{0, 0}, 11, 2, 10, {{-6, 0}, {4, 0}, {6, 0}, {4, 0}}},
      // The squares of the columns wrap in 32 bits, and the coordinates too.
      {{0, 0},
       200000,
       2000,
       50000,
       {{-100000, 0},
        {-50000, -1086},
        {0, -1000},
        {50000, -1086},
        {100000, 0},
        {50000, 1086},
        {0, 1000},
        {-50000, 1086}}},
      {{kMin, kMax},
       kMax,
       2,
       kMax - 1,
       {{int64_t{kMax} - (1 << 30) + 1, kMax},
        {kMin + (1 << 30) - 2, kMax - 1},
        {kMin + (1 << 30), kMax},
        {kMin + (1 << 30) - 2, kMin}}},
  };
  for (const auto& c : cases) {
    ZVPointDList list;
    ZVPolygon::polygonOfEllipse(&list,
                                ZVPoint(static_cast<int32_t>(c.center.x), static_cast<int32_t>(c.center.y)),
                                c.width, c.height, c.step);
    EXPECT_EQ(pointsOf(&list), c.expected) << c.width << ": " << PrintToString(pointsOf(&list));
    list.deleteAllCellsAndPoints();
  }
  ZVPolygon::polygonOfEllipse(nullptr, ZVPoint(), 10, 6, 5);
}

TEST(Polygon, EveryCopyHasPointsOfItsOwn) {
  const Points corners{{0, 0}, {10, 0}, {5, 10}};
  const Polygon source(corners);
  ZVPolygon* clone = source.cloneAttributes();
  EXPECT_EQ(pointsOf(clone->pPointList()), corners);
  EXPECT_EQ(clone->pPointList()->compare(source.pPointList()), 0);
  clone->copyPolygon(*clone);
  EXPECT_EQ(pointsOf(clone->pPointList()), corners);

  ZVPolygon target(nullptr);
  target.copyAttributes(clone);
  delete clone;
  EXPECT_EQ(pointsOf(target.pPointList()), corners);
  target.pPointList()->appendPoint(new ZVPoint(7, 7));
  ZVPolygon deep(target);
  target.copyObject(&source);
  EXPECT_EQ(pointsOf(target.pPointList()), corners);
  EXPECT_EQ(deep.pPointList()->length(), 4);
  deep = ZVPolygon(nullptr);
  EXPECT_EQ(deep.pPointList()->length(), 0);
}

}  // namespace
