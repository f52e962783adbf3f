#include "examples/netdraw/netpict.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "examples/netdraw/netcolor.h"
#include "examples/netdraw/netlabel.h"
#include "examples/netdraw/netshape.h"
#include "utils/zvhorseg.h"
#include "utils/zvptdl.h"

namespace {

constexpr double UNITS_PER_PIXEL = 1000.0 / 72.0;  // 72 pixels to the inch
constexpr int32_t MARGIN = 100;
// Lines that are drawn on by the diagonal of a node stay within 32 bits up to there.
constexpr int32_t FARTHEST = 1 << 28;
constexpr double ARROW_LENGTH = 130.0;
constexpr double ARROW_HALF_WIDTH = 45.0;
constexpr const char* REGION_LINES = "stroke=\"crimson\" stroke-width=\"0.5\"";

// The point that lies that far from one point toward another.
ZVPoint toward(const ZVPoint& from, const ZVPoint& to, double distance) {
  const double length = from.distance(to);
  if (length == 0.0) return from;
  ZVDTuple step(to.x() - from.x(), to.y() - from.y());
  step.scale(distance / length);
  ZVPoint result(from);
  result += ZVTuple(step);
  return result;
}

std::string attribute(const char* name, const std::string& value) {
  return std::string(name) + "=\"" + value + "\" ";
}

std::string nameOf(const Share<ZVColorResource>& color, const char* otherwise) {
  return color ? nameOf(*color.get()->pColor()) : otherwise;
}

std::string dashes(Pattern pattern) {
  if (pattern == Pattern::SOLID) return "";
  return attribute("stroke-dasharray", pattern == Pattern::DASHED ? "5 3" : "1 3");
}

// What a drawing covers.
ZVRect boundsOf(const NetGraph& graph) {
  ZVRect bounds(0, 0, graph.extent.width(), graph.extent.height());
  auto include = [&](int32_t left, int32_t bottom, int32_t right, int32_t top) {
    bounds.setCorners(std::min(bounds.left(), left), std::min(bounds.bottom(), bottom),
                      std::max(bounds.right(), right), std::max(bounds.top(), top));
  };
  forEach<NetNode>(graph.nodes, [&](NetNode* node) {
    const ZVRect r = node->rect();
    include(r.left(), r.bottom(), r.right(), r.top());
  });
  forEach<NetEdge>(graph.edges, [&](NetEdge* edge) {
    if (!edge->source || !edge->target) return;
    for (const ZVPoint& p : edge->leads()) include(p.x(), p.y(), p.x(), p.y());
  });
  return bounds;
}

ZVRect withMargin(const ZVRect& rect) {
  return ZVRect(rect.left() - MARGIN, rect.bottom() - MARGIN, rect.right() + MARGIN, rect.top() + MARGIN);
}

// Begins a line at the last of the bends that lie in its first node, under which it cannot be seen.
void dropHiddenBends(std::vector<ZVPoint>& points, const NetNode& node) {
  auto first = points.begin();
  while (points.end() - first > 2 && node.outline().within(first[1], node.centre, node.extent())) ++first;
  points.erase(points.begin(), first);
}

}  // namespace

void drawOutline(SvgPage& page, const ZVShape& shape, const ZVPoint& centre, const ZVSize& size,
                 const std::string& attributes) {
  if (isPolygon(shape)) {
    page.polygon(verticesOf(shape, centre, size), attributes);
  } else if (shape.shapeType() == ZV_SHAPE_ELLIPSE) {
    page.ellipse(centre, size, attributes);
  } else {
    page.rect(ZVRect(centre, size), attributes);
  }
}

void drawGrid(SvgPage& page, const ZVPolygon& polygon, int32_t height, ZVLabelLocationEnum location) {
  ZVDList grid;
  polygon.createGrid(&grid, height, location);
  forEach<ZVHorSegment>(grid, [&](ZVHorSegment* stripe) {
    forEach<ZVPoint>(*stripe->pList(), [&](ZVPoint* interval) {
      page.line(ZVPoint(interval->x(), stripe->y()), ZVPoint(interval->y(), stripe->y()), REGION_LINES);
    });
  });
  ZVPolygon::deleteGrid(&grid);
}

bool Picture::canShow(const NetGraph& graph) {
  const ZVRect bounds = boundsOf(graph);
  return std::min(bounds.left(), bounds.bottom()) >= -FARTHEST &&
         std::max(bounds.right(), bounds.top()) <= FARTHEST;
}

Picture::Picture(const NetGraph& graph, bool regions)
    : page_(withMargin(boundsOf(graph)), UNITS_PER_PIXEL), regions_(regions) {
  forEach<NetEdge>(graph.edges, [&](NetEdge* edge) { drawEdge(*edge); });
  forEach<NetNode>(graph.nodes, [&](NetNode* node) { drawNode(*node); });
}

// The point where an edge whose last points are before and last meets the outline of its node: straight on
// if the outline lies there, else on the way to the node's centre.
ZVPoint Picture::endOnOutline(const NetNode& node, const ZVPoint& last, const ZVPoint& before) {
  ++ends_;
  const ZVShape& shape = node.outline();
  const ZVSize size = node.extent();
  const double reach = ZVPoint::distance(0, 0, size.width(), size.height());
  ZVPoint end = toward(last, before, -reach);
  int met = shape.intersectsSegment(end, before, node.centre, size);
  if (!met) {
    end = node.centre;
    met = shape.intersectsSegment(end, before, node.centre, size);
  }
  endsOnOutline_ += met;
  return met ? end : last;
}

void Picture::drawEdge(const NetEdge& edge) {
  if (!edge.source || !edge.target) return;
  std::vector<ZVPoint> points = edge.leads();
  const bool smooth = NetEdge::areCurves(points);
  if (!smooth) {
    dropHiddenBends(points, *edge.source);
    std::reverse(points.begin(), points.end());
    dropHiddenBends(points, *edge.target);
    std::reverse(points.begin(), points.end());
  }

  // The curve's control points keep the direction in which it leaves and arrives.
  const ZVPoint start = endOnOutline(*edge.source, points.front(), points[1]);
  const ZVPoint tip = endOnOutline(*edge.target, points.back(), points[points.size() - 2]);
  const ZVPoint back = toward(tip, points[points.size() - 2], ARROW_LENGTH);
  points.front() = start;
  points.back() = back;
  const std::string color = nameOf(edge.color, "black");
  page_.path(points, smooth, attribute("stroke", color) + dashes(edge.pattern));

  ZVPoint wing(back.y() - tip.y(), tip.x() - back.x());  // a right angle to the left of the arrow
  wing.scale(ARROW_HALF_WIDTH / ARROW_LENGTH);
  page_.polygon({tip, ZVPoint(back.x() + wing.x(), back.y() + wing.y()),
                 ZVPoint(back.x() - wing.x(), back.y() - wing.y())},
                attribute("fill", color));
}

void Picture::drawNode(const NetNode& node) {
  const ZVShape& shape = node.outline();
  const ZVSize size = node.extent();
  drawOutline(page_, shape, node.centre, size,
              attribute("fill", node.filled ? nameOf(node.fill, "white") : "white") +
                  attribute("stroke", nameOf(node.color, "black")));
  ZVPoint place;
  const LabelBlock label =
      placeLabel(place, shape, node.centre, size, node.label, LETTERS, ZV_LABEL_LOCATION_CENTER);
  if (regions_) drawRegions(node, label.height);
  if (node.label.empty()) return;
  ++labels_;
  if (label.letters == 0) return;
  ++labelsInside_;
  drawLabel(page_, place, label);
}

void Picture::drawRegions(const NetNode& node, int32_t height) {
  const ZVShape& shape = node.outline();
  if (isPolygon(shape) && height > 0) {
    drawGrid(page_, outlinePolygon(shape, node.centre, node.extent()), height, ZV_LABEL_LOCATION_CENTER);
  }
  ZVRect inner;
  shape.getCurrentInnerRect(inner, node.centre, node.extent());
  page_.rect(inner, std::string("fill=\"none\" ") + REGION_LINES);
}
