#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <functional>
#include <set>

#include "tests/support/plane.h"
#include "utils/zvdlisti.h"
#include "utils/zvhorseg.h"
#include "utils/zvpolygo.h"
#include "utils/zvptdlit.h"

namespace {

using testing::PrintToString;

struct Polygon : ZVPolygon {
  explicit Polygon(const Points& points) : ZVPolygon(new ZVPointDList) {
    for (const P& p : points) pPointList()->appendPoint(new ZVPoint(point(p)));
  }
  int holds(const P& p) const { return pointWithin(i32(p.x), i32(p.y)); }
};

Points pointsOf(const ZVPointDList* list) {
  Points points;
  for (ZVPointDListIter it(list); it; ++it) points.push_back(place(*it.pPoint()));
  return points;
}

std::vector<std::pair<P, P>> edgesOf(const Points& points) {
  std::vector<std::pair<P, P>> edges;
  for (size_t i = 0; i < points.size(); ++i)
    edges.push_back({points[i ? i - 1 : points.size() - 1], points[i]});
  return edges;
}

// Where the line from a to b has the height y: exactly, except that the stored slope and intercept decide
// about what is exactly half way.
template <class Stored>
int64_t crossingAt(const P& a, const P& b, int64_t y) {
  const int64_t dy = b.y - a.y;
  const int64_t den = std::abs(dy);
  const int64_t num = (dy > 0 ? 1 : -1) * ((y - a.y) * (b.x - a.x) + a.x * dy);
  if ((2 * num + den) % (2 * den) != 0) return divideHalfUp(num, den);
  const double rise = real(dy) / real(b.x - a.x);
  const volatile Stored slope = static_cast<Stored>(rise);
  const double start = real(a.y) - real(a.x) * double{slope};
  const volatile Stored intercept = static_cast<Stored>(start);
  const double x = (real(y) - double{intercept}) / double{slope};
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
      const int64_t x = a.x == b.x ? a.x : crossingAt<float>(a, b, p.y);
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
        ASSERT_EQ(polygon.holds(p), modelWithin(points, p)) << PrintToString(points) << " at " << p;
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
    const int within = polygon.pointWithin(i32(x), i32(y));
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
      {{{0, 0}, {10, 0}, {10, 10}, {0, 10}}, {11, 5}, 0},
      {{{0, 0}, {10, 0}, {10, 10}, {0, 10}}, {5, 0}, 1},
      // On the side toward smaller x, found by the count alone.
      {{{0, 0}, {10, 0}, {10, 10}, {0, 10}}, {5, 10}, 1},
      {{{0, 0}, {10, 0}, {5, 10}}, {3, 6}, 1},
      // Level with a vertex that the boundary only touches, and left of it.
      {{{0, 0}, {10, 0}, {5, 10}}, {2, 10}, 1},
      {{}, {kMax, kMin}, 0},
      // The greatest coordinate is never counted, but a point on it is found.
      {{{0, 0}, {kMax, 0}, {kMax, 10}, {0, 10}}, {5, 5}, 0},
      {{{0, 0}, {kMax, 0}, {kMax, 10}, {0, 10}}, {kMax, 5}, 1},
      {{{kMin, kMin}, {kMax, kMin}, {0, kMax}}, {0, 0}, 1},
      {{{kMin, kMin}, {kMax, kMax}, {kMin, 0}}, {kMin, -5}, 1},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Polygon(c.polygon).holds(c.point), c.within) << PrintToString(c.polygon) << " at " << c.point;
  }
  const Polygon empty({});
  EXPECT_EQ((Points{{empty.left(), empty.bottom()}, {empty.right(), empty.top()}}),
            (Points{{kMax, kMax}, {kMin, kMin}}));
  EXPECT_EQ(empty.overlapsSegment(0, 0, 1, 1), 0);
  const Polygon triangle({{0, -1}, {10, 0}, {5, 12}});
  EXPECT_EQ((Points{{triangle.left(), triangle.bottom()}, {triangle.right(), triangle.top()}}),
            (Points{{0, -1}, {10, 12}}));
  EXPECT_EQ(triangle.polygonWithin(triangle), 1);
  EXPECT_EQ(triangle.polygonWithin(empty), 1);
  EXPECT_EQ(triangle.polygonWithin(Polygon({{5, 1}, {5, 2}, {11, 2}})), 0);
}

TEST(Polygon, SegmentsOverlapIfTheyEndWithinOrMeetAnEdge) {
  Random random(4);
  for (int round = 0; round < 30000; ++round) {
    const Points points = random.points(random.from(1, 6), 6);
    const ZVPoint a = point(random.point(9)), b = point(random.point(9));
    bool overlaps = modelWithin(points, place(a)) || modelWithin(points, place(b));
    for (const auto& [c, d] : edgesOf(points)) {
      int32_t x = a.x(), y = a.y();
      overlaps |= ZVPoint::segmentsIntersect(x, y, b.x(), b.y(), i32(c.x), i32(c.y), i32(d.x), i32(d.y)) != 0;
    }
    ASSERT_EQ(Polygon(points).overlapsSegment(a.x(), a.y(), b.x(), b.y()), overlaps)
        << PrintToString(points) << " with " << place(a) << " to " << place(b);
  }
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
      const double a = real(width) / 2.0, b = real(height) / 2.0;
      r = static_cast<int64_t>(std::sqrt(b * b - real(t * t) * (b * b / (a * a))));
    }
    points.insert(points.begin() + static_cast<ptrdiff_t>(lower), {center.x + t, center.y - r});
    points.insert(points.begin() + static_cast<ptrdiff_t>(++lower) + 1, {center.x + t, center.y + r});
  }
  return points;
}

TEST(Polygon, EllipsesAreSampledAtStepsOfX) {
  Random random(5);
  for (int round = 0; round < 3000; ++round) {
    const int32_t width = i32(random.from(-1, 60)), height = i32(random.from(-1, 60));
    const int32_t step = i32(random.from(-1, 30));
    const P center = random.point(50);
    ZVPointDList list;
    list.appendPoint(new ZVPoint(1, 2));
    ZVPolygon::polygonOfEllipse(&list, point(center), width, height, step);
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
    size_t number;
    P second;
  } cases[] = {
      {{0, 0}, 10, 6, 5, 4, {0, -3}},
      {{0, 0}, 11, 2, 10, 4, {4, 0}},
      // The squares of the columns wrap in 32 bits, and the coordinates too.
      {{0, 0}, 200000, 2000, 50000, 8, {-50000, -1086}},
      {{kMin, kMax}, kMax, 2, kMax - 1, 4, {kMin + (1 << 30) - 2, kMax - 1}},
  };
  for (const auto& c : cases) {
    ZVPointDList list;
    ZVPolygon::polygonOfEllipse(&list, point(c.center), c.width, c.height, c.step);
    const Points points = pointsOf(&list);
    ASSERT_EQ(points.size(), c.number);
    EXPECT_EQ(points[1], c.second) << c.width;
    list.deleteAllCellsAndPoints();
  }
  ZVPolygon::polygonOfEllipse(nullptr, ZVPoint(), 10, 6, 5);
}

TEST(Polygon, EveryCopyHasPointsOfItsOwn) {
  const Points corners{{0, 0}, {10, 0}, {5, 10}};
  const Polygon source(corners);
  ZVPolygon target(nullptr);
  target.copyAttributes(&source);
  EXPECT_EQ(pointsOf(target.pPointList()), corners);
  EXPECT_EQ(target.pPointList()->compare(source.pPointList()), 0);
  target.copyPolygon(target);
  target.pPointList()->appendPoint(new ZVPoint(7, 7));
  ZVPolygon deep(target);
  target.copyObject(&source);
  EXPECT_EQ(pointsOf(target.pPointList()), corners);
  EXPECT_EQ(deep.pPointList()->length(), 4);
  deep = ZVPolygon(nullptr);
  EXPECT_EQ(deep.pPointList()->length(), 0);
}

// A grid as plain values: the stripes from the highest down, each with the spans that lie in the polygon.
using Span = std::pair<int64_t, int64_t>;
struct Stripe {
  int64_t y;
  std::vector<Span> spans;
  bool operator==(const Stripe&) const = default;
};
using Stripes = std::vector<Stripe>;
[[maybe_unused]] std::ostream& operator<<(std::ostream& out, const Stripe& stripe) {
  return out << stripe.y << ": " << PrintToString(stripe.spans);
}

// The stripes of a polygon in a list that goes with this.
struct Grid : ZVDList {
  Grid(const ZVPolygon& polygon, int64_t height, ZVLabelLocationEnum location) {
    polygon.createGrid(this, i32(height), location);
  }
  Grid(const Grid&) = delete;
  ~Grid() override { ZVPolygon::deleteGrid(this); }
  Stripes stripes() const {
    Stripes stripes;
    for (ZVDListIter it(this); it; ++it) {
      const ZVHorSegment* stripe = ZVHorSegment::castDown(it.pObject());
      stripes.push_back({stripe->y(), {}});
      for (ZVDListIter part(stripe->pList()); part; ++part) {
        const ZVPoint* p = ZVPoint::castDown(part.pObject());
        stripes.back().spans.push_back({p->x(), p->y()});
      }
    }
    return stripes;
  }
};

// The spacing is counted in thirds of a unit.
Stripes modelGrid(const Points& points, int64_t height, ZVLabelLocationEnum location) {
  std::set<int64_t, std::greater<>> heights;
  for (const P& p : points) heights.insert(p.y);
  const int64_t top = *heights.begin(), bottom = *heights.rbegin(), thirds = std::max<int64_t>(height, 6);
  auto multiple = [thirds](int64_t k) { return divideHalfUp(k * thirds, 3); };
  int64_t offset = 0;
  if (location == ZV_LABEL_LOCATION_BOTTOM) offset = top - bottom;
  if (location == ZV_LABEL_LOCATION_CENTER) offset = top - ((top + bottom) / 2 - height / 2);
  const int64_t base = top - (offset - multiple(3 * offset / thirds));
  // From the top itself the second line is left out.
  const int64_t edge = base < top ? base : top - multiple(1);
  for (int64_t k = 0; edge - multiple(k) > bottom; ++k) {
    if (k != 1 || base < top) heights.insert(edge - multiple(k));
  }
  Stripes stripes;
  for (int64_t y : heights) {
    std::multiset<int64_t> crossings;
    for (auto [low, high] : edgesOf(points)) {
      if (low.y > high.y) std::swap(low, high);
      if (low.y >= y || y > high.y) continue;
      crossings.insert(y == high.y ? high.x : low.x == high.x ? low.x : crossingAt<double>(low, high, y));
    }
    stripes.push_back({y, {}});
    while (!crossings.empty()) {
      const int64_t start = *crossings.begin();
      const size_t number = crossings.erase(start);
      if (crossings.empty()) break;
      if (number % 2 == 1) stripes.back().spans.push_back({start, *crossings.begin()});
      crossings.erase(crossings.begin());
    }
  }
  return stripes;
}

struct Label {
  int64_t height, width;
  ZVLabelRegionEnum region;
  ZVLabelLocationEnum location;
  bool follow;
};

// The search as a breadth: all spans that are left after each stripe, in order; the first one serves.
class LabelModel {
 public:
  LabelModel(Stripes stripes, const Label& label) : stripes_(std::move(stripes)), label_(label) {
    if (label.location == ZV_LABEL_LOCATION_BOTTOM) std::reverse(stripes_.begin(), stripes_.end());
    if (label.region == ZV_LABEL_REGION_RIGHT) {
      for (Stripe& stripe : stripes_) std::reverse(stripe.spans.begin(), stripe.spans.end());
    }
  }

  // The expected p, which starts at (-777, 777).
  P place() const {
    const int64_t h = label_.height;
    const bool up = label_.location == ZV_LABEL_LOCATION_BOTTOM;
    if (label_.location == ZV_LABEL_LOCATION_CENTER) return placeCenter();
    for (size_t start = 0; start + 1 < stripes_.size(); ++start) {
      std::vector<Span> spans = narrowed({{-1000, 1000}}, stripes_[start]);
      size_t next = start + 1;
      while (!spans.empty() && next + 1 < stripes_.size() && distance(start, next) < h) {
        spans = narrowed(spans, stripes_[next++]);
      }
      if (spans.empty() || distance(start, next) < h) continue;
      const int64_t y = stripes_[start].y;
      return {alignedX(spans[0]), up ? y + h / 2 : y - h / 2};
    }
    return {-777, 777};
  }

 private:
  int64_t distance(size_t i, size_t j) const { return std::abs(stripes_[i].y - stripes_[j].y); }

  std::vector<Span> narrowed(const std::vector<Span>& spans, const Stripe& stripe) const {
    std::vector<Span> result;
    for (const Span& a : spans) {
      for (const Span& b : stripe.spans) {
        const Span c{std::max(a.first, b.first), std::min(a.second, b.second)};
        // In a search from an end, spans that only touch have nothing in common.
        const bool shared = c.first < c.second || label_.location == ZV_LABEL_LOCATION_CENTER;
        if (shared && c.second - c.first >= label_.width) result.push_back(c);
      }
    }
    return result;
  }

  int64_t alignedX(const Span& span) const {
    const bool up = label_.location == ZV_LABEL_LOCATION_BOTTOM;
    const int64_t half = label_.width / 2;
    if (label_.follow) return up ? span.second - half : span.first + half;
    if (label_.region == ZV_LABEL_REGION_LEFT) return span.first + half;
    return label_.region == ZV_LABEL_REGION_RIGHT ? span.second - half : (span.first + span.second) / 2;
  }

  // The nearest of the best places of all stripes, the first one among equals.
  P placeCenter() const {
    const int64_t h = label_.height;
    const int64_t w = label_.width;
    const int64_t top = stripes_.front().y;
    const int64_t wanted = (top + stripes_.back().y) / 2 + (h + 1) / 2;
    int64_t best = top - stripes_.back().y - h + 1;
    P place{0, top + 1};
    for (size_t start = 0; start < stripes_.size(); ++start) {
      const int64_t y = stripes_[start].y;
      std::vector<Span> spans{{-1000, 1000}};
      size_t next = start;
      do {
        spans = narrowed(spans, stripes_[next++]);
      } while (next < stripes_.size() && distance(start, next) < h);
      if (spans.empty() || next == stripes_.size()) continue;
      const int64_t edge = std::clamp(wanted, stripes_[next].y + h, y);
      if (std::abs(y - wanted) >= best || std::abs(edge - wanted) >= best) continue;
      best = std::abs(edge - wanted);
      const auto [l, r] = spans[0];
      place = {(l + r) / 2, edge - (h + 1) / 2};
      if (label_.region == ZV_LABEL_REGION_LEFT) place.x = l + w / 2;
      if (label_.region == ZV_LABEL_REGION_RIGHT) place.x = r - w + w / 2;
    }
    return place;
  }

  Stripes stripes_;
  const Label& label_;
};

TEST(Labels, LieInThePolygonWhereTheSearchShouldPutThem) {
  Random random(6);
  int placed = 0;
  for (int round = 0; round < 4000 && !HasFailure(); ++round) {
    const int64_t reach = random.from(2, 24);
    const Points points = random.points(random.from(1, 9), reach);
    const Polygon polygon(points);
    const Label form{random.from(1, 1 + reach), 0, ZV_LABEL_REGION_CENTER,
                     static_cast<ZVLabelLocationEnum>(random.from(0, 3)), false};
    const Grid grid(polygon, form.height, form.location);
    const Stripes stripes = modelGrid(points, form.height, form.location);
    ASSERT_EQ(grid.stripes(), stripes) << PrintToString(points) << " for " << form.height;
    for (int i = 0; i < 6; ++i) {
      Label label = form;
      label.width = random.from(0, reach);
      label.region = static_cast<ZVLabelRegionEnum>(random.from(0, 4));
      label.follow = random.from(0, 1) == 1;
      SCOPED_TRACE(testing::Message() << PrintToString(points) << " for " << label.width << " x "
                                      << label.height << " at " << label.location << ", " << label.region
                                      << ", " << label.follow << " with " << PrintToString(stripes));
      ZVPoint p(-777, 777);
      const int found = polygon.assignRectangle(label.region, label.location, &grid, i32(label.height),
                                                i32(label.width), &p, label.follow);
      ASSERT_EQ(place(p), LabelModel(stripes, label).place());
      ASSERT_EQ(found, p.y() != (label.location == ZV_LABEL_LOCATION_CENTER ? stripes[0].y + 1 : 777));
      placed += found;
    }
    ASSERT_EQ(grid.stripes(), stripes);
  }
  EXPECT_GT(placed, 5000);
}

TEST(Labels, SingleCases) {
  const auto TOP = ZV_LABEL_LOCATION_TOP, CENTER = ZV_LABEL_LOCATION_CENTER,
             BOTTOM = ZV_LABEL_LOCATION_BOTTOM;
  const struct {
    Label label;
    P place;
    int found;
  } cases[] = {
      {{30, 40, ZV_LABEL_REGION_LEFT, TOP, false}, {20, 85}, 1},
      {{30, 40, ZV_LABEL_REGION_CENTER, BOTTOM, true}, {80, 25}, 1},
      {{30, 41, ZV_LABEL_REGION_RIGHT, TOP, false}, {80, 85}, 1},
      {{30, 41, ZV_LABEL_REGION_RIGHT, CENTER, false}, {79, 50}, 1},
      {{30, 101, ZV_LABEL_REGION_CENTER, TOP, false}, {7, 8}, 0},
      {{101, 40, ZV_LABEL_REGION_CENTER, CENTER, false}, {0, 101}, 0},
  };
  const Polygon polygon({{0, 0}, {100, 0}, {100, 100}, {0, 100}});
  for (const auto& c : cases) {
    const Grid grid(polygon, c.label.height, c.label.location);
    ZVPoint p(7, 8);
    EXPECT_EQ(polygon.assignRectangle(c.label.region, c.label.location, &grid, i32(c.label.height),
                                      i32(c.label.width), &p, c.label.follow),
              c.found);
    EXPECT_EQ(place(p), c.place);
  }

  // A tip left of a wider part at the height of the tip: what lies right of it is thrown away.
  const Grid tip(Polygon({{0, 10}, {3, 0}, {20, 0}, {20, 20}, {10, 20}, {10, 4}, {2, 4}}), 60, TOP);
  EXPECT_EQ(tip.stripes()[1], (Stripe{10, {}}));
  const Grid none(Polygon({}), 10, TOP);
  ZVPoint p(7, 8);
  EXPECT_EQ(none.length(), 0);
  EXPECT_EQ(polygon.assignRectangle(ZV_LABEL_REGION_LEFT, CENTER, &none, 1, 1, &p, 0), 0);
  // The stripes stay in order for a height that no label has.
  EXPECT_EQ(Grid(polygon, -400, CENTER).stripes(), Grid(polygon, 1, TOP).stripes());
  // No distance of the plane is too long to be laid out.
  const Grid wide(Polygon({{0, kMin}, {kMax, kMin}, {kMax, kMax}, {0, kMax}}), kMax, BOTTOM);
  EXPECT_EQ(wide.length(), 8);
}

TEST(Labels, StripesAreFoundMadeAndDoubled) {
  ZVDList grid;
  auto heights = [&grid] {
    std::vector<int32_t> result;
    for (ZVDListIter it(&grid); it; ++it) result.push_back(ZVHorSegment::castDown(it.pObject())->y());
    return result;
  };
  const struct {
    int32_t y;
    int duplicate;
    int32_t position;
    std::vector<int32_t> after;
  } cases[] = {
      {5, 1, 1, {5}},          {9, 0, 1, {9, 5}},          {7, 1, 3, {9, 7, 7, 5}},
      {7, 1, 2, {9, 7, 7, 5}}, {7, 0, 2, {9, 7, 7, 5}},    {9, 0, 1, {9, 7, 7, 5}},
      {5, 1, 4, {9, 7, 7, 5}}, {9, 1, 2, {9, 9, 7, 7, 5}}, {1, 1, 6, {9, 9, 7, 7, 5, 1}},
  };
  EXPECT_EQ(ZVPolygon::retrieveHorizontalStripe(&grid, 0), nullptr);
  for (const auto& c : cases) {
    const ZVDListCell* cell = ZVPolygon::queryHorizontalStripe(&grid, c.y, c.duplicate);
    EXPECT_EQ(heights(), c.after) << c.y;
    EXPECT_EQ(cell, grid.pCellInPosition(c.position)) << c.y;
  }
  const std::pair<int32_t, int32_t> found[] = {{10, 0}, {9, 1}, {8, 0}, {7, 3},
                                               {5, 5},  {3, 0}, {1, 6}, {0, 6}};
  for (const auto& [y, position] : found) {
    EXPECT_EQ(ZVPolygon::retrieveHorizontalStripe(&grid, y), grid.pCellInPosition(position)) << y;
  }
  ZVPolygon::deleteGrid(&grid);
  EXPECT_EQ(grid.length(), 0);
}

}  // namespace
