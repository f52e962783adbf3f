// Questions of the plane, asked of this library, Boost.Geometry and GEOS on the same figures. No question
// should take longer than with the faster of the two.
#include <benchmark/benchmark.h>
#include <geos/algorithm/LineIntersector.h>
#include <geos/algorithm/PointLocation.h>
#include <geos/geom/CoordinateArraySequence.h>
#include <geos/geom/Geometry.h>
#include <geos/geom/GeometryFactory.h>
#include <geos/geom/LineString.h>
#include <geos/geom/LinearRing.h>
#include <geos/geom/Polygon.h>
#include <geos/geom/prep/PreparedGeometry.h>
#include <geos/geom/prep/PreparedGeometryFactory.h>
#include <geos/operation/predicate/RectangleIntersects.h>

#include <boost/geometry.hpp>
#include <boost/geometry/geometries/box.hpp>
#include <boost/geometry/geometries/multi_point.hpp>
#include <boost/geometry/geometries/point_xy.hpp>
#include <boost/geometry/geometries/polygon.hpp>
#include <boost/geometry/geometries/segment.hpp>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <random>
#include <vector>

#include "utils/zvdlist.h"
#include "utils/zvpolygo.h"
#include "utils/zvptdl.h"
#include "utils/zvrect.h"
#include "utils/zvshape.h"

namespace {

namespace bg = boost::geometry;
using BoostPoint = bg::model::d2::point_xy<double>;
using BoostSegment = bg::model::segment<BoostPoint>;
using BoostBox = bg::model::box<BoostPoint>;
using BoostRing = bg::model::ring<BoostPoint>;
using BoostLine = bg::model::linestring<BoostPoint>;
using BoostPoints = bg::model::multi_point<BoostPoint>;
using GeosPoint = geos::geom::Coordinate;
using GeosPoints = geos::geom::CoordinateArraySequence;

// Half the side of the square in which all figures lie.
constexpr int32_t REACH = 10000;
constexpr size_t QUESTIONS = 4096;

struct XY {
  int32_t x;
  int32_t y;
};
struct Line {
  XY start;
  XY end;
};
using Outline = std::vector<XY>;  // clockwise, which both peers and convex shapes take

[[noreturn]] void fail(const char* what) {
  std::fprintf(stderr, "bench_plane: %s\n", what);
  std::exit(1);
}

// An outline around the centre with vertices at very different distances from it.
Outline starOutline(int64_t vertices) {
  std::mt19937 random(1);
  std::uniform_real_distribution<double> radius(0.3 * REACH, REACH);
  Outline outline;
  for (int64_t i = 0; i < vertices; ++i) {
    const double angle = -2 * M_PI * static_cast<double>(i) / static_cast<double>(vertices);
    const double r = radius(random);
    outline.push_back({static_cast<int32_t>(r * std::cos(angle)), static_cast<int32_t>(r * std::sin(angle))});
  }
  return outline;
}

const std::vector<Line>& lines() {
  static const std::vector<Line> all = [] {
    std::mt19937 random(2);
    std::uniform_int_distribution<int32_t> coordinate(-REACH, REACH);
    std::vector<Line> made(QUESTIONS);
    for (Line& line : made)
      line = {{coordinate(random), coordinate(random)}, {coordinate(random), coordinate(random)}};
    return made;
  }();
  return all;
}

BoostPoint boostPoint(XY p) { return {double(p.x), double(p.y)}; }
BoostSegment boostSegment(const Line& line) { return {boostPoint(line.start), boostPoint(line.end)}; }
GeosPoint geosPoint(XY p) { return {double(p.x), double(p.y)}; }

ZVPointDList* pointList(const Outline& outline) {
  auto* list = new ZVPointDList;
  for (XY p : outline) list->appendPoint(new ZVPoint(p.x, p.y));
  return list;
}
BoostRing boostRing(const Outline& outline) {
  BoostRing ring;
  for (XY p : outline) ring.push_back(boostPoint(p));
  ring.push_back(ring.front());
  if (!bg::is_valid(ring)) fail("an outline crosses itself");
  return ring;
}
GeosPoints geosPoints(const Outline& outline) {
  GeosPoints points;
  for (XY p : outline) points.add(geosPoint(p));
  points.add(geosPoint(outline.front()));
  return points;
}
std::unique_ptr<geos::geom::Polygon> geosPolygon(const Outline& outline) {
  const auto& factory = *geos::geom::GeometryFactory::getDefaultInstance();
  return factory.createPolygon(factory.createLinearRing(std::make_unique<GeosPoints>(geosPoints(outline))));
}

// The conversions are done before the clock runs: each side is asked in its own types.
template <class Kind, class Convert>
std::vector<Kind> converted(Convert convert) {
  std::vector<Kind> all;
  for (const Line& line : lines()) all.push_back(convert(line));
  return all;
}

// Asks each question once for each iteration. "yes" is how many of them were answered so: where the sides
// answer the same question, it is the same but for points on a boundary.
template <class Questions, class Ask>
void ask(benchmark::State& state, const Questions& questions, Ask question) {
  int64_t yes = 0;
  for (auto _ : state) {
    yes = 0;
    for (const auto& one : questions) yes += question(one) ? 1 : 0;
    benchmark::DoNotOptimize(yes);
  }
  state.counters["yes"] = static_cast<double>(yes);
  state.counters["each"] =
      benchmark::Counter(static_cast<double>(questions.size()),
                         benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

// ---- Point in polygon

void pointInPolygonHere(benchmark::State& state) {
  const ZVPolygon polygon(pointList(starOutline(state.range(0))));
  ask(state, lines(), [&](const Line& l) { return polygon.pointWithin(l.start.x, l.start.y); });
}
void pointInPolygonBoost(benchmark::State& state) {
  const BoostRing ring = boostRing(starOutline(state.range(0)));
  const auto points = converted<BoostPoint>([](const Line& l) { return boostPoint(l.start); });
  ask(state, points, [&](const BoostPoint& p) { return bg::covered_by(p, ring); });
}
void pointInPolygonGeos(benchmark::State& state) {
  const GeosPoints ring = geosPoints(starOutline(state.range(0)));
  const auto points = converted<GeosPoint>([](const Line& l) { return geosPoint(l.start); });
  ask(state, points, [&](const GeosPoint& p) { return geos::algorithm::PointLocation::isInRing(p, &ring); });
}
BENCHMARK(pointInPolygonHere)->Arg(10)->Arg(100)->Arg(1000);
BENCHMARK(pointInPolygonBoost)->Arg(10)->Arg(100)->Arg(1000);
BENCHMARK(pointInPolygonGeos)->Arg(10)->Arg(100)->Arg(1000);

// ---- Where two segments meet

template <class Kind>
struct Pair {
  Kind first;
  Kind second;
};
template <class Kind, class Convert>
std::vector<Pair<Kind>> pairs(Convert convert) {
  std::vector<Pair<Kind>> all;
  for (size_t i = 0; i < QUESTIONS; ++i)
    all.push_back({convert(lines()[i]), convert(lines()[(i + 1) % QUESTIONS])});
  return all;
}

void segmentsHere(benchmark::State& state) {
  const auto segments = pairs<Line>([](const Line& l) { return l; });
  ask(state, segments, [](const Pair<Line>& p) {
    XY start = p.first.start;
    const int meet =
        ZVPoint::segmentsIntersect(start.x, start.y, p.first.end.x, p.first.end.y, p.second.start.x,
                                   p.second.start.y, p.second.end.x, p.second.end.y);
    benchmark::DoNotOptimize(start);
    return meet;
  });
}
void segmentsBoost(benchmark::State& state) {
  const auto segments = pairs<BoostSegment>(boostSegment);
  BoostPoints crossing;
  ask(state, segments, [&](const Pair<BoostSegment>& p) {
    crossing.clear();
    bg::intersection(p.first, p.second, crossing);
    return !crossing.empty();
  });
}
void segmentsGeos(benchmark::State& state) {
  const auto segments = pairs<Pair<GeosPoint>>([](const Line& l) {
    return Pair<GeosPoint>{geosPoint(l.start), geosPoint(l.end)};
  });
  geos::algorithm::LineIntersector crossing;
  ask(state, segments, [&](const Pair<Pair<GeosPoint>>& p) {
    crossing.computeIntersection(p.first.first, p.first.second, p.second.first, p.second.second);
    return crossing.hasIntersection();
  });
}
BENCHMARK(segmentsHere);
BENCHMARK(segmentsBoost);
BENCHMARK(segmentsGeos);

// ---- Rectangle and segment

constexpr int32_t SIDE = REACH / 3;

void rectangleHere(benchmark::State& state) {
  const ZVRect box(-SIDE, -SIDE, SIDE, SIDE);
  if (!box.within(ZVPoint(0, 0))) fail("the box does not hold its centre");
  ask(state, lines(),
      [&](const Line& l) { return box.overlapsSegment(l.start.x, l.start.y, l.end.x, l.end.y); });
}
void rectangleBoost(benchmark::State& state) {
  const BoostBox box({-SIDE, -SIDE}, {SIDE, SIDE});
  const auto segments = converted<BoostSegment>(boostSegment);
  ask(state, segments, [&](const BoostSegment& s) { return bg::intersects(s, box); });
}
void rectangleGeos(benchmark::State& state) {
  const auto box = geosPolygon({{-SIDE, -SIDE}, {-SIDE, SIDE}, {SIDE, SIDE}, {SIDE, -SIDE}});
  geos::operation::predicate::RectangleIntersects test(*box);
  const auto segments = converted<std::unique_ptr<geos::geom::LineString>>([](const Line& l) {
    auto ends = std::make_unique<GeosPoints>();
    ends->add(geosPoint(l.start));
    ends->add(geosPoint(l.end));
    return geos::geom::GeometryFactory::getDefaultInstance()->createLineString(std::move(ends));
  });
  ask(state, segments, [&](const auto& segment) { return test.intersects(*segment); });
}
BENCHMARK(rectangleHere);
BENCHMARK(rectangleBoost);
BENCHMARK(rectangleGeos);

// ---- A label in a polygon. The peers are only asked whether one rectangle at a known place lies in the
// polygon, with all that they can prepare before: whoever places a label with them asks that many times.

constexpr int32_t LABEL_WIDTH = REACH / 4;
constexpr int32_t LABEL_HEIGHT = REACH / 8;

Outline labelOutline() {
  std::mt19937 random(3);
  std::uniform_real_distribution<double> radius(0.6 * REACH, REACH);
  Outline outline;
  for (int i = 0; i < 100; ++i) {
    const double angle = -2 * M_PI * i / 100;
    const double r = radius(random);
    outline.push_back({static_cast<int32_t>(r * std::cos(angle)), static_cast<int32_t>(r * std::sin(angle))});
  }
  return outline;
}

template <ZVLabelLocationEnum location>
ZVPoint placeLabel(benchmark::State* state) {
  const ZVPolygon polygon(pointList(labelOutline()));
  ZVDList grid;
  polygon.createGrid(&grid, LABEL_HEIGHT, location);
  ZVPoint center;
  const auto place = [&] {
    return polygon.assignRectangle(ZV_LABEL_REGION_CENTER, location, &grid, LABEL_HEIGHT, LABEL_WIDTH,
                                   &center, 0);
  };
  if (!place()) fail("no room for the label");
  if (state) ask(*state, std::vector<int>(16), [&](int) { return place(); });
  ZVPolygon::deleteGrid(&grid);
  return center;
}

Outline labelCorners() {
  const ZVPoint c = placeLabel<ZV_LABEL_LOCATION_CENTER>(nullptr);
  const int32_t left = c.x() - LABEL_WIDTH / 2;
  const int32_t right = c.x() + LABEL_WIDTH / 2;
  const int32_t bottom = c.y() - LABEL_HEIGHT / 2;
  const int32_t top = c.y() + LABEL_HEIGHT / 2;
  return {{left, bottom}, {left, top}, {right, top}, {right, bottom}};
}

void labelTopHere(benchmark::State& state) { placeLabel<ZV_LABEL_LOCATION_TOP>(&state); }
void labelCenterHere(benchmark::State& state) { placeLabel<ZV_LABEL_LOCATION_CENTER>(&state); }
void labelBottomHere(benchmark::State& state) { placeLabel<ZV_LABEL_LOCATION_BOTTOM>(&state); }
void labelGridHere(benchmark::State& state) {
  const ZVPolygon polygon(pointList(labelOutline()));
  for (auto _ : state) {
    ZVDList grid;
    polygon.createGrid(&grid, LABEL_HEIGHT, ZV_LABEL_LOCATION_CENTER);
    ZVPolygon::deleteGrid(&grid);
  }
}
void labelOneTestBoost(benchmark::State& state) {
  const BoostRing ring = boostRing(labelOutline());
  const BoostRing label = boostRing(labelCorners());
  ask(state, std::vector<int>(16), [&](int) { return bg::covered_by(label, ring); });
}
void labelOneTestGeos(benchmark::State& state) {
  const auto polygon = geosPolygon(labelOutline());
  const auto prepared = geos::geom::prep::PreparedGeometryFactory::prepare(polygon.get());
  const auto label = geosPolygon(labelCorners());
  ask(state, std::vector<int>(16), [&](int) { return prepared->covers(label.get()); });
}
BENCHMARK(labelTopHere);
BENCHMARK(labelCenterHere);
BENCHMARK(labelBottomHere);
BENCHMARK(labelGridHere);
BENCHMARK(labelOneTestBoost);
BENCHMARK(labelOneTestGeos);

// ---- An edge clipped at a node outline: the crossing nearest to the far end

constexpr int32_t NODE = REACH / 2;  // width and height

Outline ellipseOutline() {
  Outline outline;
  for (int i = 0; i < 32; ++i) {
    const double angle = -2 * M_PI * i / 32;
    outline.push_back(
        {static_cast<int32_t>(1000 * std::cos(angle)), static_cast<int32_t>(1000 * std::sin(angle))});
  }
  return outline;
}
// In shape coordinates, from -1000 to 1000.
const Outline BOX = {{-1000, -1000}, {-1000, 1000}, {1000, 1000}, {1000, -1000}};
const Outline OCTAGON = {{-1000, -400}, {-1000, 400}, {-400, 1000}, {400, 1000},
                         {1000, 400},   {1000, -400}, {400, -1000}, {-400, -1000}};
const Outline CONCAVE = {{-1000, -1000}, {-500, 0}, {-1000, 1000}, {0, 500},
                         {1000, 1000},   {500, 0},  {1000, -1000}, {0, -500}};

ZVShape shapeOf(const Outline& outline) {
  if (&outline == &BOX) return {ZV_SHAPE_RECTANGLE};
  return {pointList(outline)};
}

Outline placed(const Outline& outline) {
  Outline world;
  for (XY p : outline) world.push_back({p.x * (NODE / 2) / 1000, p.y * (NODE / 2) / 1000});
  return world;
}

// Edges from the node's centre outward.
void clipHere(benchmark::State& state, const ZVShape& shape) {
  ask(state, lines(), [&](const Line& l) {
    XY start = {0, 0};
    const int met = shape.intersectsSegment(start.x, start.y, l.end.x, l.end.y, 0, 0, NODE, NODE);
    benchmark::DoNotOptimize(start);
    return met;
  });
}
void clipBoost(benchmark::State& state, const Outline& outline) {
  const BoostRing ring = boostRing(placed(outline));
  const BoostLine outlineOf(ring.begin(), ring.end());
  const auto edges = converted<BoostLine>([](const Line& l) { return BoostLine{{0, 0}, boostPoint(l.end)}; });
  BoostPoints crossings;
  ask(state, edges, [&](const BoostLine& edge) {
    crossings.clear();
    bg::intersection(edge, outlineOf, crossings);
    double nearest = INFINITY;
    for (const BoostPoint& p : crossings)
      nearest = std::min(nearest, bg::comparable_distance(p, edge.back()));
    return std::isfinite(nearest);
  });
}
void clipGeos(benchmark::State& state, const Outline& outline) {
  const GeosPoints ring = geosPoints(placed(outline));
  const auto ends = converted<GeosPoint>([](const Line& l) { return geosPoint(l.end); });
  geos::algorithm::LineIntersector crossing;
  const GeosPoint center(0, 0);
  ask(state, ends, [&](const GeosPoint& end) {
    double nearest = INFINITY;
    for (size_t i = 0; i + 1 < ring.size(); ++i) {
      crossing.computeIntersection(center, end, ring[i], ring[i + 1]);
      if (crossing.hasIntersection())
        nearest = std::min(nearest, crossing.getIntersection(0).distanceSquared(end));
    }
    return std::isfinite(nearest);
  });
}

void registerClipping() {
  const auto add = [](const std::string& name, const Outline& outline, const ZVShape& shape) {
    benchmark::RegisterBenchmark(("clip" + name + "Here").c_str(),
                                 [shape](benchmark::State& s) { clipHere(s, shape); });
    benchmark::RegisterBenchmark(("clip" + name + "Boost").c_str(),
                                 [outline](benchmark::State& s) { clipBoost(s, outline); });
    benchmark::RegisterBenchmark(("clip" + name + "Geos").c_str(),
                                 [outline](benchmark::State& s) { clipGeos(s, outline); });
  };
  add("Rectangle", BOX, shapeOf(BOX));
  add("Ellipse", ellipseOutline(), ZVShape(ZV_SHAPE_ELLIPSE));
  add("Octagon", OCTAGON, shapeOf(OCTAGON));
  add("Concave", CONCAVE, shapeOf(CONCAVE));
}

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  registerClipping();
  benchmark::RunSpecifiedBenchmarks();
}
